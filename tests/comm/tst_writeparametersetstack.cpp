#include "tests/comm/drivereplies.h"

#include <QtTest>

namespace {

Z7DeviceParamSet entered(const QList<Z7DeviceParam> &params)
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    for (const Z7DeviceParam &param : params)
        set.insert(param);
    return set;
}

/// Writes parameters to a drive that has come through the status telegrams well.
template<typename Stack>
class LoggedOn : public Stack
{
public:
    explicit LoggedOn(const QList<Z7DeviceParam> &params, const Z7Device &device = drive3())
        : Stack(device, entered(params))
    {
        answer(*this, statusReplies());
    }
};

using WriteStack = LoggedOn<Z7TelegramstackWriteParameterSet>;
using WriteAndStoreStack = LoggedOn<Z7TelegramstackWriteAndStoreParameterSet>;

// The drive takes the write of parameter 11 or 80.
const QByteArray written11 = frame("83 03 00 0b 00 00 00 00 00");
const QByteArray written80 = frame("83 03 00 50 00 00 00 00 00");
const QByteArray stored = frame("82 03 00");

} // namespace

/// Writing the user's changes, and writing and storing them.
class TestWriteParameterSetStack : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void writesFollowStatusInAscendingOrder();
    void lowSixteenBitsOfValueAreWritten_data();
    void lowSixteenBitsOfValueAreWritten();
    void withoutChangesOnlyStatusIsRead();
    void refusedPasswordKeepsDriveFromBeingWritten();
    void nextPassForgivesRefusedAddressAgain();

    void takenWriteLeavesValueToNextRead();
    void outcomeIsNotedInEntry_data();
    void outcomeIsNotedInEntry();
    void refusedWriteIsFollowedByNext();
    void takenWriteTakesEarlierOutcomesBack();
    void writeOfOperationModeLeavesLiveValue();
    void parameterThatDriveLacksChangesNoEntry();

    void garbledReplyEndsPassAndLeavesEntry_data();
    void garbledReplyEndsPassAndLeavesEntry();
    void wrongNumberLeavesEntryThatReplyNames();
    void replyThatEndsBeforeFlagsKeepsWhatWasKnown_data();
    void replyThatEndsBeforeFlagsKeepsWhatWasKnown();

    void storeFollowsWrites();
    void storingEndsPassWithoutError();
    void refusedWriteDoesNotKeepFromStoring();
    void garbledWriteKeepsFromStoring();
    void failedStoreEndsPass_data();
    void failedStoreEndsPass();
};

void TestWriteParameterSetStack::writesFollowStatusInAscendingOrder()
{
    Z7TelegramstackWriteParameterSet stack(
        drive3(), entered({enteredParam(0x0100, 2), enteredParam(80, -5), enteredParam(11, 150)}));
    QCOMPARE(stack.pendingCount(), StatusTelegramCount + 3);
    QCOMPARE(takeRequestsBehindStatus(stack),
        QByteArrayList({
            "03 03 00 0b 00 96 f2", // 150 into parameter 11
            "03 03 00 50 ff fb 05", // -5 into parameter 80
            "03 03 01 00 00 02 5c", // 2 into parameter 256
        }));
}

void TestWriteParameterSetStack::lowSixteenBitsOfValueAreWritten_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("largest unsigned value") << 65535 << QByteArray("03 03 00 0b ff ff 5a");
    QTest::newRow("above 16 bits") << 0x12345 << QByteArray("03 03 00 0b 23 45 2c");
    QTest::newRow("below 16 bits") << -0x10001 << QByteArray("03 03 00 0b ff ff 5a");
}

void TestWriteParameterSetStack::lowSixteenBitsOfValueAreWritten()
{
    QFETCH(int, value);
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(11, value)}));
    QTEST(takeRequestsBehindStatus(stack).value(0), "request");
}

void TestWriteParameterSetStack::withoutChangesOnlyStatusIsRead()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({}));
    Z7DeviceStatusTelegramStack status(drive3());
    QCOMPARE(takeRequests(stack), takeRequests(status));
}

