#include "pages/remotecontroldialog.h"

#include "ui_remotecontroldialog.h"

RemoteControlDialog::RemoteControlDialog(QWidget *parent)
    : EmptyDataWidget(parent)
    , m_ui(std::make_unique<Ui::RemoteControlDialog>())
{
    m_ui->setupUi(this);
}

RemoteControlDialog::~RemoteControlDialog() = default;
