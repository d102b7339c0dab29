#pragma once

#include <QString>
#include <QVector>

/// What the process uses at one moment.
struct ProcessFigures
{
    double heapKb = 0; ///< in use, by the allocator's own account; 0 where a sanitizer has replaced it
    double residentKb = 0;
    double threads = 0;
    double descriptors = 0;

    static ProcessFigures now();
    /// The lesser of each figure: what is under way at the moment comes on top of what stays.
    ProcessFigures lesser(const ProcessFigures &other) const;
};

/// How far figures have risen: the median of the last third of them, less that of the first third. A single
/// figure that stands out, or some of them, changes neither. 0 for less than three.
double growth(const QVector<double> &figures);
