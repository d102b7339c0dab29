#include "tests/control/controlleronabus.h"

namespace {

const QString portName = QStringLiteral("ttyUSB0");

/// Request to read a parameter of drive 3. The sum of all bytes before the last, XOR 0x55, is the last.
QString readRequest(int number)
{
    QByteArray frame = QByteArray::fromHex("0403");
    frame.append(static_cast<char>(number >> 8)).append(static_cast<char>(number));
    int sum = 0;
    for (const char byte : frame)
        sum += static_cast<uchar>(byte);
    frame.append(static_cast<char>(sum ^ 0x55));
    return QString::fromLatin1(frame.toHex(' '));
}

} // namespace

ControllerOnABus::ControllerOnABus()
    : bus(busConfig())
{
    if (!bus.start())
        qFatal("%s", qPrintable(bus.errorText()));
    m_silence.emplace(bus);
    ports.plugUsb(portName, bus.portPath());
}

void ControllerOnABus::slowDown()
{
    bus.command("pace on");
    m_silence.reset();
}

z7sim::BusConfig ControllerOnABus::busConfig() const
{
    z7sim::BusConfig config;
    config.paced = false;
    config.definitionFolder = folder.path();
    z7sim::DriveConfig drive;
    drive.address = 3;
    drive.password = 4711;
    config.drives.append(drive);
    return config;
}

Z7Device ControllerOnABus::drive3() const
{
    Z7Device device = connectedDrive(3);
    device.portInfo = QSerialPortInfo(portName);
    device.password = 4711;
    return device;
}

QStringList ControllerOnABus::requests() const
{
    QStringList texts;
    for (const z7sim::WireEntry &entry : bus.log()) {
        if (entry.direction == z7sim::WireEntry::Request)
            texts.append(QString::fromLatin1(entry.bytes.toHex(' ')));
    }
    return texts;
}

QStringList logOnRequests()
{
    return {
        QStringLiteral("09 03 00 00 00 03 5a"), // access with the address
        QStringLiteral("09 03 00 00 12 67 d0"), // access with the password
        QStringLiteral("05 03 5d"), // status
        QStringLiteral("07 03 5f"), // software version
        QStringLiteral("04 03 00 01 5d"), // first operation mode
        QStringLiteral("04 03 00 02 5c"), // second operation mode
        QStringLiteral("04 03 80 01 dd"), // speed
        QStringLiteral("04 03 80 07 db"), // current
        QStringLiteral("04 03 80 05 d9"), // temperature
        QStringLiteral("04 03 80 03 df"), // position, part of a turn
        QStringLiteral("04 03 80 04 de"), // position, turns
        QStringLiteral("04 03 80 08 da"), // outputs
        QStringLiteral("04 03 80 09 c5"), // inputs
        QStringLiteral("04 03 80 0d c1"), // analogue input
    };
}

QStringList readRequests(const QList<int> &numbers)
{
    QStringList requests;
    for (const int number : numbers)
        requests.append(readRequest(number));
    return requests;
}
