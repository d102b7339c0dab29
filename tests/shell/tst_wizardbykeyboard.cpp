// The connection wizard by keys alone: where the focus is after each step, and what the return key does.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/simulateddrives.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/keyboardrules.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestWizardByKeyboard : public IsolatedTest
{
    Q_OBJECT

private slots:
    void focusBeginsWithQuickConnectWithoutDrives();
    void focusBeginsWithDrives();
    void focusIsInFirstFieldOfStep_data();
    void focusIsInFirstFieldOfStep();
    void focusIsInFirstFieldOnWayBack();
    void focusGoesToDriveThatHasLetUserIn();
    void focusGoesToOkBehindLastStep();
    void focusLeftByUserStaysWhereItIs();

    void returnGoesOnOverAllSteps();
    void returnPressedTwiceWaitsForLogOn();
    void returnDoesNotTakeRefusedDrive();
    void returnThatIsHeldGoesOnOnce();
    void returnThatIsHeldPressesButtonOnce();
    void spaceTicksDrive();

    void scanIsAbortedByKey();
    void returnAbortsNoScan();
    void focusGoesOnAfterScan();
    void focusGoesBackAfterScanThatFoundNothing();

    void rowTellsItsOutcome();
    void listedDriveTellsItsAccess();
    void abortButtonsAreNamedAfterTheirPorts();

private:
    void prepare() override;
    void tidyUp() override;

    void plug(const QList<int> &addresses);
    QString focus() const { return bench->dialog->focusWidget()->objectName(); }
    void key(Qt::Key key) { QTest::keyClick(bench->dialog->focusWidget(), key); }
    void hold(Qt::Key key)
    {
        QTest::simulateEvent(bench->dialog->focusWidget(), true, key, Qt::NoModifier, QString(), true);
    }
    void typeIn(const char *field, const QString &text)
    {
        child(*bench->dialog, field).setFocus();
        auto &line = child<QLineEdit>(*bench->dialog, field);
        line.selectAll();
        QTest::keyClicks(&line, text);
    }
    void begin(const char *way)
    {
        child(*bench->dialog, way).setFocus();
        key(Qt::Key_Space);
    }
    void logOn(int address, int password)
    {
        begin("BtnManual");
        typeIn("EdAdress", QString::number(address));
        typeIn("EdPassword", QString::number(password));
        key(Qt::Key_Return);
    }
    template<typename Widget>
    QList<Widget *> onPage() const
    {
        return bench->page()->findChildren<Widget *>();
    }
    void waitForTheScan() { QTRY_VERIFY_WITH_TIMEOUT(bench->isEnabled("BtnNext"), 30000); }

    std::unique_ptr<SimulatedDrives> drives;
    std::unique_ptr<WizardBench> bench;
};

void TestWizardByKeyboard::prepare()
{
    writeDefinitions();
    Z7Services::instance()->options()->setTimeoutScanning(20);
    drives = std::make_unique<SimulatedDrives>();
    bench = std::make_unique<WizardBench>();
    bench->dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(bench->dialog));
}

void TestWizardByKeyboard::tidyUp()
{
    bench.reset();
    drives.reset();
}

/// Each drive has its address plus 1000 as password.
void TestWizardByKeyboard::plug(const QList<int> &addresses)
{
    z7sim::SimulatedBus &bus = drives->plug(firstPort);
    for (int address : addresses) {
        z7sim::DriveConfig drive;
        drive.address = address;
        drive.password = 1000 + address;
        bus.addDrive(drive);
    }
}

void TestWizardByKeyboard::focusBeginsWithQuickConnectWithoutDrives()
{
    QCOMPARE(focus(), QStringLiteral("BtnQuickConnect"));
}

void TestWizardByKeyboard::focusBeginsWithDrives()
{
    bench->open({drive(1)});
    QCOMPARE(focus(), QStringLiteral("LbConnectedDevices"));
}

