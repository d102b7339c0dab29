// The external programmer, played by small scripts that each test puts into the working folder.

#include "control/services/language.h"
#include "pages/firmwareuploaddialog.h"
#include "tests/pages/firmwarepage.h"
#include "tests/support/listedports.h"

#include <QElapsedTimer>
#include <QTextBlock>
#include <QTimer>

#include <optional>

namespace {

constexpr int settlingMs = 200;
constexpr int mostLines = 10000;

const QStringList takenAndGivenBack {"taken", "given back"};

void setSearchPath(const QByteArray &path)
{
    if (path.isNull())
        qunsetenv("PATH");
    else
        qputenv("PATH", path);
}

bool isRunning(const QByteArray &process)
{
    return !process.isEmpty() && QFile::exists("/proc/" + process);
}

} // namespace

class TestFirmwareProgrammer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void programmerGetsPortAndFileAndNothingElse();
    void fileOfConfirmedStartIsUsedThoughFieldWasEmptied();
    void driveWithoutPortLeavesSwitchBare();
    void programmerStartsOnceDriveHasSettled();
    void updateWithoutSettledDriveStartsNoProgrammer();

    void searchPathIsSameAfterStart_data();
    void searchPathIsSameAfterStart();
    void programmerOnSearchPathComesBeforeThatOfWorkingFolder_data();
    void programmerOnSearchPathComesBeforeThatOfWorkingFolder();
    void programmerIsFoundInFolderThatNoSearchPathCanName();

    void programmerHasBusFromAcceptedCommandToItsEnd();
    void programmerThatCannotStartGivesBusBack_data();
    void programmerThatCannotStartGivesBusBack();
    void eachUpdateTakesBusAndGivesItBack();

    void standardOutputIsAppended();
    void umlautsAreSingleBytes();
    void standardErrorIsNotShown();
    void standardErrorIsNotKept();
    void zeroByteCutsThatReadAlone();
    void outputIsNeverInterpreted();
    void outputGoesOnInFieldClearedByAnotherShowing();

    void endOfProgrammerEndsUpdate_data();
    void endOfProgrammerEndsUpdate();
    void programmerThatHangsKeepsPageBusy();
    void programmerThatCannotBeExecutedIsDeadEnd();
    void secondUpdateRunsProgrammerAgain();
    void endlessOutputKeepsNewestLinesAndPageResponsive();

    void closedProgramOutlivesProgrammerThatStillTransfers_data();
    void closedProgramOutlivesProgrammerThatStillTransfers();
    void closedProgramGivesSilentProgrammerUp();
    void eachOutputMakesClosedProgramPatientAnew();
    void closedProgramStartsNoProgrammer();
    void closedProgramTouchesNoServices();

private:
    const FirmwareUser &user() const { return page->user; }
    void writeProgrammer(const QByteArray &script) const;
    /// Runs an update with this programmer up to its start.
    void startProgrammer(const QByteArray &script);
    void startProgrammer();
    /// What the programmer has printed: the output behind the entry of its stage.
    QString printed() const { return user().log().section(Stage::programming + "\n\n", 1); }
    bool isOver() const { return user().stage() == Stage::idle && user().isReady(); }
    /// How long a closed program bears a silent programmer.
    void setPatience(int ms) const
    {
        qobject_cast<FirmwareUploadDialog *>(page->shown.page.get())->setProgrammerPatience(ms);
    }

    const QByteArray searchPath = qgetenv("PATH");
    std::optional<ListedPorts> ports;
    std::optional<FirmwarePage> page;
};

void TestFirmwareProgrammer::init()
{
    ports.emplace();
    ports->plugUsb("ttyUSB0", QString());
    page.emplace();
}

void TestFirmwareProgrammer::cleanup()
{
    setSearchPath(searchPath);
    page.reset();
    ports.reset();
}

