#pragma once

#include "pages/calibrationcurvepage.h"

class OperationModePanel;

/// The scaling of the analogue input A1 to a current set-point, which counts in one operating mode only.
class ValueCalibrationCurrent : public CalibrationCurvePage
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogValueCalibrationCurrent"};

    explicit ValueCalibrationCurrent(QWidget *parent = nullptr);

    void initPage() override;
    void newDeviceParam(const Z7DeviceParam &param) override;

private:
    OperationModePanel *const m_modePanel;
};
