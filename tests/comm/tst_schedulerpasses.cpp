// When a pass of a thread is under way: from the request that starts it to its last news.

#include "tests/comm/schedulerbench.h"

#include <QtTest>

using namespace Z7CommInterface;

class TestSchedulerPasses : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { bench.reset(); }

    void noPassIsUnderWayAtFirst_data();
    void noPassIsUnderWayAtFirst();
    void passIsUnderWayFromItsRequest();
    void passLastsUntilItsLastNews();
    void pauseOfPollingIsNoPass();
    void waitingRequestIsNoPass();
    void refusedRequestIsNoPass();

private:
    bool isUnderWay(ThreadID threadID) const { return bench->scheduler->isPassUnderWay(threadID); }

    std::unique_ptr<SchedulerBench> bench;
    /// The threads whose pass was under way when its start was told. A short pass would slip between two
    /// looks of a waiting test.
    QVector<ThreadID> underWayAtStart;
};

void TestSchedulerPasses::init()
{
    bench = std::make_unique<SchedulerBench>();
    underWayAtStart.clear();
    connect(bench->scheduler.get(), &Z7CommunicationInterface::transactionStarted, this,
        [this](ThreadID threadID) {
            if (isUnderWay(threadID))
                underWayAtStart.append(threadID);
        });
}

void TestSchedulerPasses::noPassIsUnderWayAtFirst_data()
{
    QTest::addColumn<int>("threadID");
    QTest::newRow("scan") << int(ScanDevice);
    QTest::newRow("transfer") << int(TransferTelegramStack);
    QTest::newRow("polling") << int(DevicePolling);
}

void TestSchedulerPasses::noPassIsUnderWayAtFirst()
{
    QFETCH(int, threadID);
    QVERIFY(!isUnderWay(static_cast<ThreadID>(threadID)));
}

void TestSchedulerPasses::passIsUnderWayFromItsRequest()
{
    bench->transfer<Probe>();
    QVERIFY(isUnderWay(TransferTelegramStack));
    QVERIFY(!isUnderWay(ScanDevice));
    QVERIFY(!isUnderWay(DevicePolling));
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(!isUnderWay(TransferTelegramStack));
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

void TestSchedulerPasses::pauseOfPollingIsNoPass()
{
    QVERIFY(bench->reachPollingPause());
    QVERIFY(!isUnderWay(DevicePolling));
    setPollingInterval(10);
    bench->poll<Probe>();
    QTRY_VERIFY(underWayAtStart.contains(DevicePolling));
}

void TestSchedulerPasses::waitingRequestIsNoPass()
{
    bench->transfer<Status>();
    bench->scan();
    QVERIFY(!isUnderWay(ScanDevice));
    QTRY_VERIFY(underWayAtStart.contains(ScanDevice));
}

void TestSchedulerPasses::refusedRequestIsNoPass()
{
    bench->scheduler->setBusLent(true);
    bench->transfer<Probe>();
    QVERIFY(bench->has("transfer record 19"));
    QVERIFY(!isUnderWay(TransferTelegramStack));
}

QTEST_GUILESS_MAIN(TestSchedulerPasses)

#include "tst_schedulerpasses.moc"
