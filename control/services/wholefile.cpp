#include "control/services/wholefile.h"

#include "control/services/platform.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace WholeFile {

namespace {

constexpr int mostLinks = 40;

/// What the disk holds, not what the system still remembers of writing it.
bool readsBack(QFile &file, const QByteArray &content)
{
    Platform::forgetCached(file);
    return file.seek(0) && file.read(content.size()) == content;
}

bool mayBeReplaced(const QString &target)
{
    if (target.isEmpty() || isSomethingElse(target))
        return false;
    QFile file(target);
    return !file.exists() || file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

QString folderOf(const QString &target)
{
    return QFileInfo(target).path();
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
        if (!takeContent(content) || (isRight && !isRight(m_file.fileName())))
            return false;
        // Not every system renames a file that is open.
        m_file.close();
        if (!Platform::renameOver(m_file.fileName(), m_target))
            return false;
        m_isThere = false;
        // Without it a loss of power could bring the old file back, but no half one.
        Platform::syncFolder(folderOf(m_target));
        return true;
    }

private:
    bool takeContent(const QByteArray &content)
    {
        return m_file.write(content) == content.size() && Platform::takePermissions(m_file, m_target)
            && Platform::sync(m_file) && readsBack(m_file, content);
    }

    const QString m_target;
    QFile m_file;
    bool m_isThere;
};

bool putInto(QFile &file, const QByteArray &content)
{
    return file.seek(0) && file.write(content) == content.size() && Platform::sync(file)
        && readsBack(file, content) && file.resize(content.size()) && Platform::sync(file);
}

/// Goes through all steps, since what fails now has mostly failed before: the old content has its place on
/// the disk, so even a full one takes it back.
void putBack(QFile &file, const QByteArray &content)
{
    file.seek(0);
    file.write(content);
    file.resize(content.size());
    Platform::sync(file);
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
    if (QFileInfo::exists(target) && !Platform::folderTakesFiles(folderOf(target)))
        return !isSomethingElse(target) && writeOver(target, content);
    return replace(path, content);
}

} // namespace WholeFile
