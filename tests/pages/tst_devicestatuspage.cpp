// The home page of a drive: what a person sees of one record.

#include "control/services/language.h"
#include "pages/pagestyle.h"
#include "tests/pages/shownpage.h"
#include "tests/support/isolatedtest.h"

#include <QLocale>
#include <QSettings>

#include <optional>

namespace {

struct StatusBit
{
    const char *name; ///< of the lamp, after its l
    const char *litLamp;
};

/// From bit 0 to bit 7.
const QVector<StatusBit> statusBitTable {
    {"OverTemp", "Red"},
    {"Active", "Green"},
    {"OverVoltage", "Red"},
    {"UnderVoltage", "Red"},
    {"HardwareError", "Red"},
    {"OverPower", "Red"},
    {"AckRequired", "Yellow"},
    {"Ready", "Green"},
};

struct PageText
{
    const char *object;
    const char *key;
    const char *text;
};

const QVector<PageText> pageTexts {
    {"lIntro", "Introduction", ""},
    {"lMotor", "Motor", "Antrieb:"},
    {"lMotorSoftwareVersion", "SoftwareVersion", "Softwareversion:"},
    {"lOperationStatus", "OperationStatus", "Betriebsmodus:"},
    {"lMotorAdress", "Adress", "Adresse:"},
    {"lDeviceStatus", "DeviceStatus", "Gerätestatus:"},
    {"gbMotorStatus", "Motorstatus", "Motorstatus"},
    {"gbRotations", "CurrentRotations", "Ist-Drehzahl"},
    {"gbPower", "CurrentPower", "Ist-Strom"},
    {"gbPosition", "CurrentPosition", "Ist-Position"},
    {"gbTemperature", "CurrentTemperature", "Ist-Temperatur"},
    {"gbOutput", "CurrentOuput", "Ausgänge"},
    {"gbInput", "CurrentDigitalInput", "Digitaleingänge"},
    {"gbAnalogInputA1", "AnalogInputA1", "Analogeingang A1"},
    {"cbOverTemp", "StatusOverTemp", "Antrieb erkennt Übertemperatur"},
    {"cbActive", "StatusActive", "Antrieb ist aktiv"},
    {"cbOverVoltage", "StatusOverVoltage", "Antrieb erkennt Überspannung"},
    {"cbUnderVoltage", "StatusUnderVoltage", "Antrieb erkennt Unterspannung"},
    {"cbHardwareError", "StatusHardwareError", "Antrieb erkennt Hardwarefehler"},
    {"cbOverPower", "StatusOverPower", "Antrieb erkennt Überstrom"},
    {"cbAckRequired", "StatusAckRequired", "Antrieb benötigt eine Quittierung"},
    {"cbReady", "StatusReady", "Antrieb ist bereit"},
    {"edOutput_1", "OutputO1", "Ausgang O1"},
    {"edOutput_2", "OutputO2", "Ausgang O2"},
    {"edOutput_3", "OutputO3", "Ausgang O3"},
    {"edInput_1", "DigitalInput1", "Digitaleingang 1"},
    {"edInput_2", "DigitalInput2", "Digitaleingang 2"},
    {"edInput_3", "DigitalInput3", "Digitaleingang 3"},
    {"edInput_4", "DigitalInput4", "Digitaleingang 4"},
};

void addTextRows()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    for (const PageText &text : pageTexts)
        QTest::newRow(text.object) << text.object << text.key << QString::fromUtf8(text.text);
}

const QStringList groups {"gbMotorStatus", "gbRotations", "gbPower", "gbPosition", "gbTemperature",
    "gbOutput", "gbInput", "gbAnalogInputA1"};
const QStringList identity {"lMotorSoftwareVersion_2", "lMotorAdress_2", "lOperationStatus_2"};

Z7Device reachedDrive()
{
    Z7Device drive = driveWith({});
    drive.assignAddress(3);
    drive.setAccessGranted(true);
    return drive;
}

} // namespace

class TestDeviceStatusPage : public IsolatedTest
{
    Q_OBJECT

private slots:
    void textStandsAtItsPlace_data();
    void textStandsAtItsPlace();
    void textIsInUsersLanguage_data();
    void textIsInUsersLanguage();
    void languageFileGetsNoOtherTextsOfPage();
    void introductionTakesRoomOnlyIfItHasText();
    void unitsAreThoseOfLiveValues();

    void eachStatusBitHasItsLamp_data();
    void eachStatusBitHasItsLamp();
    void noStatusBitGivesEightGrayLamps();
    void allStatusBitsLightAllLampsAndNothingElse();
    void eachOutputAndInputHasItsLamp_data();
    void eachOutputAndInputHasItsLamp();
    void lampIsNamedWithItsState();
    void lampOfDriveIsNamedWithItsState();

