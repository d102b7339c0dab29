// Sweeping one port or all of them for drives, and logging on to those found.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/simulateddrives.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

namespace {

const QString secondPort = QStringLiteral("ttyUSB1");
const QString thirdPort = QStringLiteral("ttyUSB2");
const char *const lockedButtons[] = {"BtnNext", "BtnPrevious", "BtnCancel", "BtnScanPort", "BtnQuickConnect",
    "BtnManual", "BtnScanAllPorts", "BtnRemoveConnection"};

/// Short, so that a sweep of silent addresses does not take long; the simulated bus answers at once.
constexpr int timeoutScanningMs = 12;

} // namespace

class TestScanDrives : public IsolatedTest
{
    Q_OBJECT

private slots:
    void everyAddressIsAskedOnce();
    void foundDrivesAreCounted();
    void rowTellsOfScanWhileItRuns();
    void buttonsAreLockedUntilScanEnds();
    void escapeIsNoWayOutOfScan();
    void minimizedWindowGoesOnScanning();
    void scanThatFindsNothingKeepsPage();
    void portThatDoesNotOpenHasNoDrives();
    void secondVisitCountsAnew();
    void previousOffersOnlyWhatWasFound();

    void allPortsAreScannedOneByOne();
    void onlyFoundDrivesGoOn();
    void abortingLeavesOtherPortsOut();
    void abortedScanKeepsWhatItHasFound();

    void passwordCanBeTypedAtOnce();
    void onePasswordIsTriedOnAllDrives();
    void logOnsArePartedByPause();
    void checkedDrivesAreTaken();
    void leavingLastPageEndsLogOns();
    void minimizedWindowGoesOnLoggingOn();

private:
    void prepare() override;
    void tidyUp() override;

    z7sim::SimulatedBus &plug(const QString &port, const QList<int> &addresses);
    void beginScanOfOnePort();
    void beginScanOfAllPorts();
    void waitForTheScan() { QTRY_VERIFY_WITH_TIMEOUT(bench->isEnabled("BtnNext"), 30000); }
    void scanOnePort();
    /// What the window system tells a page whose window is minimized.
    void minimize();
    /// Aborts the scan beyond address 10, to save the time of the silent addresses behind it.
    void abortBeyondLowAddresses();
    void scanAllPorts();

    template<typename Widget>
    QList<Widget *> onPage() const
    {
        return bench->page()->findChildren<Widget *>();
    }
    /// What the rows show as text, without the port's name.
    QStringList rowTexts() const;
    QList<QImage> rowPictures() const { return picturesOf(*bench->page()); }
    QStringList tickedDrives() const;
    QByteArrayList accessTo(const QString &port, int address) const;

    std::unique_ptr<SimulatedDrives> drives;
    std::unique_ptr<WizardBench> bench;
};

void TestScanDrives::prepare()
{
    writeDefinitions();
    Z7Services::instance()->options()->setTimeoutScanning(timeoutScanningMs);
    drives = std::make_unique<SimulatedDrives>();
    bench = std::make_unique<WizardBench>();
}

void TestScanDrives::tidyUp()
{
    bench.reset();
    drives.reset();
}

z7sim::SimulatedBus &TestScanDrives::plug(const QString &port, const QList<int> &addresses)
{
    z7sim::SimulatedBus &bus = drives->plug(port);
    for (int address : addresses) {
        z7sim::DriveConfig drive;
        drive.address = address;
        drive.password = 1000 + address;
        bus.addDrive(drive);
    }
    return bus;
}

void TestScanDrives::beginScanOfOnePort()
{
    bench->press("BtnScanPort");
    bench->press("BtnNext");
}

void TestScanDrives::beginScanOfAllPorts()
{
    bench->press("BtnScanAllPorts");
    bench->press("BtnNext");
}

void TestScanDrives::scanOnePort()
{
    beginScanOfOnePort();
    waitForTheScan();
}

void TestScanDrives::minimize()
{
    QHideEvent minimized;
    QSpontaneKeyEvent::setSpontaneous(&minimized);
    qApp->notify(bench->page(), &minimized);
}

