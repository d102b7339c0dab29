#include "control/services/language.h"

#include "control/services/services.h"
#include "control/services/settingsfile.h"

#include <QDir>

QString Z7Language::text(const QString &section, const QString &key, const QString &defaultText)
{
    const QString path = section + QLatin1Char('/') + key;
    auto entry = m_texts.find(path);
    if (entry == m_texts.end())
        entry = m_texts.insert(path, defaultText);
    return entry.value();
}

void Z7Language::load(const QString &name)
{
    m_language = name;
    if (!SettingsFile::isUsable(fileName()))
        return;
    QSettings settings(fileName(), QSettings::IniFormat);
    const QStringList groups = settings.childGroups();
    for (const QString &group : groups) {
        settings.beginGroup(group);
        const QStringList keys = settings.allKeys();
        for (const QString &key : keys)
            m_texts[group + QLatin1Char('/') + key] = settings.value(key).toString();
        settings.endGroup();
    }
}

QString Z7Language::fileName() const
{
    return QDir(m_folder).filePath(m_language + fileSuffix());
}

void Z7Language::save() const
{
    SettingsFile::write(fileName(), m_texts);
}

QString languageText(const char *section, const char *key, const char *defaultText)
{
    return languageText(section, key, QString::fromUtf8(defaultText));
}

QString languageText(const char *section, const char *key, const QString &defaultText)
{
    return Z7Services::instance()->language()->text(QLatin1String(section), QLatin1String(key), defaultText);
}

QString definitionText(const QString &text)
{
    return Z7Services::instance()->language()->text(QStringLiteral("ParamDefinition"), text, text);
}