    void nameVersionAddressAndModesAreShown();
    void modesWithoutTextsLeaveSlashInItsBracket();
    void liveValuesAreShownInDecimal();
    void positionHasThreeDecimalsAndDot_data();
    void positionHasThreeDecimalsAndDot();

    void driveThatIsNotReportedKeepsItsNameAndRedLamp_data();
    void driveThatIsNotReportedKeepsItsNameAndRedLamp();
    void driveThatComesBackIsShownWhole();
    void pageWithoutDriveHasItsLampsOff();
    void networkPageIsEmpty();

private:
    void prepare() override;
    void tidyUp() override;

    void show(const Z7Device &drive) { shown->showFor(drive); }
    /// The text of a label or the title of a group.
    QString textOf(const QString &object) const;
    /// "Red", "Green", "Yellow" or "Gray".
    QString lamp(const QString &name) const;
    QStringList lamps() const;

    std::optional<ShownPage> shown;
};

void TestDeviceStatusPage::prepare()
{
    shown.emplace(PageNumber::DeviceStatus);
}

void TestDeviceStatusPage::tidyUp()
{
    shown.reset();
}

QString TestDeviceStatusPage::textOf(const QString &object) const
{
    const auto *widget = shown->child<QWidget>(object);
    const QVariant title = widget->property("title");
    return (title.isValid() ? title : widget->property("text")).toString();
}

QString TestDeviceStatusPage::lamp(const QString &name) const
{
    const QImage picture = shown->label(name)->pixmap(Qt::ReturnByValue).toImage();
    for (const char *colour : {"Red", "Green", "Yellow", "Gray"}) {
        const QByteArray file = QByteArray(":/images/") + colour + "Icon_16px.png";
        if (picture == PageStyle::smallPixmap(file.constData()).toImage())
            return colour;
    }
    return "none";
}

QStringList TestDeviceStatusPage::lamps() const
{
    QStringList colours;
    for (const StatusBit &bit : statusBitTable)
        colours.append(lamp(QString("l") + bit.name));
    return colours;
}

void TestDeviceStatusPage::textStandsAtItsPlace_data()
{
    addTextRows();
}

void TestDeviceStatusPage::textStandsAtItsPlace()
{
    QFETCH(QString, object);
    show(reachedDrive());
    QTEST(textOf(object), "text");
}

void TestDeviceStatusPage::textIsInUsersLanguage_data()
{
    addTextRows();
}

void TestDeviceStatusPage::textIsInUsersLanguage()
{
    QFETCH(QString, object);
    QFETCH(QString, key);
    WorkingFolder::writeText("deutsch.z7lang", "[DialogDeviceStatus]\n" + key + "=translated\n");
    show(reachedDrive());
    QCOMPARE(textOf(object), QStringLiteral("translated"));
}

void TestDeviceStatusPage::languageFileGetsNoOtherTextsOfPage()
{
    show(reachedDrive());
    Z7Services::instance()->language()->save();
    QSettings file("deutsch.z7lang", QSettings::IniFormat);
    file.beginGroup("DialogDeviceStatus");
    QStringList expected;
    for (const PageText &text : pageTexts)
        expected.append(text.key);
    expected.sort();
    QCOMPARE(file.allKeys(), expected);
}

void TestDeviceStatusPage::introductionTakesRoomOnlyIfItHasText()
{
    const auto *frame = shown->child<QFrame>("topFrame");
    show(reachedDrive());
    QVERIFY(!frame->isVisible());
    Z7Services::shutdown();
    WorkingFolder::writeText("deutsch.z7lang", "[DialogDeviceStatus]\nIntroduction=What the drive reports\n");
    show(reachedDrive());
    QVERIFY(frame->isVisible());
}

void TestDeviceStatusPage::unitsAreThoseOfLiveValues()
{
    for (const int number : {0x8001, 0x8007, 0x8004, 0x8005, 0x800D})
        defineParameters("V123", {QString("%1;Wert;u%1;0;0;0;Signed;1;r;0;").arg(number)});
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nu32773=degrees\n");
    show(reachedDrive());
    QCOMPARE(shown->text("lCurrentRotationsUnit"), QStringLiteral("u32769"));
    QCOMPARE(shown->text("lCurrentPowerUnit"), QStringLiteral("u32775"));
    QCOMPARE(shown->text("lCurrentPositionUnit"), QStringLiteral("u32772"));
    QCOMPARE(shown->text("lCurrentTempUnit"), QStringLiteral("degrees"));
    QCOMPARE(shown->text("edAnalogInputUnit"), QStringLiteral("u32781"));
}

