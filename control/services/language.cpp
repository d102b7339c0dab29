#include "control/services/language.h"

#include "control/services/services.h"
#include "control/services/settingsfile.h"

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
    if (!SettingsFile::isUsable(name + fileSuffix()))
        return;
    QSettings settings(name + fileSuffix(), QSettings::IniFormat);
    const QStringList groups = settings.childGroups();
    for (const QString &group : groups) {
        settings.beginGroup(group);
        const QStringList keys = settings.allKeys();
        for (const QString &key : keys)
            m_texts[group + QLatin1Char('/') + key] = settings.value(key).toString();
        settings.endGroup();
    }
}

void Z7Language::save() const
{
    SettingsFile::write(m_language + fileSuffix(), m_texts);
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
