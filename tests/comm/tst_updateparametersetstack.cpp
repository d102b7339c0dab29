#include "tests/comm/drivereplies.h"

#include <QtTest>

/// Reading the parameters of a page, or all of them, behind the status telegrams.
class TestUpdateParameterSetStack : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void parametersAreReadInAscendingOrderBehindStatus();
    void withoutParametersOnlyStatusIsRead();
    void statusIsReadIntoRecordToo();

    void readValueIsTaken_data();
    void readValueIsTaken();
    void signComesFromDefinitionAndNotFromEntry();
    void resultFlagsAreNoErrorOfPass_data();
    void resultFlagsAreNoErrorOfPass();
    void goodReadTakesEarlierFlagsBack();
    void whatWriteToldStaysOverRead();
    void operationModeReadWithStatusIsTakenAsParameter();

    void errorIsNotedInEntry_data();
    void errorIsNotedInEntry();
    void errorEndsPassAndKeepsWhatWasRead();
    void wrongNumberIsNotedInEntryThatReplyNames();
    void wrongNumberThatDriveLacksChangesNoEntry();
    void parameterThatDriveLacksChangesNoEntry();
    void replyTooShortToNameParameterChangesNoEntry_data();
    void replyTooShortToNameParameterChangesNoEntry();
    void replyThatEndsBeforeValueLeavesEntry();
    void replyThatEndsBeforeFlagsKeepsFlags();
    void shortErrorReplyWithoutErrorBitsLeavesEntry();
    void nextPassForgetsErrorOfEntry();
};

namespace {

/// Reads some parameters of a drive that has come through the status telegrams well.
class LoggedOnStack : public Z7UpdateParameterSetTelegramStack
{
public:
    explicit LoggedOnStack(const QList<int> &numbers, const Z7Device &device = drive3())
        : Z7UpdateParameterSetTelegramStack(device, Z7DeviceParamSet(device.softwareVersion, numbers))
    {
        answer(*this, statusReplies());
    }
};

Z7Device drive3With(const Z7DeviceParam &param)
{
    Z7Device device = drive3();
    device.updateParam(param);
    return device;
}

} // namespace

void TestUpdateParameterSetStack::parametersAreReadInAscendingOrderBehindStatus()
{
    Z7UpdateParameterSetTelegramStack stack(
        drive3(), Z7DeviceParamSet(QStringLiteral("V123"), {0x0100, 11, 80}));
    QCOMPARE(stack.pendingCount(), StatusTelegramCount + 3);
    QCOMPARE(takeRequestsBehindStatus(stack),
        QByteArrayList({"04 03 00 0b 47", "04 03 00 50 02", "04 03 01 00 5d"}));
}

void TestUpdateParameterSetStack::withoutParametersOnlyStatusIsRead()
{
    Z7UpdateParameterSetTelegramStack stack(drive3(), Z7DeviceParamSet());
    Z7DeviceStatusTelegramStack status(drive3());
    QCOMPARE(takeRequests(stack), takeRequests(status));
}

void TestUpdateParameterSetStack::statusIsReadIntoRecordToo()
{
    LoggedOnStack stack({11});
    QCOMPARE(stack.pendingCount(), 1);
    QVERIFY(stack.device().isAccessGranted());
    QCOMPARE(stack.device().statusBits, quint8(0x80));
    QCOMPARE(stack.device().actualCurrent, 120);
}

void TestUpdateParameterSetStack::readValueIsTaken_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("unsigned") << 11 << frame("84 03 00 0b 00 64 00") << QByteArray("100 valid");
    QTest::newRow("unsigned, largest") << 11 << frame("84 03 00 0b ff ff 00") << QByteArray("65535 valid");
    QTest::newRow("signed, negative") << 80 << frame("84 03 00 50 ff fb 00") << QByteArray("-5 valid");
    QTest::newRow("signed, low byte above 127")
        << 80 << frame("84 03 00 50 00 ff 00") << QByteArray("255 valid");
    QTest::newRow("signed, lowest") << 80 << frame("84 03 00 50 80 00 00") << QByteArray("-32768 valid");
}

