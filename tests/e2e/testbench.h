#pragma once

#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"
#include "tests/support/skippedsilence.h"
#include "tests/support/workingfolder.h"

#include <QMap>
#include <QStringList>

#include <map>
#include <memory>

/// A person's desk: a working folder with the sample definitions and the options, and buses with simulated
/// drives behind serial ports that the program lists.
///
/// Made before the window and gone after it. The drives answer at once and silence on their bus takes no
/// time, unless a test slows them down. Main thread only.
class TestBench
{
public:
    struct Options
    {
        int pollingIntervalMs = 100;
        /// Twice the program's own, so that a busy computer does not make a drive late.
        int timeoutScanningMs = 40;
    };

    TestBench();
    explicit TestBench(const Options &options);

    /// Puts a bus with these drives behind an adapter of the preferred vendor.
    z7sim::SimulatedBus &plugIn(const QString &port, const QVector<z7sim::DriveConfig> &drives,
        const ListedPorts::UsbAdapter &adapter = ListedPorts::ftdiAdapter());
    /// From now on telegrams on the bus of a port, and the silence around them, take their time, as on a real
    /// one: for tests of what happens in the middle of a pass, or is on the screen until the next.
    void slowDown(const QString &port);
    /// Pulls the adapter of a port and its cable to the drives, which stay on power.
    void pull(const QString &port);
    void putBack(const QString &port);

    /// The numbers in the definition file of a version, in ascending order.
    QList<int> numbers(const QByteArray &version) const;
    /// Takes the definition file of a version away.
    void removeDefinitions(const QByteArray &version);
    QString text(const QString &fileName) const;

    /// A drive of the version with few parameters, which are read in no time, and with the password of
    /// delivery, 0.
    static z7sim::DriveConfig shortDrive(int address, int password = 0);
    static QVector<z7sim::DriveConfig> shortDrives(const QList<int> &addresses);
    /// A drive with all parameters that its version, V123 or V200, has.
    static z7sim::DriveConfig fullDrive(int address, int password = 0, const QByteArray &version = "V123");

    static const QByteArray shortVersion;
    /// The parameters of the short version.
    static const QList<int> shortNumbers;

private:
    void copySamples();
    void writeShortDefinitions();

    WorkingFolder m_folder;
    ListedPorts m_ports;
    std::map<QString, std::unique_ptr<z7sim::SimulatedBus>> m_buses;
    std::map<QString, std::unique_ptr<SkippedSilence>> m_silences;
    QMap<QString, ListedPorts::UsbAdapter> m_adapters;
};
