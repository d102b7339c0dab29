#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class AccelerationsDialog;
}

/// The ramps for both directions of rotation.
class AccelerationsDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogAcceleration"};

    explicit AccelerationsDialog(QWidget *parent = nullptr);
    ~AccelerationsDialog() override;

private:
    const std::unique_ptr<Ui::AccelerationsDialog> m_ui;
};
