#include "pages/devicestatusdialog.h"

#include "ui_devicestatusdialog.h"

DeviceStatusDialog::DeviceStatusDialog(QWidget *parent)
    : EmptyDataWidget(parent)
    , m_ui(std::make_unique<Ui::DeviceStatusDialog>())
{
    m_ui->setupUi(this);
}

DeviceStatusDialog::~DeviceStatusDialog() = default;
