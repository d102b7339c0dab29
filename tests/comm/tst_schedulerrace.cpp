// Requests at any moment of a polling that hardly pauses: whatever the moment, the bus has one user at a time
// and every request gets its answer.

#include "tests/comm/schedulerbench.h"

#include <QRandomGenerator>
#include <QThread>
#include <QtTest>

class TestSchedulerRace : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyTransferIsAnsweredOnceWheneverItIsRequested();
    void transferRequestedWhenPassHasEndedUnnoticedFollowsIt();
    void anyMixtureOfRequestsLeavesBusFree();
    void interfaceGoesAtAnyMoment();

private:
    void letTimePass(int mostMs);
    void checkOneUserAtATime() const;
    void checkOneExchangeAtATime() const;

    std::unique_ptr<SchedulerBench> bench;
    QRandomGenerator random {20240229};
};

void TestSchedulerRace::init()
{
    bench = std::make_unique<SchedulerBench>();
    setTimeout(2000); // a busy machine must not make a drive seem silent
    setPollingInterval(1);
}

void TestSchedulerRace::cleanup()
{
    bench.reset();
}

/// Sometimes with the news of the threads coming in, sometimes without.
void TestSchedulerRace::letTimePass(int mostMs)
{
    const int ms = random.bounded(mostMs);
    if (random.bounded(2))
        QTest::qWait(ms);
    else
        QThread::msleep(static_cast<unsigned long>(ms));
}

/// No pass found the port in use.
void TestSchedulerRace::checkOneUserAtATime() const
{
    for (const Z7Device &record : bench->news.records())
        QVERIFY(record.error != TelegramError::PortNotOpened);
}

void TestSchedulerRace::checkOneExchangeAtATime() const
{
    const auto wire = bench->bus.wire();
    for (int i = 0; i + 1 < wire.size(); ++i)
        QVERIFY(wire.at(i).direction != wire.at(i + 1).direction);
}

void TestSchedulerRace::everyTransferIsAnsweredOnceWheneverItIsRequested()
{
    constexpr int transfers = 40;
    bench->poll<Probe>();
    for (int i = 1; i <= transfers; ++i) {
        letTimePass(40);
        bench->transfer<Probe>();
        QTRY_COMPARE(bench->count("transfer terminated"), i);
    }
    QCOMPARE(bench->count("transfer started"), transfers);
    QCOMPARE(bench->count("transfer record 0"), transfers);
    QCOMPARE(bench->count("transfer record"), transfers);
    QVERIFY(!bench->has("polling terminated"));
    checkOneUserAtATime();
    checkOneExchangeAtATime();
}

// The thread has ended, but the main thread has not been told yet.
void TestSchedulerRace::transferRequestedWhenPassHasEndedUnnoticedFollowsIt()
{
    bench->poll<Probe>();
    for (int i = 1; i <= 10; ++i) {
        bench->news.clear();
        QTRY_VERIFY(bench->has("polling started"));
        QThread::msleep(60);
        bench->transfer<Probe>();
        QTRY_VERIFY(bench->has("transfer terminated"));
        QCOMPARE(bench->count("transfer started"), 1);
        QCOMPARE(bench->count("transfer record 0"), 1);
        QCOMPARE(bench->count("transfer terminated"), 1);
    }
    checkOneUserAtATime();
    checkOneExchangeAtATime();
}

void TestSchedulerRace::anyMixtureOfRequestsLeavesBusFree()
{
    for (int i = 0; i < 100; ++i) {
        switch (random.bounded(5)) {
        case 0:
            bench->scan();
            break;
        case 1:
            bench->poll<Probe>();
            break;
        case 2:
            bench->scheduler->cancelCommunication();
            break;
        default:
            bench->transfer<Probe>();
        }
        letTimePass(30);
    }
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(!DriveBus::isPortInUse());
    QCoreApplication::processEvents();
    bench->news.clear();
    bench->transfer<Status>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(bench->has("transfer progress 14"));
    checkOneUserAtATime();
}

void TestSchedulerRace::interfaceGoesAtAnyMoment()
{
    for (int i = 0; i < 25; ++i) {
        Z7CommunicationInterface scheduler;
        const CommNews news(scheduler);
        scheduler.setPollingStack(std::make_unique<Status>(DriveBus::drive3()));
        letTimePass(20);
        if (random.bounded(2))
            scheduler.transferTelegramStack(std::make_unique<Probe>(DriveBus::drive3()));
        letTimePass(20);
        QVERIFY2(
            !news.has("polling record 3") && !news.has("transfer record 3"), "the former has left the port");
    }
    QVERIFY(!DriveBus::isPortInUse());
}

QTEST_GUILESS_MAIN(TestSchedulerRace)

#include "tst_schedulerrace.moc"
