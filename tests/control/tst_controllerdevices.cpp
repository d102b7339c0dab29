// The device list: the drives that the wizard hands over, and the records that the bus reports for them.

#include "tests/control/testedcontroller.h"
#include "tests/support/messageboxes.h"

#include <QSignalSpy>

#include <optional>

using namespace Z7CommInterface;

namespace {

const int id3 = connectedDrive(3).deviceId();
const int id4 = connectedDrive(4).deviceId();

Z7Device driveOfVersion(int address, const QString &version)
{
    Z7Device device;
    device.assignAddress(address);
    device.setSoftwareVersion(version);
    return device;
}

} // namespace

class TestControllerDevices : public QObject
{
    Q_OBJECT

private slots:
    void init() { tested.emplace(); }
    void cleanup() { tested.reset(); }

    void drivesAreListedInAscendingOrderOfTheirId();
    void driveHasParametersOfItsDefinitions();
    void newDriveIsReadCompletelyEvenIfItsRecordSaysOtherwise();
    void newListReplacesFormerOne();
    void newListShowsInTree();
    void newListTakesShownPageAway();
    void newListWithoutShownPageLeavesButtons();
    void newListLeavesNoDriveSelected();
    void unknownIdGivesDefaultRecordWithoutAccess();
    void accessIsThatOfRecord();

    void driveWithoutDefinitionFileIsRefusedWithMessage();
    void driveAfterRefusedOneIsAdded();
    void definitionFileWithoutParameterCountsAsNone();

    void reportedRecordReplacesStoredOne();
    void recordOfUnlistedDriveChangesNothing();
    void recordWithoutParametersKeepsStoredOnes();
    void eachRecordRebuildsTree();
    void firstReportAfterShowingPageCompletesParameters();

    void driveMovesToItsNewAddress();
    void userChangesStayBehindUnderOldAddress();
    void neighbourWithoutMarkOfNewAddressReplacesNobody();
    void movedDriveThatIsNotListedIsNotStored();

private:
    Z7MainController &controller() { return tested->controller; }
    Z7Device movedFrom3To4() const;

    std::optional<TestedController> tested;
};

void TestControllerDevices::drivesAreListedInAscendingOrderOfTheirId()
{
    tested->connectDrives({connectedDrive(4), connectedDrive(3)});
    QCOMPARE(controller().deviceIds(), (QList<int> {id3, id4}));
    QCOMPARE(controller().connectedDevices().size(), 2);
    QCOMPARE(controller().connectedDevices().first().address, 3);
    QCOMPARE(controller().device(id4).address, 4);
}

void TestControllerDevices::driveHasParametersOfItsDefinitions()
{
    tested->connectDrives({withValue(connectedDrive(3), 4711, 1)});
    const Z7DeviceParamSet parameters = controller().device(id3).parameterSet;
    QCOMPARE(parameters.params.keys(), (QList<int> {11, 12, 13, 30, 31, 50, 83}));
    QCOMPARE(parameters.softwareVersion, QStringLiteral("V123"));
    QCOMPARE(parameters.value(31).isUnsigned, 0);
    QVERIFY(!parameters.value(11).hasValue);
}

void TestControllerDevices::newDriveIsReadCompletelyEvenIfItsRecordSaysOtherwise()
{
    Z7Device known = connectedDrive(3);
    known.parametersComplete = known.fullReadPending = true;
    tested->connectDrives({known});
    QVERIFY(!controller().device(id3).parametersComplete);
    QVERIFY(!controller().device(id3).fullReadPending);
}

void TestControllerDevices::newListReplacesFormerOne()
{
    tested->connectDrives({connectedDrive(3)});
    tested->connectDrives({connectedDrive(4)});
    QCOMPARE(controller().deviceIds(), QList<int> {id4});
}

void TestControllerDevices::newListShowsInTree()
{
    tested->connectDrives({connectedDrive(4), connectedDrive(3)});
    QCOMPARE(tested->mainContent.tree, (QList<int> {id3, id4}));
}

