// A drive gets new firmware from an external programmer.

#include "tests/e2e/desk.h"
#include "tests/support/filedialogs.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

#include <optional>

namespace {

const QString drive = driveName(1);
const QString firmwarePage = QStringLiteral("Firmware update");
const QString image = QStringLiteral("new firmware.bin");

/// A drive of version V123, the programmer, an image, and a person at the page that brings them together.
struct UpdateDesk
{
    explicit UpdateDesk(const QList<int> &addresses = {1})
        : bus(bench.plugIn(port, TestBench::shortDrives(addresses)))
    {
        QFile::copy(QStringLiteral(Z7_PROGRAMMER), programmer);
        WorkingFolder::write(image, "Z7 firmware V200\n");
        journey.emplace();
    }
    ~UpdateDesk()
    {
        endProgrammer();
        qunsetenv("Z7_PROGRAMMER_FAULT");
    }
    Q_DISABLE_COPY(UpdateDesk)

    /// The window has closed, and the event loop has ended.
    void endProgram() { journey.reset(); }
    /// A programmer that never ends must not keep the program. Its page may be one that is not shown.
    static void endProgrammer()
    {
        for (const QWidget *widget : QApplication::allWidgets()) {
            if (auto *process = widget->findChild<QProcess *>(QString(), Qt::FindDirectChildrenOnly)) {
                process->kill();
                process->waitForFinished();
            }
        }
    }

    bool showPage() const
    {
        return journey->connectManually(port, 1, 0) && journey->showPage(drive, firmwarePage);
    }
    /// Shows the page, chooses the image and starts an update with a programmer that misbehaves so.
    bool update(const QByteArray &fault = QByteArray()) const
    {
        qputenv("Z7_PROGRAMMER_FAULT", fault);
        return showPage() && chooseImage() && start().size() == 1;
    }
    bool chooseImage() const
    {
        const FileDialogUser user(image);
        return journey->press("BtnSelectFile") && user.count() == 1;
    }
    /// Presses the button and answers what is asked; the texts that were seen.
    QStringList start(QMessageBox::StandardButton answer = QMessageBox::Yes) const
    {
        const MessageBoxAnswerer user(answer);
        if (!journey->press("BtnUploadFirmwareFile"))
            return {};
        QStringList texts;
        for (const SeenMessageBox &box : user.seen())
            texts.append(box.text);
        return texts;
    }
    QString output() const
    {
        return journey->window().findChild<QPlainTextEdit *>("edOutput")->toPlainText();
    }
    QString stage() const { return Person::textOf(journey->window(), "lCurrentStatus"); }
    bool isReady() const
    {
        return Person::textOf(journey->window(), "lUpdateStarted") == QStringLiteral("Bereit")
            && journey->window().findChild<QPushButton *>("BtnUploadFirmwareFile")->isEnabled();
    }

    const QString programmer = QStringLiteral("Z7Programmer.exe");
    TestBench bench;
    z7sim::SimulatedBus &bus;
    std::optional<Journey> journey;
};

} // namespace

class TestFirmwareJourneys : public QObject
{
    Q_OBJECT

private slots:
    void driveRunsNewFirmwareAndIsConnectedAnew();
    void updateGoesOnWhileAnotherPageIsShown();
    void programmerThatFailsLeavesPageReady();
    void zeroByteCutsOutput();
    void endlessOutputLeavesPageResponsive();
    void programmerThatNeverEndsKeepsPageBusy_data();
    void programmerThatNeverEndsKeepsPageBusy();
    void nothingElseGoesOnBusBesideProgrammer();
    void liveUpdateGoesOnWhenProgrammerHasEnded();
    void closedProgramLetsProgrammerFinish_data();
    void closedProgramLetsProgrammerFinish();
    void driveThatRefusesItsBootloaderIsReported();
    void refusalsComeInTheirOrder();
    void answerNoLeavesDriveAlone();
};

void TestFirmwareJourneys::driveRunsNewFirmwareAndIsConnectedAnew()
{
    const UpdateDesk desk;
    QVERIFY(desk.showPage());
    QVERIFY(desk.chooseImage());
    QVERIFY(desk.start().first().startsWith("Mit dem Firmwareupdate aktualisieren Sie"));
    QTRY_VERIFY_WITH_TIMEOUT(desk.isReady(), Person::patienceMs);
    const QString output = desk.output();
    QVERIFY2(output.contains("Beende Kommunication..."), qPrintable(output));
    QVERIFY2(output.contains("Aktiviere Bootloader..."), qPrintable(output));
    QVERIFY2(output.contains("Upload wurde gestartet, bitte warten..."), qPrintable(output));
    QVERIFY2(output.contains("Programming: 100 %"), qPrintable(output));
    QVERIFY2(output.contains("Done. The drive runs version V200."), qPrintable(output));
    QCOMPARE(desk.bus.command("get 1 version"), QByteArray("ok V200"));

    const Journey &journey = *desk.journey;
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().chooseDrive(0));
    QVERIFY(journey.wizard().press("BtnRemoveConnection"));
    QVERIFY(journey.wizard().ok());
    QVERIFY(journey.connectManually(port, 1, 0));
    QVERIFY(journey.showPage(drive));
    QTRY_COMPARE(Person::textOf(journey.window(), "lMotorSoftwareVersion_2"), QStringLiteral("V200"));
}

