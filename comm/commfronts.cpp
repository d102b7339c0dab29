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

Z7CommInterfaceFront::Z7CommInterfaceFront(Z7CommInterface::ThreadID threadID)
    : m_threadID(threadID)
{
    registerDeviceTypes();
    qRegisterMetaType<Z7CommInterface::ThreadID>("Z7CommInterface::ThreadID");
    qRegisterMetaType<Z7PassOutcome>("Z7PassOutcome");
}

void Z7CommInterfaceFront::attachTo(CommThread &worker)
{
    m_worker = &worker;
    connect(m_worker, SIGNAL(updateDevice(Z7Device)), SLOT(ThreadResponse(Z7Device)));
    connect(m_worker, SIGNAL(passEnded(Z7PassOutcome)), SLOT(postOutcome(Z7PassOutcome)));
    connect(m_worker, SIGNAL(transactionStarted(int, Z7Device)), SLOT(postTransactionStarted(int, Z7Device)));
    connect(m_worker, SIGNAL(transactionProgress()), SLOT(postTransactionProgress()));
    connect(m_worker, SIGNAL(portRefused(QString, int)), SIGNAL(portRefused(QString, int)));
    connect(m_worker, SIGNAL(finished()), SLOT(postTransactionTerminated()));
}

bool Z7CommInterfaceFront::isPassUnderWay() const
{
    // Whoever calls postTransactionTerminated too early does not take the stack from the thread.
    return m_passUnderWay || m_worker->isRunning();
}

bool Z7CommInterfaceFront::beginPass(const Z7Device &device)
{
    m_device = device;
    if (isPassUnderWay())
        return false;
    m_passUnderWay = true;
    m_responded = false;
    m_outcome = Z7PassOutcome();
    m_outcome.deviceId = device.deviceId();
    m_outcome.address = device.address;
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
        m_worker->cancel();
    else
        postTransactionTerminated();
}

void Z7CommInterfaceFront::stopAndWait()
{
    m_worker->cancel();
    m_worker->wait();
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
    : Z7CommInterfaceFront(Z7CommInterface::ScanDevice)
    , m_thread(std::make_unique<CommThreadScanDevice>())
{
    attachTo(*m_thread);
}

Z7CommInterfaceScanDevice::~Z7CommInterfaceScanDevice() = default;

void Z7CommInterfaceScanDevice::start(const Z7Device &device)
{
    if (beginPass(device))
        m_thread->start(device, options()->timeoutScanning());
}

Z7CommInterfaceTransferTelegramStack::Z7CommInterfaceTransferTelegramStack()
    : Z7CommInterfaceFront(Z7CommInterface::TransferTelegramStack)
    , m_thread(std::make_unique<CommThreadTransferTelegramStack>())
{
    attachTo(*m_thread);
}

Z7CommInterfaceTransferTelegramStack::~Z7CommInterfaceTransferTelegramStack() = default;

void Z7CommInterfaceTransferTelegramStack::start(std::unique_ptr<Z7TelegramStack> stack)
{
    if (stack && beginPass(stack->device()))
        m_thread->start(std::move(stack), options()->timeout());
}

Z7CommInterfaceDevicePolling::Z7CommInterfaceDevicePolling()
    : Z7CommInterfaceFront(Z7CommInterface::DevicePolling)
    , m_thread(std::make_unique<CommThreadDevicePolling>())
{
    attachTo(*m_thread);
}

Z7CommInterfaceDevicePolling::~Z7CommInterfaceDevicePolling() = default;

void Z7CommInterfaceDevicePolling::start(Z7TelegramStack *stack)
{
    // During a pass not even the record is looked at: the stack may be the one that the thread is using.
    if (!stack || isPassUnderWay())
        return;
    stack->restart();
    if (beginPass(stack->device()))
        m_thread->start(stack, options()->timeout());
}
