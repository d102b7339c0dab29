#include "benchmarks/polledrecords.h"

#include "benchmarks/redraw.h"
#include "benchmarks/workbench.h"
#include "control/maincontroller.h"

namespace {

Z7Device firstDrive(Workbench &bench)
{
    Z7Device device = bench.controller().connectedDevices().constFirst();
    device.fullReadPending = false;
    device.parametersComplete = true;
    return device;
}

/// A valid reply to the request of a stack's telegram: reads answer `value`, all else is accepted.
QByteArray goodReply(const Z7Telegram &telegram, char value)
{
    QByteArray reply(telegram.expectedReplyLength(), '\0');
    reply[0] = static_cast<char>(telegram.command() + 0x80);
    reply[1] = telegram.request().at(1);
    if (telegram.command() == 4)
        reply.replace(2, 4, telegram.request().mid(2, 2) + '\0' + value);
    if (telegram.command() == 7)
        reply.replace(18, 4, QByteArray("V\1\2\3", 4));
    reply[reply.size() - 1] = static_cast<char>(telegramChecksum(reply, reply.size() - 1));
    return reply;
}

} // namespace

PolledRecords::PolledRecords(Workbench &bench)
    : m_bench(bench)
    , m_stack(firstDrive(bench), firstDrive(bench).parameterSet)
{
}

void PolledRecords::pass()
{
    const auto value = static_cast<char>(++m_passes % 100);
    m_stack.reset();
    m_stack.restart();
    m_bench.controller().PostTransactionStarted(
        Z7CommInterface::DevicePolling, m_stack.pendingCount(), m_stack.device());
    m_bench.controller().PostTransactionProgress(Z7CommInterface::DevicePolling);
    while (!m_stack.isEmpty())
        m_stack.processReply(goodReply(*m_stack.currentTelegram(), value));
    m_bench.controller().PostDeviceUpdate(Z7CommInterface::DevicePolling, m_stack.device());
    settle();
}
