// The tree of the drives and their pages by keys, while records come in, and what screen readers tell of it.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/contentband.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/keyboardrules.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"

#include <QScrollBar>
#include <QtTest>

#include <memory>

using namespace PageNumber;
using namespace ShellTest;

namespace {

constexpr int fixedSpeed = 0x17;

/// The tree with a port behind which drives may be. Polling is on, but no pass comes by itself.
struct Bench
{
    Bench()
    {
        ports.plugUsb(firstPort, QString());
        Z7Services::instance()->options()->setPollingInterval(1000000);
    }

    ListedPorts ports;
    ContentBand<> band;
};

} // namespace

class TestTreeByKeyboard : public IsolatedTest
{
    Q_OBJECT

private slots:
    void keyShowsPage_data();
    void keyShowsPage();
    void keyThatIsHeldShowsPageOnce();
    void keysWithControlShowNothing();
    void keyIsTakenOnceUntilNextRecord();
    void focusStaysInTreeWhenPageIsShown();

    void arrowsGoOnAfterRecord_data();
    void arrowsGoOnAfterRecord();
    void recordSelectsNothing();
    void arrowsGoOnWhereMouseHasClicked();
    void tabComesBackToLastPlace();
    void lettersGoOnAfterRecord();
    void arrowsBeginAtTopWhereDriveHasGone();
    void recordDoesNotScrollTree();

    void itemTellsItsMarks_data();
    void itemTellsItsMarks();
    void changedMarkIsToldOnce();
    void recordWithoutChangeTellsNothing();

private:
    void prepare() override;
    void tidyUp() override { bench.reset(); }

    QTreeWidget &tree() const { return band->tree(); }
    QString title() const { return textOf(*band->content, "LContentTitle"); }
    QString current() const { return tree().currentItem() ? tree().currentItem()->text(0) : QString(); }
    void goTo(int page);
    void press(Qt::Key key) { QTest::keyClick(&tree(), key); }
    void bringRecord() { band->bring(band->controller.device(first.deviceId())); }
    QString accessibleText(int page) const
    {
        return band->item(page, first)->data(0, Qt::AccessibleTextRole).toString();
    }

    std::unique_ptr<Bench> bench;
    ContentBand<> *band = nullptr;
    Z7Device first;
    Z7Device second;
};

void TestTreeByKeyboard::prepare()
{
    writeDefinitions();
    bench = std::make_unique<Bench>();
    band = &bench->band;
    QVERIFY(QTest::qWaitForWindowActive(band->content->window()));
    band->controller.setDevices({first = drive(1)});
    second = drive(2);
    tree().setFocus(Qt::TabFocusReason);
}

/// Walks down until the page is reached.
void TestTreeByKeyboard::goTo(int page)
{
    const QString wanted = band->item(page, first)->text(0);
    for (int step = 0; step < 20 && current() != wanted; ++step)
        press(Qt::Key_Down);
    QCOMPARE(current(), wanted);
}

void TestTreeByKeyboard::keyShowsPage_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
    QTest::newRow("space") << int(Qt::Key_Space);
}

void TestTreeByKeyboard::keyShowsPage()
{
    QFETCH(int, key);
    goTo(ParameterTable);
    QCOMPARE(title(), QString());
    press(Qt::Key(key));
    QCOMPARE(title(), QStringLiteral("Parametertabelle"));
}

void TestTreeByKeyboard::keyThatIsHeldShowsPageOnce()
{
    goTo(ParameterTable);
    QSignalSpy clicks(&tree(), SIGNAL(itemClicked(QTreeWidgetItem *, int)));
    for (const bool repeated : {false, true, true})
        QTest::simulateEvent(&tree(), true, Qt::Key_Return, Qt::NoModifier, QString(), repeated);
    QCOMPARE(clicks.size(), 1);
}

void TestTreeByKeyboard::keysWithControlShowNothing()
{
    goTo(ParameterTable);
    QSignalSpy clicks(&tree(), SIGNAL(itemClicked(QTreeWidgetItem *, int)));
    QTest::keyClick(&tree(), Qt::Key_Space, Qt::ControlModifier);
    QTest::keyClick(&tree(), Qt::Key_Return, Qt::AltModifier);
    QCOMPARE(clicks.size(), 0);
}

void TestTreeByKeyboard::keyIsTakenOnceUntilNextRecord()
{
    goTo(ParameterTable);
    press(Qt::Key_Return);
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    QCOMPARE(title(), QStringLiteral("Parametertabelle"));
    bringRecord();
    press(Qt::Key_Return);
    QCOMPARE(title(), QStringLiteral("RS485"));
}

void TestTreeByKeyboard::focusStaysInTreeWhenPageIsShown()
{
    goTo(ParameterTable);
    press(Qt::Key_Return);
    QVERIFY(tree().hasFocus());
    bringRecord();
    QVERIFY(tree().hasFocus());
}

