// One pass of the live update's thread. What it shares with a transfer is tested there.

#include "comm/commthreads.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QtTest>

class TestPollingPass : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void passTellsItsStartEachReplyAndItsRecord();
    void passIsAnnouncedBeforePortIsOpened();
    void portIsFreeWhenRecordIsReported();
    void stackOutlivesPass();
    void stackOutlivesPortThatDoesNotOpen();
    void missingPortGivesError3InOneRecord();
    void recordWithoutPortEndsInError2();
    void secondPassOpensPortAgain();
    void cancelledPassReportsWhatItReadUntilThen();
    void threadThatGoesAwayDuringPassWaitsForItsEnd();

private:
    template<typename Stack>
    void start(const Z7Device &device);
    void awaitEnd(int passes = 1) { QTRY_COMPARE(news->count("ended"), passes); }

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<Z7TelegramStack> stack;
    std::weak_ptr<void> stackLife;
    std::unique_ptr<CommThreadDevicePolling> thread;
    std::unique_ptr<CommNews> news;
};

void TestPollingPass::init()
{
    bus = std::make_unique<DriveBus>();
    thread = std::make_unique<CommThreadDevicePolling>();
    news = std::make_unique<CommNews>(*thread);
}

void TestPollingPass::cleanup()
{
    thread.reset();
    stack.reset();
    news.reset();
    bus.reset();
}

template<typename Stack>
void TestPollingPass::start(const Z7Device &device)
{
    auto watched = std::make_unique<Stack>(device);
    stackLife = watched->life();
    stack = std::move(watched);
    thread->start(stack.get(), 1000);
}

void TestPollingPass::passTellsItsStartEachReplyAndItsRecord()
{
    start<Status>(DriveBus::drive3());
    awaitEnd();
    const QStringList expected {"started 14", "progress 14", "record 0", "ended"};
    QCOMPARE(news->events(), expected);
    QVERIFY(news->lastRecord().isAccessGranted());
}

void TestPollingPass::passIsAnnouncedBeforePortIsOpened()
{
    bus->disconnectPort();
    connect(
        thread.get(), &CommThread::transactionStarted, this, [this] { bus->connectPort(); },
        Qt::DirectConnection);
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY2(!news->lastRecord().hasError(), "the port was there in time");
}

void TestPollingPass::portIsFreeWhenRecordIsReported()
{
    std::atomic<bool> inUse {true};
    connect(
        thread.get(), &CommThread::updateDevice, this, [&inUse] { inUse = DriveBus::isPortInUse(); },
        Qt::DirectConnection);
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(!inUse);
}

void TestPollingPass::stackOutlivesPass()
{
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(!stackLife.expired());
}

void TestPollingPass::stackOutlivesPortThatDoesNotOpen()
{
    bus->disconnectPort();
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    QVERIFY(!stackLife.expired());
}

void TestPollingPass::missingPortGivesError3InOneRecord()
{
    bus->disconnectPort();
    start<Status>(DriveBus::drive3());
    awaitEnd();
    const QStringList expected {"started 14", "record 3", "ended"};
    QCOMPARE(news->events(), expected);
}

void TestPollingPass::recordWithoutPortEndsInError2()
{
    start<Status>(Z7Device());
    awaitEnd();
    const QStringList expected {"started 14", "record 2", "ended"};
    QCOMPARE(news->events(), expected);
}

void TestPollingPass::secondPassOpensPortAgain()
{
    start<Probe>(DriveBus::drive3());
    awaitEnd();
    stack->restart();
    thread->start(stack.get(), 1000);
    awaitEnd(2);
    const QStringList pass {"started 1", "progress 1", "record 0", "ended"};
    QCOMPARE(news->events(), pass + pass);
    const QByteArrayList twice {AccessWith3, AccessWith3};
    QCOMPARE(bus->requests(), twice);
}

void TestPollingPass::cancelledPassReportsWhatItReadUntilThen()
{
    bus->command("fault 3 late ms=500 command=0x05"); // the status telegram, after both access telegrams
    start<Status>(DriveBus::drive3());
    QTRY_COMPARE(bus->requests().size(), 3);
    thread->cancel();
    awaitEnd();
    QCOMPARE(bus->requests().size(), 3);
    QCOMPARE(news->count("record 0"), 1);
    QVERIFY(news->lastRecord().isAccessGranted());
}

void TestPollingPass::threadThatGoesAwayDuringPassWaitsForItsEnd()
{
    start<Status>(DriveBus::drive3());
    QTRY_VERIFY(news->has("progress"));
    thread.reset();
    QVERIFY(!DriveBus::isPortInUse());
    QVERIFY(bus->requests().size() < 14);
}

QTEST_GUILESS_MAIN(TestPollingPass)

#include "tst_pollingpass.moc"
