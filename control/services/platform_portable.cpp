#include "control/services/platform.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <filesystem>
#include <system_error>

bool Platform::sync(QFile &file)
{
    return file.flush();
}

void Platform::forgetCached(const QFile &) { }

void Platform::syncFolder(const QString &) { }

bool Platform::folderTakesFiles(const QString &folder)
{
    return QFileInfo(folder).isWritable();
}

bool Platform::takePermissions(QFile &file, const QString &like)
{
    if (!QFile::exists(like))
        return true;
    const QFile::Permissions old = QFile::permissions(like);
    return file.permissions() == old || file.setPermissions(old);
}

bool Platform::renameOver(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return !error;
}

qint64 Platform::millisecondsWithSleep()
{
    using std::chrono::steady_clock;
    return std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch())
        .count();
}

Platform::DeviceAccess Platform::deviceAccess(const QString &)
{
    return DeviceAccess::Unknown;
}

QString Platform::deviceGroup(const QString &)
{
    return QString();
}

Platform::PortLock Platform::portLock(const QString &)
{
    return PortLock();
}

Platform::Program Platform::deviceHolder(const QString &)
{
    return Program();
}

QByteArray Platform::defaultSearchPath()
{
    return QByteArray();
}
