// The end of all communication, at the user's wish and at the end of the program.

#include "tests/comm/schedulerbench.h"

#include <QElapsedTimer>
#include <QtTest>

namespace {

enum Work { Nothing, Transfer, Scan, PollingPass, PollingPause, BabblingTransfer, BabblingScan };

// What the end may take: two time-outs, the silence behind a reply, and the cut of a babbling line; a busy
// machine gets five seconds.
constexpr int timeoutMs = 300;
constexpr int boundMs = 2 * timeoutMs + 20 + 5000;
constexpr int babbleBoundMs = boundMs + 1000;

} // namespace
Q_DECLARE_METATYPE(Work)

class TestSchedulerCancel : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void cancelOnFreeBusIsReportedAtOnce();
    void cancelledTransferIsReportedWithWhatItRead();
    void cancelledScanIsReported();
    void cancelledPollingPassIsReportedAndPollingStaysOff();
    void cancelInPollingPauseLeavesNoStrayPass();
    void cancelBeforeFirstPassTellsAbortedDefaultRecordOnce();
    void cancelDropsWaitingSuccessor();
    void cancelWhilePollingIsHeldOffIsReportedAtOnce();
    void heldOffPollingComesBackAfterCancel();
    void pollingIsOffUntilNewStackComes();
    void busIsFreeAfterCancel();
    void transferRequestedAtEndOfAllTrafficRunsAlone();
    void transferRequestedAtEndOfPassGoesBeforeWaitingOne();

    void allCommunicationIsReportedTerminatedTwiceWhenNothingFollows();
    void allCommunicationIsReportedTerminatedOnceWithSuccessorWaiting();

    void endOfProgramStopsWork_data();
    void endOfProgramStopsWork();
    void endOfProgramReportsNothing();
    void endOfProgramDropsWhatIsWaiting();

private:
    void begin(Work work);
    QStringList milestones() const { return bench->news.milestones(); }

    std::unique_ptr<SchedulerBench> bench;
};

void TestSchedulerCancel::cancelOnFreeBusIsReportedAtOnce()
{
    bench->scheduler->cancelCommunication();
    QCOMPARE(bench->news.events(), QStringList {"all terminated"});
}

void TestSchedulerCancel::cancelledTransferIsReportedWithWhatItRead()
{
    bench->transfer<Status>();
    QTRY_VERIFY(bench->has("transfer progress"));
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"transfer started 14", "transfer record 0", "all terminated",
        "transfer terminated", "all terminated"};
    QCOMPARE(milestones(), expected);
    QVERIFY(bench->requestCount() < 14);
    QVERIFY(bench->news.lastRecord().isConnected());
}

void TestSchedulerCancel::cancelledScanIsReported()
{
    bench->bus.command("remove 3");
    setTimeoutScanning(20);
    bench->scan();
    QTRY_VERIFY(bench->has("scan record"));
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("scan terminated"));
    const QStringList expected {"scan started 255", "all terminated", "scan terminated", "all terminated"};
    QCOMPARE(milestones(), expected);
    QVERIFY(bench->requestCount() < 255);
}

void TestSchedulerCancel::cancelledPollingPassIsReportedAndPollingStaysOff()
{
    QVERIFY(bench->reachPollingPass());
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("polling terminated"));
    const QStringList expected {"polling record 0", "all terminated", "polling terminated", "all terminated"};
    QCOMPARE(milestones(), expected);
    QTest::qWait(100); // ten polling intervals
    QCOMPARE(milestones(), expected);
}

void TestSchedulerCancel::cancelInPollingPauseLeavesNoStrayPass()
{
    setPollingInterval(100);
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("all terminated"));
    bench->news.clear();
    bench->scheduler->cancelCommunication();
    const QStringList expected {"all terminated", "polling terminated", "all terminated"};
    QCOMPARE(bench->news.events(), expected);
    QTest::qWait(250);
    QCOMPARE(bench->news.events(), expected);
}

void TestSchedulerCancel::cancelBeforeFirstPassTellsAbortedDefaultRecordOnce()
{
    setPollingInterval(3600000);
    bench->poll<Probe>();
    bench->scheduler->cancelCommunication();
    const QStringList end {"all terminated", "polling terminated", "all terminated"};
    QCOMPARE(bench->news.events(), QStringList {"polling record 19"} + end);
    QVERIFY(bench->news.lastRecord().portInfo.portName().isEmpty());

    bench->news.clear();
    bench->poll<Probe>();
    bench->scheduler->cancelCommunication();
    QCOMPARE(bench->news.events(), end);
}

void TestSchedulerCancel::cancelDropsWaitingSuccessor()
{
    bench->transfer<Status>();
    bench->scan();
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QTest::qWait(50);
    QVERIFY(!bench->has("scan started"));
}

void TestSchedulerCancel::cancelWhilePollingIsHeldOffIsReportedAtOnce()
{
    setPollingInterval(0);
    bench->poll<Probe>();
    bench->scheduler->cancelCommunication();
    const QStringList expected {
        "polling record 19", "all terminated", "polling terminated", "all terminated"};
    QCOMPARE(bench->news.events(), expected);
}

