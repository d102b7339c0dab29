#pragma once

#include "tests/pages/shownpage.h"
#include "tests/support/firmwareuser.h"

#include <QProcess>

/// The firmware update page with a person at it. The test stands for the controller and the drive.
class FirmwarePage
{
public:
    FirmwarePage()
        : shown(PageNumber::FirmwareUpload)
        , user(shown.page.get())
        , stopRequests(shown.page.get(), SIGNAL(stopAllDeviceCommunication()))
        , bootloaderRequests(shown.page.get(), SIGNAL(sendBootloaderInitCommand()))
        , busUses(shown.page.get(), SIGNAL(programmerUsesBus(bool)))
    {
    }
    /// A programmer that is still at work is ended, so that no page waits for it.
    ~FirmwarePage()
    {
        if (QProcess *process = programmer()) {
            process->kill();
            process->waitForFinished();
        }
    }
    Q_DISABLE_COPY(FirmwarePage)

    /// A drive as the controller lists it, behind the port ttyUSB0 in tests that have one.
    static Z7Device drive(int address = 3)
    {
        Z7Device drive = driveWith({});
        drive.assignAddress(address);
        drive.portInfo = QSerialPortInfo(QStringLiteral("ttyUSB0"));
        return drive;
    }
    /// The record of a drive that has obeyed the bootloader command.
    static Z7Device driveInBootloader()
    {
        Z7Device obedient = drive();
        obedient.bootloaderActive = true;
        return obedient;
    }
    /// The record of a drive that has not.
    static Z7Device driveWithError(int error)
    {
        Z7Device refusing = drive();
        refusing.setDeviceError(error);
        return refusing;
    }

    /// What the controller does to show the page while so many drives are listed.
    void showWithDrives(int count)
    {
        shown.page->initPage();
        for (int address = 1; address <= count; ++address)
            shown.page->DeviceUpdate(drive(address));
        shown.page->deviceUpdateFinished();
        shown.page->clearUserValues();
        shown.page->show();
    }

    /// Chooses the image and confirms the start.
    void startUpdate()
    {
        user.writeImageAndProgrammer();
        showWithDrives(1);
        user.choose(QStringLiteral("image.bin"));
        user.start(QMessageBox::Yes);
    }
    /// The same, as far as the command that sends the drive into its bootloader.
    void startUpToBootloaderCommand()
    {
        startUpdate();
        allCommunicationStopped();
    }
    void allCommunicationStopped() { shown.page->AllDeviceCommunicationStopped(); }
    void report(const Z7Device &drive) { shown.page->DeviceUpdate(drive); }

    /// What the page runs the programmer with; null before the first confirmed start and after the close.
    QProcess *programmer() const { return shown.page ? shown.page->findChild<QProcess *>() : nullptr; }
    /// What the page has told of the programmer and the bus, "taken" and "given back", in order.
    QStringList busNews() const
    {
        QStringList news;
        for (const QList<QVariant> &use : busUses)
            news.append(use.first().toBool() ? QStringLiteral("taken") : QStringLiteral("given back"));
        return news;
    }
    /// The end of the program: the window has closed, and its page goes.
    void close()
    {
        Z7Services::shutdown();
        shown.page.reset();
    }

    const WorkingFolder folder;
    ShownPage shown;
    const FirmwareUser user;
    QSignalSpy stopRequests;
    QSignalSpy bootloaderRequests;
    QSignalSpy busUses;
};
