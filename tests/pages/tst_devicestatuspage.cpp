// The home page of a drive: what a person sees of one record.

#include "pages/pagestyle.h"
#include "tests/pages/shownpage.h"
#include "tests/support/workingfolder.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLocale>

#include <optional>

namespace {

struct StatusBit
{
    const char *name; ///< of the lamp and of the text
    const char *text;
    const char *litLamp;
};

/// From bit 0 to bit 7.
const QVector<StatusBit> statusBitTable {
    {"OverTemp", "Antrieb erkennt Übertemperatur", "Red"},
    {"Active", "Antrieb ist aktiv", "Green"},
    {"OverVoltage", "Antrieb erkennt Überspannung", "Red"},
    {"UnderVoltage", "Antrieb erkennt Unterspannung", "Red"},
    {"HardwareError", "Antrieb erkennt Hardwarefehler", "Red"},
    {"OverPower", "Antrieb erkennt Überstrom", "Red"},
    {"AckRequired", "Antrieb benötigt eine Quittierung", "Yellow"},
    {"Ready", "Antrieb ist bereit", "Green"},
};

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

class TestDeviceStatusPage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textsStandAtTheirPlaces_data();
    void textsStandAtTheirPlaces();
    void textsAreInTheUsersLanguage();
    void unitsAreThoseOfTheLiveValues();

    void eachStatusBitHasItsLamp_data();
    void eachStatusBitHasItsLamp();
    void noStatusBitGivesEightGrayLamps();
    void allStatusBitsLightAllLampsAndNothingElse();
    void eachOutputAndInputHasItsLamp_data();
    void eachOutputAndInputHasItsLamp();

    void nameVersionAddressAndModesAreShown();
    void modesWithoutTextsLeaveTheSlashInItsBracket();
    void liveValuesAreShownInDecimal();
    void positionHasThreeDecimalsAndADot();

    void driveThatIsNotReportedKeepsItsNameAndARedLamp_data();
    void driveThatIsNotReportedKeepsItsNameAndARedLamp();
    void driveThatComesBackIsShownWhole();
    void pageWithoutADriveHasItsLampsOff();
    void pageHasNothingToEdit();
    void networkPageIsEmpty();

private:
    void show(const Z7Device &drive) { shown->showFor(drive); }
    /// "Red", "Green", "Yellow" or "Gray".
    QString lamp(const QString &name) const;
    QStringList lamps() const;

    std::optional<WorkingFolder> folder;
    std::optional<ShownPage> shown;
};

void TestDeviceStatusPage::init()
{
    folder.emplace();
    shown.emplace(PageNumber::DeviceStatus);
}

void TestDeviceStatusPage::cleanup()
{
    shown.reset();
    folder.reset();
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

void TestDeviceStatusPage::textsStandAtTheirPlaces_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("text");
    const auto row = [](const QString &object, const char *text) {
        QTest::newRow(qPrintable(object)) << object << QString::fromUtf8(text);
    };
    row("lIntro", "");
    row("lMotor", "Antrieb:");
    row("lMotorSoftwareVersion", "Softwareversion:");
    row("lOperationStatus", "Betriebsmodus:");
    row("lMotorAdress", "Adresse:");
    row("lDeviceStatus", "Gerätestatus:");
    row("gbMotorStatus", "Motorstatus");
    row("gbRotations", "Ist-Drehzahl");
    row("gbPower", "Ist-Strom");
    row("gbPosition", "Ist-Position");
    row("gbTemperature", "Ist-Temperatur");
    row("gbOutput", "Ausgänge");
    row("gbInput", "Digitaleingänge");
    row("gbAnalogInputA1", "Analogeingang A1");
    row("edOutput_1", "Ausgang O1");
    row("edOutput_2", "Ausgang O2");
    row("edOutput_3", "Ausgang O3");
    row("edInput_1", "Digitaleingang 1");
    row("edInput_2", "Digitaleingang 2");
    row("edInput_3", "Digitaleingang 3");
    row("edInput_4", "Digitaleingang 4");
    for (const StatusBit &bit : statusBitTable)
        row(QString("cb") + bit.name, bit.text);
}

void TestDeviceStatusPage::textsStandAtTheirPlaces()
{
    QFETCH(QString, object);
    show(reachedDrive());
    const auto *widget = shown->child<QWidget>(object);
    const QVariant title = widget->property("title");
    QTEST(title.isValid() ? title.toString() : widget->property("text").toString(), "text");
}