void TestControllerDevices::newListTakesShownPageAway()
{
    tested->showTableOf({connectedDrive(3)});
    const Z7DataWidget *page = tested->shownPage();
    tested->connectDrives({connectedDrive(3)});
    QVERIFY(!page->parentWidget());
    QCOMPARE(tested->layout.count(), 0);
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "disable"}));
}

void TestControllerDevices::newListWithoutShownPageLeavesButtons()
{
    tested->connectDrives({connectedDrive(3)});
    QCOMPARE(tested->mainContent.notes, QStringList {"tree"});
}

void TestControllerDevices::newListLeavesNoDriveSelected()
{
    tested->showTableOf({connectedDrive(3)});
    QSignalSpy none(&controller(), SIGNAL(NoDeviceSelected()));
    tested->connectDrives({connectedDrive(3)});
    QCOMPARE(none.count(), 1);
    QVERIFY(!controller().hasCurrentDevice());
}

void TestControllerDevices::unknownIdGivesDefaultRecordWithoutAccess()
{
    QCOMPARE(controller().device(id3).softwareVersion, Z7Device::unknownVersion());
    QVERIFY(!controller().isAccessGranted(id3));
    QVERIFY(!controller().hasCurrentDevice());
}

void TestControllerDevices::accessIsThatOfRecord()
{
    Z7Device refused = connectedDrive(4);
    refused.setAccessGranted(false);
    tested->connectDrives({connectedDrive(3), refused});
    QVERIFY(controller().isAccessGranted(id3));
    QVERIFY(!controller().isAccessGranted(id4));
}

void TestControllerDevices::driveWithoutDefinitionFileIsRefusedWithMessage()
{
    const MessageBoxAnswerer user(QMessageBox::Ok);
    tested->connectDrives({driveOfVersion(7, "V999")});
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().title, QStringLiteral("Z7ConfigTool"));
    QCOMPARE(user.last().text,
        QStringLiteral(
            "Der Motor kann nicht hinzugefügt werden:\n\n"
            "Zur Versionnummer V999 im Motor Port - Z7.7 ist keine Parameter-Definition verfügbar. "
            "Bitte fordern Sie die Datei mit den Parameter-Definitionen zur Z7-Version V999 an."));
    QCOMPARE(user.last().icon, QMessageBox::Critical);
    QCOMPARE(user.last().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(!user.last().hasParent);
    QCOMPARE(controller().deviceIds(), QList<int>());
}

void TestControllerDevices::driveAfterRefusedOneIsAdded()
{
    const MessageBoxAnswerer user(QMessageBox::Ok);
    tested->connectDrives({driveOfVersion(1, "V998"), connectedDrive(3), driveOfVersion(2, "V999")});
    QCOMPARE(user.count(), 2);
    QCOMPARE(controller().deviceIds(), QList<int> {id3});
    QCOMPARE(tested->mainContent.tree, QList<int> {id3});
}

void TestControllerDevices::definitionFileWithoutParameterCountsAsNone()
{
    tested->folder.writeText("Z7ParamDef_V200.csv", "Nummer;Name\n");
    const MessageBoxAnswerer user(QMessageBox::Ok);
    tested->connectDrives({driveOfVersion(3, "V200")});
    QCOMPARE(user.count(), 1);
    QCOMPARE(controller().deviceIds(), QList<int>());
}

void TestControllerDevices::reportedRecordReplacesStoredOne()
{
    tested->connectDrives({connectedDrive(3)});
    Z7Device reported = withValue(controller().device(id3), 11, 555);
    reported.setDeviceError(1);
    reported.actualSpeed = 1450;
    reported.setAccessGranted(false);
    controller().PostDeviceUpdate(DevicePolling, reported);
    const Z7Device stored = controller().device(id3);
    QCOMPARE(stored.parameterSet.value(11).value, 555);
    QCOMPARE(stored.error, 1);
    QCOMPARE(stored.actualSpeed, 1450);
    QVERIFY(!controller().isAccessGranted(id3));
}

