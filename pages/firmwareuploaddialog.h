#pragma once

#include "pages/datawidget.h"

#include <QFile>
#include <QPointer>

#include <memory>

class ProgrammerOutput;
class QProcess;

namespace Ui {
class FirmwareUploadDialog;
}

/// Replaces a drive's firmware: stops all traffic on the bus, sends the drive into its bootloader, hands the
/// port to an external programmer and shows what that prints. The image and the way it is transferred are the
/// programmer's.
///
/// The page goes on with an update whatever page is shown meanwhile. It does not bring the communication back
/// afterwards: the drive has restarted, and the user connects anew.
///
/// A transfer that is cut off leaves the motor without firmware, so the destructor waits for a programmer at
/// work: until it has ended, or has printed nothing for ten minutes and is ended. A programmer that has not
/// been started by then is not started any more: the motor stands in its bootloader with its firmware whole,
/// and runs it again after the next power-on.
class FirmwareUploadDialog : public Z7DataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogFirmwareUpdate"};

    explicit FirmwareUploadDialog(QWidget *parent = nullptr);
    ~FirmwareUploadDialog() override;

    /// How long the destructor bears a programmer that prints nothing, in milliseconds.
    void setProgrammerPatience(int ms) { m_patienceMs = ms; }

    void clearUserValues() override { }
    void initPage() override;
    /// Counts the drives of one showing, and takes the outcome of the bootloader command.
    void DeviceUpdate(const Z7Device &d) override;
    void deviceUpdateFinished() override;
    void newDeviceParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }
    void newUserParam(const Z7DeviceParam &param) override { Q_UNUSED(param) }

public slots:
    void AllDeviceCommunicationStopped() override;
    void selectBinFile();
    /// Checks what an update needs, asks the user and stops the communication.
    void startUpload();
    void startUploadProc();
    void uploadProcReadyRead();
    /// Also the end of an update that did not come as far as the programmer.
    void uploadProcFinished();

private:
    enum UploadStatus {
        StatusIdle,
        StatusAwaitingCommunicationStopped,
        StatusSendingBooltloaderInitCommand,
        StatusUploadProcessRunning,
    };

    void setTexts();
    QString statusText() const;
    /// Shows the stage, and notes it in the output.
    void refreshStatus();
    void setBusy(bool busy);
    /// What stands against an update; empty if nothing does.
    QString objection() const;
    bool confirmUpload();
    void showBootloaderError();
    /// Returns when the programmer runs or has failed to; false if it does not run.
    bool startProgrammer();
    void takeBus();
    /// Tells it once, and only if the bus was taken.
    void giveBusBack();
    void waitForProgrammer();

    UploadStatus m_uploadStatus = StatusIdle;
    int m_connectedDrives = 0; ///< listed at the last showing
    bool m_countingDrives = false; ///< from initPage() to deviceUpdateFinished()
    QFile m_programmerFile;
    QFile m_firmwareFile;
    QPointer<QProcess> m_uploadProcess; ///< made at the first start, for the rest of the run
    bool m_programmerUsesBus = false;
    int m_patienceMs = 10 * 60 * 1000;
    const std::unique_ptr<Ui::FirmwareUploadDialog> m_ui;
    std::unique_ptr<ProgrammerOutput> m_output; ///< in the form's field
};
