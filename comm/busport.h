#pragma once

#include <QByteArray>
#include <QSerialPort>

class Z7TelegramStack;

/// A serial port on the drives' bus: 115200 baud, 8 data bits, even parity, 1 stop bit, no flow control.
///
/// It belongs to one pass of one worker thread, which alone may call it, and is used through its blocking
/// calls, so that telegrams follow each other at the rate of the bus. Nothing purges its buffers: late bytes
/// belong to the next reply. Time-outs are in ms and bounded to 0 to 10,000.
class Z7BusPort
{
public:
    /// Opens the port and returns 0, or error number 3 (not opened) or 4 (a setting refused).
    int open(const QString &portName);
    void close() { m_port.close(); }
    /// After a failed open(): what Qt made of the system's refusal.
    QSerialPort::SerialPortError refusal() const { return m_port.error(); }

    /// Writes the request. False if that is not done within `timeoutMs`.
    bool send(const QByteArray &request, int timeoutMs);
    /// Waits for the first bytes of the reply. False if none come within `timeoutMs`, or the adapter is gone.
    bool waitForReply(int timeoutMs);
    /// After waitForReply: collects the reply until the line has been silent for 20 ms. A line that babbles
    /// is cut off far beyond the length and the time of any reply, and what has come by then is the reply.
    QByteArray readReply();

private:
    QSerialPort m_port;
};