void TestFirmwareJourneys::updateGoesOnWhileAnotherPageIsShown()
{
    const UpdateDesk desk;
    QVERIFY(desk.update());
    QVERIFY(desk.journey->showPage(drive));
    QTRY_COMPARE_WITH_TIMEOUT(desk.bus.command("get 1 bootloader") + desk.bus.command("get 1 version"),
        QByteArray("ok 0ok V200"), Person::patienceMs);
}

void TestFirmwareJourneys::programmerThatFailsLeavesPageReady()
{
    const UpdateDesk desk;
    QVERIFY(desk.update("fails"));
    QTRY_VERIFY_WITH_TIMEOUT(desk.isReady(), Person::patienceMs);
    QVERIFY2(desk.output().contains("Error: "), qPrintable(desk.output()));
    QCOMPARE(desk.bus.command("get 1 version").mid(3), TestBench::shortVersion);
}

void TestFirmwareJourneys::zeroByteCutsOutput()
{
    const UpdateDesk desk;
    QVERIFY(desk.update("zero"));
    QTRY_VERIFY_WITH_TIMEOUT(desk.isReady(), Person::patienceMs);
    QVERIFY2(desk.output().contains("Shown up to here"), qPrintable(desk.output()));
    QVERIFY2(!desk.output().contains("never beyond"), qPrintable(desk.output()));
}

void TestFirmwareJourneys::endlessOutputLeavesPageResponsive()
{
    const UpdateDesk desk;
    QVERIFY(desk.update("endless"));
    const auto *output = desk.journey->window().findChild<QPlainTextEdit *>("edOutput");
    QTRY_COMPARE_WITH_TIMEOUT(output->blockCount(), 10000, Person::patienceMs);
    QVERIFY(desk.journey->showPage(drive));
    QCOMPARE(desk.journey->pageTitle(), QStringLiteral("Z7-Motorstatus"));
}

void TestFirmwareJourneys::programmerThatNeverEndsKeepsPageBusy_data()
{
    QTest::addColumn<bool>("canBeExecuted");
    QTest::newRow("hanging programmer") << true;
    QTest::newRow("programmer that cannot be executed") << false;
}

void TestFirmwareJourneys::programmerThatNeverEndsKeepsPageBusy()
{
    QFETCH(bool, canBeExecuted);
    const UpdateDesk desk;
    if (!canBeExecuted)
        QFile::setPermissions(desk.programmer, QFile::ReadOwner);
    QVERIFY(desk.update("hangs"));
    QTRY_COMPARE_WITH_TIMEOUT(
        desk.stage(), QStringLiteral("Upload wurde gestartet, bitte warten..."), Person::patienceMs);
    QVERIFY(!desk.journey->window().findChild<QPushButton *>("BtnUploadFirmwareFile")->isEnabled());
    QCOMPARE(
        Person::textOf(desk.journey->window(), "lUpdateStarted"), QStringLiteral("Firmwareupdate läuft..."));
}

void TestFirmwareJourneys::nothingElseGoesOnBusBesideProgrammer()
{
    const UpdateDesk desk;
    const Journey &journey = *desk.journey;
    QVERIFY(desk.update("hangs"));
    QTRY_VERIFY_WITH_TIMEOUT(desk.output().contains("Waiting..."), Person::patienceMs);
    desk.bus.clearLog();

    // The live update waits, and a person's request is told to have been aborted.
    QVERIFY(journey.showPage(drive, QStringLiteral("Parametertabelle")));
    QVERIFY(journey.press("BtnDownload"));
    QTRY_COMPARE(journey.bar().message, QStringLiteral("Die Transaktion wurde abgebrochen"));
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().press("BtnQuickConnect"));
    QTRY_COMPARE(journey.wizard().triedDrives(), QStringList("Port0 - Z7.1: refused"));
    QVERIFY(journey.wizard().close());
    QVERIFY(journey.showPage(drive, QStringLiteral("Festdrehzahlen")));
    // Ten pauses of the live update.
    QVERIFY(!Person::waitUntil([&desk] { return !desk.bus.log().isEmpty(); }, 1000));
}

