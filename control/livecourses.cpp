#include "control/livecourses.h"

#include <algorithm>

namespace {

LiveValues valuesOf(const Z7Device &record, qint64 timeMs)
{
    LiveValues values;
    values.timeMs = timeMs;
    values.position = record.actualPosition;
    values.speed = record.actualSpeed;
    values.current = record.actualCurrent;
    values.temperature = record.actualTemperature;
    values.analogInput = record.analogInputA1;
    return values;
}

} // namespace

void LiveCourses::take(const Z7Device &record, qint64 timeMs, qint64 staleAfterMs)
{
    if (record.hasError() || !record.isConnected() || !record.isAccessGranted())
        return;
    DriveCourse &drive = courseOf(record);
    LiveValues values = valuesOf(record, timeMs);
    values.isAfterGap = timeMs > drive.staleFromMs;
    drive.course.append(values);
    drive.staleFromMs = timeMs + staleAfterMs;
}

void LiveCourses::interrupt(int deviceId)
{
    const auto lost = m_courses.find(deviceId);
    if (lost != m_courses.end())
        lost->second.course.interrupt();
}

DriveCourse &LiveCourses::courseOf(const Z7Device &drive)
{
    const int id = drive.deviceId();
    const auto known = m_courses.find(id);
    if (known != m_courses.end())
        return known->second;
    makeRoom();
    return m_courses.emplace(id, DriveCourse {deviceName(drive), drive.softwareVersion, {}, 0}).first->second;
}

void LiveCourses::makeRoom()
{
    if (int(m_courses.size()) < mostDrives)
        return;
    m_courses.erase(std::min_element(m_courses.begin(), m_courses.end(), [](const auto &a, const auto &b) {
        return a.second.course.newest().timeMs < b.second.course.newest().timeMs;
    }));
}

void LiveCourses::mark(qint64 timeMs, int deviceId, const QString &text)
{
    const auto found = m_courses.find(deviceId);
    if (found != m_courses.end())
        found->second.course.mark({timeMs, text});
}

QList<int> LiveCourses::ids() const
{
    QList<int> ids;
    for (const auto &course : m_courses)
        ids.append(course.first);
    return ids;
}

const DriveCourse *LiveCourses::find(int deviceId) const
{
    const auto found = m_courses.find(deviceId);
    return found == m_courses.end() ? nullptr : &found->second;
}
