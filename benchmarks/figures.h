#pragma once

#include <QString>
#include <QVector>

/// Measured values of one kind, as times in ms or ratios. NaN stands for a measurement that failed, and makes
/// NaN of all that is told of the values.
class Samples
{
public:
    void add(double value) { m_values.append(value); }
    int count() const { return m_values.size(); }
    /// The value that `q`, 0 to 1, of all values do not exceed; NaN if there are none.
    double quantile(double q) const;
    double median() const { return quantile(0.5); }
    double p99() const { return quantile(0.99); }

private:
    QVector<double> m_values;
};

/// Times of the program beside the times of a floor, measured in turn.
class Comparison
{
public:
    void add(double ownMs, double floorMs);
    const Samples &own() const { return m_own; }
    const Samples &floor() const { return m_floor; }
    /// Own time ÷ floor of each pair.
    const Samples &ratios() const { return m_ratios; }
    /// The slowest of the own times against the slowest of the floor.
    double p99Ratio() const { return m_own.p99() / m_floor.p99(); }
    /// For the remark of a row: the medians in ms and the middle half of the ratios.
    QString remark() const;
    QString p99Remark() const;

private:
    Samples m_own;
    Samples m_floor;
    Samples m_ratios;
};

/// Prints the head of the table.
void printTableHead();
/// Prints one row of the table, which has missed its bar if the figure is larger, or NaN.
void printFigure(
    const QString &what, double figure, double bar, const QString &unit, const QString &remark = {});
/// Prints the row of a figure that could not be measured here, which does not count as held.
void printUnmeasured(const QString &what, double bar, const QString &unit, const QString &reason);
/// Prints how many of the rows have held their bars; true if all have.
bool printSummary();
