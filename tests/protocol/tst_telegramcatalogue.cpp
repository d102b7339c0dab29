// The nine telegrams: what each sends, and what it reads out of its reply.

#include "protocol/telegramcatalogue.h"
#include "tests/protocol/bytes.h"

#include <QtTest>

#include <climits>
#include <memory>

using TelegramPtr = std::shared_ptr<Z7Telegram>;
Q_DECLARE_METATYPE(TelegramPtr)

namespace {

constexpr int password = 4711; ///< 0x1267

// Telegrams to drive 3.
TelegramPtr makeRead(int number)
{
    return std::make_shared<Z7Telegram_ParameterRead>(3, number);
}
TelegramPtr makeWrite(int number, int value)
{
    return std::make_shared<Z7Telegram_ParameterWrite>(3, number, value);
}
TelegramPtr makeStatusRead()
{
    return std::make_shared<Z7Telegram_StatusRead>(3);
}
TelegramPtr makeSoftwareID()
{
    return std::make_shared<Z7Telegram_SoftwareID>(3);
}
TelegramPtr makeCustomerAccess(int sent = password)
{
    return std::make_shared<Z7Telegram_CustomerAccess>(3, sent);
}
TelegramPtr makeStore()
{
    return std::make_shared<Z7Telegram_Store>(3, password);
}
TelegramPtr makeFactoryReset()
{
    return std::make_shared<Z7Telegram_FactoryReset>(3, password);
}
TelegramPtr makeBootloaderInit()
{
    return std::make_shared<Z7Telegram_BootloaderInit>(3, password);
}
TelegramPtr makePasswordReset(int oldPassword = password, int newPassword = 7)
{
    return std::make_shared<Z7Telegram_PasswordReset>(3, oldPassword, newPassword);
}

/// The reply of drive 3 to the software request, with the letter and the three numbers given.
QByteArray versionReply(char letter, int n1, int n2, int n3)
{
    QByteArray reply =
        bytes("87 03") + QByteArray(16, 'x') + letter + char(n1) + char(n2) + char(n3) + QByteArray(12, 'x');
    return reply + char(telegramChecksum(reply, -1));
}

} // namespace

class TestTelegramCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void eachTelegramHasItsFrame_data();
    void eachTelegramHasItsFrame();
    void passwordFieldLeavesOutBits23To16_data();
    void passwordFieldLeavesOutBits23To16();
    void newPasswordIsSentBehindOldOneInSameForm();
    void writtenValueIsSentWithItsLow16Bits_data();
    void writtenValueIsSentWithItsLow16Bits();

    void statusByteBecomesErrorNumber_data();
    void statusByteBecomesErrorNumber();
    void parameterReplyHasToNameParameter_data();
    void parameterReplyHasToNameParameter();
    void replyTooShortToHoldItsContentIsOfInvalidLength_data();
    void replyTooShortToHoldItsContentIsOfInvalidLength();
    void anyStatusReplyIsTaken();
    void lookAtContentClearsNoError_data();
    void lookAtContentClearsNoError();

    void versionIsLetterAndThreeSignedNumbers_data();
    void versionIsLetterAndThreeSignedNumbers();
    void replyOf21BytesHoldsNoVersion();
};

void TestTelegramCatalogue::eachTelegramHasItsFrame_data()
{
    QTest::addColumn<TelegramPtr>("telegram");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("replyLength");

    const auto row = [](const char *name, const TelegramPtr &telegram, const char *request, int command,
                         int replyLength) {
        QTest::newRow(name) << telegram << bytes(request) << command << replyLength;
    };

    row("store", makeStore(), "02 03 00 00 12 67 2B", 0x02, 4);
    row("write 7 into parameter 0x52", makeWrite(0x52, 7), "03 03 00 52 00 07 0A", 0x03, 10);
    row("read parameter 0x8001", makeRead(0x8001), "04 03 80 01 DD", 0x04, 8);
    row("status", makeStatusRead(), "05 03 5D", 0x05, 5);
    row("factory reset", makeFactoryReset(), "06 03 00 00 12 67 D7", 0x06, 4);
    row("software version", makeSoftwareID(), "07 03 5F", 0x07, 35);
    row("access", makeCustomerAccess(), "09 03 00 00 12 67 D0", 0x09, 4);
    row("bootloader", makeBootloaderInit(), "0B 03 00 00 12 67 D2", 0x0B, 4);
    row("new password 7", makePasswordReset(), "0C 03 00 00 12 67 00 00 00 07 DA", 0x0C, 4);
}

