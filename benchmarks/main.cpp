// z7bench [bus] [window] [pages] [memory]: prints the table of figures, of all groups or of those named; exit
// code 1 if one has missed its bar.

#include "benchmarks/busbenchmarks.h"
#include "benchmarks/figures.h"
#include "benchmarks/memorybenchmarks.h"
#include "benchmarks/windowbenchmarks.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--empty-window"))
        return showEmptyWindow(arguments.value(2).toLongLong());
    if (arguments.value(1) == QLatin1String("--tool-window"))
        return showToolWindow(arguments.value(2).toLongLong());

    QTextStream(stdout) << "| what | figure | bar | | |\n|---|---|---|---|---|\n" << Qt::flush;
    const auto wanted = [&arguments](const char *group) {
        return arguments.size() == 1 || arguments.contains(QLatin1String(group));
    };
    if (wanted("bus"))
        runBusBenchmarks();
    if (wanted("window"))
        runWindowBenchmarks();
    if (wanted("pages"))
        runPageBenchmarks();
    if (wanted("memory"))
        runMemoryBenchmarks();
    return allBarsHeld() ? 0 : 1;
}
