// What every drive has in common: what its status bits come to, and where it can be reached.

#include "model/drivefacts.h"

#include <QtTest>

Q_DECLARE_METATYPE(DriveCondition)

class TestDriveFacts : public QObject
{
    Q_OBJECT

private slots:
    void worstStatusBitDecidesCondition_data();
    void worstStatusBitDecidesCondition();
    void driveCanBeReachedAtAddressesOfOneByte_data();
    void driveCanBeReachedAtAddressesOfOneByte();
};

void TestDriveFacts::worstStatusBitDecidesCondition_data()
{
    QTest::addColumn<int>("statusBits");
    QTest::addColumn<DriveCondition>("condition");

    QTest::newRow("no bit") << 0x00 << DriveCondition::Idle;
    QTest::newRow("over-temperature") << 0x01 << DriveCondition::Fault;
    QTest::newRow("active") << 0x02 << DriveCondition::Working;
    QTest::newRow("over-voltage") << 0x04 << DriveCondition::Fault;
    QTest::newRow("under-voltage") << 0x08 << DriveCondition::Fault;
    QTest::newRow("hardware error") << 0x10 << DriveCondition::Fault;
    QTest::newRow("over-current") << 0x20 << DriveCondition::Fault;
    QTest::newRow("acknowledgement required") << 0x40 << DriveCondition::AcknowledgeRequired;
    QTest::newRow("ready") << 0x80 << DriveCondition::Working;
    QTest::newRow("acknowledgement outweighs work") << 0xC2 << DriveCondition::AcknowledgeRequired;
    QTest::newRow("fault outweighs acknowledgement") << 0x41 << DriveCondition::Fault;
    QTest::newRow("all bits") << 0xFF << DriveCondition::Fault;
}

void TestDriveFacts::worstStatusBitDecidesCondition()
{
    QFETCH(int, statusBits);
    QTEST(driveCondition(statusBits), "condition");
}

void TestDriveFacts::driveCanBeReachedAtAddressesOfOneByte_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<bool>("isAddress");

    QTest::newRow("below zero") << -1 << false;
    QTest::newRow("zero") << 0 << false;
    QTest::newRow("the lowest") << 1 << true;
    QTest::newRow("the highest") << 255 << true;
    QTest::newRow("beyond one byte") << 256 << false;
}

void TestDriveFacts::driveCanBeReachedAtAddressesOfOneByte()
{
    QFETCH(int, address);
    QTEST(isBusAddress(address), "isAddress");
}

QTEST_APPLESS_MAIN(TestDriveFacts)
#include "tst_drivefacts.moc"