void TestFirmwareProgrammer::writeProgrammer(const QByteArray &script) const
{
    page->folder.write("Z7Programmer.exe", "#!/bin/bash\n" + script + '\n');
    QFile::setPermissions("Z7Programmer.exe", QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
}

void TestFirmwareProgrammer::startProgrammer(const QByteArray &script)
{
    page->startUpToBootloaderCommand();
    writeProgrammer(script);
    startProgrammer();
}

void TestFirmwareProgrammer::startProgrammer()
{
    page->report(page->driveInBootloader());
    // A quick programmer may be done by the time that this looks.
    QTRY_VERIFY(user().stage() != Stage::bootloader);
}

void TestFirmwareProgrammer::programmerGetsPortAndFileAndNothingElse()
{
    user().writeImageAndProgrammer();
    writeProgrammer("printf '%s\\n' \"$#\" \"$@\" > arguments");
    QDir::current().mkdir("firmware of the day");
    page->folder.write("firmware of the day/new  image.bin", "firmware");
    page->showWithDrives(1);
    user().choose("firmware of the day/new  image.bin");
    user().start(QMessageBox::Yes);
    page->allCommunicationStopped();
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(page->folder.read("arguments"),
        "2\n-ittyUSB0\n-a" + QDir::currentPath().toUtf8() + "/firmware of the day/new  image.bin\n");
}

void TestFirmwareProgrammer::fileOfConfirmedStartIsUsedThoughFieldWasEmptied()
{
    page->startUpdate();
    writeProgrammer("echo \"$2\" > file");
    page->showWithDrives(1);
    page->allCommunicationStopped();
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(page->folder.read("file"), "-a" + QDir::currentPath().toUtf8() + "/image.bin\n");
}

void TestFirmwareProgrammer::driveWithoutPortLeavesSwitchBare()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("echo \"$1\" > port");
    Z7Device drive = page->driveInBootloader();
    drive.portInfo = QSerialPortInfo();
    page->report(drive);
    QTRY_VERIFY(isOver());
    QCOMPARE(page->folder.read("port"), QByteArray("-i\n"));
}

void TestFirmwareProgrammer::programmerStartsOnceDriveHasSettled()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("touch started");
    QElapsedTimer sinceTheRecord;
    sinceTheRecord.start();
    page->report(page->driveInBootloader());
    QCOMPARE(user().stage(), Stage::bootloader);
    QTRY_VERIFY(user().stage() != Stage::bootloader);
    // The timer may be early by as much as its kind allows, which is a twentieth.
    QVERIFY2(sinceTheRecord.elapsed() >= settlingMs * 95 / 100,
        qPrintable(QString::number(sinceTheRecord.elapsed())));
    QTRY_VERIFY(QFile::exists("started"));
}

void TestFirmwareProgrammer::updateWithoutSettledDriveStartsNoProgrammer()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("touch started");
    page->report(page->driveWithError(20));
    QTest::qWait(2 * settlingMs);
    QVERIFY(!QFile::exists("started"));
    QCOMPARE(user().stage(), Stage::idle);
}

void TestFirmwareProgrammer::searchPathIsSameAfterStart_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("as a rule") << searchPath;
    QTest::newRow("with empty entries") << QByteArray(":/usr/bin::");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("unset") << QByteArray();
}

void TestFirmwareProgrammer::searchPathIsSameAfterStart()
{
    QFETCH(QByteArray, path);
    page->startUpToBootloaderCommand();
    writeProgrammer("echo started > started");
    setSearchPath(path);
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(qgetenv("PATH"), path);
    QCOMPARE(qEnvironmentVariableIsSet("PATH"), !path.isNull());
    QVERIFY(QFile::exists("started"));
}

void TestFirmwareProgrammer::programmerOnSearchPathComesBeforeThatOfWorkingFolder_data()
{
    QTest::addColumn<bool>("canBeExecuted");
    QTest::newRow("programmer") << true;
    QTest::newRow("unless it cannot be executed") << false;
}

