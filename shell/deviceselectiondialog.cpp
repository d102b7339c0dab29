#include "shell/deviceselectiondialog.h"

#include "ui_deviceselectiondialog.h"

DeviceSelectionDialog::DeviceSelectionDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::DeviceSelectionDialog>())
{
    m_ui->setupUi(this);
}

DeviceSelectionDialog::~DeviceSelectionDialog() = default;
