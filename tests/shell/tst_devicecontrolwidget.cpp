// The bar at the bottom of the window: what it tells of the drive and of the communication.

#include "control/services/language.h"
#include "shell/devicecontrolwidget.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/listedports.h"

#include <QLabel>
#include <QProgressBar>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestDeviceControlWidget : public IsolatedTest
{
    Q_OBJECT

private slots:
    void showsNothingBeforeFirstRecord();
    void lastMessageIsRed();
    void showsPortAndAddress();
    void showsSpeedAndCurrentAsPlainNumbers();
    void namesOfValuesEndInColon();
    void namesOfValuesComeFromLanguageFile();
    void lampTellsDriveStatus_data();
    void lampTellsDriveStatus();
    void errorIsShownAsText_data();
    void errorIsShownAsText();
    void errorGoesWithNextGoodRecord();
    void errorTextIsNoMarkup();
    void communicationStateIsShown_data();
    void communicationStateIsShown();
    void partsDoNotJumpWhenTheyAreHidden();

    void transactionStartsEmptyProgressBar();
    void transactionShowsItsDriveAtOnce();
    void progressIsCountedStepByStep();
    void secondTransactionCountsFromStart();
    void progressBarGoesAtEndOfTransaction();
    void progressBarGoesWithRecordOfPollingPass();

private:
    void prepare() override;
    void tidyUp() override;

    QString text(const char *label) const { return textOf(*bar, label); }
    QImage picture(const char *label) const { return pictureOf(*bar, label); }
    bool seen(const char *name) const { return sees(*bar, name); }
    const QProgressBar &progress() const { return child<QProgressBar>(*bar, "PgBarComm"); }

    std::unique_ptr<ListedPorts> ports;
    std::unique_ptr<DeviceControlWidget> bar;
};

void TestDeviceControlWidget::prepare()
{
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(firstPort, QString());
    bar = std::make_unique<DeviceControlWidget>();
    bar->show();
}

void TestDeviceControlWidget::tidyUp()
{
    bar.reset();
    ports.reset();
}

void TestDeviceControlWidget::showsNothingBeforeFirstRecord()
{
    for (const char *label : {"LPort", "LCommStatus", "LLastMessage", "LDevice", "lCurrentText", "lCurrent",
             "lPowerText", "LPower"})
        QVERIFY2(text(label).isEmpty(), label);
    QVERIFY(picture("LDeviceStatus").isNull());
    QVERIFY(!seen("PgBarComm"));
    QCOMPARE(progress().maximum(), 100);
    QCOMPARE(progress().value(), 0);
}

void TestDeviceControlWidget::lastMessageIsRed()
{
    QCOMPARE(child(*bar, "LLastMessage").palette().color(QPalette::WindowText), QColor(Qt::red));
}

void TestDeviceControlWidget::showsPortAndAddress()
{
    bar->DeviceUpdate(drive(17));
    QCOMPARE(text("LPort"), QStringLiteral("ttyUSB0"));
    QCOMPARE(text("LDevice"), QStringLiteral("Z7.17"));
}

void TestDeviceControlWidget::showsSpeedAndCurrentAsPlainNumbers()
{
    Z7Device device = drive(1);
    device.actualSpeed = -3000;
    device.actualCurrent = 512;
    bar->DeviceUpdate(device);
    QCOMPARE(text("lCurrent"), QStringLiteral("-3000"));
    QCOMPARE(text("LPower"), QStringLiteral("512"));
}

void TestDeviceControlWidget::namesOfValuesEndInColon()
{
    bar->DeviceUpdate(drive(1));
    QCOMPARE(text("lCurrentText"), QStringLiteral("Ist-Drehzahl:"));
    QCOMPARE(text("lPowerText"), QStringLiteral("Ist-Strom:"));
}

void TestDeviceControlWidget::namesOfValuesComeFromLanguageFile()
{
    languageText("Common", "CurrentRotations", QStringLiteral("Speed:"));
    languageText("Common", "CurrentCurrent", QStringLiteral("Current:"));
    bar->DeviceUpdate(drive(1));
    QCOMPARE(text("lCurrentText"), QStringLiteral("Speed:"));
    QCOMPARE(text("lPowerText"), QStringLiteral("Current:"));
}

