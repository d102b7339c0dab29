// How old the shown values are, by a clock that the test turns.

#include "control/freshness.h"

#include <QTest>

using Z7CommInterface::BusState;

namespace {

constexpr int drive3 = 3;
constexpr int drive4 = 4;
constexpr qint64 limitMs = 2000;
const QDateTime noon(QDate(2026, 11, 22), QTime(12, 0), Qt::UTC);

QString nameOf(Freshness::State state)
{
    static const QString names[] = {QStringLiteral("no drive"), QStringLiteral("never read"),
        QStringLiteral("read"), QStringLiteral("stale"), QStringLiteral("off"), QStringLiteral("held"),
        QStringLiteral("waiting")};
    return names[int(state)];
}

} // namespace

class TestFreshness : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void withoutDriveNothingIsFresh();
    void selectedDriveIsNeverReadAtFirst();
    void readingOfSelectedDriveCounts();
    void readingOfAnotherDriveDoesNotCount();
    void driveThatIsSelectedAgainIsAsOldAsItsReading();
    void readingBecomesStaleBeyondLimit();
    void staleReadingKeepsItsTime();
    void nextReadingIsFreshAgain();
    void drivesConnectedAnewAreNeverRead();
    void busThatIsInOtherHandsIsSaid_data();
    void busThatIsInOtherHandsIsSaid();
    void withoutDriveBusIsNotSaid();

    void limitIsTwoRoundsAndTwoSecondsAtLeast_data();
    void limitIsTwoRoundsAndTwoSecondsAtLeast();
    void nextLookIsWhenReadingBecomesStale();
    void longTimeIsLookedThroughInSteps();
    void nothingIsLookedForWhereTimeChangesNothing_data();
    void nothingIsLookedForWhereTimeChangesNothing();

private:
    QString state(qint64 nowMs) const { return nameOf(freshness.state(nowMs)); }

    Freshness freshness;
};

void TestFreshness::init()
{
    freshness = Freshness();
    freshness.setBus(BusState::Polling);
    freshness.select(drive3);
}

void TestFreshness::withoutDriveNothingIsFresh()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    freshness.select(Freshness::none);
    QCOMPARE(state(100), QStringLiteral("no drive"));
    QVERIFY(freshness.readAt().isNull());
}

void TestFreshness::selectedDriveIsNeverReadAtFirst()
{
    QCOMPARE(state(100), QStringLiteral("never read"));
    QVERIFY(freshness.readAt().isNull());
}

void TestFreshness::readingOfSelectedDriveCounts()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    QCOMPARE(state(100), QStringLiteral("read"));
    QCOMPARE(freshness.readAt(), noon);
}

void TestFreshness::readingOfAnotherDriveDoesNotCount()
{
    freshness.noteReading(drive4, 100, noon, limitMs);
    QCOMPARE(state(100), QStringLiteral("never read"));
    freshness.noteReading(drive3, 100, noon, limitMs);
    freshness.noteReading(drive4, 5000, noon.addSecs(5), limitMs);
    QCOMPARE(state(5000), QStringLiteral("stale"));
    QCOMPARE(freshness.readAt(), noon);
}

void TestFreshness::driveThatIsSelectedAgainIsAsOldAsItsReading()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    freshness.select(drive4);
    freshness.noteReading(drive4, 60000, noon.addSecs(60), limitMs);
    freshness.select(drive3);
    QCOMPARE(state(60000), QStringLiteral("stale"));
    QCOMPARE(freshness.readAt(), noon);
}

void TestFreshness::readingBecomesStaleBeyondLimit()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    QCOMPARE(state(100 + limitMs), QStringLiteral("read"));
    QCOMPARE(state(100 + limitMs + 1), QStringLiteral("stale"));
}

void TestFreshness::staleReadingKeepsItsTime()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    QCOMPARE(state(3600000), QStringLiteral("stale"));
    QCOMPARE(freshness.readAt(), noon);
}

