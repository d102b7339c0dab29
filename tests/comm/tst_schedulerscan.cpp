// When a requested scan gets the bus, and what follows it.

#include "tests/comm/schedulerbench.h"

#include <QtTest>

class TestSchedulerScan : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void scanOnFreeBusStartsAtOnce();
    void scanDuringTransferWaitsForItsEnd();
    void scanDuringPollingPassCutsItShortAndFollows();
    void scanInPollingPauseStartsAtOnce();
    void newScanStopsScanUnderWay();
    void lastOfTwoScansWaitingForTransferWins();
    void pollingTakesPlaceOfScanThatWaitsForTransfer();
    void scanTakesPlaceOfPollingThatWaitsForTransfer();
    void pollingComesBackAfterScan();
    void scanForgetsStateOfRecord();

private:
    QStringList milestones() const { return bench->news.milestones(); }

    std::unique_ptr<SchedulerBench> bench;
};

void TestSchedulerScan::scanOnFreeBusStartsAtOnce()
{
    bench->bus.command("remove 3");
    bench->scan();
    QTRY_VERIFY(bench->has("scan terminated"));
    const QStringList expected {"scan started 255", "all terminated", "scan terminated", "all terminated"};
    QCOMPARE(milestones(), expected);
    QCOMPARE(bench->count("scan record 1"), 255);
}

void TestSchedulerScan::scanDuringTransferWaitsForItsEnd()
{
    bench->transfer<Status>();
    bench->scan();
    QTRY_VERIFY(bench->has("scan started"));
    const QStringList expected {"transfer started 14", "transfer progress 14", "transfer record 0",
        "all terminated", "scan started 255"};
    QCOMPARE(bench->news.events().mid(0, 5), expected);
    QVERIFY2(!bench->has("transfer terminated"), "something took its place");
}

void TestSchedulerScan::scanDuringPollingPassCutsItShortAndFollows()
{
    QVERIFY(bench->reachPollingPass());
    bench->scan();
    QTRY_VERIFY(bench->has("scan started"));
    const QStringList expected {"polling record 0", "all terminated", "scan started 255"};
    QCOMPARE(milestones().mid(0, 3), expected);
}

void TestSchedulerScan::scanInPollingPauseStartsAtOnce()
{
    QVERIFY(bench->reachPollingPause());
    bench->scan();
    QTRY_VERIFY(bench->has("scan terminated"));
    QCOMPARE(milestones().mid(0, 2), QStringList({"all terminated", "scan started 255"}));
    QVERIFY(!bench->has("polling started"));
}

void TestSchedulerScan::newScanStopsScanUnderWay()
{
    setTimeoutScanning(20);
    bench->scan();
    QTRY_VERIFY(bench->has("scan record"));
    setTimeoutScanning(1);
    bench->scan();
    QTRY_VERIFY(bench->has("scan terminated"));
    QCOMPARE(bench->count("scan started"), 2);
    QCOMPARE(bench->count("scan terminated"), 1);
    QVERIFY(bench->requestCount() < 2 * 255);
}

void TestSchedulerScan::lastOfTwoScansWaitingForTransferWins()
{
    bench->transfer<Status>();
    bench->scan(DriveBus::drive3());
    bench->scan(DriveBus::driveOnDeadPort());
    QTRY_VERIFY(bench->has("scan terminated"));
    QCOMPARE(bench->count("scan started"), 1);
    QVERIFY(bench->has("scan record 3"));
    QCOMPARE(bench->requestCount(), 14); // those of the transfer
}

void TestSchedulerScan::pollingTakesPlaceOfScanThatWaitsForTransfer()
{
    bench->transfer<Status>();
    bench->scan();
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling record 0"));
    QVERIFY(!bench->has("scan started"));
    QVERIFY(bench->has("transfer progress 14"));
}

void TestSchedulerScan::scanTakesPlaceOfPollingThatWaitsForTransfer()
{
    bench->transfer<Status>();
    bench->poll<Probe>();
    bench->scan();
    QTRY_VERIFY(bench->has("polling started"));
    const QStringList events = milestones();
    QVERIFY(events.indexOf(QStringLiteral("scan terminated"))
        < events.indexOf(QStringLiteral("polling started 1")));
    QVERIFY(bench->has("scan started"));
}

void TestSchedulerScan::pollingComesBackAfterScan()
{
    QVERIFY(bench->reachPollingPause());
    setPollingInterval(10);
    bench->scan();
    QTRY_VERIFY(bench->has("polling record"));
    const QStringList events = milestones();
    QVERIFY(events.indexOf(QStringLiteral("scan terminated"))
        < events.indexOf(QStringLiteral("polling started 1")));
}

void TestSchedulerScan::scanForgetsStateOfRecord()
{
    Z7Device device = DriveBus::drive3();
    device.setAccessGranted(true);
    device.setDeviceError(TelegramError::WrongChecksum);
    bench->scan(device);
    QTRY_VERIFY(bench->has("scan started"));
    const Z7Device announced = bench->news.startRecords().first();
    QCOMPARE(announced.error, 0);
    QVERIFY(!announced.isConnected());
    QVERIFY(!announced.isAccessGranted());
    QTRY_VERIFY(bench->has("scan record 1"));
}

QTEST_GUILESS_MAIN(TestSchedulerScan)

#include "tst_schedulerscan.moc"
