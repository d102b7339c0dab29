#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class CurrentLimitsDialog;
}

/// The current limits in the four quadrants of speed and torque.
class CurrentLimitsDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogCurrentLimits"};

    explicit CurrentLimitsDialog(QWidget *parent = nullptr);
    ~CurrentLimitsDialog() override;

private:
    const std::unique_ptr<Ui::CurrentLimitsDialog> m_ui;
};
