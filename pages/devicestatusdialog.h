#pragma once

#include "pages/emptydatawidget.h"

#include <array>
#include <memory>
#include <optional>

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
    void nameLamps(bool isReported);
    QLabel *label(const QString &name) const;

    const std::unique_ptr<Ui::DeviceStatusDialog> m_ui;
    /// Whether the drive is reported, its status bits, outputs and inputs, as the lamps are named for screen
    /// readers; none before the first record.
    std::optional<std::array<int, 4>> m_namedStates;
};
