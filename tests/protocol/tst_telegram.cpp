// What holds for every telegram: the checksum, and the judgement of a reply up to the point where the
// telegram's own look at its content begins.

#include "protocol/telegram.h"
#include "protocol/telegramcatalogue.h"
#include "tests/protocol/bytes.h"

#include <QtTest>

namespace {

/// Asks drive 3 with command 4 and payload 00 0B, expects a reply of 8 bytes and takes any content.
class Probe : public Z7Telegram
{
public:
    Probe()
        : Z7Telegram(0x04)
    {
        buildRequest(3, bytes("00 0B"));
    }
    int expectedReplyLength() const override { return 8; }
    void decodeReply() override { ++decodedReplies; }

    int decodedReplies = 0;
};

/// A telegram as the base class leaves it.
class BareTelegram : public Z7Telegram
{
public:
    BareTelegram()
        : Z7Telegram(0x0B)
    {
    }
    int expectedReplyLength() const override { return 4; }
    void decodeReply() override { }
};

} // namespace

class TestTelegram : public QObject
{
    Q_OBJECT

private slots:
    void checksumIsSumOfBytesXor55_data();
    void checksumIsSumOfBytesXor55();
    void hexDumpShowsEachByteWithBlankBehind_data();
    void hexDumpShowsEachByteWithBlankBehind();

    void newTelegramHasCommandAndNothingElse();
    void requestIsCommandAddressPayloadAndChecksum();
    void onlyLowByteOfAddressIsSent();
    void setRequestReplacesWholeRequest();
    void addressOfRewrittenRequestCounts();
    void requestAndReplyCanBeReadAsText();

    void replyIsJudgedInOrder_data();
    void replyIsJudgedInOrder();
    void replyIsKeptAsReceivedEvenIfItIsWrong();
    void secondReplyReplacesFirstAndItsError();
    void statusReplyOf85IsNoShortErrorReply_data();
    void statusReplyOf85IsNoShortErrorReply();
    void replyByteBeyondEndReadsAsZero();
};

void TestTelegram::checksumIsSumOfBytesXor55_data()
{
    QTest::addColumn<QByteArray>("array");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("checksum");

    QTest::newRow("nothing at all") << QByteArray() << -1 << 0x55;
    QTest::newRow("nothing, although three bytes are asked for") << QByteArray() << 3 << 0x55;
    QTest::newRow("status request to drive 1") << bytes("05 01") << -1 << 0x53;
    QTest::newRow("count 0 means the whole array") << bytes("05 01") << 0 << 0x53;
    QTest::newRow("count 1 means the first byte") << bytes("05 01") << 1 << 0x50;
    QTest::newRow("a count beyond the array means the whole array") << bytes("05 01") << 3 << 0x53;
    QTest::newRow("bytes count as unsigned") << bytes("FF") << -1 << 0xAA;
    QTest::newRow("the sum wraps at 256") << bytes("FF FF 03") << -1 << 0x54;
}

void TestTelegram::checksumIsSumOfBytesXor55()
{
    QFETCH(QByteArray, array);
    QFETCH(int, count);
    QTEST(telegramChecksum(array, count), "checksum");
}

void TestTelegram::hexDumpShowsEachByteWithBlankBehind_data()
{
    QTest::addColumn<QByteArray>("array");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("no leading zero, lower case") << bytes("05 A3") << "0x5 0xa3 ";
    QTest::newRow("zero and the highest byte") << bytes("00 FF") << "0x0 0xff ";
}

void TestTelegram::hexDumpShowsEachByteWithBlankBehind()
{
    QFETCH(QByteArray, array);
    QTEST(hexDump(array), "text");
}

void TestTelegram::newTelegramHasCommandAndNothingElse()
{
    const BareTelegram telegram;
    QCOMPARE(telegram.command(), 0x0B);
    QCOMPARE(telegram.error(), 0);
    QVERIFY(telegram.request().isEmpty());
    QVERIFY(telegram.reply().isEmpty());
}

void TestTelegram::requestIsCommandAddressPayloadAndChecksum()
{
    QCOMPARE(Probe().request(), bytes("04 03 00 0B 47"));
}

void TestTelegram::onlyLowByteOfAddressIsSent()
{
    QCOMPARE(Z7Telegram_StatusRead(0x101).request(), Z7Telegram_StatusRead(1).request());
}

void TestTelegram::setRequestReplacesWholeRequest()
{
    Probe telegram;
    telegram.setRequest(bytes("04 05 00 0B 41"));
    QCOMPARE(telegram.request(), bytes("04 05 00 0B 41"));
}

void TestTelegram::addressOfRewrittenRequestCounts()
{
    Probe telegram;
    telegram.setRequest(bytes("04 05 00 0B 41"));
    telegram.parseReply(bytes("84 05 00 0B 01 F4 00 DC"));
    QCOMPARE(telegram.error(), 0);
    telegram.parseReply(bytes("84 03 00 0B 01 F4 00 D2"));
    QCOMPARE(telegram.error(), 7);
}

void TestTelegram::requestAndReplyCanBeReadAsText()
{
    Z7Telegram_StatusRead telegram(1);
    QCOMPARE(telegram.requestText(), QStringLiteral("0x5 0x1 0x53 "));
    QCOMPARE(telegram.replyText(), QString());
    telegram.parseReply(bytes("85 01 82 00 5D"));
    QCOMPARE(telegram.replyText(), QStringLiteral("0x85 0x1 0x82 0x0 0x5d "));
}

