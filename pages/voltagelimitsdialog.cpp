#include "pages/voltagelimitsdialog.h"

#include "ui_voltagelimitsdialog.h"

VoltageLimitsDialog::VoltageLimitsDialog(QWidget *parent)
    : LabelledDataWidget(
        texts, "Zum Schutz des DC-Netzes können hier Spannungsgrenzen vorgegeben werden.", parent)
    , m_ui(std::make_unique<Ui::VoltageLimitsDialog>())
{
    m_ui->setupUi(this);
    for (const int number : {0x4A, 0x4B, 0x4C})
        addParam(number);
}

VoltageLimitsDialog::~VoltageLimitsDialog() = default;
