#include "tests/comm/drivereplies.h"

#include <QtTest>

namespace {

const QByteArray granted = frame("89 03 00");
const QByteArray refused = frame("89 03 10");
const QByteArray statusWithChecksumFlag = frame("85 03 81 02");

} // namespace

/// The fourteen telegrams with which every longer transaction begins: log on twice, status, version, live
/// values. What the live values mean stands in tst_livevalues.
class TestDeviceStatusStack : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void fourteenRequestsStandInThisOrder();
    void firstPasswordIsAddressAsWholeNumber();

    void driveThatAcceptsBothPasswordsIsOpen();
    void driveThatRefusesItsAddressOnlyFillsWholeRecord();
    void driveThatRefusesBothPasswordsEndsConnectedWithoutAccess();
    void driveThatTakesItsAddressAndRefusesPasswordEndsWithAccess();
    void nextPassForgivesRefusedAddressAgain();
    void passCutShortBetweenAttemptsStartsOver();
    void garbledAccessReplyEndsPass_data();
    void garbledAccessReplyEndsPass();
    void answeringDriveIsOutOfItsBootloader_data();
    void answeringDriveIsOutOfItsBootloader();

    void versionOfUnknownDriveIsTaken_data();
    void versionOfUnknownDriveIsTaken();
    void versionAlsoNamesParameterSet();
    void knownVersionGoesOn();
    void anotherVersionEndsPassAndIsNotTaken();
    void corruptVersionReplyIsStillRead_data();
    void corruptVersionReplyIsStillRead();
    void corruptReplyWithAnotherVersionCountsAsAnotherVersion();
    void versionReplyTooShortForVersionIsNotTaken_data();
    void versionReplyTooShortForVersionIsNotTaken();

    void statusBitsAreKept();
    void statusBitsOfCorruptReplyAreKept();
    void driveThatSawChecksumErrorIsDisconnected();
    void otherFlagsOfCommunicationStatusAreIgnored();
    void shortStatusReplyStoresOnlyBytesThatCame_data();
    void shortStatusReplyStoresOnlyBytesThatCame();

    void valuesReadBeforeErrorStayInRecord();
};

void TestDeviceStatusStack::fourteenRequestsStandInThisOrder()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(takeRequests(stack),
        QByteArrayList({
            "09 03 00 00 00 03 5a", // log on with the address as password
            "09 03 00 00 12 67 d0", // log on with 4711
            "05 03 5d", // status
            "07 03 5f", // version
            "04 03 00 01 5d", // operation mode
            "04 03 00 02 5c",
            "04 03 80 01 dd", // speed
            "04 03 80 07 db", // current
            "04 03 80 05 d9", // temperature
            "04 03 80 03 df", // position: fraction, turns
            "04 03 80 04 de",
            "04 03 80 08 da", // digital outputs, digital inputs
            "04 03 80 09 c5",
            "04 03 80 0d c1", // analogue input
        }));
}

void TestDeviceStatusStack::firstPasswordIsAddressAsWholeNumber()
{
    Z7Device device = drive3();
    device.assignAddress(0x0103);
    Z7DeviceStatusTelegramStack stack(device);
    QCOMPARE(takeRequests(stack).first(), QByteArray("09 03 00 00 01 03 45"));
}

void TestDeviceStatusStack::driveThatAcceptsBothPasswordsIsOpen()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, statusReplies()), int(StatusTelegramCount));
    QCOMPARE(stack.device().error, 0);
    QVERIFY(stack.device().isConnected());
    QVERIFY(stack.device().isAccessGranted());
}

void TestDeviceStatusStack::driveThatRefusesItsAddressOnlyFillsWholeRecord()
{
    const Z7Device device = afterPass(unknownDrive3(), FirstAccess, refused);
    QCOMPARE(device.error, 0);
    QVERIFY(device.isConnected());
    QVERIFY(device.isAccessGranted());
    QCOMPARE(device.softwareVersion, QStringLiteral("V123"));
    QCOMPARE(device.statusBits, quint8(0x80));
    QCOMPARE(device.operationMode1, 3);
    QCOMPARE(device.operationMode2, 2);
    QCOMPARE(device.actualSpeed, 1500);
    QCOMPARE(device.actualCurrent, 120);
    QCOMPARE(device.actualTemperature, 30);
    QCOMPARE(device.actualPosition, 7.0);
    QCOMPARE(device.digitalOutputs, quint8(1));
    QCOMPARE(device.digitalInputs, quint8(2));
    QCOMPARE(device.analogInputA1, 256);
}

void TestDeviceStatusStack::driveThatRefusesBothPasswordsEndsConnectedWithoutAccess()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, {refused, refused, statusReplies().at(StatusBits)}), 2);
    QCOMPARE(stack.device().error, 10);
    QVERIFY(stack.device().isConnected());
    QVERIFY(!stack.device().isAccessGranted());
}

