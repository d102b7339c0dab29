#pragma once

#include "model/device.h"

#include <QMap>
#include <QString>

#include <functional>

/// What the user has changed and not discarded yet, by the id of the drive. Changes stay when they are
/// written, and when their drive goes; a drive whose last change is withdrawn has none. A copied value, with
/// no thread of its own.
class PendingChanges
{
public:
    bool contains(int deviceId) const { return m_sets.contains(deviceId); }
    /// The changes of a drive; an empty set if there are none.
    Z7DeviceParamSet value(int deviceId) const { return m_sets.value(deviceId); }
    /// The same; false, with `out` as it was, if there are none.
    bool read(int deviceId, Z7DeviceParamSet &out) const;

    /// Takes one change, in the place of a former one of that parameter. The first of a drive makes a set of
    /// this software version.
    void insert(int deviceId, const QString &softwareVersion, const Z7DeviceParam &change);
    /// Takes the change of that parameter back.
    void withdraw(int deviceId, const Z7DeviceParam &change);
    /// Makes these the changes of a drive, at least one, and no others.
    void replace(int deviceId, const Z7DeviceParamSet &changes);
    /// Takes all changes of a drive back, and keeps them in mind until its next change.
    void discard(int deviceId);
    /// True if restore() would bring something back.
    bool hasDiscarded(int deviceId) const { return m_discarded.contains(deviceId); }
    /// Brings back what was discarded last. False if there is nothing.
    bool restore(int deviceId);
    /// Makes the factory value of each parameter of the drive a change, unless it is read-only.
    void insertFactoryValues(int deviceId, const Z7Device &device);

    /// True if a change of a parameter that `isAsked` accepts differs from what the drive holds. A parameter
    /// that is missing there counts as 0.
    bool isModified(
        int deviceId, const Z7Device &device, const std::function<bool(int number)> &isAsked) const;
    /// Text of what stands against writing the changes to the drive; empty if nothing does.
    QString conflicts(int deviceId, const Z7Device &device) const;

private:
    QMap<int, Z7DeviceParamSet> m_sets; ///< by device id; none is empty
    QMap<int, Z7DeviceParamSet> m_discarded; ///< likewise; of drives that have no changes
};
