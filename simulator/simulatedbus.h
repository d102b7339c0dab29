#pragma once

#include "simulator/driveconfig.h"
#include "simulator/wirelog.h"

#include <QByteArray>
#include <QString>
#include <QVector>
#include <climits>
#include <memory>

namespace z7sim {

/// What a SimulatedBus begins with.
struct BusConfig
{
    bool paced = true; ///< false: requests, replies and the answering time take no time on the wire
    qint64 turnaroundUs = 1000; ///< answering time of the drives in microseconds
    QString link; ///< symbolic link to the port, none if empty
    QString definitionFolder; ///< for drives that name neither a definition file nor a folder
    QVector<DriveConfig> drives;
};

/// Z7 drives on one bus behind a pseudo terminal.
///
///     z7sim::SimulatedBus bus;
///     bus.addDrive({3, 4711});                    // address, password
///     QVERIFY(bus.start());
///     port.setPortName(bus.portPath());
///     bus.command("fault 3 no-answer count=2");
///
/// The drives answer on a thread of their own from start() to the destructor. All functions may be called
/// from any other thread, block until they are carried out and see the drives between two exchanges. Without
/// start() the functions work too, but nothing answers.
///
/// A program that sets even parity on the port needs the preload library z7paritypty.
class SimulatedBus
{
public:
    /// Result of memory() and flash() for a drive or a number that does not exist.
    static constexpr int noValue = INT_MIN;

    explicit SimulatedBus(const BusConfig &config = {});
    /// Hangs the port up, removes the link and ends the thread.
    ~SimulatedBus();
    SimulatedBus(const SimulatedBus &) = delete;
    SimulatedBus &operator=(const SimulatedBus &) = delete;

    /// Makes the port and starts answering; false if that fails or a drive of the configuration could not be
    /// added, with the reason in errorText().
    bool start();
    /// What went wrong last, empty if nothing.
    QString errorText() const;

    /// Path of the slave, "/dev/pts/5"; empty before start() and while the adapter is pulled.
    QString portPath() const;

    /// True if no byte will come out of that port until the master writes again: whatever it has written is
    /// taken, and no reply is on its way. False if the port is not this bus's, or the adapter is pulled.
    bool isSilent(const QString &path) const;

    /// False if the drive's definition file does not exist, with the reason in errorText().
    bool addDrive(const DriveConfig &config);

    /// Present value of a parameter in working memory, signed or unsigned as its definition says.
    int memory(int address, int number) const;
    /// The value that the drive has after a power cycle.
    int flash(int address, int number) const;

    /// What was on the wire since the start or clearLog(), oldest first, the newest 200,000 entries.
    QVector<WireEntry> log() const;
    void clearLog();

    /// Carries out one line of the text command language; see "help". Answers one line that begins with "ok"
    /// or "error"; if it ends with a colon, more lines follow up to one with a single dot.
    QByteArray command(const QByteArray &line);

private:
    class Worker;
    const std::unique_ptr<Worker> m_worker;
};

} // namespace z7sim
