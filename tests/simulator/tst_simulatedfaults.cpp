#include "slaveport.h"
#include "testdrives.h"

#include <QElapsedTimer>
#include <QtTest>
#include <memory>

using z7sim::SimulatedBus;

/// How exchanges with drive 3 can be disturbed, and how long they stay so.
class TestSimulatedFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void faultChangesReply_data();
    void faultChangesReply();
    void silentDriveDoesNotAnswer();
    void silentDriveStillDoesWhatItIsAsked();
    void faultWithoutEffectLeavesDriveAsItWas();
    void lateReplyComesAfterItsDelay();
    void splitReplyArrivesInTwoPieces();

    void faultEndsAfterItsCount();
    void faultSparesExchangesToSkip();
    void faultOfCommandSparesOtherCommands();
    void faultOfParameterSparesOtherParameters();
    void faultOfBusMeetsEveryDrive();
    void faultOfDriveSparesOtherDrives();
    void severalFaultsAddUp();
    void clearedFaultsDisturbNothing();

    void driveResetInMidListLosesAccessAndWorkingMemory();
    void pulledAdapterHangsUpInMidExchange();
    void babblerSendsUntilItIsSwitchedOff();
    void babblerCanBeCounted();

    void unknownFaultIsError_data();
    void unknownFaultIsError();

private:
    QByteArray exchange(const char *hex) { return port->exchange(hex); }
    QByteArray readParameter11() { return exchange("04 03 00 0b 47"); }
    void command(const char *line) { QCOMPARE(bus->command(line), QByteArray("ok")); }

    const QByteArray parameter11 = "84 03 00 0b 00 64 00 a3";
    TestDefinitions definitions;
    std::unique_ptr<SimulatedBus> bus;
    std::unique_ptr<SlavePort> port;
};

