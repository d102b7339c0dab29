// Logging on to drives on a bus: quick connect, the manual way, and what the last page makes of the answers.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/simulateddrives.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QCheckBox>
#include <QLabel>
#include <QtTest>

#include <memory>

using namespace ShellTest;

namespace {

const QString secondPort = QStringLiteral("ttyUSB1");
const char tick[] = ":/images/tick-icon_16px.png";
const char stop[] = ":/images/stop-icon_16px.png";

} // namespace

class TestConnectDrives : public IsolatedTest
{
    Q_OBJECT

private slots:
    void quickConnectTriesOnePortWithDefaultAddress();
    void quickConnectTicksDriveThatTakesItsAddressAsPassword();
    void quickConnectListsDrive();
    void manualWayLogsOnWithTypedPassword();
    void rowShowsNoStateBeforeLogOnBegins();
    void controlBarShowsLogOn();

    void failedLogOnCannotBeTicked_data();
    void failedLogOnCannotBeTicked();
    void okOnLastPageTakesTickedDrive();
    void untickedDriveIsNotTaken();
    void nextPutsTickedDriveIntoList();
    void nextWithNothingTickedStillPutsDriveIntoList();
    void cancellingTakesNothing();
    void knownDriveGetsNoSecondRow();
    void removedDriveDoesNotComeBackAtOk();
    void removedDriveDoesNotComeBackAtLaterOk();

    void okStaysGreyAfterPreviousUntilDriveIsConnectedAgain();
    void rightPasswordAfterWrongOneConnects_data();
    void rightPasswordAfterWrongOneConnects();

    void nothingIsLeftOfInterruptedWay_data();
    void nothingIsLeftOfInterruptedWay();
    void secondWayConnectsAfterInterruptedOne();
    void closingDuringLogOnLeavesDialogUsable();

private:
    void prepare() override;
    void tidyUp() override;

    z7sim::SimulatedBus &plugDrive(int address, int password);
    static z7sim::DriveConfig simulated(int address, int password);
    /// Gives a person time to do something during a log-on.
    static void makeSlow(z7sim::SimulatedBus &bus);
    void logOn(int address, int password);
    QCheckBox *check() const { return bench->page() ? bench->page()->findChild<QCheckBox *>() : nullptr; }
    bool isTicked() const { return check() && check()->isChecked(); }
    /// The picture beside the drive; null while there is none.
    QImage state() const;
    bool isUnderWay() const { return sees(*bench->band.bar, "PgBarComm"); }
    bool hasEnded() const { return !state().isNull(); }
    Z7Device connectedDrive() const { return bench->controller.connectedDevices().value(0); }

    std::unique_ptr<SimulatedDrives> drives;
    std::unique_ptr<WizardBench> bench;
};

void TestConnectDrives::prepare()
{
    writeDefinitions();
    drives = std::make_unique<SimulatedDrives>();
    bench = std::make_unique<WizardBench>();
}

void TestConnectDrives::tidyUp()
{
    bench.reset();
    drives.reset();
}

z7sim::SimulatedBus &TestConnectDrives::plugDrive(int address, int password)
{
    z7sim::SimulatedBus &bus = drives->plug(firstPort);
    bus.addDrive(simulated(address, password));
    return bus;
}

z7sim::DriveConfig TestConnectDrives::simulated(int address, int password)
{
    z7sim::DriveConfig drive;
    drive.address = address;
    drive.password = password;
    return drive;
}

void TestConnectDrives::makeSlow(z7sim::SimulatedBus &bus)
{
    bus.command("turnaround 80000");
    bus.command("pace on");
}

void TestConnectDrives::logOn(int address, int password)
{
    bench->press("BtnManual");
    bench->type("EdAdress", QString::number(address));
    bench->type("EdPassword", QString::number(password));
    bench->press("BtnNext");
}

QImage TestConnectDrives::state() const
{
    return bench->page() ? picturesOf(*bench->page()).value(0) : QImage();
}

void TestConnectDrives::quickConnectTriesOnePortWithDefaultAddress()
{
    drives->plug(firstPort);
    drives->plug(secondPort);
    bench->press("BtnQuickConnect");
    QCOMPARE(bench->page()->findChildren<QCheckBox *>().size(), 1);
    QCOMPARE(check()->text(), QStringLiteral("Port1 - Z7.1"));
    QTRY_VERIFY(hasEnded());
    QVERIFY(drives->requests(firstPort).isEmpty());
    // Access to address 1, with the address as password.
    QCOMPARE(drives->requests(secondPort), QByteArrayList {"09 01 00 00 00 01 5e"});
}

