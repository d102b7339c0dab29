#include "shell/wizard/scanningwizardwidget.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "protocol/telegram.h"
#include "shell/wizard/connectionsdialog.h"
#include "shell/wizard/wizardrows.h"
#include "ui_scanningwizardwidget.h"

#include <QHideEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int textIndent = 4;
/// It gives way to the button beside it, which must not leave the screen.
constexpr int leastProgressWidth = 48;

} // namespace

ScanningWizardWidget::ScanningWizardWidget(ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_ui(std::make_unique<Ui::ScanningWizardWidget>())
{
    m_ui->setupUi(this);
    watchPorts(SLOT(tellOfPorts()));
    preparePause(&m_pause, SLOT(scanDevice()));
    m_ui->scrollArea->setAccessibleName(toolTipText("Ports", "Ports"));
    Keyboard::showFocus(m_ui->scrollArea);
    m_firstField = m_ui->scrollArea;
}

ScanningWizardWidget::~ScanningWizardWidget()
{
    forgetScan();
}

void ScanningWizardWidget::hideEvent(QHideEvent *event)
{
    if (event->spontaneous())
        return;
    const bool wasScanning = isScanning();
    forgetScan();
    if (wasScanning)
        endScan();
}

void ScanningWizardWidget::forgetScan()
{
    m_pause.stop();
    stopListening(this);
}

void ScanningWizardWidget::enterPage()
{
    WizardRows::removeRows(m_ui->verticalLayout_3);
    m_rows.clear();
    m_foundDevices.clear();
    for (const Z7Device &device : qAsConst(m_devices))
        addRow(device);
    m_aborted = false;
    m_currentPort = 0;
    // Without a port there is nothing to wait for.
    if (m_rows.isEmpty())
        return;
    setNavigationEnabled(false, false);
    announceScan();
}

void ScanningWizardWidget::addRow(const Z7Device &device)
{
    QHBoxLayout *layout = WizardRows::addRow(m_ui->verticalLayout_3);
    WizardRows::addLabel(layout, device.portInfo.portName() + QStringLiteral(": "))
        ->setFont(PageStyle::boldFont());
    Row row {};
    row.progress = new QProgressBar;
    row.progress->setFixedHeight(WizardRows::statusHeight);
    row.progress->setMinimumWidth(leastProgressWidth);
    row.progress->setFont(PageStyle::fittingFont(
        *row.progress, QFont(), QSize(leastProgressWidth, WizardRows::statusHeight), QStringLiteral("100%")));
    PageStyle::keepPlaceWhenHidden(row.progress);
    row.progress->hide();
    layout->addWidget(row.progress);
    row.status = WizardRows::addLabel(layout, QStringLiteral(" "));
    row.text = WizardRows::addLabel(layout, QStringLiteral(" "));
    row.text->setIndent(textIndent);
    WizardRows::addLabel(layout, QStringLiteral(" "));
    row.abort =
        new QPushButton(QIcon(QStringLiteral(":/images/cancel-icon.png")), commonText("Abort", "Abbrechen"));
    row.abort->setAccessibleName(device.portInfo.portName() + QStringLiteral(": ") + row.abort->text());
    // A return key that is still held from the step before ends no scan.
    row.abort->setAutoDefault(false);
    PageStyle::keepPlaceWhenHidden(row.abort);
    row.abort->hide();
    connect(row.abort, SIGNAL(clicked()), SLOT(abortScanning()));
    layout->addWidget(row.abort);
    WizardRows::endRow(layout);
    row.portName = device.portInfo.portName();
    WizardRows::tellOfPort(row.text, portState(row.portName));
    m_rows.append(row);
}

void ScanningWizardWidget::tellOfPorts()
{
    for (const Row &row : qAsConst(m_rows))
        WizardRows::tellOfPort(row.text, portState(row.portName));
}

void ScanningWizardWidget::announceScan()
{
    m_rows.at(m_currentPort).text->setText(connectionText("Scanning", "Scanning..."));
    m_pause.start();
}

void ScanningWizardWidget::scanDevice()
{
    if (!hasCurrentPort())
        return;
    m_scanning = true;
    m_dialog->controller()->scanDevice(m_devices.at(m_currentPort), this);
}

void ScanningWizardWidget::abortScanning()
{
    m_aborted = true;
    m_dialog->controller()->cancelCommunication();
    // Between two ports there is no scan whose end could be waited for.
    if (m_pause.isActive())
        endScan();
}

void ScanningWizardWidget::transactionStarted(int maxProgress, const Z7Device &device)
{
    Q_UNUSED(device)
    if (!hasCurrentPort())
        return;
    const Row &row = m_rows.at(m_currentPort);
    row.progress->show();
    row.abort->show();
    if (hasDialogsFocus(m_ui->scrollArea))
        row.abort->setFocus();
    row.progress->setMaximum(maxProgress);
}

void ScanningWizardWidget::transactionProgress()
{
    if (!hasCurrentPort())
        return;
    QProgressBar *progress = m_rows.at(m_currentPort).progress;
    progress->setValue(progress->value() + 1);
}

void ScanningWizardWidget::DeviceUpdate(const Z7Device &device)
{
    if (!hasCurrentPort())
        return;
    // The record of a scan that the bus did not take is still the one that was asked with.
    if (device.isConnected() && device.error != TelegramError::TransactionAborted)
        m_foundDevices.append(device);
    const int found = countFoundOnPort(device.portInfo.portName());
    const Row &row = m_rows.at(m_currentPort);
    row.text->setText(connectionText("NDevicesFound", "%1 Gerät(e) erkannt").arg(found));
    WizardRows::showOutcome(row.status, found > 0);
}

int ScanningWizardWidget::countFoundOnPort(const QString &portName) const
{
    return static_cast<int>(std::count_if(m_foundDevices.cbegin(), m_foundDevices.cend(),
        [&portName](const Z7Device &device) { return device.portInfo.portName() == portName; }));
}

void ScanningWizardWidget::transactionTerminated()
{
    if (!hasCurrentPort())
        return;
    const Row &row = m_rows.at(m_currentPort);
    row.progress->hide();
    if (hasDialogsFocus(row.abort))
        m_ui->scrollArea->setFocus();
    row.abort->hide();
    if (!m_aborted && m_currentPort + 1 < m_rows.size()) {
        ++m_currentPort;
        announceScan();
        return;
    }
    endScan();
}

void ScanningWizardWidget::endScan()
{
    m_pause.stop();
    m_scanning = false;
    setNavigationEnabled(true, false);
    if (hasDialogsFocus(m_ui->scrollArea))
        m_dialog->goToButton(!m_foundDevices.isEmpty());
}

bool ScanningWizardWidget::leavePage()
{
    if (isScanning())
        return false;
    m_devices = m_foundDevices;
    return !m_devices.isEmpty();
}
