#pragma once

#include "simulator/simulatedbus.h"

/// Takes the waiting out of a bus, as long as this lives: where the program waits for bytes and none can
/// come, because every drive has answered or none will, the wait ends as if its time had passed.
///
///     z7sim::SimulatedBus bus(config);
///     const SkippedSilence silence(bus);
///
/// For tests that ask what the program does and not when: neither the silence behind a reply nor the time-out
/// of a drive that is missing takes its time, and a busy computer makes no drive late. A reply that is on its
/// way, a late one too, is waited for. Goes before the bus does.
class SkippedSilence
{
public:
    explicit SkippedSilence(const z7sim::SimulatedBus &bus);
    ~SkippedSilence();
    Q_DISABLE_COPY(SkippedSilence)

private:
    const z7sim::SimulatedBus &m_bus;
};
