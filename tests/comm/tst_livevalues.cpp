#include "tests/comm/drivereplies.h"

#include <QtTest>

namespace {

int liveValue(const Z7Device &device, int telegram)
{
    switch (telegram) {
    case Mode1:
        return device.operationMode1;
    case Mode2:
        return device.operationMode2;
    case Speed:
        return device.actualSpeed;
    case Current:
        return device.actualCurrent;
    case Temperature:
        return device.actualTemperature;
    case Outputs:
        return device.digitalOutputs;
    case Inputs:
        return device.digitalInputs;
    default:
        return device.analogInputA1;
    }
}

} // namespace

/// What the status telegrams read of the running drive, down to the position that two replies add up to.
class TestLiveValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void liveValueIsTaken_data();
    void liveValueIsTaken();
    void positionIsTurnsAndFraction_data();
    void positionIsTurnsAndFraction();
    void positionDoesNotAddUpOverPasses();
    void signOfLiveValueComesFromVersionJustRead();
    void versionWithoutDefinitionsHasSignedValues();
    void failedReadLeavesLiveValue();
    void replyThatEndsBeforeValueLeavesLiveValue();
};

void TestLiveValues::liveValueIsTaken_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("value");
    QTest::newRow("operation mode, first number") << int(Mode1) << frame("84 03 00 01 00 06 00") << 6;
    QTest::newRow("operation mode, second number") << int(Mode2) << frame("84 03 00 02 01 04 00") << 260;
    QTest::newRow("speed forwards") << int(Speed) << frame("84 03 80 01 05 dc 00") << 1500;
    QTest::newRow("speed backwards") << int(Speed) << frame("84 03 80 01 fa 24 00") << -1500;
    QTest::newRow("speed, lowest") << int(Speed) << frame("84 03 80 01 80 00 00") << -32768;
    QTest::newRow("current is unsigned") << int(Current) << frame("84 03 80 07 ff fe 00") << 65534;
    QTest::newRow("temperature below zero") << int(Temperature) << frame("84 03 80 05 ff f6 00") << -10;
    QTest::newRow("outputs are the low byte") << int(Outputs) << frame("84 03 80 08 ff 05 00") << 5;
    QTest::newRow("inputs are the low byte") << int(Inputs) << frame("84 03 80 09 ff 8a 00") << 0x8a;
    QTest::newRow("analogue input") << int(AnalogInput) << frame("84 03 80 0d 80 00 00") << 32768;
}

void TestLiveValues::liveValueIsTaken()
{
    QFETCH(int, place);
    QFETCH(QByteArray, reply);
    QTEST(liveValue(afterPass(drive3(), StatusTelegram(place), reply), place), "value");
}

void TestLiveValues::positionIsTurnsAndFraction_data()
{
    QTest::addColumn<QByteArray>("fraction");
    QTest::addColumn<QByteArray>("turns");
    QTest::addColumn<double>("position");
    QTest::newRow("zero") << QByteArray("00 00") << QByteArray("00 00") << 0.0;
    QTest::newRow("whole turns") << QByteArray("00 00") << QByteArray("00 0c") << 12.0;
    QTest::newRow("fraction is in 65535ths") << QByteArray("33 33") << QByteArray("00 00") << 0.2;
    QTest::newRow("largest fraction is a whole turn") << QByteArray("ff ff") << QByteArray("00 01") << 2.0;
    QTest::newRow("backwards") << QByteArray("66 66") << QByteArray("ff fe") << -1.6;
}

void TestLiveValues::positionIsTurnsAndFraction()
{
    QFETCH(QByteArray, fraction);
    QFETCH(QByteArray, turns);
    QByteArrayList replies = statusRepliesWith(PositionFraction, frame("84 03 80 03" + fraction + "00"));
    replies[PositionTurns] = frame("84 03 80 04" + turns + "00");
    Z7DeviceStatusTelegramStack stack(drive3());
    answer(stack, replies);
    QTEST(stack.device().actualPosition, "position");
}

void TestLiveValues::positionDoesNotAddUpOverPasses()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    for (int pass = 0; pass < 3; ++pass) {
        stack.reset();
        stack.restart();
        answer(stack, statusReplies());
    }
    QCOMPARE(stack.device().actualPosition, 7.0);
}

void TestLiveValues::signOfLiveValueComesFromVersionJustRead()
{
    const Z7Device device = afterPass(unknownDrive3(), Current, frame("84 03 80 07 ff fe 00"));
    QCOMPARE(device.actualCurrent, 65534);
}

void TestLiveValues::versionWithoutDefinitionsHasSignedValues()
{
    QByteArrayList replies = statusRepliesWith(Version, versionReply("56 09 09 09"));
    replies[Current] = frame("84 03 80 07 ff fe 00");
    Z7DeviceStatusTelegramStack stack(unknownDrive3());
    answer(stack, replies);
    QCOMPARE(stack.device().actualCurrent, -2);
}

void TestLiveValues::failedReadLeavesLiveValue()
{
    Z7Device before = drive3();
    before.actualSpeed = 1500;
    // A speed of 5 with a wrong checksum.
    const Z7Device device = afterPass(before, Speed, QByteArray::fromHex("84 03 80 01 00 05 00 00"));
    QCOMPARE(device.error, 8);
    QCOMPARE(device.actualSpeed, 1500);
}

void TestLiveValues::replyThatEndsBeforeValueLeavesLiveValue()
{
    Z7Device before = drive3();
    before.actualSpeed = 1500;
    // An unknown first byte is no error, whatever the length.
    const Z7Device device = afterPass(before, Speed, frame("91 03 80 01"));
    QCOMPARE(device.error, 0);
    QCOMPARE(device.actualSpeed, 1500);
}

QTEST_GUILESS_MAIN(TestLiveValues)
#include "tst_livevalues.moc"
