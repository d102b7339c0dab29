#pragma once

#include "pages/idevicedatacallback.h"

#include <QWidget>

#include <memory>

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

private:
    void showDevice(const Z7Device &device);
    void showCommunicationState(const Z7Device &device);
    void showDriveParts(bool name, bool values);

    const std::unique_ptr<Ui::DeviceControlWidget> m_ui;
};
