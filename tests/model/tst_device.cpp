// The record of one drive: how it is reached or lost, and what it takes from a reply.

#include "model/device.h"

#include <QtTest>

#include <algorithm>

namespace {

Z7Device openDrive()
{
    Z7Device device;
    device.setAccessGranted(true);
    return device;
}

Z7DeviceParam paramOf(int number, int value)
{
    return {number, value, 1, true};
}

} // namespace

class TestDevice : public QObject
{
    Q_OBJECT

private slots:
    void newRecordIsThatOfDriveNobodyHasReached();

    void driveThatAnswersIsOutOfItsBootloader();
    void lostDriveHasNoAccess();
    void grantedAccessMeansConnected();
    void refusedAccessLeavesConnection();
    void anotherAddressLosesDriveAndMarksRecord();
    void presentAddressChangesNothing();
    void addressToLookForDriveAtLeavesNoMark();
    void anotherPasswordTakesAccessOnly();
    void presentPasswordChangesNothing();

    void unknownVersionIsTakenByRecordAndParameters();
    void knownVersionIsNeverReplaced();
    void newParameterSetBringsItsVersion();
    void replyCannotAddParameter();
    void replyReplacesParameter();
    void parametersStateIsClearedInSet();

    void errorShowsUntilItIsZero();
    void resettingStateLosesDriveAndKeepsItsValues();
    void connectionIsCopiedAndNothingElse();
    void digitalOutputIsOneBit_data();
    void digitalOutputIsOneBit();
    void digitalInputIsOneBit_data();
    void digitalInputIsOneBit();
    void recordsAreKnownToQueuedSignalsUnderTheirNames();
};

void TestDevice::newRecordIsThatOfDriveNobodyHasReached()
{
    const Z7Device device;
    QVERIFY(device.portInfo.isNull());
    QVERIFY(!device.hasError());
    QVERIFY(!device.isConnected());
    QVERIFY(!device.isAccessGranted());
    QCOMPARE(device.address, 1);
    QCOMPARE(device.previousAddress, 1);
    QCOMPARE(device.password, 0);
    QCOMPARE(device.softwareVersion, QStringLiteral("V000"));
    QCOMPARE(device.parameterSet.softwareVersion, QStringLiteral("V000"));
    QVERIFY(device.parameterSet.params.isEmpty());
    const auto liveValues = {device.operationMode1, device.operationMode2, device.analogInputA1,
        device.actualCurrent, device.actualSpeed, device.actualTemperature};
    QCOMPARE(std::count(liveValues.begin(), liveValues.end(), 0), 6);
    QCOMPARE(device.statusBits | device.digitalOutputs | device.digitalInputs, 0);
    QCOMPARE(device.actualPosition, 0.0);
    QVERIFY(!device.bootloaderActive && !device.addressChanged);
    QVERIFY(!device.parametersComplete && !device.fullReadPending);
}

void TestDevice::driveThatAnswersIsOutOfItsBootloader()
{
    Z7Device device;
    device.bootloaderActive = true;
    device.setConnected(true);
    QVERIFY(device.isConnected());
    QVERIFY(!device.isAccessGranted());
    QVERIFY(!device.bootloaderActive);
}

void TestDevice::lostDriveHasNoAccess()
{
    Z7Device device = openDrive();
    device.bootloaderActive = true;
    device.setConnected(false);
    QVERIFY(!device.isConnected());
    QVERIFY(!device.isAccessGranted());
    QVERIFY(device.bootloaderActive);
}

void TestDevice::grantedAccessMeansConnected()
{
    Z7Device device;
    device.bootloaderActive = true;
    device.setAccessGranted(true);
    QVERIFY(device.isConnected());
    QVERIFY(device.isAccessGranted());
    QVERIFY(!device.bootloaderActive);
}

void TestDevice::refusedAccessLeavesConnection()
{
    Z7Device device = openDrive();
    device.bootloaderActive = true;
    device.setAccessGranted(false);
    QVERIFY(device.isConnected());
    QVERIFY(!device.isAccessGranted());
    QVERIFY(device.bootloaderActive);
}

