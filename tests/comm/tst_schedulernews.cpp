// Every transfer that was asked for is told of: that it began and how it ended, or that it did not run and
// why. And what the bus is used for.

#include "tests/comm/schedulerbench.h"

#include <QtTest>

using namespace Z7CommInterface;

namespace {

QString nameOf(ThreadID threadID)
{
    return threadID == TransferTelegramStack ? QStringLiteral("transfer") : QStringLiteral("polling");
}

QString nameOf(NotRun reason)
{
    switch (reason) {
    case NotRun::TransferRunning:
        return QStringLiteral("transfer running");
    case NotRun::Replaced:
        return QStringLiteral("replaced");
    case NotRun::Cancelled:
        return QStringLiteral("cancelled");
    case NotRun::BusLent:
        break;
    }
    return QStringLiteral("lent");
}

QString nameOf(BusState state)
{
    switch (state) {
    case BusState::Idle:
        return QStringLiteral("idle");
    case BusState::Scanning:
        return QStringLiteral("scanning");
    case BusState::Transferring:
        return QStringLiteral("transferring");
    case BusState::Polling:
        return QStringLiteral("polling");
    case BusState::PollingOff:
        return QStringLiteral("off");
    case BusState::Held:
        return QStringLiteral("held");
    case BusState::Lent:
        break;
    }
    return QStringLiteral("lent");
}

} // namespace

class TestSchedulerNews : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { bench.reset(); }

    void transferBeginsAndEndsUnderItsRequest();
    void endComesBehindAllElseThatFollowsPass();
    void endTellsWhatBecameOfTelegrams();
    void failedTransferHasEndedToo();
    void cancelledTransferHasEndedWithoutBeingComplete();
    void pollingPassesAreToldWithoutRequest();

    void secondTransferDuringTransferDoesNotRun();
    void unnamedTransferKeepsNamedOneFromRunning();
    void waitingTransferRunsBehindCutPass();
    void waitingTransferIsReplacedByAnotherRequest_data();
    void waitingTransferIsReplacedByAnotherRequest();
    void waitingTransferIsCancelled();
    void requestOnLentBusDoesNotRun();
    void transferThatWaitsWhenBusIsLentDoesNotRun();
    void transferBehindLastOneOnLentBusDoesNotRun();
    void transferThatReplacesOneBehindLastOneRunsAfterReturn();
    void requestFromEndOfAllTrafficRunsAndWaitingOneDoesNot();
    void transferThatDidNotRunIsToldOnce();
    void endOfProgramTellsNothing();

    void busIsIdleBeforeAnything();
    void busIsTransferringUntilTransferHasEnded();
    void busIsScanning();
    void busIsPollingInPassAndInPause();
    void busTellsThatOptionHoldsPollingOff();
    void raisedIntervalTakesPollingUpAgain();
    void cancelledPollingIsHeld();
    void cancelWhileOptionHoldsPollingOffLeavesItOff();
    void lentBusIsLentWhateverElse();
    void stateIsToldOnlyWhenItIsAnother();

private:
    template<typename Stack>
    void ask(int request, const Z7Device &device = DriveBus::drive3())
    {
        bench->scheduler->transferTelegramStack(std::make_unique<Stack>(device), request);
    }
    void noteOutcome(ThreadID threadID, int request, const Z7PassOutcome &outcome);
    bool hasEnded(int request) const { return news.contains(QStringLiteral("ended %1").arg(request)); }

    std::unique_ptr<SchedulerBench> bench;
    QStringList news; ///< "began 7", "ended 7", "7: replaced"; polling is 0
    QStringList states;
    Z7PassOutcome lastOutcome;
};

void TestSchedulerNews::init()
{
    bench = std::make_unique<SchedulerBench>();
    const Z7CommunicationInterface *scheduler = bench->scheduler.get();
    connect(scheduler, &Z7CommunicationInterface::passBegan, this, [this](ThreadID threadID, int request) {
        if (threadID == TransferTelegramStack)
            news.append(QStringLiteral("began %1").arg(request));
        else
            news.append(nameOf(threadID) + QStringLiteral(" began"));
    });
    connect(scheduler, &Z7CommunicationInterface::passEnded, this, &TestSchedulerNews::noteOutcome);
    connect(scheduler, &Z7CommunicationInterface::transferNotRun, this, [this](int request, NotRun reason) {
        news.append(QStringLiteral("%1: %2").arg(request).arg(nameOf(reason)));
    });
    connect(scheduler, &Z7CommunicationInterface::busStateChanged, this,
        [this](BusState state) { states.append(nameOf(state)); });
    news.clear();
    states.clear();
}

void TestSchedulerNews::noteOutcome(ThreadID threadID, int request, const Z7PassOutcome &outcome)
{
    lastOutcome = outcome;
    if (threadID == TransferTelegramStack)
        news.append(QStringLiteral("ended %1").arg(request));
    else
        news.append(nameOf(threadID) + QStringLiteral(" ended"));
}

