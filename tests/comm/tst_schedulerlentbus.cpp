// The bus in the hands of another program: nothing of ours starts on it, and nobody waits for ever.

#include "tests/comm/schedulerbench.h"

#include <QtTest>

namespace {

/// A request that is not polling.
enum Request { Transfer, Scan };

/// More than ten polling intervals of the bench, or one look at the option that holds polling off.
constexpr int manyIntervalsMs = 150;
constexpr int oneLookAtTheOptionMs = 1200;

} // namespace
Q_DECLARE_METATYPE(Request)

class TestSchedulerLentBus : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void requestOnLentBusEndsAtOnceAsAborted_data();
    void requestOnLentBusEndsAtOnceAsAborted();
    void abortedRecordIsThatOfRequestWhateverErrorItHad_data();
    void abortedRecordIsThatOfRequestWhateverErrorItHad();
    void refusedTransferIsForgotten();
    void refusedRequestIsNotMadeUpForAfterReturn_data();
    void refusedRequestIsNotMadeUpForAfterReturn();
    void requestRunsAgainAfterReturn();
    void refusedRequestLeavesPollingThatWaits_data();
    void refusedRequestLeavesPollingThatWaits();
    void requestAtEndOfAllTrafficIsRefusedBesideWaitingPolling();

    void transferUnderWayEndsAsEverAndNothingFollows();
    void scanUnderWayEndsAsEverAndNothingFollows();
    void waitingScanIsRefusedAtEndOfTransfer();
    void waitingTransferIsRefusedAtEndOfPollingPass();
    void scanDuringTransferIsRefusedAtOnceAndTransferGoesOn();
    void secondTransferDuringTransferIsRefusedAtItsEnd();
    void secondScanDuringScanIsRefusedAtItsEnd();

    void pollingInItsPauseWaitsForReturn();
    void pollingPassUnderWayIsLastUntilReturn();
    void pollingAfterTransferWaitsForReturn();
    void pollingGoesOnOneIntervalAfterReturn();
    void stackThatCameMeanwhileIsOnePolledAfterReturn();
    void stackThatCameDuringLastTransferIsPolledAfterReturn();
    void stackForWhichOptionHoldsPollingOffIsHeldOffAfterReturn();
    void heldOffPollingComesBackOnlyAfterReturn();
    void pollingThatWasNeverWantedDoesNotStart();
    void slotsThatStartThreadsStartNone();

    void cancelGivesUpPollingThatWaits();
    void cancelOnLentBusWithoutTrafficIsReportedAtOnce();
    void cancelledTransferEndsAsEverOnLentBus();
    void endOfProgramComesOnLentBusToo();
    void lendingTwiceIsLikeOnce();
    void givingBackTwiceDoesNotPutPollingOff();

private:
    void lend() { bench->scheduler->setBusLent(true); }
    void giveBack() { bench->scheduler->setBusLent(false); }
    void ask(Request request, const Z7Device &device = DriveBus::drive3());
    void lendAtTheRecordOfATransfer();
    void askAtTheEndOfAllTraffic(Request request);
    void verifyNothingStarts(int ms = manyIntervalsMs);
    QStringList events() const { return bench->news.events(); }

    std::unique_ptr<SchedulerBench> bench;
};

void TestSchedulerLentBus::ask(Request request, const Z7Device &device)
{
    if (request == Transfer)
        bench->transfer<Probe>(device);
    else
        bench->scan(device);
}

/// As the controller does when the drive has taken the bootloader command. Waits for the end of the transfer.
void TestSchedulerLentBus::lendAtTheRecordOfATransfer()
{
    const auto lending = connect(bench->scheduler.get(), &Z7CommunicationInterface::DeviceUpdate, this,
        [this](Z7CommInterface::ThreadID threadID) {
            if (threadID == Z7CommInterface::TransferTelegramStack)
                lend();
        });
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    disconnect(lending);
}

void TestSchedulerLentBus::askAtTheEndOfAllTraffic(Request request)
{
    const auto answer = std::make_shared<QMetaObject::Connection>();
    *answer = connect(bench->scheduler.get(), &Z7CommunicationInterface::allCommunicationTerminated, this,
        [this, request, answer] {
            disconnect(*answer);
            ask(request);
        });
}

void TestSchedulerLentBus::verifyNothingStarts(int ms)
{
    bench->news.clear();
    bench->bus.forgetWire();
    QTest::qWait(ms);
    QCOMPARE(events(), QStringList());
    QCOMPARE(bench->requestCount(), 0);
}

static void addRequests()
{
    QTest::addColumn<Request>("request");
    QTest::addColumn<QString>("name");
    QTest::newRow("transfer") << Transfer << "transfer";
    QTest::newRow("scan") << Scan << "scan";
}

void TestSchedulerLentBus::requestOnLentBusEndsAtOnceAsAborted_data()
{
    addRequests();
}

