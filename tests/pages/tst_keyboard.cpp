// What the pages, the dialogs and the window share to be worked in without a mouse.

#include "pages/keyboard.h"
#include "tests/support/keyboardrules.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QtTest>

class TestKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void keyPressesButton();
    void keyThatIsHeldPressesOnce();
    void keyOfGreyButtonDoesNothing();
    void keyOutlivesNewText();

    void wheelLeavesBoxWithoutFocus();
    void wheelTurnsBoxWithFocus();
    void wheelOverBoxScrollsWhatIsAround();

    void fieldsComeBehindTheirNeighbour();
    void lineTellsWhereFocusIs();
    void clickDrawsNoLine();
    void nameIsToldOnlyWhereItChanges();
};

namespace {

/// A button with a key, in a window in front.
struct KeyedButton
{
    KeyedButton()
    {
        Keyboard::pressByKey(&window, Qt::Key_F5, &button);
        window.show();
        window.activateWindow();
    }

    bool isReady() { return QTest::qWaitForWindowActive(&window); }

    QWidget window;
    QPushButton button {QStringLiteral("Read"), &window};
    QSignalSpy presses {&button, SIGNAL(clicked())};
};

/// A box in an area with more than can be seen.
struct BoxInArea
{
    BoxInArea()
    {
        auto *content = new QWidget;
        auto *layout = new QVBoxLayout(content);
        box = new QComboBox;
        box->addItems({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
        Keyboard::letWheelPass(box);
        layout->addWidget(box);
        auto *filler = new QLineEdit;
        filler->setFixedHeight(1000);
        layout->addWidget(filler);
        area.setWidget(content);
        area.resize(200, 200);
        area.show();
        area.activateWindow();
    }

    bool isReady() { return QTest::qWaitForWindowActive(&area); }

    QScrollArea area;
    QComboBox *box = nullptr;
};

} // namespace

void TestKeyboard::keyPressesButton()
{
    KeyedButton keyed;
    QVERIFY(keyed.isReady());
    QTest::keyClick(&keyed.window, Qt::Key_F5);
    QCOMPARE(keyed.presses.size(), 1);
}

void TestKeyboard::keyThatIsHeldPressesOnce()
{
    KeyedButton keyed;
    QVERIFY(keyed.isReady());
    for (const bool repeated : {false, true, true})
        QTest::simulateEvent(&keyed.window, true, Qt::Key_F5, Qt::NoModifier, QString(), repeated);
    QCOMPARE(keyed.presses.size(), 1);
}

void TestKeyboard::keyOfGreyButtonDoesNothing()
{
    KeyedButton keyed;
    QVERIFY(keyed.isReady());
    keyed.button.setEnabled(false);
    QTest::keyClick(&keyed.window, Qt::Key_F5);
    QCOMPARE(keyed.presses.size(), 0);
}

void TestKeyboard::keyOutlivesNewText()
{
    KeyedButton keyed;
    QVERIFY(keyed.isReady());
    keyed.button.setText(QStringLiteral("Lesen"));
    QTest::keyClick(&keyed.window, Qt::Key_F5);
    QCOMPARE(keyed.presses.size(), 1);
}

void TestKeyboard::wheelLeavesBoxWithoutFocus()
{
    BoxInArea shown;
    QVERIFY(shown.isReady());
    shown.area.setFocus();
    KeyboardRules::turnWheel(shown.box, false);
    QCOMPARE(shown.box->currentIndex(), 0);
    QVERIFY(!shown.box->hasFocus());
}

void TestKeyboard::wheelTurnsBoxWithFocus()
{
    BoxInArea shown;
    QVERIFY(shown.isReady());
    shown.box->setFocus();
    KeyboardRules::turnWheel(shown.box, false);
    QCOMPARE(shown.box->currentIndex(), 1);
}

void TestKeyboard::wheelOverBoxScrollsWhatIsAround()
{
    BoxInArea shown;
    QVERIFY(shown.isReady());
    shown.area.setFocus();
    KeyboardRules::turnWheel(shown.box, false);
    QVERIFY(shown.area.verticalScrollBar()->value() > 0);
}

void TestKeyboard::fieldsComeBehindTheirNeighbour()
{
    QWidget window;
    QLineEdit first(&window);
    QLineEdit last(&window);
    QWidget group(&window);
    QLineEdit upper(&group);
    QLineEdit lower(&group);
    Keyboard::putInTabOrder(&group, &first);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first.setFocus();
    for (QLineEdit *next : {&upper, &lower, &last, &first}) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), next);
    }
}

void TestKeyboard::lineTellsWhereFocusIs()
{
    BoxInArea shown;
    QVERIFY(shown.isReady());
    Keyboard::showFocus(&shown.area);
    shown.box->setFocus();
    const QImage without = shown.area.grab().toImage();
    shown.area.setFocus(Qt::TabFocusReason);
    shown.box->repaint();
    QVERIFY(shown.area.grab().toImage().pixelColor(1, 100) != without.pixelColor(1, 100));
    shown.box->setFocus();
    QCOMPARE(shown.area.grab().toImage(), without);
}

void TestKeyboard::clickDrawsNoLine()
{
    BoxInArea shown;
    QVERIFY(shown.isReady());
    Keyboard::showFocus(&shown.area);
    shown.box->setFocus();
    const QColor without = shown.area.grab().toImage().pixelColor(1, 100);
    shown.area.setFocus(Qt::MouseFocusReason);
    QCOMPARE(shown.area.grab().toImage().pixelColor(1, 100), without);
}

void TestKeyboard::nameIsToldOnlyWhereItChanges()
{
    QWidget lamp;
    const KeyboardRules::AccessibilityWatch watch;
    Keyboard::setName(&lamp, QStringLiteral("ready"));
    Keyboard::setName(&lamp, QStringLiteral("ready"));
    QCOMPARE(watch.count(&lamp), 1);
    QCOMPARE(lamp.accessibleName(), QStringLiteral("ready"));
}

QTEST_MAIN(TestKeyboard)

#include "tst_keyboard.moc"
