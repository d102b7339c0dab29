// What is known about the ports, learnt from the records that come anyway, and when it is forgotten.

#include "control/portwatch.h"
#include "pages/pagefactory.h"
#include "tests/control/controlleronabus.h"
#include "tests/support/portholder.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

namespace {

const QString port = QStringLiteral("ttyUSB0");
const QString secondPort = QStringLiteral("ttyUSB1");
const QString thirdPort = QStringLiteral("ttyUSB2");
constexpr int pauseMs = 20;

ListedPorts::UsbAdapter adapterOf(const QString &serialNumber)
{
    ListedPorts::UsbAdapter adapter = ListedPorts::ftdiAdapter();
    adapter.serialNumber = serialNumber;
    return adapter;
}

} // namespace

class TestPortWatch : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { tested.reset(); }

    void portThatWorksIsNoTrouble();
    void silentDriveIsNoTroubleOfItsPort();
    void adapterPulledBetweenPassesIsGone();
    void adapterPulledInMidPassIsGone();
    void transferFindsPulledAdapter();
    void laterPassesKeepTime();
    void goodRecordIsBetterKnowledge();
    void heldPortNamesItsHolderUntilItIsFree();

    void adapterIsBackUnderAnotherName();
    void adapterThatIsBackBeforeItIsMissedIsTold();
    void adapterMayTakeNameOfItsNeighbour();
    void anotherAdapterOfSameKindIsNotTakenForIt();
    void adapterThatWasBesideItIsNotTakenForIt();
    void adapterWithoutNumberIsTakenIfItAloneIsNew();
    void adapterIsBackUnderItsName();
    void returnedAdapterMayGoAgain();

    void wholeScanLeavesNothing();
    void scanThatLosesItsAdapterTellsLastAddress();
    void stoppedScanTellsLastAddress();
    void scanOfPortThatDoesNotOpenAskedNothing();
    void scanOnLentBusAskedNothing();
    void scanWithoutPortIsNoTroubleOfAnyPort();
    void wholeScanForgetsPartialOne();
    void goodRecordDoesNotMakeScanWhole();

    void listForgetsPortsWithoutDrives();
    void listKeepsScanThatLedToIt();
    void changeIsToldOnce();
    void latestNewsComesFirst();

private:
    Z7MainController &controller() { return tested->controller; }
    const PortWatch &watch() const { return tested->controller.portWatch(); }
    PortState state(const QString &name = port) const { return watch().state(name); }
    Z7PortDiagnosis::Kind kind() const { return state().diagnosis.kind; }

    /// Lists drive 3 behind an adapter with this serial number.
    void listDrive(const QString &serialNumber = QString());
    /// Shows a page of drive 3, which is polled from now on, and waits for the first record.
    bool poll();
    bool waitForPasses(int passes);
    /// The pass that is under way ends well; the next one does not open the port.
    void pullBetweenPasses();
    void plug(const QString &name, const QString &serialNumber = QString());
    /// Scans the port to its end.
    bool scan(const QString &name = port);
    void addDrive(int address)
    {
        QVERIFY(tested->bus.command("add-drive " + QByteArray::number(address)) != "");
    }

    std::optional<ControllerOnABus> tested;
    NotingListener scanPage;
};

void TestPortWatch::init()
{
    tested.emplace();
    Z7Services::instance()->options()->setPollingInterval(pauseMs);
    scanPage.notes.clear();
}

void TestPortWatch::listDrive(const QString &serialNumber)
{
    plug(port, serialNumber);
    tested->connectDrives({tested->drive3()});
}

bool TestPortWatch::poll()
{
    tested->showPage(PageNumber::DeviceStatus, tested->drive3().deviceId());
    return QTest::qWaitFor([this] { return !tested->deviceControl.records.isEmpty(); });
}

bool TestPortWatch::waitForPasses(int passes)
{
    const int last = tested->deviceControl.records.size() + passes;
    return QTest::qWaitFor([this, last] { return tested->deviceControl.records.size() >= last; });
}

void TestPortWatch::pullBetweenPasses()
{
    tested->ports.pull(port);
    tested->bus.command("pull");
}

void TestPortWatch::plug(const QString &name, const QString &serialNumber)
{
    if (tested->bus.portPath().isEmpty())
        tested->bus.command("plug");
    tested->ports.plugUsb(name, tested->bus.portPath(), adapterOf(serialNumber));
}

bool TestPortWatch::scan(const QString &name)
{
    scanPage.notes.clear();
    controller().scanDevice(Z7Device(QSerialPortInfo(name)), &scanPage);
    return QTest::qWaitFor([this] { return scanPage.notes.contains(QStringLiteral("terminated")); }, 30000);
}

void TestPortWatch::portThatWorksIsNoTrouble()
{
    listDrive();
    QVERIFY(poll());
    QVERIFY(watch().troubles().isEmpty());
    QCOMPARE(state().portName, port);
}

