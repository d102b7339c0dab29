#pragma once

#include "pages/emptydatawidget.h"

#include <memory>

class QLabel;

namespace Ui {
class DeviceStatusDialog;
}

/// The home page of a drive: what it reports in each status poll, as lamps and numbers. Nothing can be
/// edited. A drive that is lost, refuses the password or reports an error shows no more than its name and a
/// red lamp.
class DeviceStatusDialog : public EmptyDataWidget
{
    Q_OBJECT

public:
    static constexpr TextSection texts {"DialogDeviceStatus"};

    explicit DeviceStatusDialog(QWidget *parent = nullptr);
    ~DeviceStatusDialog() override;

    void initPage() override;
    void DeviceUpdate(const Z7Device &d) override;

private:
    void reserveWidths();
    void setTexts();
    void setUnits();
    void showReported(bool shown);
    void showIdentity();
    void showStatusBits();
    void showLiveValues();
    void showInputsAndOutputs();
    QLabel *label(const QString &name) const;

    const std::unique_ptr<Ui::DeviceStatusDialog> m_ui;
};
