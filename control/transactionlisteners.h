#pragma once

#include "comm/commfronts.h"

#include <QList>
#include <QMap>

#include <functional>

class IDeviceDataCallback;
class Z7DataWidget;

/// Someone who wants to hear from a thread.
struct TransactionListener
{
    TransactionListener(IDeviceDataCallback *listener = nullptr)
        : callback(listener)
    {
    }
    /// A page keeps to the selected drive, unless it is about all.
    TransactionListener(Z7DataWidget *page);

    IDeviceDataCallback *callback; ///< not owned; null hears nothing
    bool keepsToOneDrive = false;
};

/// Who hears from each worker thread. A listener signs up for one transaction and is forgotten when that
/// ends; while it is listed, it keeps in mind which passes had begun before it came. Owns no listener. Main
/// thread only.
class TransactionListeners
{
public:
    /// `isPassUnderWay` tells whether a thread is in a pass, whose start may not have been heard of yet.
    explicit TransactionListeners(std::function<bool(Z7CommInterface::ThreadID)> isPassUnderWay);

    /// Adds listeners at the end of the thread's list, but none that is there already.
    void add(Z7CommInterface::ThreadID threadID, const QList<TransactionListener> &listeners);
    /// The next record of a transfer reaches this listener, even if the list is emptied before. There is one
    /// such listener, the last that was named.
    void awaitTransfer(const TransactionListener &listener) { m_awaiting = listener; }
    /// Forgets a listener altogether.
    void remove(IDeviceDataCallback *callback);
    /// Empties all lists; the listener that awaits a transfer stays.
    void removeAll() { m_entries.clear(); }

    /// The news of a thread, in the order in which they come. Each is passed on to the thread's listeners, in
    /// their order; one that is called may remove the next.
    void transactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, const Z7Device &device);
    void transactionProgress(Z7CommInterface::ThreadID threadID);
    /// A listener that keeps to one drive is not told of another drive by a pass that had begun before it
    /// signed up: it would take the values for those of its own drive. `isOfAnotherDrive` is asked for each
    /// listener anew, since the user may select a drive in a dialog of the one before.
    void deviceUpdate(Z7CommInterface::ThreadID threadID, const Z7Device &device,
        const std::function<bool()> &isOfAnotherDrive);
    /// Forgets the thread's listeners afterwards.
    void transactionTerminated(Z7CommInterface::ThreadID threadID);

private:
    struct Entry
    {
        TransactionListener listener;
        int lastPassBefore; ///< number of the last pass that had begun when the listener signed up
    };
    struct Pass
    {
        int number = 0; ///< passes that have started so far
        bool underWay = false;
    };

    void addOne(Z7CommInterface::ThreadID threadID, const TransactionListener &listener);
    const Entry *find(Z7CommInterface::ThreadID threadID, const IDeviceDataCallback *callback) const;
    bool joinedLate(Z7CommInterface::ThreadID threadID, const Entry &entry) const;
    template<typename Call>
    void forEach(Z7CommInterface::ThreadID threadID, Call call) const;

    const std::function<bool(Z7CommInterface::ThreadID)> m_isPassUnderWay;
    QMap<Z7CommInterface::ThreadID, QList<Entry>> m_entries;
    QMap<Z7CommInterface::ThreadID, Pass> m_passes;
    TransactionListener m_awaiting;
};
