#include "model/device.h"

#include "control/services/services.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"

namespace {

int sumOfDigits(const QString &text)
{
    int sum = 0;
    for (const QChar c : text) {
        if (c.isDigit())
            sum += c.digitValue();
    }
    return sum;
}

/// The last digit counts only as zero or not zero: V101, V102 and V109 share their key.
quint32 versionPart(const QString &version)
{
    if (version.size() != 4 || !version.at(1).isDigit() || !version.at(2).isDigit()
        || !version.at(3).isDigit())
        return 0;
    const int high = version.at(1).digitValue() << 12;
    const int middle = (version.at(2).digitValue() & 0x3F) << 6;
    const int low = version.at(3).digitValue() != 0 ? 1 : 0;
    // From V800 on the sign extension wipes port and address out of the key.
    return static_cast<quint32>(static_cast<qint16>(high | middle | low));
}

int makeDeviceId(const QString &portName, int address, const QString &version)
{
    const quint32 port = static_cast<quint32>(sumOfDigits(portName)) << 24;
    return static_cast<int>(port | (static_cast<quint32>(address) << 16) | versionPart(version));
}

bool isBitSet(quint8 bits, int n, int count)
{
    return n >= 1 && n <= count && (bits & (1 << (n - 1))) != 0;
}

} // namespace

Z7DeviceParam::Z7DeviceParam(int paramNumber, int rawValue, int unsignedFlag, bool valuePresent)
    : isUnsigned(unsignedFlag)
    , hasValue(valuePresent)
    , number(paramNumber)
    , value(rawValue)
{
}

void Z7DeviceParam::setValue(int v)
{
    value = v;
    hasValue = true;
}

Z7DeviceParamSet::Z7DeviceParamSet(const QString &version)
    : softwareVersion(version)
{
}

Z7DeviceParamSet::Z7DeviceParamSet(const QString &version, const QList<int> &numbers)
    : softwareVersion(version)
{
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(version);
    for (const int number : numbers)
        insert(Z7DeviceParam(number, 0, definitions->isUnsigned(number), false));
}

void Z7DeviceParamSet::insert(const Z7DeviceParam &param)
{
    params.insert(param.number, param);
}

void Z7DeviceParamSet::insertAll(const Z7DeviceParamSet &other)
{
    for (const Z7DeviceParam &param : other.params)
        insert(param);
}

void Z7DeviceParamSet::remove(const Z7DeviceParam &param)
{
    // The record may be the very one that goes.
    const int number = param.number;
    params.remove(number);
}

bool Z7DeviceParamSet::contains(int number) const
{
    return params.contains(number);
}

Z7DeviceParam Z7DeviceParamSet::value(int number) const
{
    return params.value(number);
}

const Z7DeviceParam *Z7DeviceParamSet::find(int number) const
{
    const auto found = params.constFind(number);
    return found == params.cend() ? nullptr : &*found;
}

void Z7DeviceParamSet::resetReadState()
{
    for (Z7DeviceParam &param : params) {
        param.valid = false;
        param.error = 0;
        param.writeFailed = false;
        param.readFailed = false;
    }
}

void Z7DeviceParamSet::clearParamState(int number)
{
    const auto entry = params.find(number);
    if (entry == params.end())
        return;
    entry->valid = false;
    entry->error = 0;
    entry->writeFailed = false;
    entry->readFailed = false;
    entry->conflict = false;
}

void Z7DeviceParamSet::setAllHasValue(bool hasValue)
{
    for (Z7DeviceParam &param : params)
        param.hasValue = hasValue;
}

Z7Device::Z7Device() = default;

Z7Device::Z7Device(const QSerialPortInfo &port)
    : portInfo(port)
{
}

int Z7Device::deviceId() const
{
    return makeDeviceId(portInfo.portName(), address, softwareVersion);
}

int Z7Device::previousDeviceId() const
{
    return makeDeviceId(portInfo.portName(), previousAddress, softwareVersion);
}

void Z7Device::setConnected(bool c)
{
    connected = c;
    if (c)
        bootloaderActive = false;
    else
        accessGranted = false;
}

void Z7Device::setAccessGranted(bool a)
{
    accessGranted = a;
    if (a)
        setConnected(true);
}

void Z7Device::setAddress(int a)
{
    if (a == address)
        return;
    previousAddress = address;
    address = a;
    addressChanged = true;
    setConnected(false);
}

void Z7Device::assignAddress(int a)
{
    previousAddress = a;
    address = a;
    addressChanged = false;
    setConnected(false);
}

void Z7Device::setPassword(int p)
{
    if (p == password)
        return;
    password = p;
    accessGranted = false;
}

void Z7Device::setSoftwareVersion(const QString &v)
{
    if (softwareVersion != unknownVersion())
        return;
    softwareVersion = v;
    parameterSet.softwareVersion = v;
}

void Z7Device::setParameterSet(const Z7DeviceParamSet &set)
{
    parameterSet = set;
}

void Z7Device::updateParam(const Z7DeviceParam &p)
{
    if (parameterSet.contains(p.number))
        parameterSet.insert(p);
}

void Z7Device::clearParamState(int number)
{
    parameterSet.clearParamState(number);
}

void Z7Device::resetState()
{
    error = 0;
    setConnected(false);
    parameterSet.resetReadState();
}

void Z7Device::copyConnectionState(const Z7Device &d)
{
    error = d.error;
    connected = d.connected;
    accessGranted = d.accessGranted;
    password = d.password;
    bootloaderActive = d.bootloaderActive;
}

bool Z7Device::isDigitalOutputSet(int n) const
{
    return isBitSet(digitalOutputs, n, digitalOutputCount);
}

bool Z7Device::isDigitalInputSet(int n) const
{
    return isBitSet(digitalInputs, n, digitalInputCount);
}

void registerDeviceTypes()
{
    qRegisterMetaType<Z7Device>("Z7Device");
    qRegisterMetaType<Z7DeviceParam>("Z7DeviceParam");
}

QString deviceName(const Z7Device &device)
{
    QString digits;
    const QString portName = device.portInfo.portName();
    for (const QChar c : portName) {
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
            digits += c;
    }
    return QStringLiteral("Port") + digits + QStringLiteral(" - ") + shortDeviceName(device);
}

QString shortDeviceName(const Z7Device &device)
{
    return QStringLiteral("Z7.") + QString::number(device.address);
}
