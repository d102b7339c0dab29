#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

namespace Ui {
class OperationsModeDialog;
}

/// The operating modes of the two inputs and the restart behaviour.
class OperationsModeDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    explicit OperationsModeDialog(QWidget *parent = nullptr);
    ~OperationsModeDialog() override;

private:
    const std::unique_ptr<Ui::OperationsModeDialog> m_ui;
};
