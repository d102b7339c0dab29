// The firmware update up to the programmer: its texts, its checks, its question and its stages.

#include "tests/pages/firmwarepage.h"
#include "tests/support/looks.h"
#include "tests/support/person.h"

#include <optional>
#include <sys/stat.h>

namespace {

const QString question = QStringLiteral(
    "Mit dem Firmwareupdate aktualisieren Sie die Funktionalität Ihres Z7-Motors.\n\n"
    "Bitte beachten Sie:\n\n"
    "* Trennen Sie während des Updateprozess auf keinen Fall die Verbindung zum Motor.\n"
    "* Stellen Sie sicher, daß nur ein einziger Z7-Motor in ihrem Netzwerk angeschlossen ist.\n"
    "* Achten Sie darauf, dass der Motor während des Updateprozesses nicht von anderen Eingängen Signale "
    "erhält.");
const QString programmerMissing =
    QStringLiteral("Das Ladeprogramm \"Z7Programmer.exe\" kann nicht gefunden werden.");

QString fileMissing(const QString &name)
{
    return QStringLiteral("Die Firmwaredatei \"%1\" kann nicht geöffnet werden.").arg(name);
}

/// Puts a pipe, or a folder, where a file was.
void putIntoThePlaceOf(const QString &fileName, bool isPipe)
{
    QVERIFY(QFile::remove(fileName));
    if (isPipe)
        QCOMPARE(mkfifo(qPrintable(fileName), 0600), 0);
    else
        QVERIFY(QDir().mkdir(fileName));
}

QString tooManyDrives(int count)
{
    return QStringLiteral("Es sind zur Zeit %1 Motoren verbunden. Das Update kann nur durchgeführt werden, "
                          "wenn im Netzwerk nur ein einziger Motor erreichbar ist.")
        .arg(count);
}

} // namespace

class TestFirmwarePage : public QObject
{
    Q_OBJECT

private slots:
    void init() { page.emplace(); }
    void cleanup() { page.reset(); }

    void captionsStandAtTheirPlaces_data();
    void captionsStandAtTheirPlaces();
    void captionsAreInUsersLanguage_data() { captionsStandAtTheirPlaces_data(); }
    void captionsAreInUsersLanguage();
    void emptyIntroductionIsNotHidden();
    void buttonsBearTheirIcons();
    void fileAndOutputCanOnlyBeRead();
    void pageWantsEveryDriveAndNoParameter();

    void shownPageIsIdleAndSaysSoInOutput();
    void fileIsPickedInDialog();
    void dialogLeftWithoutFileKeepsChosenOne();

    void severalDrivesAreRefusedWithTheirNumber_data();
    void severalDrivesAreRefusedWithTheirNumber();
    void refusalLooksSameEachTime();
    void updateWithoutFileIsRefused();
    void fileRemovedAfterItsChoiceIsRefused();
    void missingProgrammerIsRefused();
    void whatIsNoRegularFileIsNoFirmware_data();
    void whatIsNoRegularFileIsNoFirmware();
    void whatIsNoRegularFileIsNoProgrammer_data() { whatIsNoRegularFileIsNoFirmware_data(); }
    void whatIsNoRegularFileIsNoProgrammer();
    void linkToFileIsFile();
    void drivesAreCheckedBeforeFile();
    void fileIsCheckedBeforeProgrammer();
    void runningUpdateIsRefusedBeforeAnythingElseIsChecked();
    void refusalLeavesAllAsItWas();
    void driveConnectedAfterShowingIsNotCounted();
    void driveConnectedAfterShowingIsCountedWhenPageIsShownAgain();
    void drivesAreCountedAnewAtEachShowing();
    void updateWithoutDriveGoesAsFarAsBootloaderCommand();

    void questionIsAskedBeforeStart();
    void outputIsClearedBeforeQuestion();
    void anotherAnswerThanYesLeavesAllButOutputAsItWas_data();
    void anotherAnswerThanYesLeavesAllButOutputAsItWas();

private:
    const FirmwareUser &user() const { return page->user; }
    std::optional<FirmwarePage> page;
};