void TestDeviceStatusStack::driveThatTakesItsAddressAndRefusesPasswordEndsWithAccess()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, statusRepliesWith(SecondAccess, refused)), 2);
    QCOMPARE(stack.device().error, 10);
    QVERIFY(stack.device().isConnected());
    QVERIFY(stack.device().isAccessGranted());
}

void TestDeviceStatusStack::nextPassForgivesRefusedAddressAgain()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    answer(stack, statusRepliesWith(FirstAccess, refused));
    stack.restart();
    QCOMPARE(answer(stack, statusRepliesWith(FirstAccess, refused)), int(StatusTelegramCount));
    QCOMPARE(stack.device().error, 0);
}

void TestDeviceStatusStack::passCutShortBetweenAttemptsStartsOver()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    answer(stack, {granted});
    stack.setError(TelegramError::NoAnswer);
    stack.reset();
    stack.restart();
    // Taken for the second attempt, the refusal would end the pass.
    QCOMPARE(answer(stack, statusRepliesWith(FirstAccess, refused)), int(StatusTelegramCount));
    QCOMPARE(stack.device().error, 0);
}

void TestDeviceStatusStack::garbledAccessReplyEndsPass_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("connected");
    QTest::newRow("first: no status byte") << int(FirstAccess) << frame("89 03") << 6 << false;
    QTest::newRow("first: too short to have an address")
        << int(FirstAccess) << QByteArray::fromHex("89") << 6 << false;
    QTest::newRow("first: another drive") << int(FirstAccess) << frame("89 04 00") << 7 << false;
    QTest::newRow("first: wrong checksum")
        << int(FirstAccess) << QByteArray::fromHex("89 03 10 00") << 8 << false;
    // The second attempt finds a drive that has just accepted the first.
    QTest::newRow("second: another drive") << int(SecondAccess) << frame("89 04 00") << 7 << true;
    QTest::newRow("second: wrong checksum")
        << int(SecondAccess) << QByteArray::fromHex("89 03 10 00") << 8 << true;
}

void TestDeviceStatusStack::garbledAccessReplyEndsPass()
{
    QFETCH(int, place);
    QFETCH(QByteArray, reply);
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, statusRepliesWith(StatusTelegram(place), reply)), place + 1);
    QTEST(stack.device().error, "error");
    QTEST(stack.device().isConnected(), "connected");
    QTEST(stack.device().isAccessGranted(), "connected");
}

void TestDeviceStatusStack::answeringDriveIsOutOfItsBootloader_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("bootloaderActive");
    QTest::newRow("accepts the password") << granted << false;
    QTest::newRow("refuses the password") << refused << false;
    QTest::newRow("garbled reply") << QByteArray() << true;
}

void TestDeviceStatusStack::answeringDriveIsOutOfItsBootloader()
{
    QFETCH(QByteArray, reply);
    Z7Device device = drive3();
    device.bootloaderActive = true;
    Z7DeviceStatusTelegramStack stack(device);
    stack.processReply(reply);
    QTEST(stack.device().bootloaderActive, "bootloaderActive");
}

void TestDeviceStatusStack::versionOfUnknownDriveIsTaken_data()
{
    QTest::addColumn<QByteArray>("letterAndNumbers");
    QTest::addColumn<QString>("version");
    QTest::newRow("three digits") << QByteArray("56 01 02 03") << QStringLiteral("V123");
    QTest::newRow("another letter") << QByteArray("57 00 00 01") << QStringLiteral("W001");
    QTest::newRow("numbers of more than one digit") << QByteArray("56 01 0c 7f") << QStringLiteral("V112127");
    QTest::newRow("numbers are signed bytes") << QByteArray("56 01 ff 80") << QStringLiteral("V1-1-128");
}

void TestDeviceStatusStack::versionOfUnknownDriveIsTaken()
{
    QFETCH(QByteArray, letterAndNumbers);
    const Z7Device device = afterPass(unknownDrive3(), Version, versionReply(letterAndNumbers));
    QTEST(device.softwareVersion, "version");
    QCOMPARE(device.error, 0);
}

void TestDeviceStatusStack::versionAlsoNamesParameterSet()
{
    const Z7Device device = afterPass(unknownDrive3(), Version, versionReply("56 01 02 03"));
    QCOMPARE(device.parameterSet.softwareVersion, QStringLiteral("V123"));
}

void TestDeviceStatusStack::knownVersionGoesOn()
{
    const Z7Device device = afterPass(drive3(), Version, versionReply("56 01 02 03"));
    QCOMPARE(device.error, 0);
    QCOMPARE(device.softwareVersion, QStringLiteral("V123"));
}

void TestDeviceStatusStack::anotherVersionEndsPassAndIsNotTaken()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, statusRepliesWith(Version, versionReply("56 01 02 04"))), int(Version) + 1);
    QCOMPARE(stack.device().error, 15);
    QCOMPARE(stack.device().softwareVersion, QStringLiteral("V123"));
}

