// When a requested transfer gets the bus, and what follows it.

#include "tests/comm/schedulerbench.h"

#include <QElapsedTimer>
#include <QtTest>

class TestSchedulerTransfer : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void transferOnFreeBusStartsAtOnce();
    void transferDuringPollingPassCutsItShortAndFollows();
    void transferInPollingPauseStartsAtOnce();
    void transferInPauseBeforeFirstPassTellsAbortedDefaultRecord();
    void noStrayPollingPassRunsBesideTransferRequestedInPause();
    void transferDuringScanStopsItAndFollows();
    void pollingComesBackOneIntervalAfterTransfer();
    void failedTransferFreesBus();
    void pollingComesBackAfterFailedTransfer();

    void errorOfRecordIsClearedAtHandOver();
    void positionOfRecordIsClearedAtHandOver();
    void stackIsDeletedAfterItsTransfer();

    void secondTransferDuringTransferIsNeverStarted();
    void secondTransferDuringTransferIsFreedWithInterface();
    void lastOfTwoWaitingTransfersWins();

private:
    QStringList milestones() const { return bench->news.milestones(); }

    std::unique_ptr<SchedulerBench> bench;
};

void TestSchedulerTransfer::transferOnFreeBusStartsAtOnce()
{
    setPollingInterval(3600000);
    bench->transfer<Status>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"transfer started 14", "transfer progress 14", "transfer record 0",
        "all terminated", "transfer terminated", "all terminated"};
    QCOMPARE(bench->news.events(), expected);
}

void TestSchedulerTransfer::transferDuringPollingPassCutsItShortAndFollows()
{
    QVERIFY(bench->reachPollingPass());
    setPollingInterval(3600000);
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"polling record 0", "all terminated", "transfer started 1",
        "transfer record 0", "all terminated", "transfer terminated"};
    QCOMPARE(milestones(), expected);
    QVERIFY2(bench->requestCount() < 14 + 1, "the pass was cut short");
}

void TestSchedulerTransfer::transferInPollingPauseStartsAtOnce()
{
    QVERIFY(bench->reachPollingPause());
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {
        "all terminated", "transfer started 1", "transfer record 0", "all terminated", "transfer terminated"};
    QCOMPARE(milestones(), expected);
}

void TestSchedulerTransfer::transferInPauseBeforeFirstPassTellsAbortedDefaultRecord()
{
    setPollingInterval(3600000);
    bench->poll<Probe>();
    bench->transfer<Probe>();
    QCOMPARE(milestones(), QStringList({"polling record 19", "all terminated"}));
    QVERIFY(bench->news.lastRecord().portInfo.portName().isEmpty());
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(bench->has("transfer record 0"));
}

void TestSchedulerTransfer::noStrayPollingPassRunsBesideTransferRequestedInPause()
{
    setPollingInterval(100);
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("all terminated"));
    bench->news.clear();
    bench->transfer<Status>(); // takes longer than the rest of the pause
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(!bench->has("polling started"));
    QVERIFY(bench->has("transfer record 0"));
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerTransfer::transferDuringScanStopsItAndFollows()
{
    setTimeoutScanning(20);
    bench->scan();
    QTRY_VERIFY(bench->has("scan record"));
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY2(!bench->has("scan terminated"), "something took its place");
    QVERIFY(bench->requestCount() < 255);
    const QStringList last {"all terminated", "transfer started 1", "transfer record 0", "all terminated",
        "transfer terminated", "all terminated"};
    QCOMPARE(milestones().mid(milestones().size() - 6), last);
}

void TestSchedulerTransfer::pollingComesBackOneIntervalAfterTransfer()
{
    QVERIFY(bench->reachPollingPause());
    bench->transfer<Probe>();
    setPollingInterval(300);
    QTRY_VERIFY(bench->has("transfer terminated"));
    QTRY_VERIFY(bench->requestCount() >= 2);
    const auto wire = bench->bus.wire();
    const qint64 pauseMs = (wire.at(2).us - wire.at(1).us) / 1000; // reply of the transfer, then the pass
    QVERIFY2(pauseMs >= 300, qPrintable(QString::number(pauseMs)));
}

void TestSchedulerTransfer::failedTransferFreesBus()
{
    bench->bus.disconnectPort();
    bench->transfer<Status>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"transfer started 14", "transfer record 3", "all terminated",
        "transfer terminated", "all terminated"};
    QCOMPARE(bench->news.events(), expected);
    bench->bus.connectPort();
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer record 0"));
}

void TestSchedulerTransfer::pollingComesBackAfterFailedTransfer()
{
    QVERIFY(bench->reachPollingPause());
    setPollingInterval(10);
    bench->bus.command("fault 3 no-answer count=1");
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer record 1"));
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerTransfer::errorOfRecordIsClearedAtHandOver()
{
    Z7Device device = DriveBus::drive3();
    device.setDeviceError(TelegramError::InvalidPassword);
    bench->transfer<Probe>(device);
    QTRY_VERIFY(bench->has("transfer record"));
    QCOMPARE(bench->news.startRecords().first().error, 0);
    QCOMPARE(bench->requestCount(), 1);
}

void TestSchedulerTransfer::positionOfRecordIsClearedAtHandOver()
{
    Z7Device device = DriveBus::drive3();
    device.actualPosition = 5.5;
    bench->transfer<Probe>(device);
    QTRY_VERIFY(bench->has("transfer record"));
    QCOMPARE(bench->news.lastRecord().actualPosition, 0.0);
}

void TestSchedulerTransfer::stackIsDeletedAfterItsTransfer()
{
    const auto stack = bench->transfer<Probe>();
    QVERIFY(!stack.expired());
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(stack.expired());
}

void TestSchedulerTransfer::secondTransferDuringTransferIsNeverStarted()
{
    bench->transfer<Status>();
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QTest::qWait(100); // more than a transfer takes to start
    QCOMPARE(bench->count("transfer started"), 1);
    QCOMPARE(bench->count("transfer terminated"), 1);
    QCOMPARE(bench->requestCount(), 14);
}

void TestSchedulerTransfer::secondTransferDuringTransferIsFreedWithInterface()
{
    bench->transfer<Status>();
    const auto second = bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    bench->scheduler.reset();
    QVERIFY(second.expired());
}

void TestSchedulerTransfer::lastOfTwoWaitingTransfersWins()
{
    QVERIFY(bench->reachPollingPass());
    const auto first = bench->transfer<Status>();
    bench->transfer<Probe>();
    QVERIFY(first.expired());
    QTRY_VERIFY(bench->has("transfer terminated"));
    QCOMPARE(bench->count("transfer started 1"), 1);
    QCOMPARE(bench->count("transfer started"), 1);
}

QTEST_GUILESS_MAIN(TestSchedulerTransfer)

#include "tst_schedulertransfer.moc"
