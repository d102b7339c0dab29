// z7bench [GROUP...]: prints the table of figures, of all groups or of those named. The exit code is 0 if all
// bars are held, 1 if not, and 2 if there is no such group.

#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "benchmarks/startbenchmarks.h"

#include <QApplication>
#include <QTextStream>

namespace {

struct Group
{
    const char *name;
    void (*run)();
};

constexpr Group groups[] = {
    {"bus", runBusBenchmarks},
    {"window", runWindowBenchmarks},
    {"pages", runPageBenchmarks},
    {"output", runOutputBenchmarks},
    {"course", runCourseBenchmarks},
    {"start", runStartBenchmarks},
    {"memory", runMemoryBenchmarks},
    {"before", runPairedBenchmarks},
};

/// Those named, or all if none is named; empty if a name is unknown.
QList<Group> wantedGroups(const QStringList &names)
{
    QList<Group> wanted;
    for (const Group &group : groups) {
        if (names.isEmpty() || names.contains(QLatin1String(group.name)))
            wanted.append(group);
    }
    return names.isEmpty() || wanted.size() == names.size() ? wanted : QList<Group>();
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.value(0) == QLatin1String("--empty-window"))
        return showEmptyWindow(arguments.value(1).toLongLong());
    if (arguments.value(0) == QLatin1String("--tool-window"))
        return showToolWindow(arguments.value(1).toLongLong());

    const QList<Group> wanted = wantedGroups(arguments);
    if (wanted.isEmpty()) {
        QTextStream(stderr) << "There is no such group: " << arguments.join(QLatin1Char(' ')) << '\n';
        return 2;
    }
    printTableHead();
    for (const Group &group : wanted)
        group.run();
    return printSummary() ? 0 : 1;
}
