#pragma once

#include "simulator/filedescriptor.h"

#include <QByteArray>
#include <QString>

namespace z7sim {

/// The adapter: a pseudo terminal whose slave is the serial port of the master program.
///
/// As on a real port, bytes that arrive while no program has the port open are lost, and so are those that a
/// program left unread when it closed the port. Used from one thread; errors come out as texts.
class PseudoTerminal
{
public:
    PseudoTerminal() = default;
    ~PseudoTerminal();
    PseudoTerminal(PseudoTerminal &&) = delete;

    /// A symbolic link that always points to the present slave; set before open(). It is removed by close().
    void setLink(const QString &link) { m_link = link; }
    QString link() const { return m_link; }

    /// Puts the adapter in: makes a new pseudo terminal in raw mode. Returns an empty text, or what went
    /// wrong.
    QString open();
    /// Pulls the adapter: whoever has the slave open gets a hang-up.
    void close();
    bool isOpen() const { return m_master.isValid(); }

    QString path() const { return m_path; } ///< of the slave, empty while closed
    int descriptor() const { return m_master.get(); } ///< to wait on, -1 while closed

    /// Everything that the master program has sent, without waiting.
    QByteArray read();
    /// Sends without waiting; what does not fit into the terminal's buffer is lost.
    void write(const QByteArray &bytes);

private:
    QString fail(const char *what);
    bool openSlave();
    bool placeLink() const;
    void followOpeners();
    void lastOpenerLeft();

    FileDescriptor m_master;
    /// Kept open, so that the master sees no hang-up between two openers, and beyond close(): until then the
    /// system gives the slave's name to nobody else, to whom the master program would talk.
    FileDescriptor m_slave;
    FileDescriptor m_openers; ///< tells when the slave is opened and closed
    int m_openCount = 0;
    QString m_path;
    QString m_link;
};

} // namespace z7sim
