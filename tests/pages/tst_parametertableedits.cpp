// Editing in the parameter table: what is reported, and how a row shows that user and drive differ.

#include "tests/pages/shownparametertable.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <optional>

using namespace TableColumn;

namespace {

const QColor lightGrey(230, 230, 230); ///< the user wants what the drive has
const QColor darkGrey(200, 200, 200); ///< the user wants something else

} // namespace

class TestParameterTableEdits : public IsolatedTest
{
    Q_OBJECT

private slots:
    void typedNumberIsReportedUnderItsParameter();
    void reportTellsSignOfDefinition();
    void typingDrivesOwnValueIsReportedToo();
    void emptiedFieldWithdrawsChange();
    void loneMinusSignReportsNothing();
    void keystrokeIsReportedOnceHoweverManyRecordsCame();

    void restoredUserValueIsShownAndNotReported();
    void typingIntoRestoredFieldIsReported();
    void userValueThatIsNoneMakesNoRow();
    void userValueOfUnreadParameterMakesRow();
    void clearedValueCannotBeBroughtBack();
    void valueThatAnotherOneReplacedCannotBeBroughtBack();
    void rowsOfAnotherDrivesFileGoAgain();
    void rowOfOwnChangeStaysWhenAnotherDrivesFileGoes();
    void rowThatDriveOnceReportedStaysWhenAnotherDrivesFileGoes();
    void parameterOfRemovedRowComesBackWithItsFirstValue();
    void clearingEmptiesEveryFieldWithoutReport();
    void valueReachesDisabledFieldOfReadOnlyParameter();

    void colourTellsWhetherUserAndDriveDiffer_data();
    void colourTellsWhetherUserAndDriveDiffer();
    void wholeRowBearsColour();
    void fieldBearsColourInEveryState_data();
    void fieldBearsColourInEveryState();
    void unreadParameterComparesAgainstZero_data();
    void unreadParameterComparesAgainstZero();
    void emptiedFieldTurnsRowWhite();
    void clearedPageIsWhite();
    void rowTurnsLightGreyWhenDriveHasTakenValue();
    void fieldOfReadOnlyParameterIsAlwaysLightGrey();

private:
    void prepare() override;
    void tidyUp() override;

    std::optional<ShownParameterTable> shown;
    std::optional<QSignalSpy> modified;
    std::optional<QSignalSpy> deleted;
};

void TestParameterTableEdits::prepare()
{
    defineTableParameters();
    shown.emplace(tableDrive({readParam(11, 250), readParam(30, -1500), readParam(83, 777)}));
    modified.emplace(&shown->page, SIGNAL(parameterModified(Z7DeviceParam)));
    deleted.emplace(&shown->page, SIGNAL(parameterDeleted(Z7DeviceParam)));
}

void TestParameterTableEdits::tidyUp()
{
    deleted.reset();
    modified.reset();
    shown.reset();
}

