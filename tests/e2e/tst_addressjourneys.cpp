// A drive gets another bus address, and another operating mode, under a person's hands.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QtTest>

#include <utility>

using namespace Telegrams;

class TestAddressJourneys : public QObject
{
    Q_OBJECT

private slots:
    void driveIsFollowedToItsNewAddressAndBack();
    void addressOutOfRangeIsNotSent();
    void hintComesAndGoesWithMode_data();
    void hintComesAndGoesWithMode();
};

void TestAddressJourneys::driveIsFollowedToItsNewAddressAndBack()
{
    const Desk desk(TestBench::shortDrives({1, 3, 7}));
    const Journey &journey = desk.journey;
    const MainWindow &window = journey.window();
    QVERIFY(desk.connectAll());
    for (const auto &[from, to] : {std::make_pair(3, 77), std::make_pair(77, 3)}) {
        QVERIFY(journey.showPage(driveName(from), QStringLiteral("RS485")));
        QTRY_COMPARE(Person::textOf(window, "lParam0x52Device"), QString::number(from));
        QVERIFY(Person::type(window, "edParam0x52User", QString::number(to)));
        QVERIFY(journey.press("BtnChangeAdress"));

        QTRY_COMPARE_WITH_TIMEOUT(desk.bus.command("get " + QByteArray::number(to) + " address"),
            "ok " + QByteArray::number(to), Person::patienceMs);
        QTRY_VERIFY(journey.drives().contains(driveName(to) + ", active"));
        QVERIFY(!journey.drives().join(' ').contains(driveName(from) + ","));
        QTRY_COMPARE(journey.bar().device, QStringLiteral("Z7.%1").arg(to));
        // The live update goes on at the new address alone.
        desk.bus.clearLog();
        const QString asked = read(to, 0x52);
        QVERIFY(Person::waitUntil([&desk, &asked] { return desk.requests().count(asked) >= 2; }));
        QVERIFY(!desk.requests().join(' ').contains(QStringLiteral("A=%1 ").arg(from)));
        QTRY_COMPARE(Person::textOf(window, "lParam0x52Device"), QString::number(to));
    }
    for (const int address : {1, 7})
        QVERIFY(journey.drives().contains(driveName(address) + ", active"));
}

void TestAddressJourneys::addressOutOfRangeIsNotSent()
{
    const Desk desk(TestBench::shortDrives({3}));
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(journey.showPage(driveName(3), QStringLiteral("RS485")));
    QVERIFY(Person::type(journey.window(), "edParam0x52User", QStringLiteral("256")));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    QVERIFY(journey.press("BtnChangeAdress"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(desk.bus.command("get 3 address"), QByteArray("ok 3"));
}

void TestAddressJourneys::hintComesAndGoesWithMode_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("mode");
    QTest::newRow("positioning") << "Positionierung" << 3;
    QTest::newRow("fixed speeds") << "Festdrehzahlen" << 1;
    QTest::newRow("current curve") << "Sollwertskalierung Strom" << 2;
}

void TestAddressJourneys::hintComesAndGoesWithMode()
{
    QFETCH(QString, page);
    QFETCH(int, mode);
    z7sim::DriveConfig config = TestBench::fullDrive(1, 0, "V200");
    // None of the modes that are written, so that each write can be seen to arrive.
    config.parameters = {{1, 5}, {2, 5}};
    const Desk desk({config});
    const Journey &journey = desk.journey;
    const MainWindow &window = journey.window();
    QVERIFY(desk.connectAll());
    const auto warns = [&window] { return !Person::textOf(window, "lSwitchOperationsModeInfo").isEmpty(); };
    // Another mode first, then the page's, then the other one again.
    for (const int written : {0, mode, 0}) {
        QVERIFY(journey.showPage(driveName(1), QStringLiteral("Betriebsmodus")));
        QVERIFY(Person::type(window, "edRevolutionN1User", QString::number(written)));
        QVERIFY(Person::type(window, "edRevolutionN2User", QStringLiteral("0")));
        const MessageBoxAnswerer writeAnyway(QMessageBox::Yes);
        QVERIFY(journey.press("BtnUpload"));
        QTRY_COMPARE_WITH_TIMEOUT(desk.bus.memory(1, 1), written, Person::patienceMs);
        QTRY_COMPARE(desk.bus.memory(1, 2), 0);
        // Read back: the write has come to its end, and the next one is not asked for beside it.
        QTRY_COMPARE_WITH_TIMEOUT(
            Person::textOf(window, "lRevolutionN1Device"), QString::number(written), Person::patienceMs);
        QVERIFY(journey.showPage(driveName(1), page));
        QTRY_COMPARE_WITH_TIMEOUT(warns(), written != mode, Person::patienceMs);
    }
}

QTEST_MAIN(TestAddressJourneys)

#include "tst_addressjourneys.moc"
