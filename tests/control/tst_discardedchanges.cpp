// Discarded changes come back until the drive's next change.

#include "tests/control/testedcontroller.h"

#include <QTest>

#include <optional>

namespace {

using Change = void (*)(PendingChanges &);

constexpr int drive = 3;
constexpr int otherDrive = 4;
const QString version = QStringLiteral("V123");

} // namespace

Q_DECLARE_METATYPE(Change)

class TestDiscardedChanges : public QObject
{
    Q_OBJECT

private slots:
    void discardedChangesComeBack();
    void nothingDiscardedDoesNotComeBack();
    void changesComeBackOnce();
    void nextChangeOfDriveEndsIt_data();
    void nextChangeOfDriveEndsIt();
    void changeOfAnotherDriveLeavesIt();
    void withdrawingWhatIsNotThereLeavesIt();
    void discardingNothingLeavesIt();

    void restoredChangesAreShownAndCounted();
    void restoringAnotherDriveLeavesFieldsOfShownOne();
    void restoringNothingLeavesWindow();
    void typedChangeEndsRestoring();
};

void TestDiscardedChanges::discardedChangesComeBack()
{
    PendingChanges changes;
    changes.insert(drive, version, userChange(30, 7));
    changes.discard(drive);
    QVERIFY(changes.hasDiscarded(drive));
    QVERIFY(changes.restore(drive));
    QCOMPARE(changes.value(drive).value(30).value, 7);
    QCOMPARE(changes.value(drive).softwareVersion, version);
}

void TestDiscardedChanges::nothingDiscardedDoesNotComeBack()
{
    PendingChanges changes;
    changes.discard(drive);
    QVERIFY(!changes.hasDiscarded(drive));
    QVERIFY(!changes.restore(drive));
    QVERIFY(!changes.contains(drive));
}

void TestDiscardedChanges::changesComeBackOnce()
{
    PendingChanges changes;
    changes.insert(drive, version, userChange(30, 7));
    changes.discard(drive);
    changes.restore(drive);
    QVERIFY(!changes.hasDiscarded(drive));
    QVERIFY(!changes.restore(drive));
}

void TestDiscardedChanges::nextChangeOfDriveEndsIt_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, Change change) { QTest::newRow(name) << change; };
    row("typed", [](PendingChanges &c) { c.insert(drive, version, userChange(11, 5)); });
    row("file", [](PendingChanges &c) { c.replace(drive, changeSet({userChange(11, 5)})); });
    row("factory values", [](PendingChanges &c) {
        Z7Device device = connectedDrive(3);
        device.parameterSet.insert(Z7DeviceParam(30, 0, 1, false));
        c.insertFactoryValues(drive, device);
    });
}

void TestDiscardedChanges::nextChangeOfDriveEndsIt()
{
    QFETCH(Change, change);
    PendingChanges changes;
    changes.insert(drive, version, userChange(30, 7));
    changes.discard(drive);
    change(changes);
    QVERIFY(!changes.restore(drive));
    QVERIFY(changes.contains(drive));
}

void TestDiscardedChanges::changeOfAnotherDriveLeavesIt()
{
    PendingChanges changes;
    changes.insert(drive, version, userChange(30, 7));
    changes.discard(drive);
    changes.insert(otherDrive, version, userChange(11, 5));
    changes.discard(otherDrive);
    QVERIFY(changes.restore(drive));
    QCOMPARE(changes.value(drive).value(30).value, 7);
}

void TestDiscardedChanges::withdrawingWhatIsNotThereLeavesIt()
{
    PendingChanges changes;
    changes.insert(drive, version, userChange(30, 7));
    changes.discard(drive);
    changes.withdraw(drive, userChange(30, 0));
    QVERIFY(changes.restore(drive));
}

void TestDiscardedChanges::discardingNothingLeavesIt()
{
    PendingChanges changes;
    changes.insert(drive, version, userChange(30, 7));
    changes.discard(drive);
    changes.discard(drive);
    QVERIFY(changes.restore(drive));
}

void TestDiscardedChanges::restoredChangesAreShownAndCounted()
{
    TestedController tested;
    tested.showTableOf({connectedDrive(3)});
    const int id = connectedDrive(3).deviceId();
    tested.typeInTable(30, QStringLiteral("7"));
    tested.controller.resetChanges(id);
    QCOMPARE(tested.tableField(30)->text(), QString());
    QVERIFY(tested.controller.knowledge().canRestoreChanges());
    tested.forgetNotes();
    tested.controller.restoreChanges(id);
    QCOMPARE(tested.tableField(30)->text(), QStringLiteral("7"));
    QCOMPARE(tested.userChanges(), QStringLiteral("30=7"));
    QCOMPARE(tested.mainContent.notes, QStringList({"tree", "conflict line"}));
    QVERIFY(!tested.controller.knowledge().canRestoreChanges());
    QCOMPARE(tested.controller.knowledge().pending().total, 1);
}

void TestDiscardedChanges::restoringAnotherDriveLeavesFieldsOfShownOne()
{
    TestedController tested;
    const int id3 = connectedDrive(3).deviceId();
    tested.showTableOf({connectedDrive(3), connectedDrive(4)});
    tested.typeInTable(30, QStringLiteral("7"));
    tested.controller.resetChanges(id3);
    tested.showPage(TestedController::tablePage, connectedDrive(4).deviceId());
    tested.typeInTable(30, QStringLiteral("8"));
    tested.controller.restoreChanges(id3);
    QCOMPARE(tested.tableField(30)->text(), QStringLiteral("8"));
    tested.showPage(TestedController::tablePage, id3);
    QCOMPARE(tested.tableField(30)->text(), QStringLiteral("7"));
}

void TestDiscardedChanges::restoringNothingLeavesWindow()
{
    TestedController tested;
    tested.showTableOf({connectedDrive(3)});
    tested.typeInTable(30, QStringLiteral("7"));
    tested.forgetNotes();
    tested.controller.restoreChanges(connectedDrive(3).deviceId());
    QCOMPARE(tested.mainContent.notes, QStringList());
    QCOMPARE(tested.userChanges(), QStringLiteral("30=7"));
}

void TestDiscardedChanges::typedChangeEndsRestoring()
{
    TestedController tested;
    tested.showTableOf({connectedDrive(3)});
    tested.typeInTable(30, QStringLiteral("7"));
    tested.controller.resetChanges(connectedDrive(3).deviceId());
    tested.typeInTable(11, QStringLiteral("5"));
    QVERIFY(!tested.controller.knowledge().canRestoreChanges());
    QCOMPARE(tested.userChanges(), QStringLiteral("11=5"));
}

QTEST_MAIN(TestDiscardedChanges)

#include "tst_discardedchanges.moc"
