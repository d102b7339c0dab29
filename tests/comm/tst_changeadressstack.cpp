#include "tests/comm/drivereplies.h"

#include <QtTest>

namespace {

const QByteArray granted = frame("89 03 00");
// The drive's answer from its old address: address taken.
const QByteArray taken = frame("83 03 00 52 00 09 00 00 00");

/// Drive 3, known and open, whose record holds its address as parameter 82.
Z7Device openDrive3()
{
    Z7Device device = drive3();
    device.setAccessGranted(true);
    device.updateParam(enteredParam(82, 3));
    return device;
}

} // namespace

/// Giving a drive another bus address.
class TestChangeAdressStack : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void stackLogsOnAndWritesAddress();
    void acceptedPasswordOpensDrive();
    void refusedPasswordKeepsAddressFromBeingWritten();
    void garbledAccessReplyEndsPassUnconnected_data();
    void garbledAccessReplyEndsPassUnconnected();

    void takenAddressGoesIntoRecordAndConnectionIsLost();
    void addressComesFromRequest();
    void addressBeyondByteIsTakenWhole();
    void presentAddressKeepsConnection();
    void entryOfAddressKeepsItsValue();
    void driveWithoutEntryStillChangesItsAddress();

    void failedWriteKeepsAddress_data();
    void failedWriteKeepsAddress();
    void otherOutcomesDoNotStopChange_data();
    void otherOutcomesDoNotStopChange();
    void garbledReplyKeepsAddress_data();
    void garbledReplyKeepsAddress();
    void replyThatEndsBeforeFlagsKeepsAddress();

private:
    /// The record after a log-on that the drive accepted and a write of address 9 that it answered so.
    static Z7Device afterWrite(const QByteArray &reply)
    {
        Z7TelegramstackChangeAdress stack(openDrive3(), 9);
        answer(stack, {granted, reply});
        return stack.device();
    }
};

void TestChangeAdressStack::stackLogsOnAndWritesAddress()
{
    Z7TelegramstackChangeAdress stack(drive3(), 9);
    QCOMPARE(takeRequests(stack),
        QByteArrayList({
            "09 03 00 00 12 67 d0", // log on with 4711
            "03 03 00 52 00 09 34", // 9 into the bus address
        }));
}

void TestChangeAdressStack::acceptedPasswordOpensDrive()
{
    Z7TelegramstackChangeAdress stack(drive3(), 9);
    stack.processReply(granted);
    QCOMPARE(stack.device().error, 0);
    QVERIFY(stack.device().isConnected());
    QVERIFY(stack.device().isAccessGranted());
}

void TestChangeAdressStack::refusedPasswordKeepsAddressFromBeingWritten()
{
    Z7TelegramstackChangeAdress stack(drive3(), 9);
    QCOMPARE(answer(stack, {frame("89 03 10"), taken}), 1);
    QCOMPARE(stack.device().error, 10);
    QVERIFY(stack.device().isConnected());
    QVERIFY(!stack.device().isAccessGranted());
    QCOMPARE(stack.device().address, 3);
}

void TestChangeAdressStack::garbledAccessReplyEndsPassUnconnected_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("from another drive") << frame("89 04 10") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("89 03 10 00") << 8;
}

void TestChangeAdressStack::garbledAccessReplyEndsPassUnconnected()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackChangeAdress stack(drive3(), 9);
    QCOMPARE(answer(stack, {reply, taken}), 1);
    QTEST(stack.device().error, "error");
    QVERIFY(!stack.device().isConnected());
}

void TestChangeAdressStack::takenAddressGoesIntoRecordAndConnectionIsLost()
{
    const Z7Device device = afterWrite(taken);
    QCOMPARE(device.error, 0);
    QCOMPARE(device.address, 9);
    QCOMPARE(device.previousAddress, 3);
    QVERIFY(device.addressChanged);
    QVERIFY(!device.isConnected());
    QVERIFY(!device.isAccessGranted());
}

void TestChangeAdressStack::addressComesFromRequest()
{
    // The reply still tells the old address.
    QCOMPARE(afterWrite(frame("83 03 00 52 00 03 00 00 00")).address, 9);
}

void TestChangeAdressStack::addressBeyondByteIsTakenWhole()
{
    Z7TelegramstackChangeAdress stack(openDrive3(), 0x0109);
    answer(stack, {granted, taken});
    QCOMPARE(stack.device().address, 0x0109);
}

