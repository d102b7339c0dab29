#include "tests/comm/commnews.h"

#include "comm/commthreads.h"
#include "comm/communicationinterface.h"

using Z7CommInterface::ThreadID;

namespace {

QString nameOf(ThreadID threadID)
{
    static const QString names[] = {
        QStringLiteral("scan "), QStringLiteral("transfer "), QStringLiteral("polling ")};
    return names[threadID];
}

} // namespace

CommNews::CommNews(CommThread &thread)
{
    registerDeviceTypes();
    connect(&thread, &CommThread::transactionStarted, this,
        [this](int maxProgress, const Z7Device &device) { noteStart(QString(), maxProgress, device); });
    connect(&thread, &CommThread::transactionProgress, this, [this] { noteProgress(QString()); });
    connect(&thread, &CommThread::updateDevice, this,
        [this](const Z7Device &device) { noteRecord(QString(), device); });
    connect(&thread, &QThread::finished, this, [this] { m_events.append(QStringLiteral("ended")); });
}

CommNews::CommNews(const Z7CommInterfaceFront &front)
{
    listenToNamed(front);
}

CommNews::CommNews(const Z7CommunicationInterface &scheduler)
{
    listenToNamed(scheduler);
    connect(&scheduler, &Z7CommunicationInterface::allCommunicationTerminated, this,
        [this] { m_events.append(QStringLiteral("all terminated")); });
}

template<typename Source>
void CommNews::listenToNamed(const Source &source)
{
    connect(&source, &Source::transactionStarted, this,
        [this](ThreadID id, int steps, const Z7Device &device) { noteStart(nameOf(id), steps, device); });
    connect(&source, &Source::transactionProgress, this, [this](ThreadID id) { noteProgress(nameOf(id)); });
    connect(&source, &Source::DeviceUpdate, this,
        [this](ThreadID id, const Z7Device &device) { noteRecord(nameOf(id), device); });
    connect(&source, &Source::transactionTerminated, this,
        [this](ThreadID id) { m_events.append(nameOf(id) + QStringLiteral("terminated")); });
}

void CommNews::noteStart(const QString &name, int maxProgress, const Z7Device &device)
{
    m_startRecords.append(device);
    m_events.append(QStringLiteral("%1started %2").arg(name).arg(maxProgress));
}

void CommNews::noteProgress(const QString &name)
{
    const QString event = name + QStringLiteral("progress ");
    int steps = 1;
    if (!m_events.isEmpty() && m_events.last().startsWith(event))
        steps += m_events.takeLast().mid(event.size()).toInt();
    m_events.append(event + QString::number(steps));
}

void CommNews::noteRecord(const QString &name, const Z7Device &device)
{
    m_records.append(device);
    m_events.append(QStringLiteral("%1record %2").arg(name).arg(device.error));
}

QStringList CommNews::milestones() const
{
    QStringList milestones;
    for (const QString &event : m_events) {
        if (!event.contains(QStringLiteral("progress")) && event != QStringLiteral("scan record 1"))
            milestones.append(event);
    }
    return milestones;
}

int CommNews::count(const QString &event) const
{
    int count = 0;
    for (const QString &noted : m_events)
        count += noted == event || noted.startsWith(event + QLatin1Char(' '));
    return count;
}

void CommNews::clear()
{
    m_events.clear();
    m_records.clear();
    m_startRecords.clear();
}
