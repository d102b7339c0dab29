// The external programmer, played by small scripts that each test puts into the working folder.

#include "tests/pages/firmwarepage.h"
#include "tests/support/listedports.h"

#include <QElapsedTimer>
#include <QTextBlock>
#include <QTimer>

#include <optional>

namespace {

constexpr int settlingMs = 200;
constexpr int mostLines = 10000;

/// Lets a programmer that was started in the working folder be found, and takes the way back at the end.
class SearchPath
{
public:
    SearchPath() { qputenv("PATH", QDir::currentPath().toLocal8Bit() + ':' + m_before); }
    ~SearchPath() { qputenv("PATH", m_before); }
    Q_DISABLE_COPY(SearchPath)

private:
    const QByteArray m_before = qgetenv("PATH");
};

} // namespace

class TestFirmwareProgrammer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void programmerGetsPortAndFileAndNothingElse();
    void fileOfTheConfirmedStartIsUsedThoughTheFieldWasEmptied();
    void driveWithoutAPortLeavesTheSwitchBare();
    void programmerStartsOnceTheDriveHasSettled();
    void updateWithoutASettledDriveStartsNoProgrammer();

    void standardOutputIsAppended();
    void umlautsAreSingleBytes();
    void standardErrorIsNotShown();
    void zeroByteCutsThatReadAlone();
    void outputIsNeverInterpreted();
    void outputGoesOnInTheFieldClearedByAnotherShowing();

    void endOfTheProgrammerEndsTheUpdate_data();
    void endOfTheProgrammerEndsTheUpdate();
    void programmerThatHangsKeepsThePageBusy();
    void programmerThatCannotBeExecutedIsADeadEnd();
    void secondUpdateRunsTheProgrammerAgain();
    void endlessOutputKeepsTheNewestLinesAndThePageResponsive();
    void pageCanGoWhileTheProgrammerRuns();

private:
    const FirmwareUser &user() const { return page->user; }
    void writeProgrammer(const QByteArray &script) const;
    /// Runs an update with this programmer up to its start.
    void startProgrammer(const QByteArray &script);
    void startProgrammer();
    /// What the programmer has printed: the output behind the entry of its stage.
    QString printed() const { return user().log().section(Stage::programming + "\n\n", 1); }
    bool isOver() const { return user().stage() == Stage::idle && user().isReady(); }

    std::optional<ListedPorts> ports;
    std::optional<FirmwarePage> page;
    std::optional<SearchPath> path;
};

void TestFirmwareProgrammer::init()
{
    ports.emplace();
    ports->plugUsb("ttyUSB0", QString());
    page.emplace();
    path.emplace();
}

void TestFirmwareProgrammer::cleanup()
{
    path.reset();
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

void TestFirmwareProgrammer::fileOfTheConfirmedStartIsUsedThoughTheFieldWasEmptied()
{
    page->startUpdate();
    writeProgrammer("echo \"$2\" > file");
    page->showWithDrives(1);
    page->allCommunicationStopped();
    startProgrammer();
    QTRY_VERIFY(isOver());
    QCOMPARE(page->folder.read("file"), "-a" + QDir::currentPath().toUtf8() + "/image.bin\n");
}

void TestFirmwareProgrammer::driveWithoutAPortLeavesTheSwitchBare()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("echo \"$1\" > port");
    Z7Device drive = page->driveInBootloader();
    drive.portInfo = QSerialPortInfo();
    page->report(drive);
    QTRY_VERIFY(isOver());
    QCOMPARE(page->folder.read("port"), QByteArray("-i\n"));
}

void TestFirmwareProgrammer::programmerStartsOnceTheDriveHasSettled()
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

void TestFirmwareProgrammer::updateWithoutASettledDriveStartsNoProgrammer()
{
    page->startUpToBootloaderCommand();
    writeProgrammer("touch started");
    page->report(page->driveWithError(20));
    QTest::qWait(2 * settlingMs);
    QVERIFY(!QFile::exists("started"));
    QCOMPARE(user().stage(), Stage::idle);
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

void TestFirmwareProgrammer::outputGoesOnInTheFieldClearedByAnotherShowing()
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

void TestFirmwareProgrammer::endOfTheProgrammerEndsTheUpdate_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("with success") << QByteArray("exit 0");
    QTest::newRow("with an exit code") << QByteArray("exit 3");
    QTest::newRow("with a crash") << QByteArray("kill -SEGV $$");
}

void TestFirmwareProgrammer::endOfTheProgrammerEndsTheUpdate()
{
    QFETCH(QByteArray, end);
    startProgrammer("printf 'bye'; " + end);
    QTRY_VERIFY(isOver());
    QCOMPARE(printed(), QStringLiteral("bye\nIdle\n"));
    QCOMPARE(user().process(), QStringLiteral("Bereit"));
    QCOMPARE(page->stopRequests.count(), 1);
}

void TestFirmwareProgrammer::programmerThatHangsKeepsThePageBusy()
{
    startProgrammer("printf 'waiting'; exec sleep 1000");
    QTRY_COMPARE(printed(), QStringLiteral("waiting"));
    QCOMPARE(user().stage(), Stage::programming);
    QVERIFY(user().isBusy());
}

void TestFirmwareProgrammer::programmerThatCannotBeExecutedIsADeadEnd()
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

void TestFirmwareProgrammer::secondUpdateRunsTheProgrammerAgain()
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

void TestFirmwareProgrammer::endlessOutputKeepsTheNewestLinesAndThePageResponsive()
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
    QVERIFY2(longestMs < 1000, qPrintable(QString::number(longestMs)));
}

void TestFirmwareProgrammer::pageCanGoWhileTheProgrammerRuns()
{
    startProgrammer("echo $$ > process; printf 'running'; exec sleep 1000");
    QTRY_COMPARE(printed(), QStringLiteral("running"));
    const QByteArray process = page->folder.read("process").trimmed();
    QVERIFY(QFile::exists("/proc/" + process));
    page.reset();
    QVERIFY(!QFile::exists("/proc/" + process));
}

QTEST_MAIN(TestFirmwareProgrammer)

#include "tst_firmwareprogrammer.moc"
