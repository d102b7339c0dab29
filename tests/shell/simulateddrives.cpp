#include "tests/shell/simulateddrives.h"

#include <QtGlobal>

z7sim::SimulatedBus &SimulatedDrives::plug(const QString &port, const ListedPorts::UsbAdapter &adapter)
{
    z7sim::BusConfig config;
    config.paced = false;
    config.definitionFolder = QStringLiteral(".");
    auto bus = std::make_unique<z7sim::SimulatedBus>(config);
    if (!bus->start())
        qFatal("no simulated bus: %s", qPrintable(bus->errorText()));
    m_ports.plugUsb(port, bus->portPath(), adapter);
    m_silences[port] = std::make_unique<SkippedSilence>(*bus);
    return *(m_buses[port] = std::move(bus));
}

void SimulatedDrives::slowDown(const QString &port)
{
    bus(port).command("pace on");
    m_silences.erase(port);
}

QByteArrayList SimulatedDrives::requests(const QString &port)
{
    QByteArrayList requests;
    for (const z7sim::WireEntry &entry : bus(port).log()) {
        if (entry.direction == z7sim::WireEntry::Request)
            requests.append(entry.bytes.toHex(' '));
    }
    return requests;
}