void TestDevice::anotherAddressLosesDriveAndMarksRecord()
{
    Z7Device device = openDrive();
    device.setAddress(5);
    device.setAddress(7);
    QCOMPARE(device.address, 7);
    QCOMPARE(device.previousAddress, 5);
    QVERIFY(device.addressChanged);
    QVERIFY(!device.isConnected());
    QVERIFY(!device.isAccessGranted());
}

void TestDevice::presentAddressChangesNothing()
{
    Z7Device device;
    device.previousAddress = 9;
    device.setAccessGranted(true);
    device.setAddress(1);
    QCOMPARE(device.previousAddress, 9);
    QVERIFY(!device.addressChanged);
    QVERIFY(device.isConnected());
    QVERIFY(device.isAccessGranted());
}

void TestDevice::addressToLookForDriveAtLeavesNoMark()
{
    Z7Device device = openDrive();
    device.setAddress(5);
    device.assignAddress(7);
    QCOMPARE(device.address, 7);
    QCOMPARE(device.previousDeviceId(), device.deviceId());
    QVERIFY(!device.addressChanged);
    QVERIFY(!device.isConnected());
}

void TestDevice::anotherPasswordTakesAccessOnly()
{
    Z7Device device = openDrive();
    device.setPassword(4711);
    QCOMPARE(device.password, 4711);
    QVERIFY(!device.isAccessGranted());
    QVERIFY(device.isConnected());
}

void TestDevice::presentPasswordChangesNothing()
{
    Z7Device device = openDrive();
    device.setPassword(0);
    QVERIFY(device.isAccessGranted());
}

void TestDevice::unknownVersionIsTakenByRecordAndParameters()
{
    Z7Device device;
    device.setSoftwareVersion(QStringLiteral("V123"));
    QCOMPARE(device.softwareVersion, QStringLiteral("V123"));
    QCOMPARE(device.parameterSet.softwareVersion, QStringLiteral("V123"));
}

void TestDevice::knownVersionIsNeverReplaced()
{
    Z7Device device;
    device.setSoftwareVersion(QStringLiteral("V100"));
    device.setSoftwareVersion(QStringLiteral("V123"));
    QCOMPARE(device.softwareVersion, QStringLiteral("V100"));
    QCOMPARE(device.parameterSet.softwareVersion, QStringLiteral("V100"));
}

void TestDevice::newParameterSetBringsItsVersion()
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    set.insert(paramOf(11, 500));
    Z7Device device;
    device.setParameterSet(set);
    QCOMPARE(device.parameterSet.softwareVersion, QStringLiteral("V123"));
    QCOMPARE(device.parameterSet.value(11).value, 500);
    QCOMPARE(device.softwareVersion, QStringLiteral("V000"));
}

void TestDevice::replyCannotAddParameter()
{
    Z7Device device;
    device.parameterSet.insert(paramOf(11, 500));
    device.updateParam(paramOf(12, 600));
    QCOMPARE(device.parameterSet.params.keys(), QList<int>({11}));
    device.updateParam(Z7DeviceParam());
    QCOMPARE(device.parameterSet.params.keys(), QList<int>({11}));
}

void TestDevice::replyReplacesParameter()
{
    Z7Device device;
    device.parameterSet.insert(paramOf(11, 500));
    device.updateParam(paramOf(11, 600));
    QCOMPARE(device.parameterSet.value(11).value, 600);
}

void TestDevice::parametersStateIsClearedInSet()
{
    Z7DeviceParam conflicting = paramOf(11, 500);
    conflicting.conflict = true;
    Z7Device device;
    device.parameterSet.insert(conflicting);
    device.clearParamState(11);
    QVERIFY(!device.parameterSet.value(11).conflict);
}

