#include "benchmarks/keystrokes.h"

#include "benchmarks/figures.h"
#include "benchmarks/plainwidgets.h"
#include "benchmarks/workbench.h"
#include "control/services/language.h"

namespace {

constexpr int keystrokes = 1000;

Comparison compareKeystrokes(QLineEdit *field)
{
    PlainField plain;
    Redraw redraw({field});
    Comparison comparison;
    for (int i = 0; i < keystrokes; ++i) {
        const double floorMs = plain.keystrokeMs();
        comparison.add(redraw.ms([field] { typeKey(field); }), floorMs);
    }
    return comparison;
}

} // namespace

void printKeystrokes(Workbench &bench, int page, int drives, const QString &when, const Bars::Keystroke &bars)
{
    const Comparison comparison = compareKeystrokes(bench.userField());
    const QString what =
        QStringLiteral("keystroke, %1, %2 drive(s), %3").arg(pageTitle(page)).arg(drives).arg(when);
    const QString unit = QStringLiteral("× bare field");
    printFigure(what, comparison.ratios().median(), bars.median, unit, comparison.remark());
    printFigure(
        what + QStringLiteral(", p99"), comparison.p99Ratio(), bars.p99, unit, comparison.p99Remark());
}
