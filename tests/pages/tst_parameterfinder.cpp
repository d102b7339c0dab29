// Finding a parameter in the table, by keyboard alone.

#include "pages/parametertabledialog.h"
#include "tests/pages/samplepage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"
#include "tests/support/tablerows.h"

#include <optional>

class TestParameterFinder : public IsolatedTest
{
    Q_OBJECT

private slots:
    void lineIsHiddenUntilItIsOpened();
    void openedLineTakesKeys();
    void numberLeadsToItsRow();
    void partOfNameLeadsToRow();
    void veryNumberComesBeforeNames();
    void returnAndF3GoOn_data();
    void returnAndF3GoOn();
    void searchComesBackToFirstHit();
    void shiftGoesBack();
    void escapeLeavesCursorInFieldOfRow();
    void escapeAfterNoHitLeavesCursorWhereItWas();
    void escapeOnReadOnlyRowLeavesCursorWhereItWas();
    void f3AtFieldsGoesToNextField();
    void nothingFoundIsSaid();
    void whatIsTypedIntoLineChangesNoParameter();
    void lineOpenedAgainCanBeTypedOver();
    void lineFollowsLastFieldForTab();
    void nextShowingHasNoLine();
    void lineIsInUsersLanguage();

private:
    void prepare() override;
    void tidyUp() override { shown.reset(); }

    void open() { static_cast<ParameterTableDialog *>(shown->page.get())->findParameter(); }
    void find(const QString &text);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QLineEdit *input() const { return shown->field("FindInput"); }
    QString result() const { return Person::textOf(*shown->page, "FindResult"); }
    QLineEdit *field(int number) const { return tableField(*table, number); }
    /// The number of the parameter in the framed row; -1 if none is framed.
    int framedParameter() const;

    std::optional<SamplePage> shown;
    QTableWidget *table = nullptr;
};

void TestParameterFinder::prepare()
{
    shown.emplace(PageNumber::ParameterTable);
    shown->page->resize(700, 311);
    table = shown->child<QTableWidget>("ParameterTable");
}

void TestParameterFinder::find(const QString &text)
{
    open();
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void TestParameterFinder::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
}

int TestParameterFinder::framedParameter() const
{
    const QWidget *frame = Person::seen(*shown->page, "FindFrame");
    if (!frame || !table->viewport()->rect().contains(frame->geometry()))
        return -1;
    return table->item(table->rowAt(frame->geometry().center().y()), TableColumn::Number)->text().toInt();
}

void TestParameterFinder::lineIsHiddenUntilItIsOpened()
{
    QVERIFY(!Person::seen(*shown->page, "ParameterFinder"));
    open();
    QVERIFY(Person::seen(*shown->page, "ParameterFinder"));
    QVERIFY(shown->page->rect().contains(Person::seen(*shown->page, "ParameterFinder")->geometry()));
}

void TestParameterFinder::openedLineTakesKeys()
{
    open();
    QVERIFY(input()->hasFocus());
    QCOMPARE(input()->accessibleName(), QStringLiteral("Parameter suchen:"));
    QVERIFY(!input()->toolTip().isEmpty());
}

void TestParameterFinder::numberLeadsToItsRow()
{
    find("82");
    QCOMPARE(framedParameter(), 82);
    QCOMPARE(result(), QStringLiteral("1 von 1: Parameter 82, Busadresse RS485"));
    QVERIFY(input()->hasFocus());
}

void TestParameterFinder::partOfNameLeadsToRow()
{
    find("spannungsgrenze");
    QCOMPARE(framedParameter(), 74);
    QCOMPARE(result(), QStringLiteral("1 von 2: Parameter 74, Unterspannungsgrenze DC-Netz"));
}

void TestParameterFinder::veryNumberComesBeforeNames()
{
    defineParameters("V123", {"5;Schwelle 82;;0;0;9;Unsigned;1;rw;0;"});
    shown->showFor(SamplePage::drive());
    find("82");
    QCOMPARE(framedParameter(), 82);
    press(Qt::Key_F3);
    QCOMPARE(framedParameter(), 5);
}

void TestParameterFinder::returnAndF3GoOn_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("F3") << int(Qt::Key_F3);
}