void TestPortWatch::silentDriveIsNoTroubleOfItsPort()
{
    tested->bus.command("fault 3 no-answer");
    listDrive();
    QVERIFY(poll());
    QCOMPARE(tested->deviceControl.records.last().error, int(TelegramError::NoAnswer));
    QVERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::adapterPulledBetweenPassesIsGone()
{
    listDrive();
    QVERIFY(poll());
    const QDateTime before = QDateTime::currentDateTime();
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    QVERIFY(state().diagnosis.time >= before);
    QCOMPARE(watch().troubles().size(), 1);
}

void TestPortWatch::adapterPulledInMidPassIsGone()
{
    Z7Services::instance()->options()->setPollingInterval(3600000);
    listDrive();
    tested->bus.command("fault 3 pull skip=5");
    controller().readDeviceStatus(tested->drive3(), &scanPage);
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    QCOMPARE(scanPage.records.last().error, int(TelegramError::NoAnswer));
}

void TestPortWatch::transferFindsPulledAdapter()
{
    listDrive();
    const Z7Device drive = tested->drive3();
    pullBetweenPasses();
    controller().readDeviceStatus(drive, &scanPage);
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
}

void TestPortWatch::laterPassesKeepTime()
{
    listDrive();
    QVERIFY(poll());
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    const QDateTime noticed = state().diagnosis.time;
    QVERIFY(waitForPasses(3));
    QCOMPARE(state().diagnosis.time, noticed);
}

void TestPortWatch::goodRecordIsBetterKnowledge()
{
    listDrive();
    QVERIFY(poll());
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    plug(port);
    QTRY_VERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::heldPortNamesItsHolderUntilItIsFree()
{
    listDrive();
    PortHolder other(port);
    controller().readDeviceStatus(tested->drive3(), &scanPage);
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Held);
    QCOMPARE(state().diagnosis.holder.name, PortHolder::name());
    QCOMPARE(state().diagnosis.holder.id, other.processId());
    other.end();
    controller().readDeviceStatus(tested->drive3(), &scanPage);
    QTRY_VERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::adapterIsBackUnderAnotherName()
{
    listDrive(QStringLiteral("A10"));
    QVERIFY(poll());
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    QCOMPARE(state().returnedAs, QString());
    plug(secondPort, QStringLiteral("A10"));
    QTRY_COMPARE(state().returnedAs, secondPort);
    QCOMPARE(kind(), Z7PortDiagnosis::Gone);
}

// A laptop that slept during a pass comes back with its adapter under another name.
void TestPortWatch::adapterThatIsBackBeforeItIsMissedIsTold()
{
    listDrive(QStringLiteral("A10"));
    QVERIFY(poll());
    pullBetweenPasses();
    plug(secondPort, QStringLiteral("A10"));
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    QCOMPARE(state().returnedAs, secondPort);
}

void TestPortWatch::adapterMayTakeNameOfItsNeighbour()
{
    plug(secondPort, QStringLiteral("A11"));
    listDrive(QStringLiteral("A10"));
    QVERIFY(poll());
    tested->ports.pull(secondPort);
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    plug(secondPort, QStringLiteral("A10"));
    QTRY_COMPARE(state().returnedAs, secondPort);
}

void TestPortWatch::anotherAdapterOfSameKindIsNotTakenForIt()
{
    listDrive(QStringLiteral("A10"));
    QVERIFY(poll());
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    plug(secondPort, QStringLiteral("A11"));
    plug(thirdPort, QStringLiteral("A10"));
    QTRY_COMPARE(state().returnedAs, thirdPort);
}

void TestPortWatch::adapterThatWasBesideItIsNotTakenForIt()
{
    plug(secondPort, QStringLiteral("0001"));
    listDrive(QStringLiteral("0001"));
    QVERIFY(poll());
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    plug(thirdPort, QStringLiteral("0001"));
    tested->ports.relink(secondPort, tested->bus.portPath());
    QTRY_COMPARE(state().returnedAs, thirdPort);
}

void TestPortWatch::adapterWithoutNumberIsTakenIfItAloneIsNew()
{
    listDrive();
    QVERIFY(poll());
    // It comes while the other is still there.
    plug(secondPort);
    pullBetweenPasses();
    tested->bus.command("plug");
    tested->ports.relink(secondPort, tested->bus.portPath());
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    QCOMPARE(state().returnedAs, QString());
    plug(thirdPort);
    QTRY_COMPARE(state().returnedAs, thirdPort);
}

void TestPortWatch::adapterIsBackUnderItsName()
{
    listDrive(QStringLiteral("A10"));
    const Z7Device drive = tested->drive3();
    pullBetweenPasses();
    // Nothing else goes over the port, which would show that it works.
    controller().readDeviceStatus(drive, &scanPage);
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    plug(port, QStringLiteral("A10"));
    QTRY_COMPARE(state().returnedAs, port);
}

void TestPortWatch::returnedAdapterMayGoAgain()
{
    adapterIsBackUnderAnotherName();
    tested->ports.pull(secondPort);
    QTRY_COMPARE(state().returnedAs, QString());
    QCOMPARE(kind(), Z7PortDiagnosis::Gone);
}

void TestPortWatch::wholeScanLeavesNothing()
{
    QVERIFY(scan());
    QVERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::scanThatLosesItsAdapterTellsLastAddress()
{
    addDrive(95);
    tested->bus.command("fault 95 pull");
    QVERIFY(scan());
    QCOMPARE(scanPage.notes.count(QStringLiteral("progress")), 255);
    QVERIFY(state().partialScan);
    QCOMPARE(state().partialScan->asked, 95);
    QCOMPARE(state().partialScan->lastAsked, 95);
    QVERIFY(!state().partialScan->wasStopped);
    QCOMPARE(kind(), Z7PortDiagnosis::Gone);
    // What has happened at that address is the news, and not what was found out about it.
    QVERIFY(state().diagnosis.time <= state().partialScan->endedAt);
}

void TestPortWatch::stoppedScanTellsLastAddress()
{
    tested->slowDown();
    controller().scanDevice(tested->drive3(), &scanPage);
    QTRY_VERIFY(scanPage.notes.count(QStringLiteral("progress")) >= 5);
    controller().cancelCommunication();
    QTRY_VERIFY(state().partialScan);
    QVERIFY(state().partialScan->wasStopped);
    QCOMPARE(state().partialScan->asked, tested->requests().size());
    QCOMPARE(state().partialScan->lastAsked, tested->requests().size());
    QCOMPARE(kind(), Z7PortDiagnosis::Fine);
}

void TestPortWatch::scanOfPortThatDoesNotOpenAskedNothing()
{
    const PortHolder other(port);
    QVERIFY(scan());
    QCOMPARE(state().partialScan->asked, 0);
    QVERIFY(!state().partialScan->wasStopped);
    QCOMPARE(kind(), Z7PortDiagnosis::Held);
    QCOMPARE(state().diagnosis.holder.id, other.processId());
}

void TestPortWatch::scanOnLentBusAskedNothing()
{
    controller().lendBus(true);
    QVERIFY(scan());
    QCOMPARE(state().partialScan->asked, 0);
    QVERIFY(state().partialScan->wasStopped);
    QCOMPARE(kind(), Z7PortDiagnosis::Fine);
}

void TestPortWatch::scanWithoutPortIsNoTroubleOfAnyPort()
{
    QVERIFY(scan(QString()));
    QVERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::wholeScanForgetsPartialOne()
{
    scanOfPortThatDoesNotOpenAskedNothing();
    QVERIFY(scan());
    QVERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::goodRecordDoesNotMakeScanWhole()
{
    stoppedScanTellsLastAddress();
    listDrive();
    QVERIFY(poll());
    QVERIFY(state().partialScan);
}

void TestPortWatch::listForgetsPortsWithoutDrives()
{
    const PortHolder other(port);
    controller().readDeviceStatus(tested->drive3(), &scanPage);
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Held);
    tested->connectDrives({tested->drive3()});
    QCOMPARE(kind(), Z7PortDiagnosis::Held);
    tested->connectDrives({});
    QVERIFY(watch().troubles().isEmpty());
}

void TestPortWatch::listKeepsScanThatLedToIt()
{
    stoppedScanTellsLastAddress();
    tested->connectDrives({tested->drive3()});
    QVERIFY(state().partialScan);
    tested->connectDrives({tested->drive3()});
    QVERIFY(!state().partialScan);
}

void TestPortWatch::changeIsToldOnce()
{
    listDrive();
    QVERIFY(poll());
    QSignalSpy changes(&watch(), SIGNAL(changed()));
    pullBetweenPasses();
    QTRY_COMPARE(kind(), Z7PortDiagnosis::Gone);
    QVERIFY(waitForPasses(3));
    QCOMPARE(changes.size(), 1);
    plug(port);
    QTRY_VERIFY(watch().troubles().isEmpty());
    const int told = changes.size();
    QVERIFY(waitForPasses(3));
    QCOMPARE(changes.size(), told);
}

void TestPortWatch::latestNewsComesFirst()
{
    tested->ports.plugUsb(secondPort, QString());
    const PortHolder other(port);
    QVERIFY(scan(port));
    QVERIFY(scan(secondPort));
    QCOMPARE(watch().troubles().size(), 2);
    QCOMPARE(watch().troubles().first().portName, secondPort);
    QVERIFY(scan(port));
    QCOMPARE(watch().troubles().first().portName, port);
}

QTEST_MAIN(TestPortWatch)

#include "tst_portwatch.moc"
