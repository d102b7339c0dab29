#include "slaveport.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

SlavePort::SlavePort(const QString &path)
    : m_fd(::open(qPrintable(path), O_RDWR | O_NOCTTY | O_NONBLOCK))
{
}

SlavePort::~SlavePort()
{
    if (isOpen())
        ::close(m_fd);
}

void SlavePort::send(const char *hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    if (::write(m_fd, bytes.constData(), size_t(bytes.size())) != bytes.size())
        qFatal("the port does not take %d bytes", bytes.size());
}

QByteArray SlavePort::receive(int timeout)
{
    constexpr int EndOfReply = 20;
    QByteArray received;
    for (int wait = timeout; waitForBytes(wait); wait = EndOfReply) {
        char buffer[256];
        const ssize_t count = ::read(m_fd, buffer, sizeof buffer);
        if (count <= 0)
            break;
        received.append(buffer, int(count));
    }
    return received.toHex(' ');
}

bool SlavePort::waitForBytes(int timeout) const
{
    pollfd wait = {m_fd, POLLIN, 0};
    return ::poll(&wait, 1, timeout) > 0;
}

bool SlavePort::isHungUp() const
{
    pollfd wait = {m_fd, 0, 0};
    return ::poll(&wait, 1, 0) > 0 && (wait.revents & POLLHUP);
}
