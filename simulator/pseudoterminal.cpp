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
    master_ = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    char name[64] = {};
    if (!master_.isValid() || ::grantpt(master_.get()) != 0 || ::unlockpt(master_.get()) != 0
        || ::ptsname_r(master_.get(), name, sizeof name) != 0)
        return fail("no pseudo terminal");
    path_ = QString::fromLocal8Bit(name);
    if (!openSlave())
        return fail("no raw mode");
    openers_ = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (::inotify_add_watch(openers_.get(), name, IN_OPEN | IN_CLOSE) < 0)
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
    slave_ = FileDescriptor(::open(qPrintable(path_), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    termios settings = {};
    if (::tcgetattr(slave_.get(), &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B115200);
    return ::tcsetattr(slave_.get(), TCSANOW, &settings) == 0;
}

// Made aside and moved into place, so that nobody ever finds the link missing.
bool PseudoTerminal::placeLink() const
{
    if (link_.isEmpty())
        return true;
    const QByteArray target = QFile::encodeName(link_);
    const QByteArray aside = target + ".new";
    ::unlink(aside.constData());
    return ::symlink(qPrintable(path_), aside.constData()) == 0
        && std::rename(aside.constData(), target.constData()) == 0;
}

void PseudoTerminal::close()
{
    if (isOpen() && !link_.isEmpty() && QFile::symLinkTarget(link_) == path_)
        QFile::remove(link_);
    openers_.reset();
    slave_.reset();
    master_.reset();
    openCount_ = 0;
    path_.clear();
}

QByteArray PseudoTerminal::read()
{
    followOpeners();
    QByteArray bytes;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(master_.get(), buffer, sizeof buffer)) > 0;)
        bytes.append(buffer, int(count));
    return bytes;
}

void PseudoTerminal::write(const QByteArray &bytes)
{
    followOpeners();
    if (openCount_ == 0)
        return;
    const ssize_t written = ::write(master_.get(), bytes.constData(), size_t(bytes.size()));
    Q_UNUSED(written) // a full buffer loses bytes as a real port does
}

// The events stand in the queue before the openers' bytes do, since opening comes before writing.
void PseudoTerminal::followOpeners()
{
    alignas(inotify_event) char buffer[4096];
    for (ssize_t count = 0; (count = ::read(openers_.get(), buffer, sizeof buffer)) > 0;) {
        for (ssize_t position = 0; position < count;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + position);
            openCount_ += event->mask & IN_OPEN ? 1 : -1;
            position += ssize_t(sizeof(inotify_event) + event->len);
            if (openCount_ == 0)
                lastOpenerLeft();
        }
    }
}

// A program that died with the port open has left it exclusive; a real port forgets that as well.
void PseudoTerminal::lastOpenerLeft()
{
    ::tcflush(slave_.get(), TCIFLUSH);
    ::ioctl(slave_.get(), TIOCNXCL);
}

} // namespace z7sim
