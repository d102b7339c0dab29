#include "control/services/settingsfile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

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
bool isDamaged(const QString &fileName)
{
    QFile file(fileName);
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const int begin = content.startsWith(utf8Mark) ? int(qstrlen(utf8Mark)) : 0;
    const QList<QByteArray> lines = content.mid(begin).split('\n');
    return content.contains('\0') || !std::all_of(lines.cbegin(), lines.cend(), isIniLine);
}

bool keepCopy(const QString &fileName)
{
    const QString copy = fileName + QStringLiteral(".damaged");
    QFile::remove(copy);
    return QFile::copy(fileName, copy);
}

} // namespace

bool isUsable(const QString &fileName)
{
    return QFileInfo(fileName).size() <= largestUsableFile;
}

void write(const QString &fileName, const QMap<QString, QString> &values)
{
    if (!isUsable(fileName))
        return;
    if (isDamaged(fileName) && !keepCopy(fileName))
        return;
    QSettings settings(fileName, QSettings::IniFormat);
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        // An unquoted comma makes QSettings read a list, whose text is empty: writing that back would lose
        // it.
        if (!settings.contains(it.key()) || settings.value(it.key()).toString() != it.value())
            settings.setValue(it.key(), it.value());
    }
}

} // namespace SettingsFile
