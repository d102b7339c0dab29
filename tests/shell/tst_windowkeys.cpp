// The keys of the window that press its buttons.

#include "tests/shell/connectedwindow.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/keyboardrules.h"
#include "tests/support/messageboxes.h"
#include "tests/support/tablerows.h"

#include <QAbstractButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

namespace {

constexpr int parameterTable = 9;
const QList<QByteArray> buttons {
    "BtnDownload", "BtnUpload", "BtnWriteAndStore", "BtnStore", "BtnPdfHelp", "BtnOpen", "BtnSaveAs"};

} // namespace

class TestWindowKeys : public IsolatedTest
{
    Q_OBJECT

private slots:
    void keyPressesItsButton_data();
    void keyPressesItsButton();
    void keyPressesItsButtonFromField_data();
    void keyPressesItsButtonFromField();
    void keyWritesWhatStandsInField();
    void keysOfGreyButtonsDoNothing();
    void keysDoNothingWhileQuestionIsOpen();
    void keysDoNothingAfterNewListOfDrives();
    void toolTipTellsKey_data();
    void toolTipTellsKey();
    void helpOpensByKeyWithoutDrive();

    void keyOfFinderShowsTableOfSelectedDrive();
    void keyOfFinderPutsCursorIntoFinder();
    void keyOfFinderLeavesShownTable();
    void keyOfFinderDoesNothingWithoutDrive();

private:
    void prepare() override;
    void tidyUp() override { ui.reset(); }

    /// Connects the drives and comes back to the window.
    bool begin(const QList<int> &addresses) const
    {
        return ui->begin(addresses) && Person::bringToFront(ui->window.get());
    }
    /// The buttons that are clicked while a key is pressed in the widget that has the focus.
    QList<QByteArray> pressedBy(Qt::Key key, Qt::KeyboardModifiers modifiers);
    static void addKeys();

    std::unique_ptr<ConnectedWindow> ui;
};

void TestWindowKeys::prepare()
{
    writeDefinitions();
    ui = std::make_unique<ConnectedWindow>(QList<int> {3, 4});
    QVERIFY(Person::bringToFront(ui->window.get()));
}

QList<QByteArray> TestWindowKeys::pressedBy(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const MessageBoxAnswerer user(QMessageBox::Ok);
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (const QByteArray &button : buttons)
        spies.push_back(
            std::make_unique<QSignalSpy>(&child(*ui->window, button.constData()), SIGNAL(clicked())));
    QWidget *focus = ui->window->focusWidget();
    QTest::keyClick(focus ? focus : ui->window.get(), key, modifiers);
    QList<QByteArray> pressed;
    for (size_t i = 0; i < spies.size(); ++i) {
        for (int time = 0; time < spies[i]->size(); ++time)
            pressed.append(buttons.at(int(i)));
    }
    return pressed;
}

void TestWindowKeys::addKeys()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QByteArray>("button");
    const int control = Qt::ControlModifier;
    const int controlShift = Qt::ControlModifier | Qt::ShiftModifier;
    const int keypad = Qt::KeypadModifier;
    QTest::newRow("read") << int(Qt::Key_F5) << 0 << QByteArray("BtnDownload");
    QTest::newRow("write") << int(Qt::Key_Return) << control << QByteArray("BtnUpload");
    QTest::newRow("write, number block")
        << int(Qt::Key_Enter) << (control | keypad) << QByteArray("BtnUpload");
    QTest::newRow("write and store") << int(Qt::Key_Return) << controlShift << QByteArray("BtnWriteAndStore");
    QTest::newRow("write and store, number block")
        << int(Qt::Key_Enter) << (controlShift | keypad) << QByteArray("BtnWriteAndStore");
    QTest::newRow("help") << int(Qt::Key_F1) << 0 << QByteArray("BtnPdfHelp");
}

void TestWindowKeys::keyPressesItsButton_data()
{
    addKeys();
}

void TestWindowKeys::keyPressesItsButton()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QByteArray, button);
    QVERIFY(begin({3}));
    QCOMPARE(pressedBy(Qt::Key(key), Qt::KeyboardModifiers(modifiers)), QList<QByteArray> {button});
}

void TestWindowKeys::keyPressesItsButtonFromField_data()
{
    addKeys();
}

void TestWindowKeys::keyPressesItsButtonFromField()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QByteArray, button);
    QVERIFY(begin({3}));
    child(*ui->window, "edParam0x17User").setFocus();
    QCOMPARE(pressedBy(Qt::Key(key), Qt::KeyboardModifiers(modifiers)), QList<QByteArray> {button});
}

