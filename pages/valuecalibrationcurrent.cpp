#include "pages/valuecalibrationcurrent.h"

#include "ui_valuecalibrationcurrent.h"

ValueCalibrationCurrent::ValueCalibrationCurrent(QWidget *parent)
    : LabelledDataWidget("DialogValueCalibrationCurrent", parent)
    , m_ui(std::make_unique<Ui::ValueCalibrationCurrent>())
{
    m_ui->setupUi(this);
}

ValueCalibrationCurrent::~ValueCalibrationCurrent() = default;
