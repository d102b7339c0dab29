#include "simulator/controlloop.h"

#include <QFile>

#include <csignal>
#include <cstring>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <vector>

namespace z7sim {

ControlLoop::ControlLoop(SimulatedBus &bus)
    : m_bus(bus)
{
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    m_signals = FileDescriptor(::signalfd(-1, &ending, SFD_CLOEXEC));
    m_clients.push_back({FileDescriptor(::dup(STDIN_FILENO)), STDOUT_FILENO, {}});
}

ControlLoop::~ControlLoop()
{
    if (!m_path.isEmpty())
        ::unlink(m_path.constData());
}

bool ControlLoop::listen(const QString &path)
{
    sockaddr_un address = {};
    const QByteArray name = QFile::encodeName(path);
    if (name.size() >= static_cast<int>(sizeof address.sun_path))
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
    m_listener = FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ::unlink(name.constData());
    if (::bind(m_listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return false;
    m_path = name;
    return ::listen(m_listener.get(), 8) == 0;
}

void ControlLoop::run()
{
    while (!m_quit) {
        std::vector<pollfd> waits = {{m_signals.get(), POLLIN, 0}, {m_listener.get(), POLLIN, 0}};
        for (const Client &client : m_clients)
            waits.push_back({client.in.get(), POLLIN, 0});
        ::poll(waits.data(), waits.size(), -1);
        auto event = waits.begin() + 2;
        for (auto client = m_clients.begin(); client != m_clients.end(); ++event)
            client = event->revents && !serve(*client) ? m_clients.erase(client) : std::next(client);
        if (waits[1].revents)
            acceptClient();
        m_quit = m_quit || waits[0].revents;
    }
}

void ControlLoop::acceptClient()
{
    FileDescriptor connection(::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
    const int out = connection.get();
    if (connection.isValid())
        m_clients.push_back({std::move(connection), out, {}});
}

// False when the client has gone.
bool ControlLoop::serve(Client &client)
{
    char buffer[4096];
    const ssize_t count = ::read(client.in.get(), buffer, sizeof buffer);
    if (count <= 0)
        return false;
    client.pending.append(buffer, static_cast<int>(count));
    for (int end = client.pending.indexOf('\n'); end >= 0; end = client.pending.indexOf('\n')) {
        answer(client, client.pending.left(end).trimmed());
        client.pending.remove(0, end + 1);
    }
    return true;
}

void ControlLoop::answer(Client &client, const QByteArray &line)
{
    if (line.isEmpty())
        return;
    m_quit = m_quit || line == "quit";
    const QByteArray text = (line == "quit" ? QByteArray("ok") : m_bus.command(line)) + '\n';
    for (int sent = 0; sent < text.size();) {
        const ssize_t count =
            ::write(client.out, text.constData() + sent, static_cast<size_t>(text.size() - sent));
        if (count <= 0)
            return;
        sent += static_cast<int>(count);
    }
}

} // namespace z7sim
