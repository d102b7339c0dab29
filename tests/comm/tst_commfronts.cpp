// The fronts of the three threads: under which name their news come, and how a pass without a report ends.

#include "comm/commfronts.h"
#include "tests/comm/commnews.h"
#include "tests/comm/drivebus.h"

#include <QElapsedTimer>
#include <QtTest>

class TestCommFronts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newsOfTransferBearItsName();
    void newsOfPollingPassBearItsName();
    void newsOfScanBearItsName();
    void transferAndPollingWaitAsLongAsTransferTimeoutSays();
    void scanWaitsAsLongAsScanningTimeoutSays();

    void passLastsUntilItsEndIsReported();
    void startDuringPassDoesNothing();
    void secondScanDuringScanDoesNothing();
    void refusalDuringPassLeavesPass();
    void passReportedAsEndedBeforeItsTimeStillHasStack();
    void everyPollingPassSendsWholeStack();
    void stopCutsPassShort();

    void firstStopBeforeAnyPassGivesAbortedDefaultRecord();
    void laterStopsBeforeAnyPassGiveNoRecord();
    void stopAfterPassGivesNoRecord();
    void passWithoutReportGivesRecordOfItsStartAsAborted();
    void errorInRecordOfStartStaysWhenPassGivesNone();

    void endOfProgramWaitsForPassAndDropsItsNews();

private:
    Z7Device abortedScanRecord(const Z7Device &device);

    std::unique_ptr<DriveBus> bus;
    std::unique_ptr<CommNews> news;
};

void TestCommFronts::init()
{
    bus = std::make_unique<DriveBus>();
    setTimeout(1000);
    setTimeoutScanning(1);
}

void TestCommFronts::cleanup()
{
    news.reset();
    bus.reset();
}

void TestCommFronts::newsOfTransferBearItsName()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    front.start(std::make_unique<Status>(DriveBus::drive3()));
    QTRY_VERIFY(news->has("transfer terminated"));
    const QStringList expected {
        "transfer started 14", "transfer progress 14", "transfer record 0", "transfer terminated"};
    QCOMPARE(news->events(), expected);
    QCOMPARE(news->startRecords().first().address, 3);
    QVERIFY(news->lastRecord().isAccessGranted());
}

void TestCommFronts::newsOfPollingPassBearItsName()
{
    Status stack(DriveBus::drive3());
    Z7CommInterfaceDevicePolling front;
    news = std::make_unique<CommNews>(front);
    front.start(&stack);
    QTRY_VERIFY(news->has("polling terminated"));
    const QStringList expected {
        "polling started 14", "polling progress 14", "polling record 0", "polling terminated"};
    QCOMPARE(news->events(), expected);
}

void TestCommFronts::newsOfScanBearItsName()
{
    Z7CommInterfaceScanDevice front;
    news = std::make_unique<CommNews>(front);
    bus->command("remove 3");
    front.start(DriveBus::drive3());
    QTRY_VERIFY(news->has("scan terminated"));
    QCOMPARE(news->events().mid(0, 3), QStringList({"scan started 255", "scan progress 1", "scan record 1"}));
    QCOMPARE(news->events().last(), QStringLiteral("scan terminated"));
    QCOMPARE(news->count("scan record 1"), 255);
}

void TestCommFronts::transferAndPollingWaitAsLongAsTransferTimeoutSays()
{
    bus->command("fault 3 no-answer");
    setTimeout(100);
    setTimeoutScanning(60000);
    Z7CommInterfaceTransferTelegramStack transfer;
    CommNews transferNews(transfer);
    transfer.start(std::make_unique<Probe>(DriveBus::drive3()));
    QTRY_VERIFY(transferNews.has("transfer record 1"));
    QTRY_VERIFY(!transfer.isPassUnderWay());

    Probe stack(DriveBus::drive3());
    Z7CommInterfaceDevicePolling polling;
    CommNews pollingNews(polling);
    polling.start(&stack);
    QTRY_VERIFY(pollingNews.has("polling record 1"));
}

void TestCommFronts::scanWaitsAsLongAsScanningTimeoutSays()
{
    setTimeout(60000);
    Z7CommInterfaceScanDevice front;
    news = std::make_unique<CommNews>(front);
    front.start(DriveBus::drive3());
    QTRY_VERIFY(news->has("scan terminated"));
}

void TestCommFronts::passLastsUntilItsEndIsReported()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    bool underWayAtRecord = false;
    connect(&front, &Z7CommInterfaceFront::DeviceUpdate, this,
        [&] { underWayAtRecord = front.isPassUnderWay(); });
    QVERIFY(!front.isPassUnderWay());
    front.start(std::make_unique<Probe>(DriveBus::drive3()));
    QVERIFY(front.isPassUnderWay());
    QTRY_VERIFY(news->has("transfer terminated"));
    QVERIFY(underWayAtRecord);
    QVERIFY(!front.isPassUnderWay());
}

void TestCommFronts::startDuringPassDoesNothing()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    front.start(std::make_unique<Status>(DriveBus::drive3()));
    front.start(std::make_unique<Probe>(DriveBus::drive3()));
    QTRY_VERIFY(news->has("transfer terminated"));
    QCOMPARE(news->count("transfer started"), 1);
    QCOMPARE(bus->requests().size(), 14);
}

void TestCommFronts::secondScanDuringScanDoesNothing()
{
    Z7CommInterfaceScanDevice front;
    news = std::make_unique<CommNews>(front);
    front.start(DriveBus::drive3());
    front.start(DriveBus::drive3());
    QTRY_VERIFY(news->has("scan terminated"));
    QCOMPARE(news->count("scan started"), 1);
    QCOMPARE(bus->requests().size(), 255);
}

