#include "benchmarks/figures.h"

#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {

bool missed = false;

} // namespace

double Samples::quantile(double q) const
{
    if (m_ms.isEmpty())
        return NAN;
    QVector<double> sorted = m_ms;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(std::min<int>(sorted.size() - 1, static_cast<int>(q * sorted.size())));
}

void printFigure(const QString &what, double figure, double bar, const QString &unit, const QString &remark)
{
    const bool held = figure <= bar;
    missed = missed || !held;
    QTextStream(stdout) << QStringLiteral("| %1 | %2 %4 | %3 %4 | %5 | %6 |\n")
                               .arg(what, QString::number(figure, 'f', 3), QString::number(bar, 'f', 2), unit,
                                   held ? QStringLiteral("held") : QStringLiteral("MISSED"), remark);
}

bool allBarsHeld()
{
    return !missed;
}
