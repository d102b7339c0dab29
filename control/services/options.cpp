#include "control/services/options.h"

#include "control/services/rows.h"
#include "control/services/settingsfile.h"

#include <QDir>

namespace {

const QString group = QStringLiteral("OPTIONS");

/// A text has no range.
constexpr int none = 0;

constexpr Z7Options::Rows optionRows {{
    {Z7Options::Language, "language", Z7Options::Text, "deutsch", none, none, "cbLanguage"},
    {Z7Options::Timeout, "timeout", Z7Options::Number, "140", 20, 1000, "edTimeout"},
    {Z7Options::TimeoutScanning, "timeoutScanning", Z7Options::Number, "20", 20, 1000, "edTimeoutScanning"},
    {Z7Options::DefaultVendorID, "defaultVendorID", Z7Options::Number, "1027", 0, 10000,
        "edPreselectVendorID"},
    {Z7Options::PollingInterval, "pollingInterval", Z7Options::Number, "1000", 0, 10000, "edPollingCycle"},
}};

static_assert(eachHasItsRow(optionRows, &Z7Options::Row::name, Z7Options::Count), "a setting lacks its row");

constexpr bool rowsAreWhole()
{
    for (const Z7Options::Row &row : optionRows) {
        const bool hasRange = row.kind == Z7Options::Text || row.lowest < row.highest;
        if (!row.key || !row.defaultText || !row.field || !hasRange)
            return false;
    }
    return true;
}

static_assert(rowsAreWhole(), "a setting lacks a part of its row");

QString keyOf(Z7Options::Name name)
{
    return QString::fromLatin1(optionRows[name].key);
}

} // namespace

const Z7Options::Rows &Z7Options::rows()
{
    return optionRows;
}

Z7Options::Z7Options(const QString &folder)
    : m_fileName(QDir(folder).filePath(QStringLiteral("Z7Properties.ini")))
{
}

QString Z7Options::text(Name name)
{
    const QString key = keyOf(name);
    if (!m_values.contains(key))
        m_values[key] = QString::fromLatin1(optionRows[name].defaultText);
    return m_values.value(key);
}

int Z7Options::number(Name name)
{
    return text(name).toInt();
}

void Z7Options::setText(Name name, const QString &text)
{
    m_values[keyOf(name)] = text;
}

void Z7Options::setNumber(Name name, int value)
{
    setText(name, QString::number(value));
}

void Z7Options::load()
{
    if (!SettingsFile::isUsable(m_fileName))
        return;
    QSettings settings(m_fileName, QSettings::IniFormat);
    settings.beginGroup(group);
    const QStringList keys = settings.childKeys();
    for (const QString &key : keys)
        m_values[key] = settings.value(key).toString();
    settings.endGroup();
}

void Z7Options::save() const
{
    QMap<QString, QString> known;
    for (const Row &row : optionRows) {
        const QString key = keyOf(row.name);
        if (m_values.contains(key))
            known[group + QLatin1Char('/') + key] = m_values.value(key);
    }
    SettingsFile::write(m_fileName, known);
}
