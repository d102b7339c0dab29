#pragma once

#include "comm/busnews.h"
#include "comm/commfronts.h"
#include "comm/passledger.h"
#include "comm/telegramstack.h"
#include "model/device.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <memory>
#include <utility>
#include <vector>

/// Decides which worker thread may use the bus: one at a time, with one successor waiting.
///
/// A free bus starts a request at once; a transfer is waited for; a scan or polling is stopped first. Polling
/// comes back by itself, `pollingInterval` ms after whatever ended before it. Main thread only. Failures
/// travel in the error of the records.
///
/// The bus can be lent to another program, the firmware programmer, and until it is given back no thread
/// starts (setBusLent).
class Z7CommunicationInterface : public QObject
{
    Q_OBJECT

public:
    Z7CommunicationInterface();
    /// Ends all communication and waits for it.
    ~Z7CommunicationInterface() override;

    /// Runs a stack once. A second transfer during a transfer is never started. Null asks for nothing.
    /// `request` names the transfer in passBegan, passEnded and transferNotRun: each transfer that is asked
    /// for ends with one of the last two, unless the program ends before.
    void transferTelegramStack(std::unique_ptr<Z7TelegramStack> stack, int request = 0);
    /// Sweeps the port of this record for drives.
    void scanDevice(const Z7Device &device);
    /// Installs the stack of the live update and turns polling on. Null changes nothing.
    void setPollingStack(std::unique_ptr<Z7TelegramStack> stack);
    /// Ends everything, polling too; allCommunicationTerminated tells when.
    void cancelCommunication();

    /// True while a transfer runs, or any request waits for the thread in charge to end: then the record of a
    /// polling pass that ends now is that of a pass cut short. On a lent bus no pass runs at all.
    bool isPassCutShort() const;

    /// Lends the bus to another program, or takes it back. Whatever uses the bus now goes on to its end, so
    /// who lends it cancels all communication first.
    ///
    /// While it is lent polling waits, with a stack that is set meanwhile too, and goes on one
    /// `pollingInterval` after the return. A transfer or scan does not wait, since it would come as a
    /// surprise later: one that is asked for ends before the call returns, and one that was waiting ends with
    /// the pass before it. Each gives its record with error 19 and its transactionTerminated. One that finds
    /// a pass of its own thread under way is answered at the end of that pass.
    void setBusLent(bool lent);

    /// True from the begin of a pass until its last news has arrived.
    bool isPassUnderWay(Z7CommInterface::ThreadID threadID) const { return front(threadID).isPassUnderWay(); }

    /// What the bus is used for; busStateChanged tells when that is another.
    Z7CommInterface::BusState busState() const;

    /// For the end of the program: returns when no thread runs any more, after two time-outs and the gap, or
    /// the bound on a babbling line, at the most. Nothing is reported.
    void stopAndWait();

signals:
    void DeviceUpdate(Z7CommInterface::ThreadID threadID, Z7Device device);
    void transactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, Z7Device device);
    void transactionProgress(Z7CommInterface::ThreadID threadID);
    /// A pass ended and nothing took its place.
    void transactionTerminated(Z7CommInterface::ThreadID threadID);
    /// The thread in charge has ended, perhaps with a successor waiting; comes a second time if nothing
    /// follows.
    void allCommunicationTerminated();
    /// Before the record of a port that fails, as of CommThread.
    void portRefused(QString portName, int reason);

    // These come last, behind all that a request or the end of a pass does and tells otherwise.

    /// A transfer or a pass of the live update has been handed to its thread; the request of the latter is 0.
    void passBegan(Z7CommInterface::ThreadID threadID, int request);
    /// The same has ended, however far it came. Comes after the record of the pass.
    void passEnded(Z7CommInterface::ThreadID threadID, int request, Z7PassOutcome outcome);
    /// A transfer that was asked for will not begin.
    void transferNotRun(int request, Z7CommInterface::NotRun reason);
    void busStateChanged(Z7CommInterface::BusState state);

public slots:
    void threadDeviceUpdate(Z7CommInterface::ThreadID threadID, Z7Device device);
    void threadTransactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, Z7Device device)
    {
        emit transactionStarted(threadID, maxProgress, device);
    }
    void threadTransactionTerminated(Z7CommInterface::ThreadID threadID);
    void threadTransactionProgress(Z7CommInterface::ThreadID threadID) { emit transactionProgress(threadID); }
    void startPollingThread();
    void startNextThreadID();

private slots:
    void autoEnablePolling();

private:
    void connectFront(const Z7CommInterfaceFront &front);
    const Z7CommInterfaceFront &front(int threadID) const;
    Z7CommInterfaceFront &front(int threadID)
    {
        return const_cast<Z7CommInterfaceFront &>(std::as_const(*this).front(threadID));
    }
    void takeTransfer(std::unique_ptr<Z7TelegramStack> stack, int request);
    /// What follows the end of a pass.
    void followPass(Z7CommInterface::ThreadID threadID);
    /// Tells what has not been told yet of passes, requests and the bus.
    void tellNews();
    /// Starts the thread on a free bus; otherwise lets it follow the thread in charge, stopping all but a
    /// transfer.
    void startOrQueue(int threadID);
    void startThread(int threadID);
    void stopThread(int threadID) { front(threadID).stop(); }
    /// On a lent bus: ends the request that is waiting. Polling goes on waiting.
    void refuseNextThread();
    void schedulePolling(int threadID);
    void schedulePollingOnFreeBus();
    void adoptRecords();

    Z7Device m_device; ///< record of the last request; a scan starts from it
    std::unique_ptr<Z7TelegramStack> m_transferStack; ///< waiting for its thread
    std::unique_ptr<Z7TelegramStack> m_pollingStack;
    std::unique_ptr<Z7TelegramStack>
        m_retiredPollingStack; ///< a pass may still use it; deleted before the next one
    /// Stacks that were retired twice within one pass. The pass may be using the first, so they stay until
    /// the next one, too.
    std::vector<std::unique_ptr<Z7TelegramStack>> m_overtakenPollingStacks;
    /// Records that came while a pass was using the polling stack, oldest first. It gets them after the pass,
    /// so that no record changes under the thread.
    QList<Z7Device> m_recordsToAdopt;

    QTimer m_pollingTimer {this}; ///< runs while the options hold polling off
    QTimer m_pauseBetweenPasses {this}; ///< single shot; only while polling has the bus and it is not lent
    bool m_pollingEnabled = false;
    bool m_busLent = false;
    int m_nextThread = Z7CommInterface::noThread;
    int m_currentThread = Z7CommInterface::noThread;
    Z7PassLedger m_ledger;
    Z7CommInterface::BusState m_toldState = Z7CommInterface::BusState::Idle;

    Z7CommInterfaceScanDevice m_scanFront;
    Z7CommInterfaceTransferTelegramStack m_transferFront;
    Z7CommInterfaceDevicePolling m_pollingFront;
};
