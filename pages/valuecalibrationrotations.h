#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class ValueCalibrationRotations;
}

/// The curve from the analogue input to the speed set-point.
class ValueCalibrationRotations : public LabelledDataWidget
{
    Q_OBJECT

public:
    explicit ValueCalibrationRotations(QWidget *parent = nullptr);
    ~ValueCalibrationRotations() override;

private:
    const std::unique_ptr<Ui::ValueCalibrationRotations> m_ui;
};
