#include "benchmarks/busbenchmarks.h"

#include "benchmarks/bareport.h"
#include "benchmarks/figures.h"
#include "benchmarks/workbench.h"
#include "comm/busport.h"
#include "comm/commthreads.h"
#include "comm/telegramstackcatalogue.h"
#include "control/services/services.h"
#include "model/parameterdefinitions.h"
#include "protocol/telegramcatalogue.h"
#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"

#include <QElapsedTimer>
#include <QEventLoop>

namespace {

constexpr int timeoutMs = 140;
constexpr int exchangesPerBlock = 100;
constexpr int blocks = 3;
constexpr int addresses = 255;
constexpr int scanTimeoutMs = 20;

double elapsedMs(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

Samples bareExchanges(const QString &path, const QByteArray &request)
{
    Samples samples;
    BarePort port(path);
    for (int i = 0; i < exchangesPerBlock; ++i) {
        QElapsedTimer timer;
        timer.start();
        port.exchange(request, timeoutMs);
        samples.add(elapsedMs(timer));
    }
    return samples;
}

void ownExchanges(const QString &portName, const QByteArray &request, double floorMs, Samples &beyondFloor)
{
    Z7BusPort port;
    port.open(portName);
    for (int i = 0; i < exchangesPerBlock; ++i) {
        QElapsedTimer timer;
        timer.start();
        port.send(request, timeoutMs);
        if (port.waitForReply(timeoutMs))
            port.readReply();
        beyondFloor.add(elapsedMs(timer) - floorMs);
    }
}

void benchExchange(const QString &path, const QString &portName)
{
    const QByteArray request = Z7Telegram_StatusRead(1).request();
    Samples beyondFloor;
    double floorMs = 0;
    for (int block = 0; block < blocks; ++block) {
        floorMs = bareExchanges(path, request).median();
        ownExchanges(portName, request, floorMs, beyondFloor);
    }
    const QString remark = QStringLiteral("floor %1 ms").arg(floorMs, 0, 'f', 3);
    printFigure(QStringLiteral("exchange beyond the floor, median"), beyondFloor.median(), 1, "ms", remark);
    printFigure(QStringLiteral("exchange beyond the floor, p99"), beyondFloor.p99(), 5, "ms", remark);
}

template<typename Thread, typename Start>
double passMs(Start start)
{
    Thread thread;
    QEventLoop loop;
    QObject::connect(&thread, &QThread::finished, &loop, &QEventLoop::quit);
    QElapsedTimer timer;
    timer.start();
    start(thread);
    loop.exec();
    return elapsedMs(timer);
}

void benchSweep()
{
    z7sim::SimulatedBus bus;
    bus.start();
    ListedPorts ports;
    ports.plugUsb(QStringLiteral("ttyUSB0"), bus.portPath());
    const Z7Device device(QSerialPortInfo(QStringLiteral("ttyUSB0")));
    const double ms =
        passMs<CommThreadScanDevice>([&device](auto &thread) { thread.start(device, scanTimeoutMs); });
    printFigure(QStringLiteral("sweep of 255 silent addresses"), ms / (addresses * scanTimeoutMs), 1.08,
        QStringLiteral("× 255 × 20 ms"));
}

Z7Device sampleDrive()
{
    Z7Device device(QSerialPortInfo(QStringLiteral("ttyUSB0")));
    device.setSoftwareVersion(QStringLiteral("V123"));
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(device.softwareVersion);
    definitions->load();
    device.setParameterSet(definitions->emptyParameterSet());
    device.setPassword(device.address);
    return device;
}

double bareFullReadMs(const QString &path, const Z7Device &device)
{
    Z7UpdateParameterSetTelegramStack stack(device, device.parameterSet);
    BarePort port(path);
    QElapsedTimer timer;
    timer.start();
    while (!stack.isEmpty())
        stack.processReply(port.exchange(stack.currentTelegram()->request(), timeoutMs));
    return elapsedMs(timer);
}

void benchFullRead(const QString &path)
{
    const Z7Device device = sampleDrive();
    const double floorMs = bareFullReadMs(path, device);
    Z7UpdateParameterSetTelegramStack stack(device, device.parameterSet);
    const double ms =
        passMs<CommThreadDevicePolling>([&stack](auto &thread) { thread.start(&stack, timeoutMs); });
    printFigure(QStringLiteral("first full read, %1 rows").arg(device.parameterSet.params.size()),
        ms / floorMs, 1.05, QStringLiteral("× floor"),
        QStringLiteral("%1 ms, floor %2 ms, record error %3")
            .arg(ms, 0, 'f', 0)
            .arg(floorMs, 0, 'f', 0)
            .arg(stack.device().error));
}

} // namespace

void runBusBenchmarks()
{
    const WorkingFolder folder;
    benchSweep();
    z7sim::BusConfig config;
    config.definitionFolder = QStringLiteral(Z7_SAMPLES_DIR);
    config.drives = {{}};
    z7sim::SimulatedBus bus(config);
    bus.start();
    ListedPorts ports;
    ports.plugUsb(QStringLiteral("ttyUSB0"), bus.portPath());
    benchExchange(bus.portPath(), QStringLiteral("ttyUSB0"));
    benchFullRead(bus.portPath());
}
