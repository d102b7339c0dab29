#pragma once

#include "model/drivefacts.h"
#include "pages/idevicedatacallback.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class DeviceControlWidget;
}

/// The bottom band of the window: port, state of the communication, progress, last error, and the drive's
/// lamp, speed and current. It shows whatever record came last.
class DeviceControlWidget : public QWidget, public IDeviceDataCallback
{
    Q_OBJECT

public:
    explicit DeviceControlWidget(QWidget *parent = nullptr);
    ~DeviceControlWidget() override;

    void DeviceUpdate(const Z7Device &device) override;
    void transactionStarted(int maxProgress, const Z7Device &device) override;
    void transactionTerminated() override;
    void transactionProgress() override;

protected:
    void changeEvent(QEvent *event) override;
    /// Hears when the message gets another width.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Link { Good, Limited, None };

    void fitFonts();
    /// Letters so small that the whole message is seen.
    void fitMessage();
    void showDevice(const Z7Device &device);
    void showLamp(DriveCondition condition);
    void showLink(Link link);
    void showDriveParts(bool name, bool values);

    /// What the lamps were named after last.
    std::optional<DriveCondition> m_lamp;
    std::optional<Link> m_link;

    const std::unique_ptr<Ui::DeviceControlWidget> m_ui;
};
