#include "shell/wizard/connectionsdialog.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/keyboard.h"
#include "pages/pagefactory.h"
#include "pages/pagestyle.h"
#include "shell/pageicon.h"
#include "shell/wizard/confirmconnectionwizardwidget.h"
#include "shell/wizard/introductionwizardwidget.h"
#include "shell/wizard/scanningwizardwidget.h"
#include "shell/wizard/scanportwizardwidget.h"
#include "shell/wizard/setpasswordwizardwidget.h"
#include "shell/wizard/wizardrows.h"
#include "ui_connectionsdialog.h"

#include <QKeyEvent>
#include <QSerialPortInfo>
#include <QSet>

#include <algorithm>

namespace {

constexpr int deviceRole = Qt::UserRole;

void setButton(QPushButton *button, const QString &text, const char *icon)
{
    button->setText(text);
    button->setIcon(QIcon(QString::fromLatin1(icon)));
}

bool isReturn(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

Z7Device deviceOf(const QTreeWidgetItem *row)
{
    return row->data(0, deviceRole).value<Z7Device>();
}

/// True if one of the drives is at the same place as this one.
bool isAmong(const QList<Z7Device> &devices, const Z7Device &sought)
{
    return std::any_of(devices.begin(), devices.end(), [&sought](const Z7Device &device) {
        return device.address == sought.address && device.portInfo.portName() == sought.portInfo.portName();
    });
}

/// A drive with default fields on every port of the system, those of the preferred USB vendor at the head.
QList<Z7Device> candidates()
{
    const int preferredVendor = Z7Services::instance()->options()->defaultVendorID();
    QList<Z7Device> devices;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports) {
        if (port.hasVendorIdentifier() && port.vendorIdentifier() == preferredVendor)
            devices.prepend(Z7Device(port));
        else
            devices.append(Z7Device(port));
    }
    return devices;
}

} // namespace

ConnectionsDialog::ConnectionsDialog(Z7MainController *controller, QWidget *parent)
    : QDialog(parent)
    , m_controller(controller)
    , m_ui(std::make_unique<Ui::ConnectionsDialog>())
{
    m_ui->setupUi(this);
    setTexts();
    PageStyle::paintHeader(m_ui->TopFrame);
    m_ui->LbConnectedDevices->setSelectionMode(QAbstractItemView::MultiSelection);
    Keyboard::showFocus(m_ui->LbConnectedDevices);
    Keyboard::showFocus(m_ui->BtnNext);
    const QList<QPushButton *> buttons = findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        button->installEventFilter(this);
    setFixedSize(sizeForFont());
    hideWizardButtons();
    connectButtons();
}

ConnectionsDialog::~ConnectionsDialog() = default;

QSize ConnectionsDialog::sizeForFont() const
{
    // The rows of the steps get wider with the font. The form's own size is made for 10 points.
    constexpr qreal formPoints = 10;
    const qreal ratio = std::max(1.0, PageStyle::pointsOf(font()) / formPoints);
    return QSize(qRound(width() * ratio), height()).expandedTo(minimumSizeHint());
}

Z7MainController *ConnectionsDialog::controller() const
{
    return m_controller;
}

void ConnectionsDialog::setTexts()
{
    setWindowTitle(connectionText("Title", "Verbindungseinstellungen"));
    m_ui->LIntroduction->setText(connectionText("Introduction", ""));
    setButton(m_ui->BtnCancel, commonText("Close", "Schließen"), ":/images/cancel-icon.png");
    setButton(m_ui->BtnOK, commonText("OK", "OK"), ":/images/tick-icon_24px.png");
    setButton(m_ui->BtnRemoveConnection, connectionText("RemoveConnection", "Z7 entfernen"),
        ":/images/remove_24px.png");
    setButton(m_ui->BtnQuickConnect, connectionText("QuickConnect", "Quickconnect"),
        ":images/ConnectIcon_24px.png");
    setButton(
        m_ui->BtnManual, connectionText("ManualConnection", "Manuell"), ":images/USB-Connection_24px.png");
    setButton(m_ui->BtnScanPort, connectionText("ScanPort", "Port scannen"), ":images/search-icon_24px.png");
    setButton(
        m_ui->BtnScanAllPorts, connectionText("ScanAllPorts", "Alle Ports scannen"), ":images/Zoom_24px.png");
    setButton(m_ui->BtnPrevious, connectionText("PreviousButton", "Zurück"), ":/images/back-icon_24px.png");
    setButton(m_ui->BtnNext, connectionText("NextButton", "Weiter"), ":/images/forward-icon_24px.png");
    m_ui->LbConnectedDevices->setHeaderLabel(connectionText("CurrentConnections", "Verbindungen"));
    m_ui->LbConnectedDevices->setAccessibleName(connectionText("CurrentConnections", "Verbindungen"));
}

