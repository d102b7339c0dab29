#include "control/services/platform.h"

#include <QFile>

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

bool Platform::sync(QFile &file)
{
    return fsync(file.handle()) == 0;
}

void Platform::forgetCached(const QFile &file)
{
    posix_fadvise(file.handle(), 0, 0, POSIX_FADV_DONTNEED);
}

void Platform::syncFolder(const QString &folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

bool Platform::folderTakesFiles(const QString &folder)
{
    return faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

bool Platform::takePermissions(QFile &file, const QString &like)
{
    struct stat old
    {
    };
    struct stat present
    {
    };
    if (stat(QFile::encodeName(like).constData(), &old) != 0)
        return true;
    // Only root can give a file to its owner, and nobody else has to.
    const bool hasOwner = fchown(file.handle(), old.st_uid, old.st_gid) == 0;
    Q_UNUSED(hasOwner)
    // Disks that know no permissions refuse to set any, and all files have the same there.
    return (fstat(file.handle(), &present) == 0 && present.st_mode == old.st_mode)
        || fchmod(file.handle(), old.st_mode & ALLPERMS) == 0;
}

bool Platform::renameOver(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

qint64 Platform::millisecondsWithSleep()
{
#ifdef CLOCK_BOOTTIME
    constexpr clockid_t clock = CLOCK_BOOTTIME;
#else
    constexpr clockid_t clock = CLOCK_MONOTONIC;
#endif
    struct timespec time
    {
    };
    clock_gettime(clock, &time);
    return static_cast<qint64>(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

QByteArray Platform::defaultSearchPath()
{
    QByteArray path(static_cast<int>(confstr(_CS_PATH, nullptr, 0)), '\0');
    confstr(_CS_PATH, path.data(), static_cast<size_t>(path.size()));
    path.chop(1);
    return path;
}