void TestUpdateParameterSetStack::readValueIsTaken()
{
    QFETCH(int, number);
    QFETCH(QByteArray, reply);
    LoggedOnStack stack({number});
    stack.processReply(reply);
    QCOMPARE(stack.device().error, 0);
    QTEST(describe(stack, number), "entry");
}

void TestUpdateParameterSetStack::signComesFromDefinitionAndNotFromEntry()
{
    LoggedOnStack stack({80}, drive3With(Z7DeviceParam(80, 0, 1, false)));
    stack.processReply(frame("84 03 00 50 ff fb 00"));
    QCOMPARE(describe(stack, 80), QByteArray("-5 valid"));
}

void TestUpdateParameterSetStack::resultFlagsAreNoErrorOfPass_data()
{
    QTest::addColumn<QByteArray>("flags");
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("access not permitted") << QByteArray("10") << QByteArray("5 valid accessDenied");
    QTest::newRow("read failed") << QByteArray("20") << QByteArray("5 valid readFailed");
    QTest::newRow("both") << QByteArray("30") << QByteArray("5 valid accessDenied readFailed");
    QTest::newRow("other bits are ignored") << QByteArray("cf") << QByteArray("5 valid");
}

void TestUpdateParameterSetStack::resultFlagsAreNoErrorOfPass()
{
    QFETCH(QByteArray, flags);
    LoggedOnStack stack({11, 80});
    QCOMPARE(answer(stack, {frame("84 03 00 0b 00 05" + flags), frame("84 03 00 50 00 07 00")}), 2);
    QCOMPARE(stack.device().error, 0);
    QTEST(describe(stack, 11), "entry");
    QCOMPARE(describe(stack, 80), QByteArray("7 valid"));
}

void TestUpdateParameterSetStack::goodReadTakesEarlierFlagsBack()
{
    LoggedOnStack stack({11}, drive3With(troubledParam(11)));
    stack.reset();
    stack.processReply(frame("84 03 00 0b 00 05 00"));
    QCOMPARE(describe(stack, 11), QByteArray("5 valid"));
}

void TestUpdateParameterSetStack::whatWriteToldStaysOverRead()
{
    Z7DeviceParam written = enteredParam(11, 100);
    written.writeFailed = true;
    written.conflict = true;
    LoggedOnStack stack({11}, drive3With(written));
    stack.processReply(frame("84 03 00 0b 00 05 00"));
    QCOMPARE(describe(stack, 11), QByteArray("5 valid writeFailed conflict"));
}

void TestUpdateParameterSetStack::operationModeReadWithStatusIsTakenAsParameter()
{
    LoggedOnStack stack({11});
    QCOMPARE(describe(stack, 1), QByteArray("3 valid"));
    QCOMPARE(stack.device().operationMode1, 3);
}

void TestUpdateParameterSetStack::errorIsNotedInEntry_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("too long") << frame("84 03 00 0b 00 05 00 00") << 6;
    QTest::newRow("from another drive") << frame("84 04 00 0b 00 05 00") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("84 03 00 0b 00 05 00 00") << 8;
}

void TestUpdateParameterSetStack::errorIsNotedInEntry()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, error);
    Z7DeviceParam before = enteredParam(11, 100);
    before.valid = true;
    LoggedOnStack stack({11}, drive3With(before));
    stack.processReply(reply);
    QCOMPARE(stack.device().error, error);
    QCOMPARE(describe(stack, 11), "100 error " + QByteArray::number(error));
}

void TestUpdateParameterSetStack::errorEndsPassAndKeepsWhatWasRead()
{
    LoggedOnStack stack({11, 80, 82});
    const QByteArray valueOf11 = frame("84 03 00 0b 00 64 00");
    const QByteArray corruptValueOf80 = QByteArray::fromHex("84 03 00 50 00 05 00 00");
    QCOMPARE(answer(stack, {valueOf11, corruptValueOf80, frame("84 03 00 52 00 03 00")}), 2);
    QCOMPARE(stack.device().error, 8);
    QCOMPARE(describe(stack, 11), QByteArray("100 valid"));
    QCOMPARE(describe(stack, 82), QByteArray("none"));
}

void TestUpdateParameterSetStack::wrongNumberIsNotedInEntryThatReplyNames()
{
    LoggedOnStack stack({11}, drive3With(enteredParam(80, 7)));
    stack.processReply(frame("84 03 00 50 00 05 00"));
    QCOMPARE(stack.device().error, 9);
    QCOMPARE(describe(stack, 80), QByteArray("7 error 9"));
    QCOMPARE(describe(stack, 11), QByteArray("none"));
}

