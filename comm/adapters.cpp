#include "comm/adapters.h"

#include "comm/portdiagnosis.h"

Z7Adapter::Z7Adapter(const QSerialPortInfo &port)
    : portName(port.portName())
    , isUsb(port.hasVendorIdentifier() && port.hasProductIdentifier())
    , vendor(port.vendorIdentifier())
    , product(port.productIdentifier())
    , serialNumber(port.serialNumber())
{
}

bool Z7Adapter::looksLike(const Z7Adapter &other) const
{
    return isUsb && other.isUsb && vendor == other.vendor && product == other.product
        && serialNumber == other.serialNumber;
}

QList<Z7Adapter> listedAdapters()
{
    QList<Z7Adapter> adapters;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports) {
        if (!isPortGone(port))
            adapters.append(Z7Adapter(port));
    }
    return adapters;
}

QString portOfReturned(const Z7Adapter &gone, const QStringList &others, const QList<Z7Adapter> &listed)
{
    QStringList ports;
    for (const Z7Adapter &adapter : listed) {
        if (adapter.looksLike(gone) && !others.contains(adapter.portName))
            ports.append(adapter.portName);
    }
    return ports.size() == 1 ? ports.first() : QString();
}