void TestParameterTableEdits::typedNumberIsReportedUnderItsParameter()
{
    QVERIFY(Person::type(shown->field(11), "200"));
    QCOMPARE(lastReported(*modified).number, 11);
    QCOMPARE(lastReported(*modified).value, 200);
    QVERIFY(lastReported(*modified).hasValue);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::reportTellsSignOfDefinition()
{
    QVERIFY(Person::type(shown->field(11), "200"));
    QCOMPARE(lastReported(*modified).isUnsigned, 1);
    QVERIFY(Person::type(shown->field(30), "-7"));
    QCOMPARE(lastReported(*modified).isUnsigned, 0);
    QCOMPARE(lastReported(*modified).value, -7);
}

void TestParameterTableEdits::typingDrivesOwnValueIsReportedToo()
{
    QVERIFY(Person::type(shown->field(11), "250"));
    QCOMPARE(lastReported(*modified).value, 250);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::emptiedFieldWithdrawsChange()
{
    QVERIFY(Person::type(shown->field(30), "-7"));
    modified->clear();
    QVERIFY(Person::empty(shown->field(30)));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 1);
    QCOMPARE(lastReported(*deleted).number, 30);
    QCOMPARE(lastReported(*deleted).value, 0);
    QCOMPARE(lastReported(*deleted).isUnsigned, 0);
    QVERIFY(lastReported(*deleted).hasValue);
}

void TestParameterTableEdits::loneMinusSignReportsNothing()
{
    QVERIFY(Person::type(shown->field(30), "-"));
    QCOMPARE(shown->field(30)->text(), QStringLiteral("-"));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::keystrokeIsReportedOnceHoweverManyRecordsCame()
{
    for (int record = 0; record < 10; ++record)
        shown->page.DeviceUpdate(tableDrive({readParam(11, 250)}));
    QVERIFY(Person::type(shown->field(11), "7"));
    QCOMPARE(modified->count(), 1);
}

void TestParameterTableEdits::restoredUserValueIsShownAndNotReported()
{
    shown->page.applyUserParams(paramSet({readParam(11, 200), readParam(30, -7)}));
    QCOMPARE(shown->field(11)->text(), QStringLiteral("200"));
    QCOMPARE(shown->field(30)->text(), QStringLiteral("-7"));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::typingIntoRestoredFieldIsReported()
{
    shown->page.newUserParam(readParam(11, 20));
    QVERIFY(Person::typeAtEnd(shown->field(11), "1"));
    QCOMPARE(lastReported(*modified).value, 201);
}

void TestParameterTableEdits::userValueThatIsNoneMakesNoRow()
{
    shown->page.newUserParam(Z7DeviceParam(50, 3, 1, false));
    QCOMPARE(shown->row(50), -1);
}

void TestParameterTableEdits::userValueOfUnreadParameterMakesRow()
{
    shown->page.newUserParam(readParam(50, 3));
    QCOMPARE(shown->text(50, DeviceValue), QString());
    QCOMPARE(shown->field(50)->text(), QStringLiteral("3"));
    QCOMPARE(shown->text(50, Name), QStringLiteral("Funktion"));
    QCOMPARE(modified->count(), 0);
}

void TestParameterTableEdits::clearedValueCannotBeBroughtBack()
{
    QVERIFY(Person::type(shown->field(11), "200"));
    QVERIFY(Person::type(shown->field(30), "7"));
    QVERIFY(Person::empty(shown->field(30)));
    shown->page.clearUserValues();
    modified->clear();
    deleted->clear();
    for (const int number : {11, 30})
        QCOMPARE(textAfterUndo(shown->field(number)), QString());
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::valueThatAnotherOneReplacedCannotBeBroughtBack()
{
    QVERIFY(Person::type(shown->field(11), "200"));
    shown->page.newUserParam(readParam(11, 300));
    QCOMPARE(textAfterUndo(shown->field(11)), QStringLiteral("300"));
}

void TestParameterTableEdits::rowsOfAnotherDrivesFileGoAgain()
{
    shown->page.applyUserParams(paramSet({readParam(11, 111), readParam(50, 3), readParam(51, 4)}));
    shown->page.showUserValues(paramSet({readParam(30, -7)}));
    QCOMPARE(shown->column(Number), (QStringList {"11", "30", "83"}));
    QCOMPARE(shown->field(11)->text(), QString());
    QCOMPARE(shown->ground(11, Number), QColor(Qt::white));
    QCOMPARE(shown->field(30)->text(), QStringLiteral("-7"));
    QCOMPARE(shown->ground(30, Number), darkGrey);
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::rowOfOwnChangeStaysWhenAnotherDrivesFileGoes()
{
    const Z7DeviceParamSet own = paramSet({readParam(50, 3)});
    shown->page.applyUserParams(own);
    shown->page.applyUserParams(paramSet({readParam(50, 9), readParam(51, 4)}));
    shown->page.showUserValues(own);
    QCOMPARE(shown->column(Number), (QStringList {"11", "30", "83", "50"}));
    QCOMPARE(shown->field(50)->text(), QStringLiteral("3"));
}

void TestParameterTableEdits::rowThatDriveOnceReportedStaysWhenAnotherDrivesFileGoes()
{
    shown->page.DeviceUpdate(tableDrive({readParam(11, 251)}));
    shown->page.applyUserParams(paramSet({readParam(50, 3)}));
    shown->page.showUserValues(Z7DeviceParamSet());
    QCOMPARE(shown->column(Number), (QStringList {"11", "30", "83"}));
    QCOMPARE(shown->text(83, DeviceValue), QStringLiteral("777"));
}

void TestParameterTableEdits::parameterOfRemovedRowComesBackWithItsFirstValue()
{
    shown->page.applyUserParams(paramSet({readParam(50, 3)}));
    shown->page.showUserValues(Z7DeviceParamSet());
    shown->page.DeviceUpdate(tableDrive({readParam(50, 8)}));
    QCOMPARE(shown->column(Number), (QStringList {"11", "30", "83", "50"}));
    QCOMPARE(shown->text(50, DeviceValue), QStringLiteral("8"));
    QVERIFY(Person::type(shown->field(50), "9"));
    QCOMPARE(lastReported(*modified).number, 50);
}

void TestParameterTableEdits::clearingEmptiesEveryFieldWithoutReport()
{
    shown->page.applyUserParams(paramSet({readParam(11, 200), readParam(30, -7), readParam(83, 1)}));
    shown->page.clearUserValues();
    for (const int number : {11, 30, 83})
        QCOMPARE(shown->field(number)->text(), QString());
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestParameterTableEdits::valueReachesDisabledFieldOfReadOnlyParameter()
{
    shown->page.newUserParam(readParam(83, 778));
    QCOMPARE(shown->field(83)->text(), QStringLiteral("778"));
    QVERIFY(!shown->field(83)->isEnabled());
}

void TestParameterTableEdits::colourTellsWhetherUserAndDriveDiffer_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<int>("weight");
    QTest::newRow("nothing wanted") << 11 << "" << QColor(Qt::white) << int(QFont::Normal);
    QTest::newRow("the drive's own value") << 11 << "250" << lightGrey << int(QFont::Normal);
    QTest::newRow("the drive's own value with a zero before it")
        << 11 << "0250" << lightGrey << int(QFont::Normal);
    QTest::newRow("another value") << 11 << "251" << darkGrey << int(QFont::Bold);
    QTest::newRow("zero") << 11 << "0" << darkGrey << int(QFont::Bold);
    QTest::newRow("the drive's own negative value") << 30 << "-1500" << lightGrey << int(QFont::Normal);
    QTest::newRow("the value without its sign") << 30 << "1500" << darkGrey << int(QFont::Bold);
    QTest::newRow("a lone sign") << 30 << "-" << QColor(Qt::white) << int(QFont::Normal);
}

void TestParameterTableEdits::colourTellsWhetherUserAndDriveDiffer()
{
    QFETCH(int, number);
    QFETCH(QString, typed);
    QVERIFY(Person::type(shown->field(number), typed));
    QTEST(shown->fieldGround(number), "colour");
    QTEST(shown->ground(number, Number), "colour");
    QTEST(shown->field(number)->font().weight(), "weight");
}

void TestParameterTableEdits::wholeRowBearsColour()
{
    QVERIFY(Person::type(shown->field(11), "251"));
    for (const int column : {Number, Name, DeviceValue, Unit, Remark})
        QCOMPARE(shown->ground(11, column), darkGrey);
    QCOMPARE(shown->fieldGround(11), darkGrey);
    QCOMPARE(shown->ground(30, Number), QColor(Qt::white));
}

void TestParameterTableEdits::fieldBearsColourInEveryState_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("nothing wanted") << 11 << "" << QColor(Qt::white);
    QTest::newRow("the drive's own value") << 11 << "250" << lightGrey;
    QTest::newRow("another value") << 11 << "251" << darkGrey;
    QTest::newRow("read-only") << 83 << "" << lightGrey;
}

void TestParameterTableEdits::fieldBearsColourInEveryState()
{
    QFETCH(int, number);
    QFETCH(QString, typed);
    QFETCH(QColor, colour);
    if (!typed.isEmpty())
        QVERIFY(Person::type(shown->field(number), typed));
    const QPalette palette = shown->field(number)->palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(palette.color(group, QPalette::Base), colour);
}

void TestParameterTableEdits::unreadParameterComparesAgainstZero_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("zero is what an empty column counts as") << 0 << lightGrey;
    QTest::newRow("any other number differs") << 3 << darkGrey;
}

void TestParameterTableEdits::unreadParameterComparesAgainstZero()
{
    QFETCH(int, wanted);
    shown->page.newUserParam(readParam(50, wanted));
    QTEST(shown->ground(50, Number), "colour");
}

void TestParameterTableEdits::emptiedFieldTurnsRowWhite()
{
    QVERIFY(Person::type(shown->field(11), "251"));
    QVERIFY(Person::empty(shown->field(11)));
    QCOMPARE(shown->ground(11, Remark), QColor(Qt::white));
    QCOMPARE(shown->fieldGround(11), QColor(Qt::white));
}

void TestParameterTableEdits::clearedPageIsWhite()
{
    shown->page.applyUserParams(paramSet({readParam(11, 200), readParam(30, -1500)}));
    shown->page.clearUserValues();
    for (const int number : {11, 30})
        QCOMPARE(shown->ground(number, Number), QColor(Qt::white));
}

void TestParameterTableEdits::rowTurnsLightGreyWhenDriveHasTakenValue()
{
    QVERIFY(Person::type(shown->field(11), "251"));
    shown->page.DeviceUpdate(tableDrive({readParam(11, 251)}));
    QCOMPARE(shown->ground(11, Number), lightGrey);
    QCOMPARE(shown->field(11)->font().weight(), int(QFont::Normal));
    QCOMPARE(shown->field(11)->text(), QStringLiteral("251"));
}

void TestParameterTableEdits::fieldOfReadOnlyParameterIsAlwaysLightGrey()
{
    QCOMPARE(shown->fieldGround(83), lightGrey);
    QCOMPARE(shown->ground(83, Number), QColor(Qt::white));
    shown->page.newUserParam(readParam(83, 778));
    QCOMPARE(shown->fieldGround(83), lightGrey);
    QCOMPARE(shown->ground(83, Number), darkGrey);
}

QTEST_MAIN(TestParameterTableEdits)

#include "tst_parametertableedits.moc"
