#pragma once

#include "control/livecourse.h"
#include "model/device.h"

#include <QList>
#include <QString>

#include <map>

/// The course of one drive's live values, with what is needed to show it when the drive is no longer listed.
struct DriveCourse
{
    QString name; ///< as the tree shows it
    QString version; ///< whose definitions know the units
    LiveCourse course;
    qint64 staleFromMs = 0; ///< unless values come before
};

/// The courses of all drives that were read, by device id. They outlive the list of drives, so that one that
/// comes back goes on with its course; one that was given another address begins a new one.
///
/// Takes what comes anyway and asks for nothing. At most `mostDrives` courses, 17 MB when all of them are
/// full; of more, the one whose drive was not heard for the longest time makes way. Times are in ms since
/// 1970 in UTC. Main thread only.
class LiveCourses
{
public:
    static constexpr int mostDrives = 32;

    /// Takes the record of a pass that has read all live values, unless it has an error or is of a drive that
    /// is not connected or gave no access. It is stale `staleAfterMs` later: what comes after that follows a
    /// gap.
    void take(const Z7Device &record, qint64 timeMs, qint64 staleAfterMs);
    /// The drive did not answer: what comes next follows a gap.
    void interrupt(int deviceId);
    /// An operation on that drive ended. Nothing is kept of a drive without a course.
    void mark(qint64 timeMs, int deviceId, const QString &text);

    /// The ids of all drives with a course, in ascending order.
    QList<int> ids() const;
    /// Valid until the next record comes; null if that drive has no course.
    const DriveCourse *find(int deviceId) const;

private:
    DriveCourse &courseOf(const Z7Device &drive);
    void makeRoom();

    std::map<int, DriveCourse> m_courses;
};
