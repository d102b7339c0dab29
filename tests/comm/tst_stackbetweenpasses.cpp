#include "tests/comm/recordingstack.h"
#include "tests/support/listedports.h"

#include <QtTest>

/// What becomes of a stack, above all of the polling stack, from one pass to the next.
class TestStackBetweenPasses : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void restartAfterWholePassBringsBackOrder();
    void restartAfterPassCutShortPutsAnsweredBeforeUnsent();
    void restartBeforePassChangesNothing();
    void orderSurvivesManyPasses();
    void restartSendsSameTelegramsAgain();
    void restartClearsError();
    void restartKeepsWhatWasRead();

    void resetForgetsWhatReadsTold();
    void resetReachesAnsweredTelegramsToo();
    void resetLeavesParametersThatAreNotRead();
    void resetLeavesParametersThatAreWritten();
    void resetDoesNotAddParametersToDrive();
    void resetZeroesPosition();
    void resetKeepsErrorAndConnection();

    void newPasswordReachesEveryAccessTelegram();
    void newPasswordLeavesOtherTelegrams();
    void newAddressReachesOnlyAccessTelegrams();
    void newerRecordOfSameDriveIsTakenOver();
    void newerRecordDoesNotReplaceLiveValues();
    void recordOfAnotherDriveIsNotTakenOver_data();
    void recordOfAnotherDriveIsNotTakenOver();
    void recordOfDriveOnAnotherPortIsNotTakenOver();
    void recordOfAnotherDriveStillRewritesAccessTelegrams();
};

void TestStackBetweenPasses::restartAfterWholePassBringsBackOrder()
{
    RecordingStack stack({1, 2, 3, 4});
    takeRequests(stack);
    stack.restart();
    QCOMPARE(takeRequests(stack), readsOf1To4);
}

void TestStackBetweenPasses::restartAfterPassCutShortPutsAnsweredBeforeUnsent()
{
    RecordingStack stack({1, 2, 3, 4});
    QCOMPARE(answer(stack, {valueOf1, wrongNumber, valueOf1}), 2);
    stack.restart();
    QCOMPARE(takeRequests(stack), readsOf1To4);
}

void TestStackBetweenPasses::restartBeforePassChangesNothing()
{
    RecordingStack stack({1, 2, 3, 4});
    stack.restart();
    QCOMPARE(takeRequests(stack), readsOf1To4);
}

void TestStackBetweenPasses::orderSurvivesManyPasses()
{
    RecordingStack stack({1, 2, 3, 4});
    for (int pass = 0; pass < 5; ++pass) {
        for (int answered = 0; answered < pass; ++answered)
            stack.processReply(valueOf1);
        stack.restart();
    }
    QCOMPARE(takeRequests(stack), readsOf1To4);
}

void TestStackBetweenPasses::restartSendsSameTelegramsAgain()
{
    RecordingStack stack({1, 2});
    takeRequests(stack);
    const auto firstPass = stack.finished;
    stack.restart();
    takeRequests(stack);
    QCOMPARE(stack.finished, firstPass + firstPass);
}

void TestStackBetweenPasses::restartClearsError()
{
    RecordingStack stack({1});
    stack.processReply(wrongNumber);
    stack.restart();
    QVERIFY(!stack.device().hasError());
}

void TestStackBetweenPasses::restartKeepsWhatWasRead()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    device.actualPosition = 2.5;
    RecordingStack stack({11}, device);
    stack.processReply(valueOf1);
    stack.restart();
    QCOMPARE(describe(stack, 11), describe(troubledParam(11)));
    QCOMPARE(stack.device().actualPosition, 2.5);
}

void TestStackBetweenPasses::resetForgetsWhatReadsTold()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    RecordingStack stack({11}, device);
    stack.reset();
    // The drive's refusal outlives the pass, and so does the value.
    QCOMPARE(describe(stack, 11), QByteArray("100 accessDenied"));
}

void TestStackBetweenPasses::resetReachesAnsweredTelegramsToo()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    device.updateParam(troubledParam(80));
    RecordingStack stack({11, 80}, device);
    stack.processReply(valueOf1);
    stack.reset();
    QCOMPARE(describe(stack, 11), QByteArray("100 accessDenied"));
    QCOMPARE(describe(stack, 80), QByteArray("100 accessDenied"));
}

void TestStackBetweenPasses::resetLeavesParametersThatAreNotRead()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(80));
    RecordingStack stack({11}, device);
    stack.reset();
    QCOMPARE(describe(stack, 80), describe(troubledParam(80)));
}

void TestStackBetweenPasses::resetLeavesParametersThatAreWritten()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(80));
    RecordingStack stack({}, device);
    stack.append(std::make_unique<Z7Telegram_ParameterWrite>(3, 80, 5));
    stack.reset();
    QCOMPARE(describe(stack, 80), describe(troubledParam(80)));
}

void TestStackBetweenPasses::resetDoesNotAddParametersToDrive()
{
    RecordingStack stack({99});
    stack.reset();
    QVERIFY(!stack.device().parameterSet.contains(99));
}

void TestStackBetweenPasses::resetZeroesPosition()
{
    Z7Device device = drive3();
    device.actualPosition = 2.5;
    RecordingStack stack({}, device);
    stack.reset();
    QCOMPARE(stack.device().actualPosition, 0.0);
}