void TestFirmwarePage::captionsStandAtTheirPlaces_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *widget, const char *key, const QString &text) {
        QTest::newRow(widget) << widget << key << text;
    };
    row("lFormDescription", "DialogDescription",
        QStringLiteral("Mit dem Firmwareupdate können die Funktionen Ihres Antrieb aktualisiert werden. "
                       "Dafür ist eine Firmwaredatei erforderlich, die Sie bei Ihrem Vertriebspartner "
                       "erhalten können."));
    row("lIntro", "Introduction", "");
    row("lFirmwareFile", "FirmwareFile", "Firmwaredatei:");
    row("BtnUploadFirmwareFile", "StartUploadFirmware", "Starte Firmwareupdate...");
    row("lProcess", "UploadProcess", "Prozess:");
    row("lStatus", "UploadStatus", "Status:");
    row("lUpdateStarted", "UploadNotRunning", "Bereit");
    row("lCurrentStatus", "StatusIdle", "Idle");
}

void TestFirmwarePage::captionsStandAtTheirPlaces()
{
    QFETCH(QString, widget);
    page->showWithDrives(1);
    QTEST(page->shown.child<QWidget>(widget)->property("text").toString(), "text");
}

void TestFirmwarePage::captionsAreInUsersLanguage()
{
    QFETCH(QString, widget);
    QFETCH(QString, key);
    page->folder.writeText(
        "deutsch.z7lang", QStringLiteral("[DialogFirmwareUpdate]\n%1=translated\n").arg(key));
    page->showWithDrives(1);
    QCOMPARE(page->shown.child<QWidget>(widget)->property("text").toString(), QStringLiteral("translated"));
}

void TestFirmwarePage::emptyIntroductionIsNotHidden()
{
    page->showWithDrives(1);
    QVERIFY(page->shown.label("lIntro")->isVisible());
}

void TestFirmwarePage::buttonsBearTheirIcons()
{
    QCOMPARE(Looks::image(user().fileButton()->icon()), Looks::image(":/images/open-file-icon_24px.png"));
    QCOMPARE(
        Looks::image(user().startButton()->icon()), Looks::image(":/images/Files-Upload-File-icon_24px.png"));
    QVERIFY(!user().fileButton()->icon().isNull() && !user().startButton()->icon().isNull());
}

void TestFirmwarePage::fileAndOutputCanOnlyBeRead()
{
    page->showWithDrives(1);
    const QString before = user().log();
    QTest::keyClicks(page->shown.field("edFirmwareFile"), "image.bin");
    QTest::keyClicks(user().output(), "typed");
    QCOMPARE(user().chosenFile(), QString());
    QCOMPARE(user().log(), before);
}

void TestFirmwarePage::pageWantsEveryDriveAndNoParameter()
{
    QVERIFY(page->shown.page->multiDevice);
    QVERIFY(!page->shown.page->allParameters);
    QCOMPARE(page->shown.page->paramIds(), QList<int>());
}

void TestFirmwarePage::shownPageIsIdleAndSaysSoInOutput()
{
    page->showWithDrives(1);
    QCOMPARE(user().stage(), Stage::idle);
    QCOMPARE(user().log(), QStringLiteral("Idle\n"));
    QVERIFY(user().isReady());
}

void TestFirmwarePage::fileIsPickedInDialog()
{
    page->folder.write("image.bin", "firmware");
    page->showWithDrives(1);
    const FileDialogUser dialog("image.bin");
    QVERIFY(Person::press(user().fileButton()));
    QCOMPARE(dialog.count(), 1);
    QCOMPARE(dialog.title(), QStringLiteral("Datei öffnen"));
    QCOMPARE(dialog.folder(), QDir::currentPath());
    QCOMPARE(dialog.filters(), QStringList("Z7-Firmwaredatei (*.bin)"));
    QCOMPARE(user().chosenFile(), QDir::current().filePath("image.bin"));
}

void TestFirmwarePage::dialogLeftWithoutFileKeepsChosenOne()
{
    page->folder.write("image.bin", "firmware");
    page->showWithDrives(1);
    user().choose("image.bin");
    user().choose(QString());
    QCOMPARE(user().chosenFile(), QDir::current().filePath("image.bin"));
}