void TestFreshness::nextReadingIsFreshAgain()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    freshness.noteReading(drive3, 9000, noon.addSecs(9), limitMs);
    QCOMPARE(state(9000), QStringLiteral("read"));
    QCOMPARE(freshness.readAt(), noon.addSecs(9));
}

void TestFreshness::drivesConnectedAnewAreNeverRead()
{
    freshness.noteReading(drive3, 100, noon, limitMs);
    freshness.forgetReadings();
    QCOMPARE(state(100), QStringLiteral("never read"));
}

void TestFreshness::busThatIsInOtherHandsIsSaid_data()
{
    QTest::addColumn<int>("bus");
    QTest::addColumn<QString>("expected");
    QTest::newRow("transfer") << int(BusState::Transferring) << "waiting";
    QTest::newRow("scan") << int(BusState::Scanning) << "waiting";
    QTest::newRow("programmer") << int(BusState::Lent) << "waiting";
    QTest::newRow("option") << int(BusState::PollingOff) << "off";
    QTest::newRow("cancel") << int(BusState::Held) << "held";
    QTest::newRow("nobody") << int(BusState::Idle) << "held";
}

void TestFreshness::busThatIsInOtherHandsIsSaid()
{
    QFETCH(int, bus);
    freshness.noteReading(drive3, 100, noon, limitMs);
    freshness.setBus(BusState(bus));
    QTEST(state(100), "expected");
    QCOMPARE(freshness.readAt(), noon);
}

void TestFreshness::withoutDriveBusIsNotSaid()
{
    freshness.select(Freshness::none);
    freshness.setBus(BusState::Transferring);
    QCOMPARE(state(100), QStringLiteral("no drive"));
}

void TestFreshness::limitIsTwoRoundsAndTwoSecondsAtLeast_data()
{
    QTest::addColumn<int>("intervalMs");
    QTest::addColumn<qint64>("passMs");
    QTest::addColumn<qint64>("limit");
    QTest::newRow("quick") << 10 << qint64(40) << qint64(2000);
    QTest::newRow("as delivered") << 1000 << qint64(350) << qint64(2700);
    QTest::newRow("long pass") << 1000 << qint64(3000) << qint64(8000);
    QTest::newRow("longest interval") << 2147483647 << qint64(1) << qint64(4294967296);
}

void TestFreshness::limitIsTwoRoundsAndTwoSecondsAtLeast()
{
    QFETCH(int, intervalMs);
    QFETCH(qint64, passMs);
    QTEST(Freshness::limitMs(intervalMs, passMs), "limit");
}

void TestFreshness::nextLookIsWhenReadingBecomesStale()
{
    freshness.noteReading(drive3, 100, noon, 600);
    const int wait = freshness.nextLookMs(300);
    QCOMPARE(state(300 + wait - 1), QStringLiteral("read"));
    QCOMPARE(state(300 + wait), QStringLiteral("stale"));
}

void TestFreshness::longTimeIsLookedThroughInSteps()
{
    freshness.noteReading(drive3, 100, noon, 3600000);
    QCOMPARE(freshness.nextLookMs(100), Freshness::longestStepMs);
}

void TestFreshness::nothingIsLookedForWhereTimeChangesNothing_data()
{
    QTest::addColumn<int>("bus");
    QTest::addColumn<bool>("wasRead");
    QTest::addColumn<qint64>("nowMs");
    QTest::newRow("never read") << int(BusState::Polling) << false << qint64(100);
    QTest::newRow("stale") << int(BusState::Polling) << true << qint64(9000);
    QTest::newRow("held") << int(BusState::Held) << true << qint64(100);
}

void TestFreshness::nothingIsLookedForWhereTimeChangesNothing()
{
    QFETCH(int, bus);
    QFETCH(bool, wasRead);
    QFETCH(qint64, nowMs);
    freshness.setBus(BusState(bus));
    if (wasRead)
        freshness.noteReading(drive3, 100, noon, limitMs);
    QCOMPARE(freshness.nextLookMs(nowMs), -1);
}

QTEST_GUILESS_MAIN(TestFreshness)

#include "tst_freshness.moc"
