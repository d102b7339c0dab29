#pragma once

#include "model/device.h"
#include "model/drivefacts.h"

#include <QDateTime>

/// How far a scan of a port has come: which addresses were truly asked. A copied value.
struct ScanReach
{
    static constexpr int allAddresses = highestBusAddress;

    bool isWhole() const { return asked == allAddresses; }

    int asked = 0; ///< addresses whose telegram went onto the bus
    int lastAsked = 0; ///< the highest of them; 0 if there is none
    bool wasStopped = false; ///< it ended before the port or the addresses did
    QDateTime endedAt;
};
/// The same addresses, whenever it was.
bool operator==(const ScanReach &a, const ScanReach &b);

/// Counts along with the records of one scan. A copied value.
class ScanTally
{
public:
    ScanTally() = default;
    explicit ScanTally(const QSerialPortInfo &port)
        : m_port(port)
    {
    }

    /// Takes the record of the next address, or the one with which the scan failed.
    void take(const Z7Device &record);

    const QSerialPortInfo &port() const { return m_port; }
    /// What the scan has come to, ending now.
    ScanReach reach() const;
    /// True if the last telegram did not go out, or the port failed.
    bool endedInFailure() const;

private:
    QSerialPortInfo m_port;
    ScanReach m_reach;
    int m_records = 0;
    int m_lastError = 0;
};
