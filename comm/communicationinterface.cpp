#include "comm/communicationinterface.h"

#include "control/services/options.h"
#include "control/services/services.h"
#include "protocol/telegram.h"

using namespace Z7CommInterface;

namespace {

constexpr int pollingHeldOffMs = 1000;

int pollingInterval()
{
    return Z7Services::instance()->options()->pollingInterval();
}

/// Precise, since a timer left to itself ends up to 5 % early or late.
void setUpTimer(QTimer &timer, const QString &name)
{
    timer.setObjectName(name);
    timer.setTimerType(Qt::PreciseTimer);
}

} // namespace

Z7CommunicationInterface::Z7CommunicationInterface()
{
    connectFront(m_scanFront);
    connectFront(m_transferFront);
    connectFront(m_pollingFront);
    setUpTimer(m_pollingTimer, QStringLiteral("pollingTimer"));
    m_pollingTimer.setInterval(pollingHeldOffMs);
    connect(&m_pollingTimer, SIGNAL(timeout()), SLOT(autoEnablePolling()));
    setUpTimer(m_pauseBetweenPasses, QStringLiteral("pauseBetweenPasses"));
    m_pauseBetweenPasses.setSingleShot(true);
    connect(&m_pauseBetweenPasses, SIGNAL(timeout()), SLOT(startPollingThread()));
}

Z7CommunicationInterface::~Z7CommunicationInterface()
{
    stopAndWait();
}

void Z7CommunicationInterface::connectFront(const Z7CommInterfaceFront &front)
{
    connect(&front, SIGNAL(DeviceUpdate(Z7CommInterface::ThreadID, Z7Device)),
        SLOT(threadDeviceUpdate(Z7CommInterface::ThreadID, Z7Device)));
    connect(&front, SIGNAL(transactionStarted(Z7CommInterface::ThreadID, int, Z7Device)),
        SLOT(threadTransactionStarted(Z7CommInterface::ThreadID, int, Z7Device)));
    connect(&front, SIGNAL(transactionProgress(Z7CommInterface::ThreadID)),
        SLOT(threadTransactionProgress(Z7CommInterface::ThreadID)));
    connect(&front, SIGNAL(transactionTerminated(Z7CommInterface::ThreadID)),
        SLOT(threadTransactionTerminated(Z7CommInterface::ThreadID)));
    connect(&front, SIGNAL(portRefused(QString, int)), SIGNAL(portRefused(QString, int)));
}

const Z7CommInterfaceFront &Z7CommunicationInterface::front(int threadID) const
{
    if (threadID == ScanDevice)
        return m_scanFront;
    if (threadID == TransferTelegramStack)
        return m_transferFront;
    return m_pollingFront;
}

void Z7CommunicationInterface::transferTelegramStack(std::unique_ptr<Z7TelegramStack> stack, int request)
{
    if (!stack)
        return;
    if (m_busLent && !m_transferFront.isPassUnderWay()) {
        m_ledger.transferDropped(request, NotRun::BusLent);
        m_transferFront.refuse(stack->device());
    } else {
        takeTransfer(std::move(stack), request);
    }
    tellNews();
}

void Z7CommunicationInterface::takeTransfer(std::unique_ptr<Z7TelegramStack> stack, int request)
{
    m_transferStack = std::move(stack);
    m_transferStack->reset();
    // The error of the last pass must not end the new one before its first telegram.
    m_transferStack->setError(TelegramError::None);
    m_device = m_transferStack->device();
    // On a lent bus it waits, so as to be refused at the end of the pass that is in its way.
    const bool takesItsTurn = m_currentThread != TransferTelegramStack || m_busLent;
    if (takesItsTurn || m_nextThread == TransferTelegramStack)
        m_ledger.transferWaits(request);
    else
        m_ledger.transferDropped(request, NotRun::TransferRunning);
    if (takesItsTurn)
        startOrQueue(TransferTelegramStack);
}

void Z7CommunicationInterface::scanDevice(const Z7Device &device)
{
    if (m_busLent && !m_scanFront.isPassUnderWay()) {
        m_scanFront.refuse(device);
    } else {
        m_device = device;
        startOrQueue(ScanDevice);
    }
    tellNews();
}

void Z7CommunicationInterface::setPollingStack(std::unique_ptr<Z7TelegramStack> stack)
{
    if (!stack)
        return;
    if (m_pollingStack) {
        if (m_retiredPollingStack && m_pollingFront.isPassUnderWay())
            m_overtakenPollingStacks.push_back(std::move(m_retiredPollingStack));
        m_retiredPollingStack = std::move(m_pollingStack);
    }
    m_pollingStack = std::move(stack);
    m_recordsToAdopt.clear();
    m_device = m_pollingStack->device();
    m_pollingEnabled = true;
    m_pollingTimer.stop();
    startOrQueue(DevicePolling);
    tellNews();
}

void Z7CommunicationInterface::startOrQueue(int threadID)
{
    if (m_currentThread == noThread) {
        // What was waiting has its turn now.
        if (m_nextThread == threadID)
            m_nextThread = noThread;
        startThread(threadID);
        return;
    }
    if (threadID != TransferTelegramStack)
        m_ledger.waitingDropped(NotRun::Replaced);
    m_nextThread = threadID;
    if (m_currentThread != TransferTelegramStack)
        stopThread(m_currentThread);
}

