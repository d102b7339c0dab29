#pragma once

#include <QByteArray>
#include <QString>

/// The master's end of a simulated bus: raw bytes over the slave of the pseudo terminal.
class SlavePort
{
public:
    explicit SlavePort(const QString &path);
    ~SlavePort();
    SlavePort(const SlavePort &) = delete;
    SlavePort &operator=(const SlavePort &) = delete;

    bool isOpen() const { return m_fd >= 0; }

    /// Sends bytes written as hex digits.
    void send(const char *hex);

    /// Everything up to a silence of 20 ms, as hex digits with blanks; empty if nothing comes within the
    /// time-out in ms.
    QByteArray receive(int timeout = 2000);

    /// Sends a request and returns the reply, both as hex digits.
    QByteArray exchange(const char *hex)
    {
        send(hex);
        return receive();
    }

    /// True if the port stays silent for a time in ms that is many times a drive's answering time.
    bool staysSilent(int ms = 100) { return receive(ms).isEmpty(); }

    /// True if the adapter is gone.
    bool isHungUp() const;

private:
    bool waitForBytes(int timeout) const;

    int m_fd;
};
