#include "slaveport.h"
#include "testdrives.h"

#include <QtTest>
#include <memory>

using z7sim::SimulatedBus;

/// What one drive does with each command. Drive 3 has the password 4711 (0x1267).
class TestSimulatedDrive : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void rightPasswordOpensDrive();
    void wrongPasswordIsRefused();
    void refusedTryDoesNotKeepRightPasswordOut();
    void refusedTryClosesOpenDrive();
    void bits23To16OfPasswordDoNotCount();
    void powerCycleClosesOpenDrive();
    void driveKeepsSilentOnRequestsToOthers();

    void readGivesFactoryValue();
    void readGivesNegativeValueInTwosComplement();
    void readWithoutAccessIsMarkedAndGivesNothingAway();
    void readOfLockedParameterIsMarked();
    void readOfUnknownParameterFails();
    void readOfBusAddressGivesAddress();

    void writeChangesWorkingMemoryOnly();
    void writeWithoutAccessIsMarked();
    void writeIsRefused_data();
    void writeIsRefused();
    void applicationFunctionIsWrittenWhileInputsAreLow();
    void applicationFunctionIsRefusedWhileInputIsHigh_data();
    void applicationFunctionIsRefusedWhileInputIsHigh();
    void writeThatBreaksRisingOrderNamesOtherParameter_data();
    void writeThatBreaksRisingOrderNamesOtherParameter();

    void storingKeepsValuesOverPowerCycle();
    void valuesNotStoredAreLostAtPowerCycle();
    void storingWithoutChangeSaysSo();
    void storingWithWrongPasswordIsRefused();
    void storingInconsistentValuesIsRefused();
    void storingIntoBrokenFlashFails();
    void factoryResetRestoresWorkingMemoryAndFlash();
    void factoryResetWithWrongPasswordIsRefused();

    void replyToAddressChangeStillComesFromOldAddress();
    void newAddressOutlivesPowerCycle();
    void newPasswordTakesOldOnesPlace();
    void newPasswordNeedsOldOne();

    void statusShowsBitsOfDrive();
    void statusTellsOfChecksumErrorOnce();
    void statusIsWithheldWithoutAccess();
    void wrongChecksumGivesShortErrorReply();
    void softwareVersionStandsAtByte18();

    void bootloaderAnswersNoCommand();
    void bootloaderIsRefusedWhileMotorTurns();
    void bootloaderNeedsPassword();
    void powerCycleLeavesBootloader();
    void newFirmwareRestartsDriveWithItsVersion();

    void speedFollowsSetPointAlongRamp();
    void inputOneTurnsMotorAtFixedSpeed();
    void positionRunsWithSpeed();
    void liveValueCanBeHeldFast();

private:
    QByteArray exchange(const char *hex) { return port->exchange(hex); }
    void open() { QCOMPARE(exchange(OpenDrive3), QByteArray(Opened)); }
    QByteArray command(const char *line) { return bus->command(line); }

    TestDefinitions definitions;
    std::unique_ptr<SimulatedBus> bus;
    std::unique_ptr<SlavePort> port;
};

void TestSimulatedDrive::init()
{
    bus = std::make_unique<SimulatedBus>(busWithDrive3(definitions.folder()));
    QVERIFY2(bus->start(), qPrintable(bus->errorText()));
    port = std::make_unique<SlavePort>(bus->portPath());
    QVERIFY(port->isOpen());
}

void TestSimulatedDrive::cleanup()
{
    port.reset();
    bus.reset();
}

void TestSimulatedDrive::rightPasswordOpensDrive()
{
    QCOMPARE(exchange("09 03 00 00 12 67 d0"), QByteArray("89 03 00 d9"));
    QCOMPARE(command("get 3 access"), QByteArray("ok 1"));
}

void TestSimulatedDrive::wrongPasswordIsRefused()
{
    QCOMPARE(exchange("09 03 00 00 00 03 5a"), QByteArray("89 03 10 c9"));
    QCOMPARE(command("get 3 access"), QByteArray("ok 0"));
}

