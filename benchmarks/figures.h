#pragma once

#include <QString>
#include <QVector>

/// Measured times of one kind, in milliseconds.
class Samples
{
public:
    void add(double ms) { m_ms.append(ms); }
    int count() const { return m_ms.size(); }
    double median() const { return quantile(0.5); }
    double p99() const { return quantile(0.99); }
    double first() const { return m_ms.value(0); }

private:
    double quantile(double q) const;

    QVector<double> m_ms;
};

/// Prints one line of the table and remembers whether any figure has missed its bar.
void printFigure(
    const QString &what, double figure, double bar, const QString &unit, const QString &remark = {});
bool allBarsHeld();
