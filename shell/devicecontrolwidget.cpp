#include "shell/devicecontrolwidget.h"

#include "control/services/language.h"
#include "model/drivefacts.h"
#include "model/errorcodes.h"
#include "pages/pagestyle.h"
#include "ui_devicecontrolwidget.h"

namespace {

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
}

DeviceControlWidget::~DeviceControlWidget() = default;

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
    m_ui->LDeviceStatus->setPixmap(PageStyle::smallPixmap(lampResource(driveCondition(device.statusBits))));
    m_ui->lCurrent->setText(QString::number(device.actualSpeed));
    m_ui->LPower->setText(QString::number(device.actualCurrent));
    m_ui->lCurrentText->setText(commonText("CurrentRotations", "Ist-Drehzahl:"));
    m_ui->lPowerText->setText(commonText("CurrentCurrent", "Ist-Strom:"));
    m_ui->LLastMessage->setText(device.hasError() ? localizedErrorText(device.error) : QString());
    showCommunicationState(device);
}

void DeviceControlWidget::showCommunicationState(const Z7Device &device)
{
    if (device.isAccessGranted() && !device.hasError()) {
        m_ui->LCommStatus->setPixmap(PageStyle::mediumPixmap(":/images/usb_green_24px.png"));
        showDriveParts(true, true);
    } else if (device.isConnected()) {
        m_ui->LCommStatus->setPixmap(PageStyle::mediumPixmap(":/images/usb_yellow_24px.png"));
        showDriveParts(true, false);
    } else {
        m_ui->LCommStatus->setPixmap(PageStyle::mediumPixmap(":/images/usb_red_24px.png"));
        showDriveParts(false, false);
    }
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
