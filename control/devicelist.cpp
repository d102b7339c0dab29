#include "control/devicelist.h"

#include "control/services/language.h"
#include "control/services/services.h"
#include "model/parameterdefinitions.h"

namespace {

QString refusal(const Z7Device &device)
{
    const QString reason = commonText("ParamDefFileNotFound",
        "Zur Versionnummer %1 im Motor %2 ist keine Parameter-Definition verfügbar. Bitte fordern Sie die "
        "Datei mit den Parameter-Definitionen zur Z7-Version %1 an.")
                               .arg(device.softwareVersion, deviceName(device));
    return commonText("UnableToAddDevice", "Der Motor kann nicht hinzugefügt werden:")
        + QStringLiteral("\n\n") + reason;
}

/// True if two records are of a drive at the same place of the same bus.
bool isSamePlace(const Z7Device &a, const Z7Device &b)
{
    return a.address == b.address && a.portInfo.portName() == b.portInfo.portName();
}

} // namespace

void DeviceList::clear()
{
    m_devices.clear();
    m_hidden.clear();
    m_refused.clear();
    m_currentDevice = none;
}

QString DeviceList::add(const Z7Device &device)
{
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(device.softwareVersion);
    if (!definitions->load()) {
        m_refused.append(device);
        return refusal(device);
    }
    Z7Device added = device;
    added.setParameterSet(definitions->emptyParameterSet());
    // The drive may have been away or exchanged: its first pass reads everything.
    added.parametersComplete = false;
    added.fullReadPending = false;
    const Z7Device *former = find(added.deviceId());
    if (former && !isSamePlace(*former, added))
        m_hidden.append(*former);
    m_devices.insert(added.deviceId(), added);
    return QString();
}

DeviceList::Change DeviceList::take(const Z7Device &reported, bool wasCutShort)
{
    if (contains(reported.deviceId()))
        return replaceDevice(reported, wasCutShort);
    if (!reported.addressChanged || !contains(reported.previousDeviceId()))
        return NoChange;
    moveToNewAddress(reported);
    return NewAddress;
}

DeviceList::Change DeviceList::replaceDevice(const Z7Device &reported, bool wasCutShort)
{
    Z7Device &stored = m_devices[reported.deviceId()];
    const bool wasFullRead = stored.fullReadPending;
    const Z7DeviceParamSet storedParameters = stored.parameterSet;
    stored = reported;
    // The wizard's log-on to a drive that is already listed brings a record without parameters.
    if (stored.parameterSet.params.isEmpty())
        stored.parameterSet = storedParameters;
    stored.fullReadPending = wasFullRead;
    if (!wasFullRead || wasCutShort)
        return NewRecord;
    stored.fullReadPending = false;
    stored.parametersComplete = true;
    return CompleteRead;
}

void DeviceList::moveToNewAddress(const Z7Device &reported)
{
    const int id = reported.deviceId();
    m_devices.remove(reported.previousDeviceId());
    m_devices.insert(id, reported);
    // From now on the old address may be another drive's.
    m_devices[id].addressChanged = false;
    if (!hasCurrent())
        m_currentDevice = id;
}

const Z7Device *DeviceList::find(int id) const
{
    const auto device = m_devices.constFind(id);
    return device == m_devices.constEnd() ? nullptr : &device.value();
}

bool DeviceList::isAccessGranted(int id) const
{
    const Z7Device *device = find(id);
    return device && device->accessGranted;
}

Z7DeviceParamSet DeviceList::polledParameters(const Z7DeviceParamSet &shown) const
{
    const Z7Device device = current();
    return device.parametersComplete ? shown : device.parameterSet;
}

void DeviceList::pollingStarted()
{
    const auto device = m_devices.find(m_currentDevice);
    if (device != m_devices.end() && !device->parametersComplete)
        device->fullReadPending = true;
}

void DeviceList::cancelFullReads()
{
    for (Z7Device &device : m_devices)
        device.fullReadPending = false;
}
