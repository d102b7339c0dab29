#include "control/services/settingsfile.h"

#include <QFile>
#include <QFileInfo>

namespace SettingsFile {

namespace {

constexpr qint64 largestUsableFile = 16 * 1024 * 1024;

void keepDamagedCopy(const QString &fileName)
{
    const QString copy = fileName + QStringLiteral(".damaged");
    QFile::remove(copy);
    QFile::copy(fileName, copy);
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
    QSettings settings(fileName, QSettings::IniFormat);
    if (settings.status() == QSettings::FormatError)
        keepDamagedCopy(fileName);
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        // An unquoted comma makes QSettings read a list, whose text is empty: writing that back would lose
        // it.
        if (!settings.contains(it.key()) || settings.value(it.key()).toString() != it.value())
            settings.setValue(it.key(), it.value());
    }
}

} // namespace SettingsFile
