#pragma once

#include <QString>
#include <QVector>

#include <memory>

class Z7DataWidget;

/// The pages have fixed numbers, which are their identity in the tree, the titles and the modified marks.
/// What a page is besides its number stands in one row of the table in pagefactory.cpp; a number without its
/// row does not compile.
namespace PageNumber {
enum Number {
    Network = 0,
    DeviceStatus = 1,
    SpeedRegulation = 2,
    Accelerations = 3,
    CurrentLimits = 4,
    FixedResolutions = 5,
    Positioning = 6,
    Output = 7,
    OperationsMode = 8,
    ParameterTable = 9,
    FirmwareUpload = 10,
    CalibrationRotations = 11,
    CalibrationCurrent = 12,
    FixResistance = 13,
    VoltageLimits = 14,
    RS485 = 15,
    RemoteControl = 16,
    Count, ///< stays behind the last page
    Last = Count - 1,
};
constexpr int none = -1;

/// True for the number of a page.
constexpr bool isPage(int number)
{
    return number >= 0 && number < Count;
}
} // namespace PageNumber

/// Creates the page of that number, without a parent; null for any other number.
std::unique_ptr<Z7DataWidget> createDataPage(int number);

/// Title of the page of that number; "n/a", without a look-up, for any other.
QString pageTitle(int number);

/// The numbers of the pages below each drive of the tree, from top to bottom.
const QVector<int> &drivePages();
