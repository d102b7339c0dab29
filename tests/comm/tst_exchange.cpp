// Walking a telegram stack without a thread of its own, an event loop or an application object, as a program
// for the command line would.

#include "comm/busport.h"
#include "comm/exchange.h"
#include "tests/comm/drivebus.h"

#include <QThread>
#include <QtTest>

namespace {

constexpr int timeoutMs = 300;

/// Notes what it hears, and does at the first byte of a reply what the test wants.
class Witness : public Z7ExchangeObserver
{
public:
    void replyBegan() override
    {
        events.append("began");
        threads.insert(QThread::currentThread());
        if (atFirstByte)
            atFirstByte();
    }
    void telegramEnded(const Z7TelegramOutcome &outcome) override
    {
        events.append("ended " + QByteArray::number(outcome.error));
        threads.insert(QThread::currentThread());
        outcomes.append(outcome);
    }

    QList<int> errors() const
    {
        QList<int> errors;
        for (const Z7TelegramOutcome &outcome : outcomes)
            errors.append(outcome.error);
        return errors;
    }

    std::function<void()> atFirstByte;
    QByteArrayList events;
    QVector<Z7TelegramOutcome> outcomes;
    QSet<QThread *> threads;
};

} // namespace

class TestExchange : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void stackIsWalkedToItsEndWithinCall();
    void telegramTellsItsBytesAndThoseOfItsReply();
    void firstByteIsToldBeforeRestIsGathered();
    void telegramInTroubleTellsItsErrorAndEndsWalk_data();
    void telegramInTroubleTellsItsErrorAndEndsWalk();
    void portThatIsNotOpenGivesError2();
    void errorThatStackForgivesIsToldAndWalkGoesOn();
    void errorThatOnlyStackFindsIsNoneOfTelegram();
    void stopBeforeWalkSendsNothing();
    void stopAtFirstByteLetsThatTelegramEnd();
    void recordWithErrorSendsNothing();
    void nextStackIsWalkedOnSamePort();
    void probeEndsAtFirstAnswerOfDrive();
    void probeGoesOnPastErrorOfRecord();
    void probeEndsAtTelegramWithoutAnswer();
    void stopBeforeProbeSendsNothing();

private:
    Z7Exchange exchange() { return Z7Exchange(*port, timeoutMs, stop, *witness); }
    void walk(Z7TelegramStack &stack) { exchange().walk(stack); }

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<Z7BusPort> port;
    std::unique_ptr<Witness> witness;
    std::atomic<bool> stop {false};
};

void TestExchange::init()
{
    bus = std::make_unique<DriveBus>();
    port = std::make_unique<Z7BusPort>();
    witness = std::make_unique<Witness>();
    stop = false;
    QCOMPARE(port->open(DriveBus::drive3().portInfo.portName()), int(TelegramError::None));
}

void TestExchange::cleanup()
{
    port.reset();
    bus.reset();
}

void TestExchange::stackIsWalkedToItsEndWithinCall()
{
    Status stack(DriveBus::drive3());
    walk(stack);
    QVERIFY(!QCoreApplication::instance());
    QVERIFY(stack.isEmpty());
    QVERIFY(stack.device().isAccessGranted());
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(stack.device().softwareVersion, QStringLiteral("V123"));
    QCOMPARE(bus->requests().size(), 14);
    QCOMPARE(witness->outcomes.size(), 14);
    QCOMPARE(witness->threads, QSet<QThread *> {QThread::currentThread()});
}

void TestExchange::telegramTellsItsBytesAndThoseOfItsReply()
{
    Probe stack(DriveBus::drive3());
    walk(stack);
    QCOMPARE(witness->outcomes.size(), 1);
    const Z7TelegramOutcome &access = witness->outcomes.first();
    QCOMPARE(access.command, 9);
    QCOMPARE(access.request.toHex(' '), QByteArray(AccessWith3));
    QCOMPARE(access.reply.toHex(' '), QByteArray("89 03 00 d9")); // access granted
    QCOMPARE(access.error, 0);
    QVERIFY(access.isAnswered);
}

void TestExchange::firstByteIsToldBeforeRestIsGathered()
{
    witness->atFirstByte = [this] { bus->command("fault * babble byte=0x2A count=1"); };
    Probe stack(DriveBus::drive3());
    walk(stack);
    const QByteArrayList expected {"began", "ended 8"};
    QCOMPARE(witness->events, expected);
    // The reply, and behind it the byte of after the news.
    QCOMPARE(witness->outcomes.first().reply.toHex(' '), QByteArray("89 03 00 d9 2a"));
}

void TestExchange::telegramInTroubleTellsItsErrorAndEndsWalk_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArrayList>("events");
    QTest::newRow("no answer") << QByteArray("no-answer") << QByteArrayList {"ended 1"};
    QTest::newRow("too long") << QByteArray("longer bytes=1 checksum=right")
                              << QByteArrayList {"began", "ended 6"};
    QTest::newRow("address of another drive")
        << QByteArray("wrong-address") << QByteArrayList {"began", "ended 7"};
    QTest::newRow("flipped bit") << QByteArray("flip byte=2 bit=5") << QByteArrayList {"began", "ended 8"};
}

