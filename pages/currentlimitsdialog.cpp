#include "pages/currentlimitsdialog.h"

#include "ui_currentlimitsdialog.h"

CurrentLimitsDialog::CurrentLimitsDialog(QWidget *parent)
    : LabelledDataWidget("DialogCurrentLimits", parent)
    , m_ui(std::make_unique<Ui::CurrentLimitsDialog>())
{
    m_ui->setupUi(this);
}

CurrentLimitsDialog::~CurrentLimitsDialog() = default;
