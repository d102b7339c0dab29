#pragma once

#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"

#include <QByteArrayList>

#include <map>
#include <memory>

/// Drives behind ports that the wizard lists. Their definitions are those in the working folder. The bus
/// costs no time unless a test asks for it, so that a scan is as quick as its time-out allows.
class SimulatedDrives
{
public:
    /// A bus behind an adapter; it holds no drive yet.
    z7sim::SimulatedBus &plug(
        const QString &port, const ListedPorts::UsbAdapter &adapter = ListedPorts::ftdiAdapter());
    /// The bus of a port that is plugged in.
    z7sim::SimulatedBus &bus(const QString &port) { return *m_buses.at(port); }
    /// A port that is listed but does not open.
    void plugDeadPort(const QString &port) { m_ports.plugUsb(port, QString()); }

    /// The requests that were on the wire, oldest first, as hex bytes.
    QByteArrayList requests(const QString &port);

private:
    ListedPorts m_ports;
    std::map<QString, std::unique_ptr<z7sim::SimulatedBus>> m_buses;
};