void TestSimulatedFaults::init()
{
    bus = std::make_unique<SimulatedBus>(busWithDrive3(definitions.folder()));
    QVERIFY2(bus->start(), qPrintable(bus->errorText()));
    port = std::make_unique<SlavePort>(bus->portPath());
    QCOMPARE(exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedFaults::cleanup()
{
    port.reset();
    bus.reset();
}

void TestSimulatedFaults::faultChangesReply_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    const QByteArray read("04 03 00 0b 47");
    const QByteArray write("03 03 00 0b 00 96 f2");
    const QByteArray status("05 03 5d");
    const QByteArray store("02 03 00 00 12 67 2b");
    QTest::newRow("flipped bit") << QByteArray("flip byte=5 bit=0") << read
                                 << QByteArray("84 03 00 0b 00 65 00 a3");
    QTest::newRow("flipped bit under a right checksum")
        << QByteArray("flip byte=5 bit=0 checksum=right") << read << QByteArray("84 03 00 0b 00 65 00 a2");
    QTest::newRow("flipped bit of the checksum")
        << QByteArray("flip byte=-1 bit=7") << read << QByteArray("84 03 00 0b 00 64 00 23");
    QTest::newRow("truncated") << QByteArray("truncate bytes=3") << read << QByteArray("84 03 00");
    QTest::newRow("truncated under a right checksum")
        << QByteArray("truncate bytes=4 checksum=right") << read << QByteArray("84 03 00 d2");
    QTest::newRow("too long") << QByteArray("longer bytes=2 fill=0xEE") << read
                              << QByteArray("84 03 00 0b 00 64 00 a3 ee ee");
    QTest::newRow("wrong address") << QByteArray("wrong-address") << read
                                   << QByteArray("84 04 00 0b 00 64 00 a2");
    QTest::newRow("given wrong address")
        << QByteArray("wrong-address address=0x21") << read << QByteArray("84 21 00 0b 00 64 00 41");
    QTest::newRow("wrong parameter number")
        << QByteArray("wrong-number") << read << QByteArray("84 03 00 0c 00 64 00 a2");
    QTest::newRow("garbage before") << QByteArray("garbage-before hex=AABB") << read
                                    << QByteArray("aa bb 84 03 00 0b 00 64 00 a3");
    QTest::newRow("garbage after") << QByteArray("garbage-after hex=00") << read
                                   << QByteArray("84 03 00 0b 00 64 00 a3 00");
    QTest::newRow("raw bytes") << QByteArray("raw hex=C0:FF:EE") << read << QByteArray("c0 ff ee");
    QTest::newRow("result flags of a read")
        << QByteArray("flags value=0x10") << read << QByteArray("84 03 00 0b 00 64 10 53");
    QTest::newRow("result flags of a write")
        << QByteArray("flags value=0x20") << write << QByteArray("83 03 00 0b 00 96 00 00 20 12");
    QTest::newRow("conflict word") << QByteArray("conflict value=0x0102") << write
                                   << QByteArray("83 03 00 0b 00 96 01 02 00 7f");
    QTest::newRow("status byte of a store")
        << QByteArray("status value=0x30") << store << QByteArray("82 03 30 e0");
    QTest::newRow("status bits") << QByteArray("status value=0xFF") << status << QByteArray("85 03 ff 00 d2");
    QTest::newRow("communication status")
        << QByteArray("comm-status value=0x02") << status << QByteArray("85 03 80 02 5f");
    QTest::newRow("short error reply")
        << QByteArray("short-error bits=0x04") << read << QByteArray("85 03 c9 04");
}

void TestSimulatedFaults::faultChangesReply()
{
    QFETCH(QByteArray, fault);
    QFETCH(QByteArray, request);
    command(("fault 3 " + fault).constData());
    QTEST(exchange(request.constData()), "reply");
}

void TestSimulatedFaults::silentDriveDoesNotAnswer()
{
    command("fault 3 no-answer");
    port->send("04 03 00 0b 47");
    QVERIFY(port->staysSilent());
}

void TestSimulatedFaults::silentDriveStillDoesWhatItIsAsked()
{
    command("fault 3 no-answer");
    port->send("03 03 00 0b 00 96 f2");
    QTRY_COMPARE(bus->memory(3, 11), 150);
}

void TestSimulatedFaults::faultWithoutEffectLeavesDriveAsItWas()
{
    command("fault 3 flags value=0x20 effect=none");
    QCOMPARE(exchange("03 03 00 0b 00 96 f2"), QByteArray("83 03 00 0b 00 96 00 00 20 12"));
    QCOMPARE(bus->memory(3, 11), 100);
}

void TestSimulatedFaults::lateReplyComesAfterItsDelay()
{
    command("fault 3 late ms=60");
    QElapsedTimer timer;
    timer.start();
    port->send("04 03 00 0b 47");
    const QByteArray reply = port->receive();
    QVERIFY(timer.elapsed() >= 60);
    QCOMPARE(reply, parameter11);
}

void TestSimulatedFaults::splitReplyArrivesInTwoPieces()
{
    command("fault 3 split at=3 ms=80");
    QCOMPARE(readParameter11(), QByteArray("84 03 00"));
    QCOMPARE(port->receive(), QByteArray("0b 00 64 00 a3"));
}

void TestSimulatedFaults::faultEndsAfterItsCount()
{
    command("fault 3 truncate bytes=1 count=2");
    QCOMPARE(readParameter11(), QByteArray("84"));
    QCOMPARE(readParameter11(), QByteArray("84"));
    QCOMPARE(readParameter11(), parameter11);
}

void TestSimulatedFaults::faultSparesExchangesToSkip()
{
    command("fault 3 truncate bytes=1 skip=1 count=1");
    QCOMPARE(readParameter11(), parameter11);
    QCOMPARE(readParameter11(), QByteArray("84"));
}

void TestSimulatedFaults::faultOfCommandSparesOtherCommands()
{
    command("fault 3 truncate bytes=1 command=0x05");
    QCOMPARE(readParameter11(), parameter11);
    QCOMPARE(exchange("05 03 5d"), QByteArray("85"));
}

void TestSimulatedFaults::faultOfParameterSparesOtherParameters()
{
    command("fault 3 truncate bytes=1 param=0x0C");
    QCOMPARE(readParameter11(), parameter11);
    QCOMPARE(exchange("04 03 00 0c 46"), QByteArray("84"));
}

void TestSimulatedFaults::faultOfBusMeetsEveryDrive()
{
    command("add-drive 7");
    command("fault * truncate bytes=1");
    QCOMPARE(exchange("09 07 00 00 00 07 42"), QByteArray("89"));
    QCOMPARE(readParameter11(), QByteArray("84"));
}

void TestSimulatedFaults::faultOfDriveSparesOtherDrives()
{
    command("add-drive 7");
    command("fault 3 truncate bytes=1");
    QCOMPARE(exchange("09 07 00 00 00 07 42"), QByteArray("89 07 00 c5"));
}

void TestSimulatedFaults::severalFaultsAddUp()
{
    command("fault 3 truncate bytes=3");
    command("fault * garbage-after hex=EE");
    QCOMPARE(readParameter11(), QByteArray("84 03 00 ee"));
}

void TestSimulatedFaults::clearedFaultsDisturbNothing()
{
    command("fault 3 no-answer");
    command("fault * babble");
    command("clear-faults");
    port->receive(50); // what was babbled before
    QCOMPARE(readParameter11(), parameter11);
}

void TestSimulatedFaults::driveResetInMidListLosesAccessAndWorkingMemory()
{
    command("set 3 param 11 150");
    command("fault 3 reset skip=1");
    QCOMPARE(readParameter11(), QByteArray("84 03 00 0b 00 96 00 7d"));
    QCOMPARE(readParameter11(), QByteArray("84 03 00 0b 00 00 10 f7"));
    QCOMPARE(bus->memory(3, 11), 100);
    QCOMPARE(exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedFaults::pulledAdapterHangsUpInMidExchange()
{
    command("fault * pull");
    port->send("04 03 00 0b 47");
    QTRY_VERIFY(port->isHungUp());
    QVERIFY(bus->portPath().isEmpty());
}

void TestSimulatedFaults::babblerSendsUntilItIsSwitchedOff()
{
    command("fault * babble byte=0x2A ms=5");
    QTRY_VERIFY(bus->log().size() > 10);
    command("clear-faults");
    QVERIFY(port->receive().startsWith("2a 2a 2a 2a"));
    QVERIFY(port->staysSilent());
}

void TestSimulatedFaults::babblerCanBeCounted()
{
    command("fault 3 babble byte=0x2A ms=2 count=3");
    QCOMPARE(port->receive(), QByteArray("2a 2a 2a"));
}

void TestSimulatedFaults::unknownFaultIsError_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no such kind") << QByteArray("fault 3 hiccup");
    QTest::newRow("no such drive") << QByteArray("fault 8 no-answer");
    QTest::newRow("argument of another kind") << QByteArray("fault 3 late bytes=2");
    QTest::newRow("value that is no number") << QByteArray("fault 3 late ms=soon");
    QTest::newRow("bytes that are not hex") << QByteArray("fault 3 raw hex=0G");
    QTest::newRow("two kinds at once") << QByteArray("fault 3 late flip");
}

void TestSimulatedFaults::unknownFaultIsError()
{
    QFETCH(QByteArray, line);
    QVERIFY(bus->command(line).startsWith("error "));
    QCOMPARE(bus->command("faults"), QByteArray("ok 0:\n."));
}

QTEST_GUILESS_MAIN(TestSimulatedFaults)
#include "tst_simulatedfaults.moc"
