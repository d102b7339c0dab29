// The stages of a firmware update as the page shows them, up to the moment that the programmer is to start.

#include "tests/pages/firmwarepage.h"
#include "tests/support/person.h"

#include <optional>

namespace {

/// A stage's entry in the output: its text and one blank line.
QString entry(const QString &stage)
{
    return stage + QStringLiteral("\n\n");
}

/// The same as the last of the output.
QString lastEntry(const QString &stage)
{
    return stage + QLatin1Char('\n');
}

} // namespace

class TestFirmwareStages : public QObject
{
    Q_OBJECT

private slots:
    void init() { page.emplace(); }
    void cleanup() { page.reset(); }

    void confirmedUpdateStopsAllCommunication();
    void controlsAreDisabledWhileUpdateRuns();
    void stoppedCommunicationLeadsToBootloaderCommand();
    void stoppedCommunicationIsIgnoredWhenNoUpdateWaitsForIt();
    void stoppedCommunicationIsIgnoredOnceCommandIsOut();
    void driveInItsBootloaderLeadsToProgrammer();
    void stoppedCommunicationIsIgnoredWhileProgrammerRuns();
    void recordBeforeBootloaderCommandMeansNothing();
    void outputBeforeFirstUpdateIsNone();

    void driveThatStaysOutOfItsBootloaderEndsUpdate_data();
    void driveThatStaysOutOfItsBootloaderEndsUpdate();
    void errorBeatsBootloaderMark();
    void bootloaderErrorIsInUsersLanguage();
    void updateCanBeStartedAgainAfterBootloaderError();

    void outputIsLogOfStages();
    void pageShownAgainKeepsStageAndEmptiesFileAndOutput();
    void updateGoesOnAfterPageWasShownAgain();
    void showingListedDriveIsNoOutcomeOfCommand();
    void everyTextIsInUsersLanguage();

private:
    const FirmwareUser &user() const { return page->user; }
    std::optional<FirmwarePage> page;
};

void TestFirmwareStages::confirmedUpdateStopsAllCommunication()
{
    page->startUpdate();
    QCOMPARE(page->stopRequests.count(), 1);
    QCOMPARE(page->bootloaderRequests.count(), 0);
    QCOMPARE(user().stage(), Stage::stopping);
    QCOMPARE(user().process(), QStringLiteral("Firmwareupdate läuft..."));
}

void TestFirmwareStages::controlsAreDisabledWhileUpdateRuns()
{
    page->startUpdate();
    QVERIFY(user().isBusy());
    const MessageBoxAnswerer answerer(QMessageBox::Ok);
    QTest::mouseClick(user().startButton(), Qt::LeftButton);
    QTest::mouseClick(user().fileButton(), Qt::LeftButton);
    QCOMPARE(answerer.count(), 0);
    QVERIFY2(user().output()->isEnabled(), "the output can be scrolled meanwhile");
}

void TestFirmwareStages::stoppedCommunicationLeadsToBootloaderCommand()
{
    page->startUpdate();
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 1);
    QCOMPARE(user().stage(), Stage::bootloader);
    QCOMPARE(user().process(), QStringLiteral("Firmwareupdate läuft..."));
    QVERIFY(user().isBusy());
}

void TestFirmwareStages::stoppedCommunicationIsIgnoredWhenNoUpdateWaitsForIt()
{
    page->showWithDrives(1);
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 0);
    QCOMPARE(user().log(), lastEntry(Stage::idle));
}

void TestFirmwareStages::stoppedCommunicationIsIgnoredOnceCommandIsOut()
{
    page->startUpToBootloaderCommand();
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 1);
    QCOMPARE(user().log(), entry(Stage::stopping) + lastEntry(Stage::bootloader));
}

void TestFirmwareStages::driveInItsBootloaderLeadsToProgrammer()
{
    page->startUpToBootloaderCommand();
    page->report(page->driveInBootloader());
    QTRY_COMPARE(user().stage(), Stage::programming);
    QCOMPARE(user().process(), QStringLiteral("Firmwareupdate läuft..."));
    QVERIFY(user().isBusy());
}

