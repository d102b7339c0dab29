// The parameter table: its columns, and the rows that a drive's parameters get.

#include "tests/pages/shownparametertable.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QHeaderView>
#include <QLabel>

#include <deque>
#include <functional>
#include <malloc.h>
#include <memory>

Q_DECLARE_METATYPE(std::function<void(ShownParameterTable &)>)

using namespace TableColumn;

class TestParameterTable : public IsolatedTest
{
    Q_OBJECT

private slots:
    void tableWantsEveryParameterOfDrive();
    void driveWithoutParametersGivesEmptyTableWithSixHeaders();
    void headersAreShownInUsersLanguage();
    void valueColumnsAreOfFixedWidth();
    void textColumnsFitTheirContents();
    void textColumnsFitAgainWhateverComesBetweenTwoRecords_data();
    void textColumnsFitAgainWhateverComesBetweenTwoRecords();
    void remarkTakesRestOfWidth();
    void introductionWithoutTextTakesNoRoom();
    void introductionShowsTextOfLanguage();

    void driveHasOneRowPerParameterInAscendingOrder();
    void rowShowsNumberNameValueAndUnit();
    void nameAndUnitAreShownInUsersLanguage();
    void parameterWithoutDefinitionHasNeitherNameNorUnit();
    void parameterThatArrivesLaterComesLast();
    void rowStaysWhenLaterRecordLacksItsParameter();
    void laterRecordUpdatesRowInItsPlace();
    void newShowingBuildsTableFromNothing();
    void formerShowingsLeaveNothingInMemory();

    void rowIs22PixelsHigh();
    void numberIsCentredAndValueStandsRight();
    void cellsCanNeitherBeSelectedNorEdited();
    void textIsBlackAndRemarkRed();
    void userFieldIsFramelessFieldWithBoldNumberToRight();
    void userFieldKnowsLimitsOfDefinition();
    void limitsAreThoseOfMomentRowWasMade();
    void readOnlyParameterShowsDisabledField();

private:
    void prepare() override;
};

void TestParameterTable::prepare()
{
    defineTableParameters();
}

void TestParameterTable::tableWantsEveryParameterOfDrive()
{
    QVERIFY(ParameterTableDialog().allParameters);
    QVERIFY(ParameterTableDialog().hasParam(4711));
}

void TestParameterTable::driveWithoutParametersGivesEmptyTableWithSixHeaders()
{
    const ShownParameterTable shown;
    QCOMPARE(shown.table->rowCount(), 0);
    QCOMPARE(shown.table->columnCount(), int(Count));
    QStringList headers;
    for (int column = 0; column < Count; ++column)
        headers.append(shown.header(column));
    QCOMPARE(headers, (QStringList {"ID", "Parameter", "Ist-Wert", "Einheit", "Soll-Wert", "Bemerkung"}));
}

void TestParameterTable::headersAreShownInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang",
        "[DialogParamTable]\nColParamIDTitle=No\nColParamNameTitle=Name\nColDeviceDataTitle=Actual\n"
        "ColUnit=Unit\nColUserDataTitle=Wanted\nColParamInfo=Remark\n");
    const ShownParameterTable shown;
    QStringList headers;
    for (int column = 0; column < Count; ++column)
        headers.append(shown.header(column));
    QCOMPARE(headers, (QStringList {"No", "Name", "Actual", "Unit", "Wanted", "Remark"}));
}

void TestParameterTable::valueColumnsAreOfFixedWidth()
{
    const ShownParameterTable shown;
    QCOMPARE(shown.table->columnWidth(DeviceValue), 100);
    QCOMPARE(shown.table->columnWidth(UserValue), 100);
}

void TestParameterTable::textColumnsFitTheirContents()
{
    const QString longText(60, QLatin1Char('M'));
    defineParameters("V123", {"11;" + longText + ';' + longText + ";5;10;500;Unsigned;1;rw;0;"});
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    for (const int column : {Name, Unit})
        QVERIFY(shown.table->columnWidth(column) >= shown.table->fontMetrics().horizontalAdvance(longText));
    QVERIFY(shown.table->columnWidth(Number) < 100);
}

