#pragma once

#include "pages/emptydatawidget.h"

#include <memory>

namespace Ui {
class DeviceStatusDialog;
}

/// The home page of a drive: what it reports in each status poll.
class DeviceStatusDialog : public EmptyDataWidget
{
    Q_OBJECT

public:
    explicit DeviceStatusDialog(QWidget *parent = nullptr);
    ~DeviceStatusDialog() override;

private:
    const std::unique_ptr<Ui::DeviceStatusDialog> m_ui;
};
