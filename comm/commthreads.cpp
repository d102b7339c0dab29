#include "comm/commthreads.h"

#include "comm/busport.h"
#include "comm/telegramstackcatalogue.h"
#include "model/drivefacts.h"

void CommThread::cancel()
{
    m_cancelled = true;
}

void CommThread::endPass()
{
    cancel();
    wait();
}

int CommThread::openPort(Z7BusPort &port, const QString &portName)
{
    const int error = port.open(portName);
    if (error != TelegramError::None)
        emit portRefused(portName, port.refusal());
    return error;
}

void CommThreadTelegramStack::runStack(Z7TelegramStack &stack, int timeoutMs, ClosePort closePort)
{
    Z7BusPort port;
    emit transactionStarted(stack.pendingCount(), stack.device());
    const QString portName = stack.device().portInfo.portName();
    const int error = portName.isEmpty() ? TelegramError::None : openPort(port, portName);
    if (error == TelegramError::None)
        Z7Exchange(port, timeoutMs, cancelled(), *this).walk(stack);
    else
        stack.setError(error);
    if (closePort == ClosePort::BeforeReport)
        port.close();
    emit updateDevice(stack.device());
    emit passEnded(stack.outcome());
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
        m_device.assignAddress(lowestBusAddress);
    });
}

void CommThreadScanDevice::run()
{
    Z7Device device;
    const int timeoutMs = fetchStart([this, &device] { device = m_device; });

    Z7BusPort port;
    emit transactionStarted(highestBusAddress, device);
    const int error = openPort(port, device.portInfo.portName());
    if (error == TelegramError::None) {
        sweep(port, device, timeoutMs);
        return;
    }
    device.setDeviceError(error);
    emit updateDevice(device);
}

void CommThreadScanDevice::sweep(Z7BusPort &port, Z7Device device, int timeoutMs)
{
    // A probe is one step, whether a drive answers or not.
    Z7ExchangeObserver silent;
    Z7Exchange exchange(port, timeoutMs, cancelled(), silent);
    while (device.address <= highestBusAddress && !cancelled()) {
        Z7CheckProtocolTelegramStack stack(device);
        exchange.probe(stack);
        emit transactionProgress();
        emit updateDevice(stack.device());
        device.assignAddress(device.address + 1);
    }
}
