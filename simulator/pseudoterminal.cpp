#include "simulator/pseudoterminal.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace z7sim {

PseudoTerminal::~PseudoTerminal()
{
    close();
}

QString PseudoTerminal::open()
{
    close();
    m_slave.reset();
    m_master = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    char name[64] = {};
    if (!m_master.isValid() || ::grantpt(m_master.get()) != 0 || ::unlockpt(m_master.get()) != 0
        || ::ptsname_r(m_master.get(), name, sizeof name) != 0)
        return fail("no pseudo terminal");
    m_path = QString::fromLocal8Bit(name);
    if (!openSlave())
        return fail("no raw mode");
    m_openers = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (::inotify_add_watch(m_openers.get(), name, IN_OPEN | IN_CLOSE) < 0)
        return fail("no watch on the port");
    return placeLink() ? QString() : fail("no link");
}

QString PseudoTerminal::fail(const char *what)
{
    const QString reason =
        QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromLocal8Bit(std::strerror(errno)));
    close();
    return reason;
}

bool PseudoTerminal::openSlave()
{
    m_slave = FileDescriptor(::open(qPrintable(m_path), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    termios settings = {};
    if (::tcgetattr(m_slave.get(), &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B115200);
    return ::tcsetattr(m_slave.get(), TCSANOW, &settings) == 0;
}

// Made aside and moved into place, so that nobody ever finds the link missing.
bool PseudoTerminal::placeLink() const
{
    if (m_link.isEmpty())
        return true;
    const QByteArray target = QFile::encodeName(m_link);
    const QByteArray aside = target + ".new";
    ::unlink(aside.constData());
    return ::symlink(qPrintable(m_path), aside.constData()) == 0
        && std::rename(aside.constData(), target.constData()) == 0;
}

void PseudoTerminal::close()
{
    if (isOpen() && !m_link.isEmpty() && QFile::symLinkTarget(m_link) == m_path)
        QFile::remove(m_link);
    m_openers.reset();
    m_master.reset();
    m_openCount = 0;
    m_path.clear();
}

QByteArray PseudoTerminal::read()
{
    followOpeners();
    QByteArray bytes;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(m_master.get(), buffer, sizeof buffer)) > 0;)
        bytes.append(buffer, static_cast<int>(count));
    return bytes;
}

void PseudoTerminal::write(const QByteArray &bytes)
{
    followOpeners();
    if (m_openCount == 0)
        return;
    const ssize_t written = ::write(m_master.get(), bytes.constData(), static_cast<size_t>(bytes.size()));
    Q_UNUSED(written) // a full buffer loses bytes as a real port does
}

// The events stand in the queue before the openers' bytes do, since opening comes before writing.
void PseudoTerminal::followOpeners()
{
    alignas(inotify_event) char buffer[4096];
    for (ssize_t count = 0; (count = ::read(m_openers.get(), buffer, sizeof buffer)) > 0;) {
        for (ssize_t position = 0; position < count;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + position);
            m_openCount += event->mask & IN_OPEN ? 1 : -1;
            position += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            if (m_openCount == 0)
                lastOpenerLeft();
        }
    }
}

// A program that died with the port open has left it exclusive; a real port forgets that as well.
void PseudoTerminal::lastOpenerLeft()
{
    ::tcflush(m_slave.get(), TCIFLUSH);
    ::ioctl(m_slave.get(), TIOCNXCL);
}

} // namespace z7sim