// All replies are to the probe's request 04 03 00 0B 47.
void TestTelegram::replyIsJudgedInOrder_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("isDecoded");

    const auto row = [](const char *name, const char *reply, int error, bool isDecoded) {
        QTest::newRow(name) << bytes(reply) << error << isDecoded;
    };

    row("the normal reply is looked into", "84 03 00 0B 01 F4 00 D2", 0, true);

    // The address comes first.
    row("another drive's normal reply", "84 05 00 0B 01 F4 00 DC", 7, false);
    row("another drive's reply with a wrong checksum too", "84 05 00 0B 01 F4 00 FF", 7, false);
    row("another drive's reply with a wrong length too", "84 05 00 0B DC", 7, false);
    row("another drive's short error reply", "85 05 CF 0C", 7, false);
    row("another drive's unknown command", "99 05 00", 7, false);

    // In a normal reply the checksum comes before the length.
    row("wrong checksum", "84 03 00 0B 01 F4 00 D3", 8, false);
    row("one byte missing, right checksum", "84 03 00 0B 01 F4 D2", 6, false);
    row("one byte too many, right checksum", "84 03 00 0B 01 F4 00 00 D2", 6, false);
    row("cut off, so that the checksum is wrong too", "84 03 00 0B 01 F4 00", 8, false);
    row("nothing but command and address", "84 03", 8, false);
    row("nothing but command and checksum, which is the address", "84 D1", 7, false);

    // In the short error reply the length comes before the checksum.
    row("short error reply of three bytes, right checksum", "85 03 DD", 6, false);
    row("short error reply of five bytes, right checksum", "85 03 00 00 DD", 6, false);
    row("short error reply of five bytes, wrong checksum", "85 03 00 00 00", 6, false);
    row("short error reply with a wrong checksum", "85 03 CF 03", 8, false);

    // Its last byte is checksum and error bits at once.
    row("the drive saw a wrong checksum", "85 03 CF 02", 8, false);
    row("the drive does not know the number", "85 03 C9 04", 9, false);
    row("both: the checksum is tested first", "85 03 CB 06", 8, false);
    row("the lowest other bit", "85 03 CC 01", 7, false);
    row("the highest other bit", "85 03 4D 80", 7, false);
    row("no error bit: the four bytes are looked into", "85 03 CD 00", 0, true);

    // Any other first byte is no failure at this level.
    row("unknown command of two bytes", "99 03", 0, true);
    row("unknown command, wrong checksum", "99 03 12 34", 0, true);
    row("unknown command, expected length", "99 03 00 0B 01 F4 00 D2", 0, true);
    row("the echo of our own request", "04 03 00 0B 47", 0, true);

    row("a single byte has no address", "84", 6, false);
    row("nothing", "", 6, false);
}

void TestTelegram::replyIsJudgedInOrder()
{
    QFETCH(QByteArray, reply);
    QFETCH(bool, isDecoded);
    Probe telegram;
    telegram.parseReply(reply);
    QTEST(telegram.error(), "error");
    QCOMPARE(telegram.decodedReplies, isDecoded ? 1 : 0);
}

void TestTelegram::replyIsKeptAsReceivedEvenIfItIsWrong()
{
    Probe telegram;
    telegram.parseReply(bytes("84 05 00"));
    QCOMPARE(telegram.reply(), bytes("84 05 00"));
}

void TestTelegram::secondReplyReplacesFirstAndItsError()
{
    Probe telegram;
    telegram.parseReply(bytes("84 03 00 0B 01 F4 00 FF"));
    QCOMPARE(telegram.error(), 8);
    telegram.parseReply(bytes("84 03 00 0B 01 F4 00 D2"));
    QCOMPARE(telegram.error(), 0);
    QCOMPARE(telegram.reply(), bytes("84 03 00 0B 01 F4 00 D2"));
}

void TestTelegram::statusReplyOf85IsNoShortErrorReply_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");

    QTest::newRow("five bytes are the normal reply") << bytes("85 01 82 00 5D") << 0;
    QTest::newRow("of four bytes the last is no error bit") << bytes("85 01 D1 02") << 6;
    QTest::newRow("wrong checksum before wrong length") << bytes("85 01 D1 03") << 8;
}

void TestTelegram::statusReplyOf85IsNoShortErrorReply()
{
    QFETCH(QByteArray, reply);
    Z7Telegram_StatusRead telegram(1);
    telegram.parseReply(reply);
    QTEST(telegram.error(), "error");
}

void TestTelegram::replyByteBeyondEndReadsAsZero()
{
    Probe telegram;
    telegram.parseReply(bytes("99 03 FE"));
    QVERIFY(telegram.hasReplyByte(2));
    QVERIFY(!telegram.hasReplyByte(3));
    QCOMPARE(telegram.replyByte(2), 0xFE);
    QCOMPARE(telegram.replyByte(3), 0);
    QCOMPARE(telegram.replyWord(2), 0xFE00);
}

QTEST_APPLESS_MAIN(TestTelegram)
#include "tst_telegram.moc"
