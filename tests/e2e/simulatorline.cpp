#include "tests/e2e/simulatorline.h"

#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// One line of the log: "1234567 > 3 04 03 00 17 …", with "<" for a reply and "?" for bytes without a
/// meaning.
z7sim::WireEntry entryOf(const QByteArray &line)
{
    const QByteArrayList words = line.split(' ');
    const QByteArray direction = words.value(1);
    z7sim::WireEntry entry;
    entry.us = words.value(0).toLongLong();
    entry.address = words.value(2).toInt();
    entry.bytes = QByteArray::fromHex(words.mid(3).join());
    if (direction == "<")
        entry.direction = z7sim::WireEntry::Reply;
    else if (direction == "?")
        entry.direction = z7sim::WireEntry::Dropped;
    return entry;
}

} // namespace

SimulatorLine::~SimulatorLine()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

bool SimulatorLine::open(const QString &socketPath)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(socketPath).constData(), sizeof address.sun_path);
    m_socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
}

QByteArrayList SimulatorLine::ask(const QByteArray &command)
{
    const QByteArray line = command + '\n';
    if (::send(m_socket, line.constData(), size_t(line.size()), MSG_NOSIGNAL) != line.size())
        return {};
    const QByteArray first = readLine();
    if (!first.startsWith("ok"))
        return {};
    if (!first.endsWith(':'))
        return {first.mid(3)};
    QByteArrayList lines;
    for (QByteArray next = readLine(); !next.isEmpty() && next != "."; next = readLine())
        lines.append(next);
    return lines;
}

QByteArray SimulatorLine::readLine()
{
    char buffer[4096];
    while (!m_pending.contains('\n')) {
        const ssize_t count = ::read(m_socket, buffer, sizeof buffer);
        if (count <= 0)
            return {};
        m_pending.append(buffer, int(count));
    }
    const int end = m_pending.indexOf('\n');
    const QByteArray line = m_pending.left(end);
    m_pending.remove(0, end + 1);
    return line;
}

QVector<z7sim::WireEntry> SimulatorLine::takeLog()
{
    QVector<z7sim::WireEntry> entries;
    for (const QByteArray &line : ask("log"))
        entries.append(entryOf(line));
    ask("clear-log");
    return entries;
}
