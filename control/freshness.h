#pragma once

#include "comm/busnews.h"

#include <QDateTime>
#include <QHash>

/// How old the shown values of the selected drive are. Each drive has the time of its last reading: a pass
/// that has read everything it asked for. A copied value without a clock: who asks tells the time, in ms of a
/// clock that runs on while the computer sleeps.
class Freshness
{
public:
    enum class State {
        NoDrive, ///< none is selected
        NeverRead, ///< since it was connected
        Read, ///< at readAt(), and that is as new as can be
        Stale, ///< nothing has come since readAt(), though it should have
        LiveValuesOff, ///< the option holds the live update off
        Held, ///< the live update has ended, and showing a page brings it back
        Waiting, ///< a transfer, a scan or another program has the bus
    };

    /// The id of no drive.
    static constexpr int none = -1;

    /// The time between two looks at the clock at the most: no timer runs while the computer sleeps, so that
    /// one set for later would come too late by that.
    static constexpr int longestStepMs = 1000;

    /// How long a reading counts as new: two rounds of the live update, and 2 s at the least.
    static qint64 limitMs(int pollingIntervalMs, qint64 passMs);

    /// `none` selects none.
    void select(int deviceId) { m_selected = deviceId; }
    void setBus(Z7CommInterface::BusState bus) { m_bus = bus; }
    /// A drive was read; `nowMs` is the time of the clock, `at` that of the calendar.
    void noteReading(int deviceId, qint64 nowMs, const QDateTime &at, qint64 limitMs);
    /// The drives are connected anew, with nothing read.
    void forgetReadings() { m_readings.clear(); }

    State state(qint64 nowMs) const;
    /// The time of the selected drive's last reading; null if there is none.
    QDateTime readAt() const { return m_readings.value(m_selected).at; }
    /// After how many ms, one step at the most, state() may tell something else though nothing has happened;
    /// -1 if never.
    int nextLookMs(qint64 nowMs) const;

private:
    struct Reading
    {
        qint64 readMs = 0;
        qint64 limitMs = 0;
        QDateTime at;
    };

    int m_selected = none;
    Z7CommInterface::BusState m_bus = Z7CommInterface::BusState::Idle;
    QHash<int, Reading> m_readings; ///< by device id
};