void TestScanDrives::abortBeyondLowAddresses()
{
    QTRY_VERIFY(onPage<QProgressBar>().first()->value() > 10);
    QVERIFY(Person::press(onPage<QPushButton>().first()));
    waitForTheScan();
}

void TestScanDrives::scanAllPorts()
{
    beginScanOfAllPorts();
    waitForTheScan();
}

QStringList TestScanDrives::rowTexts() const
{
    QStringList texts;
    for (const auto *label : onPage<QLabel>()) {
        if (!label->text().trimmed().isEmpty() && !label->text().endsWith(QLatin1String(": ")))
            texts << label->text();
    }
    return texts;
}

QStringList TestScanDrives::tickedDrives() const
{
    QStringList names;
    for (const auto *check : onPage<QCheckBox>()) {
        if (check->isChecked())
            names << check->text();
    }
    return names;
}

QByteArrayList TestScanDrives::accessTo(const QString &port, int address) const
{
    QByteArrayList requests;
    for (const QByteArray &request : drives->requests(port)) {
        if (QByteArray::fromHex(request).mid(0, 2) == QByteArray("\x09") + char(address))
            requests << request;
    }
    return requests;
}

void TestScanDrives::everyAddressIsAskedOnce()
{
    plug(firstPort, {});
    scanOnePort();
    const QByteArrayList requests = drives->requests(firstPort);
    QCOMPARE(requests.size(), 255);
    // Access to address 1, then 2, then 255, each with the address as password.
    QCOMPARE(requests.at(0), QByteArray("09 01 00 00 00 01 5e"));
    QCOMPARE(requests.at(1), QByteArray("09 02 00 00 00 02 58"));
    QCOMPARE(requests.at(254), QByteArray("09 ff 00 00 00 ff 52"));
}

void TestScanDrives::foundDrivesAreCounted()
{
    plug(firstPort, {3, 5});
    scanOnePort();
    QCOMPARE(rowTexts(), QStringList {QStringLiteral("2 Gerät(e) erkannt")});
    QCOMPARE(rowPictures(), QList<QImage> {image(":/images/tick-icon_16px.png", 16)});
}

void TestScanDrives::rowTellsOfScanWhileItRuns()
{
    plug(firstPort, {});
    drives->slowDown(firstPort);
    beginScanOfOnePort();
    QCOMPARE(onPage<QLabel>().first()->text(), QStringLiteral("ttyUSB0: "));
    QVERIFY(onPage<QLabel>().first()->font().bold());
    QCOMPARE(rowTexts(), QStringList {QStringLiteral("Scanning...")});
    auto *progress = onPage<QProgressBar>().first();
    auto *abort = onPage<QPushButton>().first();
    QVERIFY(!progress->isVisible());
    QVERIFY(!abort->isVisible());
    QTRY_VERIFY(progress->isVisible());
    QVERIFY(abort->isVisible());
    QCOMPARE(abort->text(), QStringLiteral("Abbrechen"));
    QCOMPARE(progress->maximum(), 255);
    QTRY_VERIFY(progress->value() > 5);
    abortBeyondLowAddresses();
    QVERIFY(!progress->isVisible());
    QVERIFY(!abort->isVisible());
}

void TestScanDrives::buttonsAreLockedUntilScanEnds()
{
    plug(firstPort, {3});
    drives->slowDown(firstPort);
    beginScanOfOnePort();
    for (const char *button : lockedButtons)
        QVERIFY2(!bench->isEnabled(button), button);
    abortBeyondLowAddresses();
    for (const char *button : lockedButtons)
        QVERIFY2(bench->isEnabled(button), button);
    QVERIFY(!bench->isEnabled("BtnOK"));
}

void TestScanDrives::escapeIsNoWayOutOfScan()
{
    plug(firstPort, {3});
    drives->slowDown(firstPort);
    beginScanOfOnePort();
    QTRY_VERIFY(onPage<QProgressBar>().first()->isVisible());
    QTest::keyClick(bench->dialog, Qt::Key_Escape);
    bench->dialog->close();
    QVERIFY(bench->dialog->isVisible());
    abortBeyondLowAddresses();
    QTest::keyClick(bench->dialog, Qt::Key_Escape);
    QVERIFY(!bench->dialog->isVisible());
}

