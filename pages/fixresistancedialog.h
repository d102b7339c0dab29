#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class FixResistanceDialog;
}

/// The thresholds of the ballast resistor.
class FixResistanceDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogFixResistance"};

    explicit FixResistanceDialog(QWidget *parent = nullptr);
    ~FixResistanceDialog() override;

private:
    const std::unique_ptr<Ui::FixResistanceDialog> m_ui;
};
