// Showing pages: which page stands in the content area, for which drive, and with what on it.

#include "pages/pagefactory.h"
#include "tests/control/testedcontroller.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

const int id3 = connectedDrive(3).deviceId();
const int id4 = connectedDrive(4).deviceId();
constexpr int unlisted = 1;
constexpr int network = 0;
constexpr int table = TestedController::tablePage;
constexpr int firmware = TestedController::firmwarePage;

} // namespace

class TestControllerPages : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shownPageStandsInContentArea();
    void nextPageTakesPlaceOfFormerOne();
    void pageShownAgainStaysInItsPlace();
    void unknownPageChangesNothing();
    void pageCreatedTwiceReportsKeystrokeOnce();
    void eachPageCanBeShown();

    void firstPageOfDriveSelectsDrive();
    void nextPageOfSameDriveSelectsNothing();
    void pageOfAnotherDriveSelectsThatDrive();
    void firmwarePageOfNewDriveSelectsNone();
    void pageBehindFirmwarePageOfSameDriveSelectsNothing();
    void pageOfUnlistedDriveSelectsNone();

    void pageShowsDrivesValues();
    void pageShowsUsersChangesWithoutReportingThem();
    void conflictLineIsEmptiedForDriveWithoutChanges();
    void conflictLineStaysForDriveWithChanges();
    void pageWithoutDriveKeepsItsValuesAndLosesThoseOfUser();
    void tableNeverShownWithDriveIsEmpty();

    void showingPageForgetsAllListeners();
    void showingPageWithoutDriveForgetsNobody();
    void lateRecordOfFormerDriveReachesNewPage();

private:
    Z7MainController &controller() { return tested->controller; }
    Z7Device record(int id) { return controller().device(id); }
    QString shownValue(int number) { return tested->tableText(number, TestedController::deviceValueColumn); }

    std::optional<TestedController> tested;
    std::optional<QSignalSpy> selected;
    std::optional<QSignalSpy> none;
};

void TestControllerPages::init()
{
    tested.emplace();
    tested->connectDrives({connectedDrive(3), connectedDrive(4)});
    selected.emplace(&controller(), SIGNAL(NewDeviceSelected(Z7Device)));
    none.emplace(&controller(), SIGNAL(NoDeviceSelected()));
    tested->forgetNotes();
}

void TestControllerPages::cleanup()
{
    none.reset();
    selected.reset();
    tested.reset();
}

void TestControllerPages::shownPageStandsInContentArea()
{
    QVERIFY(tested->showPage(table, id3));
    const Z7DataWidget *page = tested->shownPage();
    QCOMPARE(page->metaObject()->className(), "ParameterTableDialog");
    QCOMPARE(tested->layout.count(), 1);
    QCOMPARE(tested->layout.itemAt(0)->widget(), page);
    QVERIFY(page->isVisible());
}

void TestControllerPages::nextPageTakesPlaceOfFormerOne()
{
    tested->showPage(table, id3);
    const Z7DataWidget *former = tested->shownPage();
    QVERIFY(tested->showPage(network, id3));
    QVERIFY(!former->parentWidget());
    QVERIFY(!former->isVisible());
    QCOMPARE(tested->shownPage()->metaObject()->className(), "NetworkDialog");
    QCOMPARE(tested->layout.count(), 1);
}

void TestControllerPages::pageShownAgainStaysInItsPlace()
{
    tested->showPage(table, id3);
    QVERIFY(tested->showPage(table, id4));
    QCOMPARE(tested->layout.count(), 1);
    QVERIFY(tested->shownPage()->isVisible());
}

void TestControllerPages::unknownPageChangesNothing()
{
    tested->showPage(table, id3);
    const Z7DataWidget *page = tested->shownPage();
    tested->forgetNotes();
    QVERIFY(!tested->showPage(PageNumber::Count, id4));
    QCOMPARE(tested->shownPage(), page);
    QCOMPARE(controller().currentDeviceRecord().address, 3);
    QCOMPARE(tested->mainContent.notes, QStringList());
}

void TestControllerPages::pageCreatedTwiceReportsKeystrokeOnce()
{
    controller().createPage(table);
    tested->showPage(table, id3);
    tested->forgetNotes();
    tested->typeInTable(30, "7");
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "conflict line"}));
}

void TestControllerPages::eachPageCanBeShown()
{
    for (int number = 0; number < PageNumber::Count; ++number) {
        QVERIFY(tested->showPage(number, id3));
        QVERIFY(tested->shownPage()->isVisible());
    }
}

void TestControllerPages::firstPageOfDriveSelectsDrive()
{
    tested->showPage(network, id3);
    QCOMPARE(selected->count(), 1);
    QCOMPARE(selected->first().first().value<Z7Device>().address, 3);
    QCOMPARE(none->count(), 0);
    QCOMPARE(controller().currentDeviceRecord().address, 3);
    QVERIFY(controller().hasCurrentDevice());
}

