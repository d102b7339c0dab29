#pragma once

#include <QMap>
#include <QString>

namespace z7sim {

/// What a drive knows of one of its parameters.
struct Definition
{
    int factoryValue = 0;
    int minimum = 0;
    int maximum = 65535;
    bool isSigned = false;
    bool isReadOnly = false;
    /// True if writes are refused while digital input 1 or 2 is high.
    bool isApplicationFunction = false;

    /// The number that the 16 bits of the wire mean for this parameter.
    int meaningOf(quint16 raw) const { return isSigned ? static_cast<qint16>(raw) : raw; }
    bool allows(int value) const { return value >= minimum && value <= maximum; }
};

using Definitions = QMap<int, Definition>;

/// Name of the definition file of a software version, without a folder.
QString definitionFileName(const QByteArray &version);

/// Reads a definition file (Latin-1, ";" between the columns); lines that define nothing are skipped.
/// A file that cannot be read gives no definitions.
Definitions loadDefinitions(const QString &fileName);

/// Adds what every drive has, whatever its file says: the operation mode (1 and 2), the bus address (0x52)
/// and the live values, which are read-only.
Definitions withBuiltIns(Definitions definitions);

/// Numbers of the parameters that every drive has.
enum Parameter {
    OperationMode1 = 0x01,
    OperationMode2 = 0x02,
    BusAddress = 0x52,
    ActualSpeed = 0x8001,
    PositionFraction = 0x8003,
    PositionTurns = 0x8004,
    ActualTemperature = 0x8005,
    ActualCurrent = 0x8007,
    DigitalOutputs = 0x8008,
    DigitalInputs = 0x8009,
    AnalogInput = 0x800D,
};

/// True for a value that the drive measures instead of keeping it in its memory.
bool isLiveValue(int number);

} // namespace z7sim
