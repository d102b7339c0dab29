#include "control/livecourse.h"

#include <algorithm>

LiveValues &LiveCourse::slot(int index)
{
    const int place = m_first + index;
    return (*m_blocks[place / blockSize])[place % blockSize];
}

const LiveValues &LiveCourse::at(int index) const
{
    return const_cast<LiveCourse *>(this)->slot(index);
}

void LiveCourse::append(const LiveValues &values)
{
    const bool isClockPutBack = !isEmpty() && values.timeMs < newest().timeMs;
    if (isClockPutBack)
        moveBack(newest().timeMs - values.timeMs);
    if (m_count == mostValues)
        dropOldest();
    if (m_first + m_count == blockSize * int(m_blocks.size()))
        m_blocks.push_back(std::make_unique<Block>());
    LiveValues &added = slot(m_count++);
    added = values;
    added.isAfterGap = values.isAfterGap || isClockPutBack || m_isInterrupted;
    m_isInterrupted = false;
    while (at(0).timeMs < values.timeMs - spanMs)
        dropOldest();
}

void LiveCourse::dropOldest()
{
    --m_count;
    if (++m_first < blockSize)
        return;
    m_first = 0;
    std::rotate(m_blocks.begin(), m_blocks.begin() + 1, m_blocks.end());
}

void LiveCourse::moveBack(qint64 ms)
{
    for (int i = 0; i < m_count; ++i)
        slot(i).timeMs -= ms;
    for (CourseMark &mark : m_marks)
        mark.timeMs -= ms;
}

void LiveCourse::mark(const CourseMark &mark)
{
    if (m_marks.size() == mostMarks)
        m_marks.removeFirst();
    m_marks.append(mark);
}

int LiveCourse::firstFrom(qint64 timeMs) const
{
    int begin = 0;
    int end = m_count;
    while (begin < end) {
        const int middle = begin + (end - begin) / 2;
        if (at(middle).timeMs < timeMs)
            begin = middle + 1;
        else
            end = middle;
    }
    return begin;
}
