// The user pulls the adapter while the drive is polled, and puts it back.

#include "tests/comm/schedulerbench.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QtTest>

#include <ctime>

namespace {

/// Time in ms that all threads of this process have spent computing.
qint64 processorTimeMs()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

} // namespace

class TestPulledAdapter : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<SchedulerBench>(); }
    void cleanup() { bench.reset(); }

    void adapterPulledInMidPassEndsPassAtOnce();
    void adapterPulledInPauseGivesError3AtEachPass();
    void pulledAdapterIsNoBusyLoop();
    void pollingGoesOnWhenAdapterIsPutBack();
    void transferFailsWhileAdapterIsPulledAndWorksAfterwards();
    void refusalIsToldBeforeItsRecord();

private:
    std::unique_ptr<SchedulerBench> bench;
};

void TestPulledAdapter::adapterPulledInMidPassEndsPassAtOnce()
{
    setTimeout(60000);
    bench->bus.command("fault 3 pull skip=5");
    bench->poll<Status>();
    QTRY_VERIFY(bench->has("polling record"));
    QCOMPARE(bench->news.milestones().mid(0, 2), QStringList({"polling started 14", "polling record 1"}));
    QVERIFY(bench->has("polling progress 5"));
    QCOMPARE(bench->requestCount(), 6);
}

void TestPulledAdapter::adapterPulledInPauseGivesError3AtEachPass()
{
    setPollingInterval(100);
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("all terminated"));
    bench->news.clear();
    bench->bus.pullAdapter();
    setPollingInterval(10);
    QTRY_VERIFY(bench->count("polling record") >= 3);
    QCOMPARE(bench->count("polling record 3"), bench->count("polling record"));
    QVERIFY(!bench->has("polling progress"));
}

void TestPulledAdapter::pulledAdapterIsNoBusyLoop()
{
    bench->poll<Status>();
    QTRY_VERIFY(bench->has("polling progress"));
    bench->bus.pullAdapter();
    QTRY_VERIFY(bench->has("polling record 3"));
    setPollingInterval(50);
    QTest::qWait(50);
    bench->news.clear();
    QElapsedTimer timer;
    timer.start();
    const qint64 before = processorTimeMs();
    QTest::qWait(500);
    const int mostPasses = int(timer.elapsed() / 50) + 1;
    QVERIFY2(bench->count("polling record") <= mostPasses, "no pass without its pause");
    QVERIFY2(processorTimeMs() - before < timer.elapsed() / 2, "most of the time nothing is computed");
}

void TestPulledAdapter::pollingGoesOnWhenAdapterIsPutBack()
{
    bench->poll<Probe>();
    QTRY_VERIFY(bench->has("polling record 0"));
    bench->bus.pullAdapter();
    QTRY_VERIFY(bench->has("polling record 3"));
    bench->news.clear();
    bench->bus.plugAdapterIn();
    QTRY_VERIFY(bench->has("polling record 0"));
    QVERIFY(bench->news.lastRecord().isAccessGranted());
}

void TestPulledAdapter::transferFailsWhileAdapterIsPulledAndWorksAfterwards()
{
    const Z7Device drive3 = DriveBus::drive3();
    bench->bus.pullAdapter();
    bench->transfer<Probe>(drive3);
    QTRY_VERIFY(bench->has("transfer record 3"));
    QTRY_VERIFY(bench->has("transfer terminated"));
    bench->bus.plugAdapterIn();
    bench->transfer<Probe>(drive3);
    QTRY_VERIFY(bench->has("transfer record 0"));
}

void TestPulledAdapter::refusalIsToldBeforeItsRecord()
{
    const Z7Device drive3 = DriveBus::drive3();
    QStringList events;
    connect(bench->scheduler.get(), &Z7CommunicationInterface::portRefused, this,
        [&](const QString &port, int reason) {
            events = bench->news.milestones();
            events.append(QStringLiteral("%1 refused %2").arg(port).arg(reason));
        });
    bench->bus.pullAdapter();
    bench->transfer<Probe>(drive3);
    QTRY_VERIFY(bench->has("transfer record 3"));
    const QString refused = QStringLiteral("ttyUSB0 refused %1").arg(int(QSerialPort::DeviceNotFoundError));
    QCOMPARE(events, QStringList({"transfer started 1", refused}));
}

QTEST_GUILESS_MAIN(TestPulledAdapter)

#include "tst_pulledadapter.moc"
