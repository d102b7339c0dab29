#include "benchmarks/bareport.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int gapMs = 20;

} // namespace

BarePort::BarePort(const QString &path)
    : m_descriptor(open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY))
{
    termios settings {};
    tcgetattr(m_descriptor, &settings);
    cfmakeraw(&settings);
    tcsetattr(m_descriptor, TCSANOW, &settings);
}

BarePort::~BarePort()
{
    close(m_descriptor);
}

QByteArray BarePort::exchange(const QByteArray &request, int timeoutMs)
{
    if (write(m_descriptor, request.constData(), static_cast<size_t>(request.size())) < 0)
        return {};
    QByteArray reply;
    int waitMs = timeoutMs;
    while (waitForBytes(waitMs)) {
        reply += readBytes();
        waitMs = gapMs;
    }
    return reply;
}

bool BarePort::waitForBytes(int timeoutMs) const
{
    pollfd port {m_descriptor, POLLIN, 0};
    return poll(&port, 1, timeoutMs) > 0;
}

QByteArray BarePort::readBytes() const
{
    char bytes[256];
    const auto count = read(m_descriptor, bytes, sizeof bytes);
    return count > 0 ? QByteArray(bytes, static_cast<int>(count)) : QByteArray();
}