void TestDeviceStatusStack::corruptVersionReplyIsStillRead_data()
{
    const QByteArray good = versionReply("56 01 02 03");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("wrong checksum") << good.left(34) + '\0' << 8;
    QTest::newRow("too long") << frame(good.toHex()) << 6;
    QTest::newRow("ends behind the version") << frame(good.left(22).toHex()) << 6;
}

void TestDeviceStatusStack::corruptVersionReplyIsStillRead()
{
    QFETCH(QByteArray, reply);
    const Z7Device device = afterPass(unknownDrive3(), Version, reply);
    QTEST(device.error, "error");
    QCOMPARE(device.softwareVersion, QStringLiteral("V123"));
}

void TestDeviceStatusStack::corruptReplyWithAnotherVersionCountsAsAnotherVersion()
{
    const QByteArray wrongChecksum = versionReply("56 01 02 04").left(34) + '\0';
    QCOMPARE(afterPass(drive3(), Version, wrongChecksum).error, 15);
}

void TestDeviceStatusStack::versionReplyTooShortForVersionIsNotTaken_data()
{
    const QByteArray good = versionReply("56 01 02 03");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("header only") << frame("87 03") << 6;
    QTest::newRow("third number is missing") << frame(good.left(20).toHex()).left(21) << 6;
    QTest::newRow("third number is missing, wrong checksum") << good.left(21) << 8;
    // Last byte: checksum and error bits at once.
    QTest::newRow("drive saw a wrong checksum") << frame("85 03 cf") << 8;
}

void TestDeviceStatusStack::versionReplyTooShortForVersionIsNotTaken()
{
    QFETCH(QByteArray, reply);
    const Z7Device device = afterPass(unknownDrive3(), Version, reply);
    QTEST(device.error, "error");
    QCOMPARE(device.softwareVersion, QStringLiteral("V000"));
    // Nor is a known version compared with one that did not come.
    QTEST(afterPass(drive3(), Version, reply).error, "error");
}

void TestDeviceStatusStack::statusBitsAreKept()
{
    const Z7Device device = afterPass(drive3(), StatusBits, frame("85 03 41 00"));
    QCOMPARE(device.statusBits, quint8(0x41));
    QCOMPARE(device.error, 0);
}

void TestDeviceStatusStack::statusBitsOfCorruptReplyAreKept()
{
    const Z7Device device = afterPass(drive3(), StatusBits, QByteArray::fromHex("85 03 41 00 00"));
    QCOMPARE(device.statusBits, quint8(0x41));
    QCOMPARE(device.error, 8);
}

void TestDeviceStatusStack::driveThatSawChecksumErrorIsDisconnected()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, statusRepliesWith(StatusBits, statusWithChecksumFlag)), int(StatusBits) + 1);
    QCOMPARE(stack.device().error, 8);
    QCOMPARE(stack.device().statusBits, quint8(0x81));
    QVERIFY(!stack.device().isConnected());
    QVERIFY(!stack.device().isAccessGranted());
}

void TestDeviceStatusStack::otherFlagsOfCommunicationStatusAreIgnored()
{
    const Z7Device device = afterPass(drive3(), StatusBits, frame("85 03 80 fd"));
    QCOMPARE(device.error, 0);
    QVERIFY(device.isConnected());
}

void TestDeviceStatusStack::shortStatusReplyStoresOnlyBytesThatCame_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("statusBits");
    QTest::addColumn<bool>("connected");
    QTest::newRow("nothing") << QByteArray() << 6 << 0x20 << true;
    QTest::newRow("no status bits") << QByteArray::fromHex("85 03") << 8 << 0x20 << true;
    QTest::newRow("status bits are the last byte") << frame("85 03") << 6 << 0xdd << true;
    // The checksum stands where the communication status is looked for.
    QTest::newRow("byte 3 without the checksum flag") << frame("85 03 41") << 6 << 0x41 << true;
    QTest::newRow("byte 3 with the checksum flag") << frame("85 03 cf") << 8 << 0xcf << false;
}

void TestDeviceStatusStack::shortStatusReplyStoresOnlyBytesThatCame()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, statusBits);
    Z7Device before = drive3();
    before.statusBits = 0x20;
    const Z7Device device = afterPass(before, StatusBits, reply);
    QTEST(device.error, "error");
    QCOMPARE(int(device.statusBits), statusBits);
    QTEST(device.isConnected(), "connected");
}

void TestDeviceStatusStack::valuesReadBeforeErrorStayInRecord()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    QCOMPARE(answer(stack, statusRepliesWith(Temperature, QByteArray())), int(Temperature) + 1);
    QCOMPARE(stack.device().error, 6);
    QCOMPARE(stack.device().actualCurrent, 120);
    QCOMPARE(stack.device().actualTemperature, 0);
    QVERIFY(stack.device().isAccessGranted());
}

QTEST_GUILESS_MAIN(TestDeviceStatusStack)
#include "tst_devicestatusstack.moc"