void TestTelegramCatalogue::eachTelegramHasItsFrame()
{
    QFETCH(TelegramPtr, telegram);
    QTEST(telegram->request(), "request");
    QTEST(telegram->command(), "command");
    QTEST(telegram->expectedReplyLength(), "replyLength");
    QCOMPARE(telegram->error(), 0);
}

void TestTelegramCatalogue::passwordFieldLeavesOutBits23To16_data()
{
    QTest::addColumn<int>("sent");
    QTest::addColumn<QByteArray>("request");

    QTest::newRow("bits 23 to 16 travel as 0") << 0x12345678 << bytes("09 03 12 00 56 78 B9");
    QTest::newRow("a negative password begins with FF") << -1 << bytes("09 03 FF 00 FF FF 5C");
    QTest::newRow("the most negative password") << INT_MIN << bytes("09 03 80 00 00 00 D9");
    QTest::newRow("the greatest password") << INT_MAX << bytes("09 03 7F 00 FF FF DC");
}

void TestTelegramCatalogue::passwordFieldLeavesOutBits23To16()
{
    QFETCH(int, sent);
    QTEST(makeCustomerAccess(sent)->request(), "request");
}

void TestTelegramCatalogue::newPasswordIsSentBehindOldOneInSameForm()
{
    QCOMPARE(makePasswordReset(0x12345678, -2)->request(), bytes("0C 03 12 00 56 78 FF 00 FF FE BE"));
}

void TestTelegramCatalogue::writtenValueIsSentWithItsLow16Bits_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("request");

    QTest::newRow("a negative value") << -2 << bytes("03 03 00 0B FF FE 5B");
    QTest::newRow("the same value as unsigned") << 65534 << bytes("03 03 00 0B FF FE 5B");
    QTest::newRow("a value of 17 bits") << 0x12345 << bytes("03 03 00 0B 23 45 2C");
}

void TestTelegramCatalogue::writtenValueIsSentWithItsLow16Bits()
{
    QFETCH(int, value);
    QTEST(makeWrite(0x0B, value)->request(), "request");
}

// Replies of drive 3: command + 0x80, address, status, checksum.
void TestTelegramCatalogue::statusByteBecomesErrorNumber_data()
{
    QTest::addColumn<TelegramPtr>("telegram");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");

    const auto row = [](const char *name, const TelegramPtr &telegram, const char *reply, int error) {
        QTest::newRow(name) << telegram << bytes(reply) << error;
    };

    row("store: done", makeStore(), "82 03 00 D0", 0);
    row("store: password refused", makeStore(), "82 03 10 C0", 10);
    row("store: nothing to store", makeStore(), "82 03 20 F0", 16);
    row("store: flash write failed", makeStore(), "82 03 40 90", 17);
    row("store: inconsistent parameters", makeStore(), "82 03 80 50", 18);
    row("store: the refused password comes first", makeStore(), "82 03 30 E0", 10);
    row("store: nothing to store comes before the flash", makeStore(), "82 03 60 B0", 16);
    row("store: the flash comes before inconsistency", makeStore(), "82 03 C0 10", 17);
    row("store: all bits at once", makeStore(), "82 03 FF D1", 10);
    row("store: other bits mean nothing", makeStore(), "82 03 0F C1", 0);

    row("access: granted", makeCustomerAccess(), "89 03 00 D9", 0);
    row("access: password refused", makeCustomerAccess(), "89 03 10 C9", 10);
    row("access: other bits mean nothing", makeCustomerAccess(), "89 03 EF 2E", 0);

    row("factory reset: done", makeFactoryReset(), "86 03 00 DC", 0);
    row("factory reset: password refused", makeFactoryReset(), "86 03 10 CC", 10);
    row("factory reset: other bits mean nothing", makeFactoryReset(), "86 03 EF 2D", 0);

    row("new password: taken", makePasswordReset(), "8C 03 00 DA", 0);
    row("new password: old one refused", makePasswordReset(), "8C 03 10 CA", 10);
    row("new password: other bits mean nothing", makePasswordReset(), "8C 03 EF 2B", 0);

    row("bootloader: ready", makeBootloaderInit(), "8B 03 00 DB", 0);
    row("bootloader: password refused", makeBootloaderInit(), "8B 03 10 CB", 10);
    row("bootloader: motor not in free-run", makeBootloaderInit(), "8B 03 20 FB", 20);
    row("bootloader: the refused password comes first", makeBootloaderInit(), "8B 03 30 EB", 10);
    row("bootloader: other bits mean nothing", makeBootloaderInit(), "8B 03 CF 08", 0);
}