void TestChangeAdressStack::presentAddressKeepsConnection()
{
    Z7TelegramstackChangeAdress stack(openDrive3(), 3);
    answer(stack, {granted, taken});
    QCOMPARE(stack.device().address, 3);
    QVERIFY(!stack.device().addressChanged);
    QVERIFY(stack.device().isConnected());
    QVERIFY(stack.device().isAccessGranted());
}

void TestChangeAdressStack::entryOfAddressKeepsItsValue()
{
    QCOMPARE(describe(afterWrite(taken).parameterSet.value(82)), QByteArray("3"));
}

void TestChangeAdressStack::driveWithoutEntryStillChangesItsAddress()
{
    Z7TelegramstackChangeAdress stack(unknownDrive3(), 9);
    answer(stack, {granted, taken});
    QCOMPARE(stack.device().address, 9);
    QVERIFY(stack.device().parameterSet.params.isEmpty());
}

void TestChangeAdressStack::failedWriteKeepsAddress_data()
{
    QTest::addColumn<QByteArray>("conflictAndFlags");
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("failed") << QByteArray("00 00 20") << QByteArray("3 writeFailed");
    QTest::newRow("failed for lack of access")
        << QByteArray("00 00 30") << QByteArray("3 accessDenied writeFailed");
    QTest::newRow("failed by a conflict") << QByteArray("00 01 20") << QByteArray("3 writeFailed conflict");
}

void TestChangeAdressStack::failedWriteKeepsAddress()
{
    QFETCH(QByteArray, conflictAndFlags);
    const Z7Device device = afterWrite(frame("83 03 00 52 00 09" + conflictAndFlags));
    QCOMPARE(device.error, 0);
    QCOMPARE(device.address, 3);
    QVERIFY(!device.addressChanged);
    QVERIFY(device.isAccessGranted());
    QTEST(describe(device.parameterSet.value(82)), "entry");
}

void TestChangeAdressStack::otherOutcomesDoNotStopChange_data()
{
    QTest::addColumn<QByteArray>("conflictAndFlags");
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("access not permitted") << QByteArray("00 00 10") << QByteArray("3 accessDenied");
    QTest::newRow("conflict") << QByteArray("00 01 00") << QByteArray("3 conflict");
    QTest::newRow("other flags") << QByteArray("00 00 cf") << QByteArray("3");
}

void TestChangeAdressStack::otherOutcomesDoNotStopChange()
{
    QFETCH(QByteArray, conflictAndFlags);
    // An earlier attempt has failed.
    Z7Device device = openDrive3();
    Z7DeviceParam failed = enteredParam(82, 3);
    failed.writeFailed = true;
    device.updateParam(failed);
    Z7TelegramstackChangeAdress stack(device, 9);
    answer(stack, {granted, frame("83 03 00 52 00 09" + conflictAndFlags)});
    QCOMPARE(stack.device().address, 9);
    QTEST(describe(stack, 82), "entry");
}

void TestChangeAdressStack::garbledReplyKeepsAddress_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("too short") << frame("83 03 00 52 00 09 00 00") << 6;
    QTest::newRow("from the new address") << frame("83 09 00 52 00 09 00 00 00") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("83 03 00 52 00 09 00 00 00 00") << 8;
    QTest::newRow("another parameter") << frame("83 03 00 53 00 09 00 00 00") << 9;
}

void TestChangeAdressStack::garbledReplyKeepsAddress()
{
    QFETCH(QByteArray, reply);
    const Z7Device device = afterWrite(reply);
    QTEST(device.error, "error");
    QCOMPARE(device.address, 3);
    QVERIFY(device.isAccessGranted());
    QCOMPARE(describe(device.parameterSet.value(82)), QByteArray("3"));
}

void TestChangeAdressStack::replyThatEndsBeforeFlagsKeepsAddress()
{
    // An unknown first byte is no error, whatever the length.
    const Z7Device device = afterWrite(QByteArray::fromHex("91 03 00 52 00 09 00 00"));
    QCOMPARE(device.error, 0);
    QCOMPARE(device.address, 3);
}

QTEST_GUILESS_MAIN(TestChangeAdressStack)
#include "tst_changeadressstack.moc"