void TestFirmwareJourneys::liveUpdateGoesOnWhenProgrammerHasEnded()
{
    const UpdateDesk desk;
    QVERIFY(desk.update("hangs"));
    QTRY_VERIFY_WITH_TIMEOUT(desk.output().contains("Waiting..."), Person::patienceMs);
    QVERIFY(desk.journey->showPage(drive));
    desk.bus.command("power-cycle 1");
    desk.bus.clearLog();
    UpdateDesk::endProgrammer();
    QTRY_VERIFY_WITH_TIMEOUT(!desk.bus.log().isEmpty(), Person::patienceMs);
    QTRY_COMPARE(desk.journey->bar().usb, QStringLiteral("green"));
}

void TestFirmwareJourneys::closedProgramLetsProgrammerFinish_data()
{
    QTest::addColumn<QByteArray>("programmer");
    QTest::addColumn<QString>("atWork");
    QTest::addColumn<bool>("onAnotherPage");
    QTest::newRow("slow programmer") << QByteArray("slow") << "Programming: 0 %" << false;
    QTest::newRow("closed output") << QByteArray("quiet") << "Working in silence..." << false;
    QTest::newRow("another page is shown") << QByteArray("slow") << "Programming: 0 %" << true;
}

void TestFirmwareJourneys::closedProgramLetsProgrammerFinish()
{
    QFETCH(QByteArray, programmer);
    QFETCH(QString, atWork);
    QFETCH(bool, onAnotherPage);
    UpdateDesk desk;
    QVERIFY(desk.update(programmer));
    QTRY_VERIFY_WITH_TIMEOUT(desk.output().contains(atWork), Person::patienceMs);
    if (onAnotherPage)
        QVERIFY(desk.journey->showPage(drive));
    QVERIFY(desk.journey->closeWindow());
    QVERIFY(!desk.journey->window().isVisible());
    QCOMPARE(desk.bus.command("get 1 bootloader"), QByteArray("ok 1"));
    desk.endProgram();
    QCOMPARE(desk.bus.command("get 1 bootloader"), QByteArray("ok 0"));
    QCOMPARE(desk.bus.command("get 1 version"), QByteArray("ok V200"));
}

void TestFirmwareJourneys::driveThatRefusesItsBootloaderIsReported()
{
    const UpdateDesk desk;
    QVERIFY(desk.showPage());
    QVERIFY(desk.chooseImage());
    // Another password, so that the drive refuses the command.
    desk.bus.command("set 1 password 99");
    desk.start();
    QTRY_VERIFY_WITH_TIMEOUT(
        desk.output().contains("Der Bootloader konnte nicht aktiviert werden: "), Person::patienceMs);
    QTRY_VERIFY(desk.isReady());
    QCOMPARE(desk.bus.command("get 1 bootloader"), QByteArray("ok 0"));
}

void TestFirmwareJourneys::refusalsComeInTheirOrder()
{
    const UpdateDesk desk({1, 2});
    const Journey &journey = *desk.journey;
    QVERIFY(journey.connectManually(port, 1, 0));
    QVERIFY(journey.connectManually(port, 2, 0));
    QVERIFY(journey.showPage(drive, firmwarePage));
    QVERIFY(QFile::remove(desk.programmer));
    QCOMPARE(desk.start(QMessageBox::Ok),
        QStringList("Es sind zur Zeit 2 Motoren verbunden. Das Update kann nur durchgeführt werden, wenn im "
                    "Netzwerk nur ein einziger Motor erreichbar ist."));

    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().chooseDrive(1));
    QVERIFY(journey.wizard().press("BtnRemoveConnection"));
    QVERIFY(journey.wizard().ok());
    QVERIFY(journey.showPage(drive, firmwarePage));
    QCOMPARE(desk.start(QMessageBox::Ok), QStringList("Die Firmwaredatei \"\" kann nicht geöffnet werden."));

    QVERIFY(desk.chooseImage());
    QCOMPARE(desk.start(QMessageBox::Ok),
        QStringList("Das Ladeprogramm \"Z7Programmer.exe\" kann nicht gefunden werden."));
}

void TestFirmwareJourneys::answerNoLeavesDriveAlone()
{
    const UpdateDesk desk;
    QVERIFY(desk.showPage());
    QVERIFY(desk.chooseImage());
    desk.start(QMessageBox::No);
    QVERIFY(desk.isReady());
    QCOMPARE(desk.output(), QString());
    QCOMPARE(desk.bus.command("get 1 bootloader"), QByteArray("ok 0"));
    // Polling has not been touched.
    desk.bus.clearLog();
    QTRY_VERIFY(!desk.bus.log().isEmpty());
}

QTEST_MAIN(TestFirmwareJourneys)

#include "tst_firmwarejourneys.moc"
