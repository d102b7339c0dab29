#include "shell/wizard/confirmconnectionwizardwidget.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "pages/pagestyle.h"
#include "shell/wizard/connectionsdialog.h"
#include "shell/wizard/wizardrows.h"
#include "ui_confirmconnectionwizardwidget.h"

#include <QCheckBox>
#include <QLabel>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int pauseBetweenDrivesMs = 200;
constexpr int stretch = 100;

} // namespace

ConfirmConnectionWizardWidget::ConfirmConnectionWizardWidget(bool quickConnect, ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_quickConnect(quickConnect)
    , m_ui(std::make_unique<Ui::ConfirmConnectionWizardWidget>())
{
    m_ui->setupUi(this);
}

ConfirmConnectionWizardWidget::~ConfirmConnectionWizardWidget()
{
    if (Z7MainController *controller = m_dialog->controller())
        controller->removeCallback(this);
}

void ConfirmConnectionWizardWidget::enterPage()
{
    WizardRows::removeRows(m_ui->verticalLayout_3);
    m_rows.clear();
    if (m_quickConnect)
        m_devices = m_devices.mid(0, 1);
    if (m_devices.isEmpty()) {
        WizardRows::addLabel(WizardRows::addRow(m_ui->verticalLayout_3),
            languageText("DialogConnection", "NoDeviceFound", QStringLiteral("Kein Z7-Motor erkannt.")));
        return;
    }
    for (const Z7Device &device : qAsConst(m_devices))
        addRow(device);
    m_currentDevice = 0;
    SendConnectCurrentDevice();
}

void ConfirmConnectionWizardWidget::addRow(const Z7Device &device)
{
    QHBoxLayout *layout = WizardRows::addRow(m_ui->verticalLayout_3);
    Row row {};
    row.check = new QCheckBox(deviceName(device));
    row.check->setEnabled(false);
    row.check->setFont(WizardRows::boldFont());
    layout->addWidget(row.check);
    row.status = WizardRows::addLabel(layout, QString());
    row.status->setFixedHeight(WizardRows::statusHeight);
    row.status->hide();
    row.text = WizardRows::addLabel(layout, QString());
    row.text->setFixedHeight(WizardRows::statusHeight);
    layout->addStretch(stretch);
    m_rows.append(row);
}

void ConfirmConnectionWizardWidget::SendConnectCurrentDevice()
{
    if (!isConnecting())
        return;
    m_answered = false;
    m_dialog->controller()->readDeviceStatus(m_devices.at(m_currentDevice), this);
}

void ConfirmConnectionWizardWidget::transactionStarted(int maxProgress, const Z7Device &device)
{
    Q_UNUSED(maxProgress)
    if (isConnecting() && isAboutCurrentDevice(device))
        m_rows.at(m_currentDevice).status->show();
}

bool ConfirmConnectionWizardWidget::isConnecting() const
{
    return m_currentDevice < m_devices.size();
}

bool ConfirmConnectionWizardWidget::isAboutCurrentDevice(const Z7Device &device) const
{
    const Z7Device &asked = m_devices.at(m_currentDevice);
    return device.address == asked.address && device.portInfo.portName() == asked.portInfo.portName();
}

void ConfirmConnectionWizardWidget::DeviceUpdate(const Z7Device &device)
{
    // The log-on of an earlier wizard may still have been under way; its drive is none of this row's.
    if (!isConnecting() || !isAboutCurrentDevice(device))
        return;
    m_answered = true;
    m_devices[m_currentDevice] = device;
    const Row &row = m_rows.at(m_currentDevice);
    row.check->setEnabled(device.isAccessGranted());
    row.check->setChecked(device.isAccessGranted());
    row.status->setPixmap(PageStyle::smallPixmap(
        device.isAccessGranted() ? ":/images/tick-icon_16px.png" : ":/images/stop-icon_16px.png"));
}

void ConfirmConnectionWizardWidget::transactionTerminated()
{
    if (!isConnecting())
        return;
    if (!m_answered) {
        QTimer::singleShot(pauseBetweenDrivesMs, this, SLOT(SendConnectCurrentDevice()));
        return;
    }
    if (m_currentDevice + 1 < m_devices.size()) {
        ++m_currentDevice;
        QTimer::singleShot(pauseBetweenDrivesMs, this, SLOT(SendConnectCurrentDevice()));
        return;
    }
    if (!selectedDevices().isEmpty())
        setNavigationEnabled(true, true);
}

QList<Z7Device> ConfirmConnectionWizardWidget::selectedDevices()
{
    QList<Z7Device> selected;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).check->isVisible() && m_rows.at(i).check->isChecked())
            selected.append(m_devices.at(i));
    }
    return selected;
}

bool ConfirmConnectionWizardWidget::leavePage()
{
    QList<Z7Device> checked;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).check->isChecked())
            checked.append(m_devices.at(i));
    }
    // With nothing ticked the whole list goes on.
    if (!checked.isEmpty())
        m_devices = checked;
    // Drives that have not been tried by now are not waited for.
    m_currentDevice = m_devices.size();
    return true;
}
