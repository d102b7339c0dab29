#include "slaveport.h"
#include "testdrives.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QtTest>
#include <memory>

using z7sim::SimulatedBus;
using z7sim::WireEntry;

/// The line between the master and the drives: time, cutting of requests, the adapter and the log.
class TestSimulatedLine : public QObject
{
    Q_OBJECT

private slots:
    void replyTakesItsTimeOnWire();
    void answeringTimeCanBeChanged();
    void wireTimeOfRequestsAddsUp();
    void unpacedBusAnswersBeforeWireTimeIsOver();
    void busIsSilentExceptWhileReplyIsOnItsWay();
    void busIsNotSilentBehindAnotherPort();

    void requestsInOneWriteAreAnsweredOneByOne();
    void requestInPiecesIsAnswered();
    void garbageIsDroppedAfterSilence();
    void requestBehindGarbageIsLostWithIt();
    void twoDrivesOfOneAddressGarbleEachOther();
    void addedDriveAnswers();
    void removedDriveKeepsSilent();

    void pulledAdapterHangsUp();
    void portOfPulledAdapterGoesToNobodyElse();
    void adapterPutBackAnswersAgain();
    void linkFollowsAdapter();
    void replyWithoutListenerIsLost();
    void bytesLeftUnreadAreGoneWhenPortIsOpenedAgain();

    void logShowsRequestAndReply();
    void clearedLogIsEmpty();
    void logKeepsNewestEntries();
    void manyThreadsMayAskAtOnce();

private:
    static constexpr qint64 ByteUs = 95; // 11 bits at 115200 baud, rounded down

    void start(z7sim::BusConfig config);
    void startPaced();
    void startUnpaced() { start(busWithDrive3(definitions.folder())); }
    qint64 replyTime(const char *request);

    TestDefinitions definitions;
    std::unique_ptr<SimulatedBus> bus;
    std::unique_ptr<SlavePort> port;
};

void TestSimulatedLine::start(z7sim::BusConfig config)
{
    port.reset();
    bus = std::make_unique<SimulatedBus>(config);
    QVERIFY2(bus->start(), qPrintable(bus->errorText()));
    port = std::make_unique<SlavePort>(bus->portPath());
    QVERIFY(port->isOpen());
}

void TestSimulatedLine::startPaced()
{
    z7sim::BusConfig config = busWithDrive3(definitions.folder());
    config.paced = true;
    start(config);
}

// Microseconds from the last byte of the request at the port to the last byte of the reply there.
qint64 TestSimulatedLine::replyTime(const char *request)
{
    bus->clearLog();
    port->exchange(request);
    const QVector<WireEntry> log = bus->log();
    return log.size() == 2 ? log.last().us - log.first().us : -1;
}

void TestSimulatedLine::replyTakesItsTimeOnWire()
{
    startPaced();
    // 7 bytes there, 1 ms in the drive, 4 bytes back
    QVERIFY(replyTime(OpenDrive3) >= 7 * ByteUs + 1000 + 4 * ByteUs);
    // 3 bytes there, 35 bytes back
    QVERIFY(replyTime("07 03 5f") >= 3 * ByteUs + 1000 + 35 * ByteUs);
}

void TestSimulatedLine::answeringTimeCanBeChanged()
{
    startPaced();
    QCOMPARE(bus->command("turnaround 30000"), QByteArray("ok"));
    QVERIFY(replyTime(OpenDrive3) >= 30000 + 11 * ByteUs);
}

void TestSimulatedLine::wireTimeOfRequestsAddsUp()
{
    startPaced();
    port->send("07 03 5f 07 03 5f 07 03 5f 07 03 5f");
    QTRY_COMPARE(bus->log().size(), 8);
    const QVector<WireEntry> log = bus->log();
    QVERIFY(log.last().us - log.first().us >= 4 * 3 * ByteUs + 1000 + 35 * ByteUs);
}

