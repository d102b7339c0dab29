// A stack reacts to the telegrams of its own commands alone: the outcome of any other tells nothing about
// what the stack is there to do.

#include "protocol/telegramcatalogue.h"
#include "tests/comm/drivereplies.h"

#include <QtTest>

namespace {

using StackPtr = std::shared_ptr<Z7TelegramStack>;
using TelegramPtr = std::shared_ptr<Z7Telegram>;

struct OperationUnderTest
{
    const char *name;
    QList<int> ownCommands;
    StackPtr stack;
};

QList<OperationUnderTest> operations()
{
    using namespace TelegramCommand;
    const Z7Device device = drive3();
    return {
        {"probe", {CustomerAccess}, std::make_shared<Z7CheckProtocolTelegramStack>(device)},
        {"factory reset", {FactoryReset}, std::make_shared<Z7TelegramstackFactoryReset>(device)},
        {"new password", {PasswordReset}, std::make_shared<Z7TelegramstackPasswordReset>(device, 5)},
        {"bootloader", {BootloaderInit}, std::make_shared<Z7TelegramstackBootloaderInit>(device)},
        {"new address", {CustomerAccess, ParameterWrite},
            std::make_shared<Z7TelegramstackChangeAdress>(device, 9)},
    };
}

template<typename Telegram, typename... Arguments>
TelegramPtr answered(const QByteArray &reply, Arguments... arguments)
{
    const auto telegram = std::make_shared<Telegram>(3, arguments...);
    telegram->parseReply(reply);
    return telegram;
}

/// One telegram per command, to which drive 3 has given this status byte; 0x10 refuses the password.
QList<TelegramPtr> telegramsWithStatus(const QByteArray &status)
{
    return {
        answered<Z7Telegram_Store>(frame("82 03" + status), 4711),
        answered<Z7Telegram_FactoryReset>(frame("86 03" + status), 4711),
        answered<Z7Telegram_CustomerAccess>(frame("89 03" + status), 4711),
        answered<Z7Telegram_BootloaderInit>(frame("8b 03" + status), 4711),
        answered<Z7Telegram_PasswordReset>(frame("8c 03" + status), 4711, 5),
    };
}

QList<TelegramPtr> goodTelegrams()
{
    return telegramsWithStatus("00") << answered<Z7Telegram_ParameterWrite>(
               frame("83 03 00 52 00 09 00 00 00"), 0x52, 9) // address 9 taken
                                     << answered<Z7Telegram_ParameterRead>(
                                            frame("84 03 00 52 00 09 00"), 0x52) // it reads 9
                                     << answered<Z7Telegram_StatusRead>(frame("85 03 80 00")) // ready
                                     << answered<Z7Telegram_SoftwareID>(versionReply("56 01 02 03")); // V123
}

QList<TelegramPtr> failedTelegrams()
{
    const QByteArray garbled = QByteArray::fromHex("00 03"); // neither number nor status
    return telegramsWithStatus("10") << answered<Z7Telegram_ParameterWrite>(garbled, 0x52, 9)
                                     << answered<Z7Telegram_ParameterRead>(garbled, 0x52);
}

void addForeignTelegrams(const QList<TelegramPtr> &telegrams)
{
    QTest::addColumn<StackPtr>("stack");
    QTest::addColumn<TelegramPtr>("telegram");
    for (const OperationUnderTest &operation : operations()) {
        for (const TelegramPtr &telegram : telegrams) {
            if (operation.ownCommands.contains(telegram->command()))
                continue;
            QTest::addRow("%s, command %d", operation.name, telegram->command())
                << operation.stack << telegram;
        }
    }
}

} // namespace
Q_DECLARE_METATYPE(StackPtr)
Q_DECLARE_METATYPE(TelegramPtr)

class TestForeignTelegrams : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadDefinitionsOfV123(); }

    void foreignTelegramThatWentWellChangesNothing_data() { addForeignTelegrams(goodTelegrams()); }
    void foreignTelegramThatWentWellChangesNothing();
    void foreignTelegramThatFailedChangesNothing_data() { addForeignTelegrams(failedTelegrams()); }
    void foreignTelegramThatFailedChangesNothing();
};

void TestForeignTelegrams::foreignTelegramThatWentWellChangesNothing()
{
    QFETCH(StackPtr, stack);
    QFETCH(TelegramPtr, telegram);
    stack->telegramFinished(telegram.get());
    const Z7Device &device = stack->device();
    QCOMPARE(device.error, 0);
    QVERIFY(!device.isConnected());
    QVERIFY(!device.isAccessGranted());
    QCOMPARE(device.password, 4711);
    QCOMPARE(device.address, 3);
    QVERIFY(!device.addressChanged);
    QVERIFY(!device.bootloaderActive);
    QCOMPARE(describe(*stack, 82), QByteArray("none"));
}

void TestForeignTelegrams::foreignTelegramThatFailedChangesNothing()
{
    QFETCH(TelegramPtr, telegram);
    QVERIFY(telegram->error() != 0);
    foreignTelegramThatWentWellChangesNothing();
}

QTEST_GUILESS_MAIN(TestForeignTelegrams)

#include "tst_foreigntelegrams.moc"
