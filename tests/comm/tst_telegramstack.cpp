#include "tests/comm/recordingstack.h"

#include <QtTest>

namespace {

class CountedTelegram : public Z7Telegram_StatusRead
{
public:
    CountedTelegram()
        : Z7Telegram_StatusRead(3)
    {
        ++count;
    }
    ~CountedTelegram() override { --count; }

    static int count;
};

int CountedTelegram::count = 0;

} // namespace

/// What all stacks have in common: the order of the telegrams, the way of a reply, and who frees what.
class TestTelegramStack : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void stackWorksOnCopyOfRecord();
    void stackWithoutTelegramsIsEmpty();
    void telegramsAreSentInOrderInWhichTheyWereAppended();
    void answeredTelegramMakesRoomForNext();
    void stackIsEmptyAfterLastReply();
    void emptyStackTakesReplyForNothing();
    void stackWithoutTelegramsHasNothingToBringBack();

    void replyReachesCurrentTelegram();
    void errorOfReplyComesIntoRecord_data();
    void errorOfReplyComesIntoRecord();
    void errorIsInRecordBeforeReaction();
    void reactionRunsForGoodAndBadReplies();
    void reactionMayTakeErrorBack();
    void goodReplyLeavesErrorOfThread();

    void stackFreesPendingAndAnsweredTelegrams();
    void restartFreesNoTelegram();
};

void TestTelegramStack::stackWorksOnCopyOfRecord()
{
    Z7Device device = drive3();
    RecordingStack stack({1}, device);
    device.password = 1;
    QCOMPARE(stack.device().password, 4711);
    stack.setError(TelegramError::NoAnswer);
    QCOMPARE(device.error, 0);
}

void TestTelegramStack::stackWithoutTelegramsIsEmpty()
{
    const RecordingStack stack({});
    QVERIFY(stack.isEmpty());
    QCOMPARE(stack.pendingCount(), 0);
    QCOMPARE(stack.currentTelegram(), nullptr);
}

void TestTelegramStack::telegramsAreSentInOrderInWhichTheyWereAppended()
{
    RecordingStack stack({1, 2, 3, 4});
    QCOMPARE(stack.pendingCount(), 4);
    QCOMPARE(takeRequests(stack), readsOf1To4);
}

void TestTelegramStack::answeredTelegramMakesRoomForNext()
{
    RecordingStack stack({1, 2});
    stack.processReply(valueOf1);
    QCOMPARE(stack.pendingCount(), 1);
    QCOMPARE(stack.currentTelegram()->requestWord(2), 2);
}

void TestTelegramStack::stackIsEmptyAfterLastReply()
{
    RecordingStack stack({1});
    stack.processReply(valueOf1);
    QVERIFY(stack.isEmpty());
    QCOMPARE(stack.currentTelegram(), nullptr);
}

void TestTelegramStack::emptyStackTakesReplyForNothing()
{
    RecordingStack stack({1});
    stack.processReply(valueOf1);
    stack.processReply(wrongNumber);
    QCOMPARE(stack.finished.size(), 1);
    QCOMPARE(stack.device().error, 0);
    stack.restart();
    QCOMPARE(takeRequests(stack), readsOf1To4.mid(0, 1));
}

void TestTelegramStack::stackWithoutTelegramsHasNothingToBringBack()
{
    RecordingStack stack({});
    stack.processReply(valueOf1);
    stack.restart();
    stack.reset();
    stack.adoptDevice(drive3());
    QVERIFY(stack.isEmpty());
}

void TestTelegramStack::replyReachesCurrentTelegram()
{
    RecordingStack stack({1, 2});
    const Z7Telegram *current = stack.currentTelegram();
    stack.processReply(valueOf1);
    QCOMPARE(stack.finished, QList<const Z7Telegram *> {current});
    QCOMPARE(current->reply(), valueOf1);
}

void TestTelegramStack::errorOfReplyComesIntoRecord_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::newRow("good reply") << valueOf1 << 0;
    QTest::newRow("unknown first byte") << frame("91 03 00 01 00 05 00") << 0;
    QTest::newRow("nothing") << QByteArray() << 6;
    QTest::newRow("one byte") << QByteArray("\x84") << 6;
    QTest::newRow("too short") << frame("84 03 00 01 00 05") << 6;
    QTest::newRow("from another drive") << frame("84 04 00 01 00 05 00") << 7;
    QTest::newRow("wrong checksum") << QByteArray::fromHex("84 03 00 01 00 05 00 00") << 8;
    QTest::newRow("another parameter") << wrongNumber << 9;
    // The last byte is checksum and error bits at once.
    QTest::newRow("drive saw a wrong checksum") << frame("85 03 cf") << 8;
    QTest::newRow("drive does not know the parameter") << frame("85 03 c9") << 9;
    QTest::newRow("drive did not understand") << frame("85 03 cc") << 7;
}

void TestTelegramStack::errorOfReplyComesIntoRecord()
{
    QFETCH(QByteArray, reply);
    RecordingStack stack({1});
    stack.processReply(reply);
    QTEST(stack.device().error, "error");
}

void TestTelegramStack::errorIsInRecordBeforeReaction()
{
    RecordingStack stack({1});
    stack.processReply(wrongNumber);
    QCOMPARE(stack.errorsAtFinish, QList<int> {TelegramError::WrongParameterNumber});
}

void TestTelegramStack::reactionRunsForGoodAndBadReplies()
{
    RecordingStack stack({1, 1, 1});
    for (const QByteArray &reply : {valueOf1, wrongNumber, QByteArray()})
        stack.processReply(reply);
    QCOMPARE(stack.finished.size(), 3);
}

void TestTelegramStack::reactionMayTakeErrorBack()
{
    RecordingStack stack({1});
    stack.forgiving = true;
    stack.processReply(wrongNumber);
    QVERIFY(!stack.device().hasError());
}

void TestTelegramStack::goodReplyLeavesErrorOfThread()
{
    RecordingStack stack({1});
    stack.setError(TelegramError::NoAnswer);
    stack.processReply(valueOf1);
    QCOMPARE(stack.device().error, 1);
}

void TestTelegramStack::stackFreesPendingAndAnsweredTelegrams()
{
    {
        RecordingStack stack({});
        for (int i = 0; i < 3; ++i)
            stack.append(std::make_unique<CountedTelegram>());
        stack.processReply(frame("85 03 80 00"));
        QCOMPARE(CountedTelegram::count, 3);
    }
    QCOMPARE(CountedTelegram::count, 0);
}

void TestTelegramStack::restartFreesNoTelegram()
{
    RecordingStack stack({});
    stack.append(std::make_unique<CountedTelegram>());
    stack.append(std::make_unique<CountedTelegram>());
    stack.processReply(frame("85 03 80 00"));
    stack.restart();
    QCOMPARE(CountedTelegram::count, 2);
    QCOMPARE(stack.pendingCount(), 2);
}

QTEST_GUILESS_MAIN(TestTelegramStack)
#include "tst_telegramstack.moc"
