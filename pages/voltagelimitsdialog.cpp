#include "pages/voltagelimitsdialog.h"

#include "ui_voltagelimitsdialog.h"

VoltageLimitsDialog::VoltageLimitsDialog(QWidget *parent)
    : LabelledDataWidget("DialogVoltageLimits", parent)
    , m_ui(std::make_unique<Ui::VoltageLimitsDialog>())
{
    m_ui->setupUi(this);
}

VoltageLimitsDialog::~VoltageLimitsDialog() = default;
