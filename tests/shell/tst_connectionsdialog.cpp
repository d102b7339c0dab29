// The frame of the connection wizard: the list of the drives, the four ways to add more, and their order.

#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"
#include "tests/support/person.h"

#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

namespace {

const char *const otherButtons[] = {"BtnNext", "BtnPrevious", "BtnCancel", "BtnScanPort", "BtnQuickConnect",
    "BtnManual", "BtnScanAllPorts", "BtnRemoveConnection"};

} // namespace

class TestConnectionsDialog : public IsolatedTest
{
    Q_OBJECT

private slots:
    void buttonHasItsTextAndIcon_data();
    void buttonHasItsTextAndIcon();
    void titlesAreGerman();
    void introductionComesFromLanguageFile();
    void dialogCannotBeResized();
    void headerIsWhiteOnBlue();
    void wizardButtonsAreHiddenUntilWizardRuns();

    void connectedDrivesAreListed();
    void openingAgainListsDrivesOfNow();
    void openingAgainTakesFormerPageAway();
    void openingAgainLeavesOkAsItWas();

    void severalDrivesCanBeRemovedAtOnce();
    void removingWithoutSelectionDoesNothing();
    void removedDrivesStayConnectedUntilOk();
    void okAfterRemovingAllDrivesLeavesNone();
    void okHandsListOver();
    void cancellingHandsNothingOver_data();
    void cancellingHandsNothingOver();

    void wayBeginsWithItsPage_data();
    void wayBeginsWithItsPage();
    void anotherWayReplacesPage();
    void formerPageIsNoWindowOfItsOwn();
    void previousLeadsBackToFirstPage();
    void nextMayBePressedWithEnterKey();
    void introductionShowsItsAngleBrackets();

    void preferredPortsComeFirstInReverseOrder();
    void preferredVendorIsOption();
    void portsAreAskedForAgainByEachWay();

    void listStaysOpenWithoutPort_data();
    void listStaysOpenWithoutPort();
    void nothingIsLockedWithoutPort_data();
    void nothingIsLockedWithoutPort();
    void quickConnectSaysSoWithoutPort();

private:
    void prepare() override;
    void tidyUp() override;

    void plug(const QString &name, const ListedPorts::UsbAdapter &adapter = ListedPorts::ftdiAdapter())
    {
        ports->plugUsb(name, QString(), adapter);
    }
    QStringList offeredPorts() const;
    void selectRow(int row) const;

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<WizardBench> bench;
};

void TestConnectionsDialog::prepare()
{
    writeDefinitions();
    ports = std::make_unique<ListedPorts>();
    plug(firstPort);
    bench = std::make_unique<WizardBench>();
}

void TestConnectionsDialog::tidyUp()
{
    bench.reset();
    ports.reset();
}

QStringList TestConnectionsDialog::offeredPorts() const
{
    const auto &box = child<QComboBox>(*bench->dialog, "cbPorts");
    QStringList names;
    for (int i = 0; i < box.count(); ++i)
        names << box.itemText(i).section(QLatin1Char(' '), 0, 0);
    return names;
}

void TestConnectionsDialog::selectRow(int row) const
{
    QVERIFY(Person::click(bench->rows().topLevelItem(row)));
}

void TestConnectionsDialog::buttonHasItsTextAndIcon_data()
{
    addButtonColumns();
    addButton("BtnCancel", "Schließen", ":/images/cancel-icon.png");
    addButton("BtnOK", "OK", ":/images/tick-icon_24px.png");
    addButton("BtnRemoveConnection", "Z7 entfernen", ":/images/remove_24px.png");
    addButton("BtnQuickConnect", "Quickconnect", ":images/ConnectIcon_24px.png");
    addButton("BtnManual", "Manuell", ":images/USB-Connection_24px.png");
    addButton("BtnScanPort", "Port scannen", ":images/search-icon_24px.png");
    addButton("BtnScanAllPorts", "Alle Ports scannen", ":images/Zoom_24px.png");
    addButton("BtnPrevious", "Zurück", ":/images/back-icon_24px.png");
    addButton("BtnNext", "Weiter", ":/images/forward-icon_24px.png");
}

