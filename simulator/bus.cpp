#include "simulator/bus.h"

#include "simulator/frames.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace z7sim {

namespace {

constexpr qint64 bitsPerByte = 11; // start, 8 data, even parity, stop
constexpr qint64 baudRate = 115200;
constexpr qint64 garbageSilenceUs = 5000;
constexpr qint64 never = std::numeric_limits<qint64>::max();

bool contains(const QVector<Fault> &faults, const char *kind)
{
    return std::any_of(
        faults.begin(), faults.end(), [kind](const Fault &f) { return f.kind->name == QByteArray(kind); });
}

// Two drives that answer at once: the second is a byte behind the first, and a 0 of either wins on the line.
void overlay(ReplyPlan &onLine, const ReplyPlan &other)
{
    QByteArray &bytes = onLine.bytes;
    const QByteArray behind = '\xFF' + other.bytes;
    bytes = bytes.leftJustified(std::max(bytes.size(), behind.size()), '\xFF');
    for (int i = 0; i < behind.size(); ++i)
        bytes[i] = static_cast<char>(bytes.at(i) & behind.at(i));
}

} // namespace

QByteArray Bus::addDrive(DriveConfig config)
{
    if (config.definitionFile.isEmpty() && config.definitionFolder.isEmpty())
        config.definitionFolder = definitionFolder;
    const QString definitions = definitionPath(config);
    if (!definitions.isEmpty() && !QFile::exists(definitions))
        return "no definition file " + QFile::encodeName(definitions);
    m_stations.push_back({Drive(config), FaultList()});
    return {};
}

bool Bus::remove(int address, int index)
{
    const Station *station = find(address, index);
    if (station)
        m_stations.erase(m_stations.begin() + (station - m_stations.data()));
    return station != nullptr;
}

Bus::Station *Bus::find(int address, int index)
{
    for (Station &station : m_stations) {
        if (station.drive.address() == address && index-- == 0)
            return &station;
    }
    return nullptr;
}

void Bus::clearFaults()
{
    faults.clear();
    for (Station &station : m_stations)
        station.faults.clear();
}

void Bus::receive(const QByteArray &bytes, qint64 now)
{
    dropGarbage(now);
    m_incoming.append(bytes);
    m_lastIncoming = now;
    for (QByteArray request = takeRequest(); !request.isEmpty(); request = takeRequest())
        exchange(request, now);
}

QByteArray Bus::takeRequest()
{
    const int length = m_incoming.isEmpty() ? 0 : requestLength(static_cast<quint8>(m_incoming.at(0)));
    if (length == 0 || m_incoming.size() < length)
        return {};
    const QByteArray request = m_incoming.left(length);
    m_incoming.remove(0, length);
    return request;
}

void Bus::dropGarbage(qint64 now)
{
    if (m_incoming.isEmpty() || now < m_lastIncoming + garbageSilenceUs)
        return;
    log.append({now, WireEntry::Dropped, m_incoming, -1});
    m_incoming.clear();
}

void Bus::exchange(const QByteArray &request, qint64 now)
{
    const int address = byteAt(request, 1);
    log.append({now, WireEntry::Request, request, address});
    m_requestEnd = std::max(now, m_requestEnd) + wireTime(request.size());
    const auto listens = [&request](const Station &station) { return station.drive.listensTo(request); };
    if (std::none_of(m_stations.begin(), m_stations.end(), listens))
        return;
    const QVector<Fault> lineFaults = faults.take(request);
    ReplyPlan onLine;
    for (Station &station : m_stations) {
        if (station.drive.listensTo(request))
            answer(station, request, lineFaults, now, onLine);
    }
    schedule(onLine, m_requestEnd + (timing.paced ? timing.turnaroundUs : 0), address);
}

void Bus::answer(Station &station, const QByteArray &request, const QVector<Fault> &lineFaults, qint64 now,
    ReplyPlan &onLine)
{
    const QVector<Fault> disturbing = station.faults.take(request) + lineFaults;
    m_pullRequested = m_pullRequested || contains(disturbing, pullFault);
    if (contains(disturbing, resetFault))
        station.drive.powerCycle(now);
    const Drive before = station.drive;
    ReplyPlan plan;
    plan.bytes = station.drive.execute(request, now);
    for (const Fault &fault : disturbing) {
        fault.apply(plan);
        if (fault.withoutEffect)
            station.drive = before;
    }
    if (onLine.bytes.isEmpty())
        onLine = plan;
    else if (!plan.bytes.isEmpty())
        overlay(onLine, plan);
}

void Bus::schedule(const ReplyPlan &plan, qint64 start, int address)
{
    qint64 time = start + plan.delayUs;
    int sent = 0;
    const auto send = [&](int end) {
        const QByteArray part = plan.bytes.mid(sent, std::max(0, end - sent));
        time += wireTime(part.size());
        sent += part.size();
        if (!part.isEmpty())
            m_transmissions.insert({time, {part, address}});
    };
    for (const ReplyPlan::Gap &gap : plan.gaps) {
        send(gap.position);
        time += gap.us;
    }
    send(plan.bytes.size());
}

qint64 Bus::wireTime(int bytes) const
{
    return timing.paced ? bytes * bitsPerByte * 1000000 / baudRate : 0;
}

qint64 Bus::nextDue() const
{
    qint64 due = faults.nextBabble();
    for (const Station &station : m_stations)
        due = std::min(due, station.faults.nextBabble());
    if (!m_transmissions.empty())
        due = std::min(due, m_transmissions.begin()->first);
    return std::min(due, m_incoming.isEmpty() ? never : m_lastIncoming + garbageSilenceUs);
}

QByteArray Bus::takeDue(qint64 now)
{
    QByteArray due;
    dropGarbage(now);
    while (!m_transmissions.empty() && m_transmissions.begin()->first <= now) {
        const Transmission part = m_transmissions.begin()->second;
        m_transmissions.erase(m_transmissions.begin());
        log.append({now, WireEntry::Reply, part.bytes, part.address});
        due += part.bytes;
    }
    takeBabble(faults, -1, now, due);
    for (Station &station : m_stations)
        takeBabble(station.faults, station.drive.address(), now, due);
    return due;
}

void Bus::takeBabble(FaultList &list, int address, qint64 now, QByteArray &due)
{
    const QByteArray bytes = list.takeBabble(now);
    if (bytes.isEmpty())
        return;
    log.append({now, WireEntry::Reply, bytes, address});
    due += bytes;
}

bool Bus::takePullRequest()
{
    return std::exchange(m_pullRequested, false);
}

} // namespace z7sim