void TestSchedulerLentBus::requestOnLentBusEndsAtOnceAsAborted()
{
    QFETCH(Request, request);
    QFETCH(QString, name);
    lend();
    ask(request);
    const QStringList expected {name + " record 19", name + " terminated", "all terminated"};
    QCOMPARE(events(), expected);
    verifyNothingStarts();
}

void TestSchedulerLentBus::abortedRecordIsThatOfRequestWhateverErrorItHad_data()
{
    addRequests();
}

void TestSchedulerLentBus::abortedRecordIsThatOfRequestWhateverErrorItHad()
{
    QFETCH(Request, request);
    Z7Device device = DriveBus::drive(7, 4711);
    device.setAccessGranted(true);
    device.setDeviceError(TelegramError::InvalidPassword);
    lend();
    ask(request, device);
    QCOMPARE(bench->news.records().size(), 1);
    const Z7Device record = bench->news.lastRecord();
    QCOMPARE(record.error, int(TelegramError::TransactionAborted));
    QCOMPARE(record.deviceId(), device.deviceId());
    QCOMPARE(record.password, 4711);
    QVERIFY(record.isAccessGranted());
}

void TestSchedulerLentBus::refusedTransferIsForgotten()
{
    lend();
    QVERIFY(bench->transfer<Probe>().expired());
}

void TestSchedulerLentBus::refusedRequestIsNotMadeUpForAfterReturn_data()
{
    addRequests();
}

void TestSchedulerLentBus::refusedRequestIsNotMadeUpForAfterReturn()
{
    QFETCH(Request, request);
    lend();
    ask(request);
    giveBack();
    verifyNothingStarts();
}

void TestSchedulerLentBus::requestRunsAgainAfterReturn()
{
    lend();
    ask(Transfer);
    giveBack();
    bench->news.clear();
    ask(Transfer);
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(bench->has("transfer record 0"));
}

void TestSchedulerLentBus::refusedRequestLeavesPollingThatWaits_data()
{
    addRequests();
}

