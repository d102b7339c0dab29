// The end of the program and the next start.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"

#include <QPushButton>
#include <QtTest>

using namespace Telegrams;

namespace {

const QString drive = driveName(1);
const QString optionsFile = QStringLiteral("Z7Properties.ini");
const QString languageFile = QStringLiteral("deutsch.z7lang");

QString buttonText(const Journey &journey, const char *button)
{
    return journey.window().findChild<QPushButton *>(QString::fromLatin1(button))->text();
}

/// Nothing more than what is on its way now, over several pauses of the live update.
bool staysSilent(const z7sim::SimulatedBus &bus)
{
    QTest::qWait(100);
    const int entries = bus.log().size();
    QTest::qWait(400);
    return bus.log().size() == entries;
}

} // namespace

class TestClosingJourneys : public QObject
{
    Q_OBJECT

private slots:
    void closingWindowWritesOptionsAndLanguage();
    void closingWindowInMidPassLeavesBusSilent();
    void closingWindowInMidScanLeavesBusSilent();
    void changedTextsAndOptionsAreThereAtNextStart();
};

void TestClosingJourneys::closingWindowWritesOptionsAndLanguage()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    QVERIFY(journey.showPage(drive, table));
    QTRY_COMPARE(journey.row(23).deviceValue, QStringLiteral("500"));
    QVERIFY(journey.closeWindow());

    const QString options = desk.bench.text(optionsFile);
    for (const char *line :
        {"[OPTIONS]", "language=deutsch", "timeout=140", "defaultVendorID=1027", "pollingInterval=100"})
        QVERIFY2(options.contains(QLatin1String(line)), line);
    const QString language = desk.bench.text(languageFile);
    for (const char *line : {"[Common]", "Upload=Schreiben", "[DialogParamTable]",
             "ColUserDataTitle=Soll-Wert", "[ParamDefinition]", "Festdrehzahl%20n1=Festdrehzahl n1"})
        QVERIFY2(language.contains(QLatin1String(line)), line);
}

void TestClosingJourneys::closingWindowInMidPassLeavesBusSilent()
{
    Desk desk(TestBench::shortDrives({1}));
    desk.slowDown();
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    QVERIFY(journey.showPage(drive, table));
    QTRY_VERIFY(desk.requests().size() > logOn(1, 0).size());
    QVERIFY(journey.closeWindow());

    QVERIFY(staysSilent(desk.bus));
}

void TestClosingJourneys::closingWindowInMidScanLeavesBusSilent()
{
    Desk desk({});
    desk.slowDown();
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().press("BtnScanPort"));
    QVERIFY(journey.wizard().next());
    QTRY_VERIFY(desk.bus.log().size() > 3);
    QVERIFY(journey.closeWindow());

    QVERIFY(staysSilent(desk.bus));
    const QStringList probes = desk.requests();
    QCOMPARE(probes, sweep(1, probes.size()));
}

void TestClosingJourneys::changedTextsAndOptionsAreThereAtNextStart()
{
    TestBench bench;
    auto &bus = bench.plugIn(port, {TestBench::shortDrive(1)}, ListedPorts::otherAdapter());
    QVERIFY(Journey().closeWindow());

    // A person edits both files between two runs of the program.
    QSettings language(languageFile, QSettings::IniFormat);
    language.setValue(QStringLiteral("Common/Upload"), QStringLiteral("Zum Motor"));
    language.sync();
    QSettings options(optionsFile, QSettings::IniFormat);
    options.setValue(QStringLiteral("OPTIONS/timeoutScanning"), QStringLiteral("60"));
    options.sync();

    bench.slowDown(port);
    const Journey journey;
    QCOMPARE(buttonText(journey, "BtnUpload"), QStringLiteral("Zum Motor"));
    QCOMPARE(buttonText(journey, "BtnDownload"), QStringLiteral("Lesen"));
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().press("BtnScanPort"));
    QVERIFY(journey.wizard().next());
    QTRY_VERIFY(bus.log().size() > 12);
    QVERIFY(journey.closeWindow());
    const auto log = bus.log();
    // Five silent addresses, with room for a bus that notices the first of them late.
    const qint64 us = log.at(11).us - log.at(6).us;
    QVERIFY2(us > 4 * 60000, qPrintable(QString::number(us)));
    QVERIFY(bench.text(optionsFile).contains(QStringLiteral("timeoutScanning=60")));
}

QTEST_MAIN(TestClosingJourneys)

#include "tst_closingjourneys.moc"
