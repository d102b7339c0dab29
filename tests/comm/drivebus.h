#pragma once

#include "comm/telegramstackcatalogue.h"
#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"

#include <QByteArrayList>
#include <QTemporaryDir>

#include <memory>

/// Drive 3 on a bus that costs no time, behind the listed port ttyUSB0. The drive is in the state of
/// delivery: version V123, and its address is its password. The executable must be a test marked
/// LISTED_PORTS.
class DriveBus
{
public:
    DriveBus();

    /// The record of a drive on this bus as the wizard builds it.
    static Z7Device drive(int address, int password);
    static Z7Device drive3() { return drive(3, 3); }
    /// The same on the port ttyUSB1, which is listed but does not open.
    static Z7Device driveOnDeadPort();

    /// Carries out a line of the simulator's command language, such as "fault 3 no-answer".
    void command(const QByteArray &line);

    /// The present value of a parameter in the drive.
    int memory(int address, int number) const { return m_bus.memory(address, number); }

    /// Everything that was asked for on the wire, as hex text.
    QByteArrayList requests() const;
    /// The frames of the wire in both directions.
    QVector<z7sim::WireEntry> wire() const { return m_bus.log(); }
    void forgetWire() { m_bus.clearLog(); }

    /// Path of the pseudo terminal behind the port.
    QString portPath() const { return m_bus.portPath(); }
    void pullAdapter();
    void plugAdapterIn();
    /// Leads the port to where the adapter is, or to nothing.
    void connectPort();
    void disconnectPort();
    /// True while some program has the port open. Any thread.
    static bool isPortInUse();

private:
    /// Where the pseudo terminal is found; nothing is there while the adapter is pulled. The pseudo
    /// terminal's own path may belong to another process by then.
    QString link() const { return m_folder.filePath(QStringLiteral("adapter")); }

    QTemporaryDir m_folder;
    ListedPorts m_ports;
    z7sim::SimulatedBus m_bus;
};

/// Waiting times in ms, as the user sets them in the options.
void setTimeout(int ms);
void setTimeoutScanning(int ms);
void setPollingInterval(int ms);

/// A stack that tells when it is deleted: then its life has expired.
template<typename Stack>
class Watched : public Stack
{
public:
    using Stack::Stack;
    std::weak_ptr<void> life() const { return m_life; }

private:
    const std::shared_ptr<int> m_life = std::make_shared<int>();
};

/// A transaction of one telegram, an access telegram with the address as password, and of 14 telegrams.
using Probe = Watched<Z7CheckProtocolTelegramStack>;
using Status = Watched<Z7DeviceStatusTelegramStack>;

/// Access telegrams to drive 3 with the passwords 3 and 4711.
constexpr char AccessWith3[] = "09 03 00 00 00 03 5a";
constexpr char AccessWith4711[] = "09 03 00 00 12 67 d0";
