// The wizard where its buttons do not lead: slots called out of turn, news that nobody waits for, and a bus
// that is not to be had.

#include "protocol/telegram.h"
#include "shell/wizard/confirmconnectionwizardwidget.h"
#include "shell/wizard/scanningwizardwidget.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <memory>

using namespace ShellTest;

namespace {

const QString secondPort = QStringLiteral("ttyUSB1");
const char stop[] = ":/images/stop-icon_16px.png";
const char *const lockedButtons[] = {"BtnNext", "BtnPrevious", "BtnCancel", "BtnScanPort", "BtnQuickConnect",
    "BtnManual", "BtnScanAllPorts", "BtnRemoveConnection"};

/// The record of a request that the bus has not taken: the one that was asked with, and its error.
Z7Device refused(Z7Device device)
{
    device.setDeviceError(TelegramError::TransactionAborted);
    return device;
}

/// What a page hears of a request that ends at once.
void refuse(IDeviceDataCallback &page, const Z7Device &device)
{
    page.DeviceUpdate(refused(device));
    page.transactionTerminated();
}

} // namespace

class TestWizardOutOfTurn : public IsolatedTest
{
    Q_OBJECT

private slots:
    void withoutWayThereIsNoPageToLeafTo_data();
    void withoutWayThereIsNoPageToLeafTo();
    void firstPageHasNoneBeforeIt();
    void pageWithoutRowsTakesAnyNews_data();
    void pageWithoutRowsTakesAnyNews();
    void confirmPageWithFewerDrivesThanRowsTakesAnyNews();

    void scanThatIsPutAwayGivesButtonsBack_data();
    void scanThatIsPutAwayGivesButtonsBack();
    void scanOfDialogThatWasNeverShownGivesButtonsBack();
    void nextBeforeFirstPortIsScannedKeepsPorts();
    void abortBetweenTwoPortsEndsScan();

    void pauseIsPrecise();

    void refusedLogOnFails_data();
    void refusedLogOnFails();
    void logOnAfterRefusedOneBegins();
    void refusedLogOnsEndWay();
    void refusedScanFindsNothing_data();
    void refusedScanFindsNothing();
    void scanAfterRefusedOneBegins();
    void refusedScansUnlockButtons();

private:
    void prepare() override;
    void tidyUp() override;

    void beginScan(const char *button) const;
    bool areButtonsEnabled() const;
    /// A page in a window of its own, on the drives.
    template<typename Page>
    std::unique_ptr<Page> show(std::unique_ptr<Page> page, const QList<Z7Device> &devices) const;
    std::unique_ptr<ConfirmConnectionWizardWidget> confirmPage(const QList<Z7Device> &devices) const;
    std::unique_ptr<ScanningWizardWidget> scanningPage(const QList<Z7Device> &devices) const;
    static QStringList textsOf(const QWidget &page);

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<WizardBench> bench;
};

void TestWizardOutOfTurn::prepare()
{
    writeDefinitions();
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    ports->plugUsb(secondPort, QString());
    bench = std::make_unique<WizardBench>();
}

void TestWizardOutOfTurn::tidyUp()
{
    bench.reset();
    ports.reset();
}

void TestWizardOutOfTurn::beginScan(const char *button) const
{
    bench->press(button);
    bench->press("BtnNext");
    QVERIFY(!bench->isEnabled("BtnCancel"));
}

bool TestWizardOutOfTurn::areButtonsEnabled() const
{
    return std::all_of(std::begin(lockedButtons), std::end(lockedButtons),
        [this](const char *button) { return bench->isEnabled(button); });
}

template<typename Page>
std::unique_ptr<Page> TestWizardOutOfTurn::show(
    std::unique_ptr<Page> page, const QList<Z7Device> &devices) const
{
    page->setDevices(devices);
    page->show();
    page->enterPage();
    // The news are the test's.
    bench->controller.removeCallback(page.get());
    return page;
}

std::unique_ptr<ConfirmConnectionWizardWidget> TestWizardOutOfTurn::confirmPage(
    const QList<Z7Device> &devices) const
{
    return show(std::make_unique<ConfirmConnectionWizardWidget>(
                    ConfirmConnectionWizardWidget::EachDrive, bench->dialog),
        devices);
}

std::unique_ptr<ScanningWizardWidget> TestWizardOutOfTurn::scanningPage(const QList<Z7Device> &devices) const
{
    return show(std::make_unique<ScanningWizardWidget>(bench->dialog), devices);
}

QStringList TestWizardOutOfTurn::textsOf(const QWidget &page)
{
    QStringList texts;
    for (const auto *label : page.findChildren<QLabel *>()) {
        if (!label->text().trimmed().isEmpty() && !label->text().endsWith(QLatin1String(": ")))
            texts << label->text();
    }
    return texts;
}

void TestWizardOutOfTurn::withoutWayThereIsNoPageToLeafTo_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("next") << QByteArray("nextWizardPage");
    QTest::newRow("previous") << QByteArray("previousWizardPage");
}

