#pragma once

#include "control/livecourse.h"

#include <QByteArray>
#include <QString>

#include <array>

struct DriveCourse;

/// One of the live values whose course is shown.
struct CourseQuantity
{
    const char *key; ///< of its name
    const char *name; ///< German
    int parameter; ///< whose definition tells the unit
    double (*valueOf)(const LiveValues &values);
    int decimals;

    /// The name in the language in force.
    QString text() const;
    /// As the definitions of a software version tell it, in the language in force; empty if they tell none.
    QString unit(const QString &version) const;
    /// Name and unit: "Drehzahl [1/min]".
    QString title(const QString &version) const;
    /// With a decimal point, and without groups of digits.
    QString number(double value) const { return QString::number(value, 'f', decimals); }
};

constexpr int courseQuantityCount = 5;
/// All of them, in the order in which they are shown.
const std::array<CourseQuantity, courseQuantityCount> &courseQuantities();

/// The course of a drive as a table for other programs: a line of titles with the units, and then a line for
/// each record, with its time in the zone of this computer and the drive. UTF-8 with a byte order mark,
/// semicolons between the columns, a carriage return and a line feed after each line. Main thread only.
QByteArray courseTable(const DriveCourse &drive);
