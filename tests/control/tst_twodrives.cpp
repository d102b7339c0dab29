// Two drives in the list, one of them shown: what is true of the one never stands on the page of the other.

#include "tests/control/testedcontroller.h"
#include "tests/support/person.h"

#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

const Z7Device drive3 = connectedDrive(3);
const Z7Device drive4 = connectedDrive(4);
const int id3 = drive3.deviceId();
const int id4 = drive4.deviceId();
constexpr int table = TestedController::tablePage;
constexpr int firmware = TestedController::firmwarePage;
constexpr int curve = 11;
constexpr int busAddress = 15;
/// A number that no definition knows.
constexpr int foreignNumber = 4711;

/// The drive as it answers at its new address.
Z7Device moved(Z7Device device, int newAddress)
{
    device.setAddress(newAddress);
    return device;
}

Z7DeviceParamSet changes(const QList<Z7DeviceParam> &params)
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    for (const Z7DeviceParam &param : params)
        set.insert(param);
    return set;
}

} // namespace

class TestTwoDrives : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void recordOfPassFromBeforeClickStaysAwayFromPage();
    void thatRecordStillReachesListAndControlBar();
    void recordOfPassFromAfterClickReachesPage();
    void recordOfSelectedDriveReachesPageWheneverItsPassBegan();
    void recordOfDriveThatIsNotListedReachesPage();
    void recordOfDriveThatHasJustMovedReachesPage();
    void pageOfAllDrivesHearsEveryRecord();

    void movedDriveStaysSelected();
    void driveSelectedMeanwhileStaysSelected();

    void fileForOtherDriveLeavesFieldsOfShownOne();
    void fileForOtherDriveLeavesNoRowInTable();
    void fileForOtherDriveLeavesCurveFields();
    void discardOnOtherDriveLeavesFieldsOfShownOne();
    void addressTypedForShownDriveSurvivesFileForOther();

private:
    Z7MainController &controller() { return tested->controller; }
    QString shownValue() const { return tested->tableText(11, TestedController::deviceValueColumn); }
    QLineEdit *field(const char *name) const { return tested->shownPage()->findChild<QLineEdit *>(name); }
    /// A polling pass of drive 3 begins, and the user clicks on a page of drive 4.
    void clickDuringAPass(int page);

    std::optional<TestedController> tested;
};

void TestTwoDrives::init()
{
    tested.emplace();
    tested->showTableOf({drive3, drive4});
}

void TestTwoDrives::clickDuringAPass(int page)
{
    controller().PostTransactionStarted(DevicePolling, 21, controller().device(id3));
    tested->showPage(page, id4);
}

void TestTwoDrives::recordOfPassFromBeforeClickStaysAwayFromPage()
{
    clickDuringAPass(table);
    controller().PostDeviceUpdate(DevicePolling, withValue(controller().device(id3), 11, 555));
    QCOMPARE(shownValue(), QStringLiteral("0"));
    QCOMPARE(tested->shownPage()->device.address, 4);
}

void TestTwoDrives::thatRecordStillReachesListAndControlBar()
{
    clickDuringAPass(table);
    tested->forgetNotes();
    controller().PostDeviceUpdate(DevicePolling, withValue(controller().device(id3), 11, 555));
    QCOMPARE(controller().device(id3).parameterSet.value(11).value, 555);
    QCOMPARE(tested->deviceControl.notes, QStringList {"record Z7.3"});
}

void TestTwoDrives::recordOfPassFromAfterClickReachesPage()
{
    clickDuringAPass(table);
    controller().PostDeviceUpdate(DevicePolling, controller().device(id3));
    controller().PostTransactionStarted(DevicePolling, 21, controller().device(id3));
    controller().PostDeviceUpdate(DevicePolling, withValue(controller().device(id3), 11, 555));
    QCOMPARE(shownValue(), QStringLiteral("555"));
}

