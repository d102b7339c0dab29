#pragma once

#include "simulator/wirelog.h"

#include <QByteArrayList>
#include <QString>
#include <QVector>

/// The line of text commands of a running z7sim, over its control socket. Every call waits for the answer.
class SimulatorLine
{
public:
    SimulatorLine() = default;
    ~SimulatorLine();
    Q_DISABLE_COPY(SimulatorLine)

    /// False if nobody listens at that path.
    bool open(const QString &socketPath);

    /// Sends one command. Answers what stands behind "ok"; after an "error", or with the line gone, nothing.
    QByteArrayList ask(const QByteArray &command);
    /// What has been on the wire since the last call, oldest first.
    QVector<z7sim::WireEntry> takeLog();

private:
    QByteArray readLine();

    int m_socket = -1;
    QByteArray m_pending;
};
