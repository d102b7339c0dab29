#pragma once

#include "comm/commfronts.h"

#include <QList>
#include <QMap>

class IDeviceDataCallback;

/// Who hears from each worker thread. A listener signs up for one transaction and is forgotten when that
/// ends; while it is listed, it keeps in mind which passes had begun before it came. Owns no listener. Main
/// thread only.
class TransactionListeners
{
public:
    /// Adds a listener at the end of the thread's list, unless it is null or there already. `busy` tells that
    /// the thread is in a pass, whose start may not have been heard of yet.
    void add(Z7CommInterface::ThreadID threadID, IDeviceDataCallback *listener, bool busy);
    /// Forgets a listener of all threads.
    void remove(IDeviceDataCallback *listener);
    void removeAll() { m_entries.clear(); }

    /// The news of a pass, in the order in which they come: its start, its record, and the end of the
    /// transaction, which forgets the thread's listeners.
    void passStarted(Z7CommInterface::ThreadID threadID);
    void passReported(Z7CommInterface::ThreadID threadID) { m_passes[threadID].underWay = false; }
    void transactionTerminated(Z7CommInterface::ThreadID threadID);

    /// True if the thread's pass had begun before this listener signed up.
    bool joinedLate(Z7CommInterface::ThreadID threadID, IDeviceDataCallback *listener) const;

    /// Calls the thread's listeners in their order. One that was called before may have removed the next.
    template<typename Call>
    void call(Z7CommInterface::ThreadID threadID, Call call) const
    {
        const QList<Entry> entries = m_entries.value(threadID);
        for (const Entry &entry : entries) {
            if (find(threadID, entry.listener))
                call(entry.listener);
        }
    }

private:
    struct Entry
    {
        IDeviceDataCallback *listener;
        int lastPassBefore; ///< number of the last pass that had begun when the listener signed up
    };
    struct Pass
    {
        int number = 0; ///< passes that have started so far
        bool underWay = false;
    };

    const Entry *find(Z7CommInterface::ThreadID threadID, IDeviceDataCallback *listener) const;

    QMap<Z7CommInterface::ThreadID, QList<Entry>> m_entries;
    QMap<Z7CommInterface::ThreadID, Pass> m_passes;
};
