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
    : bus_(bus)
{
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    signals_ = FileDescriptor(::signalfd(-1, &ending, SFD_CLOEXEC));
    clients_.push_back({FileDescriptor(::dup(STDIN_FILENO)), STDOUT_FILENO, {}});
}

ControlLoop::~ControlLoop()
{
    if (!path_.isEmpty())
        ::unlink(path_.constData());
}

bool ControlLoop::listen(const QString &path)
{
    sockaddr_un address = {};
    const QByteArray name = QFile::encodeName(path);
    if (name.size() >= int(sizeof address.sun_path))
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    listener_ = FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ::unlink(name.constData());
    if (::bind(listener_.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return false;
    path_ = name;
    return ::listen(listener_.get(), 8) == 0;
}

void ControlLoop::run()
{
    while (!quit_) {
        std::vector<pollfd> waits = {{signals_.get(), POLLIN, 0}, {listener_.get(), POLLIN, 0}};
        for (const Client &client : clients_)
            waits.push_back({client.in.get(), POLLIN, 0});
        ::poll(waits.data(), waits.size(), -1);
        auto event = waits.begin() + 2;
        for (auto client = clients_.begin(); client != clients_.end(); ++event)
            client = event->revents && !serve(*client) ? clients_.erase(client) : std::next(client);
        if (waits[1].revents)
            acceptClient();
        quit_ = quit_ || waits[0].revents;
    }
}

void ControlLoop::acceptClient()
{
    FileDescriptor connection(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    const int out = connection.get();
    if (connection.isValid())
        clients_.push_back({std::move(connection), out, {}});
}

// False when the client has gone.
bool ControlLoop::serve(Client &client)
{
    char buffer[4096];
    const ssize_t count = ::read(client.in.get(), buffer, sizeof buffer);
    if (count <= 0)
        return false;
    client.pending.append(buffer, int(count));
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
    quit_ = quit_ || line == "quit";
    const QByteArray text = (line == "quit" ? QByteArray("ok") : bus_.command(line)) + '\n';
    for (int sent = 0; sent < text.size();) {
        const ssize_t count = ::write(client.out, text.constData() + sent, size_t(text.size() - sent));
        if (count <= 0)
            return;
        sent += int(count);
    }
}

} // namespace z7sim