void TestTelegramCatalogue::statusByteBecomesErrorNumber()
{
    QFETCH(TelegramPtr, telegram);
    QFETCH(QByteArray, reply);
    telegram->parseReply(reply);
    QTEST(telegram->error(), "error");
}

void TestTelegramCatalogue::parameterReplyHasToNameParameter_data()
{
    QTest::addColumn<TelegramPtr>("telegram");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");

    const auto row = [](const char *name, const TelegramPtr &telegram, const char *reply, int error) {
        QTest::newRow(name) << telegram << bytes(reply) << error;
    };

    row("read: value 500", makeRead(0x0B), "84 03 00 0B 01 F4 00 D2", 0);
    row("read: the next parameter", makeRead(0x0B), "84 03 00 0C 01 F4 00 DD", 9);
    row("read: another high byte", makeRead(0x0B), "84 03 01 0B 01 F4 00 DD", 9);
    row("read: access not permitted is the parameter's own", makeRead(0x0B), "84 03 00 0B 01 F4 10 C2", 0);
    row("read: failed is the parameter's own", makeRead(0x0B), "84 03 00 0B 01 F4 20 F2", 0);
    row("read: other flags mean nothing", makeRead(0x0B), "84 03 00 0B 01 F4 FF D3", 0);

    row("write: done", makeWrite(0x0B, 500), "83 03 00 0B 01 F4 00 00 00 D3", 0);
    row("write: the next parameter", makeWrite(0x0B, 500), "83 03 00 0C 01 F4 00 00 00 D2", 9);
    row("write: another high byte", makeWrite(0x0B, 500), "83 03 01 0B 01 F4 00 00 00 D2", 9);
    row("write: the value is not compared", makeWrite(0x0B, 500), "83 03 00 0B FF FF 00 00 00 DA", 0);
    row("write: a conflict with parameter 12 is the parameter's own", makeWrite(0x0B, 500),
        "83 03 00 0B 01 F4 00 0C 00 C7", 0);
    row("write: access not permitted is the parameter's own", makeWrite(0x0B, 500),
        "83 03 00 0B 01 F4 00 00 10 C3", 0);
    row("write: failed is the parameter's own", makeWrite(0x0B, 500), "83 03 00 0B 01 F4 00 00 20 F3", 0);

    // The short error reply without an error bit: its bytes 2 and 3 stand where the number would.
    row("short reply that happens to name the parameter", makeRead(0xCD00), "85 03 CD 00", 0);
    row("short reply that names another one", makeRead(0x0B), "85 03 CD 00", 9);
    row("unknown command that names another one", makeRead(0x0B), "99 03 00 0C", 9);
}

void TestTelegramCatalogue::parameterReplyHasToNameParameter()
{
    statusByteBecomesErrorNumber();
}

