#pragma once

#include "simulator/filedescriptor.h"
#include "simulator/simulatedbus.h"

#include <list>

namespace z7sim {

/// Feeds a bus with command lines from standard input and from a Unix socket until "quit", SIGINT or SIGTERM.
/// End of file on standard input only ends the commands from there. Used from one thread.
class ControlLoop
{
public:
    /// The bus stays with the caller and must outlive the loop. Takes the two signals over for this thread
    /// and those that it starts afterwards, so it is made before the bus starts.
    explicit ControlLoop(SimulatedBus &bus);
    /// Removes the socket.
    ~ControlLoop();

    /// Opens the control socket; false if that fails.
    bool listen(const QString &path);
    void run();

private:
    struct Client
    {
        FileDescriptor in;
        int out; ///< the descriptor of in, or standard output
        QByteArray pending;
    };

    void acceptClient();
    bool serve(Client &client);
    void answer(Client &client, const QByteArray &line);

    SimulatedBus &m_bus;
    FileDescriptor m_signals;
    FileDescriptor m_listener;
    QByteArray m_path;
    std::list<Client> m_clients;
    bool m_quit = false;
};

} // namespace z7sim