void TestWizardOutOfTurn::withoutWayThereIsNoPageToLeafTo()
{
    QFETCH(QByteArray, slot);
    QVERIFY(QMetaObject::invokeMethod(bench->dialog, slot.constData()));
    QVERIFY(bench->pageName().isEmpty());
    QVERIFY(!bench->sees("BtnNext"));
    QVERIFY(bench->isEnabled("BtnOK"));
}

void TestWizardOutOfTurn::firstPageHasNoneBeforeIt()
{
    bench->press("BtnManual");
    bench->dialog->previousWizardPage();
    QCOMPARE(bench->pageName(), QStringLiteral("ScanPortWizardWidget"));
    bench->press("BtnNext");
    QCOMPARE(bench->pageName(), QStringLiteral("ConfirmConnectionWizardWidget"));
}

void TestWizardOutOfTurn::pageWithoutRowsTakesAnyNews_data()
{
    QTest::addColumn<bool>("isEntered");
    QTest::newRow("without drives") << true;
    QTest::newRow("before it is entered") << false;
}

void TestWizardOutOfTurn::pageWithoutRowsTakesAnyNews()
{
    QFETCH(bool, isEntered);
    ConfirmConnectionWizardWidget confirm(ConfirmConnectionWizardWidget::EachDrive, bench->dialog);
    ScanningWizardWidget scanning(bench->dialog);
    const QList<IWizardWidget *> pages {&confirm, &scanning};
    for (IWizardWidget *page : pages) {
        if (isEntered)
            page->enterPage();
        auto *listener = dynamic_cast<IDeviceDataCallback *>(page);
        listener->transactionStarted(12, drive(1));
        listener->transactionProgress();
        listener->DeviceUpdate(drive(1));
        listener->transactionTerminated();
        QVERIFY(page->selectedDevices().isEmpty());
        // It waits for nothing either.
        QVERIFY(!page->widget()->findChild<QTimer *>()->isActive());
    }
    confirm.SendConnectCurrentDevice();
    scanning.scanDevice();
    scanning.abortScanning();
    QVERIFY(areButtonsEnabled());
}

void TestWizardOutOfTurn::confirmPageWithFewerDrivesThanRowsTakesAnyNews()
{
    const auto page = confirmPage({drive(1), drive(2)});
    page->setDevices({});
    page->transactionStarted(12, drive(1));
    page->DeviceUpdate(drive(1));
    page->transactionTerminated();
    for (auto *check : page->findChildren<QCheckBox *>())
        check->setChecked(true);
    QVERIFY(page->selectedDevices().isEmpty());
    QVERIFY(page->leavePage());
    QVERIFY(page->devices().isEmpty());
}

void TestWizardOutOfTurn::scanThatIsPutAwayGivesButtonsBack_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<bool>("waitsForTheScan");

    for (const char *slot : {"initScanPortWizard", "initConnectDeviceManualWizard", "initQuickConnectWizard",
             "initAllPortsWizard", "previousWizardPage", "hide"})
        QTest::newRow(slot) << QByteArray(slot) << true;
    QTest::newRow("opened again") << QByteArray() << true;
    QTest::newRow("opened again, before the first port") << QByteArray() << false;
}

void TestWizardOutOfTurn::scanThatIsPutAwayGivesButtonsBack()
{
    QFETCH(QByteArray, slot);
    QFETCH(bool, waitsForTheScan);
    beginScan("BtnScanAllPorts");
    if (waitsForTheScan)
        QTRY_COMPARE(textsOf(*bench->page()).first(), QStringLiteral("0 Gerät(e) erkannt"));
    if (slot.isEmpty())
        bench->open({});
    else
        QVERIFY(QMetaObject::invokeMethod(bench->dialog, slot.constData()));
    QVERIFY(areButtonsEnabled());
    // A later way is none the worse for it.
    bench->open({});
    bench->press("BtnScanPort");
    bench->press("BtnNext");
    QVERIFY(!areButtonsEnabled());
    QTRY_VERIFY(areButtonsEnabled());
    QCOMPARE(textsOf(*bench->page()), QStringList {QStringLiteral("0 Gerät(e) erkannt")});
}

void TestWizardOutOfTurn::scanOfDialogThatWasNeverShownGivesButtonsBack()
{
    ConnectionsDialog hidden(&bench->controller, nullptr);
    const auto call = [&hidden](const char *slot) { QVERIFY(QMetaObject::invokeMethod(&hidden, slot)); };
    call("initAllPortsWizard");
    call("nextWizardPage");
    QVERIFY(!hidden.findChild<QPushButton *>("BtnCancel")->isEnabled());
    call("initQuickConnectWizard");
    for (const char *button : lockedButtons)
        QVERIFY2(hidden.findChild<QPushButton *>(button)->isEnabled(), button);
}

