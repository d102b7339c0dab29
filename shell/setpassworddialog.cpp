#include "shell/setpassworddialog.h"

#include "ui_setpassworddialog.h"

SetPasswordDialog::SetPasswordDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::SetPasswordDialog>())
{
    m_ui->setupUi(this);
}

SetPasswordDialog::~SetPasswordDialog() = default;