void TestScanDrives::minimizedWindowGoesOnScanning()
{
    plug(firstPort, {3});
    beginScanOfOnePort();
    minimize();
    waitForTheScan();
    QCOMPARE(rowTexts(), QStringList {QStringLiteral("1 Gerät(e) erkannt")});
}

void TestScanDrives::scanThatFindsNothingKeepsPage()
{
    plug(firstPort, {});
    scanOnePort();
    QCOMPARE(rowTexts(), QStringList {QStringLiteral("0 Gerät(e) erkannt")});
    QCOMPARE(rowPictures(), QList<QImage> {image(":/images/stop-icon_16px.png", 16)});
    bench->press("BtnNext");
    QCOMPARE(bench->pageName(), QStringLiteral("ScanningWizardWidget"));
    bench->press("BtnPrevious");
    QCOMPARE(bench->pageName(), QStringLiteral("ScanPortWizardWidget"));
}

void TestScanDrives::portThatDoesNotOpenHasNoDrives()
{
    drives->plugDeadPort(firstPort);
    scanOnePort();
    QCOMPARE(rowTexts(), QStringList {QStringLiteral("0 Gerät(e) erkannt")});
    QVERIFY(!QApplication::activeModalWidget() || QApplication::activeModalWidget() == bench->dialog);
}

void TestScanDrives::secondVisitCountsAnew()
{
    plug(firstPort, {3, 5});
    scanOnePort();
    bench->press("BtnPrevious");
    bench->press("BtnNext");
    waitForTheScan();
    QCOMPARE(rowTexts(), QStringList {QStringLiteral("2 Gerät(e) erkannt")});
}

void TestScanDrives::previousOffersOnlyWhatWasFound()
{
    plug(firstPort, {3, 5});
    drives->plug(secondPort, ListedPorts::otherAdapter());
    scanOnePort();
    bench->press("BtnNext");
    bench->press("BtnPrevious");
    QCOMPARE(bench->pageName(), QStringLiteral("ScanningWizardWidget"));
    waitForTheScan();
    bench->press("BtnPrevious");
    // One entry a drive, and none for the port that was not scanned.
    const auto &box = child<QComboBox>(*bench->dialog, "cbPorts");
    QVERIFY(box.count() > 0);
    for (int i = 0; i < box.count(); ++i)
        QVERIFY(box.itemText(i).startsWith(firstPort));
}

void TestScanDrives::allPortsAreScannedOneByOne()
{
    plug(firstPort, {});
    plug(secondPort, {});
    scanAllPorts();
    QCOMPARE(drives->requests(firstPort).size(), 255);
    QCOMPARE(drives->requests(secondPort).size(), 255);
    const qint64 endOfFirst = drives->bus(secondPort).log().last().us;
    const qint64 startOfNext = drives->bus(firstPort).log().first().us;
    QVERIFY2(startOfNext - endOfFirst >= 200000, "200 ms lie between two ports");
}

void TestScanDrives::onlyFoundDrivesGoOn()
{
    plug(firstPort, {});
    plug(secondPort, {7});
    scanAllPorts();
    QCOMPARE(rowTexts(),
        QStringList({QStringLiteral("1 Gerät(e) erkannt"), QStringLiteral("0 Gerät(e) erkannt")}));
    bench->press("BtnNext");
    QCOMPARE(bench->pageName(), QStringLiteral("SetPasswordWizardWidget"));
    bench->press("BtnNext");
    QCOMPARE(onPage<QCheckBox>().size(), 1);
    QCOMPARE(onPage<QCheckBox>().first()->text(), QStringLiteral("Port1 - Z7.7"));
}

void TestScanDrives::abortingLeavesOtherPortsOut()
{
    plug(firstPort, {});
    plug(secondPort, {});
    plug(thirdPort, {1});
    drives->slowDown(secondPort);
    beginScanOfAllPorts();
    // The ports come in reverse order: the third, the second, the first.
    auto *abort = onPage<QPushButton>().at(1);
    QTRY_VERIFY_WITH_TIMEOUT(abort->isVisible(), 30000);
    QVERIFY(Person::press(abort));
    waitForTheScan();
    QVERIFY(drives->requests(secondPort).size() < 255);
    QVERIFY(drives->requests(firstPort).isEmpty());
    QVERIFY(!onPage<QPushButton>().at(2)->isVisible());
    QCOMPARE(rowTexts().size(), 2);
}