void TestTwoDrives::recordOfSelectedDriveReachesPageWheneverItsPassBegan()
{
    controller().PostTransactionStarted(DevicePolling, 21, controller().device(id3));
    tested->showPage(table, id3);
    controller().PostDeviceUpdate(DevicePolling, withValue(controller().device(id3), 11, 555));
    QCOMPARE(shownValue(), QStringLiteral("555"));
}

void TestTwoDrives::recordOfDriveThatIsNotListedReachesPage()
{
    clickDuringAPass(table);
    controller().PostDeviceUpdate(DevicePolling, withValue(connectedDrive(9), 11, 555));
    QCOMPARE(shownValue(), QStringLiteral("555"));
}

void TestTwoDrives::recordOfDriveThatHasJustMovedReachesPage()
{
    clickDuringAPass(table);
    controller().PostDeviceUpdate(DevicePolling, withValue(moved(controller().device(id3), 9), 11, 555));
    QCOMPARE(shownValue(), QStringLiteral("555"));
}

void TestTwoDrives::pageOfAllDrivesHearsEveryRecord()
{
    clickDuringAPass(firmware);
    controller().PostDeviceUpdate(DevicePolling, controller().device(id3));
    QCOMPARE(tested->shownPage()->device.address, 3);
}

void TestTwoDrives::movedDriveStaysSelected()
{
    controller().PostDeviceUpdate(TransferTelegramStack, moved(controller().device(id3), 9));
    QCOMPARE(controller().currentDeviceRecord().address, 9);
}

void TestTwoDrives::driveSelectedMeanwhileStaysSelected()
{
    const Z7Device answer = moved(controller().device(id3), 9);
    tested->showPage(table, id4);
    controller().PostDeviceUpdate(TransferTelegramStack, answer);
    QCOMPARE(controller().currentDeviceRecord().address, 4);
    tested->typeInTable(30, "7");
    QVERIFY(controller().hasModifiedParams(table, id4));
    QVERIFY(!controller().hasModifiedParams(table, answer.deviceId()));
}

void TestTwoDrives::fileForOtherDriveLeavesFieldsOfShownOne()
{
    tested->typeInTable(30, "7");
    controller().setUserParams(id4, changes({userChange(11, 99), userChange(30, 8)}));
    QCOMPARE(tested->tableField(30)->text(), QStringLiteral("7"));
    QCOMPARE(tested->tableField(11)->text(), QString());
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    tested->showPage(table, id4);
    QCOMPARE(tested->userChanges(), QStringLiteral("11=99 30=8"));
}

void TestTwoDrives::fileForOtherDriveLeavesNoRowInTable()
{
    controller().setUserParams(id4, changes({userChange(foreignNumber, 1)}));
    QVERIFY(!tested->tableField(foreignNumber));
    QVERIFY(tested->tableField(83));
}

void TestTwoDrives::fileForOtherDriveLeavesCurveFields()
{
    tested->showPage(curve, id3);
    QVERIFY(Person::type(field("edValX1_User"), "7"));
    controller().setUserParams(id4, changes({userChange(11, 99), userChange(12, 100)}));
    QCOMPARE(field("edValX1_User")->text(), QStringLiteral("7"));
    QCOMPARE(field("edValX2_User")->text(), QString());
}

void TestTwoDrives::discardOnOtherDriveLeavesFieldsOfShownOne()
{
    tested->typeInTable(30, "7");
    controller().setUserParams(id4, changes({userChange(11, 99)}));
    controller().resetChanges(id4);
    QCOMPARE(tested->tableField(30)->text(), QStringLiteral("7"));
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    QVERIFY(!controller().hasModifiedParams(table, id4));
}

void TestTwoDrives::addressTypedForShownDriveSurvivesFileForOther()
{
    tested->showPage(busAddress, id3);
    QVERIFY(Person::type(field("edParam0x52User"), "77"));
    controller().setUserParams(id4, changes({userChange(11, 99)}));
    QCOMPARE(field("edParam0x52User")->text(), QStringLiteral("77"));
}

QTEST_MAIN(TestTwoDrives)

#include "tst_twodrives.moc"
