#pragma once

#include "pages/calibrationcurvepage.h"

/// The scaling of the analogue input A1 to a speed set-point.
class ValueCalibrationRotations : public CalibrationCurvePage
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogValueCalibrationRotations"};

    explicit ValueCalibrationRotations(QWidget *parent = nullptr);
};