void ConnectionsDialog::connectButtons()
{
    connect(m_ui->BtnNext, SIGNAL(clicked()), SLOT(nextWizardPage()));
    connect(m_ui->BtnPrevious, SIGNAL(clicked()), SLOT(previousWizardPage()));
    connect(m_ui->BtnOK, SIGNAL(clicked()), SLOT(closeDialog()));
    connect(m_ui->BtnCancel, SIGNAL(clicked()), SLOT(close()));
    connect(m_ui->BtnRemoveConnection, SIGNAL(clicked()), SLOT(removeSelectedConnections()));
    connect(m_ui->BtnScanPort, SIGNAL(clicked()), SLOT(initScanPortWizard()));
    connect(m_ui->BtnManual, SIGNAL(clicked()), SLOT(initConnectDeviceManualWizard()));
    connect(m_ui->BtnQuickConnect, SIGNAL(clicked()), SLOT(initQuickConnectWizard()));
    connect(m_ui->BtnScanAllPorts, SIGNAL(clicked()), SLOT(initAllPortsWizard()));
}

void ConnectionsDialog::setNavigationEnabled(bool enabled, bool okOnly)
{
    if (okOnly) {
        m_ui->BtnOK->setEnabled(enabled || m_ui->LbConnectedDevices->topLevelItemCount() > 0);
        return;
    }
    for (QPushButton *button : {m_ui->BtnNext, m_ui->BtnPrevious, m_ui->BtnCancel, m_ui->BtnScanPort,
             m_ui->BtnQuickConnect, m_ui->BtnManual, m_ui->BtnScanAllPorts, m_ui->BtnRemoveConnection})
        button->setEnabled(enabled);
}

bool ConnectionsDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto &key = static_cast<const QKeyEvent &>(*event);
        if (isReturn(key) && key.isAutoRepeat())
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

void ConnectionsDialog::keyPressEvent(QKeyEvent *event)
{
    if (isReturn(*event) && (event->isAutoRepeat() || !m_returnGoesOn))
        return;
    QDialog::keyPressEvent(event);
}

void ConnectionsDialog::setReturnGoesOn(bool goesOn)
{
    m_returnGoesOn = goesOn;
    m_ui->BtnNext->setDefault(goesOn);
}

void ConnectionsDialog::goToButton(bool goesOn)
{
    (goesOn ? m_ui->BtnNext : m_ui->BtnPrevious)->setFocus();
}

void ConnectionsDialog::reject()
{
    // The escape key and the title bar are no way round the disabled buttons.
    if (!m_ui->BtnCancel->isEnabled())
        return;
    takeOutOfFrame();
    QDialog::reject();
}

// --- the ways to connect drives ---

void ConnectionsDialog::initQuickConnectWizard()
{
    Pages pages;
    pages.push_back(
        std::make_unique<ConfirmConnectionWizardWidget>(ConfirmConnectionWizardWidget::QuickConnect, this));
    startWizard(std::move(pages));
}

void ConnectionsDialog::initConnectDeviceManualWizard()
{
    Pages pages;
    pages.push_back(std::make_unique<ScanPortWizardWidget>(ScanPortWizardWidget::Manual, this));
    pages.push_back(
        std::make_unique<ConfirmConnectionWizardWidget>(ConfirmConnectionWizardWidget::EachDrive, this));
    startWizard(std::move(pages));
}

void ConnectionsDialog::initScanPortWizard()
{
    startScanWizard(std::make_unique<ScanPortWizardWidget>(ScanPortWizardWidget::PortOnly, this));
}

void ConnectionsDialog::initAllPortsWizard()
{
    startScanWizard(std::make_unique<IntroductionWizardWidget>(
        connectionText("ScanAllPortsIntroduction", "Mit <Weiter> werden alle verfügbaren Ports gescannt."),
        this));
}

void ConnectionsDialog::startScanWizard(std::unique_ptr<IWizardWidget> firstPage)
{
    Pages pages;
    pages.push_back(std::move(firstPage));
    pages.push_back(std::make_unique<ScanningWizardWidget>(this));
    pages.push_back(std::make_unique<SetPasswordWizardWidget>(this));
    pages.push_back(
        std::make_unique<ConfirmConnectionWizardWidget>(ConfirmConnectionWizardWidget::EachDrive, this));
    startWizard(std::move(pages));
}

void ConnectionsDialog::startWizard(Pages pages)
{
    endWizard();
    m_pages = std::move(pages);
    m_pageIndex = 0;
    m_ui->BtnOK->setEnabled(false);
    currentPage().setDevices(candidates());
    m_ui->BtnPrevious->hide();
    m_ui->BtnNext->show();
    enter(currentPage());
}

void ConnectionsDialog::nextWizardPage()
{
    if (!hasCurrentPage() || !currentPage().leavePage())
        return;
    const QList<Z7Device> devices = currentPage().devices();
    if (m_pageIndex + 1 < m_pages.size()) {
        ++m_pageIndex;
        currentPage().setDevices(devices);
        m_ui->BtnPrevious->show();
        enter(currentPage());
        return;
    }
    takeOutOfFrame();
    hideWizardButtons();
    for (const Z7Device &device : devices)
        addOrUpdateRow(device);
    if (m_ui->BtnOK->isEnabled())
        m_ui->BtnOK->setFocus();
    else
        m_ui->LbConnectedDevices->setFocus();
}