void TestDeviceControlWidget::lampTellsDriveStatus_data()
{
    QTest::addColumn<int>("statusBits");
    QTest::addColumn<QByteArray>("lamp");

    const QByteArray red = ":/images/RedIcon_16px.png";
    const QByteArray yellow = ":/images/YellowIcon_16px.png";
    const QByteArray green = ":/images/GreenIcon_16px.png";
    const QByteArray grey = ":/images/GrayIcon_16px.png";
    QTest::newRow("nothing reported") << 0x00 << grey;
    QTest::newRow("over-temperature") << 0x01 << red;
    QTest::newRow("active") << 0x02 << green;
    QTest::newRow("over-voltage") << 0x04 << red;
    QTest::newRow("under-voltage") << 0x08 << red;
    QTest::newRow("hardware fault") << 0x10 << red;
    QTest::newRow("over-current") << 0x20 << red;
    QTest::newRow("acknowledge required") << 0x40 << yellow;
    QTest::newRow("ready") << 0x80 << green;
    QTest::newRow("fault beats acknowledge required") << 0x41 << red;
    QTest::newRow("acknowledge required beats active") << 0x42 << yellow;
    QTest::newRow("acknowledge required beats ready") << 0xC0 << yellow;
    QTest::newRow("fault beats active") << 0x22 << red;
    QTest::newRow("everything reported") << 0xFF << red;
}

void TestDeviceControlWidget::lampTellsDriveStatus()
{
    QFETCH(int, statusBits);
    QFETCH(QByteArray, lamp);
    Z7Device device = drive(1);
    device.statusBits = quint8(statusBits);
    bar->DeviceUpdate(device);
    QVERIFY(seen("LDeviceStatus"));
    QCOMPARE(picture("LDeviceStatus"), image(lamp.constData(), 16));
}

void TestDeviceControlWidget::errorIsShownAsText_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("shown");

    QTest::newRow("no answer") << 1 << QStringLiteral("Das Gerät antwortet nicht (timeout)");
    QTest::newRow("write not completed") << 2 << QStringLiteral("(2)");
    QTest::newRow("port cannot be opened") << 3 << QStringLiteral("Der Port kann nicht geöffnet werden");
    QTest::newRow("port settings refused") << 4 << QStringLiteral("(4)");
    QTest::newRow("invalid reply length") << 6 << QStringLiteral("Telegramm mit ungültiger Länge empfangen");
    QTest::newRow("invalid reply data") << 7 << QStringLiteral("Ungültige Telegrammdaten empfangen");
    QTest::newRow("wrong checksum") << 8 << QStringLiteral("Telegramm mit falscher Prüfsumme empfangen");
    QTest::newRow("wrong parameter number")
        << 9 << QStringLiteral("Telegramm mit falsche Parameternummer empfangen");
    QTest::newRow("invalid password") << 10 << QStringLiteral("Ungültiges Passwort");
    QTest::newRow("version not compatible")
        << 15 << QStringLiteral("Die Softwareversion ist nicht kompatibel");
    QTest::newRow("no parameter change") << 16 << QStringLiteral("Keine Parameteränderung");
    QTest::newRow("flash write failed") << 17 << QStringLiteral("Fehler bei Beschreiben des Flash");
    QTest::newRow("inconsistent parameters") << 18 << QStringLiteral("Inkonsistente Parameter");
    QTest::newRow("aborted") << 19 << QStringLiteral("Die Transaktion wurde abgebrochen");
    QTest::newRow("motor not in free-run") << 20 << QStringLiteral("Der Motor ist nicht im Freilauf");
    QTest::newRow("a number that no one knows") << 100 << QStringLiteral("(100)");
}

void TestDeviceControlWidget::errorIsShownAsText()
{
    QFETCH(int, error);
    QFETCH(QString, shown);
    Z7Device device = drive(1);
    device.setDeviceError(error);
    bar->DeviceUpdate(device);
    QCOMPARE(text("LLastMessage"), shown);
}

void TestDeviceControlWidget::errorGoesWithNextGoodRecord()
{
    Z7Device device = drive(1);
    device.setDeviceError(1);
    bar->DeviceUpdate(device);
    QVERIFY(!text("LLastMessage").isEmpty());
    bar->DeviceUpdate(drive(1));
    QCOMPARE(text("LLastMessage"), QString());
}

void TestDeviceControlWidget::errorTextIsNoMarkup()
{
    const QString translated = QStringLiteral("<b>no answer</b>");
    languageText("ErrorCodes", "ErrorCode_1", translated);
    Z7Device device = drive(1);
    device.setDeviceError(1);
    bar->DeviceUpdate(device);
    QCOMPARE(text("LLastMessage"), translated);
    QCOMPARE(child<QLabel>(*bar, "LLastMessage").textFormat(), Qt::PlainText);
}