void TestWizardByKeyboard::focusIsInFirstFieldOfStep_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<QString>("field");
    QTest::newRow("quick connect") << QByteArray("BtnQuickConnect") << QStringLiteral("scrollArea");
    QTest::newRow("manual") << QByteArray("BtnManual") << QStringLiteral("cbPorts");
    QTest::newRow("scan one port") << QByteArray("BtnScanPort") << QStringLiteral("cbPorts");
    QTest::newRow("scan all ports") << QByteArray("BtnScanAllPorts") << QStringLiteral("BtnNext");
}

void TestWizardByKeyboard::focusIsInFirstFieldOfStep()
{
    QFETCH(QByteArray, way);
    QFETCH(QString, field);
    begin(way.constData());
    QCOMPARE(focus(), field);
}

void TestWizardByKeyboard::focusIsInFirstFieldOnWayBack()
{
    plug({3});
    logOn(3, 9);
    begin("BtnPrevious");
    QCOMPARE(focus(), QStringLiteral("cbPorts"));
}

void TestWizardByKeyboard::focusGoesToDriveThatHasLetUserIn()
{
    plug({3});
    logOn(3, 1003);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QCOMPARE(bench->dialog->focusWidget(), onPage<QCheckBox>().constFirst());
}

void TestWizardByKeyboard::focusGoesToOkBehindLastStep()
{
    plug({3});
    logOn(3, 1003);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    key(Qt::Key_Return);
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.3")});
    QCOMPARE(focus(), QStringLiteral("BtnOK"));
    key(Qt::Key_Return);
    QCOMPARE(bench->controller.connectedDevices().size(), 1);
    QVERIFY(!bench->dialog->isVisible());
}

void TestWizardByKeyboard::focusLeftByUserStaysWhereItIs()
{
    plug({3});
    logOn(3, 1003);
    child(*bench->dialog, "BtnCancel").setFocus();
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QCOMPARE(focus(), QStringLiteral("BtnCancel"));
}

void TestWizardByKeyboard::returnGoesOnOverAllSteps()
{
    plug({3});
    begin("BtnScanAllPorts");
    key(Qt::Key_Return);
    waitForTheScan();
    key(Qt::Key_Return);
    QCOMPARE(bench->pageName(), QStringLiteral("SetPasswordWizardWidget"));
    QTest::keyClicks(bench->dialog->focusWidget(), QStringLiteral("1003"));
    key(Qt::Key_Return);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    key(Qt::Key_Return);
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.3")});
}

void TestWizardByKeyboard::returnPressedTwiceWaitsForLogOn()
{
    plug({3});
    drives->slowDown(firstPort);
    logOn(3, 1003);
    key(Qt::Key_Return);
    QCOMPARE(bench->pageName(), QStringLiteral("ConfirmConnectionWizardWidget"));
    QVERIFY(bench->rowTexts().isEmpty());
    // Also when the focus has been elsewhere meanwhile.
    key(Qt::Key_Tab);
    key(Qt::Key_Backtab);
    key(Qt::Key_Return);
    QVERIFY(bench->rowTexts().isEmpty());
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    key(Qt::Key_Return);
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.3")});
}

void TestWizardByKeyboard::returnDoesNotTakeRefusedDrive()
{
    plug({3});
    logOn(3, 9);
    QTRY_COMPARE(picturesOf(*bench->page()).size(), 1);
    QTRY_COMPARE(picturesOf(*bench->page()).constFirst(), image(":/images/stop-icon_16px.png", 16));
    key(Qt::Key_Return);
    QVERIFY(bench->rowTexts().isEmpty());
    QCOMPARE(bench->pageName(), QStringLiteral("ConfirmConnectionWizardWidget"));
}

void TestWizardByKeyboard::returnThatIsHeldGoesOnOnce()
{
    plug({3});
    begin("BtnManual");
    hold(Qt::Key_Return);
    QCOMPARE(bench->pageName(), QStringLiteral("ScanPortWizardWidget"));
}

void TestWizardByKeyboard::returnThatIsHeldPressesButtonOnce()
{
    plug({3});
    // As after the return key in the menu that opens the dialog.
    hold(Qt::Key_Return);
    QCOMPARE(bench->pageName(), QString());
}