void TestWriteParameterSetStack::refusedPasswordKeepsDriveFromBeingWritten()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    const QByteArray refused = frame("89 03 10");
    QCOMPARE(answer(stack, {refused, refused, written11}), 2);
    QCOMPARE(stack.device().error, 10);
}

void TestWriteParameterSetStack::nextPassForgivesRefusedAddressAgain()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    stack.processReply(frame("89 03 00"));
    stack.reset();
    stack.restart();
    const auto replies = statusRepliesWith(FirstAccess, frame("89 03 10")) << written11;
    QCOMPARE(answer(stack, replies), StatusTelegramCount + 1);
    QCOMPARE(stack.device().error, 0);
}

void TestWriteParameterSetStack::takenWriteLeavesValueToNextRead()
{
    Z7Device device = drive3();
    device.updateParam(enteredParam(11, 100));
    WriteStack stack({enteredParam(11, 150)}, device);
    QCOMPARE(answer(stack, {frame("83 03 00 0b 00 96 00 00 00")}), 1);
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(describe(stack, 11), QByteArray("100"));
}

void TestWriteParameterSetStack::outcomeIsNotedInEntry_data()
{
    QTest::addColumn<QByteArray>("conflictAndFlags");
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("taken") << QByteArray("00 00 00") << QByteArray("none");
    QTest::newRow("access not permitted") << QByteArray("00 00 10") << QByteArray("none accessDenied");
    QTest::newRow("write failed") << QByteArray("00 00 20") << QByteArray("none writeFailed");
    QTest::newRow("both") << QByteArray("00 00 30") << QByteArray("none accessDenied writeFailed");
    QTest::newRow("other flags are ignored") << QByteArray("00 00 cf") << QByteArray("none");
    QTest::newRow("conflict, low byte") << QByteArray("00 0c 00") << QByteArray("none conflict");
    QTest::newRow("conflict, high byte") << QByteArray("01 00 00") << QByteArray("none conflict");
    QTest::newRow("conflict and failure")
        << QByteArray("00 0c 20") << QByteArray("none writeFailed conflict");
}

void TestWriteParameterSetStack::outcomeIsNotedInEntry()
{
    QFETCH(QByteArray, conflictAndFlags);
    WriteStack stack({enteredParam(11, 150)});
    stack.processReply(frame("83 03 00 0b 00 96" + conflictAndFlags));
    QTEST(describe(stack, 11), "entry");
    QCOMPARE(stack.device().error, 0);
}

void TestWriteParameterSetStack::refusedWriteIsFollowedByNext()
{
    WriteStack stack({enteredParam(11, 150), enteredParam(80, -5)});
    // Refused in every way.
    QCOMPARE(answer(stack, {frame("83 03 00 0b 00 00 00 0c 30"), written80}), 2);
    QVERIFY(stack.isEmpty());
    QCOMPARE(describe(stack, 80), QByteArray("none"));
}

void TestWriteParameterSetStack::takenWriteTakesEarlierOutcomesBack()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    WriteStack stack({enteredParam(11, 150)}, device);
    stack.processReply(written11);
    // What the last read told stays.
    QCOMPARE(describe(stack, 11), QByteArray("100 valid readFailed error 9"));
}

void TestWriteParameterSetStack::writeOfOperationModeLeavesLiveValue()
{
    WriteStack stack({enteredParam(1, 6)});
    stack.processReply(frame("83 03 00 01 00 06 00 00 00"));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(stack.device().operationMode1, 3);
}

void TestWriteParameterSetStack::parameterThatDriveLacksChangesNoEntry()
{
    WriteStack stack({enteredParam(99, 5)});
    const auto before = stack.device().parameterSet.params.keys();
    stack.processReply(frame("83 03 00 63 00 05 00 00 20"));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(stack.device().parameterSet.params.keys(), before);
}

void TestWriteParameterSetStack::garbledReplyEndsPassAndLeavesEntry_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("too long") << frame("83 03 00 0b 00 00 00 00 00 00") << 6;
    QTest::newRow("from another drive") << frame("83 04 00 0b 00 00 00 00 00") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("83 03 00 0b 00 00 00 00 00 00") << 8;
    // Last byte: checksum and error bits at once.
    QTest::newRow("drive saw a wrong checksum") << frame("85 03 cf") << 8;
}

