#pragma once

#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"
#include "tests/support/skippedsilence.h"

#include <QByteArrayList>

#include <map>
#include <memory>

/// Drives behind ports that the wizard lists. Their definitions are those in the working folder. Neither the
/// bus nor its silence costs time unless a test asks for it, so that a scan is over in no time.
class SimulatedDrives
{
public:
    /// A bus behind an adapter; it holds no drive yet.
    z7sim::SimulatedBus &plug(
        const QString &port, const ListedPorts::UsbAdapter &adapter = ListedPorts::ftdiAdapter());
    /// The bus of a port that is plugged in.
    z7sim::SimulatedBus &bus(const QString &port) { return *m_buses.at(port); }
    /// From now on telegrams on the bus of a port, and the silence around them, take their time, as on a real
    /// one.
    void slowDown(const QString &port);
    /// A port that is listed but does not open.
    void plugDeadPort(const QString &port) { m_ports.plugUsb(port, QString()); }

    /// The requests that were on the wire, oldest first, as hex bytes.
    QByteArrayList requests(const QString &port);

private:
    ListedPorts m_ports;
    std::map<QString, std::unique_ptr<z7sim::SimulatedBus>> m_buses;
    std::map<QString, std::unique_ptr<SkippedSilence>> m_silences;
};