void TestDeviceStatusPage::eachStatusBitHasItsLamp_data()
{
    QTest::addColumn<int>("bit");
    for (int bit = 0; bit < statusBitTable.size(); ++bit)
        QTest::newRow(statusBitTable.at(bit).name) << bit;
}

void TestDeviceStatusPage::eachStatusBitHasItsLamp()
{
    QFETCH(int, bit);
    Z7Device drive = reachedDrive();
    drive.statusBits = quint8(1 << bit);
    show(drive);
    QStringList expected {"Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray"};
    expected[bit] = statusBitTable.at(bit).litLamp;
    QCOMPARE(lamps(), expected);
}

void TestDeviceStatusPage::noStatusBitGivesEightGrayLamps()
{
    Z7Device drive = reachedDrive();
    drive.statusBits = 0xFF;
    show(drive);
    drive.statusBits = 0;
    shown->page->DeviceUpdate(drive);
    QCOMPARE(lamps(), (QStringList {"Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray"}));
}

void TestDeviceStatusPage::allStatusBitsLightAllLampsAndNothingElse()
{
    Z7Device drive = reachedDrive();
    drive.statusBits = 0xFF;
    show(drive);
    QCOMPARE(lamps(), (QStringList {"Red", "Green", "Red", "Red", "Red", "Red", "Yellow", "Green"}));
    QCOMPARE(lamp("lDeviceStatusIcon"), QStringLiteral("Green"));
    QCOMPARE(lamp("lInput_1"), QStringLiteral("Gray"));
    QCOMPARE(lamp("lOutput_1"), QStringLiteral("Gray"));
}

void TestDeviceStatusPage::eachOutputAndInputHasItsLamp_data()
{
    QTest::addColumn<QString>("lit");
    QTest::addColumn<int>("outputs");
    QTest::addColumn<int>("inputs");
    for (int output = 1; output <= 3; ++output)
        QTest::addRow("output %d", output) << QString("lOutput_%1").arg(output) << (1 << (output - 1)) << 0;
    for (int input = 1; input <= 4; ++input)
        QTest::addRow("input %d", input) << QString("lInput_%1").arg(input) << 0 << (1 << (input - 1));
}

void TestDeviceStatusPage::eachOutputAndInputHasItsLamp()
{
    QFETCH(QString, lit);
    QFETCH(int, outputs);
    QFETCH(int, inputs);
    Z7Device drive = reachedDrive();
    drive.digitalOutputs = quint8(outputs);
    drive.digitalInputs = quint8(inputs);
    show(drive);
    for (const char *name :
        {"lOutput_1", "lOutput_2", "lOutput_3", "lInput_1", "lInput_2", "lInput_3", "lInput_4"})
        QCOMPARE(lamp(name), name == lit ? QStringLiteral("Green") : QStringLiteral("Gray"));
}

void TestDeviceStatusPage::lampIsNamedWithItsState()
{
    Z7Device drive = reachedDrive();
    drive.statusBits = 0x80;
    drive.digitalInputs = 0x2;
    show(drive);
    QCOMPARE(shown->label("lReady")->accessibleName(), QStringLiteral("Antrieb ist bereit: an"));
    QCOMPARE(shown->child<QWidget>("cbReady")->accessibleName(), QStringLiteral("Antrieb ist bereit: an"));
    QCOMPARE(shown->label("lActive")->accessibleName(), QStringLiteral("Antrieb ist aktiv: aus"));
    QCOMPARE(shown->label("lInput_2")->accessibleName(), QStringLiteral("Digitaleingang 2: an"));
    QCOMPARE(shown->label("lOutput_1")->accessibleName(), QStringLiteral("Ausgang O1: aus"));
    drive.statusBits = 0x02;
    shown->page->DeviceUpdate(drive);
    QCOMPARE(shown->label("lReady")->accessibleName(), QStringLiteral("Antrieb ist bereit: aus"));
    QCOMPARE(shown->label("lActive")->accessibleName(), QStringLiteral("Antrieb ist aktiv: an"));
}

void TestDeviceStatusPage::lampOfDriveIsNamedWithItsState()
{
    show(reachedDrive());
    QCOMPARE(shown->label("lDeviceStatusIcon")->accessibleName(), QStringLiteral("Gerätestatus: in Ordnung"));
    show(driveWith({}));
    QCOMPARE(shown->label("lDeviceStatusIcon")->accessibleName(), QStringLiteral("Gerätestatus: gestört"));
}

