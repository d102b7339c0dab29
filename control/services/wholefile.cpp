#include "control/services/wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace WholeFile {

namespace {

constexpr int mostLinks = 40;

bool isOnDisk(const QFile &file)
{
    return fsync(file.handle()) == 0;
}

/// What the disk holds, not what the system still remembers of writing it.
bool readsBack(QFile &file, const QByteArray &content)
{
    posix_fadvise(file.handle(), 0, 0, POSIX_FADV_DONTNEED);
    return file.seek(0) && file.read(content.size()) == content;
}

bool mayBeReplaced(const QString &target)
{
    if (target.isEmpty() || isSomethingElse(target))
        return false;
    QFile file(target);
    return !file.exists() || file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

/// Without it a loss of power could bring the old file back, but no half one. Not every disk can do it.
void syncFolderOf(const QString &target)
{
    const int folder = open(QFile::encodeName(QFileInfo(target).path()).constData(), O_RDONLY | O_DIRECTORY);
    if (folder < 0)
        return;
    fsync(folder);
    close(folder);
}

bool folderTakesFiles(const QString &target)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(target).path());
    return faccessat(AT_FDCWD, folder.constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

/// The file that is to take the place of another one; goes again unless it has.
class NewFile
{
public:
    explicit NewFile(const QString &target)
        : m_target(target)
        , m_file(freeNameBeside(target))
        , m_isThere(m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly | QIODevice::Unbuffered))
    {
    }
    ~NewFile()
    {
        if (m_isThere)
            m_file.remove();
    }
    Q_DISABLE_COPY(NewFile)

    bool isThere() const { return m_isThere; }

    bool takePlace(const QByteArray &content, const Check &isRight)
    {
        const bool isWritten = m_file.write(content) == content.size() && takePermissions()
            && isOnDisk(m_file) && readsBack(m_file, content) && (!isRight || isRight(m_file.fileName()));
        if (!isWritten || !renameOverTarget())
            return false;
        m_isThere = false;
        syncFolderOf(m_target);
        return true;
    }

private:
    bool takePermissions()
    {
        struct stat old
        {
        };
        struct stat present
        {
        };
        if (stat(QFile::encodeName(m_target).constData(), &old) != 0)
            return true;
        // Only root can give a file to its owner, and nobody else has to.
        const bool hasOwner = fchown(m_file.handle(), old.st_uid, old.st_gid) == 0;
        Q_UNUSED(hasOwner)
        // Disks that know no permissions refuse to set any, and all files have the same there.
        return (fstat(m_file.handle(), &present) == 0 && present.st_mode == old.st_mode)
            || fchmod(m_file.handle(), old.st_mode & ALLPERMS) == 0;
    }

    bool renameOverTarget() const
    {
        const QByteArray from = QFile::encodeName(m_file.fileName());
        return std::rename(from.constData(), QFile::encodeName(m_target).constData()) == 0;
    }

    const QString m_target;
    QFile m_file;
    bool m_isThere;
};

bool putInto(QFile &file, const QByteArray &content)
{
    return file.seek(0) && file.write(content) == content.size() && isOnDisk(file) && readsBack(file, content)
        && file.resize(content.size()) && isOnDisk(file);
}

/// Goes through all steps, since what fails now has mostly failed before: the old content has its place on
/// the disk, so even a full one takes it back.
void putBack(QFile &file, const QByteArray &content)
{
    file.seek(0);
    file.write(content);
    file.resize(content.size());
    fsync(file.handle());
}

bool writeOver(const QString &target, const QByteArray &content)
{
    QFile file(target);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)
        || file.size() > largestFile)
        return false;
    const QByteArray before = file.readAll();
    if (before.size() != file.size())
        return false;
    if (putInto(file, content))
        return true;
    putBack(file, before);
    return false;
}

} // namespace

bool isSomethingElse(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() && !info.isFile();
}

QString targetOf(const QString &path)
{
    QFileInfo file(path);
    for (int links = 0; file.isSymLink(); ++links) {
        if (links == mostLinks)
            return QString();
        file.setFile(file.symLinkTarget());
    }
    return file.filePath();
}

QString freeNameBeside(const QString &path)
{
    return path + QLatin1Char('.') + QString::number(QRandomGenerator::global()->generate(), 36);
}

bool replace(const QString &path, const QByteArray &content, const Check &isRight)
{
    const QString target = targetOf(path);
    if (!mayBeReplaced(target))
        return false;
    NewFile file(target);
    return file.isThere() && file.takePlace(content, isRight);
}

bool write(const QString &path, const QByteArray &content)
{
    const QString target = targetOf(path);
    if (QFileInfo::exists(target) && !folderTakesFiles(target))
        return !isSomethingElse(target) && writeOver(target, content);
    return replace(path, content);
}

} // namespace WholeFile