void TestDeviceControlWidget::communicationStateIsShown_data()
{
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("accessGranted");
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("symbol");
    QTest::addColumn<bool>("name");
    QTest::addColumn<bool>("values");

    const QByteArray green = ":/images/usb_green_24px.png";
    const QByteArray yellow = ":/images/usb_yellow_24px.png";
    const QByteArray red = ":/images/usb_red_24px.png";
    QTest::newRow("access and no error") << true << true << 0 << green << true << true;
    QTest::newRow("error on a drive with access") << true << true << 1 << yellow << true << false;
    QTest::newRow("answers but refuses the password") << true << false << 10 << yellow << true << false;
    QTest::newRow("answers, nothing more known") << true << false << 0 << yellow << true << false;
    QTest::newRow("no answer") << false << false << 1 << red << false << false;
    QTest::newRow("never asked") << false << false << 0 << red << false << false;
}

void TestDeviceControlWidget::communicationStateIsShown()
{
    QFETCH(bool, connected);
    QFETCH(bool, accessGranted);
    QFETCH(int, error);
    QFETCH(QByteArray, symbol);
    QFETCH(bool, name);
    QFETCH(bool, values);
    bar->DeviceUpdate(drive(1));
    Z7Device device = drive(1);
    device.setConnected(connected);
    device.setAccessGranted(accessGranted);
    device.connected = connected;
    device.setDeviceError(error);
    bar->DeviceUpdate(device);
    QCOMPARE(picture("LCommStatus"), image(symbol.constData()));
    QCOMPARE(seen("LDevice"), name);
    for (const char *label : {"LDeviceStatus", "lCurrent", "LPower", "lCurrentText", "lPowerText"})
        QVERIFY2(seen(label) == values, label);
    QCOMPARE(text("LLastMessage").isEmpty(), error == 0);
    for (const char *label : {"LPort", "LCommStatus", "LLastMessage"})
        QVERIFY2(seen(label), label);
}

void TestDeviceControlWidget::partsDoNotJumpWhenTheyAreHidden()
{
    bar->DeviceUpdate(drive(1));
    const int height = bar->sizeHint().height();
    const QPoint place = child(*bar, "LDevice").pos();
    Z7Device device = drive(1);
    device.setDeviceError(1);
    bar->DeviceUpdate(device);
    bar->transactionStarted(10, device);
    QCoreApplication::processEvents();
    QCOMPARE(bar->sizeHint().height(), height);
    QCOMPARE(child(*bar, "LDevice").pos(), place);
}

void TestDeviceControlWidget::transactionStartsEmptyProgressBar()
{
    bar->transactionStarted(14, drive(1));
    QVERIFY(seen("PgBarComm"));
    QCOMPARE(progress().maximum(), 14);
    QCOMPARE(progress().value(), 0);
}

void TestDeviceControlWidget::transactionShowsItsDriveAtOnce()
{
    bar->DeviceUpdate(drive(1));
    bar->transactionStarted(14, drive(2));
    QCOMPARE(text("LDevice"), QStringLiteral("Z7.2"));
}

void TestDeviceControlWidget::progressIsCountedStepByStep()
{
    bar->transactionStarted(14, drive(1));
    bar->transactionProgress();
    QCOMPARE(progress().value(), 1);
    bar->transactionProgress();
    QCOMPARE(progress().value(), 2);
}

void TestDeviceControlWidget::secondTransactionCountsFromStart()
{
    bar->transactionStarted(14, drive(1));
    bar->transactionProgress();
    bar->transactionTerminated();
    bar->transactionStarted(1, drive(1));
    QCOMPARE(progress().maximum(), 1);
    QCOMPARE(progress().value(), 0);
}

void TestDeviceControlWidget::progressBarGoesAtEndOfTransaction()
{
    bar->transactionStarted(14, drive(1));
    bar->transactionTerminated();
    QVERIFY(!seen("PgBarComm"));
}

// The end of a polling pass is not reported; its record is the last that comes of it.
void TestDeviceControlWidget::progressBarGoesWithRecordOfPollingPass()
{
    bar->transactionStarted(14, drive(1));
    bar->transactionProgress();
    bar->DeviceUpdate(drive(1));
    QVERIFY(!seen("PgBarComm"));
}

QTEST_MAIN(TestDeviceControlWidget)

#include "tst_devicecontrolwidget.moc"
