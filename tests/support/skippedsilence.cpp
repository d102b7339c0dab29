#include "tests/support/skippedsilence.h"

#include "tests/support/preload/linesilence.h"

#include <QFile>
#include <QMutex>

#include <algorithm>

namespace {

QMutex mutex;
QVector<const z7sim::SimulatedBus *> buses;

int isSilent(const char *path)
{
    const QMutexLocker locker(&mutex);
    const QString port = QFile::decodeName(path);
    return std::any_of(buses.cbegin(), buses.cend(),
        [&port](const z7sim::SimulatedBus *bus) { return bus->isSilent(port); });
}

} // namespace

SkippedSilence::SkippedSilence(const z7sim::SimulatedBus &bus)
    : m_bus(bus)
{
    const QMutexLocker locker(&mutex);
    buses.append(&m_bus);
    z7_skip_silence(isSilent);
}

SkippedSilence::~SkippedSilence()
{
    const QMutexLocker locker(&mutex);
    buses.removeOne(&m_bus);
    if (buses.isEmpty())
        z7_skip_silence(nullptr);
}
