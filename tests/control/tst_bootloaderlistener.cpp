// The page that asked for the bootloader command hears of its outcome, whatever goes on meanwhile.

#include "tests/control/controlleronabus.h"
#include "tests/support/firmwareuser.h"

#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

constexpr int status = 1;
constexpr int table = TestedController::tablePage;
constexpr int firmware = TestedController::firmwarePage;
constexpr int noDrive = 1;
constexpr int pauseMs = 20;

/// Bootloader command to drive 3 with the password 4711.
const QString bootloaderCommand = QStringLiteral("0b 03 00 00 12 67 d2");
/// The next reply begins so late that the test can do something before, and yet in time.
const QByteArray lateReply("fault 3 late ms=500 count=1");
constexpr int patientTimeoutMs = 5000;
constexpr int impatientTimeoutMs = 200;
constexpr int actualSpeed = 0x8001;

} // namespace

class TestBootloaderListener : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void idleBusCarriesCommandAlone();
    void pollingEndsForCommandAndStaysAway();
    void pollingThatReadsEverythingDoesNotComeBackEither();
    void scanEndsForCommand();
    void transferEndsForCommand();
    void transferThatWasCutShortIsNotOutcome();

    void anotherPageCanBeShownWhileCommandIsUnderWay();
    void anotherPageCanBeShownWhileTransferStops();
    void nobodyElseHearsOfOutcome();
    void otherListenersDoNotOutliveShowing();
    void pageHearsOfItsOwnCommandAlone();

    void cancelledCommunicationDoesNotTakeOutcomeAway();
    void wizardThatEmptiesListDoesNotTakeOutcomeAway();
    void wizardThatListsAnewWhileTransferStopsLeavesNoCommand();
    void withoutDriveNoCommandIsSent();

    void failedCommandIsTold_data();
    void failedCommandIsTold();
    void controllerCanGoWhileCommandIsUnderWay();

private:
    Z7MainController &controller() { return tested->controller; }
    bool hasSent(const QString &request) const { return tested->requests().contains(request); }
    /// Shows the page for a drive, chooses the image, and remembers the page.
    void showFirmwarePage(int deviceId);
    void showFirmwarePage() { showFirmwarePage(id3); }
    /// Confirms the update. What follows runs in the event loop.
    void startUpdate() const { user->start(QMessageBox::Yes); }

    std::optional<ControllerOnABus> tested;
    std::optional<FirmwareUser> user;
    int id3 = 0;
};

void TestBootloaderListener::init()
{
    tested.emplace();
    tested->slowDown();
    Z7Services::instance()->options()->setTimeout(patientTimeoutMs);
    FirmwareUser::writeImageAndProgrammer();
    id3 = tested->drive3().deviceId();
    tested->connectDrives({tested->drive3()});
}

void TestBootloaderListener::cleanup()
{
    user.reset();
    tested.reset();
}

void TestBootloaderListener::showFirmwarePage(int deviceId)
{
    tested->showPage(firmware, deviceId);
    user.emplace(tested->shownPage());
    user->choose("image.bin");
}

void TestBootloaderListener::idleBusCarriesCommandAlone()
{
    showFirmwarePage();
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(tested->requests(), QStringList(bootloaderCommand));
    QVERIFY(controller().device(id3).bootloaderActive);
}

void TestBootloaderListener::pollingEndsForCommandAndStaysAway()
{
    Z7Services::instance()->options()->setPollingInterval(pauseMs);
    showFirmwarePage();
    QTRY_VERIFY(controller().device(id3).parametersComplete);
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(tested->requests().last(), bootloaderCommand);
}

void TestBootloaderListener::pollingThatReadsEverythingDoesNotComeBackEither()
{
    Z7Services::instance()->options()->setPollingInterval(1);
    tested->bus.command(lateReply);
    showFirmwarePage();
    QTRY_VERIFY(hasSent(logOnRequests().first()));
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(tested->requests().last(), bootloaderCommand);
    QCOMPARE(tested->requests().count(bootloaderCommand), 1);
    QVERIFY(!controller().device(id3).parametersComplete);
}

void TestBootloaderListener::scanEndsForCommand()
{
    NotingListener sweep;
    showFirmwarePage();
    controller().scanDevice(Z7Device(tested->drive3().portInfo), &sweep);
    QTRY_VERIFY(sweep.notes.contains("progress"));
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(tested->requests().last(), bootloaderCommand);
    QVERIFY2(sweep.records.size() < 255, "the sweep was cut short");
}

void TestBootloaderListener::transferEndsForCommand()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    controller().DownloadData();
    QTRY_VERIFY(hasSent(logOnRequests().first()));
    startUpdate();
    QCOMPARE(user->stage(), Stage::stopping);
    QTRY_COMPARE(user->stage(), Stage::programming);
    QVERIFY(tested->isOver());
    QVERIFY2(!hasSent(logOnRequests().last()), "the transfer was cut short");
    QCOMPARE(tested->requests().last(), bootloaderCommand);
}

void TestBootloaderListener::transferThatWasCutShortIsNotOutcome()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    controller().DownloadData();
    QTRY_VERIFY(hasSent(logOnRequests().first()));
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(user->log(),
        QStringList({Stage::stopping, Stage::bootloader, Stage::programming}).join("\n\n") + "\n");
}

void TestBootloaderListener::anotherPageCanBeShownWhileCommandIsUnderWay()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    startUpdate();
    QTRY_VERIFY(hasSent(bootloaderCommand));
    tested->showPage(status, id3);
    QCOMPARE(user->stage(), Stage::bootloader);
    QTRY_COMPARE(user->stage(), Stage::programming);
}

