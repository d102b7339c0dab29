#include "pages/valuecalibrationrotations.h"

#include "ui_valuecalibrationrotations.h"

ValueCalibrationRotations::ValueCalibrationRotations(QWidget *parent)
    : LabelledDataWidget("DialogValueCalibrationRotations", parent)
    , m_ui(std::make_unique<Ui::ValueCalibrationRotations>())
{
    m_ui->setupUi(this);
}

ValueCalibrationRotations::~ValueCalibrationRotations() = default;
