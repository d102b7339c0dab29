#include "tests/comm/drivereplies.h"

#include <QtTest>

/// The stacks of one telegram, which brings the password along itself.
class TestSingleOperationStacks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void probeLogsOnWithAddressAsPassword();
    void answeringDriveCountsAsConnected_data();
    void answeringDriveCountsAsConnected();
    void probeThatIsNotUnderstoodLeavesDriveUnconnected_data();
    void probeThatIsNotUnderstoodLeavesDriveUnconnected();

    void storingSendsPassword();
    void storingLeavesRecordAlone();
    void storeFails_data();
    void storeFails();

    void factoryResetSendsPassword();
    void factoryResetLeavesRecordAlone();
    void factoryResetFails_data();
    void factoryResetFails();

    void oldAndNewPasswordAreSent();
    void newPasswordIsKeptAsDriveKeepsIt_data();
    void newPasswordIsKeptAsDriveKeepsIt();
    void newPasswordOpensDrive();
    void unchangedPasswordOpensDriveToo();
    void refusedNewPasswordKeepsOld_data();
    void refusedNewPasswordKeepsOld();

    void enteringBootloaderSendsPassword();
    void driveThatAcceptsIsInItsBootloader();
    void driveThatDoesNotAcceptIsNotInItsBootloader_data();
    void driveThatDoesNotAcceptIsNotInItsBootloader();
};

namespace {

/// The answers that every password telegram has in common, for a reply that begins with this byte.
void addCommonFailures(const QByteArray &firstByte)
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("password refused") << frame(firstByte + "03 10") << 10;
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("too short") << frame(firstByte + "03") << 6;
    QTest::newRow("from another drive") << frame(firstByte + "04 00") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex(firstByte + "03 00 00") << 8;
}

} // namespace

void TestSingleOperationStacks::probeLogsOnWithAddressAsPassword()
{
    Z7CheckProtocolTelegramStack stack(drive3());
    QCOMPARE(takeRequests(stack), QByteArrayList {"09 03 00 00 00 03 5a"});
}

void TestSingleOperationStacks::answeringDriveCountsAsConnected_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("accessGranted");
    QTest::newRow("accepts its address") << frame("89 03 00") << 0 << true;
    QTest::newRow("refuses its address") << frame("89 03 10") << 10 << false;
    QTest::newRow("other status bits are ignored") << frame("89 03 ef") << 0 << true;
    QTest::newRow("refuses among other status bits") << frame("89 03 ff") << 10 << false;
}

void TestSingleOperationStacks::answeringDriveCountsAsConnected()
{
    QFETCH(QByteArray, reply);
    Z7CheckProtocolTelegramStack stack(drive3());
    stack.processReply(reply);
    QVERIFY(stack.device().isConnected());
    QTEST(stack.device().error, "error");
    QTEST(stack.device().isAccessGranted(), "accessGranted");
}

void TestSingleOperationStacks::probeThatIsNotUnderstoodLeavesDriveUnconnected_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("one byte") << QByteArray::fromHex("89") << 6;
    QTest::newRow("no status byte") << frame("89 03") << 6;
    QTest::newRow("unknown first byte, no status byte") << QByteArray::fromHex("91 03") << 6;
    QTest::newRow("from another drive") << frame("89 04 10") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("89 03 10 00") << 8;
    // Last byte: checksum and error bits at once.
    QTest::newRow("drive saw a wrong checksum") << frame("85 03 cf") << 8;
}

void TestSingleOperationStacks::probeThatIsNotUnderstoodLeavesDriveUnconnected()
{
    QFETCH(QByteArray, reply);
    Z7CheckProtocolTelegramStack stack(drive3());
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
    QVERIFY(!stack.device().isConnected());
    QVERIFY(!stack.device().isAccessGranted());
}

void TestSingleOperationStacks::storingSendsPassword()
{
    Z7TelegramstackStoreParameter stack(drive3());
    QCOMPARE(takeRequests(stack), QByteArrayList {"02 03 00 00 12 67 2b"});
}

void TestSingleOperationStacks::storingLeavesRecordAlone()
{
    Z7TelegramstackStoreParameter stack(drive3());
    stack.processReply(frame("82 03 00"));
    QCOMPARE(stack.device().error, 0);
    QVERIFY(!stack.device().isConnected());
    QVERIFY(!stack.device().isAccessGranted());
}

void TestSingleOperationStacks::storeFails_data()
{
    addCommonFailures("82");
    QTest::newRow("nothing to store") << frame("82 03 20") << 16;
    QTest::newRow("flash write failed") << frame("82 03 40") << 17;
    QTest::newRow("inconsistent parameters") << frame("82 03 80") << 18;
    QTest::newRow("a refused password comes first") << frame("82 03 f0") << 10;
    QTest::newRow("nothing to store comes second") << frame("82 03 e0") << 16;
    QTest::newRow("a failed flash write comes third") << frame("82 03 c0") << 17;
}