void TestSimulatedDrive::refusedTryDoesNotKeepRightPasswordOut()
{
    exchange("09 03 00 00 00 03 5a");
    QCOMPARE(exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedDrive::refusedTryClosesOpenDrive()
{
    open();
    exchange("09 03 00 00 00 03 5a");
    QCOMPARE(command("get 3 access"), QByteArray("ok 0"));
}

void TestSimulatedDrive::bits23To16OfPasswordDoNotCount()
{
    command("set 3 password 0x01AB1267");
    QCOMPARE(exchange("09 03 01 00 12 67 d3"), QByteArray("89 03 00 d9"));
}

void TestSimulatedDrive::powerCycleClosesOpenDrive()
{
    open();
    command("power-cycle 3");
    QCOMPARE(exchange("04 03 00 0b 47"), QByteArray("84 03 00 0b 00 00 10 f7"));
}

void TestSimulatedDrive::driveKeepsSilentOnRequestsToOthers()
{
    port->send("09 04 00 00 12 67 d3");
    QVERIFY(port->staysSilent());
}

void TestSimulatedDrive::readGivesFactoryValue()
{
    open();
    QCOMPARE(exchange("04 03 00 0b 47"), QByteArray("84 03 00 0b 00 64 00 a3"));
}

void TestSimulatedDrive::readGivesNegativeValueInTwosComplement()
{
    open();
    QCOMPARE(exchange("04 03 00 50 02"), QByteArray("84 03 00 50 ff fb 00 84"));
}

void TestSimulatedDrive::readWithoutAccessIsMarkedAndGivesNothingAway()
{
    QCOMPARE(exchange("04 03 00 0b 47"), QByteArray("84 03 00 0b 00 00 10 f7"));
}

void TestSimulatedDrive::readOfLockedParameterIsMarked()
{
    open();
    command("lock 3 11");
    QCOMPARE(exchange("04 03 00 0b 47"), QByteArray("84 03 00 0b 00 00 10 f7"));
}

void TestSimulatedDrive::readOfUnknownParameterFails()
{
    open();
    QCOMPARE(exchange("04 03 7f ff d0"), QByteArray("84 03 7f ff 00 00 20 70"));
}

void TestSimulatedDrive::readOfBusAddressGivesAddress()
{
    open();
    QCOMPARE(exchange("04 03 00 52 0c"), QByteArray("84 03 00 52 00 03 00 89"));
}

void TestSimulatedDrive::writeChangesWorkingMemoryOnly()
{
    open();
    // 150 into parameter 11
    QCOMPARE(exchange("03 03 00 0b 00 96 f2"), QByteArray("83 03 00 0b 00 96 00 00 00 72"));
    QCOMPARE(bus->memory(3, 11), 150);
    QCOMPARE(bus->flash(3, 11), 100);
}

void TestSimulatedDrive::writeWithoutAccessIsMarked()
{
    QCOMPARE(exchange("03 03 00 0b 00 96 f2"), QByteArray("83 03 00 0b 00 00 00 00 10 f4"));
    QCOMPARE(bus->memory(3, 11), 100);
}

void TestSimulatedDrive::writeIsRefused_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("above the maximum")
        << QByteArray("03 03 00 0b 04 00 40") << QByteArray("83 03 00 0b 00 64 00 00 20 40");
    QTest::newRow("below a negative minimum")
        << QByteArray("03 03 00 50 ff 9b a5") << QByteArray("83 03 00 50 ff fb 00 00 20 a5");
    QTest::newRow("read-only") << QByteArray("03 03 00 53 00 01 0f")
                               << QByteArray("83 03 00 53 03 09 00 00 20 50");
    QTest::newRow("live value") << QByteArray("03 03 80 08 00 07 c0")
                                << QByteArray("83 03 80 08 00 00 00 00 20 7b");
    QTest::newRow("unknown number") << QByteArray("03 03 7f ff 00 00 d1")
                                    << QByteArray("83 03 7f ff 00 00 00 00 20 71");
    QTest::newRow("bus address 0") << QByteArray("03 03 00 52 00 00 0d")
                                   << QByteArray("83 03 00 52 00 03 00 00 20 ae");
    QTest::newRow("bus address 256") << QByteArray("03 03 00 52 01 00 0c")
                                     << QByteArray("83 03 00 52 00 03 00 00 20 ae");
}

void TestSimulatedDrive::writeIsRefused()
{
    QFETCH(QByteArray, request);
    open();
    QTEST(exchange(request.constData()), "reply");
}

void TestSimulatedDrive::applicationFunctionIsWrittenWhileInputsAreLow()
{
    open();
    command("inputs 3 0x0C");
    QCOMPARE(exchange("03 03 00 51 00 07 0b"), QByteArray("83 03 00 51 00 07 00 00 00 8b"));
}

void TestSimulatedDrive::applicationFunctionIsRefusedWhileInputIsHigh_data()
{
    QTest::addColumn<QByteArray>("inputs");
    QTest::newRow("input 1") << QByteArray("inputs 3 0x01");
    QTest::newRow("input 2") << QByteArray("inputs 3 0x02");
}

void TestSimulatedDrive::applicationFunctionIsRefusedWhileInputIsHigh()
{
    QFETCH(QByteArray, inputs);
    open();
    command(inputs.constData());
    QCOMPARE(exchange("03 03 00 51 00 07 0b"), QByteArray("83 03 00 51 00 05 00 00 20 a9"));
    QCOMPARE(bus->memory(3, 81), 5);
}

void TestSimulatedDrive::writeThatBreaksRisingOrderNamesOtherParameter_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("first speed point above the second")
        << QByteArray("03 03 00 0b 00 c9 8f") << QByteArray("83 03 00 0b 00 c9 00 0c 00 33");
    QTest::newRow("second speed point above the third")
        << QByteArray("03 03 00 0c 01 2d 15") << QByteArray("83 03 00 0c 01 2d 00 0d 00 98");
    QTest::newRow("third speed point below the second")
        << QByteArray("03 03 00 0d 00 00 46") << QByteArray("83 03 00 0d 00 00 00 0c 00 ca");
    QTest::newRow("second current point below the first")
        << QByteArray("03 03 00 27 00 00 78") << QByteArray("83 03 00 27 00 00 00 26 00 86");
    QTest::newRow("equal points are no conflict")
        << QByteArray("03 03 00 0b 00 c8 8c") << QByteArray("83 03 00 0b 00 c8 00 00 00 0c");
}

