#include "control/courserecorder.h"

#include "control/maincontroller.h"

#include <QDateTime>

CourseRecorder::CourseRecorder(const Z7MainController &controller)
    : m_controller(controller)
{
    const Z7Knowledge *knowledge = &controller.knowledge();
    connect(knowledge, SIGNAL(driveRead(int, qint64)), SLOT(takeReading(int, qint64)));
    connect(knowledge, SIGNAL(driveNotRead(int)), SLOT(endReadings(int)));
}

void CourseRecorder::takeReading(int deviceId, qint64 staleAfterMs)
{
    if (const Z7Device *drive = m_controller.findDevice(deviceId))
        m_courses.take(*drive, QDateTime::currentMSecsSinceEpoch(), staleAfterMs);
}
