#include "simulator/definitions.h"

#include <QFile>
#include <QStringList>
#include <algorithm>
#include <iterator>

namespace z7sim {

namespace {

constexpr int liveValues[] = {ActualSpeed, PositionFraction, PositionTurns, ActualTemperature, ActualCurrent,
    DigitalOutputs, DigitalInputs, AnalogInput};

bool isSignedLiveValue(int number)
{
    return number == ActualSpeed || number == PositionTurns || number == ActualTemperature
        || number == ActualCurrent;
}

/// One line of a definition file, cut into its columns; columns beyond the end are empty.
class Columns
{
public:
    explicit Columns(const QString &line)
        : m_columns(line.split(QLatin1Char(';')))
    {
    }

    QString text(int column) const { return m_columns.value(column); }
    QString unquoted(int column) const { return text(column).remove(QLatin1Char('"')); }
    int number(int column, int otherwise) const
    {
        bool ok = false;
        const int value = text(column).toInt(&ok);
        return ok ? value : otherwise;
    }
    bool definesParameter() const
    {
        bool hasNumber = false;
        text(0).toInt(&hasNumber);
        return hasNumber && text(9) == QLatin1String("0");
    }

private:
    QStringList m_columns;
};

Definition parseDefinition(const Columns &columns)
{
    Definition definition;
    definition.isSigned = columns.unquoted(6) == QLatin1String("Signed");
    definition.factoryValue = columns.number(3, 0);
    definition.minimum = columns.number(4, definition.isSigned ? -32767 : 0);
    definition.maximum = columns.number(5, definition.isSigned ? 32767 : 65535);
    definition.isApplicationFunction = columns.number(7, 0) == 0;
    definition.isReadOnly = columns.unquoted(8) == QLatin1String("r");
    return definition;
}

} // namespace

QString definitionFileName(const QByteArray &version)
{
    return QStringLiteral("Z7ParamDef_%1.csv").arg(QString::fromLatin1(version));
}

Definitions loadDefinitions(const QString &fileName)
{
    Definitions definitions;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return definitions;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        const Columns columns(QString::fromLatin1(line.constData())); // up to the first NUL
        if (columns.definesParameter())
            definitions.insert(columns.number(0, 0), parseDefinition(columns));
    }
    return definitions;
}

Definitions withBuiltIns(Definitions definitions)
{
    for (int mode : {OperationMode1, OperationMode2}) {
        if (!definitions.contains(mode))
            definitions.insert(mode, Definition());
    }
    Definition address;
    address.minimum = 1;
    address.maximum = 255;
    definitions.insert(BusAddress, address);
    for (int number : liveValues) {
        if (!definitions.contains(number))
            definitions[number].isSigned = isSignedLiveValue(number);
        definitions[number].isReadOnly = true;
    }
    return definitions;
}

bool isLiveValue(int number)
{
    return std::find(std::begin(liveValues), std::end(liveValues), number) != std::end(liveValues);
}

} // namespace z7sim