void TestDeviceStatusPage::textsAreInTheUsersLanguage()
{
    folder->writeText("deutsch.z7lang",
        "[DialogDeviceStatus]\nIntroduction=a\nMotor=b\nMotorstatus=c\nCurrentOuput=d\nCurrentDigitalInput="
        "e\n"
        "AnalogInputA1=f\nStatusOverTemp=g\nStatusReady=h\nOutputO2=i\nDigitalInput4=j\nAdress=k\n"
        "CurrentRotations=l\nCurrentPower=m\nCurrentPosition=n\nCurrentTemperature=o\nSoftwareVersion=p\n"
        "OperationStatus=q\nDeviceStatus=r\n");
    show(reachedDrive());
    const auto title = [this](const char *name) { return shown->child<QGroupBox>(name)->title(); };
    QCOMPARE(shown->text("lIntro") + shown->text("lMotor") + title("gbMotorStatus") + title("gbOutput")
            + title("gbInput") + title("gbAnalogInputA1") + shown->child<QCheckBox>("cbOverTemp")->text()
            + shown->child<QCheckBox>("cbReady")->text() + shown->text("edOutput_2")
            + shown->text("edInput_4") + shown->text("lMotorAdress") + title("gbRotations") + title("gbPower")
            + title("gbPosition") + title("gbTemperature") + shown->text("lMotorSoftwareVersion")
            + shown->text("lOperationStatus") + shown->text("lDeviceStatus"),
        QStringLiteral("abcdefghijklmnopqr"));
    QVERIFY(shown->label("lIntro")->isVisible());
}

void TestDeviceStatusPage::unitsAreThoseOfTheLiveValues()
{
    for (const int number : {0x8001, 0x8007, 0x8004, 0x8005, 0x800D})
        defineParameters("V123", {QString("%1;Wert;u%1;0;0;0;Signed;1;r;0;").arg(number)});
    folder->writeText("deutsch.z7lang", "[ParamDefinition]\nu32773=degrees\n");
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

void TestDeviceStatusPage::nameVersionAddressAndModesAreShown()
{
    for (const int input : {1, 2})
        defineParameters(
            "V123", {QString("%1;Modus;;0;0;8;Unsigned;0;rw;0;Null %1;Eins %1;Zwei %1;").arg(input)});
    folder->writeText("deutsch.z7lang", "[ParamDefinition]\nZwei%202=two\n");
    show(inModes(reachedDrive(), 1, 2));
    QCOMPARE(shown->text("lDeviceName"), deviceName(reachedDrive()));
    QCOMPARE(shown->text("lMotorSoftwareVersion_2"), QStringLiteral("V123"));
    QCOMPARE(shown->text("lMotorAdress_2"), QStringLiteral("3"));
    QCOMPARE(shown->text("lOperationStatus_2"), QStringLiteral("1/2 (Eins 1/two)"));
}

void TestDeviceStatusPage::modesWithoutTextsLeaveTheSlashInItsBracket()
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

void TestDeviceStatusPage::positionHasThreeDecimalsAndADot()
{
    QLocale::setDefault(QLocale(QLocale::German));
    Z7Device drive = reachedDrive();
    drive.actualPosition = -1234.5;
    show(drive);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(shown->text("lCurrentPositionDevice"), QStringLiteral("-1234.500"));
}

void TestDeviceStatusPage::driveThatIsNotReportedKeepsItsNameAndARedLamp_data()
{
    QTest::addColumn<bool>("access");
    QTest::addColumn<int>("error");
    QTest::newRow("no access") << false << 0;
    QTest::newRow("any error") << true << 19;
    QTest::newRow("lost") << false << 7;
}

void TestDeviceStatusPage::driveThatIsNotReportedKeepsItsNameAndARedLamp()
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

void TestDeviceStatusPage::pageWithoutADriveHasItsLampsOff()
{
    QCOMPARE(lamps(), (QStringList {"Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray", "Gray"}));
    QCOMPARE(lamp("lDeviceStatusIcon"), QStringLiteral("Green"));
}

void TestDeviceStatusPage::pageHasNothingToEdit()
{
    show(reachedDrive());
    QVERIFY(shown->page->findChildren<QLineEdit *>().isEmpty());
    auto *text = shown->child<QCheckBox>("cbReady");
    QTest::mouseClick(shown->page.get(), Qt::LeftButton, Qt::NoModifier,
        text->mapTo(shown->page.get(), text->rect().center()));
    QVERIFY(!text->isChecked());
    QCOMPARE(text->focusPolicy(), Qt::NoFocus);
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
