#include "control/services/options.h"

#include "control/services/settingsfile.h"

namespace {

const QString fileName = QStringLiteral("Z7Properties.ini");
const QString group = QStringLiteral("OPTIONS");

const QString languageKey = QStringLiteral("language");
const QString timeoutKey = QStringLiteral("timeout");
const QString timeoutScanningKey = QStringLiteral("timeoutScanning");
const QString defaultVendorIDKey = QStringLiteral("defaultVendorID");
const QString pollingIntervalKey = QStringLiteral("pollingInterval");

} // namespace

QString Z7Options::language()
{
    return text(languageKey, QStringLiteral("deutsch"));
}

int Z7Options::timeout()
{
    return number(timeoutKey, QStringLiteral("140"));
}

int Z7Options::timeoutScanning()
{
    return number(timeoutScanningKey, QStringLiteral("20"));
}

int Z7Options::defaultVendorID()
{
    return number(defaultVendorIDKey, QStringLiteral("1027"));
}

int Z7Options::pollingInterval()
{
    return number(pollingIntervalKey, QStringLiteral("1000"));
}

void Z7Options::setLanguage(const QString &language)
{
    m_values[languageKey] = language;
}

void Z7Options::setTimeout(int ms)
{
    m_values[timeoutKey] = QString::number(ms);
}

void Z7Options::setTimeoutScanning(int ms)
{
    m_values[timeoutScanningKey] = QString::number(ms);
}

void Z7Options::setDefaultVendorID(int vendorID)
{
    m_values[defaultVendorIDKey] = QString::number(vendorID);
}

void Z7Options::setPollingInterval(int ms)
{
    m_values[pollingIntervalKey] = QString::number(ms);
}

void Z7Options::load()
{
    if (!SettingsFile::isUsable(fileName))
        return;
    QSettings settings(fileName, QSettings::IniFormat);
    settings.beginGroup(group);
    const QStringList keys = settings.childKeys();
    for (const QString &key : keys)
        m_values[key] = settings.value(key).toString();
    settings.endGroup();
}

void Z7Options::save() const
{
    QMap<QString, QString> known;
    for (const QString &key :
        {languageKey, timeoutKey, timeoutScanningKey, defaultVendorIDKey, pollingIntervalKey}) {
        if (m_values.contains(key))
            known[group + QLatin1Char('/') + key] = m_values.value(key);
    }
    SettingsFile::write(fileName, known);
}

QString Z7Options::text(const QString &key, const QString &defaultText)
{
    if (!m_values.contains(key))
        m_values[key] = defaultText;
    return m_values.value(key);
}

int Z7Options::number(const QString &key, const QString &defaultText)
{
    return text(key, defaultText).toInt();
}
