#pragma once

#include "tests/e2e/simulatorline.h"

#include <QMap>
#include <QRandomGenerator>

/// Disturbs the bus: each kind of fault in turn, of few exchanges or until it is ended.
class Disturber
{
public:
    /// Both belong to the caller.
    Disturber(SimulatorLine &line, QRandomGenerator &random);

    /// Begins the next fault: of the drive with this address, or of the whole line.
    void begin(int address);
    /// Ends what has been begun: no fault is left, and the adapter is in its place.
    void end();

    /// How often each kind has been.
    const QMap<QByteArray, int> &done() const { return m_done; }
    int count() const;

private:
    QByteArray fault(const QByteArray &kind, int address);

    SimulatorLine &m_line;
    QRandomGenerator &m_random;
    QByteArrayList m_kinds;
    int m_next = 0;
    QMap<QByteArray, int> m_done;
};
