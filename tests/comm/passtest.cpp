#include "tests/comm/passtest.h"

#include <QtTest>

#include <atomic>

void PassTest::init()
{
    bus = std::make_unique<DriveBus>();
    thread = makeThread();
    news = std::make_unique<CommNews>(*thread);
}

void PassTest::cleanup()
{
    thread.reset();
    news.reset();
    bus.reset();
}

bool PassTest::hasEnded(int passes) const
{
    return QTest::qWaitFor([&] { return news->count("ended") == passes; });
}

bool PassTest::isUnderWay() const
{
    return QTest::qWaitFor([&] { return news->has("progress"); });
}

void PassTest::passTellsItsStartEachReplyAndItsRecord()
{
    QVERIFY(run<Status>());
    const QStringList expected {"started 14", "progress 14", "record 0", "ended"};
    QCOMPARE(events(), expected);
    QVERIFY(news->lastRecord().isAccessGranted());
    QCOMPARE(news->lastRecord().softwareVersion, QStringLiteral("V123"));
}

void PassTest::passIsAnnouncedBeforePortIsOpened()
{
    bus->disconnectPort();
    connect(
        thread.get(), &CommThread::transactionStarted, this, [this] { bus->connectPort(); },
        Qt::DirectConnection);
    QVERIFY(run<Probe>());
    QVERIFY2(!news->lastRecord().hasError(), "the port was there in time");
}

void PassTest::missingPortGivesError3InOneRecord()
{
    const Z7Device drive3 = DriveBus::drive3();
    bus->pullAdapter();
    QVERIFY(run<Status>(drive3));
    const QStringList expected {"started 14", "record 3", "ended"};
    QCOMPARE(events(), expected);
}

void PassTest::recordWithoutPortEndsInError2()
{
    QVERIFY(run<Status>(Z7Device()));
    const QStringList expected {"started 14", "record 2", "ended"};
    QCOMPARE(events(), expected);
}

void PassTest::cancelledPassReportsWhatItReadUntilThen()
{
    bus->command("fault 3 late ms=500 command=0x05"); // the status telegram, after both access telegrams
    start<Status>();
    QTRY_COMPARE(bus->requests().size(), 3);
    thread->cancel();
    QVERIFY(hasEnded());
    QCOMPARE(bus->requests().size(), 3);
    QCOMPARE(news->count("record 0"), 1);
    QVERIFY(news->lastRecord().isAccessGranted());
    QVERIFY2(news->lastRecord().statusBits != 0, "the telegram on its way is waited for");
    QCOMPARE(news->lastRecord().softwareVersion, Z7Device::unknownVersion());
}

void PassTest::threadThatGoesAwayDuringPassWaitsForItsEnd()
{
    start<Status>();
    QVERIFY(isUnderWay());
    thread.reset();
    QVERIFY(!DriveBus::isPortInUse());
    QVERIFY(bus->requests().size() < 14);
}