void TestDeviceStatusPage::nameVersionAddressAndModesAreShown()
{
    for (const int input : {1, 2})
        defineParameters(
            "V123", {QString("%1;Modus;;0;0;8;Unsigned;0;rw;0;Null %1;Eins %1;Zwei %1;").arg(input)});
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nZwei%202=two\n");
    show(inModes(reachedDrive(), 1, 2));
    QCOMPARE(shown->text("lDeviceName"), deviceName(reachedDrive()));
    QCOMPARE(shown->text("lMotorSoftwareVersion_2"), QStringLiteral("V123"));
    QCOMPARE(shown->text("lMotorAdress_2"), QStringLiteral("3"));
    QCOMPARE(shown->text("lOperationStatus_2"), QStringLiteral("1/2 (Eins 1/two)"));
}

void TestDeviceStatusPage::modesWithoutTextsLeaveSlashInItsBracket()
{
    show(inModes(reachedDrive(), 3, 0));
    QCOMPARE(shown->text("lOperationStatus_2"), QStringLiteral("3/0 (/)"));
}

void TestDeviceStatusPage::liveValuesAreShownInDecimal()
{
    Z7Device drive = reachedDrive();
    drive.actualSpeed = -32768;
    drive.actualCurrent = 65535;
    drive.actualTemperature = -12;
    drive.analogInputA1 = 1023;
    show(drive);
    QCOMPARE(shown->text("lCurrentRotationsDevice"), QStringLiteral("-32768"));
    QCOMPARE(shown->text("lCurrentPowerDevice"), QStringLiteral("65535"));
    QCOMPARE(shown->text("lCurrentTempDevice"), QStringLiteral("-12"));
    QCOMPARE(shown->text("edAnalogInput"), QStringLiteral("1023"));
}

void TestDeviceStatusPage::positionHasThreeDecimalsAndDot_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("text");
    QTest::newRow("one and a half turns") << 1.5 << "1.500";
    QTest::newRow("backwards, beyond a thousand turns") << -1234.5 << "-1234.500";
    QTest::newRow("a fraction is rounded") << 0.0006 << "0.001";
}

void TestDeviceStatusPage::positionHasThreeDecimalsAndDot()
{
    QFETCH(double, position);
    QLocale::setDefault(QLocale(QLocale::German));
    Z7Device drive = reachedDrive();
    drive.actualPosition = position;
    show(drive);
    QLocale::setDefault(QLocale::c());
    QTEST(shown->text("lCurrentPositionDevice"), "text");
}

void TestDeviceStatusPage::driveThatIsNotReportedKeepsItsNameAndRedLamp_data()
{
    QTest::addColumn<bool>("access");
    QTest::addColumn<int>("error");
    QTest::newRow("no access") << false << 0;
    QTest::newRow("any error") << true << 19;
    QTest::newRow("lost") << false << 7;
}

void TestDeviceStatusPage::driveThatIsNotReportedKeepsItsNameAndRedLamp()
{
    QFETCH(bool, access);
    QFETCH(int, error);
    show(reachedDrive());
    Z7Device drive = reachedDrive();
    drive.assignAddress(9);
    drive.setAccessGranted(access);
    drive.setDeviceError(error);
    shown->page->DeviceUpdate(drive);
    for (const QString &name : groups + identity)
        QVERIFY2(!shown->child<QWidget>(name)->isVisible(), qPrintable(name));
    QVERIFY(shown->child<QWidget>("gbDevice")->isVisible());
    QCOMPARE(shown->text("lDeviceName"), deviceName(drive));
    QCOMPARE(lamp("lDeviceStatusIcon"), QStringLiteral("Red"));
}

void TestDeviceStatusPage::driveThatComesBackIsShownWhole()
{
    show(driveWith({}));
    shown->page->DeviceUpdate(reachedDrive());
    for (const QString &name : groups + identity)
        QVERIFY2(shown->child<QWidget>(name)->isVisible(), qPrintable(name));
    QCOMPARE(lamp("lDeviceStatusIcon"), QStringLiteral("Green"));
}

void TestDeviceStatusPage::pageWithoutDriveHasItsLampsOff()
{
    QCOMPARE(lamps(), (QStringList {"Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray"}));
    QCOMPARE(lamp("lDeviceStatusIcon"), QStringLiteral("Green"));
}

void TestDeviceStatusPage::networkPageIsEmpty()
{
    ShownPage network(PageNumber::Network);
    QCOMPARE(network.page->objectName(), QStringLiteral("NetworkDialog"));
    QCOMPARE(network.page->windowTitle(), QStringLiteral("Form"));
    QCOMPARE(network.page->size(), QSize(400, 300));
    network.showFor(reachedDrive());
    QVERIFY(network.page->findChildren<QWidget *>().isEmpty());
}

QTEST_MAIN(TestDeviceStatusPage)

#include "tst_devicestatuspage.moc"
