#include "model/parameterdefinitions.h"

#include "control/services/wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>
#include <tuple>

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

std::optional<Z7ParamDefinition> parseRow(const QString &line)
{
    const QStringList columns = splitColumns(line);
    bool isNumber = false;
    const int number = columns.value(NumberColumn).toInt(&isNumber);
    if (!isNumber || columns.value(VariantColumn) != QLatin1String("0"))
        return std::nullopt;
    return parseColumns(number, columns);
}

/// The text of one line of the file: Latin-1, up to the first NUL.
QString lineText(const QByteArray &line)
{
    const int end = line.indexOf('\0');
    return QString::fromLatin1(end < 0 ? line : line.left(end));
}

std::vector<Z7ParamDefinition> readRows(QIODevice &file)
{
    std::vector<Z7ParamDefinition> rows;
    // An empty line still has its end, so nothing at all is the end of the file, or a medium that fails.
    for (QByteArray line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        if (const auto row = parseRow(lineText(line)))
            rows.push_back(*row);
    }
    return rows;
}

QString fileNameOf(const QString &version)
{
    return QStringLiteral("Z7ParamDef_") + version + QStringLiteral(".csv");
}

} // namespace

/// Never changed once it is in force.
struct Z7ParamDefinitions::Table
{
    explicit Table(const QString &version)
        : emptyParameterSet(version)
    {
    }

    void insert(const Z7ParamDefinition &row)
    {
        emptyParameterSet.insert(Z7DeviceParam(row.number, 0, row.isUnsigned, false));
        rows.insert(row.number, row);
    }

    QMap<int, Z7ParamDefinition> rows;
    Z7DeviceParamSet emptyParameterSet;
};

bool operator==(const Z7ParamDefinition &a, const Z7ParamDefinition &b)
{
    const auto fields = [](const Z7ParamDefinition &row) {
        return std::tie(row.isUnsigned, row.number, row.name, row.unit, row.defaultValue, row.minimum,
            row.maximum, row.applFunction, row.readOnly, row.variant, row.options);
    };
    return fields(a) == fields(b);
}

Z7ParamDefinitions::Z7ParamDefinitions(const QString &version, const QString &folder)
    : m_softwareVersion(version)
    , m_fileName(QDir(folder).filePath(fileNameOf(version)))
{
    m_tables.push_back(std::make_unique<const Table>(version));
    m_table = m_tables.back().get();
}

Z7ParamDefinitions::~Z7ParamDefinitions() = default;

bool Z7ParamDefinitions::isAnyFileIn(const QString &folder)
{
    return !QDir(folder).entryList({fileNameOf(QStringLiteral("*"))}, QDir::Files).isEmpty();
}

bool Z7ParamDefinitions::load()
{
    const QFileInfo info(m_fileName);
    // A pipe or a device could be read for ever; a folder is told as a file that cannot be opened.
    if (!info.isFile() && !info.isDir())
        return false;
    QFile file(info.filePath());
    if (info.size() > WholeFile::largestFile || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return hasRows();
    takeRows(readRows(file));
    return hasRows();
}

void Z7ParamDefinitions::parseLine(const QString &line)
{
    if (const auto row = parseRow(line))
        takeRows({*row});
}

void Z7ParamDefinitions::takeRows(const std::vector<Z7ParamDefinition> &rows)
{
    const QMutexLocker locker(&m_writeMutex);
    auto next = std::make_unique<Table>(*m_tables.back());
    for (const Z7ParamDefinition &row : rows)
        next->insert(row);
    if (next->rows == m_tables.back()->rows)
        return;
    m_tables.push_back(std::move(next));
    m_table.store(m_tables.back().get(), std::memory_order_release);
}

const Z7ParamDefinition &Z7ParamDefinitions::row(int number) const
{
    static const Z7ParamDefinition unknown;
    const auto &rows = table().rows;
    const auto found = rows.constFind(number);
    return found == rows.cend() ? unknown : *found;
}

bool Z7ParamDefinitions::contains(int number) const
{
    return table().rows.contains(number);
}

const Z7DeviceParamSet &Z7ParamDefinitions::emptyParameterSet() const
{
    return table().emptyParameterSet;
}

Z7DeviceParamSet Z7ParamDefinitions::factoryValues(const Z7DeviceParamSet &params) const
{
    Z7DeviceParamSet values(m_softwareVersion);
    for (Z7DeviceParam param : params.params) {
        const Z7ParamDefinition &definition = row(param.number);
        if (definition.readOnly)
            continue;
        param.setValue(definition.defaultValue);
        values.insert(param);
    }
    return values;
}

bool Z7ParamDefinitions::hasRows() const
{
    return !table().rows.isEmpty();
}