void TestFirmwareProgrammer::programmerOnSearchPathComesBeforeThatOfWorkingFolder()
{
    QFETCH(bool, canBeExecuted);
    page->startUpToBootloaderCommand();
    QVERIFY(QDir().mkdir("installed"));
    writeProgrammer("printf installed");
    QVERIFY(QFile::rename("Z7Programmer.exe", "installed/Z7Programmer.exe"));
    if (!canBeExecuted)
        QFile::setPermissions("installed/Z7Programmer.exe", QFile::ReadOwner);
    writeProgrammer("printf lying");
    setSearchPath(searchPath + ':' + QFile::encodeName(QDir::current().filePath("installed")));
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(printed().section('\n', 0, 0), canBeExecuted ? QString("installed") : QString("lying"));
}

void TestFirmwareProgrammer::programmerIsFoundInFolderThatNoSearchPathCanName()
{
    // The colon separates the folders of the search path.
    QVERIFY(QDir().mkdir("drive:3") && QDir::setCurrent("drive:3"));
    page->startUpToBootloaderCommand();
    writeProgrammer("printf started");
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("started\nIdle\n"));
}

void TestFirmwareProgrammer::programmerHasBusFromAcceptedCommandToItsEnd()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("printf running; while [ ! -e go-on ]; do sleep 0.01; done");
    QCOMPARE(page->busNews(), QStringList());
    page->report(page->driveInBootloader());
    QCOMPARE(page->busNews(), QStringList("taken"));
    QTRY_COMPARE(printed(), QStringLiteral("running"));
    QCOMPARE(page->busNews(), QStringList("taken"));
    page->folder.write("go-on", "");
    QTRY_VERIFY(isOver());
    QCOMPARE(page->busNews(), takenAndGivenBack);
}

void TestFirmwareProgrammer::programmerThatCannotStartGivesBusBack_data()
{
    QTest::addColumn<QByteArray>("trouble");
    QTest::newRow("programmer that cannot be executed") << QByteArray("no right");
    QTest::newRow("programmer that was removed meanwhile") << QByteArray("no file");
    QTest::newRow("programmer without its interpreter") << QByteArray("no interpreter");
    QTest::newRow("no process to run it with") << QByteArray("no process");
}

void TestFirmwareProgrammer::programmerThatCannotStartGivesBusBack()
{
    QFETCH(QByteArray, trouble);
    page->startUpToBootloaderCommand();
    writeProgrammer("true");
    if (trouble == "no interpreter") {
        page->folder.write("Z7Programmer.exe", "#!/no/such/interpreter\n");
        QFile::setPermissions("Z7Programmer.exe", QFile::ReadOwner | QFile::ExeOwner);
    }
    page->report(page->driveInBootloader());
    if (trouble == "no right")
        QFile::setPermissions("Z7Programmer.exe", QFile::ReadOwner);
    else if (trouble == "no file")
        QVERIFY(QFile::remove("Z7Programmer.exe"));
    else if (trouble == "no process")
        delete page->programmer();
    QCOMPARE(page->busNews(), QStringList("taken"));
    QTRY_COMPARE(page->busNews(), takenAndGivenBack);
    // The page itself stays where it is.
    QCOMPARE(user().stage(), Stage::programming);
    QVERIFY(user().isBusy());
    QTest::qWait(settlingMs);
    QCOMPARE(page->busNews(), takenAndGivenBack);
}

void TestFirmwareProgrammer::eachUpdateTakesBusAndGivesItBack()
{
    startProgrammer("exit 1");
    QTRY_VERIFY(isOver());
    QCOMPARE(page->busNews(), takenAndGivenBack);
    user().start(QMessageBox::Yes);
    page->allCommunicationStopped();
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(page->busNews(), takenAndGivenBack + takenAndGivenBack);
}

void TestFirmwareProgrammer::standardOutputIsAppended()
{
    startProgrammer("echo 'Erasing...'; echo 'Programming: 100 %'");
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("Erasing...\nProgramming: 100 %\n\nIdle\n"));
}