void TestScanDrives::abortedScanKeepsWhatItHasFound()
{
    abortingLeavesOtherPortsOut();
    bench->press("BtnNext");
    QCOMPARE(bench->pageName(), QStringLiteral("SetPasswordWizardWidget"));
    bench->type("EdPassword", QStringLiteral("1001"));
    bench->press("BtnNext");
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    QCOMPARE(tickedDrives(), QStringList {QStringLiteral("Port2 - Z7.1")});
}

void TestScanDrives::passwordCanBeTypedAtOnce()
{
    plug(firstPort, {4});
    bench->dialog->activateWindow();
    scanOnePort();
    bench->press("BtnNext");
    QVERIFY(child(*bench->dialog, "EdPassword").hasFocus());
    QTest::keyClicks(bench->dialog->focusWidget(), QStringLiteral("1004"));
    QTest::keyClick(bench->dialog->focusWidget(), Qt::Key_Return);
    QTRY_COMPARE(tickedDrives(), QStringList {QStringLiteral("Port0 - Z7.4")});
}

void TestScanDrives::onePasswordIsTriedOnAllDrives()
{
    plug(firstPort, {3, 4, 5});
    scanOnePort();
    bench->press("BtnNext");
    bench->type("EdPassword", QStringLiteral("1004"));
    bench->press("BtnNext");
    // Three log-ons, one after the other.
    QTRY_COMPARE_WITH_TIMEOUT(rowPictures().size(), 3, Person::patienceMs);
    const QImage tick = image(":/images/tick-icon_16px.png", 16);
    const QImage stop = image(":/images/stop-icon_16px.png", 16);
    QCOMPARE(rowPictures(), QList<QImage>({stop, tick, stop}));
    QCOMPARE(tickedDrives(), QStringList {QStringLiteral("Port0 - Z7.4")});
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
}

void TestScanDrives::logOnsArePartedByPause()
{
    z7sim::SimulatedBus &bus = plug(firstPort, {3, 4});
    scanOnePort();
    bus.clearLog();
    bench->press("BtnNext");
    bench->press("BtnNext");
    QTRY_COMPARE(rowPictures().size(), 2);
    qint64 endOfFirst = 0;
    for (const z7sim::WireEntry &entry : bus.log()) {
        if (entry.address == 3)
            endOfFirst = entry.us;
    }
    for (const z7sim::WireEntry &entry : bus.log()) {
        if (entry.address == 4) {
            QVERIFY(entry.us - endOfFirst >= 200000);
            return;
        }
    }
    QFAIL("nothing was sent to the second drive");
}

void TestScanDrives::checkedDrivesAreTaken()
{
    z7sim::SimulatedBus &bus = plug(firstPort, {3, 4, 5});
    bus.command("set 3 password 1");
    bus.command("set 4 password 1");
    scanOnePort();
    bench->press("BtnNext");
    bench->type("EdPassword", QStringLiteral("1"));
    bench->press("BtnNext");
    QTRY_VERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnOK");
    QCOMPARE(bench->controller.connectedDevices().size(), 2);
    QVERIFY(bench->band.item(1, drive(3)));
    QVERIFY(bench->band.item(1, drive(4)));
}

void TestScanDrives::leavingLastPageEndsLogOns()
{
    plug(firstPort, {3, 4});
    scanOnePort();
    bench->press("BtnNext");
    bench->press("BtnNext");
    QTRY_COMPARE(rowPictures().size(), 1);
    bench->press("BtnCancel");
    const int asked = accessTo(firstPort, 4).size();
    QTest::qWait(500);
    QCOMPARE(accessTo(firstPort, 4).size(), asked);
}

void TestScanDrives::minimizedWindowGoesOnLoggingOn()
{
    plug(firstPort, {3, 4});
    scanOnePort();
    bench->press("BtnNext");
    bench->press("BtnNext");
    minimize();
    QTRY_COMPARE(rowPictures().size(), 2);
}

QTEST_MAIN(TestScanDrives)

#include "tst_scandrives.moc"
