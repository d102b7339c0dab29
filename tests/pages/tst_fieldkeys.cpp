// The keys between the fields of a page, and what the focus keeps.

#include "tests/pages/samplepage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QAbstractButton>
#include <QScrollArea>
#include <QTableWidget>

#include <optional>

class TestFieldKeys : public IsolatedTest
{
    Q_OBJECT

private slots:
    void tabFollowsEye_data() { addPagesWithFields(); }
    void tabFollowsEye();
    void backtabGoesOtherWay_data() { addPagesWithFields(); }
    void backtabGoesOtherWay();
    void downAndReturnFollowEye_data() { addKeys(); }
    void downAndReturnFollowEye();
    void upGoesOtherWay_data() { addPagesWithFields(); }
    void upGoesOtherWay();
    void keysEndAtLastField_data() { addPagesWithFields(); }
    void keysEndAtLastField();
    void readOnlyParameterIsPassedOver();
    void fieldReachedByKeyCanBeTypedOver();

    void escapeGivesBackWhatFieldHeld_data() { addPagesWithPendingChanges(); }
    void escapeGivesBackWhatFieldHeld();
    void escapeWithdrawsFirstChange_data() { addPagesWithPendingChanges(); }
    void escapeWithdrawsFirstChange();
    void escapeGivesBackNumberForLoneSign();
    void escapeWithoutChangePassesOn();
    void escapeGivesBackNoDiscardedChange();
    void nextVisitBeginsAnew();
    void menuOfFieldBeginsNoVisit();

    void recordsLeaveFocusCursorAndSelection_data() { addPagesWithPendingChanges(); }
    void recordsLeaveFocusCursorAndSelection();

    void focusedRowIsSeenWhole();
    void typingBringsRowBackIntoView();
    void tableScrollsByKeys();
    void focusedFieldOfPageIsSeen();

private:
    void tidyUp() override { shown.reset(); }

    static void addKeys();
    static void addPagesWithPendingChanges();
    void show();
    QStringList walk(int key, int steps) const;
    QStringList namesOf(const QList<QLineEdit *> &fields) const;
    bool isSeenWhole(const QWidget *field) const;

    std::optional<SamplePage> shown;
    QList<QLineEdit *> fields; ///< as the eye finds them
};

void TestFieldKeys::addKeys()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("key");
    for (const int page : {PageNumber::CurrentLimits, PageNumber::Positioning, PageNumber::OperationsMode,
             PageNumber::ParameterTable, PageNumber::CalibrationCurrent}) {
        for (const int key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter})
            QTest::addRow("%s, %s", createDataPage(page)->metaObject()->className(),
                qPrintable(QKeySequence(key).toString()))
                << int(page) << int(key);
    }
}

void TestFieldKeys::addPagesWithPendingChanges()
{
    QTest::addColumn<int>("page");
    for (const int page : {PageNumber::CurrentLimits, PageNumber::FixedResolutions,
             PageNumber::OperationsMode, PageNumber::ParameterTable, PageNumber::CalibrationRotations})
        QTest::newRow(createDataPage(page)->metaObject()->className()) << int(page);
}

void TestFieldKeys::show()
{
    QFETCH(int, page);
    shown.emplace(page);
    fields = shown->fieldsAsSeen();
}

QStringList TestFieldKeys::namesOf(const QList<QLineEdit *> &some) const
{
    QStringList names;
    for (const QLineEdit *field : some)
        names.append(field->accessibleName());
    return names;
}

/// The fields that a key leads to, from the one that has the focus; other widgets are passed over.
QStringList TestFieldKeys::walk(int key, int steps) const
{
    QStringList names;
    while (steps > 0) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
        const QWidget *focused = QApplication::focusWidget();
        if (!fields.contains(qobject_cast<QLineEdit *>(const_cast<QWidget *>(focused))))
            continue;
        names.append(focused->accessibleName());
        --steps;
    }
    return names;
}

bool TestFieldKeys::isSeenWhole(const QWidget *field) const
{
    return field->visibleRegion().boundingRect() == field->rect();
}

void TestFieldKeys::tabFollowsEye()
{
    show();
    fields.constFirst()->setFocus(Qt::TabFocusReason);
    QStringList expected = namesOf(fields);
    expected.append(expected.takeFirst());
    QCOMPARE(walk(Qt::Key_Tab, fields.size()), expected);
}

