#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "benchmarks/heap.h"
#include "benchmarks/keystrokes.h"
#include "benchmarks/polledrecords.h"
#include "benchmarks/redraw.h"
#include "benchmarks/workbench.h"
#include "comm/communicationinterface.h"
#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/pagefactory.h"
#include "simulator/simulatedbus.h"
#include "tests/support/listedports.h"

#include <QEventLoop>
#include <QLineEdit>

namespace {

constexpr int passesBefore = 1000;
/// Few, so that a cache that fills up slowly is seen.
constexpr int keystrokesBefore = 100;
constexpr int steps = 10000;

void printGrowth(const QString &what, double bytes, const QString &step)
{
    printFigure(QStringLiteral("heap growth over 10,000 steps, ") + what, bytes, Bars::heapPerStep,
        QStringLiteral("bytes a ") + step);
}

void benchUpdates(int drives, int page)
{
    Workbench bench(drives);
    bench.showPage(page);
    PolledRecords records(bench);
    const double growth = heapGrowth(passesBefore, steps, [&records] { records.pass(); });
    printGrowth(
        QStringLiteral("%1, %2 drive(s)").arg(pageTitle(page)).arg(drives), growth, QStringLiteral("update"));
    printKeystrokes(bench, page, drives, QStringLiteral("after 11,000 updates"));
}

double growthOfKeystrokes(QLineEdit *field)
{
    return heapGrowth(keystrokesBefore, steps, [field] {
        typeKey(field);
        settle();
    });
}

/// The marks in the tree change with every keystroke. What a bare field keeps for undo is left aside.
void benchKeystrokes()
{
    QLineEdit bareField;
    bareField.show();
    const double floor = growthOfKeystrokes(&bareField);
    Workbench bench(manyDrives);
    bench.showPage(PageNumber::Positioning);
    printGrowth(QStringLiteral("keystrokes, %1 drives, beyond a bare field").arg(manyDrives),
        growthOfKeystrokes(bench.userField()) - floor, QStringLiteral("keystroke"));
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
    const double growth = heapGrowth(passesBefore, steps, [&interface, &bus] {
        bus.clearLog();
        QEventLoop loop;
        QObject::connect(&interface, &Z7CommunicationInterface::DeviceUpdate, &loop, &QEventLoop::quit);
        loop.exec();
    });
    printGrowth(QStringLiteral("thread and port"), growth, QStringLiteral("pass"));
}

} // namespace

void runMemoryBenchmarks()
{
    benchUpdates(1, PageNumber::ParameterTable);
    benchUpdates(manyDrives, PageNumber::ParameterTable);
    benchUpdates(1, PageNumber::Positioning);
    benchKeystrokes();
    benchPollingThread();
}