void TestStackBetweenPasses::resetKeepsErrorAndConnection()
{
    Z7Device device = drive3();
    device.setAccessGranted(true);
    RecordingStack stack({1}, device);
    stack.setError(TelegramError::NoAnswer);
    stack.reset();
    QCOMPARE(stack.device().error, 1);
    QVERIFY(stack.device().isConnected());
    QVERIFY(stack.device().isAccessGranted());
}

void TestStackBetweenPasses::newPasswordReachesEveryAccessTelegram()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    stack.processReply(frame("89 03 00"));
    Z7Device newer = drive3();
    newer.password = 5;
    stack.adoptDevice(newer);
    stack.restart();
    // Even the one that tried the address as password.
    QCOMPARE(takeRequests(stack).mid(FirstAccess, 2),
        QByteArrayList({"09 03 00 00 00 05 44", "09 03 00 00 00 05 44"}));
}

void TestStackBetweenPasses::newPasswordLeavesOtherTelegrams()
{
    RecordingStack stack({1, 2, 3});
    stack.append(std::make_unique<Z7Telegram_Store>(3, 4711));
    Z7Device newer = drive3();
    newer.password = 5;
    stack.adoptDevice(newer);
    QCOMPARE(takeRequests(stack), readsOf1To4.mid(0, 3) << "02 03 00 00 12 67 2b");
}

void TestStackBetweenPasses::newAddressReachesOnlyAccessTelegrams()
{
    Z7DeviceStatusTelegramStack stack(drive3());
    Z7Device newer = drive3();
    newer.setAddress(9);
    stack.adoptDevice(newer);
    QCOMPARE(takeRequests(stack).mid(FirstAccess, 3),
        QByteArrayList({"09 09 00 00 12 67 de", "09 09 00 00 12 67 de", "05 03 5d"}));
}

void TestStackBetweenPasses::newerRecordOfSameDriveIsTakenOver()
{
    Z7Device newer = drive3();
    newer.error = 9;
    newer.connected = true;
    newer.accessGranted = true;
    newer.password = 5;
    newer.bootloaderActive = true;
    newer.setParameterSet(Z7DeviceParamSet(QStringLiteral("V123")));
    newer.parameterSet.insert(troubledParam(99));
    RecordingStack stack({1});
    stack.adoptDevice(newer);
    const Z7Device &device = stack.device();
    QCOMPARE(device.error, 9);
    QVERIFY(device.connected);
    QVERIFY(device.accessGranted);
    QCOMPARE(device.password, 5);
    QVERIFY(device.bootloaderActive);
    QCOMPARE(device.parameterSet.params.keys(), QList<int> {99});
    QCOMPARE(describe(stack, 99), describe(troubledParam(99)));
}

void TestStackBetweenPasses::newerRecordDoesNotReplaceLiveValues()
{
    Z7Device device = drive3();
    device.actualSpeed = 1500;
    device.statusBits = 0x80;
    RecordingStack stack({1}, device);
    stack.adoptDevice(drive3());
    QCOMPARE(stack.device().actualSpeed, 1500);
    QCOMPARE(stack.device().statusBits, quint8(0x80));
}

void TestStackBetweenPasses::recordOfAnotherDriveIsNotTakenOver_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("version");
    QTest::newRow("other address") << 9 << QStringLiteral("V123");
    QTest::newRow("other version") << 3 << QStringLiteral("V124");
    QTest::newRow("version not known") << 3 << QStringLiteral("V000");
}

void TestStackBetweenPasses::recordOfAnotherDriveIsNotTakenOver()
{
    QFETCH(int, address);
    QFETCH(QString, version);
    Z7Device other = drive3();
    other.assignAddress(address);
    other.softwareVersion = version;
    other.error = 9;
    other.password = 5;
    other.setAccessGranted(true);
    other.updateParam(troubledParam(11));
    RecordingStack stack({1});
    stack.adoptDevice(other);
    QCOMPARE(stack.device().address, 3);
    QCOMPARE(stack.device().softwareVersion, QStringLiteral("V123"));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(stack.device().password, 4711);
    QVERIFY(!stack.device().isConnected());
    QCOMPARE(describe(stack, 11), QByteArray("none"));
}

void TestStackBetweenPasses::recordOfDriveOnAnotherPortIsNotTakenOver()
{
    const QString ownPort = QStringLiteral("ttyUSB0");
    const QString otherPort = QStringLiteral("ttyUSB1");
    ListedPorts ports;
    ports.plugUsb(ownPort, QString());
    ports.plugUsb(otherPort, QString());
    Z7Device device = drive3();
    device.portInfo = QSerialPortInfo(ownPort);
    RecordingStack stack({1}, device);
    Z7Device newer = device;
    newer.error = 9;
    newer.portInfo = QSerialPortInfo(otherPort);
    stack.adoptDevice(newer);
    QCOMPARE(stack.device().error, 0);
    newer.portInfo = QSerialPortInfo(ownPort);
    stack.adoptDevice(newer);
    QCOMPARE(stack.device().error, 9);
}

void TestStackBetweenPasses::recordOfAnotherDriveStillRewritesAccessTelegrams()
{
    Z7CheckProtocolTelegramStack stack(drive3());
    Z7Device other = drive3();
    other.assignAddress(9);
    other.password = 5;
    stack.adoptDevice(other);
    QCOMPARE(takeRequests(stack), QByteArrayList {"09 09 00 00 00 05 42"});
}

QTEST_GUILESS_MAIN(TestStackBetweenPasses)
#include "tst_stackbetweenpasses.moc"
