#pragma once

#include "simulator/drive.h"
#include "simulator/faults.h"
#include "simulator/wirelog.h"

#include <map>
#include <vector>

namespace z7sim {

/// The line with its drives: cuts requests out of the master's bytes, lets the drives answer, disturbs the
/// answers and decides when which byte is on the wire. Without a clock, a port or a thread of its own: every
/// call gets the time in microseconds and is made from one thread.
class Bus
{
public:
    struct Timing
    {
        bool paced = true; ///< false: requests, replies and the answering time cost nothing
        qint64 turnaroundUs = 1000; ///< from the last byte of a request to the first of its reply
    };

    struct Station
    {
        Drive drive;
        FaultList faults;
    };

    Timing timing;
    WireLog log;
    FaultList faults; ///< disturb the exchanges with every drive
    QString definitionFolder; ///< for drives whose configuration names neither file nor folder

    /// Returns an empty text, or why the drive is not added: its definition file does not exist.
    QByteArray addDrive(DriveConfig config);
    /// Removes the drive that find returns.
    bool remove(int address, int index = 0);
    /// The drive with this address; index tells drives of the same address apart, in the order they came. May
    /// be null.
    Station *find(int address, int index = 0);
    const std::vector<Station> &stations() const { return m_stations; }
    void clearFaults();

    /// Takes bytes from the master.
    void receive(const QByteArray &bytes, qint64 now);
    /// Time at which takeDue has something to do next.
    qint64 nextDue() const;
    /// The bytes of the drives whose time has come.
    QByteArray takeDue(qint64 now);
    /// True once after a fault that pulls the adapter.
    bool takePullRequest();

private:
    struct Transmission
    {
        QByteArray bytes;
        int address;
    };

    QByteArray takeRequest();
    void dropGarbage(qint64 now);
    void exchange(const QByteArray &request, qint64 now);
    void answer(Station &station, const QByteArray &request, const QVector<Fault> &lineFaults, qint64 now,
        ReplyPlan &onLine);
    void schedule(const ReplyPlan &plan, qint64 start, int address);
    qint64 wireTime(int bytes) const;
    void takeBabble(FaultList &list, int address, qint64 now, QByteArray &due);

    std::vector<Station> m_stations;
    QByteArray m_incoming;
    qint64 m_lastIncoming = 0;
    qint64 m_requestEnd = 0;
    std::multimap<qint64, Transmission> m_transmissions;
    bool m_pullRequested = false;
};

} // namespace z7sim
