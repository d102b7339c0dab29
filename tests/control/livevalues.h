#pragma once

#include "control/livecourse.h"
#include "model/device.h"

/// Values that came at a time, told apart by their speed.
inline LiveValues valuesAt(qint64 timeMs, int speed = 0)
{
    LiveValues values;
    values.timeMs = timeMs;
    values.speed = speed;
    return values;
}

/// A record with which a pass has ended well: drive of version V123 at this address, with this speed.
inline Z7Device pollingRecord(int address, int speed = 0)
{
    Z7Device record(QSerialPortInfo(QStringLiteral("ttyUSB0")));
    record.assignAddress(address);
    record.setSoftwareVersion(QStringLiteral("V123"));
    record.setAccessGranted(true);
    record.actualSpeed = speed;
    return record;
}
