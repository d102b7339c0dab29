#include "pages/speedregulationdialog.h"

#include "ui_speedregulationdialog.h"

SpeedRegulationDialog::SpeedRegulationDialog(QWidget *parent)
    : LabelledDataWidget("DialogSpeedRegulation", parent)
    , m_ui(std::make_unique<Ui::SpeedRegulationDialog>())
{
    m_ui->setupUi(this);
}

SpeedRegulationDialog::~SpeedRegulationDialog() = default;
