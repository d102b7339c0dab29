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

bool CommThread::exchange(Z7BusPort &port, Z7TelegramStack &stack, int timeoutMs, Progress progress)
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
    Z7BusPort port;
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

void CommThreadTelegramStack::runTelegrams(Z7BusPort &port, Z7TelegramStack &stack, int timeoutMs)
{
    while (!stack.isEmpty() && !isCancelled() && !stack.device().hasError())
        exchange(port, stack, timeoutMs, Progress::Report);
}

void CommThreadTransferTelegramStack::start(std::unique_ptr<Z7TelegramStack> stack, int timeoutMs)
{
    startPass(timeoutMs, [this, &stack] { m_stack = std::move(stack); });
}

void CommThreadTransferTelegramStack::run()
{
    std::unique_ptr<Z7TelegramStack> stack;
    const int timeoutMs = fetchStart([this, &stack] { stack = std::move(m_stack); });
    if (stack)
        runStack(*stack, timeoutMs, ClosePort::AfterReport);
}

void CommThreadDevicePolling::start(Z7TelegramStack *stack, int timeoutMs)
{
    startPass(timeoutMs, [this, stack] { m_stack = stack; });
}

void CommThreadDevicePolling::run()
{
    Z7TelegramStack *stack = nullptr;
    const int timeoutMs = fetchStart([this, &stack] { stack = m_stack; });
    if (stack)
        runStack(*stack, timeoutMs, ClosePort::BeforeReport);
}

void CommThreadScanDevice::start(const Z7Device &device, int timeoutMs)
{
    startPass(timeoutMs, [this, &device] {
        m_device = device;
        m_device.assignAddress(firstAddress);
    });
}

void CommThreadScanDevice::run()
{
    Z7Device device;
    const int timeoutMs = fetchStart([this, &device] { device = m_device; });

    Z7BusPort port;
    emit transactionStarted(lastAddress, device);
    const int error = port.open(device.portInfo.portName());
    if (error == TelegramError::None) {
        sweep(port, device, timeoutMs);
        return;
    }
    device.setDeviceError(error);
    emit updateDevice(device);
}

void CommThreadScanDevice::sweep(Z7BusPort &port, Z7Device device, int timeoutMs)
{
    while (device.address <= lastAddress && !isCancelled()) {
        Z7CheckProtocolTelegramStack stack(device);
        probe(port, stack, timeoutMs);
        emit transactionProgress();
        emit updateDevice(stack.device());
        device.assignAddress(device.address + 1);
    }
}

void CommThreadScanDevice::probe(Z7BusPort &port, Z7TelegramStack &stack, int timeoutMs)
{
    while (!stack.isEmpty() && !isCancelled()) {
        if (!exchange(port, stack, timeoutMs, Progress::Silent) || stack.device().isConnected())
            return;
    }
}
