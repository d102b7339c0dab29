#include "slaveport.h"
#include "testdrives.h"

#include <QFileInfo>
#include <QProcess>
#include <QtTest>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// The program z7sim as it is used from a shell.
class TestZ7Sim : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void firstLineNamesPort();
    void linkIsGoneAfterEnd();
    void standardInputTakesCommands();
    void controlSocketTakesCommands();
    void commandOfCommandLineIsCarriedOut();
    void quitEndsProgram();
    void terminationSignalEndsProgramCleanly();
    void wrongDriveIsRefused();

private:
    void start(const QStringList &more = {});
    QByteArray readLine();
    QByteArray ask(const QByteArray &line);
    QByteArray askSocket(const QByteArray &line);
    QString link() const { return folder.filePath(QStringLiteral("port")); }
    QString socketPath() const { return folder.filePath(QStringLiteral("socket")); }

    TestDefinitions definitions;
    QTemporaryDir folder;
    std::unique_ptr<QProcess> program;
    QString port;
};

void TestZ7Sim::init()
{
    program = std::make_unique<QProcess>();
    program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

void TestZ7Sim::cleanup()
{
    program->terminate();
    program->waitForFinished();
}

void TestZ7Sim::start(const QStringList &more)
{
    program->start(QStringLiteral(Z7SIM_PROGRAM),
        QStringList {QStringLiteral("--definitions"), definitions.folder(), QStringLiteral("--drive"),
            QStringLiteral("3,password=4711,version=V123"), QStringLiteral("--link"), link(),
            QStringLiteral("--control"), socketPath()}
            + more);
    const QByteArray first = readLine();
    QVERIFY2(first.startsWith("port /dev/pts/"), first.constData());
    port = QString::fromLocal8Bit(first.mid(5));
}

QByteArray TestZ7Sim::readLine()
{
    while (!program->canReadLine() && program->waitForReadyRead()) { }
    return program->readLine().trimmed();
}

QByteArray TestZ7Sim::ask(const QByteArray &line)
{
    program->write(line + '\n');
    return readLine();
}

QByteArray TestZ7Sim::askSocket(const QByteArray &line)
{
    const QByteArray path = socketPath().toLocal8Bit();
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QByteArray answer(256, '\0');
    ssize_t count = -1;
    if (::connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
        && ::write(fd, (line + '\n').constData(), size_t(line.size() + 1)) > 0)
        count = ::read(fd, answer.data(), size_t(answer.size()));
    ::close(fd);
    return answer.left(int(count)).trimmed();
}

void TestZ7Sim::firstLineNamesPort()
{
    start();
    SlavePort slave(port);
    QCOMPARE(slave.exchange(OpenDrive3), QByteArray(Opened));
}

void TestZ7Sim::linkIsGoneAfterEnd()
{
    start();
    QCOMPARE(QFileInfo(link()).symLinkTarget(), port);
    ask("quit");
    QVERIFY(program->waitForFinished());
    QVERIFY(!QFileInfo(link()).isSymLink());
    QVERIFY(!QFileInfo::exists(socketPath()));
}

void TestZ7Sim::standardInputTakesCommands()
{
    start();
    QCOMPARE(ask("get 3 param 11"), QByteArray("ok 100"));
}

void TestZ7Sim::controlSocketTakesCommands()
{
    start();
    QCOMPARE(askSocket("get 3 param 11"), QByteArray("ok 100"));
}

void TestZ7Sim::commandOfCommandLineIsCarriedOut()
{
    start({QStringLiteral("--command"), QStringLiteral("set 3 param 11 150")});
    QCOMPARE(ask("get 3 param 11"), QByteArray("ok 150"));
}

void TestZ7Sim::quitEndsProgram()
{
    start();
    QCOMPARE(ask("quit"), QByteArray("ok"));
    QVERIFY(program->waitForFinished());
    QCOMPARE(program->exitCode(), 0);
}

void TestZ7Sim::terminationSignalEndsProgramCleanly()
{
    start();
    program->terminate();
    QVERIFY(program->waitForFinished());
    QCOMPARE(program->exitStatus(), QProcess::NormalExit);
    QVERIFY(!QFileInfo(link()).isSymLink());
}

void TestZ7Sim::wrongDriveIsRefused()
{
    program->setProcessChannelMode(QProcess::SeparateChannels);
    program->start(QStringLiteral(Z7SIM_PROGRAM), {QStringLiteral("--drive"), QStringLiteral("0")});
    QVERIFY(program->waitForFinished());
    QCOMPARE(program->exitCode(), 1);
    QVERIFY(program->readAllStandardError().contains("no bus address"));
}

QTEST_GUILESS_MAIN(TestZ7Sim)
#include "tst_z7sim.moc"