void TestCommFronts::refusalDuringPassLeavesPass()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    front.start(std::make_unique<Probe>(DriveBus::drive3()));
    front.refuse(DriveBus::drive3());
    QCOMPARE(news->events(), QStringList());
    QTRY_VERIFY(news->has("transfer terminated"));
    QVERIFY(news->has("transfer record 0"));
}

void TestCommFronts::passReportedAsEndedBeforeItsTimeStillHasStack()
{
    Status stack(DriveBus::drive3());
    Z7CommInterfaceDevicePolling front;
    news = std::make_unique<CommNews>(front);
    front.start(&stack);
    QTRY_VERIFY(news->has("polling progress"));
    front.postTransactionTerminated();
    QVERIFY(front.isPassUnderWay());
    front.start(&stack); // the thread is using it
    QTRY_VERIFY(news->has("polling record 0"));
    QTRY_VERIFY(!front.isPassUnderWay());
    QCOMPARE(news->count("polling started"), 1);
    QCOMPARE(bus->requests().size(), 14);
}

void TestCommFronts::everyPollingPassSendsWholeStack()
{
    Status stack(DriveBus::drive3());
    Z7CommInterfaceDevicePolling front;
    news = std::make_unique<CommNews>(front);
    bus->command("fault 3 flip count=1 skip=2");
    front.start(&stack);
    QTRY_VERIFY(news->has("polling terminated"));
    QCOMPARE(news->lastRecord().error, int(TelegramError::WrongChecksum));
    QCOMPARE(bus->requests().size(), 3);
    bus->forgetWire();
    front.start(&stack);
    QTRY_COMPARE(news->count("polling terminated"), 2);
    QCOMPARE(news->lastRecord().error, 0);
    QCOMPARE(bus->requests().size(), 14);
    QCOMPARE(bus->requests().mid(0, 3), QByteArrayList({AccessWith3, AccessWith3, "05 03 5d"}));
}

void TestCommFronts::stopCutsPassShort()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    front.start(std::make_unique<Status>(DriveBus::drive3()));
    QTRY_VERIFY(news->has("transfer progress"));
    front.stop();
    QVERIFY2(front.isPassUnderWay(), "the telegram on its way is waited for");
    QTRY_VERIFY(news->has("transfer terminated"));
    QCOMPARE(news->count("transfer record 0"), 1);
    QVERIFY(bus->requests().size() < 14);
}

void TestCommFronts::firstStopBeforeAnyPassGivesAbortedDefaultRecord()
{
    Z7CommInterfaceDevicePolling front;
    news = std::make_unique<CommNews>(front);
    front.stop();
    const QStringList expected {"polling record 19", "polling terminated"};
    QCOMPARE(news->events(), expected);
    QVERIFY(news->lastRecord().portInfo.portName().isEmpty());
    QCOMPARE(news->lastRecord().softwareVersion, Z7Device::unknownVersion());
    QCOMPARE(news->lastRecord().address, 1);
}

void TestCommFronts::laterStopsBeforeAnyPassGiveNoRecord()
{
    Z7CommInterfaceDevicePolling front;
    front.stop();
    news = std::make_unique<CommNews>(front);
    front.stop();
    QCOMPARE(news->events(), QStringList {"polling terminated"});
}

void TestCommFronts::stopAfterPassGivesNoRecord()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    front.start(std::make_unique<Probe>(DriveBus::drive3()));
    QTRY_VERIFY(news->has("transfer terminated"));
    news->clear();
    front.stop();
    QCOMPARE(news->events(), QStringList {"transfer terminated"});
}

// A scan that is stopped before its first address reports none. Whether the stop comes in time is a matter of
// luck, hence the attempts.
Z7Device TestCommFronts::abortedScanRecord(const Z7Device &device)
{
    for (int attempt = 0; attempt < 50; ++attempt) {
        Z7CommInterfaceScanDevice front;
        news = std::make_unique<CommNews>(front);
        front.start(device);
        front.stop();
        const bool ended = QTest::qWaitFor([this] { return news->has("scan terminated"); });
        if (ended && !news->has("scan progress"))
            return news->lastRecord();
    }
    return {};
}

void TestCommFronts::passWithoutReportGivesRecordOfItsStartAsAborted()
{
    const Z7Device record = abortedScanRecord(DriveBus::drive3());
    QCOMPARE(record.error, int(TelegramError::TransactionAborted));
    QCOMPARE(record.address, 3);
    const QStringList expected {"scan started 255", "scan record 19", "scan terminated"};
    QCOMPARE(news->events(), expected);
}

void TestCommFronts::errorInRecordOfStartStaysWhenPassGivesNone()
{
    Z7Device device = DriveBus::drive3();
    device.setDeviceError(TelegramError::InvalidPassword);
    QCOMPARE(abortedScanRecord(device).error, int(TelegramError::InvalidPassword));
}

void TestCommFronts::endOfProgramWaitsForPassAndDropsItsNews()
{
    Z7CommInterfaceTransferTelegramStack front;
    news = std::make_unique<CommNews>(front);
    front.start(std::make_unique<Status>(DriveBus::drive3()));
    QTRY_VERIFY(!bus->requests().isEmpty());
    news->clear();
    front.stopAndWait();
    QVERIFY(!front.isPassUnderWay());
    QVERIFY(!DriveBus::isPortInUse());
    QCoreApplication::processEvents();
    QCOMPARE(news->events(), QStringList());
}

QTEST_GUILESS_MAIN(TestCommFronts)

#include "tst_commfronts.moc"
