#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class OutputDialog;
}

/// The functions of the digital outputs.
class OutputDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogOutput"};

    explicit OutputDialog(QWidget *parent = nullptr);
    ~OutputDialog() override;

private:
    const std::unique_ptr<Ui::OutputDialog> m_ui;
};
