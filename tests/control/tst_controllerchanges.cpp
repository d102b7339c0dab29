// The user's pending changes: what is kept per drive, what counts as modified, and what stands against
// writing.

#include "tests/control/testedcontroller.h"

#include <QTest>

#include <optional>

using namespace Z7CommInterface;

namespace {

const int id3 = connectedDrive(3).deviceId();
const int id4 = connectedDrive(4).deviceId();
constexpr int table = TestedController::tablePage;

const QString notWritable = QStringLiteral(
    "Der Parameter kann zur Zeit nicht geschrieben werden (Digitaleingänge A+B nicht auf low)");
const QString speedConflict = QStringLiteral("Parameterkonflikt Drehzahl: 500 <= 0 <= 0 verletzt.");

} // namespace

class TestControllerChanges : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void typedNumberBecomesChangeOfShownDrive();
    void laterNumberReplacesFormerOne();
    void changeBearsVersionOfItsDrive();
    void changeRebuildsTreeAndThenConflictLine();
    void emptiedFieldWithdrawsChange();
    void withdrawingLastChangeLeavesNoSet();
    void withdrawingWhatWasNotChangedStillRefreshesWindow();
    void changesBelongToTheirDriveAlone();
    void changeWithoutDriveBelongsToNoDrive();
    void changesOfDriveThatComesBackAreStillThere();

    void changeThatDiffersFromDriveIsModified();
    void changeEqualToDriveIsKeptButNotModified();
    void changeStopsBeingModifiedWhenDriveHasValue();
    void parameterThatDriveLacksCountsAsZero_data();
    void parameterThatDriveLacksCountsAsZero();
    void changeWithoutValueIsNotModified();
    void onlyPagesOfParameterAreModified();
    void unknownPageOrDriveIsNotModified();

    void resetForgetsChangesAndEmptiesFields();
    void resetOfAnotherDriveKeepsChanges();
    void defaultsBecomePendingChangesOfEveryWritableParameter();
    void defaultsReplaceWhatUserTyped();
    void defaultsOfUnlistedDriveChangeNothing();
    void importedSetReplacesChangesAndFillsPage();
    void importedEmptySetDoesNothing();

    void noChangesNoConflict();
    void conflictRuleShowsInConflictLine();
    void withdrawnChangeFallsBackToDrivesValue();
    void applicationFunctionWithInputHighIsConflict_data();
    void applicationFunctionWithInputHighIsConflict();
    void messageOnApplicationFunctionsFollowsRulesOnNewLine();
    void messageOnApplicationFunctionsComesOnce();

private:
    Z7MainController &controller() { return tested->controller; }
    void reportValue(int number, int value);
    void reportInputs(int digitalInputs);

    std::optional<TestedController> tested;
};

void TestControllerChanges::init()
{
    tested.emplace();
    tested->showTableOf({connectedDrive(3), connectedDrive(4)});
}

void TestControllerChanges::reportValue(int number, int value)
{
    controller().PostDeviceUpdate(DevicePolling, withValue(controller().device(id3), number, value));
}

void TestControllerChanges::reportInputs(int digitalInputs)
{
    Z7Device reported = controller().device(id3);
    reported.digitalInputs = static_cast<quint8>(digitalInputs);
    controller().PostDeviceUpdate(DevicePolling, reported);
}

void TestControllerChanges::typedNumberBecomesChangeOfShownDrive()
{
    tested->typeInTable(30, "7");
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
}

void TestControllerChanges::laterNumberReplacesFormerOne()
{
    tested->typeInTable(30, "71");
    tested->typeInTable(11, "5");
    QCOMPARE(tested->userChanges(), QStringLiteral("11=5 30=71"));
}

void TestControllerChanges::changeBearsVersionOfItsDrive()
{
    tested->typeInTable(30, "7");
    Z7DeviceParamSet changes;
    QVERIFY(controller().currentUserParams(changes));
    QCOMPARE(changes.softwareVersion, QStringLiteral("V123"));
}

void TestControllerChanges::changeRebuildsTreeAndThenConflictLine()
{
    tested->typeInTable(30, "7");
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "conflict line"}));
    QCOMPARE(tested->mainContent.tree, (QList<int> {id3, id4}));
}

void TestControllerChanges::emptiedFieldWithdrawsChange()
{
    tested->typeInTable(30, "7");
    tested->typeInTable(11, "5");
    tested->emptyInTable(30);
    QCOMPARE(tested->userChanges(), QStringLiteral("11=5"));
}

