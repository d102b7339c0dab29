// What a pass tells of its telegrams beside the drive's record: which values were taken in this very pass.

#include "tests/comm/drivereplies.h"

#include <QtTest>

#include <algorithm>

namespace {

Z7DeviceParamSet entered(std::initializer_list<Z7DeviceParam> params)
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    std::for_each(params.begin(), params.end(), [&set](const Z7DeviceParam &each) { set.insert(each); });
    return set;
}

Z7DeviceParamSet changes()
{
    return entered({enteredParam(11, 150), enteredParam(80, -5), enteredParam(256, 2)});
}

// The drive takes the write of parameter 11, 80 or 256.
const QByteArray written11 = frame("83 03 00 0b 00 00 00 00 00");
const QByteArray written80 = frame("83 03 00 50 00 00 00 00 00");
const QByteArray written256 = frame("83 03 01 00 00 00 00 00 00");

/// The parameters of one kind behind the log-on, as "11 done, 80 refused conflict, 256 uncertain".
QString describe(const Z7PassOutcome &outcome, Z7ParamOutcome::Kind kind)
{
    static const QString states[] = {QStringLiteral("done"), QStringLiteral("refused"),
        QStringLiteral("uncertain"), QStringLiteral("unsent")};
    constexpr int liveValues = 10;
    QStringList texts;
    for (const Z7ParamOutcome &param : outcome.params) {
        if (param.kind != kind)
            continue;
        texts.append(QString::number(param.number) + QLatin1Char(' ') + states[param.state]);
        if (kind == Z7ParamOutcome::Read && param.state == Z7ParamOutcome::Answered)
            texts.last() += QStringLiteral("=%1").arg(param.value);
        if (param.conflict)
            texts.last() += QStringLiteral(" conflict");
    }
    return (kind == Z7ParamOutcome::Read ? texts.mid(liveValues) : texts).join(QStringLiteral(", "));
}

QString describeWrites(const Z7TelegramStack &stack)
{
    return describe(stack.outcome(), Z7ParamOutcome::Write);
}

QString describeReads(const Z7TelegramStack &stack)
{
    return describe(stack.outcome(), Z7ParamOutcome::Read);
}

} // namespace

class TestPassOutcome : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void everyAnsweredWriteIsDone();
    void flagOfReplyMakesWriteRefused_data();
    void flagOfReplyMakesWriteRefused();
    void oldFlagOfRecordMakesNoWriteRefused();
    void parameterThatDriveLacksIsToldAsWell();
    void unansweredWriteIsUncertainAndRestUnsent_data();
    void unansweredWriteIsUncertainAndRestUnsent();
    void damagedReplyMakesWriteUncertain();
    void replyWithoutFlagsMakesWriteUncertain();
    void passThatNeverSentWritesLeavesThemUnsent_data();
    void passThatNeverSentWritesLeavesThemUnsent();
    void cancelledPassIsNotComplete();

    void storeIsTold_data();
    void storeIsTold();
    void writeAloneAsksForNoStore();
    void unansweredStoreIsUncertain();
    void storeBehindFailedWriteIsNotSent();

    void readValueHasItsSign();
    void refusedReadGivesNoValue_data();
    void refusedReadGivesNoValue();
    void nextPassTellsOfItselfAlone();
    void changedAddressIsTold();
};

void TestPassOutcome::everyAnsweredWriteIsDone()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), changes());
    answer(stack, statusReplies() << written11 << written80 << written256);
    QCOMPARE(describeWrites(stack), QStringLiteral("11 done, 80 done, 256 done"));
    QCOMPARE(stack.outcome().error, 0);
    QVERIFY(stack.outcome().isComplete);
    QCOMPARE(stack.outcome().deviceId, drive3().deviceId());
}

void TestPassOutcome::flagOfReplyMakesWriteRefused_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("access denied") << frame("83 03 00 0b 00 00 00 00 10") << "11 refused";
    QTest::newRow("write failed") << frame("83 03 00 0b 00 00 00 00 20") << "11 refused";
    QTest::newRow("conflict alone") << frame("83 03 00 0b 00 00 00 50 00") << "11 done conflict";
    QTest::newRow("refused for conflict") << frame("83 03 00 0b 00 00 00 50 20") << "11 refused conflict";
}

void TestPassOutcome::flagOfReplyMakesWriteRefused()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    answer(stack, statusReplies() << reply);
    QTEST(describeWrites(stack), "outcome");
    QVERIFY2(stack.outcome().isComplete, "a refusal does not end the pass");
}

void TestPassOutcome::oldFlagOfRecordMakesNoWriteRefused()
{
    Z7Device device = drive3();
    device.updateParam(troubledParam(11));
    device.updateParam(troubledParam(80));
    Z7TelegramstackWriteParameterSet stack(device, entered({enteredParam(11, 150)}));
    answer(stack, statusReplies() << written11);
    QCOMPARE(describeWrites(stack), QStringLiteral("11 done"));
}

void TestPassOutcome::parameterThatDriveLacksIsToldAsWell()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(4711, 1)}));
    answer(stack, statusReplies() << frame("83 03 12 67 00 00 00 00 20"));
    QCOMPARE(describeWrites(stack), QStringLiteral("4711 refused"));
}

void TestPassOutcome::unansweredWriteIsUncertainAndRestUnsent_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("no answer") << int(TelegramError::NoAnswer);
    QTest::newRow("written in part") << int(TelegramError::WriteNotCompleted);
}

