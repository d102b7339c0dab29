// The key of a drive in the device list, and its names: made of its port, bus address and version.

#include "model/device.h"
#include "tests/support/listedports.h"

#include <QtTest>

namespace {

/// Drive at `address` on a port that the system lists.
Z7Device driveOn(const QString &portName, int address = 1, const QString &version = QStringLiteral("V000"))
{
    ListedPorts ports;
    ports.plugUsb(portName, QString());
    Z7Device device {QSerialPortInfo(portName)};
    device.assignAddress(address);
    device.softwareVersion = version;
    return device;
}

/// The key's version part alone: no port, address 0.
int versionPart(const QString &version)
{
    Z7Device device;
    device.address = 0;
    device.softwareVersion = version;
    return device.deviceId();
}

} // namespace

class TestDeviceId : public QObject
{
    Q_OBJECT

private slots:
    void recordMadeForPortKeepsIt();
    void keyHoldsPortAddressAndVersion_data();
    void keyHoldsPortAddressAndVersion();
    void versionPartOfKey_data();
    void versionPartOfKey();
    void formerKeyIsThatOfFormerAddress();
    void nameHoldsPortsDigitsInTheirOrder_data();
    void nameHoldsPortsDigitsInTheirOrder();
    void shortNameHoldsAddressAlone();
};

void TestDeviceId::recordMadeForPortKeepsIt()
{
    const Z7Device device = driveOn(QStringLiteral("ttyUSB0"));
    QCOMPARE(device.portInfo.portName(), QStringLiteral("ttyUSB0"));
    QCOMPARE(device.softwareVersion, QStringLiteral("V000"));
}

void TestDeviceId::keyHoldsPortAddressAndVersion_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("version");
    QTest::addColumn<quint32>("key");

    QTest::newRow("version unknown") << "COM3" << 1 << "V000" << 0x03010000u;
    QTest::newRow("version known") << "COM3" << 1 << "V123" << 0x03011081u;
    QTest::newRow("the port's digits are added up") << "COM12" << 1 << "V000" << 0x03010000u;
    QTest::newRow("in any order") << "COM21" << 1 << "V000" << 0x03010000u;
    QTest::newRow("wherever they stand") << "tty4S5" << 1 << "V000" << 0x09010000u;
    QTest::newRow("a port of one digit 0") << "ttyUSB0" << 1 << "V000" << 0x00010000u;
    QTest::newRow("a port without digits") << "ttyX" << 7 << "V000" << 0x00070000u;
    QTest::newRow("the highest address") << "COM3" << 255 << "V000" << 0x03FF0000u;
    QTest::newRow("from V800 on the version wipes out port and address")
        << "COM3" << 1 << "V800" << 0xFFFF8000u;
}

void TestDeviceId::keyHoldsPortAddressAndVersion()
{
    QFETCH(QString, port);
    QFETCH(int, address);
    QFETCH(QString, version);
    QTEST(quint32(driveOn(port, address, version).deviceId()), "key");
}

void TestDeviceId::versionPartOfKey_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("part");

    QTest::newRow("all digits zero") << "V000" << 0;
    QTest::newRow("first digit") << "V100" << 0x1000;
    QTest::newRow("second digit") << "V090" << (9 << 6);
    QTest::newRow("third digit") << "V001" << 1;
    QTest::newRow("third digit of another value") << "V009" << 1;
    QTest::newRow("V101") << "V101" << 0x1001;
    QTest::newRow("V102 shares the key of V101") << "V102" << 0x1001;
    QTest::newRow("highest version without a sign") << "V799" << 0x7241;
    QTest::newRow("V999 is negative") << "V999" << int(0xFFFF9241);
    QTest::newRow("the letter does not count") << "B123" << 0x1081;
    QTest::newRow("nor has it to be one") << "9123" << 0x1081;
    QTest::newRow("three characters") << "V12" << 0;
    QTest::newRow("five characters") << "V1234" << 0;
    QTest::newRow("nothing") << "" << 0;
    QTest::newRow("a letter in the first place") << "VA23" << 0;
    QTest::newRow("a letter in the second place") << "V1B3" << 0;
    QTest::newRow("a letter in the third place") << "V12C" << 0;
    QTest::newRow("a sign") << "V1-2" << 0;
}

void TestDeviceId::versionPartOfKey()
{
    QFETCH(QString, version);
    QTEST(versionPart(version), "part");
}

void TestDeviceId::formerKeyIsThatOfFormerAddress()
{
    Z7Device device = driveOn(QStringLiteral("COM3"), 1, QStringLiteral("V123"));
    device.setAddress(7);
    QCOMPARE(device.deviceId(), 0x03071081);
    QCOMPARE(device.previousDeviceId(), 0x03011081);
}

void TestDeviceId::nameHoldsPortsDigitsInTheirOrder_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("name");

    QTest::newRow("two digits") << "COM12"
                                << "Port12 - Z7.3";
    QTest::newRow("digits apart") << "tty4S5"
                                  << "Port45 - Z7.3";
    QTest::newRow("no digit") << "ttyX"
                              << "Port - Z7.3";
}

void TestDeviceId::nameHoldsPortsDigitsInTheirOrder()
{
    QFETCH(QString, port);
    QTEST(deviceName(driveOn(port, 3)), "name");
}

void TestDeviceId::shortNameHoldsAddressAlone()
{
    QCOMPARE(shortDeviceName(driveOn(QStringLiteral("COM12"), 255)), QStringLiteral("Z7.255"));
}

QTEST_GUILESS_MAIN(TestDeviceId)
#include "tst_deviceid.moc"
