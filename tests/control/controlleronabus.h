#pragma once

#include "simulator/simulatedbus.h"
#include "tests/control/testedcontroller.h"
#include "tests/support/listedports.h"
#include "tests/support/skippedsilence.h"

#include <optional>

/// A controller with a real line: drive 3 of version V123, whose password is 4711, behind the port ttyUSB0.
/// The drive answers at once and silence takes no time, unless a test slows the line down. Only executables
/// marked LISTED_PORTS may use it.
class ControllerOnABus : public TestedController
{
public:
    ControllerOnABus();
    ~ControllerOnABus() { controller.stopCommunication(); }

    /// The record with which the wizard hands over drive 3.
    Z7Device drive3() const;
    /// From now on telegrams, and the silence around them, take their time: for tests of what happens in the
    /// middle of a pass.
    void slowDown();
    /// The requests on the wire since the start or the last forgetRequests(), as "09 03 00 00 12 67 d0".
    QStringList requests() const;
    void forgetRequests() { bus.clearLog(); }
    /// True when the control bar has heard the end of a transaction.
    bool isOver() const { return deviceControl.notes.contains(QStringLiteral("terminated")); }

    ListedPorts ports;
    z7sim::SimulatedBus bus;

private:
    z7sim::BusConfig busConfig() const;

    std::optional<SkippedSilence> m_silence;
};

/// The requests to drive 3 that every pass with a log-on begins with: access with the address and with the
/// password 4711, status, software version, and the ten live values.
QStringList logOnRequests();

/// The requests that read these parameters of drive 3, in this order.
QStringList readRequests(const QList<int> &numbers);
