// Which pass of a thread a listener joins: how many have begun, and whether one is under way.

#include "tests/comm/schedulerbench.h"

#include <QtTest>

using namespace Z7CommInterface;

class TestSchedulerPasses : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void noPassHasBegunAtFirst_data();
    void noPassHasBegunAtFirst();
    void everyPassCountsFromItsStart();
    void passLastsUntilItsLastNews();
    void pollingCountsItsPassesAndNotItsPauses();
    void waitingRequestHasNotBegun();
    void endOfAPauseIsNoPass();
    void refusedRequestIsAPassOfItsOwn();

private:
    int begun(ThreadID threadID) const { return bench->scheduler->passesBegun(threadID); }
    bool isUnderWay(ThreadID threadID) const { return bench->scheduler->isPassUnderWay(threadID); }

    std::unique_ptr<SchedulerBench> bench;
};

void TestSchedulerPasses::noPassHasBegunAtFirst_data()
{
    QTest::addColumn<int>("threadID");
    QTest::newRow("scan") << int(ScanDevice);
    QTest::newRow("transfer") << int(TransferTelegramStack);
    QTest::newRow("polling") << int(DevicePolling);
}

void TestSchedulerPasses::noPassHasBegunAtFirst()
{
    QFETCH(int, threadID);
    QCOMPARE(begun(static_cast<ThreadID>(threadID)), 0);
    QVERIFY(!isUnderWay(static_cast<ThreadID>(threadID)));
}

void TestSchedulerPasses::everyPassCountsFromItsStart()
{
    for (int pass = 1; pass <= 3; ++pass) {
        bench->transfer<Probe>();
        QCOMPARE(begun(TransferTelegramStack), pass);
        QVERIFY(isUnderWay(TransferTelegramStack));
        QTRY_COMPARE(bench->count("transfer terminated"), pass);
        QCOMPARE(begun(TransferTelegramStack), pass);
        QVERIFY(!isUnderWay(TransferTelegramStack));
    }
    QCOMPARE(begun(ScanDevice), 0);
    QCOMPARE(begun(DevicePolling), 0);
}

void TestSchedulerPasses::passLastsUntilItsLastNews()
{
    bool underWayAtRecord = false;
    connect(bench->scheduler.get(), &Z7CommunicationInterface::DeviceUpdate, this,
        [&] { underWayAtRecord = isUnderWay(TransferTelegramStack); });
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(underWayAtRecord);
}

void TestSchedulerPasses::pollingCountsItsPassesAndNotItsPauses()
{
    REACH_POLLING_PAUSE(bench);
    QCOMPARE(begun(DevicePolling), 1);
    QVERIFY(!isUnderWay(DevicePolling));
    setPollingInterval(10);
    bench->poll<Probe>();
    setPollingInterval(3600000);
    QCOMPARE(begun(DevicePolling), 1);
    QTRY_VERIFY(bench->has("polling started"));
    QCOMPARE(begun(DevicePolling), 2);
}

void TestSchedulerPasses::waitingRequestHasNotBegun()
{
    bench->transfer<Status>();
    bench->scan();
    QCOMPARE(begun(ScanDevice), 0);
    QTRY_VERIFY(bench->has("scan started"));
    QCOMPARE(begun(ScanDevice), 1);
}

void TestSchedulerPasses::endOfAPauseIsNoPass()
{
    setPollingInterval(3600000);
    bench->poll<Probe>();
    bench->scheduler->cancelCommunication();
    QVERIFY(bench->has("polling record 19"));
    QCOMPARE(begun(DevicePolling), 0);
}

void TestSchedulerPasses::refusedRequestIsAPassOfItsOwn()
{
    bench->scheduler->setBusLent(true);
    int begunAtRecord = 0;
    connect(bench->scheduler.get(), &Z7CommunicationInterface::DeviceUpdate, this,
        [&] { begunAtRecord = begun(TransferTelegramStack); });
    bench->transfer<Probe>();
    QCOMPARE(begunAtRecord, 1);
    QVERIFY(!isUnderWay(TransferTelegramStack));
}

QTEST_GUILESS_MAIN(TestSchedulerPasses)

#include "tst_schedulerpasses.moc"
