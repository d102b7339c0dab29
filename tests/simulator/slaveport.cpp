#include "slaveport.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

SlavePort::SlavePort(const QString &path)
    : fd_(::open(qPrintable(path), O_RDWR | O_NOCTTY | O_NONBLOCK))
{
}

SlavePort::~SlavePort()
{
    if (isOpen())
        ::close(fd_);
}

void SlavePort::send(const char *hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    if (::write(fd_, bytes.constData(), size_t(bytes.size())) != bytes.size())
        qFatal("the port does not take %d bytes", bytes.size());
}

QByteArray SlavePort::receive(int timeout)
{
    constexpr int EndOfReply = 20;
    QByteArray received;
    for (int wait = timeout; waitForBytes(wait); wait = EndOfReply) {
        char buffer[256];
        const ssize_t count = ::read(fd_, buffer, sizeof buffer);
        if (count <= 0)
            break;
        received.append(buffer, int(count));
    }
    return received.toHex(' ');
}

bool SlavePort::waitForBytes(int timeout) const
{
    pollfd wait = {fd_, POLLIN, 0};
    return ::poll(&wait, 1, timeout) > 0;
}

bool SlavePort::isHungUp() const
{
    pollfd wait = {fd_, 0, 0};
    return ::poll(&wait, 1, 0) > 0 && (wait.revents & POLLHUP);
}