void TestWindowKeys::keyWritesWhatStandsInField()
{
    QVERIFY(begin({3}));
    QVERIFY(ui->change(QStringLiteral("700")));
    QTest::keyClick(ui->window->focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    // 03: write, address 3, parameter 0x17, 700.
    QTRY_COMPARE(ui->requests(0x03).size(), 1);
    QVERIFY(ui->requests(0x03).constFirst().startsWith("03"));
}

void TestWindowKeys::keysOfGreyButtonsDoNothing()
{
    // Before the first page has been shown.
    for (const Qt::Key key : {Qt::Key_F5, Qt::Key_Return}) {
        for (const Qt::KeyboardModifiers modifiers :
            {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier})
            QCOMPARE(pressedBy(key, modifiers), QList<QByteArray>());
    }
    QCOMPARE(pressedBy(Qt::Key_F5, Qt::NoModifier), QList<QByteArray>());
}

void TestWindowKeys::keysDoNothingWhileQuestionIsOpen()
{
    QVERIFY(begin({3}));
    QList<QByteArray> pressed {"?"};
    const MessageBoxAnswerer user([this, &pressed](QMessageBox *box) {
        QSignalSpy spy(&child(*ui->window, "BtnDownload"), SIGNAL(clicked()));
        QTest::keyClick(box, Qt::Key_F5);
        pressed = spy.isEmpty() ? QList<QByteArray>() : QList<QByteArray> {"BtnDownload"};
        QTest::keyClick(box, Qt::Key_Escape);
    });
    QVERIFY(ui->press("BtnFactoryReset"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(pressed, QList<QByteArray>());
}

void TestWindowKeys::keysDoNothingAfterNewListOfDrives()
{
    QVERIFY(begin({3}));
    QVERIFY(ui->change(QStringLiteral("700")));
    QVERIFY(ui->press("BtnConnection"));
    QVERIFY(Person::press(*ui->wizard, "BtnOK"));
    QVERIFY(Person::bringToFront(ui->window.get()));
    const int before = ui->bus.log().size();
    QTest::keyClick(ui->window.get(), Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClick(ui->window.get(), Qt::Key_F5);
    QVERIFY(ui->staysSilent(100));
    QCOMPARE(ui->bus.log().size(), before);
}

void TestWindowKeys::toolTipTellsKey_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("key");
    QTest::newRow("read") << QByteArray("BtnDownload") << QStringLiteral("F5");
    QTest::newRow("write") << QByteArray("BtnUpload") << QStringLiteral("Strg+Eingabe");
    QTest::newRow("write and store") << QByteArray("BtnWriteAndStore")
                                     << QStringLiteral("Strg+Umschalt+Eingabe");
}

void TestWindowKeys::toolTipTellsKey()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, key);
    QVERIFY(child(*ui->window, button.constData()).toolTip().endsWith(QLatin1Char(' ') + key));
}

void TestWindowKeys::helpOpensByKeyWithoutDrive()
{
    QCOMPARE(pressedBy(Qt::Key_F1, Qt::NoModifier), QList<QByteArray> {"BtnPdfHelp"});
}

void TestWindowKeys::keyOfFinderShowsTableOfSelectedDrive()
{
    QVERIFY(begin({3, 4}));
    QVERIFY(ui->showDrive(4));
    QTRY_VERIFY([this] {
        QTest::keyClick(ui->window.get(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        return textOf(*ui->window, "LContentTitle") == QLatin1String("Parametertabelle");
    }());
    QCOMPARE(textOf(*ui->window, "LDevice"), QStringLiteral("Z7.4"));
}

void TestWindowKeys::keyOfFinderPutsCursorIntoFinder()
{
    QVERIFY(begin({3}));
    QVERIFY(ui->waitForAPass());
    QTest::keyClick(ui->window.get(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(textOf(*ui->window, "LContentTitle"), QStringLiteral("Parametertabelle"));
    QVERIFY(ui->window->focusWidget()->parentWidget()->inherits("ParameterFinder"));
}

void TestWindowKeys::keyOfFinderLeavesShownTable()
{
    QVERIFY(begin({3}));
    QVERIFY(ui->showPage(parameterTable, "Parametertabelle", 3));
    // A field that holds an odd text would lose it if the page were shown anew.
    QLineEdit *field = tableField(child<QTableWidget>(*ui->window, "ParameterTable"), 0x17);
    QVERIFY(Person::type(field, QStringLiteral("-")));
    QVERIFY(ui->waitForAPass());
    QTest::keyClick(ui->window.get(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(field->text(), QStringLiteral("-"));
}

void TestWindowKeys::keyOfFinderDoesNothingWithoutDrive()
{
    QTest::keyClick(ui->window.get(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(textOf(*ui->window, "LContentTitle"), QString());
}

QTEST_MAIN(TestWindowKeys)

#include "tst_windowkeys.moc"
