// A person at one of two drives: what belongs to the other is neither shown nor written here.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/filedialogs.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace Telegrams;

namespace {

constexpr int setPoint = 23;
/// Longer than any reply that a test delays.
constexpr int patientTimeoutMs = 5000;

/// Drive 1 of version V123 with its many parameters, drive 3 with few.
struct TwoDrives : Desk
{
    TwoDrives()
        : Desk({TestBench::fullDrive(1), TestBench::shortDrive(3)})
    {
        Z7Services::instance()->options()->setTimeout(patientTimeoutMs);
    }

    /// Types and writes a set point into the table that is shown, and waits until drive 3 holds it.
    bool writeToDrive3(int value) const
    {
        return journey.typeValue(setPoint, QString::number(value)) && journey.press("BtnUpload")
            && Person::waitUntil([this, value] { return bus.memory(3, setPoint) == value; });
    }
};

} // namespace

class TestTwoDriveJourneys : public QObject
{
    Q_OBJECT

private slots:
    void tableClickedDuringPassOfOtherDriveHasOnlyItsOwnRows();
    void editsGoToDriveThatIsShownWhenOtherHasMoved();
    void fileForOtherDriveLeavesShownTable();
    void discardOnOtherDriveLeavesShownTable();
};

void TestTwoDriveJourneys::tableClickedDuringPassOfOtherDriveHasOnlyItsOwnRows()
{
    TwoDrives desk;
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    desk.slowDown();
    desk.bus.clearLog();
    QVERIFY(desk.waitForRequest(read(1, setPoint)));

    QVERIFY(journey.showPage(driveName(3), table));
    desk.bus.clearLog();
    QVERIFY(desk.waitForRequest(read(3, TestBench::shortNumbers.constLast())));
    QTRY_COMPARE(journey.row(setPoint).deviceValue, QString::number(desk.bus.memory(3, setPoint)));
    QCOMPARE(journey.rowCount(), TestBench::shortNumbers.size());

    QVERIFY(desk.writeToDrive3(321));
    QVERIFY(desk.bus.memory(1, setPoint) != 321);
}

void TestTwoDriveJourneys::editsGoToDriveThatIsShownWhenOtherHasMoved()
{
    const TwoDrives desk;
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    QVERIFY(journey.showPage(driveName(1), QStringLiteral("RS485")));
    QTRY_COMPARE(Person::textOf(journey.window(), "lParam0x52Device"), QStringLiteral("1"));
    // The drive takes its new address at once and tells so late.
    desk.bus.command("fault 1 late ms=1000 count=1 command=0x03");
    QVERIFY(Person::type(journey.window(), "edParam0x52User", QStringLiteral("77")));
    QVERIFY(journey.press("BtnChangeAdress"));
    QVERIFY(desk.waitForRequest(write(1, 0x52, 77)));
    QVERIFY(journey.showPage(driveName(3), table));

    // It is logged on to again once one of its pages is shown.
    QTRY_VERIFY(journey.drives().contains(driveName(77) + ", inactive"));
    QTRY_COMPARE(journey.row(setPoint).deviceValue, QString::number(desk.bus.memory(3, setPoint)));
    QVERIFY(journey.typeValue(setPoint, QStringLiteral("321")));
    QCOMPARE(journey.mark(driveName(3), table), QStringLiteral("active_modified"));
    QCOMPARE(journey.mark(driveName(77), table), QStringLiteral("inactive"));
    QVERIFY(journey.press("BtnUpload"));
    QTRY_COMPARE(desk.bus.memory(3, setPoint), 321);
    QVERIFY(desk.bus.memory(77, setPoint) != 321);
}

void TestTwoDriveJourneys::fileForOtherDriveLeavesShownTable()
{
    const TwoDrives desk;
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    WorkingFolder::write("set.z7param",
        "<Z7Device><DeviceInfo SoftwareVersion=\"V101\"/><Z7-Parameter><parameter id=\"23\" val=\"-777\"/>"
        "<parameter id=\"4711\" val=\"1\"/></Z7-Parameter></Z7Device>");
    QVERIFY(desk.showTable(1));
    const int rows = journey.rowCount();
    QVERIFY(journey.typeValue(setPoint, QStringLiteral("321")));
    {
        const FileDialogUser user("set.z7param");
        QVERIFY(journey.press("BtnOpen"));
    }
    QVERIFY(journey.pickDrives({0})); // drive 3 alone has the version of the file
    QCOMPARE(journey.row(setPoint).userValue, QStringLiteral("321"));
    QCOMPARE(journey.rowCount(), rows);

    QVERIFY(desk.showTable(3));
    QCOMPARE(journey.row(setPoint).userValue, QStringLiteral("-777"));
    QVERIFY(journey.press("BtnUpload"));
    QTRY_COMPARE(desk.bus.memory(3, setPoint), -777);
}

void TestTwoDriveJourneys::discardOnOtherDriveLeavesShownTable()
{
    const TwoDrives desk;
    const Journey &journey = desk.journey;
    QVERIFY(desk.connectAll());
    for (const int address : {3, 1}) {
        QVERIFY(desk.showTable(address));
        QVERIFY(journey.typeValue(setPoint, QStringLiteral("321")));
    }
    QVERIFY(journey.press("BtnResetChanges"));
    QVERIFY(journey.pickDrives({1}));
    QTRY_COMPARE(journey.mark(driveName(3), table), QStringLiteral("active"));
    QCOMPARE(journey.row(setPoint).userValue, QStringLiteral("321"));
    QCOMPARE(journey.mark(driveName(1), table), QStringLiteral("active_modified"));
}

QTEST_MAIN(TestTwoDriveJourneys)

#include "tst_twodrivejourneys.moc"
