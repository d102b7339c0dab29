#include "shell/deviceselectiondialog.h"

#include "control/services/language.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "ui_deviceselectiondialog.h"

DeviceSelectionDialog::DeviceSelectionDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::DeviceSelectionDialog>())
{
    m_ui->setupUi(this);
    PageStyle::growWithTexts(this);
    PageStyle::paintHeader(m_ui->fTop);
    m_ui->BtnAbort->setIcon(QIcon(QStringLiteral(":/images/cancel-icon_16px.png")));
    m_ui->BtnOK->setIcon(QIcon(QStringLiteral(":/images/tick-icon_16px.png")));
    Keyboard::showFocus(m_ui->lstDevices);
    Keyboard::showFocus(m_ui->BtnOK);
}

DeviceSelectionDialog::~DeviceSelectionDialog() = default;

void DeviceSelectionDialog::reset()
{
    setWindowTitle(languageText("DialogDeviceSelection", "Title", "Z7 auswählen"));
    setIntro(QString());
    m_ui->BtnOK->setText(commonText("OK", "OK"));
    m_ui->BtnAbort->setText(commonText("Abort", "Abbrechen"));
    m_ui->lstDevices->clear();
    m_ui->lstDevices->setAccessibleName(toolTipText("Drives", "Antriebe"));
    m_ui->lstDevices->setFocus();
    connect(m_ui->BtnOK, SIGNAL(clicked()), SLOT(postSelectedDevices()));
    connect(m_ui->BtnAbort, SIGNAL(clicked()), SLOT(close()));
}

void DeviceSelectionDialog::setIntro(const QString &text)
{
    m_ui->LIntro->setText(text);
}

void DeviceSelectionDialog::addDevice(int deviceID, const QString &text)
{
    auto *row = new QListWidgetItem(text, m_ui->lstDevices);
    row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
    row->setCheckState(Qt::Unchecked);
    row->setData(Qt::UserRole, deviceID);
}

void DeviceSelectionDialog::postSelectedDevices()
{
    for (int number = 0; number < m_ui->lstDevices->count(); ++number) {
        const QListWidgetItem *row = m_ui->lstDevices->item(number);
        if (row->checkState() == Qt::Checked)
            emit deviceSelected(row->data(Qt::UserRole).toInt());
    }
    close();
}