void ConnectionsDialog::previousWizardPage()
{
    if (!hasCurrentPage() || m_pageIndex == 0)
        return;
    const QList<Z7Device> devices = currentPage().devices();
    --m_pageIndex;
    currentPage().setDevices(devices);
    m_ui->BtnPrevious->setVisible(m_pageIndex > 0);
    m_ui->BtnOK->setEnabled(false);
    enter(currentPage());
}

bool ConnectionsDialog::hasCurrentPage() const
{
    return m_pageIndex < m_pages.size();
}

void ConnectionsDialog::enter(IWizardWidget &page)
{
    setReturnGoesOn(true);
    putInFrame(page);
    page.enterPage();
    Keyboard::putInTabOrder(page.widget(), m_ui->BtnScanAllPorts);
}

void ConnectionsDialog::putInFrame(IWizardWidget &page)
{
    takeOutOfFrame();
    page.widget()->setParent(m_ui->WizardWidget);
    m_ui->WizardLayout->addWidget(page.widget());
    page.widget()->show();
    if (page.firstField())
        page.firstField()->setFocus();
    else
        goToButton(true);
}

void ConnectionsDialog::takeOutOfFrame()
{
    for (const auto &page : m_pages) {
        if (page->widget()->parentWidget() != m_ui->WizardWidget)
            continue;
        PageStyle::takeOut(page->widget());
    }
}

/// Also from the middle of a scan, which had the buttons disabled.
void ConnectionsDialog::endWizard()
{
    takeOutOfFrame();
    setNavigationEnabled(true, false);
}

void ConnectionsDialog::hideWizardButtons()
{
    m_ui->BtnPrevious->hide();
    m_ui->BtnNext->hide();
}

// --- the list of drives ---

void ConnectionsDialog::fill(const QList<Z7Device> &devices)
{
    endWizard();
    hideWizardButtons();
    m_ui->LbConnectedDevices->clear();
    for (const Z7Device &device : devices)
        addRow(device);
    if (devices.isEmpty())
        m_ui->BtnQuickConnect->setFocus();
    else
        m_ui->LbConnectedDevices->setFocus();
}

void ConnectionsDialog::addOrUpdateRow(const Z7Device &device)
{
    QTreeWidgetItem *row = rowOf(device.deviceId());
    if (!row) {
        addRow(device);
        return;
    }
    Z7Device known = deviceOf(row);
    known.copyConnectionState(device);
    row->setData(0, deviceRole, QVariant::fromValue(known));
}

void ConnectionsDialog::addRow(const Z7Device &device)
{
    auto *row = new QTreeWidgetItem(m_ui->LbConnectedDevices, {deviceName(device)});
    row->setData(0, Qt::AccessibleTextRole,
        deviceName(device) + pageMarks(PageNumber::DeviceStatus, false, device.accessGranted));
    row->setData(0, deviceRole, QVariant::fromValue(device));
    row->setIcon(0, pageIcon(PageNumber::DeviceStatus, device.deviceId(), false, device.accessGranted));
}

QTreeWidgetItem *ConnectionsDialog::rowOf(int deviceId) const
{
    for (int i = 0; i < m_ui->LbConnectedDevices->topLevelItemCount(); ++i) {
        QTreeWidgetItem *row = m_ui->LbConnectedDevices->topLevelItem(i);
        if (deviceOf(row).deviceId() == deviceId)
            return row;
    }
    return nullptr;
}

QList<Z7Device> ConnectionsDialog::listedDevices() const
{
    QList<Z7Device> devices;
    for (int i = 0; i < m_ui->LbConnectedDevices->topLevelItemCount(); ++i)
        devices.append(deviceOf(m_ui->LbConnectedDevices->topLevelItem(i)));
    return devices;
}

void ConnectionsDialog::removeSelectedConnections()
{
    for (int i = m_ui->LbConnectedDevices->topLevelItemCount() - 1; i >= 0; --i) {
        if (m_ui->LbConnectedDevices->topLevelItem(i)->isSelected())
            delete m_ui->LbConnectedDevices->takeTopLevelItem(i);
    }
}

void ConnectionsDialog::closeDialog()
{
    QList<Z7Device> devices = listedDevices();
    QSet<int> listed;
    for (const Z7Device &device : qAsConst(devices))
        listed.insert(device.deviceId());
    const QList<Z7Device> selected = hasCurrentPage() ? currentPage().selectedDevices() : QList<Z7Device>();
    QList<Z7Device> hidden;
    for (const Z7Device &device : selected) {
        if (device.accessGranted && !listed.contains(device.deviceId())) {
            listed.insert(device.deviceId());
            devices.append(device);
        } else if (device.accessGranted && !isAmong(devices, device)) {
            hidden.append(device);
        }
    }
    // Of one id the last is listed, and the others are known to be hidden by it.
    m_controller->setDevices(hidden + devices);
    close();
}