void TestSchedulerNews::transferBeginsAndEndsUnderItsRequest()
{
    ask<Probe>(7);
    QCOMPARE(news, QStringList({"began 7"}));
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(news, QStringList({"began 7", "ended 7"}));
}

void TestSchedulerNews::endComesBehindAllElseThatFollowsPass()
{
    QStringList before;
    connect(bench->scheduler.get(), &Z7CommunicationInterface::passEnded, this,
        [this, &before] { before = bench->news.milestones(); });
    ask<Probe>(7);
    QTRY_VERIFY(hasEnded(7));
    const QStringList expected {
        "transfer started 1", "transfer record 0", "all terminated", "transfer terminated", "all terminated"};
    QCOMPARE(before, expected);
}

void TestSchedulerNews::endTellsWhatBecameOfTelegrams()
{
    ask<Status>(7);
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(lastOutcome.error, 0);
    QVERIFY(lastOutcome.isComplete);
    QCOMPARE(lastOutcome.params.size(), 10);
    QCOMPARE(lastOutcome.deviceId, bench->news.lastRecord().deviceId());
}

void TestSchedulerNews::failedTransferHasEndedToo()
{
    bench->bus.disconnectPort();
    ask<Status>(7);
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(lastOutcome.error, int(TelegramError::PortNotOpened));
    QVERIFY(!lastOutcome.isComplete);
}

void TestSchedulerNews::cancelledTransferHasEndedWithoutBeingComplete()
{
    ask<Status>(7);
    QTRY_VERIFY(bench->has("transfer progress"));
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(hasEnded(7));
    QVERIFY(!lastOutcome.isComplete);
    QCOMPARE(news, QStringList({"began 7", "ended 7"}));
}

void TestSchedulerNews::pollingPassesAreToldWithoutRequest()
{
    bench->poll<Status>();
    QTRY_VERIFY(news.count(QStringLiteral("polling ended")) >= 2);
    QCOMPARE(
        news.mid(0, 4), QStringList({"polling began", "polling ended", "polling began", "polling ended"}));
    QVERIFY(lastOutcome.isComplete);
}

void TestSchedulerNews::secondTransferDuringTransferDoesNotRun()
{
    ask<Status>(7);
    ask<Probe>(8);
    QCOMPARE(news, QStringList({"began 7", "8: transfer running"}));
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(news, QStringList({"began 7", "8: transfer running", "ended 7"}));
}

void TestSchedulerNews::unnamedTransferKeepsNamedOneFromRunning()
{
    bench->transfer<Status>();
    ask<Probe>(8);
    QCOMPARE(news, QStringList({"began 0", "8: transfer running"}));
}

void TestSchedulerNews::waitingTransferRunsBehindCutPass()
{
    QVERIFY(bench->reachPollingPass());
    news.clear();
    ask<Probe>(7);
    QCOMPARE(news, QStringList());
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(news.mid(0, 3), QStringList({"polling ended", "began 7", "ended 7"}));
}

void TestSchedulerNews::waitingTransferIsReplacedByAnotherRequest_data()
{
    QTest::addColumn<int>("request");
    QTest::newRow("polling of another page") << 0;
    QTest::newRow("scan") << 1;
    QTest::newRow("transfer") << 2;
}

void TestSchedulerNews::waitingTransferIsReplacedByAnotherRequest()
{
    QFETCH(int, request);
    QVERIFY(bench->reachPollingPass());
    news.clear();
    ask<Probe>(7);
    if (request == 0)
        bench->poll<Status>();
    else if (request == 1)
        bench->scan();
    else
        ask<Probe>(8);
    QCOMPARE(news, QStringList({"7: replaced"}));
    QTRY_VERIFY(bench->has("all terminated"));
    QVERIFY(!news.contains(QStringLiteral("began 7")));
}

void TestSchedulerNews::waitingTransferIsCancelled()
{
    QVERIFY(bench->reachPollingPass());
    news.clear();
    ask<Probe>(7);
    bench->scheduler->cancelCommunication();
    QCOMPARE(news, QStringList({"7: cancelled"}));
    QTRY_VERIFY(bench->has("polling terminated"));
    QCOMPARE(news, QStringList({"7: cancelled", "polling ended"}));
}

void TestSchedulerNews::requestOnLentBusDoesNotRun()
{
    bench->scheduler->setBusLent(true);
    ask<Probe>(7);
    QCOMPARE(news, QStringList({"7: lent"}));
    QVERIFY2(bench->has("transfer record 19"), "and its record has come before");
}

void TestSchedulerNews::transferThatWaitsWhenBusIsLentDoesNotRun()
{
    QVERIFY(bench->reachPollingPass());
    news.clear();
    ask<Probe>(7);
    bench->scheduler->setBusLent(true);
    QTRY_VERIFY(bench->has("transfer record 19"));
    QCOMPARE(news, QStringList({"polling ended", "7: lent"}));
}

void TestSchedulerNews::transferBehindLastOneOnLentBusDoesNotRun()
{
    ask<Status>(7);
    bench->scheduler->setBusLent(true);
    ask<Probe>(8);
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(news, QStringList({"began 7", "ended 7", "8: lent"}));
}