void TestSchedulerCancel::heldOffPollingComesBackAfterCancel()
{
    setPollingInterval(0);
    bench->poll<Probe>();
    bench->scheduler->cancelCommunication();
    setPollingInterval(10);
    QTRY_VERIFY(bench->has("polling started"));
}

void TestSchedulerCancel::pollingIsOffUntilNewStackComes()
{
    QVERIFY(bench->reachPollingPass());
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("polling terminated"));
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QTest::qWait(50);
    QVERIFY(!bench->has("polling started"));
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling started"));
}

void TestSchedulerCancel::busIsFreeAfterCancel()
{
    bench->transfer<Status>();
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("transfer terminated"));
    bench->news.clear();
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer record 0"));
}

// The page that updates the firmware answers the end of all traffic with a request of its own.
void TestSchedulerCancel::transferRequestedAtEndOfAllTrafficRunsAlone()
{
    QVERIFY(bench->reachPollingPass());
    QMetaObject::Connection answer = connect(
        bench->scheduler.get(), &Z7CommunicationInterface::allCommunicationTerminated, this, [this, &answer] {
            disconnect(answer);
            bench->transfer<Probe>();
        });
    bench->scheduler->cancelCommunication();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QCOMPARE(bench->count("transfer record 0"), 1);
    QCOMPARE(bench->count("polling record 0"), 1);
}

void TestSchedulerCancel::transferRequestedAtEndOfPassGoesBeforeWaitingOne()
{
    QVERIFY(bench->reachPollingPass());
    QMetaObject::Connection answer = connect(
        bench->scheduler.get(), &Z7CommunicationInterface::allCommunicationTerminated, this, [this, &answer] {
            disconnect(answer);
            bench->transfer<Probe>();
        });
    bench->transfer<Status>();
    QTRY_COMPARE(bench->count("transfer started 1"), 1);
    // The later request replaced the one that waited, and polling comes back behind it.
    QTRY_VERIFY(bench->count("polling started 14") >= 2);
    QCOMPARE(bench->count("transfer started 14"), 0);
}

void TestSchedulerCancel::allCommunicationIsReportedTerminatedTwiceWhenNothingFollows()
{
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    QCOMPARE(bench->count("all terminated"), 2);
}

void TestSchedulerCancel::allCommunicationIsReportedTerminatedOnceWithSuccessorWaiting()
{
    bench->bus.command("fault 3 late ms=200"); // holds the second transfer in place
    bench->scan();
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer started"));
    QCOMPARE(bench->count("all terminated"), 1);
}

void TestSchedulerCancel::begin(Work work)
{
    setTimeout(timeoutMs);
    setTimeoutScanning(timeoutMs);
    if (work == BabblingTransfer || work == BabblingScan)
        bench->bus.command("fault * babble byte=3 ms=5");
    if (work == PollingPause) {
        setPollingInterval(100);
        bench->poll<Probe>();
        QTRY_VERIFY(bench->has("polling record"));
        return;
    }
    bench->bus.command("fault 3 no-answer");
    if (work == Transfer || work == BabblingTransfer)
        bench->transfer<Status>();
    if (work == Scan || work == BabblingScan)
        bench->scan();
    if (work == PollingPass)
        bench->poll<Status>();
    if (work != Nothing)
        QTRY_VERIFY(bench->requestCount() > 0);
}

void TestSchedulerCancel::endOfProgramStopsWork_data()
{
    QTest::addColumn<Work>("work");
    QTest::addColumn<int>("bound");
    QTest::newRow("nothing to do") << Nothing << boundMs;
    QTest::newRow("during a transfer") << Transfer << boundMs;
    QTest::newRow("during a scan") << Scan << boundMs;
    QTest::newRow("during a polling pass") << PollingPass << boundMs;
    QTest::newRow("in the polling pause") << PollingPause << boundMs;
    QTest::newRow("during a transfer on a babbling line") << BabblingTransfer << babbleBoundMs;
    QTest::newRow("during a scan on a babbling line") << BabblingScan << babbleBoundMs;
}

void TestSchedulerCancel::endOfProgramStopsWork()
{
    QFETCH(Work, work);
    QFETCH(int, bound);
    begin(work);
    if (QTest::currentTestFailed())
        return;
    QElapsedTimer timer;
    timer.start();
    bench->scheduler.reset();
    QVERIFY2(timer.elapsed() < bound, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!DriveBus::isPortInUse());
    const int requests = bench->requestCount();
    QTest::qWait(150); // more than the pause of polling
    QCOMPARE(bench->requestCount(), requests);
}

void TestSchedulerCancel::endOfProgramReportsNothing()
{
    bench->transfer<Status>();
    QTRY_VERIFY(bench->has("transfer progress"));
    bench->news.clear();
    bench->scheduler->stopAndWait();
    QTest::qWait(50);
    QCOMPARE(bench->news.events(), QStringList());
}

void TestSchedulerCancel::endOfProgramDropsWhatIsWaiting()
{
    bench->transfer<Status>();
    const auto waiting = bench->poll<Probe>();
    bench->scan();
    bench->scheduler->stopAndWait();
    QTest::qWait(50);
    QCOMPARE(bench->news.events(), QStringList());
    bench->scheduler.reset();
    QVERIFY(waiting.expired());
}

QTEST_GUILESS_MAIN(TestSchedulerCancel)

#include "tst_schedulercancel.moc"
