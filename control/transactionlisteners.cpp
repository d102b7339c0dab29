#include "control/transactionlisteners.h"

#include <algorithm>

using Z7CommInterface::ThreadID;

void TransactionListeners::add(ThreadID threadID, IDeviceDataCallback *listener, bool busy)
{
    if (!listener || find(threadID, listener))
        return;
    const Pass pass = m_passes.value(threadID);
    // The start of a busy thread's pass is on its way through the event queue, and will have the next number.
    const int unheardOf = busy && !pass.underWay ? 1 : 0;
    m_entries[threadID].append({listener, pass.number + unheardOf});
}

void TransactionListeners::remove(IDeviceDataCallback *listener)
{
    for (QList<Entry> &entries : m_entries) {
        const auto isIt = [listener](const Entry &entry) { return entry.listener == listener; };
        entries.erase(std::remove_if(entries.begin(), entries.end(), isIt), entries.end());
    }
}

void TransactionListeners::passStarted(ThreadID threadID)
{
    Pass &pass = m_passes[threadID];
    ++pass.number;
    pass.underWay = true;
}

void TransactionListeners::transactionTerminated(ThreadID threadID)
{
    m_passes[threadID].underWay = false;
    m_entries[threadID].clear();
}

bool TransactionListeners::joinedLate(ThreadID threadID, IDeviceDataCallback *listener) const
{
    const Pass pass = m_passes.value(threadID);
    const Entry *entry = find(threadID, listener);
    return entry && pass.underWay && pass.number <= entry->lastPassBefore;
}

const TransactionListeners::Entry *TransactionListeners::find(
    ThreadID threadID, IDeviceDataCallback *listener) const
{
    const auto entries = m_entries.constFind(threadID);
    if (entries == m_entries.constEnd())
        return nullptr;
    const auto found = std::find_if(entries->cbegin(), entries->cend(),
        [listener](const Entry &entry) { return entry.listener == listener; });
    return found == entries->cend() ? nullptr : &*found;
}