void TestFieldKeys::backtabGoesOtherWay()
{
    show();
    fields.constFirst()->setFocus(Qt::TabFocusReason);
    QStringList expected = namesOf(fields);
    std::reverse(expected.begin(), expected.end());
    QCOMPARE(walk(Qt::Key_Backtab, fields.size()), expected);
}

void TestFieldKeys::downAndReturnFollowEye()
{
    show();
    QFETCH(int, key);
    fields.constFirst()->setFocus(Qt::TabFocusReason);
    QCOMPARE(walk(key, fields.size() - 1), namesOf(fields.mid(1)));
}

void TestFieldKeys::upGoesOtherWay()
{
    show();
    fields.constLast()->setFocus(Qt::TabFocusReason);
    QStringList expected = namesOf(fields.mid(0, fields.size() - 1));
    std::reverse(expected.begin(), expected.end());
    QCOMPARE(walk(Qt::Key_Up, fields.size() - 1), expected);
}

void TestFieldKeys::keysEndAtLastField()
{
    show();
    fields.constLast()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(fields.constLast(), Qt::Key_Down);
    QTest::keyClick(fields.constLast(), Qt::Key_Return);
    QVERIFY(fields.constLast()->hasFocus());
    fields.constFirst()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(fields.constFirst(), Qt::Key_Up);
    QVERIFY(fields.constFirst()->hasFocus());
}

void TestFieldKeys::readOnlyParameterIsPassedOver()
{
    shown.emplace(PageNumber::FixedResolutions);
    defineParameters("V123", {"24;Festdrehzahl n2;1/min;0;0;99;Unsigned;1;r;0;"});
    shown->showFor(SamplePage::drive());
    QLineEdit *first = shown->field("edParam0x17User");
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Down);
    QVERIFY(shown->field("edParam0x19User")->hasFocus());
}

void TestFieldKeys::fieldReachedByKeyCanBeTypedOver()
{
    shown.emplace(PageNumber::FixedResolutions);
    QLineEdit *second = shown->field("edParam0x18User");
    QVERIFY(Person::type(second, "12"));
    shown->field("edParam0x17User")->setFocus();
    QTest::keyClick(shown->field("edParam0x17User"), Qt::Key_Down);
    QTest::keyClicks(second, "3");
    QCOMPARE(second->text(), QStringLiteral("3"));
}

void TestFieldKeys::escapeGivesBackWhatFieldHeld()
{
    show();
    QLineEdit *field = fields.constFirst();
    QVERIFY(Person::type(field, "7"));
    fields.at(1)->setFocus(Qt::TabFocusReason);
    QVERIFY(Person::type(field, "8"));
    const int number = lastReported(shown->modified).number;
    shown->modified.clear();
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QStringLiteral("7"));
    QVERIFY(field->hasFocus());
    QCOMPARE(lastReported(shown->modified).number, number);
    QCOMPARE(lastReported(shown->modified).value, 7);
}

void TestFieldKeys::escapeWithdrawsFirstChange()
{
    show();
    QLineEdit *field = fields.constFirst();
    QVERIFY(Person::type(field, "8"));
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QString());
    QCOMPARE(lastReported(shown->deleted).number, lastReported(shown->modified).number);
    QVERIFY(shown->deleted.count() > 0);
}

void TestFieldKeys::escapeGivesBackNumberForLoneSign()
{
    shown.emplace(PageNumber::FixedResolutions);
    QLineEdit *field = shown->field("edParam0x17User");
    QVERIFY(Person::type(field, "7"));
    shown->field("edParam0x18User")->setFocus(Qt::TabFocusReason);
    QVERIFY(Person::type(field, "-"));
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QStringLiteral("7"));
    QCOMPARE(lastReported(shown->modified).value, 7);
}

void TestFieldKeys::escapeWithoutChangePassesOn()
{
    struct Surroundings : QWidget
    {
        void keyPressEvent(QKeyEvent *event) override { escapes += event->key() == Qt::Key_Escape; }
        int escapes = 0;
    } window;
    shown.emplace(PageNumber::FixedResolutions);
    shown->page->setParent(&window);
    shown->page->show();
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QLineEdit *field = shown->field("edParam0x17User");
    QVERIFY(Person::type(field, "7"));
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(window.escapes, 0);
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(window.escapes, 1);
    shown->page->setParent(nullptr);
}

