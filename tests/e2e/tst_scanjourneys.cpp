// Looking for drives: one port from the first address to the last, and all ports until the person has enough.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"

#include <QtTest>

using namespace Telegrams;

namespace {

const QString secondPort = QStringLiteral("ttyUSB1");
const QString thirdPort = QStringLiteral("ttyUSB2");

constexpr int sweepMs = 30000;

} // namespace

class TestScanJourneys : public QObject
{
    Q_OBJECT

private slots:
    void scanOfOnePortConnectsDrivesThatTakePassword();
    void scanOfAllPortsAbortedOnSecondKeepsWhatWasFound();
};

void TestScanJourneys::scanOfOnePortConnectsDrivesThatTakePassword()
{
    TestBench bench;
    auto &bus = bench.plugIn(
        port, {TestBench::shortDrive(1), TestBench::shortDrive(7), TestBench::shortDrive(255, 4711)});
    const Journey journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QVERIFY(wizard.press("BtnScanPort"));
    QVERIFY(wizard.choosePort(port));
    QVERIFY(wizard.next());
    QTRY_COMPARE(wizard.scannedPorts(), QStringList("ttyUSB0: Scanning..."));
    QVERIFY2(!wizard.canPressNext(), "the buttons wait for the end of the scan");

    QTRY_VERIFY_WITH_TIMEOUT(wizard.canPressNext(), sweepMs);
    QCOMPARE(wizard.scannedPorts(), QStringList("ttyUSB0: 3 Gerät(e) erkannt, tick"));
    QCOMPARE(requests(bus.log()), sweep(1, 255));
    bus.clearLog();

    QVERIFY(wizard.next());
    QVERIFY(wizard.typePassword(0));
    QVERIFY(wizard.next());
    const QStringList tried {"Port0 - Z7.1: connected", "Port0 - Z7.7: connected", "Port0 - Z7.255: refused"};
    QTRY_COMPARE(wizard.triedDrives(), tried);
    QTRY_VERIFY(wizard.canPressOk());
    QVERIFY(wizard.ok());
    QCOMPARE(
        requests(bus.log()), logOn(1, 0) + logOn(7, 0) + QStringList({access(255, 255), access(255, 0)}));
    QCOMPARE(journey.drives(), QStringList({"Port0 - Z7.1, active", "Port0 - Z7.7, active"}));
}

// The two adapters of the preferred vendor come first, the one that is listed later before the other.
void TestScanJourneys::scanOfAllPortsAbortedOnSecondKeepsWhatWasFound()
{
    TestBench bench;
    auto &second = bench.plugIn(port, {TestBench::shortDrive(3), TestBench::shortDrive(250)});
    auto &first = bench.plugIn(secondPort, {TestBench::shortDrive(9), TestBench::shortDrive(100)});
    bench.slowDown(port);
    auto &third = bench.plugIn(thirdPort, {TestBench::shortDrive(1)}, ListedPorts::otherAdapter());
    const Journey journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QVERIFY(wizard.press("BtnScanAllPorts"));
    QVERIFY(wizard.next());
    QTRY_COMPARE_WITH_TIMEOUT(wizard.scannedPorts(),
        QStringList({"ttyUSB1: 2 Gerät(e) erkannt, tick", "ttyUSB0: 1 Gerät(e) erkannt, tick", "ttyUSB2:"}),
        2 * sweepMs);
    QVERIFY(wizard.abort());
    QTRY_VERIFY(wizard.canPressNext());

    QCOMPARE(requests(first.log()), sweep(1, 255));
    const QStringList probes = requests(second.log());
    QVERIFY(probes.size() >= 3 && probes.size() < 250);
    QCOMPARE(probes, sweep(1, probes.size()));
    QCOMPARE(requests(third.log()), QStringList());
    QCOMPARE(wizard.scannedPorts().last(), QStringLiteral("ttyUSB2:"));
    first.clearLog();
    second.clearLog();

    QVERIFY(wizard.next());
    QVERIFY(wizard.next());
    const QStringList tried {
        "Port1 - Z7.9: connected", "Port1 - Z7.100: connected", "Port0 - Z7.3: connected"};
    QTRY_COMPARE(wizard.triedDrives(), tried);
    QTRY_VERIFY(wizard.canPressOk());
    QVERIFY(wizard.ok());
    QCOMPARE(requests(first.log()), logOn(9, 0) + logOn(100, 0));
    QCOMPARE(requests(second.log()), logOn(3, 0));
    QCOMPARE(journey.drives().size(), 3);
}

QTEST_MAIN(TestScanJourneys)

#include "tst_scanjourneys.moc"