void TestConnectionsDialog::buttonHasItsTextAndIcon()
{
    checkButton(*bench->dialog);
}

void TestConnectionsDialog::titlesAreGerman()
{
    QCOMPARE(bench->dialog->windowTitle(), QStringLiteral("Verbindungseinstellungen"));
    QCOMPARE(bench->rows().headerItem()->text(0), QStringLiteral("Verbindungen"));
    QCOMPARE(bench->textOf("LIntroduction"), QString());
}

void TestConnectionsDialog::introductionComesFromLanguageFile()
{
    bench.reset();
    Z7Services::shutdown();
    WorkingFolder::writeText("deutsch.z7lang", "[DialogConnection]\nIntroduction=Choose the drives.\n");
    bench = std::make_unique<WizardBench>();
    QCOMPARE(bench->textOf("LIntroduction"), QStringLiteral("Choose the drives."));
}

void TestConnectionsDialog::dialogCannotBeResized()
{
    QCOMPARE(bench->dialog->minimumSize(), bench->dialog->maximumSize());
    QCOMPARE(bench->dialog->size(), bench->dialog->minimumSize());
}

void TestConnectionsDialog::headerIsWhiteOnBlue()
{
    const QPalette palette = child(*bench->dialog, "LIntroduction").palette();
    QCOMPARE(palette.color(QPalette::WindowText), QColor(Qt::white));
    QCOMPARE(child(*bench->dialog, "TopFrame").palette().color(QPalette::Window), QColor(72, 131, 181));
}

void TestConnectionsDialog::wizardButtonsAreHiddenUntilWizardRuns()
{
    QVERIFY(!bench->sees("BtnPrevious"));
    QVERIFY(!bench->sees("BtnNext"));
    QVERIFY(bench->pageName().isEmpty());
}

void TestConnectionsDialog::connectedDrivesAreListed()
{
    bench->open({drive(1), driveWithoutAccess(2)});
    QCOMPARE(
        bench->rowTexts(), QStringList({QStringLiteral("Port0 - Z7.1"), QStringLiteral("Port0 - Z7.2")}));
    const auto icon = [this](int row) { return image(bench->rows().topLevelItem(row)->icon(0)); };
    QCOMPARE(icon(0), image(":images/home-icon_24px_active.png"));
    QCOMPARE(icon(1), image(":images/home-icon_24px_inactive.png"));
    const QVariant stored = bench->rows().topLevelItem(1)->data(0, Qt::UserRole);
    QCOMPARE(stored.value<Z7Device>().deviceId(), drive(2).deviceId());
}

void TestConnectionsDialog::openingAgainListsDrivesOfNow()
{
    bench->open({drive(1), drive(2)});
    bench->press("BtnCancel");
    bench->open({drive(3)});
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.3")});
}

void TestConnectionsDialog::openingAgainTakesFormerPageAway()
{
    bench->press("BtnManual");
    bench->press("BtnCancel");
    bench->open({});
    wizardButtonsAreHiddenUntilWizardRuns();
}

void TestConnectionsDialog::openingAgainLeavesOkAsItWas()
{
    QVERIFY(bench->isEnabled("BtnOK"));
    bench->press("BtnManual");
    bench->press("BtnCancel");
    bench->open({drive(1)});
    QVERIFY(!bench->isEnabled("BtnOK"));
}

void TestConnectionsDialog::severalDrivesCanBeRemovedAtOnce()
{
    bench->open({drive(1), drive(2), drive(3)});
    selectRow(0);
    selectRow(2);
    bench->press("BtnRemoveConnection");
    QCOMPARE(bench->rowTexts(), QStringList {QStringLiteral("Port0 - Z7.2")});
}

void TestConnectionsDialog::removingWithoutSelectionDoesNothing()
{
    bench->open({drive(1), drive(2)});
    bench->press("BtnRemoveConnection");
    QCOMPARE(bench->rowTexts().size(), 2);
}

