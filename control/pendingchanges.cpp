#include "control/pendingchanges.h"

#include "control/services/services.h"
#include "model/parameterconflicts.h"
#include "model/parameterdefinitions.h"

#include <algorithm>

bool PendingChanges::read(int deviceId, Z7DeviceParamSet &out) const
{
    const bool hasChanges = contains(deviceId);
    if (hasChanges)
        out = value(deviceId);
    return hasChanges;
}

void PendingChanges::insert(int deviceId, const QString &softwareVersion, const Z7DeviceParam &change)
{
    auto changes = m_sets.find(deviceId);
    if (changes == m_sets.end())
        changes = m_sets.insert(deviceId, Z7DeviceParamSet(softwareVersion));
    changes->insert(change);
    m_discarded.remove(deviceId);
}

void PendingChanges::replace(int deviceId, const Z7DeviceParamSet &changes)
{
    m_sets.insert(deviceId, changes);
    m_discarded.remove(deviceId);
}

void PendingChanges::discard(int deviceId)
{
    if (contains(deviceId))
        m_discarded.insert(deviceId, m_sets.take(deviceId));
}

bool PendingChanges::restore(int deviceId)
{
    if (!hasDiscarded(deviceId))
        return false;
    m_sets.insert(deviceId, m_discarded.take(deviceId));
    return true;
}

void PendingChanges::withdraw(int deviceId, const Z7DeviceParam &change)
{
    const auto changes = m_sets.find(deviceId);
    if (changes == m_sets.end())
        return;
    changes->remove(change);
    if (changes->params.isEmpty())
        m_sets.erase(changes);
}

void PendingChanges::insertFactoryValues(int deviceId, const Z7Device &device)
{
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(device.softwareVersion);
    const Z7DeviceParamSet values = definitions->factoryValues(device.parameterSet);
    Z7DeviceParamSet changes = m_sets.value(deviceId, values);
    changes.insertAll(values);
    if (!changes.params.isEmpty())
        replace(deviceId, changes);
}

bool PendingChanges::isModified(
    int deviceId, const Z7Device &device, const std::function<bool(int)> &isAsked) const
{
    const Z7DeviceParamSet changes = value(deviceId);
    return std::any_of(
        changes.params.cbegin(), changes.params.cend(), [&device, &isAsked](const Z7DeviceParam &change) {
            return change.hasValue && isAsked(change.number)
                && change.value != device.parameterSet.value(change.number).value;
        });
}

QString PendingChanges::conflicts(int deviceId, const Z7Device &device) const
{
    return contains(deviceId) ? writeConflicts(device, value(deviceId)) : QString();
}