void TestFirmwareStages::stoppedCommunicationIsIgnoredWhileProgrammerRuns()
{
    page->startUpToBootloaderCommand();
    page->report(page->driveInBootloader());
    page->allCommunicationStopped();
    QTRY_COMPARE(user().stage(), Stage::programming);
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 1);
    QCOMPARE(user().stage(), Stage::programming);
}

void TestFirmwareStages::recordBeforeBootloaderCommandMeansNothing()
{
    page->startUpdate();
    page->report(page->driveWithError(1));
    page->report(page->driveInBootloader());
    QCOMPARE(user().stage(), Stage::stopping);
    QCOMPARE(user().log(), lastEntry(Stage::stopping));
}

void TestFirmwareStages::outputBeforeFirstUpdateIsNone()
{
    page->showWithDrives(1);
    // No hand reaches this: there is no programmer yet.
    QVERIFY(QMetaObject::invokeMethod(page->shown.page.get(), "uploadProcReadyRead"));
    QCOMPARE(user().log(), lastEntry(Stage::idle));
}

void TestFirmwareStages::driveThatStaysOutOfItsBootloaderEndsUpdate_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no reply") << 1 << "Das Gerät antwortet nicht (timeout)";
    QTest::newRow("wrong password") << 10 << "Ungültiges Passwort";
    QTest::newRow("motor turns") << 20 << "Der Motor ist nicht im Freilauf";
    QTest::newRow("error without a text") << 77 << "(77)";
    QTest::newRow("no error, and no bootloader either") << 0 << "";
}

void TestFirmwareStages::driveThatStaysOutOfItsBootloaderEndsUpdate()
{
    QFETCH(int, error);
    QFETCH(QString, reason);
    page->startUpToBootloaderCommand();
    page->report(page->driveWithError(error));
    QCOMPARE(user().log(),
        entry(Stage::stopping) + entry(Stage::bootloader)
            + entry("Der Bootloader konnte nicht aktiviert werden: " + reason) + lastEntry(Stage::idle));
    QCOMPARE(user().stage(), Stage::idle);
    QCOMPARE(user().process(), QStringLiteral("Bereit"));
    QVERIFY(user().isReady());
    QCOMPARE(page->busNews(), QStringList());
}

void TestFirmwareStages::errorBeatsBootloaderMark()
{
    Z7Device drive = page->driveWithError(1);
    drive.bootloaderActive = true;
    page->startUpToBootloaderCommand();
    page->report(drive);
    QCOMPARE(user().stage(), Stage::idle);
}

void TestFirmwareStages::bootloaderErrorIsInUsersLanguage()
{
    page->folder.writeText("deutsch.z7lang",
        "[DialogFirmwareUpdate]\nErrorBootloaderInitFailed=No bootloader: %1!\n"
        "[ErrorCodes]\nErrorCode_20=it turns\n");
    page->startUpToBootloaderCommand();
    page->report(page->driveWithError(20));
    QVERIFY2(user().log().contains("\nNo bootloader: it turns!\n\n"), qPrintable(user().log()));
}

void TestFirmwareStages::updateCanBeStartedAgainAfterBootloaderError()
{
    page->startUpToBootloaderCommand();
    page->report(page->driveWithError(20));
    QCOMPARE(user().start(QMessageBox::Yes).buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(page->stopRequests.count(), 2);
    QCOMPARE(user().log(), lastEntry(Stage::stopping));
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 2);
}

void TestFirmwareStages::outputIsLogOfStages()
{
    page->startUpToBootloaderCommand();
    page->report(page->driveInBootloader());
    QTRY_COMPARE(
        user().log(), entry(Stage::stopping) + entry(Stage::bootloader) + lastEntry(Stage::programming));
}

