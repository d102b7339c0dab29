// The rhythm of polling, and how it comes and goes with the option pollingInterval.

#include "control/services/options.h"
#include "tests/comm/schedulerbench.h"

#include <QElapsedTimer>
#include <QtTest>

class TestSchedulerPolling : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void firstPassComesOneIntervalAfterRequest();
    void intervalIsPauseBetweenTwoPasses();
    void changedIntervalHoldsFromNextPauseOn();
    void endOfPassIsNotReportedAsTerminated();
    void failedPassIsFollowedByNext();
    void everyPassReadsWholeStackAgain();
    void pollingRequestedDuringTransferWaitsForItsEnd();
    void pollingRequestedDuringScanStopsIt();

    void intervalOf0StartsNoPass();
    void intervalAbove0BringsPollingBackByItself();
    void intervalOf0EndsPollingAtNextPass();
    void transferWhilePollingIsHeldOffStartsAtOnce();
    void pollingComingBackWaitsForTransferUnderWay();
    void pollingComingBackStopsScanUnderWay();
    void pollingDoesNotComeBackInPlaceOfWaitingScan();
    void newPollingStackEndsHoldOff();
    void pausesAreKeptToMillisecond_data();
    void pausesAreKeptToMillisecond();
    void lookAtOptionComesEverySecond();
    void heldOffPollingWithNewStackDoesNotComeBackSecondTime();
    void slotForSuccessorDoesNothingWithoutOne();

private:
    void holdPollingOff();

    std::unique_ptr<SchedulerBench> bench;
};

/// Polling is wanted, but the option forbids it.
void TestSchedulerPolling::holdPollingOff()
{
    setPollingInterval(0);
    bench->poll<Probe>();
}

void TestSchedulerPolling::firstPassComesOneIntervalAfterRequest()
{
    setPollingInterval(300);
    QElapsedTimer timer;
    timer.start();
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling started"));
    QVERIFY(timer.elapsed() >= 295);
}

void TestSchedulerPolling::intervalIsPauseBetweenTwoPasses()
{
    setPollingInterval(200);
    bench->poll<Status>();
    QTRY_VERIFY(bench->requestCount() > 14);
    const auto wire = bench->bus.wire();
    const qint64 pauseMs = (wire.at(28).us - wire.at(27).us) / 1000; // last reply, first request
    QVERIFY2(pauseMs >= 200, qPrintable(QString::number(pauseMs)));
}

void TestSchedulerPolling::changedIntervalHoldsFromNextPauseOn()
{
    bench->poll<Probe>();
    setPollingInterval(3600000);
    QTRY_VERIFY(bench->has("polling record"));
    QTest::qWait(100);
    QCOMPARE(bench->count("polling started"), 1);
}

void TestSchedulerPolling::endOfPassIsNotReportedAsTerminated()
{
    bench->poll<Probe>();
    QTRY_VERIFY(bench->count("polling started") >= 3);
    const QStringList pass {"polling started 1", "polling progress 1", "polling record 0", "all terminated"};
    QCOMPARE(bench->news.events().mid(0, 8), pass + pass);
}

void TestSchedulerPolling::failedPassIsFollowedByNext()
{
    bench->bus.command("fault 3 flip count=2");
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling record 0"));
    QCOMPARE(bench->count("polling record 8"), 2);
}

void TestSchedulerPolling::everyPassReadsWholeStackAgain()
{
    bench->poll<Status>();
    QTRY_VERIFY(bench->count("polling record 0") >= 2);
    QVERIFY(bench->count("polling progress 14") >= 2);
    const QByteArrayList requests = bench->bus.requests();
    QCOMPARE(requests.mid(14, 14), requests.mid(0, 14));
}

void TestSchedulerPolling::pollingRequestedDuringTransferWaitsForItsEnd()
{
    bench->transfer<Status>();
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling record 0"));
    const QStringList expected {"transfer started 14", "transfer progress 14", "transfer record 0",
        "all terminated", "polling started 1"};
    QCOMPARE(bench->news.events().mid(0, 5), expected);
    QVERIFY2(!bench->has("transfer terminated"), "something took its place");
}

void TestSchedulerPolling::pollingRequestedDuringScanStopsIt()
{
    setTimeoutScanning(20);
    bench->scan();
    QTRY_VERIFY(bench->has("scan record"));
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling record 0"));
    QVERIFY(bench->count("scan record") < 255);
    QVERIFY2(!bench->has("scan terminated"), "something took its place");
}

void TestSchedulerPolling::intervalOf0StartsNoPass()
{
    holdPollingOff();
    QTest::qWait(1200); // beyond the first look at the option
    QCOMPARE(bench->news.events(), QStringList());
}