void TestSchedulerNews::transferThatReplacesOneBehindLastOneRunsAfterReturn()
{
    ask<Status>(7);
    bench->scheduler->setBusLent(true);
    ask<Probe>(8);
    bench->scheduler->setBusLent(false);
    ask<Probe>(9);
    QTRY_VERIFY(hasEnded(9));
    QCOMPARE(news, QStringList({"began 7", "8: replaced", "ended 7", "began 9", "ended 9"}));
}

void TestSchedulerNews::requestFromEndOfAllTrafficRunsAndWaitingOneDoesNot()
{
    QVERIFY(bench->reachPollingPass());
    news.clear();
    const auto answer = std::make_shared<QMetaObject::Connection>();
    *answer = connect(
        bench->scheduler.get(), &Z7CommunicationInterface::allCommunicationTerminated, this, [this, answer] {
            disconnect(*answer);
            ask<Probe>(8);
        });
    ask<Probe>(7);
    QTRY_VERIFY(hasEnded(8));
    QCOMPARE(news.mid(0, 4), QStringList({"polling ended", "7: replaced", "began 8", "ended 8"}));
}

void TestSchedulerNews::transferThatDidNotRunIsToldOnce()
{
    ask<Status>(7);
    ask<Probe>(8);
    bench->scan();
    QTRY_VERIFY(bench->has("scan started"));
    ask<Probe>(9);
    QTRY_VERIFY(hasEnded(9));
    QCOMPARE(news, QStringList({"began 7", "8: transfer running", "ended 7", "began 9", "ended 9"}));
}

void TestSchedulerNews::endOfProgramTellsNothing()
{
    QVERIFY(bench->reachPollingPass());
    ask<Probe>(7);
    news.clear();
    states.clear();
    bench->scheduler->stopAndWait();
    QCoreApplication::processEvents();
    QCOMPARE(news + states, QStringList());
}

void TestSchedulerNews::busIsIdleBeforeAnything()
{
    QCOMPARE(bench->scheduler->busState(), BusState::Idle);
}

void TestSchedulerNews::busIsTransferringUntilTransferHasEnded()
{
    ask<Probe>(7);
    QCOMPARE(bench->scheduler->busState(), BusState::Transferring);
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(states, QStringList({"transferring", "idle"}));
}

void TestSchedulerNews::busIsScanning()
{
    bench->scan();
    QCOMPARE(states, QStringList({"scanning"}));
    QTRY_VERIFY(bench->has("scan terminated"));
    QCOMPARE(states, QStringList({"scanning", "idle"}));
}

void TestSchedulerNews::busIsPollingInPassAndInPause()
{
    bench->poll<Status>();
    QTRY_VERIFY(news.count(QStringLiteral("polling ended")) >= 2);
    QCOMPARE(states, QStringList({"polling"}));
}

void TestSchedulerNews::busTellsThatOptionHoldsPollingOff()
{
    QVERIFY(bench->reachPollingPass());
    setPollingInterval(0);
    QTRY_COMPARE(states, QStringList({"polling", "off"}));
    ask<Probe>(7);
    QTRY_VERIFY(hasEnded(7));
    QCOMPARE(states, QStringList({"polling", "off", "transferring", "off"}));
}

void TestSchedulerNews::raisedIntervalTakesPollingUpAgain()
{
    setPollingInterval(0);
    bench->poll<Probe>();
    QCOMPARE(states, QStringList({"off"}));
    setPollingInterval(10);
    QTRY_COMPARE(states, QStringList({"off", "polling"}));
}

void TestSchedulerNews::cancelledPollingIsHeld()
{
    QVERIFY(bench->reachPollingPass());
    states.clear();
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("polling terminated"));
    QCOMPARE(states, QStringList({"held"}));
    bench->poll<Status>();
    QCOMPARE(states, QStringList({"held", "polling"}));
}

void TestSchedulerNews::cancelWhileOptionHoldsPollingOffLeavesItOff()
{
    setPollingInterval(0);
    bench->poll<Probe>();
    bench->scheduler->cancelCommunication();
    QCOMPARE(states, QStringList({"off"}));
    setPollingInterval(10);
    QTRY_COMPARE(states, QStringList({"off", "polling"}));
}

void TestSchedulerNews::lentBusIsLentWhateverElse()
{
    QVERIFY(bench->reachPollingPass());
    states.clear();
    bench->scheduler->setBusLent(true);
    QTRY_VERIFY(news.contains(QStringLiteral("polling ended")));
    bench->scheduler->setBusLent(false);
    QCOMPARE(states, QStringList({"lent", "polling"}));
}

void TestSchedulerNews::stateIsToldOnlyWhenItIsAnother()
{
    QVERIFY(bench->reachPollingPass());
    states.clear();
    bench->poll<Status>();
    bench->poll<Status>();
    QTRY_VERIFY(news.count(QStringLiteral("polling ended")) >= 2);
    QCOMPARE(states, QStringList());
}

QTEST_GUILESS_MAIN(TestSchedulerNews)

#include "tst_schedulernews.moc"
