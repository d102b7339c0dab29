#include "control/transactionlisteners.h"

#include "pages/datawidget.h"

#include <algorithm>
#include <utility>

using namespace Z7CommInterface;

TransactionListener::TransactionListener(Z7DataWidget *page)
    : callback(page)
    , keepsToOneDrive(page && !page->multiDevice)
{
}

TransactionListeners::TransactionListeners(std::function<bool(ThreadID)> isPassUnderWay)
    : m_isPassUnderWay(std::move(isPassUnderWay))
{
}

void TransactionListeners::add(ThreadID threadID, const QList<TransactionListener> &listeners)
{
    for (const TransactionListener &listener : listeners)
        addOne(threadID, listener);
}

void TransactionListeners::addOne(ThreadID threadID, const TransactionListener &listener)
{
    if (!listener.callback || find(threadID, listener.callback))
        return;
    const Pass pass = m_passes.value(threadID);
    // The start of a busy thread's pass is on its way through the event queue, and will have the next number.
    const int unheardOf = m_isPassUnderWay(threadID) && !pass.underWay ? 1 : 0;
    m_entries[threadID].append({listener, pass.number + unheardOf});
}

void TransactionListeners::remove(IDeviceDataCallback *callback)
{
    for (QList<Entry> &entries : m_entries) {
        const auto isIt = [callback](const Entry &entry) { return entry.listener.callback == callback; };
        entries.erase(std::remove_if(entries.begin(), entries.end(), isIt), entries.end());
    }
    if (m_awaiting.callback == callback)
        m_awaiting = {};
}

void TransactionListeners::transactionStarted(ThreadID threadID, int maxProgress, const Z7Device &device)
{
    Pass &pass = m_passes[threadID];
    ++pass.number;
    pass.underWay = true;
    forEach(threadID,
        [&](const Entry &entry) { entry.listener.callback->transactionStarted(maxProgress, device); });
}

void TransactionListeners::transactionProgress(ThreadID threadID)
{
    forEach(threadID, [](const Entry &entry) { entry.listener.callback->transactionProgress(); });
}

void TransactionListeners::deviceUpdate(
    ThreadID threadID, const Z7Device &device, const std::function<bool()> &isOfAnotherDrive)
{
    if (threadID == TransferTelegramStack)
        addOne(threadID, std::exchange(m_awaiting, {}));
    forEach(threadID, [&](const Entry &entry) {
        if (!entry.listener.keepsToOneDrive || !joinedLate(threadID, entry) || !isOfAnotherDrive())
            entry.listener.callback->DeviceUpdate(device);
    });
    m_passes[threadID].underWay = false;
}

void TransactionListeners::transactionTerminated(ThreadID threadID)
{
    forEach(threadID, [](const Entry &entry) { entry.listener.callback->transactionTerminated(); });
    m_passes[threadID].underWay = false;
    m_entries[threadID].clear();
}

const TransactionListeners::Entry *TransactionListeners::find(
    ThreadID threadID, const IDeviceDataCallback *callback) const
{
    const auto entries = m_entries.constFind(threadID);
    if (entries == m_entries.constEnd())
        return nullptr;
    const auto found = std::find_if(entries->cbegin(), entries->cend(),
        [callback](const Entry &entry) { return entry.listener.callback == callback; });
    return found == entries->cend() ? nullptr : &*found;
}

/// True if the thread's pass had begun before the listener signed up.
bool TransactionListeners::joinedLate(ThreadID threadID, const Entry &entry) const
{
    const Pass pass = m_passes.value(threadID);
    return pass.underWay && pass.number <= entry.lastPassBefore;
}

template<typename Call>
void TransactionListeners::forEach(ThreadID threadID, Call call) const
{
    const QList<Entry> entries = m_entries.value(threadID);
    for (const Entry &listed : entries) {
        // It may have been removed meanwhile, or have signed up anew.
        if (const Entry *entry = find(threadID, listed.listener.callback))
            call(Entry(*entry));
    }
}