void TestDevice::errorShowsUntilItIsZero()
{
    Z7Device device;
    device.setDeviceError(10);
    QCOMPARE(device.error, 10);
    QVERIFY(device.hasError());
    device.setDeviceError(0);
    QVERIFY(!device.hasError());
}

void TestDevice::resettingStateLosesDriveAndKeepsItsValues()
{
    Z7DeviceParam param = paramOf(11, 500);
    param.valid = param.accessDenied = true;
    param.error = 9;
    Z7Device device = openDrive();
    device.setDeviceError(8);
    device.actualSpeed = 3000;
    device.parameterSet.insert(param);
    device.resetState();
    QVERIFY(!device.hasError());
    QVERIFY(!device.isConnected());
    QVERIFY(!device.isAccessGranted());
    QCOMPARE(device.actualSpeed, 3000);
    QVERIFY(!device.parameterSet.value(11).valid);
    QVERIFY(device.parameterSet.value(11).accessDenied);
    QCOMPARE(device.parameterSet.value(11).error, 0);
    QCOMPARE(device.parameterSet.value(11).value, 500);
}

void TestDevice::connectionIsCopiedAndNothingElse()
{
    Z7Device source = openDrive();
    source.error = 10;
    source.password = 4711;
    source.bootloaderActive = true;
    source.address = 9;
    source.softwareVersion = QStringLiteral("V123");
    source.actualSpeed = 3000;
    Z7Device device;
    device.copyConnectionState(source);
    QCOMPARE(device.error, 10);
    QVERIFY(device.isConnected());
    QVERIFY(device.isAccessGranted());
    QCOMPARE(device.password, 4711);
    QVERIFY(device.bootloaderActive);
    QCOMPARE(device.address, 1);
    QCOMPARE(device.softwareVersion, QStringLiteral("V000"));
    QCOMPARE(device.actualSpeed, 0);
}

void TestDevice::digitalOutputIsOneBit_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("bit");

    QTest::newRow("output 1") << 1 << 0x01;
    QTest::newRow("output 2") << 2 << 0x02;
    QTest::newRow("output 3") << 3 << 0x04;
    QTest::newRow("there is no output 4") << 4 << 0;
    QTest::newRow("nor an output 0") << 0 << 0;
    QTest::newRow("nor a negative one") << -1 << 0;
    QTest::newRow("nor one beyond an int's bits") << 33 << 0;
}

void TestDevice::digitalOutputIsOneBit()
{
    QFETCH(int, n);
    QFETCH(int, bit);
    Z7Device device;
    device.digitalOutputs = 0xFF;
    QCOMPARE(device.isDigitalOutputSet(n), bit != 0);
    device.digitalOutputs = quint8(~bit);
    QVERIFY(!device.isDigitalOutputSet(n));
}

void TestDevice::digitalInputIsOneBit_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("bit");

    QTest::newRow("input 1") << 1 << 0x01;
    QTest::newRow("input 2") << 2 << 0x02;
    QTest::newRow("input 3") << 3 << 0x04;
    QTest::newRow("input 4") << 4 << 0x08;
    QTest::newRow("there is no input 5") << 5 << 0;
    QTest::newRow("nor an input 0") << 0 << 0;
}

void TestDevice::digitalInputIsOneBit()
{
    QFETCH(int, n);
    QFETCH(int, bit);
    Z7Device device;
    device.digitalInputs = 0xFF;
    QCOMPARE(device.isDigitalInputSet(n), bit != 0);
    device.digitalInputs = quint8(~bit);
    QVERIFY(!device.isDigitalInputSet(n));
}

void TestDevice::recordsAreKnownToQueuedSignalsUnderTheirNames()
{
    registerDeviceTypes();
    registerDeviceTypes();
    QCOMPARE(QMetaType::type("Z7Device"), qMetaTypeId<Z7Device>());
    QCOMPARE(QMetaType::type("Z7DeviceParam"), qMetaTypeId<Z7DeviceParam>());
}

QTEST_APPLESS_MAIN(TestDevice)
#include "tst_device.moc"