void TestControllerDevices::recordOfUnlistedDriveChangesNothing()
{
    tested->connectDrives({connectedDrive(3)});
    controller().PostDeviceUpdate(ScanDevice, connectedDrive(4));
    QCOMPARE(controller().deviceIds(), QList<int> {id3});
}

void TestControllerDevices::recordWithoutParametersKeepsStoredOnes()
{
    tested->connectDrives({connectedDrive(3)});
    Z7Device loggedOnByTheWizard = connectedDrive(3);
    loggedOnByTheWizard.setPassword(4711);
    controller().PostDeviceUpdate(TransferTelegramStack, loggedOnByTheWizard);
    QCOMPARE(controller().device(id3).password, 4711);
    QVERIFY(controller().device(id3).parameterSet.contains(11));
}

void TestControllerDevices::eachRecordRebuildsTree()
{
    tested->connectDrives({connectedDrive(3)});
    tested->forgetNotes();
    controller().PostDeviceUpdate(DevicePolling, controller().device(id3));
    controller().PostDeviceUpdate(DevicePolling, connectedDrive(4));
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "tree"}));
}

void TestControllerDevices::firstReportAfterShowingPageCompletesParameters()
{
    tested->connectDrives({connectedDrive(3)});
    controller().PostDeviceUpdate(DevicePolling, controller().device(id3));
    QVERIFY2(!controller().device(id3).parametersComplete, "no full read was under way");
    tested->showPage(0, id3);
    QVERIFY(controller().device(id3).fullReadPending);
    Z7Device reported = controller().device(id3);
    reported.fullReadPending = false;
    controller().PostDeviceUpdate(DevicePolling, reported);
    QVERIFY(controller().device(id3).parametersComplete);
    QVERIFY(!controller().device(id3).fullReadPending);
}

Z7Device TestControllerDevices::movedFrom3To4() const
{
    Z7Device moved = tested->controller.device(id3);
    moved.setAddress(4);
    return moved;
}

void TestControllerDevices::driveMovesToItsNewAddress()
{
    tested->showTableOf({connectedDrive(3)});
    controller().PostDeviceUpdate(TransferTelegramStack, movedFrom3To4());
    QCOMPARE(controller().deviceIds(), QList<int> {id4});
    QVERIFY(controller().hasCurrentDevice());
    QCOMPARE(controller().currentDeviceRecord().address, 4);
    QCOMPARE(tested->mainContent.tree, QList<int> {id4});
}

void TestControllerDevices::userChangesStayBehindUnderOldAddress()
{
    tested->showTableOf({connectedDrive(3)});
    tested->typeInTable(11, "5");
    controller().PostDeviceUpdate(TransferTelegramStack, movedFrom3To4());
    QCOMPARE(tested->userChanges(), QStringLiteral("none"));
    tested->showTableOf({connectedDrive(3)});
    QCOMPARE(tested->userChanges(), QStringLiteral("11=5"));
}

void TestControllerDevices::neighbourWithoutMarkOfNewAddressReplacesNobody()
{
    tested->connectDrives({connectedDrive(3)});
    Z7Device neighbour = connectedDrive(4);
    neighbour.previousAddress = 3;
    controller().PostDeviceUpdate(ScanDevice, neighbour);
    QCOMPARE(controller().deviceIds(), QList<int> {id3});
}

void TestControllerDevices::movedDriveThatIsNotListedIsNotStored()
{
    tested->connectDrives({connectedDrive(5)});
    Z7Device moved = connectedDrive(3);
    moved.setAddress(4);
    controller().PostDeviceUpdate(TransferTelegramStack, moved);
    QCOMPARE(controller().deviceIds(), QList<int> {connectedDrive(5).deviceId()});
}

QTEST_MAIN(TestControllerDevices)

#include "tst_controllerdevices.moc"
