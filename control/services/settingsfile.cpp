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

constexpr auto utf8Mark = "\xEF\xBB\xBF";

/// QSettings cannot be asked for a key with an empty part, and writes it back as another one.
template<typename Text>
bool isKey(const Text &text)
{
    return !text.isEmpty() && !text.startsWith('/') && !text.endsWith('/') && !text.contains("//");
}

bool isIniName(const QByteArray &name)
{
    return isKey(name.trimmed().replace('\\', '/'));
}

bool isIniLine(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    if (text.isEmpty() || text.startsWith(';'))
        return true;
    const int end = text.indexOf(text.startsWith('[') ? ']' : '=');
    const int begin = text.startsWith('[') ? 1 : 0;
    return end >= 0 && isIniName(text.mid(begin, end - begin));
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
    if (!WholeFile::replace(copy, content))
        return false;
    // Disks that know no permissions refuse to set any, and all files have the same there.
    QFile::setPermissions(copy, QFile::permissions(fileName));
    return true;
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
    for (const QString &key : keys) {
        if (isKey(key))
            entries.insert(key, settings.value(key));
    }
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
        m_entries = entriesOf(settings);
        settings.sync();
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
    /// Whether that file, as the disk holds it, has all that QSettings was to write.
    bool isContainedIn(const QString &fileName) const
    {
        const Entries found = entriesOf(QSettings(fileName, QSettings::IniFormat));
        return std::all_of(m_entries.keyValueBegin(), m_entries.keyValueEnd(), [&found](const auto &entry) {
            const auto there = found.constFind(entry.first);
            return there != found.cend() && *there == entry.second;
        });
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
            fileName, *after, [&copy](const QString &name) { return copy.isContainedIn(name); });
}

} // namespace

bool isUsable(const QString &fileName)
{
    return !WholeFile::isSomethingElse(fileName) && QFileInfo(fileName).size() <= WholeFile::largestFile;
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