// The drive grants access to the first password and refuses the second, which is the record's 0.
void TestConnectDrives::quickConnectTicksDriveThatTakesItsAddressAsPassword()
{
    plugDrive(1, 1);
    bench->press("BtnQuickConnect");
    QTRY_VERIFY(isTicked());
    QCOMPARE(state(), image(tick, 16));
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
}

void TestConnectDrives::quickConnectListsDrive()
{
    plugDrive(1, 0);
    bench->press("BtnQuickConnect");
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnOK");
    QCOMPARE(connectedDrive().softwareVersion, QStringLiteral("V123"));
    QVERIFY(connectedDrive().isAccessGranted());
    QCOMPARE(bench->band.tree().topLevelItem(0)->text(0), QStringLiteral("Port0 - Z7.1"));
}

void TestConnectDrives::manualWayLogsOnWithTypedPassword()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QCOMPARE(check()->text(), QStringLiteral("Port0 - Z7.17"));
    QVERIFY(check()->font().bold());
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QVERIFY(isTicked());
    QVERIFY(check()->isEnabled());
    // Access to address 17, first with the address, then with 4711 as password.
    QCOMPARE(drives->requests(firstPort).mid(0, 2),
        QByteArrayList({"09 11 00 00 00 11 7e", "09 11 00 00 12 67 c6"}));
}

void TestConnectDrives::rowShowsNoStateBeforeLogOnBegins()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QVERIFY(!check()->isEnabled());
    QVERIFY(!check()->isChecked());
    QVERIFY(!hasEnded());
    QVERIFY(!bench->isEnabled("BtnOK"));
}

void TestConnectDrives::controlBarShowsLogOn()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QCOMPARE(textOf(*bench->band.bar, "LPort"), firstPort);
    QCOMPARE(textOf(*bench->band.bar, "LDevice"), QStringLiteral("Z7.17"));
    QVERIFY(!sees(*bench->band.bar, "PgBarComm"));
}

void TestConnectDrives::failedLogOnCannotBeTicked_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("password");
    QTest::addColumn<bool>("portOpens");
    QTest::newRow("wrong password") << 17 << 4712 << true;
    QTest::newRow("no drive of that address") << 18 << 4711 << true;
    QTest::newRow("port does not open") << 17 << 4711 << false;
}

void TestConnectDrives::failedLogOnCannotBeTicked()
{
    QFETCH(int, address);
    QFETCH(int, password);
    QFETCH(bool, portOpens);
    if (portOpens)
        plugDrive(17, 4711);
    else
        drives->plugDeadPort(firstPort);
    logOn(address, password);
    QTRY_VERIFY(hasEnded());
    QCOMPARE(state(), image(stop, 16));
    QTest::mouseClick(check(), Qt::LeftButton);
    QVERIFY(!isTicked());
    QVERIFY(!bench->isEnabled("BtnOK"));
    QVERIFY(bench->isEnabled("BtnCancel"));
}

void TestConnectDrives::okOnLastPageTakesTickedDrive()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnOK");
    QVERIFY(!bench->dialog->isVisible());
    QCOMPARE(connectedDrive().address, 17);
    QCOMPARE(connectedDrive().password, 4711);
}

void TestConnectDrives::untickedDriveIsNotTaken()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QVERIFY(Person::tick(check()));
    QVERIFY(!isTicked());
    bench->press("BtnOK");
    QVERIFY(bench->controller.connectedDevices().isEmpty());
}

void TestConnectDrives::nextPutsTickedDriveIntoList()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnNext");
    QVERIFY(bench->pageName().isEmpty());
    QVERIFY(!bench->sees("BtnNext"));
    QVERIFY(!bench->sees("BtnPrevious"));
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.17")});
    QCOMPARE(image(bench->rows().topLevelItem(0)->icon(0)), image(":images/home-icon_24px_active.png"));
    bench->press("BtnOK");
    QCOMPARE(bench->controller.connectedDevices().size(), 1);
}

void TestConnectDrives::nextWithNothingTickedStillPutsDriveIntoList()
{
    plugDrive(17, 4711);
    logOn(17, 1);
    QTRY_VERIFY(hasEnded());
    bench->press("BtnNext");
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.17")});
    QCOMPARE(image(bench->rows().topLevelItem(0)->icon(0)), image(":images/home-icon_24px_inactive.png"));
}

void TestConnectDrives::cancellingTakesNothing()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnCancel");
    QVERIFY(bench->controller.connectedDevices().isEmpty());
}