void TestFieldKeys::escapeGivesBackNoDiscardedChange()
{
    shown.emplace(PageNumber::FixedResolutions);
    QLineEdit *field = shown->field("edParam0x17User");
    shown->page->applyUserParams(paramSet({readParam(0x17, 7)}));
    shown->field("edParam0x18User")->setFocus(Qt::TabFocusReason);
    field->setFocus(Qt::TabFocusReason);
    shown->page->clearUserValues();
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QString());
    QCOMPARE(shown->modified.count(), 0);
}

void TestFieldKeys::nextVisitBeginsAnew()
{
    shown.emplace(PageNumber::FixedResolutions);
    QLineEdit *field = shown->field("edParam0x17User");
    QVERIFY(Person::type(field, "7"));
    QTest::keyClick(field, Qt::Key_Down);
    QTest::keyClick(shown->field("edParam0x18User"), Qt::Key_Up);
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QStringLiteral("7"));
}

void TestFieldKeys::menuOfFieldBeginsNoVisit()
{
    shown.emplace(PageNumber::FixedResolutions);
    QLineEdit *field = shown->field("edParam0x17User");
    QVERIFY(Person::type(field, "7"));
    QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
    QFocusEvent in(QEvent::FocusIn, Qt::PopupFocusReason);
    QApplication::sendEvent(field, &out);
    QApplication::sendEvent(field, &in);
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(field->text(), QString());
}

void TestFieldKeys::recordsLeaveFocusCursorAndSelection()
{
    show();
    QLineEdit *field = fields.constFirst();
    QVERIFY(Person::type(field, "1"));
    QTest::keyClick(field, Qt::Key_Left, Qt::ShiftModifier);
    Z7Device drive = SamplePage::drive();
    for (int record = 0; record < 500; ++record) {
        for (Z7DeviceParam &param : drive.parameterSet.params)
            param.value = (param.value + record) % 100;
        drive.statusBits = record % 256;
        shown->page->DeviceUpdate(drive);
    }
    QVERIFY(field->hasFocus());
    QCOMPARE(field->text(), QStringLiteral("1"));
    QCOMPARE(field->cursorPosition(), 0);
    QCOMPARE(field->selectedText(), QStringLiteral("1"));
    QTest::keyClicks(field, "2");
    QCOMPARE(field->text(), QStringLiteral("2"));
}

void TestFieldKeys::focusedRowIsSeenWhole()
{
    shown.emplace(PageNumber::ParameterTable);
    shown->page->resize(700, 311);
    fields = shown->fieldsAsSeen();
    fields.constFirst()->setFocus(Qt::TabFocusReason);
    for (int step = 1; step < fields.size(); ++step) {
        QTest::keyClick(QApplication::focusWidget(), step % 2 ? Qt::Key_Tab : Qt::Key_Down);
        QVERIFY(fields.at(step)->hasFocus());
        QVERIFY(isSeenWhole(fields.at(step)));
    }
}

void TestFieldKeys::typingBringsRowBackIntoView()
{
    shown.emplace(PageNumber::ParameterTable);
    shown->page->resize(700, 311);
    QLineEdit *field = shown->fieldsAsSeen().constFirst();
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field, Qt::Key_PageDown);
    QVERIFY(!isSeenWhole(field));
    QTest::keyClicks(field, "1");
    QVERIFY(isSeenWhole(field));
}

void TestFieldKeys::tableScrollsByKeys()
{
    shown.emplace(PageNumber::ParameterTable);
    shown->page->resize(700, 311);
    auto *table = shown->child<QTableWidget>("ParameterTable");
    table->setFocus(Qt::TabFocusReason);
    const auto lastRowIsSeen = [table] {
        return table->viewport()->rect().contains(
            table->visualItemRect(table->item(table->rowCount() - 1, 0)));
    };
    QVERIFY(!lastRowIsSeen());
    QTest::keyClick(table, Qt::Key_End);
    QVERIFY(lastRowIsSeen());
    QTest::keyClick(table, Qt::Key_Home);
    QVERIFY(!lastRowIsSeen());
}

void TestFieldKeys::focusedFieldOfPageIsSeen()
{
    shown.emplace(PageNumber::Output);
    fields = shown->fieldsAsSeen();
    QScrollArea area;
    area.setWidget(shown->page.release());
    area.resize(500, 200);
    area.show();
    area.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    QVERIFY(!isSeenWhole(fields.constLast()));
    for (QLineEdit *field : {fields.constLast(), fields.constFirst()}) {
        field->setFocus(Qt::ShortcutFocusReason);
        QVERIFY(isSeenWhole(field));
    }
}

QTEST_MAIN(TestFieldKeys)

#include "tst_fieldkeys.moc"