void TestConnectionsDialog::removedDrivesStayConnectedUntilOk()
{
    bench->controller.setDevices({drive(1), drive(2)});
    bench->open(bench->controller.connectedDevices());
    selectRow(0);
    bench->press("BtnRemoveConnection");
    QCOMPARE(bench->controller.connectedDevices().size(), 2);
    bench->press("BtnOK");
    QCOMPARE(bench->controller.deviceIds(), QList<int> {drive(2).deviceId()});
}

void TestConnectionsDialog::okAfterRemovingAllDrivesLeavesNone()
{
    bench->controller.setDevices({drive(1), drive(2)});
    bench->open(bench->controller.connectedDevices());
    QSignalSpy noDevice(&bench->controller, SIGNAL(NoDeviceSelected()));
    selectRow(0);
    selectRow(1);
    bench->press("BtnRemoveConnection");
    bench->press("BtnOK");
    QVERIFY(bench->controller.connectedDevices().isEmpty());
    QCOMPARE(noDevice.size(), 1);
    QCOMPARE(bench->band.tree().topLevelItemCount(), 0);
    QVERIFY(!bench->dialog->isVisible());
}

void TestConnectionsDialog::okHandsListOver()
{
    bench->open({drive(2), drive(1)});
    bench->press("BtnOK");
    QCOMPARE(bench->controller.connectedDevices().size(), 2);
    QVERIFY(bench->band.item(1, drive(2)));
    QVERIFY(!bench->dialog->isVisible());
}

void TestConnectionsDialog::cancellingHandsNothingOver_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("escape key") << true;
}

void TestConnectionsDialog::cancellingHandsNothingOver()
{
    QFETCH(bool, byKey);
    bench->open({drive(1)});
    if (byKey)
        QTest::keyClick(bench->dialog, Qt::Key_Escape);
    else
        bench->press("BtnCancel");
    QVERIFY(!bench->dialog->isVisible());
    QVERIFY(bench->controller.connectedDevices().isEmpty());
}

void TestConnectionsDialog::wayBeginsWithItsPage_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("page");
    QTest::newRow("quick connect") << QByteArray("BtnQuickConnect")
                                   << QStringLiteral("ConfirmConnectionWizardWidget");
    QTest::newRow("manual") << QByteArray("BtnManual") << QStringLiteral("ScanPortWizardWidget");
    QTest::newRow("scan one port") << QByteArray("BtnScanPort") << QStringLiteral("ScanPortWizardWidget");
    QTest::newRow("scan all ports") << QByteArray("BtnScanAllPorts")
                                    << QStringLiteral("IntroductionWizardWidget");
}

void TestConnectionsDialog::wayBeginsWithItsPage()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, page);
    bench->press(button.constData());
    QCOMPARE(bench->pageName(), page);
    QVERIFY(bench->page()->isVisible());
    QVERIFY(bench->sees("BtnNext"));
    QVERIFY(!bench->sees("BtnPrevious"));
    QVERIFY(!bench->isEnabled("BtnOK"));
}

void TestConnectionsDialog::anotherWayReplacesPage()
{
    bench->press("BtnManual");
    bench->press("BtnNext");
    QVERIFY(bench->sees("BtnPrevious"));
    bench->press("BtnScanAllPorts");
    QCOMPARE(bench->pageName(), QStringLiteral("IntroductionWizardWidget"));
    QVERIFY(!bench->sees("BtnPrevious"));
}

void TestConnectionsDialog::formerPageIsNoWindowOfItsOwn()
{
    bench->press("BtnManual");
    const QPointer<QWidget> former = bench->page();
    bench->press("BtnNext");
    QCoreApplication::processEvents();
    QVERIFY(former);
    QVERIFY(!former->isVisible());
}

void TestConnectionsDialog::previousLeadsBackToFirstPage()
{
    bench->press("BtnManual");
    bench->press("BtnNext");
    QCOMPARE(bench->pageName(), QStringLiteral("ConfirmConnectionWizardWidget"));
    bench->press("BtnPrevious");
    QCOMPARE(bench->pageName(), QStringLiteral("ScanPortWizardWidget"));
    QVERIFY(!bench->sees("BtnPrevious"));
    QVERIFY(bench->sees("BtnNext"));
    QVERIFY(!bench->isEnabled("BtnOK"));
}

