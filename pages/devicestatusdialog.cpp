#include "pages/devicestatusdialog.h"

#include "control/services/language.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"
#include "pages/pagestyle.h"
#include "ui_devicestatusdialog.h"

namespace {

constexpr const char *redLamp = ":/images/RedIcon_16px.png";
constexpr const char *greenLamp = ":/images/GreenIcon_16px.png";
constexpr const char *yellowLamp = ":/images/YellowIcon_16px.png";
constexpr const char *grayLamp = ":/images/GrayIcon_16px.png";

/// One bit of the status byte. Its texts and its lamp bear its name: cbOverTemp, lOverTemp, StatusOverTemp.
struct StatusRow
{
    StatusBit::Mask mask;
    const char *name;
    const char *text;
    const char *litLamp;
};

constexpr StatusRow statusRows[] = {
    {StatusBit::OverTemperature, "OverTemp", "Antrieb erkennt Übertemperatur", redLamp},
    {StatusBit::Active, "Active", "Antrieb ist aktiv", greenLamp},
    {StatusBit::OverVoltage, "OverVoltage", "Antrieb erkennt Überspannung", redLamp},
    {StatusBit::UnderVoltage, "UnderVoltage", "Antrieb erkennt Unterspannung", redLamp},
    {StatusBit::HardwareError, "HardwareError", "Antrieb erkennt Hardwarefehler", redLamp},
    {StatusBit::OverCurrent, "OverPower", "Antrieb erkennt Überstrom", redLamp},
    {StatusBit::AcknowledgeRequired, "AckRequired", "Antrieb benötigt eine Quittierung", yellowLamp},
    {StatusBit::Ready, "Ready", "Antrieb ist bereit", greenLamp},
};

/// The text of one of several alike, such as "Ausgang O2" under the key OutputO2.
QString numberedText(const char *key, const char *text, int number)
{
    return DeviceStatusDialog::texts(
        (key + QByteArray::number(number)).constData(), (text + QByteArray::number(number)).constData());
}

void setLamp(QLabel *lamp, bool isLit, const char *litLamp)
{
    lamp->setPixmap(PageStyle::smallPixmap(isLit ? litLamp : grayLamp));
}

/// Screen readers hear of each setting, and are to hear of changes only.
void setName(QWidget *widget, const QString &name)
{
    if (widget->accessibleName() != name)
        widget->setAccessibleName(name);
}

/// Names a lamp, and the text beside it, with the state that a person sees.
void nameLamp(QWidget *lamp, QWidget *text, bool isLit)
{
    const QString words = text->property("text").toString();
    const QString name =
        (isLit ? toolTipText("LampOn", "%1: an") : toolTipText("LampOff", "%1: aus")).arg(words);
    setName(lamp, name);
    setName(text, name);
}

} // namespace

DeviceStatusDialog::DeviceStatusDialog(QWidget *parent)
    : EmptyDataWidget(parent)
    , m_ui(std::make_unique<Ui::DeviceStatusDialog>())
{
    m_ui->setupUi(this);
    showStatusBits();
    showInputsAndOutputs();
    setLamp(m_ui->lDeviceStatusIcon, true, greenLamp);
    reserveWidths();
    // The boxes only hold the texts of the lamps beside them.
    for (QCheckBox *text : findChildren<QCheckBox *>())
        text->setAttribute(Qt::WA_TransparentForMouseEvents);
}

DeviceStatusDialog::~DeviceStatusDialog() = default;

void DeviceStatusDialog::reserveWidths()
{
    // The widest number there is: no value is cut off or moves what stands around it.
    for (QLabel *value : {m_ui->lCurrentRotationsDevice, m_ui->lCurrentPowerDevice,
             m_ui->lCurrentPositionDevice, m_ui->lCurrentTempDevice, m_ui->edAnalogInput})
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("-2147483648")));
}

QLabel *DeviceStatusDialog::label(const QString &name) const
{
    return findChild<QLabel *>(name);
}

void DeviceStatusDialog::initPage()
{
    m_namedStates.reset();
    setTexts();
    setUnits();
}

void DeviceStatusDialog::setTexts()
{
    m_ui->lIntro->setText(texts("Introduction", ""));
    // An empty band above the groups would only take room from them.
    m_ui->topFrame->setVisible(!m_ui->lIntro->text().isEmpty());
    m_ui->lMotor->setText(texts("Motor", "Antrieb:"));
    m_ui->lMotorSoftwareVersion->setText(texts("SoftwareVersion", "Softwareversion:"));
    m_ui->lOperationStatus->setText(texts("OperationStatus", "Betriebsmodus:"));
    m_ui->lMotorAdress->setText(texts("Adress", "Adresse:"));
    m_ui->lDeviceStatus->setText(texts("DeviceStatus", "Gerätestatus:"));
    m_ui->gbMotorStatus->setTitle(texts("Motorstatus", "Motorstatus"));
    m_ui->gbRotations->setTitle(texts("CurrentRotations", "Ist-Drehzahl"));
    m_ui->gbPower->setTitle(texts("CurrentPower", "Ist-Strom"));
    m_ui->gbPosition->setTitle(texts("CurrentPosition", "Ist-Position"));
    m_ui->gbTemperature->setTitle(texts("CurrentTemperature", "Ist-Temperatur"));
    m_ui->gbOutput->setTitle(texts("CurrentOuput", "Ausgänge"));
    m_ui->gbInput->setTitle(texts("CurrentDigitalInput", "Digitaleingänge"));
    m_ui->gbAnalogInputA1->setTitle(texts("AnalogInputA1", "Analogeingang A1"));
    for (const StatusRow &bit : statusRows)
        findChild<QCheckBox *>(QStringLiteral("cb") + QLatin1String(bit.name))
            ->setText(texts((QByteArray("Status") + bit.name).constData(), bit.text));
    for (int number = 1; number <= digitalOutputCount; ++number)
        label(QStringLiteral("edOutput_%1").arg(number))
            ->setText(numberedText("OutputO", "Ausgang O", number));
    for (int number = 1; number <= digitalInputCount; ++number)
        label(QStringLiteral("edInput_%1").arg(number))
            ->setText(numberedText("DigitalInput", "Digitaleingang ", number));
}

