#pragma once

#include <QString>
#include <QVector>

#include <array>
#include <memory>
#include <vector>

/// The live values that one record told.
struct LiveValues
{
    qint64 timeMs = 0; ///< when the record came, in ms since 1970 in UTC
    double position = 0; ///< turns
    int speed = 0; ///< raw counts, as are those below
    int current = 0;
    int temperature = 0;
    int analogInput = 0;
    bool isAfterGap = false; ///< nothing is known of the time between the values before and these
};

/// Where an operation ended.
struct CourseMark
{
    qint64 timeMs = 0;
    QString text;
};

/// What one drive told over the last hour, oldest first, and where operations ended.
///
/// A ring: what is more than an hour older than the newest values makes way, as does the oldest of more than
/// `mostValues`, which are an hour of passes without a pause between them. The memory is taken in blocks of
/// 40 kB as the values come, 520 kB at the most, and kept: once there is an hour of values, none takes any
/// more. Times never descend. Moved, not copied; main thread only.
class LiveCourse
{
public:
    static constexpr qint64 spanMs = 60 * 60 * 1000;
    static constexpr int mostValues = 12 * 1024;
    static constexpr int mostMarks = 256;

    /// Adds the newest values. Where the clock was put back in the meantime, all that was recorded moves back
    /// with it and keeps its distances; how long it took until these values, nobody knows.
    void append(const LiveValues &values);
    /// The next values come after a gap, however soon they come.
    void interrupt() { m_isInterrupted = true; }
    /// Of more than `mostMarks` the oldest makes way.
    void mark(const CourseMark &mark);

    int count() const { return m_count; }
    bool isEmpty() const { return m_count == 0; }
    /// 0 is the oldest. Valid until the next values come.
    const LiveValues &at(int index) const;
    const LiveValues &newest() const { return at(m_count - 1); }
    /// The index of the first values at this time or later; count() if there are none.
    int firstFrom(qint64 timeMs) const;
    /// Oldest first. They may lie outside of the time of the values.
    const QVector<CourseMark> &marks() const { return m_marks; }

private:
    static constexpr int blockSize = 1024;
    using Block = std::array<LiveValues, blockSize>;

    LiveValues &slot(int index);
    void moveBack(qint64 ms);
    void dropOldest();

    /// Those in use in the order of time, and behind them those that wait for new values.
    std::vector<std::unique_ptr<Block>> m_blocks;
    int m_first = 0; ///< index of the oldest values in the first block
    int m_count = 0;
    bool m_isInterrupted = false;
    QVector<CourseMark> m_marks;
};
