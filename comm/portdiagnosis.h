#pragma once

#include "control/services/platform.h"

#include <QDateTime>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QString>

/// Why a serial port could not be used: what the system tells about it, and nothing that is only likely. A
/// copied value.
struct Z7PortDiagnosis
{
    enum Kind {
        Fine, ///< nothing is known against the port
        NoRights, ///< the device file is there and not for this user
        Held, ///< another program has the port
        Gone, ///< the adapter is not there any more
        SettingsRefused,
        NotOpened, ///< for none of these reasons
    };

    Kind kind = Fine;
    QString group; ///< NoRights: whose members may use the port; empty if not known
    Platform::Program holder; ///< Held: the program, if it is known
    QString lockFile; ///< NotOpened: the lock file in the way, whose program does not run; empty if none is
    QDateTime time; ///< when this was noticed
};

/// The same finding, whenever it was made.
bool operator==(const Z7PortDiagnosis &a, const Z7PortDiagnosis &b);

/// Whether the search for the holder of a port may go through all running programs, which takes some ms.
enum class ProgramSearch { Lock, LockAndPrograms };

/// Looks why a pass over the port ended with this error number, now; a port that was opened can only be gone.
/// `refusal` is what Qt told when it was not. Never opens the port and never waits; any thread.
Z7PortDiagnosis diagnosePort(
    const QSerialPortInfo &port, int error, QSerialPort::SerialPortError refusal, ProgramSearch search);

/// True if the system knows for sure that the port is not there.
bool isPortGone(const QSerialPortInfo &port);
