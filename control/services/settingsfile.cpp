#include "control/services/settingsfile.h"

#include "control/services/wholefile.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QVariant>

#include <algorithm>
#include <optional>

namespace SettingsFile {

namespace {

constexpr qint64 largestUsableFile = 16 * 1024 * 1024;
constexpr auto utf8Mark = "\xEF\xBB\xBF";

bool isIniLine(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    const bool isSection = text.startsWith('[') && text.contains(']');
    return text.isEmpty() || text.startsWith(';') || isSection || text.contains('=');
}

/// QSettings tells of such lines only where it reads them first, and takes them from its cache from then on,
/// so they are looked for here.
bool isDamaged(const QByteArray &content)
{
    const int begin = content.startsWith(utf8Mark) ? int(qstrlen(utf8Mark)) : 0;
    const QList<QByteArray> lines = content.mid(begin).split('\n');
    return content.contains('\0') || !std::all_of(lines.cbegin(), lines.cend(), isIniLine);
}

bool keepCopy(const QString &fileName, const QByteArray &content)
{
    const QString copy = fileName + QStringLiteral(".damaged");
    return WholeFile::replace(copy, content) && QFile::setPermissions(copy, QFile::permissions(fileName));
}

/// Nothing if there is a file that cannot be read.
std::optional<QByteArray> contentOf(const QString &fileName)
{
    if (!QFileInfo::exists(fileName))
        return QByteArray();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.readAll();
    return content.size() == file.size() ? std::make_optional(content) : std::nullopt;
}

using Texts = QMap<QString, QString>;
using Entries = QMap<QString, QVariant>;

/// An unquoted comma makes QSettings read a list, whose text is empty: writing that back would lose it.
bool holds(const QSettings &settings, Texts::const_iterator text)
{
    return settings.contains(text.key()) && settings.value(text.key()).toString() == text.value();
}

bool holdsAll(const QSettings &settings, const Texts &values)
{
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        if (!holds(settings, it))
            return false;
    }
    return true;
}

Entries entriesOf(const QSettings &settings)
{
    Entries entries;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        entries.insert(key, settings.value(key));
    return entries;
}

/// The file under another name, for QSettings to work on. QSettings takes a file whose name it knows from its
/// memory, so its work is read back under a third name, that of the file which is to take the place.
class WorkingCopy
{
public:
    WorkingCopy(const QString &fileName, const QByteArray &content)
        : m_file(WholeFile::freeNameBeside(fileName))
    {
        m_isThere = m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)
            && m_file.write(content) == content.size();
        m_file.close();
    }
    ~WorkingCopy() { m_file.remove(); }
    Q_DISABLE_COPY(WorkingCopy)

    /// False if it could not be written.
    bool change(const Texts &values)
    {
        if (!m_isThere)
            return false;
        QSettings settings(m_file.fileName(), QSettings::IniFormat);
        // A file with a UTF-8 mark is read as such, but no mark is written, so its letters need escapes too.
        settings.allKeys();
        settings.setIniCodec(static_cast<QTextCodec *>(nullptr));
        for (auto it = values.cbegin(); it != values.cend(); ++it) {
            if (!holds(settings, it))
                settings.setValue(it.key(), it.value());
        }
        settings.sync();
        m_entries = entriesOf(settings);
        // It complains of lines that are no INI, and writes all the same.
        return settings.status() != QSettings::AccessError;
    }

    /// Makes room on the disk as well.
    std::optional<QByteArray> takeContent()
    {
        const std::optional<QByteArray> content = contentOf(m_file.fileName());
        m_file.remove();
        return content;
    }
    bool hasEntriesOf(const QString &fileName) const
    {
        return entriesOf(QSettings(fileName, QSettings::IniFormat)) == m_entries;
    }

private:
    QFile m_file;
    bool m_isThere = false;
    Entries m_entries;
};

bool isDue(const QString &fileName, const Texts &values)
{
    const std::optional<QByteArray> content = contentOf(fileName);
    return content && (isDamaged(*content) || !holdsAll(QSettings(fileName, QSettings::IniFormat), values));
}

void writeLocked(const QString &fileName, const Texts &values)
{
    const std::optional<QByteArray> before = contentOf(fileName);
    if (!before || (isDamaged(*before) && !keepCopy(fileName, *before)))
        return;
    WorkingCopy copy(WholeFile::targetOf(fileName), *before);
    if (!copy.change(values))
        return;
    if (const std::optional<QByteArray> after = copy.takeContent())
        WholeFile::replace(
            fileName, *after, [&copy](const QString &name) { return copy.hasEntriesOf(name); });
}

} // namespace

bool isUsable(const QString &fileName)
{
    return !WholeFile::isSomethingElse(fileName) && QFileInfo(fileName).size() <= largestUsableFile;
}

void write(const QString &fileName, const QMap<QString, QString> &values)
{
    const QString target = WholeFile::targetOf(fileName);
    const QString lockName = target + QStringLiteral(".lock");
    if (target.isEmpty() || !isUsable(target) || WholeFile::isSomethingElse(lockName)
        || !isDue(target, values))
        return;
    QDir().mkpath(QFileInfo(target).path());
    // Two programs that are closed at once shall not undo each other's changes.
    QLockFile lock(lockName);
    if (lock.lock())
        writeLocked(fileName, values);
}

} // namespace SettingsFile