void TestFirmwareProgrammer::umlautsAreSingleBytes()
{
    startProgrammer("printf 'l\\xe4uft'");
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("läuft\nIdle\n"));
}

void TestFirmwareProgrammer::standardErrorIsNotShown()
{
    startProgrammer("echo 'seen by nobody' >&2; printf seen");
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("seen\nIdle\n"));
}

void TestFirmwareProgrammer::standardErrorIsNotKept()
{
    startProgrammer("readlink /proc/$$/fd/2");
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("/dev/null\n\nIdle\n"));
}

void TestFirmwareProgrammer::zeroByteCutsThatReadAlone()
{
    // The programmer goes on when the test has seen its first output, so that there are two reads.
    startProgrammer(
        "printf 'up to here\\0and not beyond'; while [ ! -e go-on ]; do sleep 0.01; done; printf 'again'");
    QTRY_COMPARE(printed(), QStringLiteral("up to here"));
    page->folder.write("go-on", "");
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("up to here\nagain\nIdle\n"));
}

void TestFirmwareProgrammer::outputIsNeverInterpreted()
{
    startProgrammer("printf '<b>Error: 100 %% failed</b> Idle'; exec sleep 1000");
    QTRY_COMPARE(printed(), QStringLiteral("<b>Error: 100 % failed</b> Idle"));
    QCOMPARE(user().stage(), Stage::programming);
}

void TestFirmwareProgrammer::outputGoesOnInFieldClearedByAnotherShowing()
{
    startProgrammer("printf 'before'; while [ ! -e go-on ]; do sleep 0.01; done; printf 'after'");
    QTRY_COMPARE(printed(), QStringLiteral("before"));
    page->showWithDrives(1);
    QCOMPARE(user().log(), Stage::programming + "\n");
    QVERIFY(user().isBusy());
    page->folder.write("go-on", "");
    QTRY_VERIFY(isOver());
    QCOMPARE(user().log(), Stage::programming + "\n\nafter\nIdle\n");
}

void TestFirmwareProgrammer::endOfProgrammerEndsUpdate_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("with success") << QByteArray("exit 0");
    QTest::newRow("with an exit code") << QByteArray("exit 3");
    QTest::newRow("with a crash") << QByteArray("kill -SEGV $$");
}

void TestFirmwareProgrammer::endOfProgrammerEndsUpdate()
{
    QFETCH(QByteArray, end);
    startProgrammer("printf 'bye'; " + end);
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("bye\nIdle\n"));
    QCOMPARE(user().process(), QStringLiteral("Bereit"));
    QCOMPARE(page->stopRequests.count(), 1);
}

void TestFirmwareProgrammer::programmerThatHangsKeepsPageBusy()
{
    startProgrammer("printf 'waiting'; exec sleep 1000");
    QTRY_COMPARE(printed(), QStringLiteral("waiting"));
    QCOMPARE(user().stage(), Stage::programming);
    QVERIFY(user().isBusy());
}

void TestFirmwareProgrammer::programmerThatCannotBeExecutedIsDeadEnd()
{
    page->startUpToBootloaderCommand();
    QVERIFY(!QFileInfo("Z7Programmer.exe").isExecutable());
    startProgrammer();
    QTest::qWait(settlingMs);
    QCOMPARE(user().stage(), Stage::programming);
    QCOMPARE(user().process(), QStringLiteral("Firmwareupdate läuft..."));
    QVERIFY(user().isBusy());
    QCOMPARE(printed(), QString());
}

void TestFirmwareProgrammer::secondUpdateRunsProgrammerAgain()
{
    startProgrammer("printf 'first'; exit 1");
    QTRY_VERIFY(isOver());
    user().start(QMessageBox::Yes);
    page->allCommunicationStopped();
    writeProgrammer("printf 'second'");
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(user().log(),
        Stage::stopping + "\n\n" + Stage::bootloader + "\n\n" + Stage::programming + "\n\nsecond\nIdle\n");
}

