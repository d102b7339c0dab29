// What the status bar says of serial ports, and where a click on it leads.

#include "shell/statusfield.h"
#include "tests/e2e/desk.h"
#include "tests/support/person.h"
#include "tests/support/portholder.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

const QString otherPort = QStringLiteral("ttyUSB1");

const StatusField &field(const Journey &journey)
{
    return *journey.window().findChild<StatusField *>(QStringLiteral("StatusPort"));
}

/// With letters for the time.
QString said(const Journey &journey)
{
    static const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d"));
    return QString(field(journey).said().text).replace(time, QStringLiteral("hh:mm:ss"));
}

bool scan(const Journey &journey)
{
    const WizardUser user = journey.wizard();
    return journey.openWizard() && user.press("BtnScanPort") && user.choosePort(port) && user.next()
        && Person::waitUntil([&user] { return user.canPressNext(); });
}

} // namespace

class TestPortJourneys : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsSaidOfPortThatWorks();
    void heldPortNamesItsHolder();
    void pulledAdapterIsGoneSinceItsTime();
    void adapterThatIsBackUnderAnotherNameIsNamed();
    void scanThatLostItsAdapterTellsItsLastAddress();
    void clickOpensWizard();
};

void TestPortJourneys::nothingIsSaidOfPortThatWorks()
{
    const Desk desk(TestBench::shortDrives({1}));
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    QCOMPARE(said(desk.journey), QString());
}

void TestPortJourneys::heldPortNamesItsHolder()
{
    const Desk desk(TestBench::shortDrives({1}));
    const PortHolder holder(port);
    const WizardUser user = desk.journey.wizard();
    QVERIFY(desk.journey.openWizard());
    QVERIFY(user.logOn(port, 1, 0));
    QTRY_COMPARE(said(desk.journey),
        QStringLiteral("ttyUSB0 gehalten von %1 (%2)").arg(PortHolder::name()).arg(holder.processId()));
}

void TestPortJourneys::pulledAdapterIsGoneSinceItsTime()
{
    Desk desk(TestBench::shortDrives({1}));
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    desk.bench.pull(port);
    QTRY_COMPARE(said(desk.journey), QStringLiteral("ttyUSB0 fort seit hh:mm:ss"));
    desk.bench.putBack(port);
    QTRY_COMPARE(said(desk.journey), QString());
}

void TestPortJourneys::adapterThatIsBackUnderAnotherNameIsNamed()
{
    Desk desk(TestBench::shortDrives({1}));
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    desk.bench.pull(port);
    QTRY_COMPARE(said(desk.journey), QStringLiteral("ttyUSB0 fort seit hh:mm:ss"));
    desk.bench.plugIn(otherPort, {});
    QTRY_COMPARE_WITH_TIMEOUT(said(desk.journey),
        QStringLiteral("Adapter wieder da als ttyUSB1, neu verbinden"), Person::patienceMs);
}

void TestPortJourneys::scanThatLostItsAdapterTellsItsLastAddress()
{
    const Desk desk(TestBench::shortDrives({1, 9, 95}));
    desk.bus.command("fault 95 pull");
    QVERIFY(scan(desk.journey));
    QTRY_COMPARE(said(desk.journey), QStringLiteral("Scan ttyUSB0: nur bis Adresse 95 von 255"));
    QVERIFY(field(desk.journey).toolTip().contains(QLatin1String("ttyUSB0 fort seit ")));
    // The line of the bar is not told twice.
    QCOMPARE(field(desk.journey).toolTip().count(QLatin1String("Scan ttyUSB0")), 1);
}

void TestPortJourneys::clickOpensWizard()
{
    Desk desk(TestBench::shortDrives({1}));
    QVERIFY(desk.connectAll());
    QVERIFY(desk.showTable(1));
    desk.bench.pull(port);
    QTRY_VERIFY(field(desk.journey).width() > 0 && !said(desk.journey).isEmpty());
    QVERIFY(Person::press(desk.journey.window(), "StatusPort"));
    QVERIFY(desk.journey.wizard().isOpen());
}

QTEST_MAIN(TestPortJourneys)

#include "tst_portjourneys.moc"
