// A value beyond the limits is marked in its field, however it came there.

#include "tests/pages/samplepage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/looks.h"
#include "tests/support/person.h"
#include "tests/support/tablerows.h"

#include <optional>

namespace {

/// A place where a value beyond the limits may stand. The limits are the definition's.
struct Place
{
    int page;
    const char *field; ///< by its accessible name
    int number;
    const char *beyond;
    const char *text;
};

const QVector<Place> places {
    {PageNumber::FixedResolutions, "Festdrehzahl n1", 0x17, "9999",
        "9999 liegt außerhalb der Grenzen -6000 bis 6000"},
    {PageNumber::CurrentLimits, "Reversierschwelle", 0x36, "9999",
        "9999 liegt außerhalb der Grenzen 0 bis 1000"},
    {PageNumber::CalibrationRotations, "X1 Soll", 0x0B, "2000",
        "2000 liegt außerhalb der Grenzen 0 bis 1023"},
    {PageNumber::ParameterTable, "11 FE-Drehzahl X1", 0x0B, "2000",
        "2000 liegt außerhalb der Grenzen 0 bis 1023"},
    {PageNumber::OperationsMode, "Betriebsmodus Eingang I1", 1, "9", "9 liegt außerhalb der Grenzen 0 bis 8"},
};

Place place()
{
    QFETCH(int, row);
    return places.at(row);
}

} // namespace

class TestFieldMarks : public IsolatedTest
{
    Q_OBJECT

private slots:
    void typedValueIsMarked_data() { addPlaces(); }
    void typedValueIsMarked();
    void restoredValueIsMarked_data() { addPlaces(); }
    void restoredValueIsMarked();
    void valueOfFileIsMarked_data() { addPlaces(); }
    void valueOfFileIsMarked();
    void valueIsMarkedOnceLimitsHaveCome();
    void valueWithinLimitsIsNotMarked_data() { addPlaces(); }
    void valueWithinLimitsIsNotMarked();
    void correctedValueLosesMark_data() { addPlaces(); }
    void correctedValueLosesMark();
    void emptiedFieldLosesMark();
    void discardTakesMarkAway();
    void loneSignLeavesJudgementOnAcceptedNumber();
    void markIsWarningBesideNumber();
    void markMovesNothing();
    void fieldTellsFinding();
    void secondFieldOfParameterIsMarkedToo();
    void valueThatDefinitionsDoNotKnowIsNotMarked();

private:
    void tidyUp() override { shown.reset(); }

    static void addPlaces();
    void show(const Place &place);
    QLabel *mark() const { return field->findChild<QLabel *>("FieldMark"); }
    bool isMarked() const { return mark() && mark()->isVisible(); }

    std::optional<SamplePage> shown;
    QLineEdit *field = nullptr;
};

void TestFieldMarks::addPlaces()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < places.size(); ++row)
        QTest::newRow(createDataPage(places.at(row).page)->metaObject()->className()) << row;
}

void TestFieldMarks::show(const Place &place)
{
    shown.emplace(place.page);
    field = nullptr;
    for (QLineEdit *candidate : shown->page->findChildren<QLineEdit *>()) {
        if (candidate->accessibleName() == QString::fromUtf8(place.field))
            field = candidate;
    }
    QVERIFY2(field, place.field);
}

void TestFieldMarks::typedValueIsMarked()
{
    show(place());
    QVERIFY(!isMarked());
    QVERIFY(Person::type(field, place().beyond));
    QVERIFY(isMarked());
    QVERIFY(mark()->accessibleName().startsWith(QString::fromUtf8(place().text)));
}

void TestFieldMarks::restoredValueIsMarked()
{
    show(place());
    shown->page->clearUserValues();
    shown->page->applyUserParams(paramSet({readParam(place().number, QString(place().beyond).toInt())}));
    QVERIFY(isMarked());
}

void TestFieldMarks::valueOfFileIsMarked()
{
    show(place());
    shown->page->showUserValues(paramSet({readParam(place().number, QString(place().beyond).toInt())}));
    QVERIFY(isMarked());
}