void Z7CommunicationInterface::startThread(int threadID)
{
    switch (threadID) {
    case TransferTelegramStack:
        m_currentThread = TransferTelegramStack;
        m_ledger.passBegan(TransferTelegramStack);
        m_transferFront.start(std::move(m_transferStack));
        break;
    case DevicePolling:
        schedulePolling(DevicePolling);
        break;
    case ScanDevice:
        m_currentThread = ScanDevice;
        m_device.resetState();
        m_scanFront.start(m_device);
        break;
    }
}

void Z7CommunicationInterface::schedulePolling(int threadID)
{
    m_currentThread = threadID;
    if (m_busLent)
        return;
    const int interval = pollingInterval();
    if (interval >= 1) {
        m_pauseBetweenPasses.start(interval);
        return;
    }
    m_pollingEnabled = false;
    m_pollingTimer.start();
}

void Z7CommunicationInterface::startPollingThread()
{
    if (m_busLent || !m_pollingStack || m_pollingFront.isPassUnderWay())
        return;
    m_retiredPollingStack.reset();
    m_overtakenPollingStacks.clear();
    adoptRecords();
    m_pollingStack->reset();
    m_ledger.passBegan(DevicePolling);
    m_pollingFront.start(m_pollingStack.get());
    tellNews();
}

void Z7CommunicationInterface::autoEnablePolling()
{
    if (m_busLent || pollingInterval() < 1 || !m_pollingStack || m_nextThread != noThread)
        return;
    m_pollingEnabled = true;
    m_pollingTimer.stop();
    startOrQueue(DevicePolling);
    tellNews();
}

void Z7CommunicationInterface::threadDeviceUpdate(ThreadID threadID, Z7Device device)
{
    if (m_pollingStack) {
        m_recordsToAdopt.append(device);
        if (!m_pollingFront.isPassUnderWay())
            adoptRecords();
    }
    emit DeviceUpdate(threadID, device);
}

void Z7CommunicationInterface::adoptRecords()
{
    for (const Z7Device &device : qAsConst(m_recordsToAdopt))
        m_pollingStack->adoptDevice(device);
    m_recordsToAdopt.clear();
}

void Z7CommunicationInterface::threadTransactionTerminated(ThreadID threadID)
{
    m_ledger.passEnded(threadID, front(threadID).outcome());
    followPass(threadID);
    tellNews();
}

void Z7CommunicationInterface::followPass(ThreadID threadID)
{
    const bool wasInCharge = m_currentThread == threadID;
    if (wasInCharge) {
        m_currentThread = noThread;
        // A pause still armed would start a pass beside whatever comes next.
        m_pauseBetweenPasses.stop();
        emit allCommunicationTerminated();
    }
    if (m_busLent)
        refuseNextThread();
    // A listener may have answered with a request and taken the bus. Then all that follows waits for its end.
    // A refused request never had the bus, and nothing was waiting for it.
    if (m_nextThread != noThread && (wasInCharge || !m_busLent)) {
        startNextThreadID();
        return;
    }
    if (threadID == DevicePolling && m_pollingEnabled) {
        schedulePollingOnFreeBus();
        return;
    }
    emit transactionTerminated(threadID);
    if (m_pollingEnabled)
        schedulePollingOnFreeBus();
    else if (m_currentThread == noThread)
        emit allCommunicationTerminated();
}

void Z7CommunicationInterface::refuseNextThread()
{
    if (m_nextThread == TransferTelegramStack) {
        m_nextThread = noThread;
        const auto stack = std::move(m_transferStack);
        m_ledger.waitingDropped(NotRun::BusLent);
        m_transferFront.refuse(stack->device());
    } else if (m_nextThread == ScanDevice) {
        m_nextThread = noThread;
        m_scanFront.refuse(m_device);
    }
}

void Z7CommunicationInterface::setBusLent(bool lent)
{
    if (m_busLent == lent)
        return;
    m_busLent = lent;
    m_pauseBetweenPasses.stop();
    const bool isPollingWaiting = m_pollingEnabled && m_currentThread == DevicePolling;
    if (isPollingWaiting && !m_pollingFront.isPassUnderWay())
        schedulePolling(DevicePolling);
    tellNews();
}

void Z7CommunicationInterface::schedulePollingOnFreeBus()
{
    if (m_currentThread == noThread)
        schedulePolling(DevicePolling);
}

void Z7CommunicationInterface::startNextThreadID()
{
    if (m_nextThread != noThread && m_currentThread == noThread)
        startThread(std::exchange(m_nextThread, noThread));
    tellNews();
}

void Z7CommunicationInterface::cancelCommunication()
{
    m_nextThread = noThread;
    m_transferStack.reset();
    m_ledger.waitingDropped(NotRun::Cancelled);
    m_pollingEnabled = false;
    if (m_currentThread == noThread)
        emit allCommunicationTerminated();
    else
        stopThread(m_currentThread);
    tellNews();
}

void Z7CommunicationInterface::stopAndWait()
{
    m_nextThread = noThread;
    m_pollingEnabled = false;
    m_pollingTimer.stop();
    m_pauseBetweenPasses.stop();
    m_scanFront.stopAndWait();
    m_transferFront.stopAndWait();
    m_pollingFront.stopAndWait();
    m_currentThread = noThread;
    m_ledger.clear();
}
