#pragma once

#include <QByteArray>
#include <QVector>
#include <deque>

namespace z7sim {

/// One thing that was seen on the wire.
struct WireEntry
{
    enum Direction {
        Request, ///< a whole request, at the moment its last byte reached the pseudo terminal
        Reply, ///< bytes of a drive, at the moment the last of them was on the wire
        Dropped, ///< bytes of the master that made no request
    };
    qint64 us = 0; ///< monotonic time in microseconds
    Direction direction = Request;
    QByteArray bytes;
    int address = -1; ///< bus address of the request or of the answering drive, -1 for none
};

/// The newest entries of the wire, oldest first; what is beyond the limit is forgotten.
class WireLog
{
public:
    static constexpr std::size_t limit = 200000;

    void append(const WireEntry &entry)
    {
        m_entries.push_back(entry);
        if (m_entries.size() > limit)
            m_entries.pop_front();
    }
    void clear() { m_entries.clear(); }
    QVector<WireEntry> entries() const { return QVector<WireEntry>(m_entries.begin(), m_entries.end()); }

private:
    std::deque<WireEntry> m_entries;
};

} // namespace z7sim
