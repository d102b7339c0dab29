#include "control/services/platform.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <grp.h>
#include <memory>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace {

/// No lock file and no name of a program is longer.
constexpr size_t shortFile = 256;
constexpr int mostOpenFiles = 20000;

/// Where programs that open serial ports leave their lock files, in the order in which Qt looks.
constexpr const char *lockFolders[] = {"/var/lock", "/etc/locks", "/var/spool/locks", "/var/spool/uucp",
    "/tmp", "/var/tmp", "/var/lock/lockdev", "/run/lock"};

/// What a regular file begins with. Never waits, whatever bears that name.
QByteArray beginOf(const QByteArray &path)
{
    const int descriptor = open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return QByteArray();
    struct stat file
    {
    };
    std::array<char, shortFile> content {};
    const bool isRegular = fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode);
    const ssize_t size = isRegular ? read(descriptor, content.data(), content.size()) : 0;
    close(descriptor);
    return QByteArray(content.data(), static_cast<int>(qMax<ssize_t>(size, 0)));
}

QByteArray targetOf(const QByteArray &link)
{
    std::array<char, 1024> target {};
    const ssize_t size = readlink(link.constData(), target.data(), target.size());
    return QByteArray(target.data(), static_cast<int>(qMax<ssize_t>(size, 0)));
}

QByteArray processFile(qint64 id, const char *name)
{
    return "/proc/" + QByteArray::number(id) + name;
}

/// Programs name themselves, so the name may hold anything.
QString shownName(const QByteArray &name)
{
    QString shown = QString::fromLocal8Bit(name.trimmed());
    for (QChar &letter : shown) {
        if (!letter.isLetterOrNumber() && !QStringLiteral(" -_.:+@/()").contains(letter))
            letter = QLatin1Char('?');
    }
    return shown;
}

bool isRunning(qint64 id)
{
    return kill(static_cast<pid_t>(id), 0) == 0 || errno == EPERM;
}

Platform::Program program(qint64 id, const QByteArray &otherName = QByteArray())
{
    const QByteArray ownName = beginOf(processFile(id, "/comm"));
    return {id, shownName(ownName.isEmpty() ? otherName : ownName)};
}

/// The process that a lock file names: its number, with Qt's the name of its executable in the second line.
Platform::Program programOfLock(const QByteArray &lock)
{
    const QList<QByteArray> lines = lock.split('\n');
    const qint64 id = lines.first().simplified().split(' ').first().toLongLong();
    if (id <= 0 || id == getpid() || !isRunning(id))
        return {};
    const QByteArray name = lines.value(1).trimmed();
    const QByteArray executable = targetOf(processFile(id, "/exe"));
    // The number may have gone to another program since.
    const bool isAnother = !name.isEmpty() && !executable.isEmpty()
        && !executable.mid(executable.lastIndexOf('/') + 1).startsWith(name);
    return isAnother ? Platform::Program() : program(id, name);
}

using Folder = std::unique_ptr<DIR, int (*)(DIR *)>;

Folder openFolder(const QByteArray &path)
{
    return Folder(opendir(path.constData()), closedir);
}

/// Counts the open files that it looks at down from `left`.
bool hasOpen(qint64 id, const QByteArray &device, int &left)
{
    const QByteArray path = processFile(id, "/fd");
    const Folder files = openFolder(path);
    while (const dirent *file = files && left > 0 ? readdir(files.get()) : nullptr) {
        --left;
        if (targetOf(path + '/' + file->d_name) == device)
            return true;
    }
    return false;
}

} // namespace

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

Platform::DeviceAccess Platform::deviceAccess(const QString &file)
{
    const QByteArray path = QFile::encodeName(file);
    if (faccessat(AT_FDCWD, path.constData(), F_OK, AT_EACCESS) != 0)
        return errno == ENOENT || errno == ENOTDIR ? DeviceAccess::Missing : DeviceAccess::Unknown;
    const bool isGranted = faccessat(AT_FDCWD, path.constData(), R_OK | W_OK, AT_EACCESS) == 0;
    return isGranted ? DeviceAccess::Granted : DeviceAccess::Denied;
}

QString Platform::deviceGroup(const QString &file)
{
    struct stat device
    {
    };
    constexpr mode_t readAndWrite = S_IRGRP | S_IWGRP;
    if (stat(QFile::encodeName(file).constData(), &device) != 0
        || (device.st_mode & readAndWrite) != readAndWrite)
        return QString();
    std::array<char, 4096> names {};
    group entry {};
    group *found = nullptr;
    getgrgid_r(device.st_gid, &entry, names.data(), names.size(), &found);
    return found ? QString::fromLocal8Bit(found->gr_name) : QString::number(device.st_gid);
}

Platform::PortLock Platform::portLock(const QString &portName)
{
    const QByteArray name = QFile::encodeName(portName).replace('/', '_');
    for (const char *folder : lockFolders) {
        const QByteArray file = folder + ("/LCK.." + name);
        if (faccessat(AT_FDCWD, file.constData(), F_OK, AT_EACCESS) == 0)
            return {QFile::decodeName(file), programOfLock(beginOf(file))};
    }
    return {};
}

Platform::Program Platform::deviceHolder(const QString &file)
{
    const QByteArray device = QFile::encodeName(file);
    int left = mostOpenFiles;
    const Folder processes = openFolder("/proc");
    while (const dirent *process = processes && left > 0 ? readdir(processes.get()) : nullptr) {
        const qint64 id = QByteArray(process->d_name).toLongLong();
        if (id > 0 && id != getpid() && hasOpen(id, device, left))
            return program(id);
    }
    return {};
}

QByteArray Platform::defaultSearchPath()
{
    QByteArray path(static_cast<int>(confstr(_CS_PATH, nullptr, 0)), '\0');
    confstr(_CS_PATH, path.data(), static_cast<size_t>(path.size()));
    path.chop(1);
    return path;
}
