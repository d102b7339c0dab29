#pragma once

#include <QByteArray>
#include <QString>

class QFile;

/// What Qt has no call for and each system does in its own way. The build takes one of the two sources beside
/// this header: platform_posix.cpp, the only source of the program that includes headers of the system, or
/// platform_portable.cpp, which makes do with Qt and the C++ library. Any thread.
namespace Platform {

/// Waits until the disk holds what was written to the open file. False if it does not. The portable one only
/// hands everything to the system, so there a loss of power soon afterwards may cost what was written.
bool sync(QFile &file);

/// Lets the next reads of the open file come from the disk and not from the system's memory, where the system
/// can do that.
void forgetCached(const QFile &file);

/// Waits until the disk knows the names in the folder. Not every disk can do it, and the portable one does
/// nothing.
void syncFolder(const QString &folder);

/// False where the folder's permissions keep this program from putting a new file there. The portable one
/// may say true where that comes out later.
bool folderTakesFiles(const QString &folder);

/// Gives the open file the permissions of the one named `like`, and its owner where that is allowed. True if
/// there is no such file.
bool takePermissions(QFile &file, const QString &like);

/// Renames a closed file to a name that another one may have, which is gone then. False if neither happened.
bool renameOver(const QString &from, const QString &to);

/// Time in ms of a clock that is never set and that runs on while the computer sleeps, where the system has
/// one; the portable one may stand still in that time.
qint64 millisecondsWithSleep();

/// How a file that stands for a device is to this program.
enum class DeviceAccess {
    Granted, ///< it may read and write
    Denied,
    Missing, ///< there is no such file
    Unknown, ///< the system has no such files, or does not tell
};
/// The portable one knows nothing.
DeviceAccess deviceAccess(const QString &file);

/// The name of the group whose members may read and write the device, or its number where it has no name.
/// Empty if membership in a group opens nothing, or if that is not known.
QString deviceGroup(const QString &file);

/// A running program.
struct Program
{
    bool isKnown() const { return id > 0; }

    qint64 id = 0; ///< of the process
    QString name; ///< short, with ? for each odd letter; empty if not known
};

/// The lock file that keeps other programs from opening a serial port.
struct PortLock
{
    QString file; ///< empty if there is none
    Program holder; ///< of the file; none if the file names no other program that runs
};
/// The portable one finds none.
PortLock portLock(const QString &portName);
/// Another program that has the device open, as far as this one may look into others. It looks at no more
/// than some 20,000 open files, none of which is touched. The portable one knows none.
Program deviceHolder(const QString &file);

/// The folders, as in PATH, that are searched for programs where PATH is not set.
QByteArray defaultSearchPath();

} // namespace Platform
