// What the wizard's rows tell of their ports beside what they show: why a port does not open, and how far the
// scan of it came.

#include "tests/shell/simulateddrives.h"
#include "tests/shell/wizardbench.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/portholder.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestScannedPorts : public IsolatedTest
{
    Q_OBJECT

private slots:
    void wholeScanSaysNoMore();
    void scanThatLostItsAdapterTellsLastAddress();
    void abortedScanTellsLastAddress();
    void portInUseTellsWhoHoldsIt();
    void eachRowTellsOfItsOwnPort();
    void newScanOfPortForgetsOldOne();
    void logOnTellsWhyItsPortFailed();

private:
    void prepare() override;
    void tidyUp() override;

    z7sim::SimulatedBus &plug(const QString &port, const QList<int> &addresses);
    bool scanPort() { return bench->press("BtnScanPort") && bench->press("BtnNext") && waitForScan(); }
    bool waitForScan()
    {
        return QTest::qWaitFor([this] { return bench->isEnabled("BtnNext"); }, 30000);
    }
    template<typename Widget>
    QList<Widget *> onPage() const
    {
        return bench->page()->findChildren<Widget *>();
    }
    /// The labels of the rows that tell how many drives were found.
    QList<QLabel *> outcomes() const;
    /// What a person sees who points at the row, and what one hears who does not see it.
    static QString told(const QWidget *widget)
    {
        const QString tip = widget->parentWidget()->toolTip();
        return widget->accessibleDescription() == tip ? tip : QStringLiteral("two different texts");
    }

    std::unique_ptr<SimulatedDrives> drives;
    std::unique_ptr<WizardBench> bench;
};

void TestScannedPorts::prepare()
{
    writeDefinitions();
    drives = std::make_unique<SimulatedDrives>();
    bench = std::make_unique<WizardBench>();
}

void TestScannedPorts::tidyUp()
{
    bench.reset();
    drives.reset();
}

z7sim::SimulatedBus &TestScannedPorts::plug(const QString &port, const QList<int> &addresses)
{
    z7sim::SimulatedBus &bus = drives->plug(port);
    for (int address : addresses)
        bus.command("add-drive " + QByteArray::number(address));
    return bus;
}

QList<QLabel *> TestScannedPorts::outcomes() const
{
    QList<QLabel *> labels = onPage<QLabel>();
    labels.erase(std::remove_if(labels.begin(), labels.end(),
                     [](const QLabel *label) { return !label->text().contains("Ger"); }),
        labels.end());
    return labels;
}

void TestScannedPorts::wholeScanSaysNoMore()
{
    plug(firstPort, {3});
    QVERIFY(scanPort());
    QCOMPARE(told(outcomes().first()), QString());
}

void TestScannedPorts::scanThatLostItsAdapterTellsLastAddress()
{
    plug(firstPort, {3, 9, 95}).command("fault 95 pull");
    QVERIFY(scanPort());
    // What the row shows is what it always did.
    QCOMPARE(outcomes().first()->text(), QStringLiteral("2 Gerät(e) erkannt"));
    QCOMPARE(picturesOf(*bench->page()), QList<QImage> {image(":/images/tick-icon_16px.png", 16)});
    const QStringList lines = told(outcomes().first()).split('\n');
    QCOMPARE(lines.first(), QStringLiteral("Scan ttyUSB0: nur bis Adresse 95 von 255"));
    QVERIFY(lines.value(1).startsWith(QStringLiteral("ttyUSB0 fort seit ")));
}

void TestScannedPorts::abortedScanTellsLastAddress()
{
    plug(firstPort, {});
    drives->slowDown(firstPort);
    QVERIFY(bench->press("BtnScanPort") && bench->press("BtnNext"));
    QTRY_VERIFY(onPage<QProgressBar>().first()->value() > 4);
    QVERIFY(Person::press(onPage<QPushButton>().first()));
    QVERIFY(waitForScan());
    const int asked = drives->requests(firstPort).size();
    QCOMPARE(told(outcomes().first()),
        QStringLiteral("Scan ttyUSB0: nur bis Adresse %1 von 255\nDer Scan wurde abgebrochen.").arg(asked));
}

void TestScannedPorts::portInUseTellsWhoHoldsIt()
{
    plug(firstPort, {3});
    const PortHolder other(firstPort);
    QVERIFY(scanPort());
    QCOMPARE(outcomes().first()->text(), QStringLiteral("0 Gerät(e) erkannt"));
    QCOMPARE(told(outcomes().first()),
        QStringLiteral("ttyUSB0 gehalten von holdport (%1)\nScan ttyUSB0: keine von 255 Adressen")
            .arg(other.processId()));
}

void TestScannedPorts::eachRowTellsOfItsOwnPort()
{
    plug(firstPort, {3});
    plug(QStringLiteral("ttyUSB1"), {3});
    const PortHolder other(firstPort);
    QVERIFY(bench->press("BtnScanAllPorts") && bench->press("BtnNext") && waitForScan());
    // The port that is listed later comes first.
    QCOMPARE(outcomes().size(), 2);
    QCOMPARE(told(outcomes().first()), QString());
    QVERIFY(told(outcomes().last()).contains(QStringLiteral("gehalten von holdport")));
}

void TestScannedPorts::newScanOfPortForgetsOldOne()
{
    plug(firstPort, {3});
    PortHolder other(firstPort);
    QVERIFY(scanPort());
    other.end();
    QVERIFY(scanPort());
    QCOMPARE(outcomes().first()->text(), QStringLiteral("1 Gerät(e) erkannt"));
    QCOMPARE(told(outcomes().first()), QString());
}

void TestScannedPorts::logOnTellsWhyItsPortFailed()
{
    plug(firstPort, {1});
    const PortHolder other(firstPort);
    QVERIFY(bench->press("BtnQuickConnect"));
    const QString holder = QStringLiteral("ttyUSB0 gehalten von holdport (%1)").arg(other.processId());
    QTRY_COMPARE(told(onPage<QCheckBox>().first()), holder);
}

QTEST_MAIN(TestScannedPorts)

#include "tst_scannedports.moc"
