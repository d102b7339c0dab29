// From the tool button to the tree: the ways to one drive, and what keeps a drive out.

#include "tests/e2e/desk.h"
#include "tests/e2e/telegrams.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QtTest>

using namespace Telegrams;

class TestConnectJourneys : public QObject
{
    Q_OBJECT

private slots:
    void quickConnectLogsOnToDriveWithDefaultAddress();
    void quickConnectTriesAdapterOfPreferredVendorAlone();
    void quickConnectWithoutPortFindsNoDrive();
    void nothingMovesOnBusBeforePageIsShown();
    void manualConnectTakesPasswordThatIsNotAddress();
    void wrongPasswordShowsDriveAsPresentAndLocked();
    void driveWithWrongPasswordIsNotTakenOver();
    void wrongPasswordIsCorrectedOnWayBack();
    void driveThatDoesNotAnswerIsTriedOnce();
    void driveWithoutDefinitionsIsRefusedAndOtherOneAdded();
    void removedDriveIsGoneAfterOk();
};

void TestConnectJourneys::quickConnectLogsOnToDriveWithDefaultAddress()
{
    Desk desk(TestBench::shortDrives({1}));
    desk.slowDown();
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().press("BtnQuickConnect"));
    QTRY_COMPARE(journey.wizard().triedDrives(), QStringList("Port0 - Z7.1: connected"));
    QTRY_VERIFY(journey.wizard().canPressOk());
    QVERIFY(journey.wizard().ok());

    QVERIFY(!journey.wizard().isOpen());
    QCOMPARE(desk.requests(), logOn(1, 0));
    QCOMPARE(journey.drives(), QStringList("Port0 - Z7.1, active"));
    const ControlBar bar = journey.bar();
    QCOMPARE(bar.port, port);
    QCOMPARE(bar.usb, QStringLiteral("green"));
    QCOMPARE(bar.device, QStringLiteral("Z7.1"));
    QCOMPARE(bar.lamp, QStringLiteral("Green"));
    QCOMPARE(bar.message, QString());
}

void TestConnectJourneys::quickConnectTriesAdapterOfPreferredVendorAlone()
{
    TestBench bench;
    auto &other = bench.plugIn(port, {TestBench::shortDrive(1)}, ListedPorts::otherAdapter());
    auto &preferred = bench.plugIn(QStringLiteral("ttyUSB7"), {TestBench::shortDrive(1)});
    const Journey journey;
    QVERIFY(journey.connectQuickly());
    QCOMPARE(journey.drives(), QStringList("Port7 - Z7.1, active"));
    QCOMPARE(requests(preferred.log()), logOn(1, 0));
    QCOMPARE(requests(other.log()), QStringList());
}

void TestConnectJourneys::quickConnectWithoutPortFindsNoDrive()
{
    TestBench bench;
    const Journey journey;
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().press("BtnQuickConnect"));
    QTRY_COMPARE(journey.wizard().triedDrives(), QStringList("Kein Z7-Motor erkannt."));
    QVERIFY(!journey.wizard().canPressOk());
    QVERIFY(journey.wizard().close());
}

void TestConnectJourneys::nothingMovesOnBusBeforePageIsShown()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    QTest::qWait(500);
    QCOMPARE(desk.requests(), logOn(1, 0));
}

void TestConnectJourneys::manualConnectTakesPasswordThatIsNotAddress()
{
    const Desk desk({TestBench::shortDrive(3, 4711)});
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QVERIFY(wizard.press("BtnManual"));
    QCOMPARE(wizard.offeredPorts(), QStringList("ttyUSB0 (FT232R USB UART) - 1027"));
    QVERIFY(wizard.typeAddress(3));
    QVERIFY(wizard.typePassword(4711));
    QVERIFY(wizard.next());
    QTRY_COMPARE(wizard.triedDrives(), QStringList("Port0 - Z7.3: connected"));
    QTRY_VERIFY(wizard.canPressOk());
    QVERIFY(wizard.ok());

    // The drive refuses its address as password and takes the one that was typed.
    QCOMPARE(desk.requests(), logOn(3, 4711));
    QCOMPARE(desk.bus.log().at(1).bytes, QByteArray::fromHex("89 03 10 c9"));
    QCOMPARE(desk.bus.log().at(3).bytes, QByteArray::fromHex("89 03 00 d9"));
    QCOMPARE(journey.drives(), QStringList("Port0 - Z7.3, active"));
}

void TestConnectJourneys::wrongPasswordShowsDriveAsPresentAndLocked()
{
    const Desk desk({TestBench::shortDrive(3, 4711)});
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QVERIFY(wizard.logOn(port, 3, 1111));
    QTRY_COMPARE(wizard.triedDrives(), QStringList("Port0 - Z7.3: refused"));

    QCOMPARE(desk.requests(), QStringList({access(3, 3), access(3, 1111)}));
    const ControlBar bar = journey.bar();
    QCOMPARE(bar.usb, QStringLiteral("yellow"));
    QCOMPARE(bar.message, QStringLiteral("Ungültiges Passwort"));
    QCOMPARE(bar.device, QStringLiteral("Z7.3"));
    QCOMPARE(bar.lamp + bar.speed + bar.current, QString());
}