void TestFirmwarePage::severalDrivesAreRefusedWithTheirNumber_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("two") << 2;
    QTest::newRow("twelve") << 12;
}

void TestFirmwarePage::severalDrivesAreRefusedWithTheirNumber()
{
    QFETCH(int, count);
    page->showWithDrives(count);
    QCOMPARE(user().start(QMessageBox::Ok).text, tooManyDrives(count));
}

void TestFirmwarePage::refusalLooksSameEachTime()
{
    page->showWithDrives(1);
    const SeenMessageBox box = user().start(QMessageBox::Ok);
    QCOMPARE(box.title, QStringLiteral("Z7ConfigTool"));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QVERIFY(box.hasParent);
}

void TestFirmwarePage::updateWithoutFileIsRefused()
{
    page->showWithDrives(1);
    QCOMPARE(user().start(QMessageBox::Ok).text, fileMissing(QString()));
}

void TestFirmwarePage::fileRemovedAfterItsChoiceIsRefused()
{
    page->folder.write("image.bin", "firmware");
    page->folder.write("Z7Programmer.exe", "programmer");
    page->showWithDrives(1);
    user().choose("image.bin");
    QVERIFY(QFile::remove("image.bin"));
    QCOMPARE(user().start(QMessageBox::Ok).text, fileMissing(QDir::current().filePath("image.bin")));
}

void TestFirmwarePage::missingProgrammerIsRefused()
{
    page->folder.write("image.bin", "firmware");
    page->showWithDrives(1);
    user().choose("image.bin");
    QCOMPARE(user().start(QMessageBox::Ok).text, programmerMissing);
}

void TestFirmwarePage::whatIsNoRegularFileIsNoFirmware_data()
{
    QTest::addColumn<bool>("isPipe");
    QTest::newRow("folder") << false;
    QTest::newRow("pipe") << true;
}

void TestFirmwarePage::whatIsNoRegularFileIsNoFirmware()
{
    QFETCH(bool, isPipe);
    user().writeImageAndProgrammer();
    page->showWithDrives(1);
    user().choose("image.bin");
    putIntoThePlaceOf("image.bin", isPipe);
    QCOMPARE(user().start(QMessageBox::Ok).text, fileMissing(QDir::current().filePath("image.bin")));
}

void TestFirmwarePage::whatIsNoRegularFileIsNoProgrammer()
{
    QFETCH(bool, isPipe);
    user().writeImageAndProgrammer();
    putIntoThePlaceOf("Z7Programmer.exe", isPipe);
    page->showWithDrives(1);
    user().choose("image.bin");
    QCOMPARE(user().start(QMessageBox::Ok).text, programmerMissing);
}

void TestFirmwarePage::linkToFileIsFile()
{
    user().writeImageAndProgrammer();
    QVERIFY(QFile::link("image.bin", "link.bin"));
    page->showWithDrives(1);
    user().choose("link.bin");
    QCOMPARE(user().start(QMessageBox::No).text, question);
}

void TestFirmwarePage::drivesAreCheckedBeforeFile()
{
    page->folder.write("Z7Programmer.exe", "programmer");
    page->showWithDrives(2);
    QCOMPARE(user().start(QMessageBox::Ok).text, tooManyDrives(2));
}

void TestFirmwarePage::fileIsCheckedBeforeProgrammer()
{
    page->showWithDrives(1);
    QVERIFY(!QFile::exists("Z7Programmer.exe"));
    QCOMPARE(user().start(QMessageBox::Ok).text, fileMissing(QString()));
}

void TestFirmwarePage::runningUpdateIsRefusedBeforeAnythingElseIsChecked()
{
    page->startUpdate();
    page->showWithDrives(2);
    // No hand reaches this: the button is disabled while an update runs.
    user().startButton()->setEnabled(true);
    QCOMPARE(user().start(QMessageBox::Ok).text,
        QStringLiteral("Ein Prozess zum Update der Firmware wurde bereits gestartet."));
    QCOMPARE(user().stage(), Stage::stopping);
    QCOMPARE(page->stopRequests.count(), 1);
}

