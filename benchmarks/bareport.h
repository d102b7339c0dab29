#pragma once

#include <QByteArray>
#include <QString>

/// The floor of the bus benchmarks: a port used with nothing but open, write, poll and read.
class BarePort
{
public:
    explicit BarePort(const QString &path);
    ~BarePort();
    BarePort(const BarePort &) = delete;
    BarePort &operator=(const BarePort &) = delete;

    /// Writes the request and collects the reply until the line has been silent for 20 ms.
    QByteArray exchange(const QByteArray &request, int timeoutMs);

private:
    bool waitForBytes(int timeoutMs) const;
    QByteArray readBytes() const;

    int m_descriptor;
};