void TestSingleOperationStacks::storeFails()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackStoreParameter stack(drive3());
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
    QVERIFY(!stack.device().isConnected());
}

void TestSingleOperationStacks::factoryResetSendsPassword()
{
    Z7TelegramstackFactoryReset stack(drive3());
    QCOMPARE(takeRequests(stack), QByteArrayList {"06 03 00 00 12 67 d7"});
}

void TestSingleOperationStacks::factoryResetLeavesRecordAlone()
{
    Z7Device device = drive3();
    device.setAccessGranted(true);
    device.updateParam(troubledParam(11));
    Z7TelegramstackFactoryReset stack(device);
    stack.processReply(frame("86 03 00"));
    QCOMPARE(stack.device().error, 0);
    QVERIFY(stack.device().isAccessGranted());
    QCOMPARE(describe(stack, 11), describe(troubledParam(11)));
}

void TestSingleOperationStacks::factoryResetFails_data()
{
    addCommonFailures("86");
}

void TestSingleOperationStacks::factoryResetFails()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackFactoryReset stack(drive3());
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
    QVERIFY(!stack.device().isConnected());
}

void TestSingleOperationStacks::oldAndNewPasswordAreSent()
{
    // 4711 becomes 0x01AB0005, of which AB does not travel.
    Z7TelegramstackPasswordReset stack(drive3(), 0x01AB0005);
    QCOMPARE(takeRequests(stack), QByteArrayList {"0c 03 00 00 12 67 01 00 00 05 db"});
}

void TestSingleOperationStacks::newPasswordIsKeptAsDriveKeepsIt_data()
{
    QTest::addColumn<int>("entered");
    QTest::addColumn<int>("kept");
    QTest::newRow("small") << 5 << 5;
    QTest::newRow("16 bits") << 0xFEDC << 0xFEDC;
    QTest::newRow("bits 23 to 16 are lost") << 0x12345678 << 0x12005678;
    QTest::newRow("negative") << -2 << static_cast<int>(0xFF00FFFEu);
    QTest::newRow("zero") << 0 << 0;
}

void TestSingleOperationStacks::newPasswordIsKeptAsDriveKeepsIt()
{
    QFETCH(int, entered);
    Z7TelegramstackPasswordReset stack(drive3(), entered);
    stack.processReply(frame("8c 03 00"));
    QCOMPARE(stack.device().error, 0);
    QTEST(stack.device().password, "kept");
}

void TestSingleOperationStacks::newPasswordOpensDrive()
{
    Z7TelegramstackPasswordReset stack(drive3(), 5);
    stack.processReply(frame("8c 03 00"));
    QVERIFY(stack.device().isConnected());
    QVERIFY(stack.device().isAccessGranted());
}

void TestSingleOperationStacks::unchangedPasswordOpensDriveToo()
{
    Z7TelegramstackPasswordReset stack(drive3(), 4711);
    stack.processReply(frame("8c 03 00"));
    QCOMPARE(stack.device().password, 4711);
    QVERIFY(stack.device().isAccessGranted());
}

void TestSingleOperationStacks::refusedNewPasswordKeepsOld_data()
{
    addCommonFailures("8c");
}

void TestSingleOperationStacks::refusedNewPasswordKeepsOld()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackPasswordReset stack(drive3(), 5);
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
    QCOMPARE(stack.device().password, 4711);
    QVERIFY(!stack.device().isAccessGranted());
}

void TestSingleOperationStacks::enteringBootloaderSendsPassword()
{
    Z7TelegramstackBootloaderInit stack(drive3());
    QCOMPARE(takeRequests(stack), QByteArrayList {"0b 03 00 00 12 67 d2"});
}

void TestSingleOperationStacks::driveThatAcceptsIsInItsBootloader()
{
    Z7TelegramstackBootloaderInit stack(drive3());
    // Bits that have no meaning here are ignored.
    stack.processReply(frame("8b 03 cf"));
    QCOMPARE(stack.device().error, 0);
    QVERIFY(stack.device().bootloaderActive);
}

void TestSingleOperationStacks::driveThatDoesNotAcceptIsNotInItsBootloader_data()
{
    addCommonFailures("8b");
    QTest::newRow("motor not in free-run") << frame("8b 03 20") << 20;
    QTest::newRow("a refused password comes first") << frame("8b 03 30") << 10;
}

void TestSingleOperationStacks::driveThatDoesNotAcceptIsNotInItsBootloader()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackBootloaderInit stack(drive3());
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
    QVERIFY(!stack.device().bootloaderActive);
}

QTEST_GUILESS_MAIN(TestSingleOperationStacks)
#include "tst_singleoperationstacks.moc"