void TestConnectJourneys::driveWithWrongPasswordIsNotTakenOver()
{
    const Desk desk({TestBench::shortDrive(1, 4711)});
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QVERIFY(wizard.press("BtnQuickConnect"));
    QTRY_COMPARE(wizard.triedDrives(), QStringList("Port0 - Z7.1: refused"));
    QTRY_VERIFY(!journey.bar().progress);
    QVERIFY(!wizard.canPressOk());
    QVERIFY(wizard.close());
    QCOMPARE(journey.drives(), QStringList());
    QCOMPARE(desk.requests(), QStringList({access(1, 1), access(1, 0)}));
}

void TestConnectJourneys::wrongPasswordIsCorrectedOnWayBack()
{
    const Desk desk({TestBench::shortDrive(1, 4711)});
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QVERIFY(wizard.press("BtnManual"));
    QVERIFY(wizard.next());
    QTRY_COMPARE(wizard.triedDrives(), QStringList("Port0 - Z7.1: refused"));
    QVERIFY(wizard.previous());
    QVERIFY(wizard.typePassword(4711));
    QVERIFY(wizard.next());
    QTRY_COMPARE(wizard.triedDrives(), QStringList("Port0 - Z7.1: connected"));
    QTRY_VERIFY(wizard.canPressOk());
    QVERIFY(wizard.ok());
    QCOMPARE(desk.requests(), QStringList({access(1, 1), access(1, 0)}) + logOn(1, 4711));
    QCOMPARE(journey.drives(), QStringList("Port0 - Z7.1, active"));
}

void TestConnectJourneys::driveThatDoesNotAnswerIsTriedOnce()
{
    const Desk desk(TestBench::shortDrives({9}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.openWizard());
    QVERIFY(journey.wizard().press("BtnQuickConnect"));
    QTRY_COMPARE(journey.wizard().triedDrives(), QStringList("Port0 - Z7.1: refused"));
    QTRY_VERIFY(!journey.bar().progress);
    QCOMPARE(desk.requests(), QStringList(access(1, 1)));
    QCOMPARE(journey.bar().usb, QStringLiteral("red"));
    QCOMPARE(journey.bar().message, QStringLiteral("Das Gerät antwortet nicht (timeout)"));
    QCOMPARE(journey.bar().device, QString());
}

void TestConnectJourneys::driveWithoutDefinitionsIsRefusedAndOtherOneAdded()
{
    TestBench bench;
    z7sim::DriveConfig unknown = TestBench::shortDrive(2);
    unknown.version = "V200";
    bench.plugIn(port, {TestBench::shortDrive(1), unknown});
    bench.removeDefinitions("V200");
    const Journey journey;
    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    for (const int address : {2, 1}) {
        QVERIFY(wizard.press("BtnManual"));
        QVERIFY(wizard.typeAddress(address));
        QVERIFY(wizard.next());
        QTRY_VERIFY(wizard.canPressOk());
        QVERIFY(wizard.next());
    }
    QCOMPARE(wizard.drives(), QStringList({"Port0 - Z7.2, active", "Port0 - Z7.1, active"}));

    const MessageBoxAnswerer user(QMessageBox::Ok);
    QVERIFY(wizard.ok());
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().icon, QMessageBox::Critical);
    QCOMPARE(user.last().text,
        QStringLiteral("Der Motor kann nicht hinzugefügt werden:\n\nZur Versionnummer V200 im Motor "
                       "Port0 - Z7.2 ist keine Parameter-Definition verfügbar. Bitte fordern Sie die Datei "
                       "mit den Parameter-Definitionen zur Z7-Version V200 an."));
    QCOMPARE(journey.drives(), QStringList("Port0 - Z7.1, active"));
}

void TestConnectJourneys::removedDriveIsGoneAfterOk()
{
    const Desk desk(TestBench::shortDrives({1, 2}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectManually(port, 1, 0));
    QVERIFY(journey.connectManually(port, 2, 0));
    QCOMPARE(journey.drives(), QStringList({"Port0 - Z7.1, active", "Port0 - Z7.2, active"}));

    QVERIFY(journey.openWizard());
    const WizardUser wizard = journey.wizard();
    QCOMPARE(wizard.drives(), QStringList({"Port0 - Z7.1, active", "Port0 - Z7.2, active"}));
    QVERIFY(wizard.chooseDrive(0));
    QVERIFY(wizard.press("BtnRemoveConnection"));
    QCOMPARE(wizard.drives(), QStringList("Port0 - Z7.2, active"));
    QVERIFY(wizard.ok());
    QCOMPARE(journey.drives(), QStringList("Port0 - Z7.2, active"));
}

QTEST_MAIN(TestConnectJourneys)

#include "tst_connectjourneys.moc"