void TestSimulatedLine::unpacedBusAnswersBeforeWireTimeIsOver()
{
    z7sim::BusConfig config = busWithDrive3(definitions.folder());
    config.turnaroundUs = 60000000; // a minute, which no slow machine makes up for
    start(config);
    QVERIFY(replyTime(OpenDrive3) >= 0);
}

void TestSimulatedLine::busIsSilentExceptWhileReplyIsOnItsWay()
{
    startUnpaced();
    QVERIFY(bus->isSilent(bus->portPath()));
    bus->command("fault 3 late ms=50 count=1");
    port->send("07 03 5f");
    QVERIFY(!bus->isSilent(bus->portPath()));
    QVERIFY(!port->receive().isEmpty());
    QVERIFY(bus->isSilent(bus->portPath()));
    // To a drive that is not there.
    port->send("07 04 5e");
    QVERIFY(bus->isSilent(bus->portPath()));
}

void TestSimulatedLine::busIsNotSilentBehindAnotherPort()
{
    startUnpaced();
    QVERIFY(!bus->isSilent("/dev/pts/none"));
    const QString path = bus->portPath();
    bus->command("pull");
    QVERIFY(!bus->isSilent(path));
    QVERIFY(!bus->isSilent(QString()));
}

void TestSimulatedLine::requestsInOneWriteAreAnsweredOneByOne()
{
    startUnpaced();
    // access and status in one write
    QCOMPARE(port->exchange("09 03 00 00 12 67 d0 05 03 5d"), QByteArray("89 03 00 d9 85 03 80 00 5d"));
}

void TestSimulatedLine::requestInPiecesIsAnswered()
{
    startUnpaced();
    port->send("09 03 00");
    port->send("00 12 67 d0");
    QCOMPARE(port->receive(), QByteArray(Opened));
}