void TestSchedulerLentBus::refusedRequestLeavesPollingThatWaits()
{
    QFETCH(Request, request);
    QFETCH(QString, name);
    bench->poll<Probe>();
    lend();
    ask(request);
    const QStringList expected {name + " record 19", name + " terminated"};
    QCOMPARE(events(), expected);
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::requestAtEndOfAllTrafficIsRefusedBesideWaitingPolling()
{
    bench->transfer<Probe>();
    bench->poll<Status>(); // waits for the end of the transfer
    lend();
    askAtTheEndOfAllTraffic(Scan);
    QTRY_VERIFY(bench->has("all terminated"));
    QVERIFY(bench->has("scan record 19"));
    QVERIFY(bench->has("scan terminated"));
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::transferUnderWayEndsAsEverAndNothingFollows()
{
    lendAtTheRecordOfATransfer();
    const QStringList expected {"transfer started 1", "transfer progress 1", "transfer record 0",
        "all terminated", "transfer terminated", "all terminated"};
    QCOMPARE(events(), expected);
    verifyNothingStarts();
}

void TestSchedulerLentBus::scanUnderWayEndsAsEverAndNothingFollows()
{
    bench->bus.command("remove 3");
    bench->scan();
    QTRY_VERIFY(bench->has("scan record"));
    lend();
    QTRY_VERIFY(bench->has("scan terminated"));
    const QStringList expected {"scan started 255", "all terminated", "scan terminated", "all terminated"};
    QCOMPARE(bench->news.milestones(), expected);
    QCOMPARE(bench->count("scan record 1"), 255);
}

void TestSchedulerLentBus::waitingScanIsRefusedAtEndOfTransfer()
{
    bench->transfer<Probe>();
    bench->scan();
    lend();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"transfer started 1", "transfer record 0", "all terminated", "scan record 19",
        "scan terminated", "all terminated", "transfer terminated", "all terminated"};
    QCOMPARE(bench->news.milestones(), expected);
    verifyNothingStarts();
}

void TestSchedulerLentBus::waitingTransferIsRefusedAtEndOfPollingPass()
{
    QVERIFY(bench->reachPollingPass());
    const auto waiting = bench->transfer<Probe>();
    lend();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {
        "polling record 0", "all terminated", "transfer record 19", "transfer terminated"};
    QCOMPARE(bench->news.milestones(), expected);
    QVERIFY(waiting.expired());
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::scanDuringTransferIsRefusedAtOnceAndTransferGoesOn()
{
    bench->transfer<Status>();
    lend();
    bench->scan();
    QCOMPARE(events(), QStringList({"scan record 19", "scan terminated"}));
    QTRY_VERIFY(bench->has("transfer terminated"));
    QVERIFY(bench->has("transfer progress 14"));
    QVERIFY(bench->has("transfer record 0"));
}

void TestSchedulerLentBus::secondTransferDuringTransferIsRefusedAtItsEnd()
{
    bench->transfer<Status>();
    lend();
    const auto second = bench->transfer<Probe>();
    QCOMPARE(events(), QStringList());
    QTRY_COMPARE(bench->count("transfer terminated"), 2);
    QVERIFY(events().indexOf("transfer record 0") < events().indexOf("transfer record 19"));
    QCOMPARE(bench->count("transfer record"), 2);
    QVERIFY(second.expired());
    verifyNothingStarts();
}

void TestSchedulerLentBus::secondScanDuringScanIsRefusedAtItsEnd()
{
    setTimeoutScanning(20);
    bench->scan();
    QTRY_VERIFY(bench->has("scan record"));
    lend();
    bench->scan();
    QTRY_COMPARE(bench->count("scan terminated"), 2);
    QCOMPARE(bench->count("scan started"), 1);
    QCOMPARE(bench->count("scan record 19"), 1);
    verifyNothingStarts();
}

void TestSchedulerLentBus::pollingInItsPauseWaitsForReturn()
{
    bench->poll<Probe>(); // the pause before the first pass
    lend();
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::pollingPassUnderWayIsLastUntilReturn()
{
    QVERIFY(bench->reachPollingPass());
    lend();
    QTRY_VERIFY(bench->has("all terminated"));
    QVERIFY(bench->has("polling record 0"));
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::pollingAfterTransferWaitsForReturn()
{
    QVERIFY(bench->reachPollingPause());
    setPollingInterval(10);
    lendAtTheRecordOfATransfer();
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::pollingGoesOnOneIntervalAfterReturn()
{
    bench->poll<Probe>();
    lend();
    setPollingInterval(3600000); // too long for any test
    giveBack();
    verifyNothingStarts();
}

void TestSchedulerLentBus::stackThatCameMeanwhileIsOnePolledAfterReturn()
{
    bench->poll<Probe>();
    lend();
    bench->poll<Status>();
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
    QCOMPARE(bench->count("polling started 1"), 0);
    QVERIFY(bench->has("polling started 14"));
}

void TestSchedulerLentBus::stackThatCameDuringLastTransferIsPolledAfterReturn()
{
    bench->transfer<Probe>();
    bench->poll<Status>();
    lend();
    QTRY_VERIFY(bench->has("all terminated"));
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling started 14"));
}

void TestSchedulerLentBus::stackForWhichOptionHoldsPollingOffIsHeldOffAfterReturn()
{
    lend();
    bench->poll<Probe>();
    setPollingInterval(0);
    giveBack();
    verifyNothingStarts();
    setPollingInterval(10);
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::heldOffPollingComesBackOnlyAfterReturn()
{
    setPollingInterval(0);
    bench->poll<Probe>();
    lend();
    setPollingInterval(10);
    verifyNothingStarts(oneLookAtTheOptionMs);
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::pollingThatWasNeverWantedDoesNotStart()
{
    lend();
    giveBack();
    verifyNothingStarts();
}

void TestSchedulerLentBus::slotsThatStartThreadsStartNone()
{
    bench->poll<Probe>();
    lend();
    bench->scheduler->startPollingThread();
    bench->scheduler->startNextThreadID();
    verifyNothingStarts();
}

void TestSchedulerLentBus::cancelGivesUpPollingThatWaits()
{
    QVERIFY(bench->reachPollingPause());
    setPollingInterval(10);
    lend();
    bench->scheduler->cancelCommunication();
    const QStringList expected {"all terminated", "polling terminated", "all terminated"};
    QCOMPARE(events(), expected);
    giveBack();
    verifyNothingStarts();
}

void TestSchedulerLentBus::cancelOnLentBusWithoutTrafficIsReportedAtOnce()
{
    lend();
    bench->scheduler->cancelCommunication();
    QCOMPARE(events(), QStringList {"all terminated"});
}

void TestSchedulerLentBus::cancelledTransferEndsAsEverOnLentBus()
{
    bench->transfer<Status>();
    QTRY_VERIFY(bench->has("transfer progress"));
    lend();
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"transfer started 14", "transfer record 0", "all terminated",
        "transfer terminated", "all terminated"};
    QCOMPARE(bench->news.milestones(), expected);
    QVERIFY(bench->requestCount() < 14);
}

void TestSchedulerLentBus::endOfProgramComesOnLentBusToo()
{
    bench->transfer<Status>();
    lend();
    const auto second = bench->transfer<Probe>();
    bench->scheduler->stopAndWait();
    QVERIFY(!DriveBus::isPortInUse());
    verifyNothingStarts();
    bench->scheduler.reset();
    QVERIFY(second.expired());
}

void TestSchedulerLentBus::lendingTwiceIsLikeOnce()
{
    bench->poll<Probe>();
    lend();
    lend();
    verifyNothingStarts();
    giveBack();
    QTRY_VERIFY(bench->has("polling record 0"));
}

void TestSchedulerLentBus::givingBackTwiceDoesNotPutPollingOff()
{
    bench->poll<Probe>();
    setPollingInterval(3600000);
    giveBack(); // was never lent
    QTRY_VERIFY(bench->has("polling record 0"));
}

QTEST_GUILESS_MAIN(TestSchedulerLentBus)

#include "tst_schedulerlentbus.moc"