void TestFirmwarePage::refusalLeavesAllAsItWas()
{
    page->showWithDrives(1);
    user().start(QMessageBox::Ok);
    QCOMPARE(user().log(), QStringLiteral("Idle\n"));
    QCOMPARE(user().stage(), Stage::idle);
    QVERIFY(user().isReady());
    QCOMPARE(page->stopRequests.count(), 0);
}

void TestFirmwarePage::driveConnectedAfterShowingIsNotCounted()
{
    user().writeImageAndProgrammer();
    page->showWithDrives(1);
    user().choose("image.bin");
    page->report(page->drive(4));
    page->report(page->drive(5));
    QCOMPARE(user().start(QMessageBox::Yes).text, question);
    QCOMPARE(user().stage(), Stage::stopping);
}

void TestFirmwarePage::driveConnectedAfterShowingIsCountedWhenPageIsShownAgain()
{
    page->showWithDrives(1);
    page->showWithDrives(2);
    QCOMPARE(user().start(QMessageBox::Ok).text, tooManyDrives(2));
}

void TestFirmwarePage::drivesAreCountedAnewAtEachShowing()
{
    page->showWithDrives(2);
    page->showWithDrives(1);
    QCOMPARE(user().start(QMessageBox::Ok).text, fileMissing(QString()));
}

void TestFirmwarePage::updateWithoutDriveGoesAsFarAsBootloaderCommand()
{
    user().writeImageAndProgrammer();
    page->showWithDrives(0);
    user().choose("image.bin");
    QCOMPARE(user().start(QMessageBox::Yes).text, question);
    page->allCommunicationStopped();
    QCOMPARE(page->bootloaderRequests.count(), 1);
    QCOMPARE(user().stage(), Stage::bootloader);
    QVERIFY(user().isBusy());
}

void TestFirmwarePage::questionIsAskedBeforeStart()
{
    user().writeImageAndProgrammer();
    page->showWithDrives(1);
    user().choose("image.bin");
    const SeenMessageBox box = user().start(QMessageBox::No);
    QCOMPARE(box.text, question);
    QCOMPARE(box.informativeText, QStringLiteral("Soll das Update jetzt gestatet werden?"));
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QVERIFY(box.isModal);
}

void TestFirmwarePage::outputIsClearedBeforeQuestion()
{
    user().writeImageAndProgrammer();
    page->showWithDrives(1);
    user().choose("image.bin");
    QString logAtTheQuestion = "no question";
    const MessageBoxAnswerer answerer([&](QMessageBox *box) {
        logAtTheQuestion = user().log();
        Person::press(box->button(QMessageBox::No));
    });
    QVERIFY(Person::press(user().startButton()));
    QCOMPARE(logAtTheQuestion, QString());
}

void TestFirmwarePage::anotherAnswerThanYesLeavesAllButOutputAsItWas_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("No, which has the focus") << int(Qt::Key_Return);
    QTest::newRow("the box closed with Escape") << int(Qt::Key_Escape);
}

void TestFirmwarePage::anotherAnswerThanYesLeavesAllButOutputAsItWas()
{
    QFETCH(int, key);
    user().writeImageAndProgrammer();
    page->showWithDrives(1);
    user().choose("image.bin");
    const MessageBoxAnswerer answerer([key](QMessageBox *box) { QTest::keyClick(box, Qt::Key(key)); });
    QVERIFY(Person::press(user().startButton()));
    QCOMPARE(answerer.count(), 1);
    QCOMPARE(user().log(), QString());
    QCOMPARE(user().stage(), Stage::idle);
    QCOMPARE(user().process(), QStringLiteral("Bereit"));
    QCOMPARE(user().chosenFile(), QDir::current().filePath("image.bin"));
    QVERIFY(user().isReady());
    QCOMPARE(page->stopRequests.count(), 0);
}

QTEST_MAIN(TestFirmwarePage)

#include "tst_firmwarepage.moc"
