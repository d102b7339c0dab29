#pragma once

#include "pages/labelleddatawidget.h"

#include <memory>

class OperationModePanel;

namespace Ui {
class FixedResolutionsDialog;
}

/// The fixed speeds that digital inputs select.
class FixedResolutionsDialog : public LabelledDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogFixedResolutions"};

    explicit FixedResolutionsDialog(QWidget *parent = nullptr);
    ~FixedResolutionsDialog() override;

    void initPage() override;
    void newDeviceParam(const Z7DeviceParam &param) override;

private:
    const std::unique_ptr<Ui::FixedResolutionsDialog> m_ui;
    OperationModePanel *const m_modePanel;
};