void TestParameterTable::textColumnsFitAgainWhateverComesBetweenTwoRecords_data()
{
    using Change = std::function<void(ShownParameterTable &)>;
    QTest::addColumn<std::function<void(ShownParameterTable &)>>("change");
    QTest::newRow("nothing") << Change([](ShownParameterTable &) {});
    QTest::newRow("column dragged by hand") << Change([](ShownParameterTable &shown) {
        QHeaderView *header = shown.table->horizontalHeader();
        const QPoint edge(header->sectionViewportPosition(Name) + header->sectionSize(Name) - 1, 5);
        const int before = header->sectionSize(Name);
        QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
        QMouseEvent drag(
            QEvent::MouseMove, edge + QPoint(60, 0), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(header->viewport(), &drag);
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(60, 0));
        QVERIFY(header->sectionSize(Name) > before);
    });
    QTest::newRow("larger letters") << Change([](ShownParameterTable &shown) {
        QFont large = shown.page.font();
        large.setPointSize(2 * large.pointSize());
        shown.page.setFont(large);
    });
    QTest::newRow("larger letters in the whole program") << Change([](ShownParameterTable &) {
        QFont large = QApplication::font();
        large.setPointSize(2 * large.pointSize());
        QApplication::setFont(large);
    });
    QTest::newRow("style of the table's cells") << Change(
        [](ShownParameterTable &shown) { shown.page.setStyleSheet("QTableView::item { padding: 20px; }"); });
    QTest::newRow("row with a wider name")
        << Change([](ShownParameterTable &shown) { shown.page.newUserParam(readParam(60, 1)); });
    QTest::newRow("wide row of another drive that is gone again") << Change([](ShownParameterTable &shown) {
        shown.page.newUserParam(readParam(60, 1));
        shown.page.deviceUpdateFinished();
        shown.page.showUserValues(Z7DeviceParamSet());
    });
    QTest::newRow("another language") << Change([](ShownParameterTable &shown) {
        Z7Services::shutdown();
        WorkingFolder::writeText("deutsch.z7lang", "[DialogParamTable]\nColUnit=Name of the physical unit\n");
        shown.page.initPage();
    });
}

void TestParameterTable::textColumnsFitAgainWhateverComesBetweenTwoRecords()
{
    QFETCH(std::function<void(ShownParameterTable &)>, change);
    defineParameters("V123", {"60;Drehzahl beim Abfahren der Strecke;Digit;0;0;9;Unsigned;1;rw;0;"});
    const QFont before = QApplication::font();
    {
        ShownParameterTable shown(tableDrive({readParam(11, 250)}));
        shown.page.DeviceUpdate(tableDrive({readParam(11, 250)}));
        change(shown);
        shown.page.DeviceUpdate(tableDrive({readParam(11, 251)}));
        const auto widths = [&shown] {
            return QList<int> {shown.table->columnWidth(Number), shown.table->columnWidth(Name),
                shown.table->columnWidth(Unit)};
        };
        const QList<int> afterTheRecord = widths();
        for (const int column : {Number, Name, Unit})
            shown.table->resizeColumnToContents(column);
        QCOMPARE(afterTheRecord, widths());
    }
    QApplication::setFont(before);
}

void TestParameterTable::remarkTakesRestOfWidth()
{
    const ShownParameterTable shown;
    QVERIFY(shown.table->horizontalHeader()->stretchLastSection());
    QVERIFY(shown.table->verticalHeader()->isHidden());
    QCOMPARE(shown.table->lineWidth(), 1);
}

void TestParameterTable::introductionWithoutTextTakesNoRoom()
{
    const ShownParameterTable shown;
    QVERIFY(!shown.page.findChild<QLabel *>("LIntro")->isVisible());
    QCOMPARE(shown.page.findChild<QLabel *>("LIntro")->text(), QString());
}

void TestParameterTable::introductionShowsTextOfLanguage()
{
    WorkingFolder::writeText(
        "deutsch.z7lang", "[DialogParamTable]\nIntroduction=Alle Parameter des Antriebs\n");
    const ShownParameterTable shown;
    const auto *introduction = shown.page.findChild<QLabel *>("LIntro");
    QVERIFY(introduction->isVisible());
    QVERIFY(introduction->wordWrap());
    QCOMPARE(introduction->text(), QStringLiteral("Alle Parameter des Antriebs"));
}

void TestParameterTable::driveHasOneRowPerParameterInAscendingOrder()
{
    const ShownParameterTable shown(tableDrive({readParam(83, 1), readParam(11, 2), readParam(30, 3)}));
    QCOMPARE(shown.column(Number), (QStringList {"11", "30", "83"}));
}

void TestParameterTable::rowShowsNumberNameValueAndUnit()
{
    const ShownParameterTable shown(tableDrive({readParam(30, -1500)}));
    QStringList texts;
    for (int column = 0; column < Count; ++column)
        texts.append(shown.text(30, column));
    QCOMPARE(texts, (QStringList {"30", "Drehzahl", "-1500", "1/min", "", ""}));
}

void TestParameterTable::nameAndUnitAreShownInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nRampe=Ramp\nms=millis\n");
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    QCOMPARE(shown.text(11, Name), QStringLiteral("Ramp"));
    QCOMPARE(shown.text(11, Unit), QStringLiteral("millis"));
}

void TestParameterTable::parameterWithoutDefinitionHasNeitherNameNorUnit()
{
    const ShownParameterTable shown(tableDrive({readParam(4711, 1)}));
    QCOMPARE(shown.text(4711, Name), QString());
    QCOMPARE(shown.text(4711, Unit), QString());
}

void TestParameterTable::parameterThatArrivesLaterComesLast()
{
    ShownParameterTable shown(tableDrive({readParam(30, 1)}));
    shown.page.DeviceUpdate(tableDrive({readParam(11, 2), readParam(30, 3)}));
    QCOMPARE(shown.column(Number), (QStringList {"30", "11"}));
}