void TestTreeByKeyboard::arrowsGoOnAfterRecord_data()
{
    QTest::addColumn<bool>("anotherDriveComes");
    QTest::newRow("record of a listed drive") << false;
    QTest::newRow("another drive") << true;
}

void TestTreeByKeyboard::arrowsGoOnAfterRecord()
{
    QFETCH(bool, anotherDriveComes);
    goTo(ParameterTable);
    if (anotherDriveComes)
        band->controller.setDevices({first, second});
    else
        bringRecord();
    QCOMPARE(current(), QStringLiteral("Parametertabelle"));
    press(Qt::Key_Up);
    QCOMPARE(current(), QStringLiteral("RS485"));
}

void TestTreeByKeyboard::recordSelectsNothing()
{
    goTo(ParameterTable);
    bringRecord();
    QVERIFY(tree().selectedItems().isEmpty());
    band->controller.setDevices({first, second});
    QVERIFY(tree().selectedItems().isEmpty());
}

void TestTreeByKeyboard::arrowsGoOnWhereMouseHasClicked()
{
    QVERIFY(band->click(ParameterTable, first));
    bringRecord();
    press(Qt::Key_Up);
    QCOMPARE(current(), QStringLiteral("RS485"));
}

void TestTreeByKeyboard::tabComesBackToLastPlace()
{
    QVERIFY(band->click(ParameterTable, first));
    bringRecord();
    child(*band->content, "MainContentScrollArea").setFocus();
    tree().setFocus(Qt::BacktabFocusReason);
    QCOMPARE(current(), QStringLiteral("Parametertabelle"));
    QVERIFY(tree().selectedItems().isEmpty());
}

void TestTreeByKeyboard::lettersGoOnAfterRecord()
{
    QTest::keyClicks(&tree(), QStringLiteral("pa"));
    bringRecord();
    QTest::keyClicks(&tree(), QStringLiteral("ra"));
    QCOMPARE(current(), QStringLiteral("Parametertabelle"));
}

void TestTreeByKeyboard::arrowsBeginAtTopWhereDriveHasGone()
{
    goTo(ParameterTable);
    band->controller.setDevices({second});
    QCOMPARE(current(), QStringLiteral("Port0 - Z7.2"));
}

void TestTreeByKeyboard::recordDoesNotScrollTree()
{
    band->controller.setDevices({first, second, drive(3)});
    press(Qt::Key_Home);
    QScrollBar *bar = tree().verticalScrollBar();
    bar->setValue(bar->maximum());
    QVERIFY(bar->value() > 0);
    bringRecord();
    QCOMPARE(bar->value(), bar->maximum());
}

void TestTreeByKeyboard::itemTellsItsMarks_data()
{
    QTest::addColumn<bool>("access");
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("text");
    QTest::newRow("drive") << true << int(DeviceStatus) << QStringLiteral("Port0 - Z7.1, Zugriff");
    QTest::newRow("drive that is lost")
        << false << int(DeviceStatus) << QStringLiteral("Port0 - Z7.1, kein Zugriff");
    QTest::newRow("page") << true << int(RS485) << QStringLiteral("RS485, Zugriff");
    QTest::newRow("changed page") << true << int(ParameterTable)
                                  << QStringLiteral("Parametertabelle, Zugriff, geändert");
    QTest::newRow("changed page of a lost drive")
        << false << int(ParameterTable) << QStringLiteral("Parametertabelle, kein Zugriff, geändert");
}

void TestTreeByKeyboard::itemTellsItsMarks()
{
    QFETCH(bool, access);
    QFETCH(int, page);
    QFETCH(QString, text);
    band->controller.setUserParams(first.deviceId(), change(fixedSpeed, 500));
    band->bring(access ? drive(1) : driveWithoutAccess(1));
    QCOMPARE(accessibleText(page), text);
    // The network has no marks.
    band->controller.setDevices({first, second});
    QCOMPARE(
        tree().topLevelItem(0)->data(0, Qt::AccessibleTextRole).toString(), QStringLiteral("Z7-Netzwerk"));
}

void TestTreeByKeyboard::changedMarkIsToldOnce()
{
    bringRecord();
    const KeyboardRules::AccessibilityWatch watch;
    // No page but the table shows this parameter.
    band->controller.setUserParams(first.deviceId(), change(100, 5));
    QCOMPARE(watch.count(&tree()), 1);
}

void TestTreeByKeyboard::recordWithoutChangeTellsNothing()
{
    goTo(ParameterTable);
    bringRecord();
    const KeyboardRules::AccessibilityWatch watch;
    bringRecord();
    QCOMPARE(watch.count(&tree()), 0);
}

QTEST_MAIN(TestTreeByKeyboard)

#include "tst_treebykeyboard.moc"
