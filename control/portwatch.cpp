#include "control/portwatch.h"

#include "comm/communicationinterface.h"
#include "protocol/telegram.h"

#include <algorithm>
#include <utility>

using namespace Z7CommInterface;

namespace {

constexpr int mostPorts = 16;
constexpr int lookForAdaptersMs = 1000;
constexpr int searchProgramsMs = 5000;

bool isPortFailure(int error)
{
    return error == TelegramError::PortNotOpened || error == TelegramError::PortSettingsRefused;
}

/// A telegram without an answer: the adapter may have been pulled meanwhile.
bool isDoubtful(int error)
{
    return error == TelegramError::NoAnswer || error == TelegramError::WriteNotCompleted;
}

/// What stands as before was noticed then.
void takeOverFrom(const Z7PortDiagnosis &before, Z7PortDiagnosis &found, ProgramSearch search)
{
    if (found.kind != before.kind)
        return;
    found.time = before.time;
    if (search == ProgramSearch::Lock && !found.holder.isKnown())
        found.holder = before.holder;
}

} // namespace

bool operator==(const PortState &a, const PortState &b)
{
    return a.portName == b.portName && a.diagnosis == b.diagnosis && a.partialScan == b.partialScan
        && a.returnedAs == b.returnedAs;
}

PortWatch::PortWatch()
{
    m_lookForAdapters.setInterval(lookForAdaptersMs);
    connect(&m_lookForAdapters, SIGNAL(timeout()), SLOT(lookForAdapters()));
}

void PortWatch::listenTo(const Z7CommunicationInterface &bus)
{
    connect(&bus, SIGNAL(portRefused(QString, int)), SLOT(portRefused(QString, int)));
    connect(&bus, SIGNAL(DeviceUpdate(Z7CommInterface::ThreadID, Z7Device)),
        SLOT(deviceUpdate(Z7CommInterface::ThreadID, Z7Device)));
    connect(&bus, SIGNAL(transactionStarted(Z7CommInterface::ThreadID, int, Z7Device)),
        SLOT(transactionStarted(Z7CommInterface::ThreadID, int, Z7Device)));
    connect(&bus, SIGNAL(allCommunicationTerminated()), SLOT(communicationEnded()));
}

// --- what is known ---

QList<PortState> PortWatch::troubles() const
{
    QList<PortState> states;
    for (const Entry &entry : m_entries)
        states.append(entry.state);
    return states;
}

PortState PortWatch::state(const QString &portName) const
{
    PortState state = m_entries.value(indexOf(portName)).state;
    state.portName = portName;
    return state;
}

int PortWatch::indexOf(const QString &portName) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
        [&portName](const Entry &entry) { return entry.state.portName == portName; });
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

template<typename Change>
void PortWatch::update(const QSerialPortInfo &port, Change change)
{
    const int place = indexOf(port.portName());
    Entry entry = m_entries.value(place);
    entry.port = port;
    entry.state.portName = port.portName();
    const PortState before = entry.state;
    change(entry);
    const bool isNews = !(entry.state == before);
    if (place >= 0)
        m_entries.removeAt(place);
    if (entry.state.isTrouble())
        m_entries.insert(isNews ? 0 : place, entry);
    if (m_entries.size() > mostPorts)
        m_entries.removeLast();
    keepLooking();
    if (isNews)
        emit changed();
}

// --- news from the bus ---

void PortWatch::portRefused(const QString &portName, int reason)
{
    m_refusedPort = portName;
    m_refusal = static_cast<QSerialPort::SerialPortError>(reason);
}

void PortWatch::transactionStarted(ThreadID threadID, int maxProgress, const Z7Device &device)
{
    Q_UNUSED(maxProgress)
    if (threadID != ScanDevice || device.portInfo.portName().isEmpty())
        return;
    m_scan.emplace(device.portInfo);
    update(device.portInfo, [](Entry &entry) { entry.state.partialScan.reset(); });
}

void PortWatch::deviceUpdate(ThreadID threadID, const Z7Device &device)
{
    if (device.portInfo.portName().isEmpty())
        return;
    if (threadID == ScanDevice)
        takeScanned(device);
    if (isPortFailure(device.error))
        diagnose(device.portInfo, device.error);
    else if (threadID != ScanDevice && device.error != TelegramError::TransactionAborted)
        portOpened(device);
}

void PortWatch::takeScanned(const Z7Device &device)
{
    // One that the bus did not take begins with its end.
    const bool isRefused = !m_scan && device.error == TelegramError::TransactionAborted;
    if (isRefused)
        m_scan.emplace(device.portInfo);
    if (m_scan)
        m_scan->take(device);
    if (isRefused)
        communicationEnded();
}

