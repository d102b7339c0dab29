#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class ValueCalibrationCurrent;
}

/// The curve from the analogue input to the current set-point.
class ValueCalibrationCurrent : public LabelledDataWidget
{
    Q_OBJECT

public:
    explicit ValueCalibrationCurrent(QWidget *parent = nullptr);
    ~ValueCalibrationCurrent() override;

private:
    const std::unique_ptr<Ui::ValueCalibrationCurrent> m_ui;
};