void TestSimulatedDrive::writeThatBreaksRisingOrderNamesOtherParameter()
{
    QFETCH(QByteArray, request);
    open();
    QTEST(exchange(request.constData()), "reply");
}

void TestSimulatedDrive::storingKeepsValuesOverPowerCycle()
{
    command("set 3 param 11 150");
    QCOMPARE(exchange("02 03 00 00 12 67 2b"), QByteArray("82 03 00 d0"));
    command("power-cycle 3");
    QCOMPARE(bus->memory(3, 11), 150);
}

void TestSimulatedDrive::valuesNotStoredAreLostAtPowerCycle()
{
    command("set 3 param 11 150");
    command("power-cycle 3");
    QCOMPARE(bus->memory(3, 11), 100);
}

void TestSimulatedDrive::storingWithoutChangeSaysSo()
{
    QCOMPARE(exchange("02 03 00 00 12 67 2b"), QByteArray("82 03 20 f0"));
}

void TestSimulatedDrive::storingWithWrongPasswordIsRefused()
{
    command("set 3 param 11 150");
    QCOMPARE(exchange("02 03 00 00 00 03 5d"), QByteArray("82 03 10 c0"));
    QCOMPARE(bus->flash(3, 11), 100);
}

void TestSimulatedDrive::storingInconsistentValuesIsRefused()
{
    command("set 3 param 11 500");
    QCOMPARE(exchange("02 03 00 00 12 67 2b"), QByteArray("82 03 80 50"));
    QCOMPARE(bus->flash(3, 11), 100);
}

void TestSimulatedDrive::storingIntoBrokenFlashFails()
{
    command("set 3 flash-broken 1");
    command("set 3 param 11 150");
    QCOMPARE(exchange("02 03 00 00 12 67 2b"), QByteArray("82 03 40 90"));
    QCOMPARE(bus->flash(3, 11), 100);
}

void TestSimulatedDrive::factoryResetRestoresWorkingMemoryAndFlash()
{
    command("set 3 param 11 150");
    command("set 3 flash 11 160");
    QCOMPARE(exchange("06 03 00 00 12 67 d7"), QByteArray("86 03 00 dc"));
    QCOMPARE(bus->memory(3, 11), 100);
    QCOMPARE(bus->flash(3, 11), 100);
}

void TestSimulatedDrive::factoryResetWithWrongPasswordIsRefused()
{
    command("set 3 param 11 150");
    QCOMPARE(exchange("06 03 00 00 00 03 59"), QByteArray("86 03 10 cc"));
    QCOMPARE(bus->memory(3, 11), 150);
}

void TestSimulatedDrive::replyToAddressChangeStillComesFromOldAddress()
{
    open();
    QCOMPARE(exchange("03 03 00 52 00 09 34"), QByteArray("83 03 00 52 00 09 00 00 00 b4"));
    QCOMPARE(exchange("09 09 00 00 12 67 de"), QByteArray("89 09 00 c7"));
    port->send(OpenDrive3);
    QVERIFY(port->staysSilent());
}

void TestSimulatedDrive::newAddressOutlivesPowerCycle()
{
    open();
    exchange("03 03 00 52 00 09 34");
    command("power-cycle 9");
    QCOMPARE(exchange("09 09 00 00 12 67 de"), QByteArray("89 09 00 c7"));
}

void TestSimulatedDrive::newPasswordTakesOldOnesPlace()
{
    // 4711 becomes 5
    QCOMPARE(exchange("0c 03 00 00 12 67 00 00 00 05 d8"), QByteArray("8c 03 00 da"));
    QCOMPARE(exchange(OpenDrive3), QByteArray("89 03 10 c9"));
    QCOMPARE(exchange("09 03 00 00 00 05 44"), QByteArray("89 03 00 d9"));
}