// The first byte 99 is no command's reply, so nothing but the telegram itself looks at these.
void TestTelegramCatalogue::replyTooShortToHoldItsContentIsOfInvalidLength_data()
{
    QTest::addColumn<TelegramPtr>("telegram");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("error");

    QTest::newRow("read: half a number") << makeRead(0x0B) << bytes("99 03 00") << 6;
    QTest::newRow("write: no number") << makeWrite(0x0B, 500) << bytes("99 03") << 6;
    QTest::newRow("store: no status") << makeStore() << bytes("99 03") << 6;
    QTest::newRow("access: no status") << makeCustomerAccess() << bytes("99 03") << 6;
    QTest::newRow("access: a status of an unknown command counts")
        << makeCustomerAccess() << bytes("99 03 10") << 10;
}

void TestTelegramCatalogue::replyTooShortToHoldItsContentIsOfInvalidLength()
{
    statusByteBecomesErrorNumber();
}

void TestTelegramCatalogue::anyStatusReplyIsTaken()
{
    const TelegramPtr telegram = makeStatusRead();
    telegram->parseReply(bytes("85 03 FF FF D3")); // every status bit, every communication bit
    QCOMPARE(telegram->error(), 0);
}

// Their content tells of no failure, but their last byte is not the checksum.
void TestTelegramCatalogue::lookAtContentClearsNoError_data()
{
    QTest::addColumn<TelegramPtr>("telegram");
    QTest::addColumn<QByteArray>("reply");

    QTest::newRow("read") << makeRead(0x0B) << bytes("84 03 00 0B 01 F4 00 00");
    QTest::newRow("write") << makeWrite(0x0B, 500) << bytes("83 03 00 0B 01 F4 00 00 00 00");
    QTest::newRow("status") << makeStatusRead() << bytes("85 03 80 00 00");
    QTest::newRow("software version") << makeSoftwareID() << versionReply('V', 1, 2, 3).replace(34, 1, "x");
    QTest::newRow("store") << makeStore() << bytes("82 03 00 00");
    QTest::newRow("access") << makeCustomerAccess() << bytes("89 03 00 00");
    QTest::newRow("factory reset") << makeFactoryReset() << bytes("86 03 00 00");
    QTest::newRow("bootloader") << makeBootloaderInit() << bytes("8B 03 00 00");
    QTest::newRow("new password") << makePasswordReset() << bytes("8C 03 00 00");
}

void TestTelegramCatalogue::lookAtContentClearsNoError()
{
    QFETCH(TelegramPtr, telegram);
    QFETCH(QByteArray, reply);
    telegram->parseReply(reply);
    QCOMPARE(telegram->error(), 8);
    telegram->decodeReply();
    QCOMPARE(telegram->error(), 8);
}

void TestTelegramCatalogue::versionIsLetterAndThreeSignedNumbers_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("version");

    QTest::newRow("one digit each") << versionReply('V', 1, 2, 3) << "V123";
    QTest::newRow("all zero") << versionReply('V', 0, 0, 0) << "V000";
    QTest::newRow("numbers of several digits") << versionReply('V', 1, 12, 127) << "V112127";
    QTest::newRow("bytes from 0x80 on are negative") << versionReply('V', 0xFF, 0x80, 0) << "V-1-1280";
    QTest::newRow("another letter") << versionReply('B', 1, 0, 0) << "B100";
}

void TestTelegramCatalogue::versionIsLetterAndThreeSignedNumbers()
{
    QFETCH(QByteArray, reply);
    Z7Telegram_SoftwareID telegram(3);
    telegram.parseReply(reply);
    QCOMPARE(telegram.error(), 0);
    QVERIFY(telegram.hasVersion());
    QTEST(telegram.version(), "version");
}

void TestTelegramCatalogue::replyOf21BytesHoldsNoVersion()
{
    Z7Telegram_SoftwareID telegram(3);
    telegram.parseReply(versionReply('V', 1, 2, 3).left(21));
    QVERIFY(!telegram.hasVersion());
    telegram.parseReply(versionReply('V', 1, 2, 3).left(22));
    QVERIFY(telegram.hasVersion());
}

QTEST_APPLESS_MAIN(TestTelegramCatalogue)
#include "tst_telegramcatalogue.moc"
