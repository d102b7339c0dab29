#include "comm/portdiagnosis.h"

#include "protocol/telegram.h"

using Platform::DeviceAccess;

namespace {

/// Qt tells of missing rights, of a lock file and of a port in use by the same number.
void diagnoseTakenPort(Z7PortDiagnosis &found, const QSerialPortInfo &port, ProgramSearch search)
{
    const Platform::PortLock lock = Platform::portLock(port.portName());
    if (!lock.file.isEmpty() && !lock.holder.isKnown()) {
        found.lockFile = lock.file;
        return;
    }
    found.kind = Z7PortDiagnosis::Held;
    found.holder = lock.holder;
    if (!lock.holder.isKnown() && search == ProgramSearch::LockAndPrograms)
        found.holder = Platform::deviceHolder(port.systemLocation());
}

/// Of a port that is there.
void diagnoseRefusal(Z7PortDiagnosis &found, const QSerialPortInfo &port,
    QSerialPort::SerialPortError refusal, ProgramSearch search)
{
    const DeviceAccess access = Platform::deviceAccess(port.systemLocation());
    found.kind = Z7PortDiagnosis::NotOpened;
    if (access == DeviceAccess::Denied) {
        found.kind = Z7PortDiagnosis::NoRights;
        found.group = Platform::deviceGroup(port.systemLocation());
    } else if (refusal == QSerialPort::PermissionError
        && (access == DeviceAccess::Granted || port.isBusy())) {
        diagnoseTakenPort(found, port, search);
    }
}

} // namespace

bool operator==(const Z7PortDiagnosis &a, const Z7PortDiagnosis &b)
{
    return a.kind == b.kind && a.group == b.group && a.holder.id == b.holder.id
        && a.holder.name == b.holder.name && a.lockFile == b.lockFile;
}

bool isPortGone(const QSerialPortInfo &port)
{
    const DeviceAccess access = Platform::deviceAccess(port.systemLocation());
    if (access != DeviceAccess::Unknown)
        return access == DeviceAccess::Missing;
    return QSerialPortInfo(port.portName()).isNull();
}

Z7PortDiagnosis diagnosePort(
    const QSerialPortInfo &port, int error, QSerialPort::SerialPortError refusal, ProgramSearch search)
{
    Z7PortDiagnosis found;
    found.time = QDateTime::currentDateTime();
    if (isPortGone(port))
        found.kind = Z7PortDiagnosis::Gone;
    else if (error == TelegramError::PortSettingsRefused)
        found.kind = Z7PortDiagnosis::SettingsRefused;
    else if (error == TelegramError::PortNotOpened)
        diagnoseRefusal(found, port, refusal, search);
    return found;
}
