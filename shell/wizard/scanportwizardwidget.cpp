#include "shell/wizard/scanportwizardwidget.h"

#include "control/services/language.h"
#include "model/drivefacts.h"
#include "pages/integervalidator.h"
#include "pages/keyboard.h"
#include "shell/wizard/wizardrows.h"
#include "ui_scanportwizardwidget.h"

Q_DECLARE_METATYPE(QSerialPortInfo)

namespace {

/// "ttyUSB0 [busy] (USB adapter) - 1027": what helps a person to tell the ports apart.
QString portText(const QSerialPortInfo &port)
{
    QString text = port.portName();
    if (port.isBusy())
        text += QStringLiteral(" [busy]");
    text += QStringLiteral(" (") + port.description() + QStringLiteral(")");
    if (port.hasVendorIdentifier())
        text += QStringLiteral(" - ") + QString::number(port.vendorIdentifier());
    return text;
}

} // namespace

ScanPortWizardWidget::ScanPortWizardWidget(Way way, ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_way(way)
    , m_ui(std::make_unique<Ui::ScanPortWizardWidget>())
{
    m_ui->setupUi(this);
    m_ui->LPort->setText(connectionText("Port", "Port"));
    m_ui->LAdress->setText(connectionText("Adress", "Adresse"));
    m_ui->LPassword->setText(connectionText("Password", "Passwort"));
    m_ui->cbPorts->setAccessibleName(m_ui->LPort->text());
    Keyboard::letWheelPass(m_ui->cbPorts);
    m_firstField = m_ui->cbPorts;
    m_ui->BtnScanPorts->setIcon(QIcon(QStringLiteral(":/images/refresh-icon.png")));
    m_ui->BtnScanPorts->setAccessibleName(toolTipText("RefreshPorts", "Ports aktualisieren"));
    connect(m_ui->BtnScanPorts, SIGNAL(clicked()), SLOT(updatePorts()));
    m_ui->EdAdress->setValidator(new IntegerValidator(lowestBusAddress, highestBusAddress, this));
    m_ui->EdAdress->setText(QString::number(lowestBusAddress));
    m_ui->EdPassword->setValidator(new IntegerValidator(this));
    m_ui->EdPassword->setText(QStringLiteral("0"));
    for (QWidget *widget : {static_cast<QWidget *>(m_ui->LAdress), static_cast<QWidget *>(m_ui->EdAdress),
             static_cast<QWidget *>(m_ui->LPassword), static_cast<QWidget *>(m_ui->EdPassword)})
        widget->setVisible(m_way == Manual);
}

ScanPortWizardWidget::~ScanPortWizardWidget() = default;

void ScanPortWizardWidget::enterPage()
{
    updatePorts();
}

void ScanPortWizardWidget::updatePorts()
{
    m_ui->cbPorts->clear();
    for (const Z7Device &device : qAsConst(m_devices))
        m_ui->cbPorts->addItem(portText(device.portInfo), QVariant::fromValue(device.portInfo));
}

bool ScanPortWizardWidget::leavePage()
{
    if (m_ui->cbPorts->currentIndex() < 0)
        return false;
    Z7Device device(m_ui->cbPorts->currentData().value<QSerialPortInfo>());
    if (m_way == Manual) {
        device.assignAddress(m_ui->EdAdress->text().toInt());
        device.setPassword(m_ui->EdPassword->text().toInt());
    }
    m_devices = {device};
    return true;
}
