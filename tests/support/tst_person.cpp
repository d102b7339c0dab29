// The person of other tests: does what can be done before a screen and nothing else.

#include "tests/support/person.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

namespace {

/// A window with one of all that hands reach for.
class Window : public QWidget
{
public:
    Window()
    {
        auto *layout = new QVBoxLayout(this);
        for (QWidget *widget : QList<QWidget *> {button, field, label, box, list, choice, tree})
            layout->addWidget(widget);
        button->setObjectName("button");
        field->setObjectName("field");
        label->setObjectName("label");
        list->addItems({"first", "second"});
        for (int row = 0; row < list->count(); ++row)
            list->item(row)->setCheckState(Qt::Unchecked);
        choice->addItems({"deutsch", "english"});
        entry = new QTreeWidgetItem(tree, {"entry"});
        show();
        if (!QTest::qWaitForWindowExposed(this))
            qFatal("the window does not show itself");
    }

    QPushButton *const button = new QPushButton("press");
    QLineEdit *const field = new QLineEdit("old");
    QLabel *const label = new QLabel("text");
    QCheckBox *const box = new QCheckBox("a text much longer than the box");
    QListWidget *const list = new QListWidget;
    QComboBox *const choice = new QComboBox;
    QTreeWidget *const tree = new QTreeWidget;
    QTreeWidgetItem *entry = nullptr;
};

} // namespace

class TestPerson : public QObject
{
    Q_OBJECT

private slots:
    void init() { window = std::make_unique<Window>(); }
    void cleanup() { window.reset(); }

    void buttonOnScreenIsPressed();
    void hiddenButtonIsNotPressed();
    void greyButtonIsNotPressed();
    void buttonBehindModalWindowIsNotPressed();
    void buttonOfAnotherNameIsNotPressed();

    void typedTextReplacesWhatStandsThere();
    void typedTextFollowsWhatStandsThere();
    void emptiedFieldHoldsNothing();
    void fieldThatRefusesKeysIsTold();
    void greyFieldKeepsItsText();
    void fieldBehindModalWindowKeepsItsText();

    void tickGoesIntoBoxAndOut();
    void greyBoxKeepsItsTick();
    void tickGoesIntoOneRowOfList();
    void rowThatIsNotThereIsTold();
    void entryOfBoxIsChosenByItsBegin();
    void entryThatIsNotOfferedIsTold();
    void clickedEntryIsSelected();
    void hiddenEntryIsNotClicked();

    void hiddenLabelIsNotRead();
    void personWaitsForWhatHappens();

private:
    static void says(const char *warning) { QTest::ignoreMessage(QtWarningMsg, warning); }

    std::unique_ptr<Window> window;
};

void TestPerson::buttonOnScreenIsPressed()
{
    const QSignalSpy clicked(window->button, SIGNAL(clicked()));
    QVERIFY(Person::press(*window, "button"));
    QCOMPARE(clicked.count(), 1);
}

void TestPerson::hiddenButtonIsNotPressed()
{
    const QSignalSpy clicked(window->button, SIGNAL(clicked()));
    window->button->hide();
    says("button is not on the screen");
    QVERIFY(!Person::press(*window, "button"));
    says("button is not on the screen");
    QVERIFY(!Person::press(window->button));
    QCOMPARE(clicked.count(), 0);
}

void TestPerson::greyButtonIsNotPressed()
{
    window->button->setEnabled(false);
    says("button is grey");
    QVERIFY(!Person::press(window->button));
}

void TestPerson::buttonBehindModalWindowIsNotPressed()
{
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    const QSignalSpy clicked(window->button, SIGNAL(clicked()));
    says("button is behind a modal window");
    QVERIFY(!Person::press(window->button));
    QCOMPARE(clicked.count(), 0);
}

void TestPerson::buttonOfAnotherNameIsNotPressed()
{
    says("other is not on the screen");
    QVERIFY(!Person::press(*window, "other"));
}

void TestPerson::typedTextReplacesWhatStandsThere()
{
    QVERIFY(Person::type(window->field, "new"));
    QCOMPARE(window->field->text(), QStringLiteral("new"));
    QVERIFY(Person::type(*window, "field", "newer"));
    QCOMPARE(window->field->text(), QStringLiteral("newer"));
}

