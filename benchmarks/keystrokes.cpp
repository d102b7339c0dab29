#include "benchmarks/keystrokes.h"

#include "benchmarks/bars.h"
#include "benchmarks/figures.h"
#include "benchmarks/plainwidgets.h"
#include "benchmarks/workbench.h"
#include "control/services/language.h"
#include "pages/pagefactory.h"

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

const Bars::Keystroke &barsOf(int page)
{
    switch (page) {
    case PageNumber::ParameterTable:
        return Bars::tableKeystroke;
    case PageNumber::CalibrationRotations: // redraws the curve
        return Bars::curveKeystroke;
    default:
        return Bars::keystroke;
    }
}

} // namespace

void printKeystrokes(Workbench &bench, int page, int drives, const QString &when)
{
    const Bars::Keystroke &bars = barsOf(page);
    const Comparison comparison = compareKeystrokes(bench.userField());
    const QString what =
        QStringLiteral("keystroke, %1, %2 drive(s), %3").arg(pageTitle(page)).arg(drives).arg(when);
    const QString unit = QStringLiteral("× bare field");
    printFigure(what, comparison.ratios().median(), bars.median, unit, comparison.remark());
    printFigure(
        what + QStringLiteral(", p99"), comparison.p99Ratio(), bars.p99, unit, comparison.p99Remark());
}
