// z7steps keystroke|record PAGE: shows a page in a window with 32 drives, then does a batch of measured steps
// for each line of its standard input and answers with the median time of a step in ms, up to the finished
// redraw. "keystroke" types into a field of the page, "record" brings a record of the shown drive.

#include "benchmarks/figures.h"
#include "benchmarks/redraw.h"
#include "benchmarks/workbench.h"

#include <QApplication>
#include <QLineEdit>
#include <QTableWidget>
#include <QTextStream>
#include <QTreeWidget>

#include <functional>

namespace {

constexpr int stepsOfABatch = 200;

using Step = std::function<double()>;

/// Each changes the marks of the drive and its page in the tree.
Step keystrokes(Workbench &bench)
{
    QLineEdit *field = bench.userField();
    const auto redraw = std::make_shared<Redraw>(QList<QWidget *> {field, bench.tree()->viewport()});
    return [field, redraw] { return redraw->ms([field] { typeKey(field); }); };
}

Step records(Workbench &bench)
{
    const auto *table = bench.page()->findChild<QTableWidget *>();
    const auto redraw = std::make_shared<Redraw>(QList<QWidget *> {table->viewport()});
    return [&bench, redraw] {
        const Z7Device record = bench.nextRecord();
        return redraw->ms([&] { bench.deliver(record); });
    };
}

double batchMs(const Step &step)
{
    Samples samples;
    for (int i = 0; i < stepsOfABatch; ++i)
        samples.add(step());
    return samples.median();
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    Workbench bench(manyDrives);
    bench.showPage(arguments.value(2).toInt());
    const Step step = arguments.value(1) == QLatin1String("record") ? records(bench) : keystrokes(bench);
    // The first steps make what later ones find made.
    batchMs(step);
    QTextStream input(stdin);
    while (!input.readLine().isNull())
        QTextStream(stdout) << batchMs(step) << '\n' << Qt::flush;
    return 0;
}
