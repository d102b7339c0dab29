// The window with drives: what becomes possible with one, and what the wizard does to the running bus.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/drivenwindow.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QAction>
#include <QLabel>

using namespace ShellTest;

namespace {

enum Page { Network, DeviceStatus, CurrentLimits = 4, ParameterTable = 9, FirmwareUpload = 10 };

const char *const fileActions[] = {"actionOpen", "actionSave", "actionSaveAs"};
const char *const driveButtons[] = {"BtnOpen", "BtnSaveAs", "BtnFactoryReset", "BtnSetPassword"};

} // namespace

class TestWindowWithDrives : public IsolatedTest
{
    Q_OBJECT

private slots:
    void actionsOfDriveWorkOncePageIsShown();
    void actionsAreGreyOnPageOfAllDrives_data();
    void actionsAreGreyOnPageOfAllDrives();
    void actionsAreGreyAfterNewListOfDrives();
    void resetChangesStaysActiveWithoutDrive();
    void shortcutsWorkOncePageIsShown();

    void controlBarShowsShownDrive();
    void clicksCountWhilePollingRuns();
    void openingWizardEndsPolling();
    void wizardListsConnectedDrives();
    void connectingAgainPollsAgain();

private:
    void prepare() override;
    void tidyUp() override;

    void open(const QList<int> &addresses);
    bool areActionsEnabled(bool enabled) const;

    std::unique_ptr<DrivenWindow> ui;
};

void TestWindowWithDrives::prepare()
{
    writeDefinitions();
    Z7Services::instance()->options()->setPollingInterval(20);
}

void TestWindowWithDrives::tidyUp()
{
    ui->window->close();
    ui.reset();
}

void TestWindowWithDrives::open(const QList<int> &addresses)
{
    ui = std::make_unique<DrivenWindow>(addresses);
    QVERIFY(QTest::qWaitForWindowActive(ui->window.get()));
    QVERIFY(ui->connectDrives(addresses));
}

bool TestWindowWithDrives::areActionsEnabled(bool enabled) const
{
    for (const char *name : fileActions) {
        if (ui->window->findChild<QAction *>(QString::fromLatin1(name))->isEnabled() != enabled)
            return false;
    }
    for (const char *name : driveButtons) {
        if (child(*ui->window, name).isEnabled() != enabled)
            return false;
    }
    return true;
}

void TestWindowWithDrives::actionsOfDriveWorkOncePageIsShown()
{
    open({3});
    QVERIFY(areActionsEnabled(false));
    ui->click(ParameterTable, 3);
    QVERIFY(areActionsEnabled(true));
    QVERIFY(child(*ui->window, "BtnResetChanges").isEnabled());
}

void TestWindowWithDrives::actionsAreGreyOnPageOfAllDrives_data()
{
    QTest::addColumn<bool>("firmware");
    QTest::newRow("network") << false;
    QTest::newRow("firmware update") << true;
}

void TestWindowWithDrives::actionsAreGreyOnPageOfAllDrives()
{
    QFETCH(bool, firmware);
    open({3, 4});
    ui->click(ParameterTable, 3);
    QVERIFY(areActionsEnabled(true));
    QVERIFY(ui->waitForAPass());
    QVERIFY(Person::click(firmware ? ui->item(FirmwareUpload, 4) : ui->tree().topLevelItem(0)));
    QVERIFY(areActionsEnabled(false));
}

void TestWindowWithDrives::actionsAreGreyAfterNewListOfDrives()
{
    open({3});
    ui->click(ParameterTable, 3);
    ui->press("BtnConnection");
    QVERIFY(Person::press(*ui->wizard, "BtnOK"));
    QVERIFY(areActionsEnabled(false));
}

void TestWindowWithDrives::resetChangesStaysActiveWithoutDrive()
{
    open({3});
    ui->click(ParameterTable, 3);
    ui->press("BtnConnection");
    QVERIFY(Person::click(child<QTreeWidget>(*ui->wizard, "LbConnectedDevices").topLevelItem(0)));
    QVERIFY(Person::press(*ui->wizard, "BtnRemoveConnection"));
    QVERIFY(Person::press(*ui->wizard, "BtnOK"));
    QCOMPARE(ui->tree().topLevelItemCount(), 0);
    QVERIFY(areActionsEnabled(false));
    QVERIFY(child(*ui->window, "BtnResetChanges").isEnabled());
}

void TestWindowWithDrives::shortcutsWorkOncePageIsShown()
{
    open({3});
    ui->click(CurrentLimits, 3);
    for (const char *name : fileActions) {
        auto *action = ui->window->findChild<QAction *>(QString::fromLatin1(name));
        QVERIFY2(action->isEnabled(), name);
        QCOMPARE(action->shortcutContext(), Qt::WindowShortcut);
    }
}

void TestWindowWithDrives::controlBarShowsShownDrive()
{
    open({3, 4});
    ui->bus.command("set 4 param 0x8001 1234");
    ui->click(CurrentLimits, 4);
    QTRY_COMPARE(textOf(*ui->window, "lCurrent"), QStringLiteral("1234"));
    QCOMPARE(textOf(*ui->window, "LDevice"), QStringLiteral("Z7.4"));
    QCOMPARE(textOf(*ui->window, "LPort"), firstPort);
    QCOMPARE(pictureOf(*ui->window, "LCommStatus"), image(":/images/usb_green_24px.png"));
}

void TestWindowWithDrives::clicksCountWhilePollingRuns()
{
    open({3, 4});
    for (int address : {3, 4, 3}) {
        ui->click(CurrentLimits, address);
        // A record lets the next click through.
        QVERIFY(ui->waitForAPass());
        QCOMPARE(textOf(*ui->window, "LDevice"), QStringLiteral("Z7.%1").arg(address));
    }
}

void TestWindowWithDrives::openingWizardEndsPolling()
{
    open({3});
    ui->click(CurrentLimits, 3);
    QVERIFY(ui->waitForAPass());
    ui->press("BtnConnection");
    // Polling would be back after 20 ms.
    QVERIFY(QTest::qWaitFor([this] { return ui->staysSilent(300); }));
}

void TestWindowWithDrives::wizardListsConnectedDrives()
{
    open({3, 4});
    ui->press("BtnConnection");
    const auto &rows = child<QTreeWidget>(*ui->wizard, "LbConnectedDevices");
    QCOMPARE(rows.topLevelItemCount(), 2);
    QCOMPARE(rows.topLevelItem(0)->text(0), QStringLiteral("Port0 - Z7.3"));
    QCOMPARE(rows.topLevelItem(1)->text(0), QStringLiteral("Port0 - Z7.4"));
}

void TestWindowWithDrives::connectingAgainPollsAgain()
{
    open({3});
    ui->click(CurrentLimits, 3);
    QVERIFY(ui->waitForTraffic());
    ui->press("BtnConnection");
    QVERIFY(Person::press(*ui->wizard, "BtnOK"));
    ui->bus.clearLog();
    ui->click(CurrentLimits, 3);
    QVERIFY(ui->waitForTraffic());
}

QTEST_MAIN(TestWindowWithDrives)

#include "tst_windowwithdrives.moc"
