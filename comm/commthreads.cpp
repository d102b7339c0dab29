#include "comm/commthreads.h"

#include "comm/busport.h"
#include "comm/telegramstackcatalogue.h"

namespace {

constexpr int firstAddress = 1;
constexpr int lastAddress = 255;

} // namespace

void CommThread::cancel()
{
    m_cancelled = true;
}

void CommThread::endPass()
{
    cancel();
    wait();
}

void CommThread::beginPass()
{
    m_cancelled = false;
    if (!isRunning())
        QThread::start(QThread::InheritPriority);
}

bool CommThread::exchange(BusPort &port, Z7TelegramStack &stack, int timeoutMs, Progress progress)
{
    if (!port.send(stack.currentTelegram()->request(), timeoutMs)) {
        stack.setError(TelegramError::WriteNotCompleted);
        return false;
    }
    if (!port.waitForReply(timeoutMs)) {
        stack.setError(TelegramError::NoAnswer);
        return false;
    }
    if (progress == Progress::Report)
        emit transactionProgress();
    stack.processReply(port.readReply());
    return true;
}

void CommThreadTelegramStack::runStack(Z7TelegramStack &stack, int timeoutMs, ClosePort closePort)
{
    BusPort port;
    emit transactionStarted(stack.pendingCount(), stack.device());
    const QString portName = stack.device().portInfo.portName();
    const int error = portName.isEmpty() ? TelegramError::None : port.open(portName);
    if (error == TelegramError::None)
        runTelegrams(port, stack, timeoutMs);
    else
        stack.setError(error);
    if (closePort == ClosePort::BeforeReport)
        port.close();
    emit updateDevice(stack.device());
}

void CommThreadTelegramStack::runTelegrams(BusPort &port, Z7TelegramStack &stack, int timeoutMs)
{
    while (!stack.isEmpty() && !isCancelled() && !stack.device().hasError())
        exchange(port, stack, timeoutMs, Progress::Report);
}

void CommThreadTransferTelegramStack::start(std::unique_ptr<Z7TelegramStack> stack, int timeoutMs)
{
    const QMutexLocker locker(&m_mutex);
    m_stack = std::move(stack);
    m_timeoutMs = timeoutMs;
    beginPass();
}

void CommThreadTransferTelegramStack::run()
{
    QMutexLocker locker(&m_mutex);
    const std::unique_ptr<Z7TelegramStack> stack = std::move(m_stack);
    const int timeoutMs = m_timeoutMs;
    locker.unlock();
    runStack(*stack, timeoutMs, ClosePort::AfterReport);
}

void CommThreadDevicePolling::start(Z7TelegramStack *stack, int timeoutMs)
{
    const QMutexLocker locker(&m_mutex);
    m_stack = stack;
    m_timeoutMs = timeoutMs;
    beginPass();
}

void CommThreadDevicePolling::run()
{
    QMutexLocker locker(&m_mutex);
    Z7TelegramStack *stack = m_stack;
    const int timeoutMs = m_timeoutMs;
    locker.unlock();
    runStack(*stack, timeoutMs, ClosePort::BeforeReport);
}

void CommThreadScanDevice::start(const Z7Device &device, int timeoutMs)
{
    const QMutexLocker locker(&m_mutex);
    m_device = device;
    m_device.assignAddress(firstAddress);
    m_timeoutMs = timeoutMs;
    beginPass();
}

void CommThreadScanDevice::run()
{
    QMutexLocker locker(&m_mutex);
    Z7Device device = m_device;
    const int timeoutMs = m_timeoutMs;
    locker.unlock();

    BusPort port;
    emit transactionStarted(lastAddress, device);
    const int error = port.open(device.portInfo.portName());
    if (error == TelegramError::None) {
        sweep(port, device, timeoutMs);
        return;
    }
    device.setDeviceError(error);
    emit updateDevice(device);
}

void CommThreadScanDevice::sweep(BusPort &port, Z7Device device, int timeoutMs)
{
    while (device.address <= lastAddress && !isCancelled()) {
        Z7CheckProtocolTelegramStack stack(device);
        probe(port, stack, timeoutMs);
        emit transactionProgress();
        emit updateDevice(stack.device());
        device.assignAddress(device.address + 1);
    }
}

void CommThreadScanDevice::probe(BusPort &port, Z7TelegramStack &stack, int timeoutMs)
{
    while (!stack.isEmpty() && !isCancelled()) {
        if (!exchange(port, stack, timeoutMs, Progress::Silent) || stack.device().isConnected())
            return;
    }
}