void TestBootloaderListener::anotherPageCanBeShownWhileTransferStops()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    controller().DownloadData();
    QTRY_VERIFY(hasSent(logOnRequests().first()));
    startUpdate();
    tested->showPage(status, id3);
    QCOMPARE(user->stage(), Stage::stopping);
    QTRY_COMPARE(user->stage(), Stage::programming);
}

void TestBootloaderListener::nobodyElseHearsOfOutcome()
{
    showFirmwarePage();
    startUpdate();
    tested->showPage(table, id3);
    tested->forgetNotes();
    controller().PostDeviceUpdate(TransferTelegramStack, withValue(controller().device(id3), 11, 555));
    QCOMPARE(user->stage(), Stage::idle);
    QVERIFY(tested->tableText(11, TestedController::deviceValueColumn) != QStringLiteral("555"));
    QCOMPARE(tested->deviceControl.notes, QStringList());
}

void TestBootloaderListener::otherListenersDoNotOutliveShowing()
{
    NotingListener other;
    tested->bus.command(lateReply);
    showFirmwarePage();
    controller().readDeviceStatus(tested->drive3(), &other);
    QTRY_VERIFY(hasSent(logOnRequests().first()));
    startUpdate();
    tested->showPage(status, id3);
    other.notes.clear();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(other.notes, QStringList());
}

void TestBootloaderListener::pageHearsOfItsOwnCommandAlone()
{
    tested->bus.command("set 3 password 99");
    showFirmwarePage();
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::idle);
    // Without a drive no command goes out, and the page waits for ever.
    showFirmwarePage(noDrive);
    startUpdate();
    QCOMPARE(user->stage(), Stage::bootloader);
    NotingListener other;
    controller().readDeviceStatus(tested->drive3(), &other);
    QTRY_VERIFY(other.notes.contains("terminated"));
    QCOMPARE(user->stage(), Stage::bootloader);
}

void TestBootloaderListener::cancelledCommunicationDoesNotTakeOutcomeAway()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    startUpdate();
    QTRY_VERIFY(hasSent(bootloaderCommand));
    controller().cancelCommunication();
    QTRY_COMPARE(user->stage(), Stage::programming);
    QCOMPARE(tested->requests(), QStringList(bootloaderCommand));
}

void TestBootloaderListener::wizardThatEmptiesListDoesNotTakeOutcomeAway()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    startUpdate();
    QTRY_VERIFY(hasSent(bootloaderCommand));
    controller().cancelCommunication();
    tested->connectDrives({});
    QTRY_COMPARE(user->stage(), Stage::programming);
}

void TestBootloaderListener::wizardThatListsAnewWhileTransferStopsLeavesNoCommand()
{
    NotingListener reading;
    tested->bus.command(lateReply);
    showFirmwarePage();
    controller().readDeviceStatus(tested->drive3(), &reading);
    QTRY_VERIFY(hasSent(logOnRequests().first()));
    startUpdate();
    controller().cancelCommunication();
    tested->connectDrives({tested->drive3()});
    QTRY_VERIFY(reading.notes.contains("terminated"));
    QCOMPARE(user->stage(), Stage::bootloader);
    QVERIFY(user->isBusy());
    QVERIFY(!hasSent(bootloaderCommand));
}

void TestBootloaderListener::withoutDriveNoCommandIsSent()
{
    showFirmwarePage(noDrive);
    startUpdate();
    QCOMPARE(user->stage(), Stage::bootloader);
    QVERIFY(user->isBusy());
    NotingListener other;
    controller().readDeviceStatus(tested->drive3(), &other);
    QTRY_VERIFY(other.notes.contains("terminated"));
    QCOMPARE(tested->requests(), logOnRequests());
}

void TestBootloaderListener::failedCommandIsTold_data()
{
    QTest::addColumn<QByteArray>("trouble");
    QTest::addColumn<QString>("reason");
    QTest::newRow("another password") << QByteArray("set 3 password 99") << "Ungültiges Passwort";
    QTest::newRow("turning motor") << QByteArray("set 3 setpoint 1500") << "Der Motor ist nicht im Freilauf";
    QTest::newRow("lost drive") << QByteArray("remove 3") << "Das Gerät antwortet nicht (timeout)";
    QTest::newRow("pulled adapter") << QByteArray("pull") << "Der Port kann nicht geöffnet werden";
}

void TestBootloaderListener::failedCommandIsTold()
{
    QFETCH(QByteArray, trouble);
    QFETCH(QString, reason);
    Z7Services::instance()->options()->setTimeout(impatientTimeoutMs);
    showFirmwarePage();
    const QByteArray answer = tested->bus.command(trouble);
    QVERIFY2(answer.startsWith("ok"), answer.constData());
    if (trouble.contains("setpoint"))
        QTRY_VERIFY(tested->bus.memory(3, actualSpeed) > 0);
    startUpdate();
    QTRY_COMPARE(user->stage(), Stage::idle);
    const QString line = QStringLiteral("Der Bootloader konnte nicht aktiviert werden: %1\n").arg(reason);
    QVERIFY2(user->log().contains(line), qPrintable(user->log()));
    QVERIFY(user->isReady());
    QVERIFY(!controller().device(id3).bootloaderActive);
}

void TestBootloaderListener::controllerCanGoWhileCommandIsUnderWay()
{
    tested->bus.command(lateReply);
    showFirmwarePage();
    startUpdate();
    QTRY_VERIFY(hasSent(bootloaderCommand));
    QCOMPARE(user->stage(), Stage::bootloader);
    user.reset();
    tested.reset();
}

QTEST_MAIN(TestBootloaderListener)

#include "tst_bootloaderlistener.moc"
