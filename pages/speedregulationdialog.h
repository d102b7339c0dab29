#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class SpeedRegulationDialog;
}

/// The gains of the drive's control loops.
class SpeedRegulationDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogSpeedRegulation"};

    explicit SpeedRegulationDialog(QWidget *parent = nullptr);
    ~SpeedRegulationDialog() override;

private:
    const std::unique_ptr<Ui::SpeedRegulationDialog> m_ui;
};
