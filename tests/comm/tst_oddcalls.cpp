// Calls that the window never makes: they find nothing to do, and nothing falls over.

#include "comm/commthreads.h"
#include "tests/comm/schedulerbench.h"

#include <QtTest>

using namespace Z7CommInterface;

using ThreadPtr = std::shared_ptr<CommThread>;
Q_DECLARE_METATYPE(ThreadPtr)

class TestOddCalls : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void threadWithoutStackEndsItsPass_data();
    void threadWithoutStackEndsItsPass();
    void frontWithoutStackBeginsNoPass();

    void schedulerWithoutStackStartsNothing();
    void noStackLeavesWaitingTransferAndPolling();
    void slotsOfSchedulerWithoutStackStartNothing();
    void endOfUnknownThreadIsPassedOn();
    void endOfThreadThatDoesNotRunIsPassedOn_data();
    void endOfThreadThatDoesNotRunIsPassedOn();
    void endThatComesDuringPassStartsNoSecondOne();
    void pollingStartedBySlotDuringPassRunsNoSecondOne();

private:
    void verifyBusStillWorks();

    std::unique_ptr<SchedulerBench> bench;
};

/// Whatever was called before: a transfer runs and comes to its end.
void TestOddCalls::verifyBusStillWorks()
{
    bench->news.clear();
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(bench->has("transfer record 0"));
}

void TestOddCalls::threadWithoutStackEndsItsPass_data()
{
    QTest::addColumn<ThreadPtr>("thread");
    QTest::newRow("transfer") << ThreadPtr(std::make_shared<CommThreadTransferTelegramStack>());
    QTest::newRow("polling") << ThreadPtr(std::make_shared<CommThreadDevicePolling>());
}

void TestOddCalls::threadWithoutStackEndsItsPass()
{
    QFETCH(ThreadPtr, thread);
    CommNews news(*thread);
    QMetaObject::invokeMethod(thread.get(), "start"); // the slot of every thread
    QTRY_VERIFY(news.has("ended"));
    QCOMPARE(news.events(), QStringList {"ended"});
}

void TestOddCalls::frontWithoutStackBeginsNoPass()
{
    Z7CommInterfaceTransferTelegramStack transfer;
    transfer.start(nullptr);
    QVERIFY(!transfer.isPassUnderWay());
    Z7CommInterfaceDevicePolling polling;
    polling.start(nullptr);
    QVERIFY(!polling.isPassUnderWay());
}

void TestOddCalls::schedulerWithoutStackStartsNothing()
{
    bench->scheduler->transferTelegramStack(nullptr);
    bench->scheduler->setPollingStack(nullptr);
    bench->scheduler->setBusLent(true);
    bench->scheduler->transferTelegramStack(nullptr);
    bench->scheduler->setPollingStack(nullptr);
    bench->scheduler->setBusLent(false);
    QCOMPARE(bench->news.events(), QStringList());
    verifyBusStillWorks();
}

void TestOddCalls::noStackLeavesWaitingTransferAndPolling()
{
    QVERIFY(bench->reachPollingPass());
    bench->transfer<Probe>();
    bench->scheduler->transferTelegramStack(nullptr);
    bench->scheduler->setPollingStack(nullptr);
    QTRY_VERIFY(bench->has("transfer record 0"));
    QTRY_VERIFY(bench->has("polling started 14"));
}

void TestOddCalls::slotsOfSchedulerWithoutStackStartNothing()
{
    bench->scheduler->startPollingThread();
    bench->scheduler->startNextThreadID();
    QMetaObject::invokeMethod(bench->scheduler.get(), "autoEnablePolling");
    bench->scheduler->threadDeviceUpdate(DevicePolling, DriveBus::drive3());
    QCOMPARE(bench->news.events(), QStringList {"polling record 0"});
    verifyBusStillWorks();
}

void TestOddCalls::endOfUnknownThreadIsPassedOn()
{
    Z7CommunicationInterface scheduler;
    const QSignalSpy terminated(&scheduler, SIGNAL(transactionTerminated(Z7CommInterface::ThreadID)));
    constexpr auto unknown = static_cast<ThreadID>(3); // the one value that the type holds beside the threads
    scheduler.threadTransactionTerminated(unknown);
    QCOMPARE(terminated.size(), 1);
}

void TestOddCalls::endOfThreadThatDoesNotRunIsPassedOn_data()
{
    QTest::addColumn<int>("threadID");
    QTest::addColumn<QString>("name");
    QTest::newRow("scan") << int(ScanDevice) << "scan";
    QTest::newRow("transfer") << int(TransferTelegramStack) << "transfer";
    QTest::newRow("polling") << int(DevicePolling) << "polling";
}

void TestOddCalls::endOfThreadThatDoesNotRunIsPassedOn()
{
    QFETCH(int, threadID);
    QFETCH(QString, name);
    bench->scheduler->threadTransactionTerminated(static_cast<ThreadID>(threadID));
    QCOMPARE(bench->news.events(), QStringList({name + " terminated", "all terminated"}));
    verifyBusStillWorks();
}

void TestOddCalls::endThatComesDuringPassStartsNoSecondOne()
{
    bench->transfer<Status>();
    bench->scheduler->threadTransactionTerminated(TransferTelegramStack);
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer progress 14"));
    QTRY_VERIFY(bench->has("transfer record 0"));
    QCOMPARE(bench->count("transfer started"), 1);
    QTRY_VERIFY(bench->count("transfer terminated") >= 2);
    verifyBusStillWorks();
}

void TestOddCalls::pollingStartedBySlotDuringPassRunsNoSecondOne()
{
    QVERIFY(bench->reachPollingPass());
    setPollingInterval(3600000);
    bench->scheduler->startPollingThread();
    QTRY_VERIFY(bench->has("polling record 0"));
    QCOMPARE(bench->requestCount(), 14);
}

QTEST_GUILESS_MAIN(TestOddCalls)

#include "tst_oddcalls.moc"