void TestConnectDrives::knownDriveGetsNoSecondRow()
{
    plugDrive(17, 4711);
    bench->open({driveWithoutAccess(17)});
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnNext");
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.17")});
    // The row keeps its icon; its record knows better.
    QCOMPARE(image(bench->rows().topLevelItem(0)->icon(0)), image(":images/home-icon_24px_inactive.png"));
    bench->press("BtnOK");
    QCOMPARE(bench->controller.connectedDevices().size(), 1);
    QVERIFY(connectedDrive().isAccessGranted());
    QCOMPARE(connectedDrive().password, 4711);
}

void TestConnectDrives::removedDriveDoesNotComeBackAtOk()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnNext");
    QVERIFY(Person::click(bench->rows().topLevelItem(0)));
    bench->press("BtnRemoveConnection");
    bench->press("BtnOK");
    QVERIFY(bench->controller.connectedDevices().isEmpty());
}

void TestConnectDrives::removedDriveDoesNotComeBackAtLaterOk()
{
    okOnLastPageTakesTickedDrive();
    bench->open(bench->controller.connectedDevices());
    QVERIFY(Person::click(bench->rows().topLevelItem(0)));
    bench->press("BtnRemoveConnection");
    bench->press("BtnOK");
    QVERIFY(bench->controller.connectedDevices().isEmpty());
}

void TestConnectDrives::okStaysGreyAfterPreviousUntilDriveIsConnectedAgain()
{
    plugDrive(17, 4711);
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnPrevious");
    QVERIFY(!bench->isEnabled("BtnOK"));
    bench->press("BtnNext");
    QVERIFY(!bench->isEnabled("BtnOK"));
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
}

void TestConnectDrives::rightPasswordAfterWrongOneConnects_data()
{
    QTest::addColumn<bool>("waits");
    QTest::newRow("after the refusal") << true;
    QTest::newRow("while the first log-on still runs") << false;
}

void TestConnectDrives::rightPasswordAfterWrongOneConnects()
{
    QFETCH(bool, waits);
    z7sim::SimulatedBus &bus = plugDrive(17, 4711);
    // The refusal comes with the second reply: each takes long enough to be overtaken on a busy machine.
    Z7Services::instance()->options()->setTimeout(5000);
    bus.command("turnaround 500000");
    bus.command("pace on");
    logOn(17, 1);
    QTRY_VERIFY(waits ? hasEnded() : isUnderWay());
    bus.command("turnaround 1000");
    bench->press("BtnPrevious");
    bench->type("EdPassword", QStringLiteral("4711"));
    bench->press("BtnNext");
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnOK");
    QCOMPARE(connectedDrive().password, 4711);
}

void TestConnectDrives::nothingIsLeftOfInterruptedWay_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char *button : {"BtnQuickConnect", "BtnManual", "BtnScanPort", "BtnScanAllPorts"})
        QTest::newRow(button) << QByteArray(button);
}

void TestConnectDrives::nothingIsLeftOfInterruptedWay()
{
    QFETCH(QByteArray, button);
    makeSlow(plugDrive(17, 4711));
    logOn(17, 4711);
    QTRY_VERIFY(isUnderWay());
    bench->press(button.constData());
    // The log-on goes on to its end, but the page that had asked for it has gone.
    QTRY_COMPARE(textOf(*bench->band.bar, "LDevice"), QStringLiteral("Z7.17"));
    QTRY_VERIFY(!sees(*bench->band.bar, "PgBarComm"));
    QTest::qWait(0);
    QVERIFY(!isTicked());
    QVERIFY(!bench->isEnabled("BtnOK"));
    QVERIFY(bench->rowTexts().isEmpty());
}

void TestConnectDrives::secondWayConnectsAfterInterruptedOne()
{
    z7sim::SimulatedBus &bus = plugDrive(17, 4711);
    bus.addDrive(simulated(18, 99));
    makeSlow(bus);
    logOn(17, 4711);
    QTRY_VERIFY(isUnderWay());
    logOn(18, 99);
    QCOMPARE(check()->text(), QStringLiteral("Port0 - Z7.18"));
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QCOMPARE(check()->text(), QStringLiteral("Port0 - Z7.18"));
    bench->press("BtnOK");
    QCOMPARE(bench->controller.connectedDevices().size(), 1);
    QCOMPARE(connectedDrive().address, 18);
}

void TestConnectDrives::closingDuringLogOnLeavesDialogUsable()
{
    makeSlow(plugDrive(17, 4711));
    logOn(17, 4711);
    QTRY_VERIFY(isUnderWay());
    bench->press("BtnCancel");
    bench->open({});
    QVERIFY(bench->pageName().isEmpty());
    logOn(17, 4711);
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnOK");
    QCOMPARE(connectedDrive().address, 17);
}

QTEST_MAIN(TestConnectDrives)

#include "tst_connectdrives.moc"