void PortWatch::communicationEnded()
{
    if (!m_scan)
        return;
    const ScanTally scan = *std::exchange(m_scan, std::nullopt);
    // Before the end of the scan, which then is the news: it happened at that address.
    if (scan.endedInFailure() && isPortGone(scan.port()))
        diagnose(scan.port(), TelegramError::WriteNotCompleted);
    const ScanReach reach = scan.reach();
    update(scan.port(), [&](Entry &entry) {
        entry.hasLedToList = false;
        if (!reach.isWhole())
            entry.state.partialScan = reach;
        if (reach.asked > 0 && !scan.endedInFailure())
            entry.clearDiagnosis();
    });
}

void PortWatch::diagnose(const QSerialPortInfo &port, int error)
{
    const auto refusal = port.portName() == m_refusedPort ? m_refusal : QSerialPort::NoError;
    update(port, [&](Entry &entry) {
        const ProgramSearch search = dueSearch(entry);
        Z7PortDiagnosis found = diagnosePort(port, error, refusal, search);
        takeOverFrom(entry.state.diagnosis, found, search);
        const bool wasGone = entry.isAdapterGone();
        entry.state.diagnosis = found;
        if (!entry.isAdapterGone())
            entry.state.returnedAs.clear();
        else if (!wasGone && isWatched(entry))
            adapterIsGone(entry);
    });
}

ProgramSearch PortWatch::dueSearch(Entry &entry)
{
    if (entry.sinceSearch.isValid() && !entry.sinceSearch.hasExpired(searchProgramsMs))
        return ProgramSearch::Lock;
    entry.sinceSearch.start();
    return ProgramSearch::LockAndPrograms;
}

void PortWatch::portOpened(const Z7Device &device)
{
    if (isDoubtful(device.error) && isPortGone(device.portInfo))
        diagnose(device.portInfo, device.error);
    else if (!m_entries.isEmpty())
        update(device.portInfo, [](Entry &entry) { entry.clearDiagnosis(); });
}

// --- drives and their adapters ---

void PortWatch::drivesListed(const QList<Z7Device> &drives)
{
    m_portsOfDrives.clear();
    for (const Z7Device &drive : drives)
        m_portsOfDrives.append(drive.portInfo.portName());
    m_adaptersAtListing = drives.isEmpty() ? QList<Z7Adapter>() : listedAdapters();
    const QList<Entry> known = m_entries;
    for (const Entry &entry : known) {
        update(entry.port, [this](Entry &listed) {
            if (listed.hasLedToList)
                listed.state.partialScan.reset();
            listed.hasLedToList = true;
            if (!isWatched(listed))
                listed.clearDiagnosis();
        });
    }
}

bool PortWatch::isWatched(const Entry &entry) const
{
    return m_portsOfDrives.contains(entry.state.portName);
}

void PortWatch::adapterIsGone(Entry &entry) const
{
    const QList<Z7Adapter> listed = listedAdapters();
    entry.portsBeside.clear();
    for (const Z7Adapter &adapter : listed)
        entry.portsBeside.append(adapter.portName);
    lookFor(entry, listed);
}

void PortWatch::lookFor(Entry &entry, const QList<Z7Adapter> &listed) const
{
    const Z7Adapter gone(entry.port);
    QStringList others;
    // Without serial numbers nothing else tells an adapter from its neighbour.
    if (gone.serialNumber.isEmpty())
        others = entry.portsBeside;
    for (const Z7Adapter &adapter : m_adaptersAtListing) {
        if (adapter.portName != gone.portName && adapter.looksLike(gone))
            others.append(adapter.portName);
    }
    entry.state.returnedAs = portOfReturned(gone, others, listed);
}

void PortWatch::lookForAdapters()
{
    const QList<Z7Adapter> listed = listedAdapters();
    const QList<Entry> known = m_entries;
    for (const Entry &entry : known) {
        if (entry.isAdapterGone() && isWatched(entry))
            update(entry.port, [&](Entry &gone) { lookFor(gone, listed); });
    }
}

void PortWatch::keepLooking()
{
    const bool isAnyGone = std::any_of(m_entries.begin(), m_entries.end(),
        [this](const Entry &entry) { return entry.isAdapterGone() && isWatched(entry); });
    if (!isAnyGone)
        m_lookForAdapters.stop();
    else if (!m_lookForAdapters.isActive())
        m_lookForAdapters.start();
}
