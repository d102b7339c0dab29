#pragma once

#include "model/device.h"

#include <QString>
#include <QVector>

#include <functional>

class Z7ParamDefinitions;

/// A drive's pending changes in numbers.
struct PendingOverview
{
    int total = 0; ///< as many values as a write would send
    int onShownPage = 0;
    int outOfLimits = 0; ///< by the definitions of the drive's version

    int onOtherPages() const { return total - onShownPage; }
};

bool operator==(const PendingOverview &a, const PendingOverview &b);

/// One pending change as a list shows it; values are raw.
struct PendingChange
{
    int number = -1;
    QString name; ///< German, and the key of its translation, as unit; empty if the version lacks the number
    QString unit;
    bool hasActual = false; ///< the drive's value was read
    int actual = 0; ///< the drive's value
    int wanted = 0;
    bool hasLimits = false; ///< the version has the number
    int minimum = 0;
    int maximum = 0;
    bool isOutOfLimits = false;
    int page = -1; ///< number of the page that shows it
};

/// True for a change beyond the limits of a writable parameter that the version has.
bool isOutOfLimits(const Z7ParamDefinitions &definitions, const Z7DeviceParam &change);

/// `isShown` tells whether the shown page is about a parameter.
PendingOverview pendingOverview(
    const Z7Device &drive, const Z7DeviceParamSet &changes, const std::function<bool(int number)> &isShown);

/// In ascending order of number. `pageOf` tells the page of a parameter.
QVector<PendingChange> pendingChanges(
    const Z7Device &drive, const Z7DeviceParamSet &changes, const std::function<int(int number)> &pageOf);
