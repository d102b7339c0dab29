#pragma once

#include "control/livecourses.h"

#include <QObject>

class Z7MainController;

/// Keeps the courses of the live values while the program runs: the values of each pass that has read them,
/// and where operations ended. It asks for nothing on the bus. Main thread only.
class CourseRecorder : public QObject
{
    Q_OBJECT

public:
    /// The controller outlives what it tells.
    explicit CourseRecorder(const Z7MainController &controller);

    const LiveCourses &courses() const { return m_courses; }
    /// An operation on that drive has ended at `timeMs`, in ms since 1970 in UTC.
    void mark(qint64 timeMs, int deviceId, const QString &text) { m_courses.mark(timeMs, deviceId, text); }

private slots:
    void takeReading(int deviceId, qint64 staleAfterMs);
    void endReadings(int deviceId) { m_courses.interrupt(deviceId); }

private:
    const Z7MainController &m_controller;
    LiveCourses m_courses;
};
