#include "comm/busport.h"

#include "protocol/telegram.h"

#include <QElapsedTimer>

namespace {

/// Frames have no end mark: a silence of this length ends a reply.
constexpr int gapMs = 20;

/// The longest reply has 35 bytes and takes 3.4 ms on the wire.
constexpr int longestReply = 1024;
constexpr int longestReplyMs = 1000;

/// The options file may hold any number. A negative one would mean to wait for ever.
constexpr int longestTimeoutMs = 10000;

int boundedTimeout(int timeoutMs)
{
    return qBound(0, timeoutMs, longestTimeoutMs);
}

} // namespace

int Z7BusPort::open(const QString &portName)
{
    m_port.close();
    m_port.setPortName(portName);
    if (!m_port.open(QIODevice::ReadWrite))
        return TelegramError::PortNotOpened;
    const bool settingsTaken = m_port.setBaudRate(QSerialPort::Baud115200)
        && m_port.setDataBits(QSerialPort::Data8) && m_port.setParity(QSerialPort::EvenParity)
        && m_port.setStopBits(QSerialPort::OneStop) && m_port.setFlowControl(QSerialPort::NoFlowControl);
    return settingsTaken ? TelegramError::None : TelegramError::PortSettingsRefused;
}

bool Z7BusPort::send(const QByteArray &request, int timeoutMs)
{
    if (!m_port.isOpen())
        return false;
    m_port.write(request);
    return m_port.waitForBytesWritten(boundedTimeout(timeoutMs));
}

bool Z7BusPort::waitForReply(int timeoutMs)
{
    return m_port.waitForReadyRead(boundedTimeout(timeoutMs));
}

QByteArray Z7BusPort::readReply()
{
    QElapsedTimer sinceFirstByte;
    sinceFirstByte.start();
    QByteArray reply = m_port.readAll();
    while (reply.size() < longestReply && sinceFirstByte.elapsed() < longestReplyMs
        && m_port.waitForReadyRead(gapMs))
        reply += m_port.readAll();
    // Each read takes 64 KB of room, and the telegrams of the live update keep their replies.
    reply.squeeze();
    return reply;
}
