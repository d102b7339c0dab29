#pragma once

/// What is the same in every drive, whatever its software version: everything else comes from the parameter
/// definitions.

/// The parameters that the program knows without their definitions.
namespace ParameterNumber {
enum Number {
    OperationMode1 = 0x0001, ///< in force through input I1
    OperationMode2 = 0x0002, ///< in force through input I2
    Restart = 0x0006,
    SpeedCurveX1 = 0x000B,
    SpeedCurveX2 = 0x000C,
    SpeedCurveX3 = 0x000D,
    SpeedCurveY0 = 0x000E,
    SpeedCurveY1 = 0x000F,
    SpeedCurveY2 = 0x0010,
    SpeedCurveY3 = 0x0011,
    SpeedCurveY4 = 0x0012,
    CurrentCurveX1 = 0x0026,
    CurrentCurveX2 = 0x0027,
    CurrentCurveX3 = 0x0028,
    CurrentCurveY0 = 0x0029,
    CurrentCurveY1 = 0x002A,
    CurrentCurveY2 = 0x002B,
    CurrentCurveY3 = 0x002C,
    CurrentCurveY4 = 0x002D,
    BusAddress = 0x0052,
    // Live values, read-only.
    ActualSpeed = 0x8001,
    ActualPositionFraction = 0x8003, ///< in 65535ths of a turn
    ActualPositionTurns = 0x8004,
    ActualTemperature = 0x8005,
    ActualCurrent = 0x8007,
    DigitalOutputs = 0x8008, ///< low byte
    DigitalInputs = 0x8009, ///< low byte
    AnalogInputA1 = 0x800D,
};
}

/// Values of the parameters OperationMode1 and OperationMode2 in which a drive uses certain parameters. The
/// definitions name all values.
enum OperationMode {
    FixedSpeedMode = 1,
    AnalogCurrentMode = 2,
    PositioningMode = 3,
};

/// The bits of Z7Device::statusBits.
namespace StatusBit {
enum Mask {
    OverTemperature = 0x01,
    Active = 0x02,
    OverVoltage = 0x04,
    UnderVoltage = 0x08,
    HardwareError = 0x10,
    OverCurrent = 0x20,
    AcknowledgeRequired = 0x40,
    Ready = 0x80,
};
}

/// The worst that a drive's status bits tell.
enum class DriveCondition { Fault, AcknowledgeRequired, Working, Idle };

constexpr DriveCondition driveCondition(int statusBits)
{
    constexpr int faults = StatusBit::OverTemperature | StatusBit::OverVoltage | StatusBit::UnderVoltage
        | StatusBit::HardwareError | StatusBit::OverCurrent;
    if (statusBits & faults)
        return DriveCondition::Fault;
    if (statusBits & StatusBit::AcknowledgeRequired)
        return DriveCondition::AcknowledgeRequired;
    return statusBits & (StatusBit::Active | StatusBit::Ready) ? DriveCondition::Working
                                                               : DriveCondition::Idle;
}

/// Addresses at which a drive can be reached on the bus.
constexpr int lowestBusAddress = 1;
constexpr int highestBusAddress = 255;

constexpr bool isBusAddress(int address)
{
    return lowestBusAddress <= address && address <= highestBusAddress;
}

/// Outputs O1 to O3 and digital inputs 1 to 4; bit n - 1 of the record's byte belongs to number n.
constexpr int digitalOutputCount = 3;
constexpr int digitalInputCount = 4;
/// What people call digital inputs 1 and 2.
constexpr int digitalInputA = 1;
constexpr int digitalInputB = 2;