void TestWizardOutOfTurn::nextBeforeFirstPortIsScannedKeepsPorts()
{
    beginScan("BtnScanAllPorts");
    bench->dialog->nextWizardPage();
    QTRY_VERIFY(areButtonsEnabled());
    QCOMPARE(textsOf(*bench->page()),
        QStringList({QStringLiteral("0 Gerät(e) erkannt"), QStringLiteral("0 Gerät(e) erkannt")}));
}

void TestWizardOutOfTurn::abortBetweenTwoPortsEndsScan()
{
    beginScan("BtnScanAllPorts");
    QTRY_COMPARE(textsOf(*bench->page()),
        QStringList({QStringLiteral("0 Gerät(e) erkannt"), QStringLiteral("Scanning...")}));
    dynamic_cast<ScanningWizardWidget *>(bench->page())->abortScanning();
    QVERIFY(areButtonsEnabled());
    QVERIFY(!bench->page()->findChild<QTimer *>()->isActive());
}

// A coarse timer may come 5 % early or late.
void TestWizardOutOfTurn::pauseIsPrecise()
{
    const ConfirmConnectionWizardWidget confirm(ConfirmConnectionWizardWidget::EachDrive, bench->dialog);
    const ScanningWizardWidget scanning(bench->dialog);
    for (const QWidget *page :
        {static_cast<const QWidget *>(&confirm), static_cast<const QWidget *>(&scanning)}) {
        const auto *pause = page->findChild<QTimer *>();
        QCOMPARE(pause->timerType(), Qt::PreciseTimer);
        QCOMPARE(pause->interval(), 200);
        QVERIFY(pause->isSingleShot());
    }
}

void TestWizardOutOfTurn::refusedLogOnFails_data()
{
    QTest::addColumn<Z7Device>("asked");
    QTest::newRow("drive that was not connected yet") << driveWithoutAccess(17);
    QTest::newRow("drive that had granted access before") << drive(17);
}

void TestWizardOutOfTurn::refusedLogOnFails()
{
    QFETCH(Z7Device, asked);
    const auto page = confirmPage({asked});
    refuse(*page, asked);
    QTRY_COMPARE(picturesOf(*page), QList<QImage> {image(stop, 16)});
    const auto *check = page->findChild<QCheckBox *>();
    QVERIFY(!check->isChecked());
    QVERIFY(!check->isEnabled());
    QVERIFY(!page->devices().first().isAccessGranted());
}

void TestWizardOutOfTurn::logOnAfterRefusedOneBegins()
{
    const auto page = confirmPage({driveWithoutAccess(17), driveWithoutAccess(18)});
    refuse(*page, driveWithoutAccess(17));
    QVERIFY(page->findChild<QTimer *>()->isActive());
    QCoreApplication::processEvents();
    QCOMPARE(picturesOf(*page), QList<QImage> {image(stop, 16)});
    // The second port does not open either, which its row shows when the log-on has been tried.
    QTRY_COMPARE(picturesOf(*page), QList<QImage>({image(stop, 16), image(stop, 16)}));
}

void TestWizardOutOfTurn::refusedLogOnsEndWay()
{
    const auto page = confirmPage({driveWithoutAccess(17)});
    refuse(*page, driveWithoutAccess(17));
    QVERIFY(!page->findChild<QTimer *>()->isActive());
    QVERIFY(page->selectedDevices().isEmpty());
}

void TestWizardOutOfTurn::refusedScanFindsNothing_data()
{
    refusedLogOnFails_data();
}

void TestWizardOutOfTurn::refusedScanFindsNothing()
{
    QFETCH(Z7Device, asked);
    const auto page = scanningPage({asked});
    refuse(*page, asked);
    QTRY_COMPARE(picturesOf(*page), QList<QImage> {image(stop, 16)});
    QCOMPARE(textsOf(*page), QStringList {QStringLiteral("0 Gerät(e) erkannt")});
    QVERIFY(page->findChild<QProgressBar *>()->isHidden());
    QVERIFY(page->findChild<QPushButton *>()->isHidden());
}

void TestWizardOutOfTurn::scanAfterRefusedOneBegins()
{
    const auto page = scanningPage({driveWithoutAccess(1), driveWithoutAccess(1, secondPort)});
    refuse(*page, driveWithoutAccess(1));
    QCOMPARE(
        textsOf(*page), QStringList({QStringLiteral("0 Gerät(e) erkannt"), QStringLiteral("Scanning...")}));
    QVERIFY(page->findChild<QTimer *>()->isActive());
    QVERIFY(!areButtonsEnabled());
}

void TestWizardOutOfTurn::refusedScansUnlockButtons()
{
    const auto page = scanningPage({driveWithoutAccess(1), driveWithoutAccess(1, secondPort)});
    QVERIFY(!areButtonsEnabled());
    refuse(*page, driveWithoutAccess(1));
    refuse(*page, driveWithoutAccess(1, secondPort));
    QVERIFY(areButtonsEnabled());
    QTRY_COMPARE(picturesOf(*page), QList<QImage>({image(stop, 16), image(stop, 16)}));
}

QTEST_MAIN(TestWizardOutOfTurn)

#include "tst_wizardoutofturn.moc"
