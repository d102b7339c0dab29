#pragma once

#include "comm/busnews.h"
#include "model/device.h"

#include <QObject>

#include <memory>

class CommThread;
class CommThreadDevicePolling;
class CommThreadScanDevice;
class CommThreadTransferTelegramStack;
class Z7TelegramStack;

namespace Z7CommInterface {

/// Which thread a piece of news comes from.
enum ThreadID {
    ScanDevice = 0,
    TransferTelegramStack = 1,
    DevicePolling = 2,
};

/// Stored where no thread is meant.
constexpr int noThread = -1;

} // namespace Z7CommInterface
Q_DECLARE_METATYPE(Z7CommInterface::ThreadID)

/// Stands on the main thread before one worker thread: adds the thread's identifier to its news and notices a
/// pass that ended without a report. Every pass gives at least one DeviceUpdate and then one
/// transactionTerminated.
///
/// A pass lasts here until the thread's last news has arrived, not merely until the thread has ended: what is
/// still on its way belongs to the pass, and nothing else may start on the bus before it.
class Z7CommInterfaceFront : public QObject
{
    Q_OBJECT

public:
    /// Ends the pass; with none under way the front reports it as terminated at once.
    void stop();
    bool isPassUnderWay() const;
    /// How far the last pass with a stack came; while one is under way, and where the thread has told
    /// nothing, that of a pass that was aborted before its first telegram.
    const Z7PassOutcome &outcome() const { return m_outcome; }

    /// Ends a pass before it has begun: the record comes back as aborted, whatever error it had. Needs a
    /// front without a pass under way.
    void refuse(Z7Device device);

    /// For the end of the program: cancels the pass, waits until the thread has ended, and drops its news.
    void stopAndWait();

signals:
    void DeviceUpdate(Z7CommInterface::ThreadID threadID, Z7Device device);
    void transactionStarted(Z7CommInterface::ThreadID threadID, int maxProgress, Z7Device device);
    void transactionProgress(Z7CommInterface::ThreadID threadID);
    void transactionTerminated(Z7CommInterface::ThreadID threadID);
    /// As of CommThread.
    void portRefused(QString portName, int reason);

public slots:
    void ThreadResponse(Z7Device device);
    void postOutcome(Z7PassOutcome outcome) { m_outcome = outcome; }
    void postTransactionStarted(int maxProgress, Z7Device device);
    void postTransactionProgress();
    void postTransactionTerminated();

protected:
    explicit Z7CommInterfaceFront(Z7CommInterface::ThreadID threadID);

    /// Takes this thread's news from now on. Once, in the constructor of the front that owns the thread.
    void attachTo(CommThread &worker);

    /// Notes the record with which a pass begins. False if a pass is under way: then nothing may be started.
    bool beginPass(const Z7Device &device);

private:
    const Z7CommInterface::ThreadID m_threadID;
    CommThread *m_worker = nullptr; ///< owned by the front of its class
    Z7Device m_device; ///< the record at the last start, which comes back if the thread gives none
    Z7PassOutcome m_outcome;
    bool m_responded = false;
    bool m_passUnderWay = false;
};

/// The front of the thread that looks for drives. Every address gives one DeviceUpdate.
class Z7CommInterfaceScanDevice : public Z7CommInterfaceFront
{
    Q_OBJECT

public:
    Z7CommInterfaceScanDevice();
    ~Z7CommInterfaceScanDevice() override;

    /// Sweeps the port of the record, with the option timeoutScanning.
    void start(const Z7Device &device);

private:
    const std::unique_ptr<CommThreadScanDevice> m_thread;
};

/// The front of the thread that runs what a person asked for: one stack, once.
class Z7CommInterfaceTransferTelegramStack : public Z7CommInterfaceFront
{
    Q_OBJECT

public:
    Z7CommInterfaceTransferTelegramStack();
    ~Z7CommInterfaceTransferTelegramStack() override;

    /// Runs the stack once, with the option timeout. The stack passes to the thread, which deletes it.
    void start(std::unique_ptr<Z7TelegramStack> stack);

private:
    const std::unique_ptr<CommThreadTransferTelegramStack> m_thread;
};

/// The front of the live update's thread, which runs the same stack again and again, one pass a start.
class Z7CommInterfaceDevicePolling : public Z7CommInterfaceFront
{
    Q_OBJECT

public:
    Z7CommInterfaceDevicePolling();
    ~Z7CommInterfaceDevicePolling() override;

    /// Restarts the stack and runs it, with the option timeout. The caller keeps the stack and leaves it
    /// alone while isPassUnderWay().
    void start(Z7TelegramStack *stack);

private:
    const std::unique_ptr<CommThreadDevicePolling> m_thread;
};
