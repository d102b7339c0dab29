// What screen readers tell of the lamps of the control bar and of the line that warns.

#include "model/drivefacts.h"
#include "shell/devicecontrolwidget.h"
#include "shell/maincontentwidget.h"
#include "tests/shell/contentband.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/keyboardrules.h"
#include "tests/support/listedports.h"

#include <QLabel>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestLampNames : public IsolatedTest
{
    Q_OBJECT

private slots:
    void lampTellsConditionOfDrive_data();
    void lampTellsConditionOfDrive();
    void lampTellsStateOfConnection_data();
    void lampTellsStateOfConnection();
    void changeIsToldOnce();
    void recordWithoutChangeTellsNothing();
    void conflictIsToldOnceAsSuch();

private:
    void prepare() override;
    void tidyUp() override;

    QLabel &label(const char *name) const { return child<QLabel>(*bar, name); }
    QString nameOf(const char *name) const { return label(name).accessibleName(); }

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<DeviceControlWidget> bar;
};

void TestLampNames::prepare()
{
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    bar = std::make_unique<DeviceControlWidget>();
    bar->show();
}

void TestLampNames::tidyUp()
{
    bar.reset();
    ports.reset();
}

void TestLampNames::lampTellsConditionOfDrive_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("name");
    QTest::newRow("over-temperature")
        << int(StatusBit::OverTemperature) << QStringLiteral("Antrieb: Störung");
    QTest::newRow("acknowledge required")
        << int(StatusBit::AcknowledgeRequired) << QStringLiteral("Antrieb: Quittierung nötig");
    QTest::newRow("ready") << int(StatusBit::Ready) << QStringLiteral("Antrieb: aktiv oder bereit");
    QTest::newRow("nothing") << 0 << QStringLiteral("Antrieb: weder aktiv noch bereit");
}

void TestLampNames::lampTellsConditionOfDrive()
{
    QFETCH(int, bits);
    QFETCH(QString, name);
    Z7Device device = drive(1);
    device.statusBits = bits;
    bar->DeviceUpdate(device);
    QCOMPARE(nameOf("LDeviceStatus"), name);
}

void TestLampNames::lampTellsStateOfConnection_data()
{
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("access");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("name");
    QTest::newRow("access") << true << true << 0 << QStringLiteral("Verbindung: in Ordnung");
    QTest::newRow("password refused")
        << true << false << 10 << QStringLiteral("Verbindung: kein Zugriff oder Fehler");
    QTest::newRow("error on the way")
        << true << true << 8 << QStringLiteral("Verbindung: kein Zugriff oder Fehler");
    QTest::newRow("silent") << false << false << 1 << QStringLiteral("Verbindung: keine Antwort");
}

void TestLampNames::lampTellsStateOfConnection()
{
    QFETCH(bool, connected);
    QFETCH(bool, access);
    QFETCH(int, error);
    QFETCH(QString, name);
    Z7Device device = driveWithoutAccess(1);
    device.setConnected(connected);
    device.setAccessGranted(access);
    device.error = error;
    bar->DeviceUpdate(device);
    QCOMPARE(nameOf("LCommStatus"), name);
}

void TestLampNames::changeIsToldOnce()
{
    Z7Device device = drive(1);
    bar->DeviceUpdate(device);
    const KeyboardRules::AccessibilityWatch watch;
    device.statusBits = StatusBit::Ready;
    bar->DeviceUpdate(device);
    QCOMPARE(watch.count(&label("LDeviceStatus"), QAccessible::NameChanged), 1);
    QCOMPARE(watch.count(&label("LCommStatus")), 0);
}

void TestLampNames::recordWithoutChangeTellsNothing()
{
    bar->DeviceUpdate(drive(1));
    const KeyboardRules::AccessibilityWatch watch;
    bar->DeviceUpdate(drive(1));
    QCOMPARE(watch.count(&label("LDeviceStatus")) + watch.count(&label("LCommStatus")), 0);
}

void TestLampNames::conflictIsToldOnceAsSuch()
{
    const ContentBand<> band;
    auto &line = child<QLabel>(*band.content, "LParamWarning");
    QCOMPARE(line.accessibleDescription(), QStringLiteral("Konflikt der Werte"));
    const KeyboardRules::AccessibilityWatch watch;
    band.content->setConflictLine(QStringLiteral("1 <= 2"));
    band.content->setConflictLine(QStringLiteral("1 <= 2"));
    QCOMPARE(watch.count(&line), 1);
    QCOMPARE(QAccessible::queryAccessibleInterface(&line)->text(QAccessible::Name), QStringLiteral("1 <= 2"));
}

QTEST_MAIN(TestLampNames)

#include "tst_lampnames.moc"
