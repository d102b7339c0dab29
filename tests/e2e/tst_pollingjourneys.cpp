// The live update: what it reads after connecting, and what once a page is shown.

#include "pages/datawidget.h"
#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/person.h"

#include <QtTest>

#include <algorithm>

using namespace Telegrams;

namespace {

const QString drive = driveName(1);

/// The parameters of the page on the screen, as they are read.
QList<int> numbersOfShownPage(const Journey &journey)
{
    QList<int> numbers;
    for (const auto *page : journey.window().findChildren<Z7DataWidget *>()) {
        if (page->isVisible())
            numbers = page->paramIds();
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace

class TestPollingJourneys : public QObject
{
    Q_OBJECT

private slots:
    void firstPassReadsEverythingAndNextOnlyStatusPage();
    void everyOkOfWizardReadsEverythingOnceMore();
    void pageIsReadWithItsOwnParametersAndNoOthers();
    void tableKeepsReadingAllParameters();
    void liveValuesFollowDrive();
    void onlySelectedDriveIsRead();
};

void TestPollingJourneys::firstPassReadsEverythingAndNextOnlyStatusPage()
{
    Desk desk({TestBench::fullDrive(1)});
    desk.slowDown();
    const QList<int> all = desk.bench.numbers("V123");
    QCOMPARE(all.size(), 120);
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    desk.bus.clearLog();
    QVERIFY(journey.showPage(drive));
    QCOMPARE(journey.pageTitle(), QStringLiteral("Z7-Motorstatus"));

    const QStringList expected = Polling {1, 0, all}.firstPass() + Polling {1, 0, {}}.firstPass()
        + Polling {1, 0, {}}.laterPass() + Polling {1, 0, {}}.laterPass();
    QVERIFY(Person::waitUntil([&] { return desk.requests().size() >= expected.size(); }));
    QCOMPARE(desk.requests().mid(0, expected.size()), expected);
}

void TestPollingJourneys::everyOkOfWizardReadsEverythingOnceMore()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    const QStringList expected =
        Polling {1, 0, TestBench::shortNumbers}.firstPass() + Polling {1, 0, {}}.firstPass();
    for (int i = 0; i < 2; ++i) {
        QVERIFY(journey.connectQuickly());
        desk.bus.clearLog();
        QVERIFY(journey.showPage(drive));
        QTRY_VERIFY(desk.requests().size() >= expected.size());
        QCOMPARE(desk.requests().mid(0, expected.size()), expected);
    }
}

void TestPollingJourneys::pageIsReadWithItsOwnParametersAndNoOthers()
{
    const Desk desk({TestBench::fullDrive(1)});
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    QVERIFY(journey.showPage(drive, QStringLiteral("Festdrehzahlen")));
    const Polling everything {1, 0, desk.bench.numbers("V123")};
    const Polling page {1, 0, numbersOfShownPage(journey)};
    QTRY_VERIFY_WITH_TIMEOUT(desk.requests().size() >= logOn(1, 0).size() + everything.firstPass().size()
                + page.firstPass().size() + page.laterPass().size(),
        Person::patienceMs);
    const QStringList polled = desk.requests().mid(logOn(1, 0).size());
    QCOMPARE(polled.mid(0, everything.firstPass().size()), everything.firstPass());
    QCOMPARE(besides(page, polled.mid(everything.firstPass().size())), QList<QStringList>());
}

void TestPollingJourneys::tableKeepsReadingAllParameters()
{
    TestBench bench;
    auto &bus = bench.plugIn(port, {TestBench::shortDrive(1)});
    const Polling everything {1, 0, TestBench::shortNumbers};
    const Journey journey;
    QVERIFY(journey.connectQuickly());
    bus.clearLog();
    QVERIFY(journey.showPage(drive, table));
    const QStringList expected = everything.firstPass() + everything.firstPass() + everything.laterPass();
    QTRY_VERIFY(requests(bus.log()).size() >= expected.size());
    QCOMPARE(requests(bus.log()).mid(0, expected.size()), expected);
}

void TestPollingJourneys::liveValuesFollowDrive()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    QVERIFY(journey.showPage(drive));
    QTRY_COMPARE(journey.bar().speed, QStringLiteral("0"));

    desk.bus.command("set 1 param 0x8001 -1234");
    desk.bus.command("set 1 param 0x8007 850");
    desk.bus.command("set 1 status 0x40");
    QTRY_COMPARE(journey.bar().speed, QStringLiteral("-1234"));
    QCOMPARE(journey.bar().current, QStringLiteral("850"));
    QCOMPARE(journey.bar().lamp, QStringLiteral("Yellow"));
    desk.bus.command("set 1 status 0x08");
    QTRY_COMPARE(journey.bar().lamp, QStringLiteral("Red"));
}

void TestPollingJourneys::onlySelectedDriveIsRead()
{
    const Desk desk(TestBench::shortDrives({1, 2}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectManually(port, 1, 0));
    QVERIFY(journey.connectManually(port, 2, 0));
    QVERIFY(journey.showPage(drive));
    QTRY_COMPARE(journey.bar().device, QStringLiteral("Z7.1"));
    QVERIFY(journey.showPage(QStringLiteral("Port0 - Z7.2")));
    QTRY_COMPARE(journey.bar().device, QStringLiteral("Z7.2"));

    desk.bus.clearLog();
    QTRY_VERIFY(desk.requests().size() > 3 * logOn(2, 0).size());
    QCOMPARE(desk.requests().filter(QStringLiteral(" A=1 ")), QStringList());
}

QTEST_MAIN(TestPollingJourneys)

#include "tst_pollingjourneys.moc"
