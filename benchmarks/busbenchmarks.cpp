#include "benchmarks/bareport.h"
#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
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
constexpr int blocks = 4;
constexpr int addresses = 255;
constexpr int scanTimeoutMs = 20;

double elapsedMs(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

constexpr auto unit = "× bare port";

void bareExchanges(const QString &path, const QByteArray &request, Samples &samples)
{
    BarePort port(path);
    for (int i = 0; i < exchangesPerBlock; ++i) {
        QElapsedTimer timer;
        timer.start();
        port.exchange(request, timeoutMs);
        samples.add(elapsedMs(timer));
    }
}

void ownExchanges(const QString &portName, const QByteArray &request, Samples &samples)
{
    Z7BusPort port;
    port.open(portName);
    for (int i = 0; i < exchangesPerBlock; ++i) {
        QElapsedTimer timer;
        timer.start();
        port.send(request, timeoutMs);
        if (port.waitForReply(timeoutMs))
            port.readReply();
        samples.add(elapsedMs(timer));
    }
}

void printAgainstFloor(
    const QString &what, double ownMs, double floorMs, double bar, const QString &remark = {})
{
    printFigure(what, ownMs / floorMs, bar, unit,
        QStringLiteral("%1 ms, floor %2 ms%3").arg(ownMs, 0, 'f', 3).arg(floorMs, 0, 'f', 3).arg(remark));
}

void benchExchange(const QString &path, const QString &portName)
{
    const QByteArray request = Z7Telegram_StatusRead(1).request();
    Samples floor;
    Samples own;
    for (int block = 0; block < blocks; ++block) {
        bareExchanges(path, request, floor);
        ownExchanges(portName, request, own);
    }
    printAgainstFloor(QStringLiteral("exchange, median"), own.median(), floor.median(), Bars::exchange);
    printAgainstFloor(QStringLiteral("exchange, p99"), own.p99(), floor.p99(), Bars::slowExchange);
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

double bareSweepMs(const QString &path)
{
    BarePort port(path);
    QElapsedTimer timer;
    timer.start();
    for (int address = 1; address <= addresses; ++address)
        port.exchange(Z7Telegram_StatusRead(address).request(), scanTimeoutMs);
    return elapsedMs(timer);
}

void benchSweep()
{
    z7sim::SimulatedBus bus;
    bus.start();
    ListedPorts ports;
    ports.plugUsb(QStringLiteral("ttyUSB0"), bus.portPath());
    const double floorMs = bareSweepMs(bus.portPath());
    const Z7Device device(QSerialPortInfo(QStringLiteral("ttyUSB0")));
    const double ms =
        passMs<CommThreadScanDevice>([&device](auto &thread) { thread.start(device, scanTimeoutMs); });
    printAgainstFloor(QStringLiteral("sweep of 255 silent addresses"), ms, floorMs, Bars::sweep);
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
    printAgainstFloor(QStringLiteral("first full read, %1 rows").arg(device.parameterSet.params.size()), ms,
        floorMs, Bars::fullRead, QStringLiteral(", record error %1").arg(stack.device().error));
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
