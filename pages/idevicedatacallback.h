#pragma once

#include "model/device.h"

/// How the controller passes a worker's news to a listener: a page, the control bar, a wizard page.
/// A listener signs up for one transaction and is forgotten when that transaction ends. Main thread only.
class IDeviceDataCallback
{
public:
    virtual ~IDeviceDataCallback() = default;

    /// A record has come: at the end of a pass, or for each address of a scan.
    virtual void DeviceUpdate(const Z7Device &device) = 0;
    /// A pass of `maxProgress` steps has begun.
    virtual void transactionStarted(int maxProgress, const Z7Device &device) = 0;
    virtual void transactionTerminated() = 0;
    virtual void transactionProgress() = 0;
};
