#include "comm/commfronts.h"

#include "comm/commthreads.h"
#include "control/services/options.h"
#include "control/services/services.h"

#include <QCoreApplication>

namespace {

Z7Options *options()
{
    return Z7Services::instance()->options();
}

} // namespace

Z7CommInterfaceFront::Z7CommInterfaceFront(
    Z7CommInterface::ThreadID threadID, std::unique_ptr<CommThread> thread)
    : m_threadID(threadID)
    , m_thread(std::move(thread))
{
    registerDeviceTypes();
    qRegisterMetaType<Z7CommInterface::ThreadID>("Z7CommInterface::ThreadID");
    connect(m_thread.get(), SIGNAL(updateDevice(Z7Device)), SLOT(ThreadResponse(Z7Device)));
    connect(m_thread.get(), SIGNAL(transactionStarted(int, Z7Device)),
        SLOT(postTransactionStarted(int, Z7Device)));
    connect(m_thread.get(), SIGNAL(transactionProgress()), SLOT(postTransactionProgress()));
    connect(m_thread.get(), SIGNAL(finished()), SLOT(postTransactionTerminated()));
}

Z7CommInterfaceFront::~Z7CommInterfaceFront() = default;

bool Z7CommInterfaceFront::isPassUnderWay() const
{
    // Whoever calls postTransactionTerminated too early does not take the stack from the thread.
    return m_passUnderWay || m_thread->isRunning();
}

bool Z7CommInterfaceFront::beginPass(const Z7Device &device)
{
    m_device = device;
    if (isPassUnderWay())
        return false;
    m_passUnderWay = true;
    m_responded = false;
    return true;
}

void Z7CommInterfaceFront::refuse(Z7Device device)
{
    device.setDeviceError(TelegramError::TransactionAborted);
    if (beginPass(device))
        postTransactionTerminated();
}

void Z7CommInterfaceFront::stop()
{
    if (isPassUnderWay())
        m_thread->cancel();
    else
        postTransactionTerminated();
}

void Z7CommInterfaceFront::stopAndWait()
{
    m_thread->cancel();
    m_thread->wait();
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_passUnderWay = false;
}

void Z7CommInterfaceFront::ThreadResponse(Z7Device device)
{
    m_responded = true;
    emit DeviceUpdate(m_threadID, device);
}

void Z7CommInterfaceFront::postTransactionStarted(int maxProgress, Z7Device device)
{
    emit transactionStarted(m_threadID, maxProgress, device);
}

void Z7CommInterfaceFront::postTransactionProgress()
{
    emit transactionProgress(m_threadID);
}

void Z7CommInterfaceFront::postTransactionTerminated()
{
    m_passUnderWay = false;
    if (!m_responded) {
        if (!m_device.hasError())
            m_device.setDeviceError(TelegramError::TransactionAborted);
        m_responded = true;
        emit DeviceUpdate(m_threadID, m_device);
    }
    emit transactionTerminated(m_threadID);
}

Z7CommInterfaceScanDevice::Z7CommInterfaceScanDevice()
    : Z7CommInterfaceFront(Z7CommInterface::ScanDevice, std::make_unique<CommThreadScanDevice>())
{
}

void Z7CommInterfaceScanDevice::start(const Z7Device &device)
{
    if (beginPass(device))
        thread<CommThreadScanDevice>()->start(device, options()->timeoutScanning());
}

Z7CommInterfaceTransferTelegramStack::Z7CommInterfaceTransferTelegramStack()
    : Z7CommInterfaceFront(
        Z7CommInterface::TransferTelegramStack, std::make_unique<CommThreadTransferTelegramStack>())
{
}

void Z7CommInterfaceTransferTelegramStack::start(std::unique_ptr<Z7TelegramStack> stack)
{
    if (stack && beginPass(stack->device()))
        thread<CommThreadTransferTelegramStack>()->start(std::move(stack), options()->timeout());
}

Z7CommInterfaceDevicePolling::Z7CommInterfaceDevicePolling()
    : Z7CommInterfaceFront(Z7CommInterface::DevicePolling, std::make_unique<CommThreadDevicePolling>())
{
}

void Z7CommInterfaceDevicePolling::start(Z7TelegramStack *stack)
{
    // During a pass not even the record is looked at: the stack may be the one that the thread is using.
    if (!stack || isPassUnderWay())
        return;
    stack->restart();
    if (beginPass(stack->device()))
        thread<CommThreadDevicePolling>()->start(stack, options()->timeout());
}
