#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "benchmarks/keystrokes.h"
#include "benchmarks/plainwidgets.h"
#include "benchmarks/workbench.h"
#include "control/maincontroller.h"
#include "pages/pagefactory.h"
#include "shell/maincontentwidget.h"

namespace {

constexpr int repetitions = 100;
constexpr int pagesOfADrive = 14;

void benchTree()
{
    Workbench bench(manyDrives);
    PlainTree plain;
    Redraw redraw({bench.tree()->viewport()});
    const QList<int> all = bench.controller().deviceIds();
    const auto rebuild = [&](const QList<int> &ids) {
        return redraw.ms([&] { bench.content().rebuildTree(ids); });
    };
    Comparison rebuilds;
    Comparison refreshes;
    for (int i = 0; i < repetitions; ++i) {
        // A list without its last drive is another tree, so both calls build it from nothing.
        rebuild(all.mid(0, manyDrives - 1));
        const double floorMs = plain.rebuildMs(manyDrives, pagesOfADrive);
        rebuilds.add(rebuild(all), floorMs);
        refreshes.add(Redraw({}).ms([&] { bench.content().rebuildTree(all); }), floorMs);
    }
    const QString unit = QStringLiteral("× plain tree");
    printFigure(QStringLiteral("tree rebuild, 32 drives"), rebuilds.ratios().median(), Bars::treeRebuild,
        unit, rebuilds.remark());
    printFigure(QStringLiteral("tree refresh, 32 drives, no mark changes"), refreshes.ratios().median(),
        Bars::treeRefresh, unit, refreshes.remark());
}

void benchKeystrokes(int drives, int page)
{
    Workbench bench(drives);
    bench.showPage(page);
    printKeystrokes(bench, page, drives, QStringLiteral("fresh"));
}

} // namespace

void runWindowBenchmarks()
{
    benchTree();
    benchKeystrokes(1, PageNumber::ParameterTable);
    benchKeystrokes(manyDrives, PageNumber::ParameterTable);
    benchKeystrokes(1, PageNumber::Positioning);
    benchKeystrokes(1, PageNumber::CalibrationRotations);
}
