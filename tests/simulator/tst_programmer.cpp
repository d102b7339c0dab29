// The demonstration programmer against a simulated drive in its bootloader.

#include "tests/simulator/slaveport.h"
#include "tests/simulator/testdrives.h"

#include <QProcess>
#include <QtTest>

#include <optional>

namespace {

const QStringList drive3 {"--drive", "3,password=4711,version=V123"};

} // namespace

class TestProgrammer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void driveInItsBootloaderGetsVersionOfImage();
    void listedPortLeadsToDrive();
    void progressIsPrintedLineByLine();
    void driveOutOfItsBootloaderIsLeftAlone();
    void missingPartIsError_data();
    void missingPartIsError();
    void failingProgrammerEndsAtOnce();
    void hangingProgrammerStays();
    void endlessProgrammerPrintsOn();
    void zeroByteStandsInOutput();

private:
    QByteArray ask(const QByteArray &line);
    /// As the tool does it.
    void enterBootloader();
    void begin(const QStringList &arguments, const QString &fault = {});
    /// Everything that the programmer prints to its end.
    QByteArray run(const QStringList &arguments, const QString &fault = {});
    QString portName() const { return link.mid(5); }

    std::optional<TestDefinitions> definitions;
    std::optional<QTemporaryDir> folder;
    std::optional<QProcess> drives;
    std::optional<QProcess> programmer;
    QString link; ///< the drives' terminal, "/dev/pts/3"
};

void TestProgrammer::init()
{
    definitions.emplace();
    folder.emplace();
    QFile image(folder->filePath("image with blanks.bin"));
    QVERIFY(image.open(QIODevice::WriteOnly));
    image.write("Z7 firmware V200\n");
    programmer.emplace();
    programmer->setWorkingDirectory(folder->path());
    drives.emplace();
    drives->start(Z7SIM_PROGRAM, QStringList {"--definitions", definitions->folder()} + drive3);
    link = QString::fromLocal8Bit(ask({})).section(' ', 1);
    QVERIFY(link.startsWith("/dev/pts/"));
}

void TestProgrammer::cleanup()
{
    for (std::optional<QProcess> *process : {&programmer, &drives}) {
        (*process)->kill();
        (*process)->waitForFinished();
        process->reset();
    }
    folder.reset();
    definitions.reset();
}

QByteArray TestProgrammer::ask(const QByteArray &line)
{
    if (!line.isEmpty())
        drives->write(line + '\n');
    while (!drives->canReadLine() && drives->waitForReadyRead()) { }
    return drives->readLine().trimmed();
}

void TestProgrammer::enterBootloader()
{
    SlavePort port(link);
    // Bootloader command with the password 4711, and the reply of a drive that obeys.
    QCOMPARE(port.exchange("0b 03 00 00 12 67 d2"), QByteArray("8b 03 00 db"));
}

void TestProgrammer::begin(const QStringList &arguments, const QString &fault)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("Z7_PROGRAMMER_FAULT", fault);
    programmer->setProcessEnvironment(environment);
    programmer->start(Z7_PROGRAMMER, arguments);
    QVERIFY(programmer->waitForStarted());
}

QByteArray TestProgrammer::run(const QStringList &arguments, const QString &fault)
{
    begin(arguments, fault);
    programmer->waitForFinished();
    return programmer->readAllStandardOutput();
}

void TestProgrammer::driveInItsBootloaderGetsVersionOfImage()
{
    enterBootloader();
    const QByteArray output = run({"-i" + portName(), "-aimage with blanks.bin"});
    QVERIFY2(output.contains("Done. The drive runs version V200."), output.constData());
    QCOMPARE(programmer->exitCode(), 0);
    QCOMPARE(ask("get 3 version"), QByteArray("ok V200"));
    QCOMPARE(ask("get 3 bootloader"), QByteArray("ok 0"));
}

// The name that the tool knows is no device of this machine; z7withports makes it one for the programs it
// starts.
void TestProgrammer::listedPortLeadsToDrive()
{
    enterBootloader();
    programmer->start(
        Z7_WITHPORTS, {"ttyUSB0=" + link, "--", Z7_PROGRAMMER, "-ittyUSB0", "-aimage with blanks.bin"});
    QVERIFY(programmer->waitForFinished());
    const QByteArray output = programmer->readAllStandardOutput();
    QVERIFY2(output.contains("Done. The drive runs version V200."), output.constData());
    QCOMPARE(ask("get 3 version"), QByteArray("ok V200"));
}

void TestProgrammer::progressIsPrintedLineByLine()
{
    enterBootloader();
    const QList<QByteArray> lines = run({"-i" + portName(), "-aimage with blanks.bin"}).split('\n');
    QVERIFY(lines.contains("Programming: 40 %"));
    QVERIFY(lines.indexOf("Programming: 40 %") < lines.indexOf("Programming: 100 %"));
    QVERIFY(lines.indexOf("Programming: 100 %") < lines.indexOf("Verifying: OK"));
}

void TestProgrammer::driveOutOfItsBootloaderIsLeftAlone()
{
    const QByteArray output = run({"-i" + portName(), "-aimage with blanks.bin"});
    QVERIFY2(output.contains("Error: the drive does not answer"), output.constData());
    QCOMPARE(programmer->exitCode(), 1);
    QCOMPARE(ask("get 3 version"), QByteArray("ok V123"));
}

void TestProgrammer::missingPartIsError_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("error");
    QTest::newRow("port") << "-ittyNONE"
                          << "-aimage with blanks.bin"
                          << "the port ttyNONE cannot be opened";
    QTest::newRow("image") << ""
                           << "-anone.bin"
                           << "the image none.bin cannot be read";
    QTest::newRow("folder instead of an image") << ""
                                                << "-a."
                                                << "the image . cannot be read";
    QTest::newRow("image of something else") << ""
                                             << "-a/proc/version"
                                             << "is no image for a Z7 drive";
    QTest::newRow("argument") << ""
                              << "image.bin"
                              << "unknown argument image.bin";
}

void TestProgrammer::missingPartIsError()
{
    QFETCH(QString, port);
    QFETCH(QString, image);
    QFETCH(QString, error);
    const QByteArray output = run({port.isEmpty() ? "-i" + portName() : port, image});
    QVERIFY2(output.contains("Error: "), output.constData());
    QVERIFY2(output.contains(error.toUtf8()), output.constData());
    QCOMPARE(programmer->exitCode(), 1);
}

void TestProgrammer::failingProgrammerEndsAtOnce()
{
    run({"-i" + portName(), "-aimage with blanks.bin"}, "fails");
    QCOMPARE(programmer->exitCode(), 1);
}

void TestProgrammer::hangingProgrammerStays()
{
    begin({"-i" + portName(), "-aimage with blanks.bin"}, "hangs");
    QTRY_VERIFY(programmer->peek(1000).contains("Waiting..."));
    QCOMPARE(programmer->state(), QProcess::Running);
}

void TestProgrammer::endlessProgrammerPrintsOn()
{
    begin({"-i" + portName(), "-aimage with blanks.bin"}, "endless");
    QTRY_VERIFY(programmer->bytesAvailable() > 100000);
}

void TestProgrammer::zeroByteStandsInOutput()
{
    QVERIFY(run({"-i" + portName(), "-aimage with blanks.bin"}, "zero").contains('\0'));
}

QTEST_GUILESS_MAIN(TestProgrammer)

#include "tst_programmer.moc"
