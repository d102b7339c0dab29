#include "benchmarks/memorybenchmarks.h"

#include "benchmarks/figures.h"
#include "benchmarks/workbench.h"
#include "comm/communicationinterface.h"
#include "comm/telegramstackcatalogue.h"
#include "control/maincontroller.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/pagefactory.h"
#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int passesBefore = 1000;
constexpr int passesAfter = 10000;
constexpr double barMb = 2;

double residentMb()
{
    malloc_trim(0);
    QFile statm(QStringLiteral("/proc/self/statm"));
    statm.open(QIODevice::ReadOnly);
    const double pages = statm.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

template<typename Pass>
double growthMb(Pass pass)
{
    int done = 0;
    const auto passUntil = [&](int count) {
        for (; done < count; ++done)
            pass();
        return residentMb();
    };
    const double before = passUntil(passesBefore);
    return passUntil(passesAfter) - before;
}

/// A valid reply to the request of a stack's telegram: reads answer 1, all else is accepted.
QByteArray goodReply(const Z7Telegram &telegram)
{
    QByteArray reply(telegram.expectedReplyLength(), '\0');
    reply[0] = static_cast<char>(telegram.command() + 0x80);
    reply[1] = telegram.request().at(1);
    if (telegram.command() == 4)
        reply.replace(2, 4, telegram.request().mid(2, 2) + QByteArray("\0\1", 2));
    if (telegram.command() == 7)
        reply.replace(18, 4, QByteArray("V\1\2\3", 4));
    reply[reply.size() - 1] = static_cast<char>(telegramChecksum(reply, reply.size() - 1));
    return reply;
}

/// What a pass does to the stack, the controller, the page, the bar and the tree, without the time on the
/// wire.
void benchTablePage()
{
    Workbench bench(3);
    bench.showPage(PageNumber::ParameterTable);
    Z7Device device = bench.controller().connectedDevices().constFirst();
    device.fullReadPending = false;
    device.parametersComplete = true;
    Z7UpdateParameterSetTelegramStack stack(device, device.parameterSet);
    const auto pass = [&] {
        stack.reset();
        stack.restart();
        bench.controller().PostTransactionStarted(
            Z7CommInterface::DevicePolling, stack.pendingCount(), stack.device());
        bench.controller().PostTransactionProgress(Z7CommInterface::DevicePolling);
        while (!stack.isEmpty())
            stack.processReply(goodReply(*stack.currentTelegram()));
        bench.controller().PostDeviceUpdate(Z7CommInterface::DevicePolling, stack.device());
        QCoreApplication::processEvents();
    };
    printFigure(QStringLiteral("memory, table page, 1,000 to 10,000 passes"), growthMb(pass), barMb,
        QStringLiteral("MB"));
}

/// Whole passes with thread, port and queue, on a bus that does not answer, so that each takes a time-out of
/// 1 ms.
void benchPollingThread()
{
    const WorkingFolder folder;
    Z7Services::instance()->options()->setPollingInterval(1);
    Z7Services::instance()->options()->setTimeout(1);
    z7sim::SimulatedBus bus;
    bus.start();
    ListedPorts ports;
    ports.plugUsb(QStringLiteral("ttyUSB0"), bus.portPath());
    const Z7Device device(QSerialPortInfo(QStringLiteral("ttyUSB0")));
    Z7CommunicationInterface interface;
    interface.setPollingStack(
        std::make_unique<Z7UpdateParameterSetTelegramStack>(device, device.parameterSet));
    const auto pass = [&interface] {
        QEventLoop loop;
        QObject::connect(&interface, &Z7CommunicationInterface::DeviceUpdate, &loop, &QEventLoop::quit);
        loop.exec();
    };
    printFigure(QStringLiteral("memory, thread and port, 1,000 to 10,000 passes"), growthMb(pass), barMb,
        QStringLiteral("MB"));
}

} // namespace

void runMemoryBenchmarks()
{
    benchTablePage();
    benchPollingThread();
}
