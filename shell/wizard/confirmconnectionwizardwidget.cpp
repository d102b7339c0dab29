#include "shell/wizard/confirmconnectionwizardwidget.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "protocol/telegram.h"
#include "shell/wizard/connectionsdialog.h"
#include "shell/wizard/wizardrows.h"
#include "ui_confirmconnectionwizardwidget.h"

#include <QCheckBox>
#include <QHideEvent>
#include <QLabel>

#include <algorithm>

ConfirmConnectionWizardWidget::ConfirmConnectionWizardWidget(Way way, ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_way(way)
    , m_ui(std::make_unique<Ui::ConfirmConnectionWizardWidget>())
{
    m_ui->setupUi(this);
    watchPorts(SLOT(tellOfPorts()));
    preparePause(&m_pause, SLOT(SendConnectCurrentDevice()));
    m_ui->scrollArea->setAccessibleName(toolTipText("Drives", "Antriebe"));
    Keyboard::showFocus(m_ui->scrollArea);
    m_firstField = m_ui->scrollArea;
}

ConfirmConnectionWizardWidget::~ConfirmConnectionWizardWidget()
{
    forgetLogOn();
}

void ConfirmConnectionWizardWidget::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        forgetLogOn();
}

void ConfirmConnectionWizardWidget::forgetLogOn()
{
    m_pause.stop();
    stopListening(this);
}

void ConfirmConnectionWizardWidget::enterPage()
{
    forgetLogOn();
    WizardRows::removeRows(m_ui->verticalLayout_3);
    m_rows.clear();
    // Whoever presses the return key twice would go on without a drive that has let him in.
    m_dialog->setReturnGoesOn(false);
    if (m_way == QuickConnect)
        m_devices = m_devices.mid(0, 1);
    if (m_devices.isEmpty()) {
        WizardRows::addLabel(WizardRows::addRow(m_ui->verticalLayout_3),
            connectionText("NoDeviceFound", "Kein Z7-Motor erkannt."));
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
    row.check->setFont(PageStyle::boldFont());
    layout->addWidget(row.check);
    row.status = WizardRows::addLabel(layout, QString());
    row.status->setFixedHeight(WizardRows::statusHeight);
    row.status->hide();
    row.text = WizardRows::addLabel(layout, QString());
    row.text->setFixedHeight(WizardRows::statusHeight);
    WizardRows::endRow(layout);
    row.portName = device.portInfo.portName();
    WizardRows::tellOfPort(row.check, portState(row.portName));
    m_rows.append(row);
}

void ConfirmConnectionWizardWidget::tellOfPorts()
{
    for (const Row &row : qAsConst(m_rows))
        WizardRows::tellOfPort(row.check, portState(row.portName));
}

void ConfirmConnectionWizardWidget::SendConnectCurrentDevice()
{
    if (!hasCurrentDevice())
        return;
    m_started = false;
    m_answered = false;
    m_dialog->controller()->readDeviceStatus(m_devices.at(m_currentDevice), this);
}

void ConfirmConnectionWizardWidget::transactionStarted(int maxProgress, const Z7Device &device)
{
    Q_UNUSED(maxProgress)
    if (!hasCurrentDevice() || !isAboutCurrentDevice(device))
        return;
    m_started = true;
    m_rows.at(m_currentDevice).status->show();
}

bool ConfirmConnectionWizardWidget::isAboutCurrentDevice(const Z7Device &device) const
{
    const Z7Device &asked = m_devices.at(m_currentDevice);
    return device.address == asked.address && device.password == asked.password
        && device.portInfo.portName() == asked.portInfo.portName();
}

void ConfirmConnectionWizardWidget::DeviceUpdate(const Z7Device &device)
{
    if (!hasCurrentDevice() || !isAboutCurrentDevice(device))
        return;
    // While the bus is not to be had, a log-on ends before it has begun. Its record is the one that was asked
    // with, access of an earlier visit included.
    const bool isRefused = device.error == TelegramError::TransactionAborted;
    // The record of an earlier page's log-on is none of this row's.
    if (!m_started && !isRefused)
        return;
    m_answered = true;
    Z7Device outcome = device;
    if (isRefused)
        outcome.setAccessGranted(false);
    showOutcome(outcome);
}

void ConfirmConnectionWizardWidget::showOutcome(const Z7Device &device)
{
    m_devices[m_currentDevice] = device;
    const Row &row = m_rows.at(m_currentDevice);
    row.check->setEnabled(device.isAccessGranted());
    row.check->setChecked(device.isAccessGranted());
    row.status->show();
    WizardRows::showOutcome(row.status, device.isAccessGranted());
}

void ConfirmConnectionWizardWidget::transactionTerminated()
{
    if (!hasCurrentDevice())
        return;
    if (m_answered && m_currentDevice + 1 == m_devices.size()) {
        if (!selectedDevices().isEmpty()) {
            setNavigationEnabled(true, true);
            m_dialog->setReturnGoesOn(true);
            goToFirstTick();
        }
        return;
    }
    // Without an answer it was an earlier page's log-on that has ended. It kept this one from starting.
    if (m_answered)
        ++m_currentDevice;
    m_pause.start();
}

void ConfirmConnectionWizardWidget::goToFirstTick()
{
    if (!hasDialogsFocus(m_ui->scrollArea))
        return;
    const auto row = std::find_if(
        m_rows.cbegin(), m_rows.cend(), [](const Row &tried) { return tried.check->isChecked(); });
    if (row != m_rows.cend())
        row->check->setFocus();
}

QList<Z7Device> ConfirmConnectionWizardWidget::selectedDevices()
{
    QList<Z7Device> selected;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (isShown(i) && m_rows.at(i).check->isVisible() && m_rows.at(i).check->isChecked())
            selected.append(m_devices.at(i));
    }
    return selected;
}

bool ConfirmConnectionWizardWidget::leavePage()
{
    forgetLogOn();
    QList<Z7Device> checked;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (isShown(i) && m_rows.at(i).check->isChecked())
            checked.append(m_devices.at(i));
    }
    // With nothing ticked the whole list goes on.
    if (!checked.isEmpty())
        m_devices = checked;
    return true;
}
