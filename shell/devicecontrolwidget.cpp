#include "shell/devicecontrolwidget.h"

#include "control/services/language.h"
#include "model/errorcodes.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "ui_devicecontrolwidget.h"

#include <QEvent>
#include <QFontMetrics>

#include <algorithm>

namespace {

/// Large letters, but two lines of them have to do.
QFont messageFont()
{
    constexpr qreal largestPoints = 14;
    QFont font = PageStyle::loudFont();
    font.setPointSizeF(std::min(PageStyle::pointsOf(font), largestPoints));
    return font;
}

const char *lampResource(DriveCondition condition)
{
    switch (condition) {
    case DriveCondition::Fault:
        return ":/images/RedIcon_16px.png";
    case DriveCondition::AcknowledgeRequired:
        return ":/images/YellowIcon_16px.png";
    case DriveCondition::Working:
        return ":/images/GreenIcon_16px.png";
    default:
        return ":/images/GrayIcon_16px.png";
    }
}

QString lampName(DriveCondition condition)
{
    switch (condition) {
    case DriveCondition::Fault:
        return toolTipText("LampFault", "Antrieb: Störung");
    case DriveCondition::AcknowledgeRequired:
        return toolTipText("LampAcknowledge", "Antrieb: Quittierung nötig");
    case DriveCondition::Working:
        return toolTipText("LampWorking", "Antrieb: aktiv oder bereit");
    default:
        return toolTipText("LampIdle", "Antrieb: weder aktiv noch bereit");
    }
}

} // namespace

DeviceControlWidget::DeviceControlWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::DeviceControlWidget>())
{
    m_ui->setupUi(this);
    const QList<QLabel *> labels = findChildren<QLabel *>();
    for (QLabel *label : labels) {
        label->setText(QString());
        label->setTextFormat(Qt::PlainText);
        PageStyle::keepPlaceWhenHidden(label);
    }
    m_ui->LDeviceStatus->setPixmap(QPixmap());
    PageStyle::keepPlaceWhenHidden(m_ui->PgBarComm);
    m_ui->PgBarComm->hide();
    PageStyle::paintText(m_ui->LLastMessage, Qt::red);
    m_ui->LCommStatus->setAccessibleName(toolTipText("Link", "Zustand der Verbindung"));
    m_ui->LDeviceStatus->setAccessibleName(toolTipText("Lamp", "Gerätestatus"));
    m_ui->PgBarComm->setAccessibleName(toolTipText("Progress", "Fortschritt der Übertragung"));
    m_ui->LLastMessage->installEventFilter(this);
    fitFonts();
}

DeviceControlWidget::~DeviceControlWidget() = default;

void DeviceControlWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange)
        fitFonts();
}

bool DeviceControlWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        fitMessage();
    return QWidget::eventFilter(watched, event);
}

void DeviceControlWidget::fitFonts()
{
    // A message may take two lines, and the bar keeps its height whether there is one or not.
    const QFontMetrics metrics(messageFont(), m_ui->LLastMessage);
    m_ui->LLastMessage->setFixedHeight(metrics.size(0, QStringLiteral("A\nA")).height());
    m_ui->PgBarComm->setFont(PageStyle::fittingFont(
        *m_ui->PgBarComm, QFont(), m_ui->PgBarComm->maximumSize(), QStringLiteral("100%")));
    fitMessage();
}

void DeviceControlWidget::fitMessage()
{
    QLabel *message = m_ui->LLastMessage;
    message->setFont(
        PageStyle::fittingFont(*message, messageFont(), message->size(), message->text(), Qt::TextWordWrap));
}

void DeviceControlWidget::DeviceUpdate(const Z7Device &device)
{
    // A record that comes by itself is the last news of its pass. A polling pass is not reported as
    // terminated.
    m_ui->PgBarComm->hide();
    showDevice(device);
}

void DeviceControlWidget::transactionStarted(int maxProgress, const Z7Device &device)
{
    m_ui->PgBarComm->show();
    m_ui->PgBarComm->setMaximum(maxProgress);
    m_ui->PgBarComm->setValue(0);
    showDevice(device);
}

void DeviceControlWidget::transactionTerminated()
{
    m_ui->PgBarComm->hide();
}

void DeviceControlWidget::transactionProgress()
{
    m_ui->PgBarComm->setValue(m_ui->PgBarComm->value() + 1);
}

void DeviceControlWidget::showDevice(const Z7Device &device)
{
    m_ui->LPort->setText(device.portInfo.portName());
    m_ui->LDevice->setText(shortDeviceName(device));
    showLamp(driveCondition(device.statusBits));
    m_ui->lCurrent->setText(QString::number(device.actualSpeed));
    m_ui->LPower->setText(QString::number(device.actualCurrent));
    m_ui->lCurrentText->setText(commonText("CurrentRotations", "Ist-Drehzahl:"));
    m_ui->lPowerText->setText(commonText("CurrentCurrent", "Ist-Strom:"));
    const QString message = device.hasError() ? localizedErrorText(device.error) : QString();
    if (message != m_ui->LLastMessage->text()) {
        m_ui->LLastMessage->setText(message);
        fitMessage();
    }
    if (device.isAccessGranted() && !device.hasError())
        showLink(Link::Good);
    else
        showLink(device.isConnected() ? Link::Limited : Link::None);
}

void DeviceControlWidget::showLamp(DriveCondition condition)
{
    if (m_lamp == condition)
        return;
    m_lamp = condition;
    m_ui->LDeviceStatus->setPixmap(PageStyle::smallPixmap(lampResource(condition)));
    Keyboard::setName(m_ui->LDeviceStatus, lampName(condition));
}

void DeviceControlWidget::showLink(Link link)
{
    if (m_link == link)
        return;
    m_link = link;
    switch (link) {
    case Link::Good:
        m_ui->LCommStatus->setPixmap(PageStyle::mediumPixmap(":/images/usb_green_24px.png"));
        Keyboard::setName(m_ui->LCommStatus, toolTipText("LinkGood", "Verbindung: in Ordnung"));
        break;
    case Link::Limited:
        m_ui->LCommStatus->setPixmap(PageStyle::mediumPixmap(":/images/usb_yellow_24px.png"));
        Keyboard::setName(
            m_ui->LCommStatus, toolTipText("LinkLimited", "Verbindung: kein Zugriff oder Fehler"));
        break;
    case Link::None:
        m_ui->LCommStatus->setPixmap(PageStyle::mediumPixmap(":/images/usb_red_24px.png"));
        Keyboard::setName(m_ui->LCommStatus, toolTipText("LinkNone", "Verbindung: keine Antwort"));
        break;
    }
    showDriveParts(link != Link::None, link == Link::Good);
}

void DeviceControlWidget::showDriveParts(bool name, bool values)
{
    m_ui->LDevice->setVisible(name);
    m_ui->LDeviceStatus->setVisible(values);
    m_ui->lCurrent->setVisible(values);
    m_ui->LPower->setVisible(values);
    m_ui->lCurrentText->setVisible(values);
    m_ui->lPowerText->setVisible(values);
}