void TestWizardByKeyboard::spaceTicksDrive()
{
    plug({3});
    logOn(3, 1003);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    key(Qt::Key_Space);
    QVERIFY(!onPage<QCheckBox>().constFirst()->isChecked());
}

void TestWizardByKeyboard::scanIsAbortedByKey()
{
    plug({3});
    drives->slowDown(firstPort);
    begin("BtnScanPort");
    key(Qt::Key_Return);
    QTRY_VERIFY(onPage<QPushButton>().constFirst()->isVisible());
    QCOMPARE(bench->dialog->focusWidget(), onPage<QPushButton>().constFirst());
    key(Qt::Key_Space);
    waitForTheScan();
    QCOMPARE(bench->pageName(), QStringLiteral("ScanningWizardWidget"));
}

void TestWizardByKeyboard::returnAbortsNoScan()
{
    plug({3});
    drives->slowDown(firstPort);
    begin("BtnScanPort");
    key(Qt::Key_Return);
    QTRY_VERIFY(onPage<QPushButton>().constFirst()->isVisible());
    QSignalSpy aborts(onPage<QPushButton>().constFirst(), SIGNAL(clicked()));
    key(Qt::Key_Return);
    key(Qt::Key_Escape);
    QCOMPARE(aborts.size(), 0);
    QVERIFY(bench->dialog->isVisible());
    key(Qt::Key_Space);
    waitForTheScan();
}

void TestWizardByKeyboard::focusGoesOnAfterScan()
{
    plug({3});
    begin("BtnScanPort");
    key(Qt::Key_Return);
    waitForTheScan();
    QCOMPARE(focus(), QStringLiteral("BtnNext"));
}

void TestWizardByKeyboard::focusGoesBackAfterScanThatFoundNothing()
{
    drives->plugDeadPort(firstPort);
    begin("BtnScanPort");
    key(Qt::Key_Return);
    waitForTheScan();
    QCOMPARE(focus(), QStringLiteral("BtnPrevious"));
    key(Qt::Key_Return);
    QCOMPARE(bench->pageName(), QStringLiteral("ScanPortWizardWidget"));
}

void TestWizardByKeyboard::rowTellsItsOutcome()
{
    plug({3});
    const auto outcomes = [this] {
        QStringList names;
        for (const QLabel *label : onPage<QLabel>()) {
            if (!label->accessibleName().isEmpty())
                names.append(label->accessibleName());
        }
        return names;
    };
    logOn(3, 9);
    QTRY_COMPARE(outcomes(), QStringList {QStringLiteral("nicht erfolgreich")});
    logOn(3, 1003);
    QTRY_COMPARE(outcomes(), QStringList {QStringLiteral("erfolgreich")});
}

void TestWizardByKeyboard::listedDriveTellsItsAccess()
{
    plug({});
    bench->open({drive(1), driveWithoutAccess(2)});
    const auto text = [this](int row) {
        return bench->rows().topLevelItem(row)->data(0, Qt::AccessibleTextRole).toString();
    };
    QCOMPARE(text(0), QStringLiteral("Port0 - Z7.1, Zugriff"));
    QCOMPARE(text(1), QStringLiteral("Port0 - Z7.2, kein Zugriff"));
}

void TestWizardByKeyboard::abortButtonsAreNamedAfterTheirPorts()
{
    drives->plugDeadPort(firstPort);
    drives->plugDeadPort(QStringLiteral("ttyUSB1"));
    begin("BtnScanAllPorts");
    key(Qt::Key_Return);
    const QList<QPushButton *> buttons = onPage<QPushButton>();
    QCOMPARE(buttons.size(), 2);
    QCOMPARE(buttons.at(1)->accessibleName(), QStringLiteral("ttyUSB0: Abbrechen"));
    QCOMPARE(buttons.at(0)->accessibleName(), QStringLiteral("ttyUSB1: Abbrechen"));
    waitForTheScan();
}

QTEST_MAIN(TestWizardByKeyboard)

#include "tst_wizardbykeyboard.moc"