void TestSimulatedLine::garbageIsDroppedAfterSilence()
{
    startUnpaced();
    port->send("ff 09 03");
    QTRY_COMPARE(bus->log().size(), 1);
    QCOMPARE(bus->log().first().direction, WireEntry::Dropped);
    QCOMPARE(bus->log().first().bytes, QByteArray::fromHex("ff0903"));
    QCOMPARE(port->exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedLine::requestBehindGarbageIsLostWithIt()
{
    startUnpaced();
    port->send("ff 09 03 00 00 12 67 d1");
    QVERIFY(port->staysSilent());
}

void TestSimulatedLine::twoDrivesOfOneAddressGarbleEachOther()
{
    startUnpaced();
    QCOMPARE(bus->command("add-drive 3,password=4711"), QByteArray("ok"));
    // 89 03 00 d9 and, a byte later, the same again; a 0 wins on the line
    QCOMPARE(port->exchange(OpenDrive3), QByteArray("89 01 00 00 d9"));
}

void TestSimulatedLine::addedDriveAnswers()
{
    startUnpaced();
    z7sim::DriveConfig drive;
    drive.address = 9;
    QVERIFY(bus->addDrive(drive));
    // Without a password of its own the address is the password.
    QCOMPARE(port->exchange("09 09 00 00 00 09 4e"), QByteArray("89 09 00 c7"));
}

void TestSimulatedLine::removedDriveKeepsSilent()
{
    startUnpaced();
    QCOMPARE(bus->command("remove 3"), QByteArray("ok"));
    port->send(OpenDrive3);
    QVERIFY(port->staysSilent());
}

void TestSimulatedLine::pulledAdapterHangsUp()
{
    startUnpaced();
    QVERIFY(!port->isHungUp());
    bus->command("pull");
    QTRY_VERIFY(port->isHungUp());
    QVERIFY(bus->portPath().isEmpty());
}

void TestSimulatedLine::portOfPulledAdapterGoesToNobodyElse()
{
    start({});
    const QString former = bus->portPath();
    bus->command("pull");
    z7sim::SimulatedBus other;
    QVERIFY(other.start());
    QVERIFY(other.portPath() != former);
}

void TestSimulatedLine::adapterPutBackAnswersAgain()
{
    startUnpaced();
    bus->command("pull");
    port.reset();
    const QByteArray answer = bus->command("plug");
    QCOMPARE(answer, "ok port " + bus->portPath().toLocal8Bit());
    port = std::make_unique<SlavePort>(bus->portPath());
    QCOMPARE(port->exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedLine::linkFollowsAdapter()
{
    const QTemporaryDir folder;
    z7sim::BusConfig config = busWithDrive3(definitions.folder());
    config.link = folder.filePath(QStringLiteral("port"));
    start(config);
    QCOMPARE(QFileInfo(config.link).symLinkTarget(), bus->portPath());
    bus->command("pull");
    QVERIFY(!QFileInfo(config.link).isSymLink());
    bus->command("plug");
    QCOMPARE(QFileInfo(config.link).symLinkTarget(), bus->portPath());
    bus.reset();
    QVERIFY(!QFileInfo(config.link).isSymLink());
}

void TestSimulatedLine::replyWithoutListenerIsLost()
{
    startUnpaced();
    bus->command("fault 3 late ms=50 count=1");
    port->send(OpenDrive3);
    QTRY_COMPARE(bus->log().size(), 1);
    port.reset();
    QTRY_COMPARE(bus->log().size(), 2);
    port = std::make_unique<SlavePort>(bus->portPath());
    QVERIFY(port->staysSilent());
}

void TestSimulatedLine::bytesLeftUnreadAreGoneWhenPortIsOpenedAgain()
{
    startUnpaced();
    port->send(OpenDrive3);
    QTRY_COMPARE(bus->log().size(), 2);
    port.reset();
    port = std::make_unique<SlavePort>(bus->portPath());
    QCOMPARE(port->exchange("07 04 5e 05 03 5d"), QByteArray("85 03 80 00 5d"));
}

void TestSimulatedLine::logShowsRequestAndReply()
{
    startUnpaced();
    port->exchange("09 03 00 00 12 67 d0");
    const QVector<WireEntry> log = bus->log();
    QCOMPARE(log.size(), 2);
    QCOMPARE(log.at(0).direction, WireEntry::Request);
    QCOMPARE(log.at(0).bytes, QByteArray::fromHex("09 03 00 00 12 67 d0"));
    QCOMPARE(log.at(0).address, 3);
    QCOMPARE(log.at(1).direction, WireEntry::Reply);
    QCOMPARE(log.at(1).bytes, QByteArray::fromHex("89 03 00 d9"));
    QVERIFY(log.at(1).us >= log.at(0).us);
    QVERIFY(bus->command("log").endsWith(" < 3 89 03 00 d9\n."));
}

void TestSimulatedLine::clearedLogIsEmpty()
{
    startUnpaced();
    port->exchange(OpenDrive3);
    bus->clearLog();
    QVERIFY(bus->log().isEmpty());
}

void TestSimulatedLine::logKeepsNewestEntries()
{
    z7sim::WireLog log;
    for (int i = 0; i <= int(z7sim::WireLog::limit); ++i)
        log.append({i, WireEntry::Request, {}, 1});
    QCOMPARE(log.entries().size(), int(z7sim::WireLog::limit));
    QCOMPARE(log.entries().first().us, 1);
}

void TestSimulatedLine::manyThreadsMayAskAtOnce()
{
    startUnpaced();
    const auto ask = [this] {
        for (int i = 0; i < 200; ++i)
            bus->command("set 3 param 11 " + QByteArray::number(i));
    };
    const std::unique_ptr<QThread> other(QThread::create(ask));
    other->start();
    for (int i = 0; i < 20; ++i)
        QVERIFY(!port->exchange("07 03 5f").isEmpty());
    QVERIFY(other->wait());
    QCOMPARE(bus->memory(3, 11), 199);
}

QTEST_GUILESS_MAIN(TestSimulatedLine)
#include "tst_simulatedline.moc"