void TestParameterTable::rowStaysWhenLaterRecordLacksItsParameter()
{
    ShownParameterTable shown(tableDrive({readParam(11, 250), readParam(30, 1)}));
    shown.page.DeviceUpdate(tableDrive({readParam(30, 2)}));
    QCOMPARE(shown.text(11, DeviceValue), QStringLiteral("250"));
}

void TestParameterTable::laterRecordUpdatesRowInItsPlace()
{
    ShownParameterTable shown(tableDrive({readParam(11, 250), readParam(30, 1)}));
    shown.page.DeviceUpdate(tableDrive({readParam(11, 251)}));
    QCOMPARE(shown.column(DeviceValue), (QStringList {"251", "1"}));
}

void TestParameterTable::newShowingBuildsTableFromNothing()
{
    ShownParameterTable shown(tableDrive({readParam(30, 1)}));
    shown.showFor(tableDrive({readParam(11, 2), readParam(83, 3)}));
    QCOMPARE(shown.column(Number), (QStringList {"11", "83"}));
    QCOMPARE(shown.column(DeviceValue), (QStringList {"2", "3"}));
}

/// What 2,000 showings may leave is a tenth of one small block for each of their fields.
void TestParameterTable::formerShowingsLeaveNothingInMemory()
{
    const Z7Device drive =
        tableDrive({readParam(11, 1), readParam(30, 2), readParam(50, 3), readParam(83, 4)});
    ShownParameterTable shown(drive);
    const auto heapAfter = [&](int showings) {
        // Take the places of former fields, as other objects do in the program.
        std::deque<std::unique_ptr<char[]>> others;
        for (int i = 0; i < showings; ++i) {
            shown.showFor(drive);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            for (int field = 0; field < 8; ++field)
                others.push_back(std::make_unique<char[]>(sizeof(QLineEdit)));
        }
        others.clear();
        return mallinfo2().uordblks;
    };
    const size_t before = heapAfter(200);
    if (before == 0)
        QSKIP("The sanitizer's allocator keeps no account.");
    const size_t after = heapAfter(2000);
    QVERIFY2(after < before + 2000 * 4 * 32 / 10, qPrintable(QString::number(after - before)));
}

void TestParameterTable::rowIs22PixelsHigh()
{
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    QCOMPARE(shown.table->rowHeight(0), 22);
}

void TestParameterTable::numberIsCentredAndValueStandsRight()
{
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    QCOMPARE(shown.cell(11, Number)->textAlignment(), int(Qt::AlignHCenter | Qt::AlignVCenter));
    QVERIFY(shown.cell(11, DeviceValue)->textAlignment() & Qt::AlignRight);
}

void TestParameterTable::cellsCanNeitherBeSelectedNorEdited()
{
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    for (int column = 0; column < Count; ++column)
        QVERIFY(!shown.cell(11, column)->flags().testFlag(Qt::ItemIsEnabled));
}

void TestParameterTable::textIsBlackAndRemarkRed()
{
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    for (const int column : {Number, Name, DeviceValue, Unit})
        QCOMPARE(shown.cell(11, column)->foreground().color(), QColor(Qt::black));
    QCOMPARE(shown.cell(11, Remark)->foreground().color(), QColor(Qt::red));
}

void TestParameterTable::userFieldIsFramelessFieldWithBoldNumberToRight()
{
    const ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    QVERIFY(!shown.field(11)->hasFrame());
    QCOMPARE(shown.field(11)->alignment(), Qt::AlignRight);
    QVERIFY(Person::type(shown.field(11), "251"));
    QCOMPARE(shown.field(11)->font().weight(), int(QFont::Bold));
}

void TestParameterTable::userFieldKnowsLimitsOfDefinition()
{
    const ShownParameterTable shown(tableDrive({readParam(30, 1)}));
    const auto *validator = qobject_cast<const QIntValidator *>(shown.field(30)->validator());
    QCOMPARE(validator->bottom(), -6000);
    QCOMPARE(validator->top(), 6000);
    QVERIFY(!Person::type(shown.field(30), "x12345"));
    QCOMPARE(shown.field(30)->text(), QStringLiteral("1234"));
}

void TestParameterTable::limitsAreThoseOfMomentRowWasMade()
{
    ShownParameterTable shown(tableDrive({readParam(11, 250)}));
    defineParameters("V123", {"11;Rampe;ms;5;0;99;Unsigned;1;rw;0;"});
    shown.page.DeviceUpdate(tableDrive({readParam(11, 250)}));
    QCOMPARE(qobject_cast<const QIntValidator *>(shown.field(11)->validator())->top(), 500);
}

void TestParameterTable::readOnlyParameterShowsDisabledField()
{
    const ShownParameterTable shown(tableDrive({readParam(11, 250), readParam(83, 777)}));
    QVERIFY(shown.field(83)->isVisible());
    QVERIFY(!shown.field(83)->isEnabled());
    QVERIFY(shown.field(11)->isEnabled());
}

QTEST_MAIN(TestParameterTable)

#include "tst_parametertable.moc"
