#include "tests/comm/drivebus.h"

#include "control/services/options.h"
#include "control/services/services.h"

#include <QSerialPortInfo>

namespace {

const QString portName = QStringLiteral("ttyUSB0");
const QString deadPortName = QStringLiteral("ttyUSB1");

z7sim::BusConfig unpacedBus(const QString &link)
{
    z7sim::BusConfig config;
    config.link = link;
    config.paced = false;
    config.drives.resize(1);
    config.drives.first().address = 3;
    return config;
}

Z7Options *options()
{
    return Z7Services::instance()->options();
}

} // namespace

DriveBus::DriveBus()
    : m_bus(unpacedBus(link()))
{
    if (!m_bus.start())
        qFatal("%s", qPrintable(m_bus.errorText()));
    m_ports.plugUsb(portName, link());
    m_ports.plugUsb(deadPortName, QString());
}

Z7Device DriveBus::driveOnDeadPort()
{
    return Z7Device {QSerialPortInfo(deadPortName)};
}

Z7Device DriveBus::drive(int address, int password)
{
    Z7Device device {QSerialPortInfo(portName)};
    device.assignAddress(address);
    device.setPassword(password);
    return device;
}

void DriveBus::command(const QByteArray &line)
{
    const QByteArray answer = m_bus.command(line);
    if (!answer.startsWith("ok"))
        qFatal("%s: %s", line.constData(), answer.constData());
}

QByteArrayList DriveBus::requests() const
{
    QByteArrayList requests;
    for (const z7sim::WireEntry &entry : m_bus.log()) {
        if (entry.direction == z7sim::WireEntry::Request)
            requests.append(entry.bytes.toHex(' '));
    }
    return requests;
}

void DriveBus::pullAdapter()
{
    m_ports.pull(portName);
    command("pull");
}

void DriveBus::plugAdapterIn()
{
    command("plug");
    m_ports.plugUsb(portName, link());
}

void DriveBus::connectPort()
{
    m_ports.relink(portName, link());
}

void DriveBus::disconnectPort()
{
    m_ports.relink(portName, QString());
}

bool DriveBus::isPortInUse()
{
    return QSerialPortInfo(portName).isBusy();
}

void setTimeout(int ms)
{
    options()->setTimeout(ms);
}

void setTimeoutScanning(int ms)
{
    options()->setTimeoutScanning(ms);
}

void setPollingInterval(int ms)
{
    options()->setPollingInterval(ms);
}