void TestPerson::typedTextFollowsWhatStandsThere()
{
    window->field->setCursorPosition(0);
    QVERIFY(Person::typeAtEnd(window->field, "er"));
    QCOMPARE(window->field->text(), QStringLiteral("older"));
}

void TestPerson::emptiedFieldHoldsNothing()
{
    QVERIFY(Person::empty(window->field));
    QCOMPARE(window->field->text(), QString());
}

void TestPerson::fieldThatRefusesKeysIsTold()
{
    window->field->setValidator(new QIntValidator(0, 99, window->field));
    QVERIFY(!Person::type(window->field, "777"));
    QCOMPARE(window->field->text(), QStringLiteral("77"));
    QVERIFY(!Person::typeAtEnd(window->field, "x"));
    QCOMPARE(window->field->text(), QStringLiteral("77"));
}

void TestPerson::greyFieldKeepsItsText()
{
    window->field->setEnabled(false);
    for (int hand = 0; hand < 3; ++hand)
        says("field is grey");
    QVERIFY(!Person::type(window->field, "new"));
    QVERIFY(!Person::typeAtEnd(window->field, "er"));
    QVERIFY(!Person::empty(window->field));
    QCOMPARE(window->field->text(), QStringLiteral("old"));
}

void TestPerson::fieldBehindModalWindowKeepsItsText()
{
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    says("field is behind a modal window");
    QVERIFY(!Person::type(window->field, "new"));
    QCOMPARE(window->field->text(), QStringLiteral("old"));
}

void TestPerson::tickGoesIntoBoxAndOut()
{
    QVERIFY(Person::tick(window->box));
    QVERIFY(window->box->isChecked());
    QVERIFY(Person::tick(window->box));
    QVERIFY(!window->box->isChecked());
}

void TestPerson::greyBoxKeepsItsTick()
{
    window->box->setObjectName("box");
    window->box->setEnabled(false);
    says("box is grey");
    QVERIFY(!Person::tick(window->box));
    QVERIFY(!window->box->isChecked());
}

void TestPerson::tickGoesIntoOneRowOfList()
{
    QVERIFY(Person::tickRow(window->list, 1));
    QCOMPARE(window->list->item(0)->checkState(), Qt::Unchecked);
    QCOMPARE(window->list->item(1)->checkState(), Qt::Checked);
}

void TestPerson::rowThatIsNotThereIsTold()
{
    says("the row is not in the list");
    QVERIFY(!Person::tickRow(window->list, 2));
}

void TestPerson::entryOfBoxIsChosenByItsBegin()
{
    QVERIFY(Person::choose(window->choice, "eng"));
    QCOMPARE(window->choice->currentText(), QStringLiteral("english"));
}

void TestPerson::entryThatIsNotOfferedIsTold()
{
    QVERIFY(!Person::choose(window->choice, "x"));
    QCOMPARE(window->choice->currentText(), QStringLiteral("deutsch"));
}

void TestPerson::clickedEntryIsSelected()
{
    const QSignalSpy clicked(window->tree, SIGNAL(itemClicked(QTreeWidgetItem *, int)));
    QVERIFY(Person::pressDown(window->entry));
    QCOMPARE(clicked.count(), 0);
    QVERIFY(Person::letGo(window->entry));
    QCOMPARE(clicked.count(), 1);
    QVERIFY(Person::click(window->entry));
    QCOMPARE(clicked.count(), 2);
    QVERIFY(window->entry->isSelected());
}

void TestPerson::hiddenEntryIsNotClicked()
{
    window->entry->setHidden(true);
    says("the entry is not in the tree");
    QVERIFY(!Person::click(window->entry));
    QVERIFY(!window->entry->isSelected());
}

void TestPerson::hiddenLabelIsNotRead()
{
    QCOMPARE(Person::textOf(*window, "label"), QStringLiteral("text"));
    window->label->hide();
    QCOMPARE(Person::textOf(*window, "label"), QString());
}

void TestPerson::personWaitsForWhatHappens()
{
    QTimer::singleShot(1, window->field, SLOT(clear()));
    QVERIFY(Person::waitUntil([this] { return window->field->text().isEmpty(); }));
    QVERIFY(!Person::waitUntil([this] { return !window->field->text().isEmpty(); }, 1));
}

QTEST_MAIN(TestPerson)

#include "tst_person.moc"