void TestSchedulerPolling::intervalAbove0BringsPollingBackByItself()
{
    holdPollingOff();
    setPollingInterval(10);
    QTRY_VERIFY(bench->count("polling record 0") >= 2);
}

void TestSchedulerPolling::intervalOf0EndsPollingAtNextPass()
{
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling record"));
    setPollingInterval(0);
    QTest::qWait(100); // one more pass may have been due
    const int requests = bench->requestCount();
    QTest::qWait(200);
    QCOMPARE(bench->requestCount(), requests);
    setPollingInterval(10);
    QTRY_VERIFY(bench->requestCount() > requests);
}

void TestSchedulerPolling::transferWhilePollingIsHeldOffStartsAtOnce()
{
    holdPollingOff();
    bench->transfer<Probe>();
    QTRY_VERIFY(bench->has("transfer terminated"));
    const QStringList expected {"polling record 19", "all terminated", "transfer started 1",
        "transfer record 0", "all terminated", "transfer terminated", "all terminated"};
    QCOMPARE(bench->news.milestones(), expected);
}

void TestSchedulerPolling::pollingComingBackWaitsForTransferUnderWay()
{
    bench->bus.command("fault 3 late ms=100");
    holdPollingOff();
    bench->transfer<Status>(); // lasts longer than a second
    setPollingInterval(10);
    QTRY_VERIFY(bench->has("polling started"));
    QVERIFY(bench->has("transfer progress 14"));
    QVERIFY2(!bench->has("transfer terminated"), "polling was waiting before its end");
}

void TestSchedulerPolling::pollingComingBackStopsScanUnderWay()
{
    setTimeoutScanning(20); // the scan lasts five seconds
    holdPollingOff();
    bench->scan();
    setPollingInterval(10);
    QTRY_VERIFY(bench->has("polling record 0"));
    QVERIFY(bench->count("scan record") < 255);
}

void TestSchedulerPolling::pollingDoesNotComeBackInPlaceOfWaitingScan()
{
    bench->bus.command("fault 3 late ms=100");
    holdPollingOff();
    bench->transfer<Status>(); // lasts longer than a second
    bench->scan();
    setPollingInterval(10);
    QTRY_VERIFY(bench->has("scan started"));
    QVERIFY(!bench->has("polling started"));
    QTRY_VERIFY(bench->has("polling started"));
}

void TestSchedulerPolling::newPollingStackEndsHoldOff()
{
    holdPollingOff();
    const QSignalSpy looks(bench->scheduler->findChild<QTimer *>("pollingTimer"), SIGNAL(timeout()));
    QVERIFY(looks.isValid());
    setPollingInterval(10);
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling started"));
    QVERIFY2(looks.isEmpty(), "it did not wait for the next look at the option");
}

void TestSchedulerPolling::pausesAreKeptToMillisecond_data()
{
    QTest::addColumn<QString>("timer");
    QTest::newRow("between two passes") << "pauseBetweenPasses";
    QTest::newRow("between two looks at the option") << "pollingTimer";
}

void TestSchedulerPolling::pausesAreKeptToMillisecond()
{
    QFETCH(QString, timer);
    const auto *pause = bench->scheduler->findChild<QTimer *>(timer);
    QVERIFY(pause);
    QCOMPARE(pause->timerType(), Qt::PreciseTimer);
}

void TestSchedulerPolling::lookAtOptionComesEverySecond()
{
    const auto *looks = bench->scheduler->findChild<QTimer *>("pollingTimer");
    QVERIFY(looks);
    QVERIFY(!looks->isActive());
    holdPollingOff();
    QVERIFY(looks->isActive());
    QVERIFY(!looks->isSingleShot());
    QCOMPARE(looks->interval(), 1000);
}

void TestSchedulerPolling::heldOffPollingWithNewStackDoesNotComeBackSecondTime()
{
    setTimeoutScanning(20); // the scan lasts five seconds
    holdPollingOff();
    setPollingInterval(10);
    bench->poll<Probe>();
    bench->scan();
    QTest::qWait(1200); // beyond the next look at the option
    QVERIFY2(!bench->has("polling started"), "it would have stopped the scan");
}

void TestSchedulerPolling::slotForSuccessorDoesNothingWithoutOne()
{
    bench->scheduler->startNextThreadID();
    QTest::qWait(50);
    QCOMPARE(bench->news.events(), QStringList());
}

QTEST_GUILESS_MAIN(TestSchedulerPolling)

#include "tst_schedulerpolling.moc"
