#include "benchmarks/figures.h"

#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {

int held = 0;
int missed = 0;
int unmeasured = 0;

QString numberText(double value)
{
    return QString::number(value, 'f', 3);
}

void printRow(const QString &what, const QString &figure, const QString &bar, const QString &verdict,
    const QString &spare, const QString &remark)
{
    QTextStream(stdout)
        << QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |\n").arg(what, figure, bar, verdict, spare, remark)
        << Qt::flush;
}

/// A figure that tells of no growth fits under its bar as often as one likes.
QString spareText(double figure, double bar)
{
    return figure > 0 ? QStringLiteral("%1 ×").arg(bar / figure, 0, 'f', 1) : QString();
}

} // namespace

double Samples::quantile(double q) const
{
    const auto isMissing = [](double value) { return std::isnan(value); };
    if (m_values.isEmpty() || std::any_of(m_values.begin(), m_values.end(), isMissing))
        return NAN;
    QVector<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(std::min<int>(sorted.size() - 1, static_cast<int>(q * sorted.size())));
}

void Comparison::add(double ownMs, double floorMs)
{
    m_own.add(ownMs);
    m_floor.add(floorMs);
    m_ratios.add(ownMs / floorMs);
}

QString Comparison::remark() const
{
    return QStringLiteral("%1 ms, floor %2 ms; middle half %3 to %4")
        .arg(numberText(m_own.median()), numberText(m_floor.median()), numberText(m_ratios.quantile(0.25)),
            numberText(m_ratios.quantile(0.75)));
}

QString Comparison::p99Remark() const
{
    return QStringLiteral("%1 ms, floor %2 ms").arg(numberText(m_own.p99()), numberText(m_floor.p99()));
}

void printTableHead()
{
    printRow(QStringLiteral("what"), QStringLiteral("figure"), QStringLiteral("bar"), {},
        QStringLiteral("to spare"), QStringLiteral("remark"));
    QTextStream(stdout) << "|---|---|---|---|---|---|\n" << Qt::flush;
}

void printFigure(const QString &what, double figure, double bar, const QString &unit, const QString &remark)
{
    const bool isHeld = figure <= bar;
    ++(isHeld ? held : missed);
    const QString behind = QLatin1Char(' ') + unit;
    printRow(what, numberText(figure) + behind, numberText(bar) + behind,
        isHeld ? QStringLiteral("held") : QStringLiteral("MISSED"), spareText(figure, bar), remark);
}

void printUnmeasured(const QString &what, double bar, const QString &unit, const QString &reason)
{
    ++unmeasured;
    printRow(what, QStringLiteral("–"), numberText(bar) + QLatin1Char(' ') + unit,
        QStringLiteral("not measured"), {}, reason);
}

bool printSummary()
{
    QTextStream(stdout) << QStringLiteral("\n%1 of %2 bars held, %3 missed, %4 not measured.\n")
                               .arg(held)
                               .arg(held + missed + unmeasured)
                               .arg(missed)
                               .arg(unmeasured);
    return missed == 0 && unmeasured == 0;
}
