#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

class OperationModePanel;

namespace Ui {
class PositioningDialog;
}

/// The parameters of a positioning run.
class PositioningDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogPositioning"};

    explicit PositioningDialog(QWidget *parent = nullptr);
    ~PositioningDialog() override;

    void initPage() override;
    void newDeviceParam(const Z7DeviceParam &param) override;

private:
    const std::unique_ptr<Ui::PositioningDialog> m_ui;
    OperationModePanel *const m_modePanel;
};
