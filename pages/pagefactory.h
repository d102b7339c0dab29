#pragma once

#include <memory>

class Z7DataWidget;

/// The pages have fixed numbers, which are their identity in the tree, the titles and the modified marks.
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
    Last = RemoteControl,
};
constexpr int none = -1;
} // namespace PageNumber

/// Creates the page of that number, 0 to 16, without a parent; null for any other number.
std::unique_ptr<Z7DataWidget> createDataPage(int number);