void TestPassOutcome::unansweredWriteIsUncertainAndRestUnsent()
{
    QFETCH(int, error);
    Z7TelegramstackWriteParameterSet stack(drive3(), changes());
    answer(stack, statusReplies() << written11);
    stack.setError(error);
    QCOMPARE(describeWrites(stack), QStringLiteral("11 done, 80 uncertain, 256 unsent"));
    QCOMPARE(stack.outcome().error, error);
    QVERIFY(!stack.outcome().isComplete);
}

void TestPassOutcome::damagedReplyMakesWriteUncertain()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), changes());
    answer(stack, statusReplies() << written11 << frame("83 03 00 50 00 00 00 00 00").append('\0'));
    QCOMPARE(describeWrites(stack), QStringLiteral("11 done, 80 uncertain, 256 unsent"));
}

void TestPassOutcome::replyWithoutFlagsMakesWriteUncertain()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    // A foreign first byte, and nothing behind the number.
    answer(stack, statusReplies() << frame("11 03 00 0b"));
    QCOMPARE(describeWrites(stack), QStringLiteral("11 uncertain"));
}

void TestPassOutcome::passThatNeverSentWritesLeavesThemUnsent_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("port that does not open") << int(TelegramError::PortNotOpened);
    QTest::newRow("silent drive") << int(TelegramError::NoAnswer);
    QTest::newRow("refused password") << int(TelegramError::InvalidPassword);
}

void TestPassOutcome::passThatNeverSentWritesLeavesThemUnsent()
{
    QFETCH(int, error);
    Z7TelegramstackWriteParameterSet stack(drive3(), changes());
    stack.setError(error);
    QCOMPARE(describeWrites(stack), QStringLiteral("11 unsent, 80 unsent, 256 unsent"));
}

void TestPassOutcome::cancelledPassIsNotComplete()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), changes());
    answer(stack, statusReplies() << written11);
    QCOMPARE(describeWrites(stack), QStringLiteral("11 done, 80 unsent, 256 unsent"));
    QCOMPARE(stack.outcome().error, 0);
    QVERIFY(!stack.outcome().isComplete);
}

void TestPassOutcome::storeIsTold_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("store");
    const auto row = [](const char *name, const QByteArray &reply, Z7PassOutcome::Store store) {
        QTest::newRow(name) << reply << int(store);
    };
    row("taken", frame("82 03 00"), Z7PassOutcome::Stored);
    row("password refused", frame("82 03 10"), Z7PassOutcome::NotStored);
    row("damaged", frame("82 03 00").append('\0'), Z7PassOutcome::StoreUncertain);
}

void TestPassOutcome::storeIsTold()
{
    QFETCH(QByteArray, reply);
    Z7TelegramstackStoreParameter stack(drive3());
    answer(stack, {reply});
    QTEST(int(stack.outcome().store), "store");
}

void TestPassOutcome::writeAloneAsksForNoStore()
{
    Z7TelegramstackWriteParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    answer(stack, statusReplies() << written11);
    QCOMPARE(stack.outcome().store, Z7PassOutcome::NotAsked);
}

void TestPassOutcome::unansweredStoreIsUncertain()
{
    Z7TelegramstackWriteAndStoreParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    answer(stack, statusReplies() << written11);
    stack.setError(TelegramError::NoAnswer);
    QCOMPARE(stack.outcome().store, Z7PassOutcome::StoreUncertain);
}

void TestPassOutcome::storeBehindFailedWriteIsNotSent()
{
    Z7TelegramstackWriteAndStoreParameterSet stack(drive3(), entered({enteredParam(11, 150)}));
    answer(stack, statusReplies());
    stack.setError(TelegramError::NoAnswer);
    QCOMPARE(stack.outcome().store, Z7PassOutcome::NotStored);
}

void TestPassOutcome::readValueHasItsSign()
{
    Z7UpdateParameterSetTelegramStack stack(drive3(), entered({enteredParam(11, 0), enteredParam(80, 0)}));
    answer(stack, statusReplies() << frame("84 03 00 0b ff fb 00") << frame("84 03 00 50 ff fb 00"));
    QCOMPARE(describeReads(stack), QStringLiteral("11 done=65531, 80 done=-5"));
    QVERIFY(stack.outcome().isComplete);
}

void TestPassOutcome::refusedReadGivesNoValue_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("access denied") << frame("84 03 00 0b 00 96 10");
    QTest::newRow("read failed") << frame("84 03 00 0b 00 96 20");
}

void TestPassOutcome::refusedReadGivesNoValue()
{
    QFETCH(QByteArray, reply);
    Z7UpdateParameterSetTelegramStack stack(drive3(), entered({enteredParam(11, 0)}));
    answer(stack, statusReplies() << reply);
    QCOMPARE(describeReads(stack), QStringLiteral("11 refused"));
}

void TestPassOutcome::nextPassTellsOfItselfAlone()
{
    Z7UpdateParameterSetTelegramStack stack(drive3(), entered({enteredParam(11, 0)}));
    answer(stack, statusReplies() << frame("84 03 00 0b 00 96 00"));
    QCOMPARE(describeReads(stack), QStringLiteral("11 done=150"));
    stack.reset();
    stack.restart();
    answer(stack, statusReplies());
    QCOMPARE(describeReads(stack), QStringLiteral("11 unsent"));
    QVERIFY(!stack.outcome().isComplete);
}

void TestPassOutcome::changedAddressIsTold()
{
    Z7TelegramstackChangeAdress stack(drive3(), 5);
    answer(stack, {frame("89 03 00"), frame("83 03 00 52 00 00 00 00 00")});
    Z7Device moved = drive3();
    moved.setAddress(5);
    QCOMPARE(stack.outcome().deviceId, moved.deviceId());
    QCOMPARE(stack.outcome().address, 5);
}

QTEST_GUILESS_MAIN(TestPassOutcome)

#include "tst_passoutcome.moc"
