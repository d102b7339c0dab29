#include "pages/accelerationsdialog.h"

#include "ui_accelerationsdialog.h"

AccelerationsDialog::AccelerationsDialog(QWidget *parent)
    : LabelledDataWidget("DialogAcceleration", parent)
    , m_ui(std::make_unique<Ui::AccelerationsDialog>())
{
    m_ui->setupUi(this);
}

AccelerationsDialog::~AccelerationsDialog() = default;