void TestFirmwareProgrammer::endlessOutputKeepsNewestLinesAndPageResponsive()
{
    // Numbers as fast as they can be read.
    startProgrammer("exec seq 1000000000");
    QElapsedTimer sinceTheLastTurn;
    qint64 longestMs = 0;
    QTimer turns;
    connect(&turns, &QTimer::timeout, [&] { longestMs = qMax(longestMs, sinceTheLastTurn.restart()); });
    sinceTheLastTurn.start();
    turns.start(10);
    const auto newestNumber = [this] {
        return user().output()->document()->lastBlock().previous().text().toInt();
    };
    QTRY_VERIFY_WITH_TIMEOUT(newestNumber() > 10 * mostLines, 60000);
    QCOMPARE(user().output()->blockCount(), mostLines);
    QVERIFY(!user().log().contains(Stage::programming));
    // Milliseconds are meant; a page that reads to the end of the output never comes back.
    QVERIFY2(longestMs < 10000, qPrintable(QString::number(longestMs)));
}

void TestFirmwareProgrammer::closedProgramOutlivesProgrammerThatStillTransfers_data()
{
    QTest::addColumn<QByteArray>("transfer");
    QTest::newRow("prints on") << QByteArray("for i in {1..20}; do echo $i; sleep 0.05; done");
    // A pipe holds 64 kB: whoever prints more waits until somebody has read it.
    QTest::newRow("prints more than a pipe holds") << QByteArray("sleep 0.3; seq 100000");
    QTest::newRow("prints nothing") << QByteArray("sleep 1");
    QTest::newRow("has closed its output") << QByteArray("exec >&-; sleep 1");
}

void TestFirmwareProgrammer::closedProgramOutlivesProgrammerThatStillTransfers()
{
    QFETCH(QByteArray, transfer);
    startProgrammer("printf running; " + transfer + "; touch complete");
    QTRY_VERIFY(printed().startsWith("running"));
    QVERIFY(!QFile::exists("complete"));
    page->close();
    QVERIFY(QFile::exists("complete"));
}

void TestFirmwareProgrammer::closedProgramGivesSilentProgrammerUp()
{
    startProgrammer("echo $$ > process; printf running; exec sleep 1000");
    QTRY_COMPARE(printed(), QStringLiteral("running"));
    const QByteArray process = page->folder.read("process").trimmed();
    QVERIFY(isRunning(process));
    setPatience(100);
    page->close();
    QVERIFY(!isRunning(process));
}

void TestFirmwareProgrammer::eachOutputMakesClosedProgramPatientAnew()
{
    startProgrammer("for i in {1..8}; do printf .; sleep 0.4; done; touch complete");
    QTRY_VERIFY(printed().startsWith("."));
    setPatience(2000);
    page->close();
    QVERIFY(QFile::exists("complete"));
}

void TestFirmwareProgrammer::closedProgramStartsNoProgrammer()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("touch started");
    page->report(page->driveInBootloader());
    page->close();
    QTest::qWait(2 * settlingMs);
    QVERIFY(!QFile::exists("started"));
}

void TestFirmwareProgrammer::closedProgramTouchesNoServices()
{
    startProgrammer("printf running; sleep 0.5; printf bye");
    QTRY_COMPARE(printed(), QStringLiteral("running"));
    // Services that came into being once more would know the texts of this file, not those of the next one.
    Z7Services::shutdown();
    page->folder.writeText("deutsch.z7lang", "[Test]\nText=of the close\n");
    page->shown.page.reset();
    page->folder.writeText("deutsch.z7lang", "[Test]\nText=of the next start\n");
    QCOMPARE(languageText("Test", "Text", ""), QStringLiteral("of the next start"));
    QCOMPARE(page->busNews(), QStringList("taken"));
}

QTEST_MAIN(TestFirmwareProgrammer)

#include "tst_firmwareprogrammer.moc"
