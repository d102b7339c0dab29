#pragma once

#include "comm/exchange.h"
#include "comm/telegramstack.h"
#include "model/device.h"

#include <QMutex>
#include <QThread>

#include <atomic>
#include <memory>

class Z7BusPort;

/// Base of the worker threads that talk to the drives. A thread is idle or in one pass; run() does one pass
/// and ends.
///
/// start() and cancel() are called on the main thread; time-outs are in ms. The signals are emitted on the
/// worker thread and carry their records by value. A cancel is seen between two telegrams, so it can take two
/// time-outs and the 20 ms gap to show, or the bound on a babbling line; updateDevice and finished follow it
/// in the normal way. The destructor cancels and waits for the end of the pass.
class CommThread : public QThread
{
    Q_OBJECT

public:
    void cancel();

signals:
    /// Once, at the start of a pass, before the port is opened.
    void transactionStarted(int maxProgress, Z7Device device);
    /// Before the record of a port that fails: its name, and QSerialPort::SerialPortError of the refusal.
    void portRefused(QString portName, int reason);
    /// Transfer and polling: for each telegram that got a first reply byte. Scan: for each address.
    void transactionProgress();
    /// Transfer and polling: once, at the end. Scan: for each address. On a port that fails: once.
    void updateDevice(Z7Device device);
    /// Transfer and polling: once, behind updateDevice.
    void passEnded(Z7PassOutcome outcome);

protected:
    CommThread() = default;

    /// Stores what the next pass starts from and begins it. A pass under way goes on as it began.
    template<typename Store>
    void startPass(int timeoutMs, Store store)
    {
        const QMutexLocker locker(&m_mutex);
        m_cancelled = false;
        m_timeoutMs = timeoutMs;
        store();
        if (!isRunning())
            QThread::start(QThread::InheritPriority);
    }
    /// First in run(): fetches what startPass has stored. Gives the time-out in ms.
    template<typename Fetch>
    int fetchStart(Fetch fetch)
    {
        const QMutexLocker locker(&m_mutex);
        fetch();
        return m_timeoutMs;
    }
    /// For the destructors of the classes whose members a pass uses: ends the pass and waits for it.
    void endPass();
    /// Opens a port on the worker thread: 0, or the error number of a port that fails, which is told.
    int openPort(Z7BusPort &port, const QString &portName);
    const std::atomic<bool> &cancelled() const { return m_cancelled; }

private:
    /// Guards what a pass starts from on its way from the main thread into the pass.
    QMutex m_mutex;
    int m_timeoutMs = 0;
    std::atomic<bool> m_cancelled {false};
};

/// Base of the two threads that run a telegram stack. Without a stack a pass ends silently.
class CommThreadTelegramStack : public CommThread, private Z7ExchangeObserver
{
    Q_OBJECT

protected:
    enum class ClosePort { BeforeReport, AfterReport };

    /// Opens the port of the stack's drive, exchanges telegrams until the stack is empty, its record has an
    /// error or the pass is cancelled, and reports the record. A record without a port name opens nothing.
    void runStack(Z7TelegramStack &stack, int timeoutMs, ClosePort closePort);

private:
    void replyBegan() override { emit transactionProgress(); }
};

/// Runs a transaction once and deletes its stack at the end of the pass.
class CommThreadTransferTelegramStack final : public CommThreadTelegramStack
{
    Q_OBJECT

public:
    ~CommThreadTransferTelegramStack() override { endPass(); }

    /// On a running thread this only changes what the next pass would use.
    void start(std::unique_ptr<Z7TelegramStack> stack, int timeoutMs);

protected:
    void run() override;

private:
    std::unique_ptr<Z7TelegramStack> m_stack;
};

/// Runs one pass of the live update. The stack stays with its owner, who does not touch it during the pass.
class CommThreadDevicePolling final : public CommThreadTelegramStack
{
    Q_OBJECT

public:
    ~CommThreadDevicePolling() override { endPass(); }

    void start(Z7TelegramStack *stack, int timeoutMs);

protected:
    void run() override;

private:
    Z7TelegramStack *m_stack = nullptr;
};

/// Sweeps the addresses 1 to 255 of one port, one telegram each, and reports the record of every address;
/// isConnected() tells where a drive answered. An error never ends the sweep.
class CommThreadScanDevice final : public CommThread
{
    Q_OBJECT

public:
    ~CommThreadScanDevice() override { endPass(); }

    void start(const Z7Device &device, int timeoutMs);

protected:
    void run() override;

private:
    void sweep(Z7BusPort &port, Z7Device device, int timeoutMs);

    Z7Device m_device;
};