void TestParameterFinder::returnAndF3GoOn()
{
    QFETCH(int, key);
    find("spannungsgrenze");
    press(key);
    QCOMPARE(framedParameter(), 75);
    QVERIFY(input()->hasFocus());
}

void TestParameterFinder::searchComesBackToFirstHit()
{
    find("spannungsgrenze");
    press(Qt::Key_F3);
    press(Qt::Key_F3);
    QCOMPARE(framedParameter(), 74);
}

void TestParameterFinder::shiftGoesBack()
{
    find("spannungsgrenze");
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(framedParameter(), 75);
    press(Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(framedParameter(), 74);
}

void TestParameterFinder::escapeLeavesCursorInFieldOfRow()
{
    find("75");
    press(Qt::Key_Escape);
    QVERIFY(field(75)->hasFocus());
    QVERIFY(!Person::seen(*shown->page, "ParameterFinder"));
    QCOMPARE(framedParameter(), -1);
    QTest::keyClicks(QApplication::focusWidget(), "12");
    QCOMPARE(lastReported(shown->modified).number, 75);
}

void TestParameterFinder::escapeAfterNoHitLeavesCursorWhereItWas()
{
    field(11)->setFocus();
    find("no such name");
    press(Qt::Key_Escape);
    QVERIFY(field(11)->hasFocus());
}

void TestParameterFinder::escapeOnReadOnlyRowLeavesCursorWhereItWas()
{
    field(11)->setFocus();
    find("82");
    QVERIFY(!field(82)->isEnabled());
    press(Qt::Key_Escape);
    QVERIFY(field(11)->hasFocus());
}

void TestParameterFinder::f3AtFieldsGoesToNextField()
{
    find("spannungsgrenze");
    field(74)->setFocus();
    press(Qt::Key_F3);
    QVERIFY(field(75)->hasFocus());
    QCOMPARE(framedParameter(), 75);
}

void TestParameterFinder::nothingFoundIsSaid()
{
    find("spannungsgrenze");
    QTest::keyClicks(input(), "x");
    QCOMPARE(result(), QStringLiteral("Nicht gefunden"));
    QCOMPARE(framedParameter(), -1);
    press(Qt::Key_F3);
    QCOMPARE(framedParameter(), -1);
    QVERIFY(Person::empty(input()));
    QCOMPARE(result(), QString());
}

void TestParameterFinder::whatIsTypedIntoLineChangesNoParameter()
{
    field(11)->setFocus();
    find("75");
    press(Qt::Key_Return);
    QCOMPARE(shown->modified.count() + shown->deleted.count(), 0);
    QCOMPARE(field(11)->text(), QString());
}

void TestParameterFinder::lineOpenedAgainCanBeTypedOver()
{
    find("75");
    press(Qt::Key_Escape);
    open();
    QCOMPARE(framedParameter(), 75);
    QTest::keyClicks(QApplication::focusWidget(), "74");
    QCOMPARE(input()->text(), QStringLiteral("74"));
    QCOMPARE(framedParameter(), 74);
    open();
    QTest::keyClicks(QApplication::focusWidget(), "11");
    QCOMPARE(framedParameter(), 11);
}

void TestParameterFinder::lineFollowsLastFieldForTab()
{
    open();
    press(Qt::Key_Backtab);
    QVERIFY(shown->fieldsAsSeen().contains(qobject_cast<QLineEdit *>(QApplication::focusWidget())));
    press(Qt::Key_Tab);
    QVERIFY(input()->hasFocus());
    table->setFocus();
    press(Qt::Key_Tab);
    QVERIFY(field(1)->hasFocus());
}

void TestParameterFinder::nextShowingHasNoLine()
{
    find("75");
    shown->showFor(SamplePage::drive());
    QVERIFY(!Person::seen(*shown->page, "ParameterFinder"));
    press(Qt::Key_F3);
    QCOMPARE(framedParameter(), -1);
}

void TestParameterFinder::lineIsInUsersLanguage()
{
    shown.reset();
    WorkingFolder::writeText("english.z7lang", "[DialogKeyboard]\nFindPrompt=Find:\n");
    Z7Services::instance()->language()->load("english");
    prepare();
    open();
    QCOMPARE(Person::textOf(*shown->page, "FindPrompt"), QStringLiteral("Find:"));
}

QTEST_MAIN(TestParameterFinder)

#include "tst_parameterfinder.moc"