void TestConnectionsDialog::nextMayBePressedWithEnterKey()
{
    bench->press("BtnManual");
    QTest::keyClick(&child(*bench->dialog, "EdAdress"), Qt::Key_Return);
    QCOMPARE(bench->pageName(), QStringLiteral("ConfirmConnectionWizardWidget"));
}

void TestConnectionsDialog::introductionShowsItsAngleBrackets()
{
    bench->press("BtnScanAllPorts");
    const auto &label = child<QLabel>(*bench->dialog, "lIntroText");
    QCOMPARE(label.text(), QStringLiteral("Mit <Weiter> werden alle verfügbaren Ports gescannt."));
    QCOMPARE(label.textFormat(), Qt::PlainText);
    QVERIFY(label.wordWrap());
}

void TestConnectionsDialog::preferredPortsComeFirstInReverseOrder()
{
    plug(QStringLiteral("ttyUSB1"), ListedPorts::otherAdapter());
    plug(QStringLiteral("ttyUSB2"));
    ports->addOnBoard(QStringLiteral("ttyS0"), QString());
    bench->press("BtnScanPort");
    QCOMPARE(offeredPorts(),
        QStringList({QStringLiteral("ttyUSB2"), QStringLiteral("ttyUSB0"), QStringLiteral("ttyS0"),
            QStringLiteral("ttyUSB1")}));
}

void TestConnectionsDialog::preferredVendorIsOption()
{
    plug(QStringLiteral("ttyUSB1"), ListedPorts::otherAdapter());
    Z7Services::instance()->options()->setDefaultVendorID(ListedPorts::otherAdapter().vendorId);
    bench->press("BtnScanPort");
    QCOMPARE(offeredPorts(), QStringList({QStringLiteral("ttyUSB1"), QStringLiteral("ttyUSB0")}));
}

void TestConnectionsDialog::portsAreAskedForAgainByEachWay()
{
    bench->press("BtnScanPort");
    plug(QStringLiteral("ttyUSB1"));
    QCOMPARE(offeredPorts(), QStringList {firstPort});
    bench->press("BtnScanPort");
    QCOMPARE(offeredPorts().size(), 2);
}

void TestConnectionsDialog::listStaysOpenWithoutPort_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("manual") << QByteArray("BtnManual");
    QTest::newRow("scan one port") << QByteArray("BtnScanPort");
}

void TestConnectionsDialog::listStaysOpenWithoutPort()
{
    QFETCH(QByteArray, button);
    ports->pull(firstPort);
    bench->press(button.constData());
    QCOMPARE(offeredPorts(), QStringList());
    bench->press("BtnNext");
    QCOMPARE(bench->pageName(), QStringLiteral("ScanPortWizardWidget"));
    QVERIFY(!bench->sees("BtnPrevious"));
}

void TestConnectionsDialog::nothingIsLockedWithoutPort_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char *button : {"BtnQuickConnect", "BtnManual", "BtnScanPort", "BtnScanAllPorts"})
        QTest::newRow(button) << QByteArray(button);
}

void TestConnectionsDialog::nothingIsLockedWithoutPort()
{
    QFETCH(QByteArray, button);
    ports->pull(firstPort);
    bench->press(button.constData());
    for (int page = 0; page < 4 && bench->sees("BtnNext"); ++page) {
        bench->press("BtnNext");
        for (const char *other : otherButtons)
            QVERIFY2(bench->isEnabled(other), other);
    }
    bench->press("BtnCancel");
    QVERIFY(!bench->dialog->isVisible());
}

void TestConnectionsDialog::quickConnectSaysSoWithoutPort()
{
    ports->pull(firstPort);
    bench->press("BtnQuickConnect");
    QStringList shown;
    for (const auto *label : bench->page()->findChildren<QLabel *>())
        shown << label->text();
    QCOMPARE(shown, QStringList {QStringLiteral("Kein Z7-Motor erkannt.")});
    QVERIFY(!bench->isEnabled("BtnOK"));
    bench->press("BtnNext");
    QVERIFY(bench->rowTexts().isEmpty());
}

QTEST_MAIN(TestConnectionsDialog)

#include "tst_connectionsdialog.moc"
