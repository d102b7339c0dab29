#pragma once

#include <QList>
#include <QMap>
#include <QMetaType>
#include <QSerialPortInfo>
#include <QString>

/// One parameter of one drive: a raw 16-bit value as it travels on the wire, never scaled, and what became of
/// the last read and write. A copied value, with no thread of its own.
struct Z7DeviceParam
{
    Z7DeviceParam() = default;
    Z7DeviceParam(int paramNumber, int rawValue, int unsignedFlag, bool valuePresent);

    /// Stores the raw value and marks it as present.
    void setValue(int v);

    int isUnsigned = 1; ///< 1 if the wire value is unsigned, 0 if it is sign-extended
    bool valid = false; ///< the last read from the drive succeeded
    bool hasValue = false;
    int number = -1;
    int value = 0; ///< -32768 to 32767, or 0 to 65535
    bool accessDenied = false; ///< the password in force does not allow this parameter
    bool writeFailed = false;
    bool readFailed = false;
    bool conflict = false; ///< the drive answered a write with a conflict word other than 0
    int error = 0; ///< error number of the last failed read
};
Q_DECLARE_METATYPE(Z7DeviceParam)

/// The parameters of one drive, or of one page, for one software version; walked in ascending order of
/// number.
struct Z7DeviceParamSet
{
    explicit Z7DeviceParamSet(const QString &version = QString());
    /// A set of those numbers without values; their signedness comes from the definitions of the version.
    Z7DeviceParamSet(const QString &version, const QList<int> &numbers);

    /// Stores the record under its number, replacing what stood there.
    void insert(const Z7DeviceParam &param);
    /// Stores all records of another set likewise; the version stays.
    void insertAll(const Z7DeviceParamSet &other);
    void remove(const Z7DeviceParam &param);
    bool contains(int number) const;
    /// The record of that number, or a default record.
    Z7DeviceParam value(int number) const;
    /// The record of that number in its place, or null: one look-up, and no copy. Valid until the set is
    /// changed or goes.
    const Z7DeviceParam *find(int number) const;

    /// Forgets what the last reads and writes told, on every entry; accessDenied and conflict stay.
    void resetReadState();
    /// The same for one entry, conflict included; accessDenied stays.
    void clearParamState(int number);
    void setAllHasValue(bool hasValue);

    QString softwareVersion;
    QMap<int, Z7DeviceParam> params;
};

/// One drive: where it is, how it was reached, what it reported last. Copied between the threads by value.
struct Z7Device
{
    Z7Device();
    explicit Z7Device(const QSerialPortInfo &port);

    /// Key of the drive in the device list, made from the port's digits, the bus address and the version.
    /// The digits of the port name are added up, so COM12 and COM21 give the same key.
    int deviceId() const;
    /// The key that the drive had before its address was changed.
    int previousDeviceId() const;

    void setDeviceError(int number) { error = number; }
    bool hasError() const { return error != 0; }
    bool isConnected() const { return connected; }
    bool isAccessGranted() const { return accessGranted; }

    /// A drive that answers is out of its bootloader; one that is lost has no access either.
    void setConnected(bool c);
    /// Access implies that the drive is connected; its loss leaves the connection alone.
    void setAccessGranted(bool a);
    /// The drive's bus address was changed by the user: keeps the old one and marks the record.
    /// The drive has to be reached anew. The present address changes nothing.
    void setAddress(int a);
    /// Gives the record the address at which a drive is looked for. Leaves no mark of a changed address, so
    /// that the record never passes for a neighbour on the bus.
    void assignAddress(int a);
    void setPassword(int p);
    /// Takes the version of a drive whose version is not known yet; a known one is never replaced.
    void setSoftwareVersion(const QString &v);
    /// Replaces all parameters, the version of the set included.
    void setParameterSet(const Z7DeviceParamSet &set);
    /// Replaces the entry of that number; a number that the drive does not have is dropped.
    void updateParam(const Z7DeviceParam &p);
    void clearParamState(int number);
    /// Makes the record one of a drive that is not reached yet: no error, not connected, nothing read. What
    /// the drive told of access rights and conflicts stays.
    void resetState();
    void copyConnectionState(const Z7Device &d);

    /// Outputs 1 to 3 and inputs 1 to 4; any other number is not set.
    bool isDigitalOutputSet(int n) const;
    bool isDigitalInputSet(int n) const;

    /// The version of a drive that has not told it yet.
    static QString unknownVersion() { return QStringLiteral("V000"); }

    QSerialPortInfo portInfo;
    int error = 0; ///< error number of the last pass
    bool connected = false; ///< the drive has answered at this address
    bool accessGranted = false; ///< the drive has accepted the password
    int address = 1;
    int previousAddress = 1;
    int password = 0;
    QString softwareVersion = unknownVersion();
    int operationMode1 = 0;
    int operationMode2 = 0;
    quint8 statusBits = 0; ///< of StatusBit
    quint8 digitalOutputs = 0;
    quint8 digitalInputs = 0;
    int analogInputA1 = 0; ///< raw counts
    int actualCurrent = 0; ///< raw counts
    int actualSpeed = 0; ///< raw counts
    int actualTemperature = 0; ///< raw counts
    double actualPosition = 0.0; ///< turns
    bool bootloaderActive = false;
    bool addressChanged = false; ///< the user changed the address of this drive
    bool parametersComplete = false; ///< all parameters have been read once since connecting
    bool fullReadPending = false; ///< the read of all parameters is under way
    Z7DeviceParamSet parameterSet {unknownVersion()};
};
Q_DECLARE_METATYPE(Z7Device)

/// Makes Z7Device and Z7DeviceParam known to queued signals, under their own names. Harmless to repeat.
void registerDeviceTypes();

/// "Port" with the digits of the port's name, " - Z7." and the bus address: "Port12 - Z7.3".
QString deviceName(const Z7Device &device);
/// "Z7." and the bus address.
QString shortDeviceName(const Z7Device &device);