void TestFirmwareStages::pageShownAgainKeepsStageAndEmptiesFileAndOutput()
{
    page->startUpdate();
    page->showWithDrives(1);
    QCOMPARE(user().chosenFile(), QString());
    QCOMPARE(user().log(), lastEntry(Stage::stopping));
    QCOMPARE(user().stage(), Stage::stopping);
    QCOMPARE(user().process(), QStringLiteral("Firmwareupdate läuft..."));
    QVERIFY(user().isBusy());
}

void TestFirmwareStages::updateGoesOnAfterPageWasShownAgain()
{
    page->startUpdate();
    page->showWithDrives(1);
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 1);
    QCOMPARE(user().log(), entry(Stage::stopping) + lastEntry(Stage::bootloader));
}

void TestFirmwareStages::showingListedDriveIsNoOutcomeOfCommand()
{
    page->startUpToBootloaderCommand();
    page->showWithDrives(1);
    QVERIFY(user().isBusy());
    QCOMPARE(user().log(), lastEntry(Stage::bootloader));
    page->report(page->driveInBootloader());
    QTRY_COMPARE(user().stage(), Stage::programming);
}

void TestFirmwareStages::everyTextIsInUsersLanguage()
{
    const QStringList keys {"Z7FirmwareFile", "FirmwareUpdateCurrentlyRunning", "OnlyOneMotorConflict",
        "UnableToOpenFirmwareFile", "ProgrammerNotAvailable", "FirmwareUploadConfirm", "QuestionStartUpload",
        "StatusIdle", "StatusAwaitingCommunicationStopped", "StatusSendingBooltloaderInitCommand",
        "StatusUploadProcessRunning", "UploadNotRunning", "UploadRunning"};
    QString language = "[Common]\nOpenFile=<OpenFile>\nApplicationTitle=<title>\n[DialogFirmwareUpdate]\n";
    for (const QString &key : keys)
        language += QStringLiteral("%1=<%1>\n").arg(key);
    page->folder.writeText("deutsch.z7lang", language);

    page->showWithDrives(2);
    QCOMPARE(user().start(QMessageBox::Ok).text, QStringLiteral("<OnlyOneMotorConflict>"));
    page->showWithDrives(1);
    QCOMPARE(user().start(QMessageBox::Ok).text, QStringLiteral("<UnableToOpenFirmwareFile>"));
    page->folder.write("image.bin", "firmware");
    const FileDialogUser dialog("image.bin");
    QVERIFY(Person::press(user().fileButton()));
    QCOMPARE(dialog.title(), QStringLiteral("<OpenFile>"));
    QCOMPARE(dialog.filters(), QStringList("<Z7FirmwareFile> (*.bin)"));
    const SeenMessageBox refusal = user().start(QMessageBox::Ok);
    QCOMPARE(refusal.text, QStringLiteral("<ProgrammerNotAvailable>"));
    QCOMPARE(refusal.title, QStringLiteral("<title>"));
    QCOMPARE(user().stage(), QStringLiteral("<StatusIdle>"));
    QCOMPARE(user().process(), QStringLiteral("<UploadNotRunning>"));

    user().writeImageAndProgrammer();
    const SeenMessageBox question = user().start(QMessageBox::Yes);
    QCOMPARE(question.text, QStringLiteral("<FirmwareUploadConfirm>"));
    QCOMPARE(question.informativeText, QStringLiteral("<QuestionStartUpload>"));
    QCOMPARE(user().stage(), QStringLiteral("<StatusAwaitingCommunicationStopped>"));
    QCOMPARE(user().process(), QStringLiteral("<UploadRunning>"));
    user().startButton()->setEnabled(true); // by no hand
    QCOMPARE(user().start(QMessageBox::Ok).text, QStringLiteral("<FirmwareUpdateCurrentlyRunning>"));
    page->allCommunicationStopped();
    QCOMPARE(user().stage(), QStringLiteral("<StatusSendingBooltloaderInitCommand>"));
    page->report(page->driveInBootloader());
    QTRY_COMPARE(user().stage(), QStringLiteral("<StatusUploadProcessRunning>"));
}

QTEST_MAIN(TestFirmwareStages)

#include "tst_firmwarestages.moc"
