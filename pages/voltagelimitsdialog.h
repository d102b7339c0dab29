#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class VoltageLimitsDialog;
}

/// The limits of the supply voltage.
class VoltageLimitsDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogVoltageLimits"};

    explicit VoltageLimitsDialog(QWidget *parent = nullptr);
    ~VoltageLimitsDialog() override;

private:
    const std::unique_ptr<Ui::VoltageLimitsDialog> m_ui;
};