void TestSimulatedDrive::newPasswordNeedsOldOne()
{
    QCOMPARE(exchange("0c 03 00 00 00 03 00 00 00 05 42"), QByteArray("8c 03 10 ca"));
    QCOMPARE(command("get 3 password"), QByteArray("ok 4711"));
}

void TestSimulatedDrive::statusShowsBitsOfDrive()
{
    open();
    QCOMPARE(exchange("05 03 5d"), QByteArray("85 03 80 00 5d"));
    command("set 3 status 0x41");
    QCOMPARE(exchange("05 03 5d"), QByteArray("85 03 41 00 9c"));
}

void TestSimulatedDrive::statusTellsOfChecksumErrorOnce()
{
    open();
    exchange("05 03 00");
    QCOMPARE(exchange("05 03 5d"), QByteArray("85 03 80 02 5f"));
    QCOMPARE(exchange("05 03 5d"), QByteArray("85 03 80 00 5d"));
}

void TestSimulatedDrive::statusIsWithheldWithoutAccess()
{
    QCOMPARE(exchange("05 03 5d"), QByteArray("85 03 00 10 cd"));
}

// The last byte is the checksum of the three before it and at once the error bit 0x02.
void TestSimulatedDrive::wrongChecksumGivesShortErrorReply()
{
    QCOMPARE(exchange("09 03 00 00 12 67 00"), QByteArray("85 03 cf 02"));
    QCOMPARE((0x85 + 0x03 + 0xcf) % 256 ^ 0x55, 0x02);
}

void TestSimulatedDrive::softwareVersionStandsAtByte18()
{
    const QByteArray reply = QByteArray::fromHex(exchange("07 03 5f"));
    QCOMPARE(reply.size(), 35);
    QCOMPARE(reply.mid(18, 4), QByteArray("V\x01\x02\x03"));
}

void TestSimulatedDrive::bootloaderAnswersNoCommand()
{
    QCOMPARE(exchange("0b 03 00 00 12 67 d2"), QByteArray("8b 03 00 db"));
    port->send(OpenDrive3);
    QVERIFY(port->staysSilent());
}

void TestSimulatedDrive::bootloaderIsRefusedWhileMotorTurns()
{
    command("set 3 setpoint 1500");
    QTRY_VERIFY(bus->memory(3, 0x8001) > 0);
    QCOMPARE(exchange("0b 03 00 00 12 67 d2"), QByteArray("8b 03 20 fb"));
    QCOMPARE(command("get 3 bootloader"), QByteArray("ok 0"));
}

void TestSimulatedDrive::bootloaderNeedsPassword()
{
    QCOMPARE(exchange("0b 03 00 00 00 03 44"), QByteArray("8b 03 10 cb"));
    QCOMPARE(command("get 3 bootloader"), QByteArray("ok 0"));
}

void TestSimulatedDrive::powerCycleLeavesBootloader()
{
    exchange("0b 03 00 00 12 67 d2");
    command("power-cycle 3");
    QCOMPARE(exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedDrive::newFirmwareRestartsDriveWithItsVersion()
{
    exchange("0b 03 00 00 12 67 d2");
    // The programmer knows no address: 0 reaches the drive in its bootloader. The version is V200.
    QCOMPARE(exchange("60 00 56 02 00 00 ed"), QByteArray("e0 00 00 b5"));
    QCOMPARE(command("get 3 version"), QByteArray("ok V200"));
    QCOMPARE(bus->memory(3, 11), 55);
    QCOMPARE(exchange(OpenDrive3), QByteArray(Opened));
}

void TestSimulatedDrive::speedFollowsSetPointAlongRamp()
{
    command("set 3 param 26 30000");
    command("set 3 setpoint 3000");
    QVERIFY(bus->memory(3, 0x8001) < 3000);
    QTRY_COMPARE(bus->memory(3, 0x8001), 3000);
    QCOMPARE(bus->memory(3, 0x8007), 1500);
}

void TestSimulatedDrive::inputOneTurnsMotorAtFixedSpeed()
{
    command("set 3 param 26 30000");
    command("set 3 param 1 1");
    command("inputs 3 0x01");
    QTRY_COMPARE(bus->memory(3, 0x8001), 1200);
}

void TestSimulatedDrive::positionRunsWithSpeed()
{
    command("set 3 param 26 30000");
    command("set 3 setpoint 30000");
    QTRY_VERIFY(bus->memory(3, 0x8004) > 5);
}

void TestSimulatedDrive::liveValueCanBeHeldFast()
{
    open();
    command("set 3 param 0x800D 513");
    QCOMPARE(exchange("04 03 80 0d c1"), QByteArray("84 03 80 0d 02 01 00 42"));
    command("set 3 param 0x800D auto");
    QCOMPARE(bus->memory(3, 0x800D), 0);
}

QTEST_GUILESS_MAIN(TestSimulatedDrive)
#include "tst_simulateddrive.moc"
