#include "control/freshness.h"

#include <algorithm>

using Z7CommInterface::BusState;

qint64 Freshness::limitMs(int pollingIntervalMs, qint64 passMs)
{
    constexpr qint64 leastMs = 2000;
    return std::max(leastMs, 2 * (pollingIntervalMs + passMs));
}

void Freshness::noteReading(int deviceId, qint64 nowMs, const QDateTime &at, qint64 limitMs)
{
    m_readings.insert(deviceId, {nowMs, limitMs, at});
}

Freshness::State Freshness::state(qint64 nowMs) const
{
    if (m_selected == none)
        return State::NoDrive;
    switch (m_bus) {
    case BusState::Scanning:
    case BusState::Transferring:
    case BusState::Lent:
        return State::Waiting;
    case BusState::PollingOff:
        return State::LiveValuesOff;
    case BusState::Idle:
    case BusState::Held:
        return State::Held;
    case BusState::Polling:
        break;
    }
    const auto reading = m_readings.constFind(m_selected);
    if (reading == m_readings.constEnd())
        return State::NeverRead;
    return nowMs - reading->readMs > reading->limitMs ? State::Stale : State::Read;
}

int Freshness::nextLookMs(qint64 nowMs) const
{
    if (state(nowMs) != State::Read)
        return -1;
    const Reading reading = m_readings.value(m_selected);
    const qint64 leftMs = reading.readMs + reading.limitMs + 1 - nowMs;
    return static_cast<int>(std::min<qint64>(leftMs, longestStepMs));
}
