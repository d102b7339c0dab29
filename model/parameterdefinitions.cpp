#include "model/parameterdefinitions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

enum Column {
    NumberColumn = 0,
    NameColumn = 1,
    UnitColumn = 2,
    DefaultColumn = 3,
    MinimumColumn = 4,
    MaximumColumn = 5,
    SignednessColumn = 6,
    ApplFunctionColumn = 7,
    AccessColumn = 8,
    VariantColumn = 9,
    FirstOptionColumn = 10,
    LastOptionColumn = 22,
};

constexpr qint64 largestFile = 16 * 1024 * 1024;

QStringList splitColumns(const QString &line)
{
    QStringList columns;
    int from = 0;
    int to = 0;
    while (to >= 0 && columns.size() <= LastOptionColumn) {
        to = line.indexOf(QLatin1Char(';'), from);
        columns.append(line.mid(from, to < 0 ? -1 : to - from));
        from = to + 1;
    }
    return columns;
}

QString withoutQuotes(QString text)
{
    return text.remove(QLatin1Char('"'));
}

int toNumber(const QString &text, int fallback)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok ? number : fallback;
}

QMap<int, QString> parseOptions(const QStringList &columns)
{
    QMap<int, QString> options;
    for (int column = FirstOptionColumn; column <= LastOptionColumn; ++column) {
        const QString text = columns.value(column);
        if (!text.isEmpty())
            options.insert(column - FirstOptionColumn, withoutQuotes(text));
    }
    return options;
}

Z7ParamDefinition parseColumns(int number, const QStringList &columns)
{
    const bool isSigned = withoutQuotes(columns.value(SignednessColumn)) == QLatin1String("Signed");
    Z7ParamDefinition row;
    row.isUnsigned = isSigned ? 0 : 1;
    row.number = number;
    row.name = withoutQuotes(columns.value(NameColumn));
    row.unit = withoutQuotes(columns.value(UnitColumn));
    row.defaultValue = toNumber(columns.value(DefaultColumn), 0);
    row.minimum = toNumber(columns.value(MinimumColumn), isSigned ? -32767 : 0);
    row.maximum = toNumber(columns.value(MaximumColumn), isSigned ? 32767 : 65535);
    row.applFunction = toNumber(columns.value(ApplFunctionColumn), 0);
    row.readOnly = withoutQuotes(columns.value(AccessColumn)) == QLatin1String("r");
    row.options = parseOptions(columns);
    return row;
}

/// The text of one line of the file: Latin-1, up to the first NUL.
QString lineText(const QByteArray &line)
{
    const int end = line.indexOf('\0');
    return QString::fromLatin1(end < 0 ? line : line.left(end));
}

} // namespace

Z7ParamDefinitions::Z7ParamDefinitions(const QString &version)
    : m_softwareVersion(version)
    , m_fileName(QStringLiteral("Z7ParamDef_") + version + QStringLiteral(".csv"))
    , m_emptyParameterSet(version)
{
}

bool Z7ParamDefinitions::load()
{
    const QFileInfo info(QDir::currentPath() + QLatin1Char('/') + m_fileName);
    if (!info.exists())
        return false;
    QFile file(info.filePath());
    if (!info.isFile() || info.size() > largestFile || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return hasRows();
    // An empty line still has its end, so nothing at all is the end of the file, or a medium that fails.
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine())
        parseLine(lineText(line));
    return hasRows();
}

void Z7ParamDefinitions::parseLine(const QString &line)
{
    const QStringList columns = splitColumns(line);
    bool isNumber = false;
    const int number = columns.value(NumberColumn).toInt(&isNumber);
    if (!isNumber || columns.value(VariantColumn) != QLatin1String("0"))
        return;
    const Z7ParamDefinition row = parseColumns(number, columns);
    const QMutexLocker locker(&m_mutex);
    m_emptyParameterSet.insert(Z7DeviceParam(number, 0, row.isUnsigned, false));
    m_rows.insert(number, row);
}

Z7DeviceParamSet Z7ParamDefinitions::emptyParameterSet() const
{
    const QMutexLocker locker(&m_mutex);
    return m_emptyParameterSet;
}

Z7ParamDefinition Z7ParamDefinitions::row(int number) const
{
    const QMutexLocker locker(&m_mutex);
    return m_rows.value(number);
}

bool Z7ParamDefinitions::hasRows() const
{
    const QMutexLocker locker(&m_mutex);
    return !m_emptyParameterSet.params.isEmpty();
}