void TestUpdateParameterSetStack::wrongNumberThatDriveLacksChangesNoEntry()
{
    LoggedOnStack stack({11});
    stack.processReply(frame("84 03 00 63 00 05 00"));
    QCOMPARE(stack.device().error, 9);
    QVERIFY(!stack.device().parameterSet.contains(99));
    QVERIFY(!stack.device().parameterSet.contains(-1));
    QCOMPARE(describe(stack, 11), QByteArray("none"));
}

void TestUpdateParameterSetStack::parameterThatDriveLacksChangesNoEntry()
{
    LoggedOnStack stack({99});
    const auto before = stack.device().parameterSet.params.keys();
    stack.processReply(frame("84 03 00 63 00 05 00"));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(stack.device().parameterSet.params.keys(), before);
}

void TestUpdateParameterSetStack::replyTooShortToNameParameterChangesNoEntry_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("one byte") << QByteArray::fromHex("84") << 6;
    QTest::newRow("high byte of the number, wrong checksum") << QByteArray::fromHex("84 03 0b") << 8;
    QTest::newRow("header and checksum") << frame("84 03") << 6;
    QTest::newRow("unknown first byte") << QByteArray::fromHex("91 03 00") << 6;
}

void TestUpdateParameterSetStack::replyTooShortToNameParameterChangesNoEntry()
{
    QFETCH(QByteArray, reply);
    // With absent bytes read as zero the reply would name parameter 0 or 0x0B00.
    Z7Device device = drive3With(troubledParam(11));
    device.parameterSet.insert(enteredParam(0, 7));
    device.parameterSet.insert(enteredParam(0x0B00, 8));
    LoggedOnStack stack({11}, device);
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
    QCOMPARE(describe(stack, 0), QByteArray("7"));
    QCOMPARE(describe(stack, 0x0B00), QByteArray("8"));
    QCOMPARE(describe(stack, 11), describe(troubledParam(11)));
}

void TestUpdateParameterSetStack::replyThatEndsBeforeValueLeavesEntry()
{
    LoggedOnStack stack({11}, drive3With(enteredParam(11, 100)));
    // An unknown first byte is no error, whatever the length.
    stack.processReply(frame("91 03 00 0b"));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(describe(stack, 11), QByteArray("100"));
}

void TestUpdateParameterSetStack::replyThatEndsBeforeFlagsKeepsFlags()
{
    LoggedOnStack stack({11}, drive3With(troubledParam(11)));
    stack.processReply(QByteArray::fromHex("91 03 00 0b 00 05"));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(describe(stack, 11), describe(troubledParam(11)).replace("100", "5"));
}

void TestUpdateParameterSetStack::shortErrorReplyWithoutErrorBitsLeavesEntry()
{
    // Only drive 207 has a checksum of 0 for this; the reply seems to name parameter 0x0100.
    const QByteArray shortReply = QByteArray::fromHex("85 cf 01 00");
    Z7Device device = drive3With(enteredParam(0x0100, 100));
    device.assignAddress(207);
    Z7UpdateParameterSetTelegramStack stack(device, Z7DeviceParamSet(QStringLiteral("V123"), {0x0100}));
    for (int i = 0; i < StatusTelegramCount; ++i)
        stack.processReply(QByteArray());
    stack.setError(TelegramError::None);
    stack.processReply(shortReply);
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(describe(stack, 0x0100), QByteArray("100"));
}

void TestUpdateParameterSetStack::nextPassForgetsErrorOfEntry()
{
    LoggedOnStack stack({11});
    stack.processReply(QByteArray::fromHex("84 03 00 0b 00 05 00 00"));
    QCOMPARE(describe(stack, 11), QByteArray("none error 8"));
    stack.reset();
    stack.restart();
    answer(stack, statusReplies() << frame("84 03 00 0b 00 64 00"));
    QCOMPARE(describe(stack, 11), QByteArray("100 valid"));
}

QTEST_GUILESS_MAIN(TestUpdateParameterSetStack)
#include "tst_updateparametersetstack.moc"