void TestControllerChanges::withdrawingLastChangeLeavesNoSet()
{
    tested->typeInTable(30, "7");
    tested->emptyInTable(30);
    Z7DeviceParamSet untouched(QStringLiteral("as it was"));
    QVERIFY(!controller().currentUserParams(untouched));
    QCOMPARE(untouched.softwareVersion, QStringLiteral("as it was"));
}

void TestControllerChanges::withdrawingWhatWasNotChangedStillRefreshesWindow()
{
    controller().postUserDeletedParameter(userChange(30, 0));
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "conflict line"}));
    QCOMPARE(tested->userChanges(), QStringLiteral("none"));
}

void TestControllerChanges::changesBelongToTheirDriveAlone()
{
    tested->typeInTable(30, "7");
    tested->showPage(table, id4);
    QCOMPARE(tested->userChanges(), QStringLiteral("none"));
    tested->typeInTable(30, "8");
    tested->showPage(table, id3);
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
}

void TestControllerChanges::changeWithoutDriveBelongsToNoDrive()
{
    constexpr int unlisted = 1;
    tested->showPage(table, unlisted);
    tested->typeInTable(30, "7");
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    tested->showPage(table, id3);
    QCOMPARE(tested->userChanges(), QStringLiteral("none"));
}

void TestControllerChanges::changesOfDriveThatComesBackAreStillThere()
{
    tested->typeInTable(30, "7");
    tested->showTableOf({connectedDrive(3)});
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    QCOMPARE(tested->tableField(30)->text(), QStringLiteral("7"));
}

void TestControllerChanges::changeThatDiffersFromDriveIsModified()
{
    tested->typeInTable(30, "7");
    QVERIFY(controller().hasModifiedParams(table, id3));
    QVERIFY(!controller().hasModifiedParams(table, id4));
}

void TestControllerChanges::changeEqualToDriveIsKeptButNotModified()
{
    reportValue(30, 7);
    tested->typeInTable(30, "7");
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    QVERIFY(!controller().hasModifiedParams(table, id3));
}

void TestControllerChanges::changeStopsBeingModifiedWhenDriveHasValue()
{
    tested->typeInTable(30, "7");
    reportValue(30, 7);
    QVERIFY(!controller().hasModifiedParams(table, id3));
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
}

void TestControllerChanges::parameterThatDriveLacksCountsAsZero_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<bool>("modified");
    QTest::newRow("zero is no change") << 0 << false;
    QTest::newRow("any other number is one") << 1 << true;
}

void TestControllerChanges::parameterThatDriveLacksCountsAsZero()
{
    QFETCH(int, wanted);
    controller().postUserModifiedParameter(userChange(4711, wanted));
    QTEST(controller().hasModifiedParams(table, id3), "modified");
}

void TestControllerChanges::changeWithoutValueIsNotModified()
{
    controller().postUserModifiedParameter(Z7DeviceParam(30, 7, 1, false));
    QVERIFY(!controller().hasModifiedParams(table, id3));
}

void TestControllerChanges::onlyPagesOfParameterAreModified()
{
    constexpr int network = 0;
    tested->showPage(network, id3);
    tested->shownPage()->addParamId(30);
    controller().postUserModifiedParameter(userChange(11, 7));
    QVERIFY(!controller().hasModifiedParams(network, id3));
    QVERIFY(controller().hasModifiedParams(table, id3));
    controller().postUserModifiedParameter(userChange(30, 7));
    QVERIFY(controller().hasModifiedParams(network, id3));
}

void TestControllerChanges::unknownPageOrDriveIsNotModified()
{
    constexpr int unlisted = 1;
    tested->typeInTable(30, "7");
    QVERIFY(!controller().hasModifiedParams(17, id3));
    QVERIFY(!controller().hasModifiedParams(table, unlisted));
}

void TestControllerChanges::resetForgetsChangesAndEmptiesFields()
{
    tested->typeInTable(11, "500");
    tested->forgetNotes();
    controller().resetChanges(id3);
    QCOMPARE(tested->userChanges(), QStringLiteral("none"));
    QCOMPARE(tested->tableField(11)->text(), QString());
    QCOMPARE(tested->mainContent.notes, (QStringList {"tree", "conflict line"}));
    QCOMPARE(tested->mainContent.conflictLine, QString());
}

void TestControllerChanges::resetOfAnotherDriveKeepsChanges()
{
    tested->typeInTable(30, "7");
    controller().resetChanges(id4);
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
}