void TestExchange::telegramInTroubleTellsItsErrorAndEndsWalk()
{
    QFETCH(QByteArray, fault);
    bus->command("fault 3 " + fault);
    Status stack(DriveBus::drive3());
    walk(stack);
    QTEST(witness->events, "events");
    const Z7TelegramOutcome &outcome = witness->outcomes.last();
    QCOMPARE(stack.device().error, outcome.error);
    QCOMPARE(outcome.isAnswered, !outcome.reply.isEmpty());
    QCOMPARE(bus->requests().size(), 1);
}

void TestExchange::portThatIsNotOpenGivesError2()
{
    port->close();
    Status stack(DriveBus::drive3());
    walk(stack);
    QCOMPARE(witness->events, QByteArrayList {"ended 2"});
    QCOMPARE(stack.device().error, int(TelegramError::WriteNotCompleted));
    QVERIFY(!witness->outcomes.first().isAnswered);
    QCOMPARE(witness->outcomes.first().request.toHex(' '), QByteArray(AccessWith3));
}

void TestExchange::errorThatStackForgivesIsToldAndWalkGoesOn()
{
    bus->command("set 3 password 4711"); // so the first access, with the address, is refused
    Status stack(DriveBus::drive(3, 4711));
    walk(stack);
    QCOMPARE(witness->errors().mid(0, 3), QList<int>({10, 0, 0}));
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(bus->requests().size(), 14);
}

void TestExchange::errorThatOnlyStackFindsIsNoneOfTelegram()
{
    Z7Device device = DriveBus::drive3();
    device.setSoftwareVersion(QStringLiteral("V200"));
    Status stack(device);
    walk(stack);
    QCOMPARE(witness->errors(), QList<int>({0, 0, 0, 0}));
    QCOMPARE(stack.device().error, int(TelegramError::VersionNotCompatible));
}

void TestExchange::stopBeforeWalkSendsNothing()
{
    stop = true;
    Status stack(DriveBus::drive3());
    walk(stack);
    QCOMPARE(stack.pendingCount(), 14);
    QCOMPARE(stack.device().error, 0);
    QCOMPARE(bus->requests(), QByteArrayList());
    QCOMPARE(witness->events, QByteArrayList());
}

void TestExchange::stopAtFirstByteLetsThatTelegramEnd()
{
    witness->atFirstByte = [this] { stop = true; };
    Status stack(DriveBus::drive3());
    walk(stack);
    const QByteArrayList expected {"began", "ended 0"};
    QCOMPARE(witness->events, expected);
    QCOMPARE(stack.pendingCount(), 13);
    QVERIFY(stack.device().isAccessGranted());
    QCOMPARE(bus->requests().size(), 1);
}

void TestExchange::recordWithErrorSendsNothing()
{
    Status stack(DriveBus::drive3());
    stack.setError(TelegramError::PortNotOpened);
    walk(stack);
    QCOMPARE(bus->requests(), QByteArrayList());
    QCOMPARE(stack.device().error, int(TelegramError::PortNotOpened));
}

void TestExchange::nextStackIsWalkedOnSamePort()
{
    bus->command("fault 3 no-answer count=1");
    Z7Exchange both = exchange();
    Probe silent(DriveBus::drive3());
    Probe answered(DriveBus::drive3());
    both.walk(silent);
    both.walk(answered);
    QCOMPARE(witness->errors(), QList<int>({1, 0}));
    QVERIFY(answered.device().isConnected());
}

void TestExchange::probeEndsAtFirstAnswerOfDrive()
{
    Status stack(DriveBus::drive3());
    exchange().probe(stack);
    QVERIFY(stack.device().isConnected());
    QCOMPARE(bus->requests(), QByteArrayList {AccessWith3});
}

void TestExchange::probeGoesOnPastErrorOfRecord()
{
    bus->command("fault 3 flip byte=2 bit=5 count=1");
    Status stack(DriveBus::drive3());
    stack.setError(TelegramError::PortNotOpened);
    exchange().probe(stack);
    QCOMPARE(witness->errors(), QList<int>({8, 0}));
    QVERIFY(stack.device().isConnected());
}

void TestExchange::probeEndsAtTelegramWithoutAnswer()
{
    bus->command("fault 3 no-answer");
    Status stack(DriveBus::drive3());
    exchange().probe(stack);
    QCOMPARE(witness->events, QByteArrayList {"ended 1"});
    QCOMPARE(stack.pendingCount(), 14);
}

void TestExchange::stopBeforeProbeSendsNothing()
{
    stop = true;
    Probe stack(DriveBus::drive3());
    exchange().probe(stack);
    QCOMPARE(bus->requests(), QByteArrayList());
}

QTEST_APPLESS_MAIN(TestExchange)

#include "tst_exchange.moc"