void TestControllerPages::nextPageOfSameDriveSelectsNothing()
{
    tested->showPage(network, id3);
    tested->showPage(table, id3);
    QCOMPARE(selected->count(), 1);
    QCOMPARE(none->count(), 0);
}

void TestControllerPages::pageOfAnotherDriveSelectsThatDrive()
{
    tested->showPage(table, id3);
    tested->showPage(table, id4);
    QCOMPARE(selected->count(), 2);
    QCOMPARE(selected->last().first().value<Z7Device>().address, 4);
}

void TestControllerPages::firmwarePageOfNewDriveSelectsNone()
{
    tested->showPage(firmware, id3);
    QCOMPARE(selected->count(), 0);
    QCOMPARE(none->count(), 1);
    QVERIFY(controller().hasCurrentDevice());
}

void TestControllerPages::pageBehindFirmwarePageOfSameDriveSelectsNothing()
{
    tested->showPage(firmware, id3);
    tested->showPage(table, id3);
    QCOMPARE(selected->count(), 0);
    QCOMPARE(none->count(), 1);
}

void TestControllerPages::pageOfUnlistedDriveSelectsNone()
{
    tested->showPage(table, id3);
    QVERIFY(tested->showPage(table, unlisted));
    QCOMPARE(none->count(), 1);
    QVERIFY(!controller().hasCurrentDevice());
}

void TestControllerPages::pageShowsDrivesValues()
{
    controller().PostDeviceUpdate(TransferTelegramStack, withValue(record(id3), 11, 555));
    tested->showPage(table, id3);
    QCOMPARE(shownValue(11), QStringLiteral("555"));
    tested->showPage(table, id4);
    QCOMPARE(shownValue(11), QStringLiteral("0"));
}

void TestControllerPages::pageShowsUsersChangesWithoutReportingThem()
{
    tested->showPage(table, id3);
    tested->typeInTable(30, "7");
    tested->showPage(network, id3);
    tested->forgetNotes();
    tested->showPage(table, id3);
    QCOMPARE(tested->tableField(30)->text(), QStringLiteral("7"));
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    QVERIFY(!tested->mainContent.notes.contains("conflict line"));
}

void TestControllerPages::conflictLineIsEmptiedForDriveWithoutChanges()
{
    tested->showPage(table, id3);
    tested->typeInTable(11, "500");
    QVERIFY(!tested->mainContent.conflictLine.isEmpty());
    tested->showPage(table, id4);
    QCOMPARE(tested->mainContent.conflictLine, QString());
}

void TestControllerPages::conflictLineStaysForDriveWithChanges()
{
    tested->showPage(table, id3);
    tested->typeInTable(11, "500");
    const QString conflict = tested->mainContent.conflictLine;
    tested->showPage(network, id3);
    QCOMPARE(tested->mainContent.conflictLine, conflict);
}

void TestControllerPages::pageWithoutDriveKeepsItsValuesAndLosesThoseOfUser()
{
    controller().PostDeviceUpdate(TransferTelegramStack, withValue(record(id3), 11, 555));
    tested->showPage(table, id3);
    tested->typeInTable(11, "500");
    tested->showPage(table, unlisted);
    QCOMPARE(shownValue(11), QStringLiteral("555"));
    QCOMPARE(tested->tableField(11)->text(), QString());
    QCOMPARE(tested->mainContent.conflictLine, QString());
    tested->showPage(table, id3);
    QCOMPARE(tested->tableField(11)->text(), QStringLiteral("500"));
}

void TestControllerPages::tableNeverShownWithDriveIsEmpty()
{
    tested->showPage(table, unlisted);
    QCOMPARE(tested->content.findChild<QTableWidget *>("ParameterTable")->rowCount(), 0);
}

void TestControllerPages::showingPageForgetsAllListeners()
{
    NotingListener callback;
    tested->showPage(table, id3);
    controller().readDeviceStatus(record(id4), &callback);
    controller().scanDevice(record(id4), &callback);
    tested->showPage(table, id4);
    callback.notes.clear();
    controller().PostDeviceUpdate(TransferTelegramStack, record(id4));
    controller().PostDeviceUpdate(ScanDevice, record(id4));
    QCOMPARE(callback.notes, QStringList());
}

void TestControllerPages::showingPageWithoutDriveForgetsNobody()
{
    tested->showPage(table, id3);
    tested->showPage(table, unlisted);
    tested->forgetNotes();
    controller().PostDeviceUpdate(DevicePolling, connectedDrive(5));
    QCOMPARE(tested->deviceControl.notes, QStringList {"record Z7.5"});
}

void TestControllerPages::lateRecordOfFormerDriveReachesNewPage()
{
    tested->showPage(table, id3);
    tested->showPage(table, id4);
    controller().PostDeviceUpdate(DevicePolling, withValue(record(id3), 11, 555));
    QCOMPARE(shownValue(11), QStringLiteral("555"));
    QCOMPARE(record(id4).parameterSet.value(11).value, 0);
}

QTEST_MAIN(TestControllerPages)

#include "tst_controllerpages.moc"