void TestControllerChanges::defaultsBecomePendingChangesOfEveryWritableParameter()
{
    controller().setDefaults(id3);
    QCOMPARE(tested->userChanges(), QStringLiteral("11=100 12=200 13=300 30=120 31=-5 50=3"));
    QCOMPARE(tested->mainContent.notes, QStringList {"tree"});
    QVERIFY(controller().hasModifiedParams(table, id3));
    QVERIFY(!controller().hasModifiedParams(table, id4));
}

void TestControllerChanges::defaultsReplaceWhatUserTyped()
{
    tested->typeInTable(30, "7");
    controller().postUserModifiedParameter(userChange(4711, 1));
    controller().setDefaults(id3);
    QCOMPARE(tested->userChanges(), QStringLiteral("11=100 12=200 13=300 30=120 31=-5 50=3 4711=1"));
}

void TestControllerChanges::defaultsOfUnlistedDriveChangeNothing()
{
    constexpr int unlisted = 1;
    controller().setDefaults(unlisted);
    QCOMPARE(tested->userChanges(), QStringLiteral("none"));
    QVERIFY(!controller().hasModifiedParams(table, unlisted));
}

void TestControllerChanges::importedSetReplacesChangesAndFillsPage()
{
    tested->typeInTable(11, "5");
    tested->forgetNotes();
    Z7DeviceParamSet imported(QStringLiteral("V123"));
    imported.insert(userChange(30, 7));
    controller().setUserParams(id3, imported);
    QCOMPARE(tested->userChanges(), QStringLiteral("30=7"));
    QCOMPARE(tested->tableField(30)->text(), QStringLiteral("7"));
    QCOMPARE(tested->mainContent.notes, (QStringList {"conflict line", "tree"}));
}

void TestControllerChanges::importedEmptySetDoesNothing()
{
    tested->typeInTable(11, "5");
    tested->forgetNotes();
    controller().setUserParams(id3, Z7DeviceParamSet(QStringLiteral("V123")));
    QCOMPARE(tested->userChanges(), QStringLiteral("11=5"));
    QCOMPARE(tested->mainContent.notes, QStringList());
}

void TestControllerChanges::noChangesNoConflict()
{
    reportValue(11, 500);
    reportInputs(0x03);
    QCOMPARE(controller().calcConflicts(), QString());
}

void TestControllerChanges::conflictRuleShowsInConflictLine()
{
    tested->typeInTable(11, "500");
    QCOMPARE(controller().calcConflicts(), speedConflict);
    QCOMPARE(tested->mainContent.conflictLine, speedConflict);
}

void TestControllerChanges::withdrawnChangeFallsBackToDrivesValue()
{
    reportValue(12, 600);
    reportValue(13, 700);
    tested->typeInTable(11, "500");
    tested->typeInTable(12, "9");
    QCOMPARE(tested->mainContent.conflictLine,
        QStringLiteral("Parameterkonflikt Drehzahl: 500 <= 9 <= 700 verletzt."));
    tested->emptyInTable(12);
    QCOMPARE(tested->mainContent.conflictLine, QString());
}

void TestControllerChanges::applicationFunctionWithInputHighIsConflict_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("digitalInputs");
    QTest::addColumn<QString>("conflict");
    QTest::newRow("input A high") << 50 << 0x01 << notWritable;
    QTest::newRow("input B high") << 50 << 0x02 << notWritable;
    QTest::newRow("both high") << 50 << 0x03 << notWritable;
    QTest::newRow("both low, the others high") << 50 << 0x0C << QString();
    QTest::newRow("parameter that can be written at any time") << 30 << 0x03 << QString();
}

void TestControllerChanges::applicationFunctionWithInputHighIsConflict()
{
    QFETCH(int, number);
    QFETCH(int, digitalInputs);
    reportInputs(digitalInputs);
    tested->typeInTable(number, "7");
    QTEST(tested->mainContent.conflictLine, "conflict");
}

void TestControllerChanges::messageOnApplicationFunctionsFollowsRulesOnNewLine()
{
    reportInputs(0x01);
    tested->typeInTable(11, "500");
    tested->typeInTable(50, "7");
    QCOMPARE(controller().calcConflicts(), speedConflict + QLatin1Char('\n') + notWritable);
}

void TestControllerChanges::messageOnApplicationFunctionsComesOnce()
{
    reportInputs(0x01);
    tested->typeInTable(50, "7");
    // A number without a definition counts as an application function too.
    controller().postUserModifiedParameter(userChange(4711, 1));
    QCOMPARE(controller().calcConflicts(), notWritable);
}

QTEST_MAIN(TestControllerChanges)

#include "tst_controllerchanges.moc"