void TestWriteParameterSetStack::garbledReplyEndsPassAndLeavesEntry()
{
    QFETCH(QByteArray, reply);
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    WriteStack stack({enteredParam(11, 150), enteredParam(80, -5)}, device);
    QCOMPARE(answer(stack, {reply, written80}), 1);
    QTEST(stack.device().error, "error");
    QCOMPARE(describe(stack, 11), describe(troubledParam(11)));
}

void TestWriteParameterSetStack::wrongNumberLeavesEntryThatReplyNames()
{
    WriteStack stack({enteredParam(11, 150)});
    stack.processReply(frame("83 03 00 50 00 00 00 0c 30"));
    QCOMPARE(stack.device().error, 9);
    QCOMPARE(describe(stack, 80), QByteArray("none"));
}

void TestWriteParameterSetStack::replyThatEndsBeforeFlagsKeepsWhatWasKnown_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("entry");
    // An unknown first byte is no error, whatever the length.
    QTest::newRow("no conflict word")
        << QByteArray::fromHex("91 03 00 0b 00 00 00") << describe(troubledParam(11));
    QTest::newRow("no flags") << QByteArray::fromHex("91 03 00 0b 00 00 00 00")
                              << QByteArray("100 valid accessDenied writeFailed readFailed error 9");
}

void TestWriteParameterSetStack::replyThatEndsBeforeFlagsKeepsWhatWasKnown()
{
    QFETCH(QByteArray, reply);
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    WriteStack stack({enteredParam(11, 150)}, device);
    stack.processReply(reply);
    QCOMPARE(stack.device().error, 0);
    QTEST(describe(stack, 11), "entry");
}

void TestWriteParameterSetStack::storeFollowsWrites()
{
    Z7TelegramstackWriteAndStoreParameterSet stack(
        drive3(), entered({enteredParam(80, -5), enteredParam(11, 150)}));
    QCOMPARE(takeRequestsBehindStatus(stack),
        QByteArrayList({
            "03 03 00 0b 00 96 f2", // 150 into parameter 11
            "03 03 00 50 ff fb 05", // -5 into parameter 80
            "02 03 00 00 12 67 2b", // store, with 4711
        }));
}

void TestWriteParameterSetStack::storingEndsPassWithoutError()
{
    WriteAndStoreStack stack({enteredParam(11, 150)});
    QCOMPARE(answer(stack, {written11, stored}), 2);
    QVERIFY(stack.isEmpty());
    QCOMPARE(stack.device().error, 0);
    QVERIFY(stack.device().isAccessGranted());
}

void TestWriteParameterSetStack::refusedWriteDoesNotKeepFromStoring()
{
    WriteAndStoreStack stack({enteredParam(11, 150)});
    QCOMPARE(answer(stack, {frame("83 03 00 0b 00 00 00 0c 30"), stored}), 2);
    QCOMPARE(describe(stack, 11), QByteArray("none accessDenied writeFailed conflict"));
}

void TestWriteParameterSetStack::garbledWriteKeepsFromStoring()
{
    WriteAndStoreStack stack({enteredParam(11, 150)});
    QCOMPARE(answer(stack, {frame("83 03 00 50 00 00 00 00 00"), stored}), 1);
    QCOMPARE(stack.device().error, 9);
}

void TestWriteParameterSetStack::failedStoreEndsPass_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("password refused") << frame("82 03 10") << 10;
    QTest::newRow("nothing to store") << frame("82 03 20") << 16;
    QTest::newRow("flash write failed") << frame("82 03 40") << 17;
    QTest::newRow("inconsistent parameters") << frame("82 03 80") << 18;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("82 03 00 00") << 8;
}

void TestWriteParameterSetStack::failedStoreEndsPass()
{
    QFETCH(QByteArray, reply);
    WriteAndStoreStack stack({enteredParam(11, 150)});
    answer(stack, {written11, reply});
    QTEST(stack.device().error, "error");
}

QTEST_GUILESS_MAIN(TestWriteParameterSetStack)
#include "tst_writeparametersetstack.moc"