void DeviceStatusDialog::setUnits()
{
    const auto setUnit = [this](QLabel *unit, int number) {
        unit->setText(definitionText(paramDefinitions()->paramUnit(number)));
    };
    // The live values, as the drive's read-only parameters.
    setUnit(m_ui->lCurrentRotationsUnit, ParameterNumber::ActualSpeed);
    setUnit(m_ui->lCurrentPowerUnit, ParameterNumber::ActualCurrent);
    setUnit(m_ui->lCurrentPositionUnit, ParameterNumber::ActualPositionTurns);
    setUnit(m_ui->lCurrentTempUnit, ParameterNumber::ActualTemperature);
    setUnit(m_ui->edAnalogInputUnit, ParameterNumber::AnalogInputA1);
}

void DeviceStatusDialog::DeviceUpdate(const Z7Device &d)
{
    EmptyDataWidget::DeviceUpdate(d);
    m_ui->lDeviceName->setText(deviceName(d));
    const bool isReported = d.isAccessGranted() && !d.hasError();
    showReported(isReported);
    m_ui->lDeviceStatusIcon->setPixmap(PageStyle::smallPixmap(isReported ? greenLamp : redLamp));
    nameLamps(isReported);
    if (!isReported)
        return;
    showIdentity();
    showStatusBits();
    showLiveValues();
    showInputsAndOutputs();
}

void DeviceStatusDialog::nameLamps(bool isReported)
{
    const std::array<int, 4> states {
        isReported, device.statusBits, device.digitalOutputs, device.digitalInputs};
    if (m_namedStates == states)
        return;
    m_namedStates = states;
    setName(m_ui->lDeviceStatusIcon,
        m_ui->lDeviceStatus->text() + QLatin1Char(' ')
            + (isReported ? toolTipText("DeviceGood", "in Ordnung") : toolTipText("DeviceBad", "gestört")));
    for (const StatusRow &bit : statusRows) {
        const QString name = QLatin1String(bit.name);
        nameLamp(label(QLatin1Char('l') + name), findChild<QCheckBox *>(QStringLiteral("cb") + name),
            device.statusBits & bit.mask);
    }
    for (int number = 1; number <= digitalOutputCount; ++number)
        nameLamp(label(QStringLiteral("lOutput_%1").arg(number)),
            label(QStringLiteral("edOutput_%1").arg(number)), device.isDigitalOutputSet(number));
    for (int number = 1; number <= digitalInputCount; ++number)
        nameLamp(label(QStringLiteral("lInput_%1").arg(number)),
            label(QStringLiteral("edInput_%1").arg(number)), device.isDigitalInputSet(number));
}

void DeviceStatusDialog::showReported(bool shown)
{
    QWidget *const parts[] = {m_ui->gbMotorStatus, m_ui->gbRotations, m_ui->gbPower, m_ui->gbPosition,
        m_ui->gbTemperature, m_ui->gbOutput, m_ui->gbInput, m_ui->gbAnalogInputA1,
        m_ui->lMotorSoftwareVersion_2, m_ui->lMotorAdress_2, m_ui->lOperationStatus_2};
    for (QWidget *part : parts)
        part->setVisible(shown);
}

void DeviceStatusDialog::showIdentity()
{
    m_ui->lMotorSoftwareVersion_2->setText(device.softwareVersion);
    m_ui->lMotorAdress_2->setText(QString::number(device.address));
    m_ui->lOperationStatus_2->setText(modePairText());
}

void DeviceStatusDialog::showStatusBits()
{
    for (const StatusRow &bit : statusRows)
        setLamp(label(QLatin1Char('l') + QLatin1String(bit.name)), device.statusBits & bit.mask, bit.litLamp);
}

void DeviceStatusDialog::showLiveValues()
{
    m_ui->lCurrentRotationsDevice->setText(QString::number(device.actualSpeed));
    m_ui->lCurrentPowerDevice->setText(QString::number(device.actualCurrent));
    m_ui->lCurrentPositionDevice->setText(QString::number(device.actualPosition, 'f', 3));
    m_ui->lCurrentTempDevice->setText(QString::number(device.actualTemperature));
    m_ui->edAnalogInput->setText(QString::number(device.analogInputA1));
}

void DeviceStatusDialog::showInputsAndOutputs()
{
    for (int number = 1; number <= digitalOutputCount; ++number)
        setLamp(
            label(QStringLiteral("lOutput_%1").arg(number)), device.isDigitalOutputSet(number), greenLamp);
    for (int number = 1; number <= digitalInputCount; ++number)
        setLamp(label(QStringLiteral("lInput_%1").arg(number)), device.isDigitalInputSet(number), greenLamp);
}