void TestFieldMarks::valueIsMarkedOnceLimitsHaveCome()
{
    defineParameters("V200", {"74;Unterspannung;V;5;0;9999;Unsigned;1;rw;0;"});
    ShownPage early(PageNumber::VoltageLimits);
    early.page->softwareVersion = "V200";
    early.page->initPage();
    early.page->show();
    field = early.field("edParam0x4AUser");
    QVERIFY(Person::type(field, "5000"));
    QVERIFY(!isMarked());
    defineParameters("V200", {"74;Unterspannung;V;5;0;99;Unsigned;1;rw;0;"});
    early.page->DeviceUpdate(driveWith({readParam(0x4A, 5)}));
    QVERIFY(isMarked());
}

void TestFieldMarks::valueWithinLimitsIsNotMarked()
{
    show(place());
    QVERIFY(Person::type(field, "1"));
    QVERIFY(!isMarked());
}

void TestFieldMarks::correctedValueLosesMark()
{
    show(place());
    QVERIFY(Person::type(field, place().beyond));
    QVERIFY(Person::type(field, "1"));
    QVERIFY(!isMarked());
    QVERIFY(!field->toolTip().contains(QStringLiteral("außerhalb")));
}

void TestFieldMarks::emptiedFieldLosesMark()
{
    show(places.at(0));
    QVERIFY(Person::type(field, "9999"));
    QVERIFY(Person::empty(field));
    QVERIFY(!isMarked());
}

void TestFieldMarks::discardTakesMarkAway()
{
    show(places.at(0));
    QVERIFY(Person::type(field, "9999"));
    shown->page->clearUserValues();
    QVERIFY(!isMarked());
}

void TestFieldMarks::loneSignLeavesJudgementOnAcceptedNumber()
{
    show(places.at(0));
    QVERIFY(Person::type(field, "-9"));
    QTest::keyClick(field, Qt::Key_Backspace);
    QCOMPARE(field->text(), QStringLiteral("-"));
    QVERIFY(!isMarked());
    QVERIFY(Person::type(field, "9999"));
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, "-");
    QCOMPARE(lastReported(shown->modified).value, 9999);
    QVERIFY(isMarked());
}

void TestFieldMarks::markIsWarningBesideNumber()
{
    show(places.at(0));
    QVERIFY(Person::type(field, "9999"));
    QCOMPARE(mark()->pixmap(Qt::ReturnByValue).toImage(), Looks::image(":/images/YellowIcon_16px.png", 16));
    const int number = field->fontMetrics().horizontalAdvance(field->text());
    QVERIFY(mark()->geometry().right() < field->width() - number - 3);
    QVERIFY(field->rect().contains(mark()->geometry()));
}

void TestFieldMarks::markMovesNothing()
{
    show(places.at(2));
    const auto geometries = [this] {
        QList<QRect> all {shown->page->geometry()};
        for (const QLineEdit *each : shown->page->findChildren<QLineEdit *>())
            all.append(each->geometry());
        return all;
    };
    QVERIFY(Person::type(field, "1"));
    QTest::qWait(0);
    const QList<QRect> before = geometries();
    const QSize hint = field->sizeHint();
    QVERIFY(Person::type(field, "2000"));
    QTest::qWait(0);
    QVERIFY(isMarked());
    QCOMPARE(geometries(), before);
    QCOMPARE(field->sizeHint(), hint);
}

void TestFieldMarks::fieldTellsFinding()
{
    show(places.at(2));
    QVERIFY(Person::type(field, "2000"));
    QVERIFY(field->toolTip().startsWith(
        QStringLiteral("2000 liegt außerhalb der Grenzen 0 bis 1023\nParameter 11: FE-Drehzahl X1\n")));
    QCOMPARE(field->accessibleDescription(), field->toolTip());
}

void TestFieldMarks::secondFieldOfParameterIsMarkedToo()
{
    show(places.at(1));
    QVERIFY(Person::type(field, "9999"));
    field = shown->field("edParam0x36User_2");
    QVERIFY(isMarked());
}

void TestFieldMarks::valueThatDefinitionsDoNotKnowIsNotMarked()
{
    shown.emplace(PageNumber::ParameterTable);
    shown->page->applyUserParams(paramSet({readParam(999, 12345)}));
    field = tableField(*shown->child<QTableWidget>("ParameterTable"), 999);
    QCOMPARE(field->text(), QStringLiteral("12345"));
    QVERIFY(!isMarked());
    QVERIFY(field->toolTip().contains("nicht enthalten"));
}

QTEST_MAIN(TestFieldMarks)

#include "tst_fieldmarks.moc"
