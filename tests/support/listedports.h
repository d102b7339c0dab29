#pragma once

#include <QString>
#include <QTemporaryDir>

/// Serial ports that QSerialPortInfo::availablePorts() lists and QSerialPort opens, without hardware.
///
/// While an object lives, the process sees its ports and no others. At most one object at a time, made and
/// used on the main thread. Behind a port lies the slave side of a pseudo terminal, whose master side some
/// other object holds. The executable must be a test marked LISTED_PORTS.
///
/// availablePorts() lists the ports of USB adapters in ascending order of their names, after those on the
/// board.
class ListedPorts
{
public:
    /// What the system tells of a USB adapter.
    struct UsbAdapter
    {
        quint16 vendorId;
        quint16 productId;
        QString product;
        QString manufacturer;
        QString serialNumber = QString(); ///< many have none
    };
    static UsbAdapter ftdiAdapter(); ///< vendor 0x0403 (1027), which the program prefers
    static UsbAdapter otherAdapter(); ///< vendor 0x067b (1659)

    ListedPorts();
    ~ListedPorts();
    ListedPorts(const ListedPorts &) = delete;
    ListedPorts &operator=(const ListedPorts &) = delete;

    /// Plugs an adapter in. name is that of the port, such as "ttyUSB0"; pseudoTerminal is the path of the
    /// slave side, or empty for a port that cannot be opened.
    void plugUsb(
        const QString &name, const QString &pseudoTerminal, const UsbAdapter &adapter = ftdiAdapter());
    /// Adds a port without vendor identifier, such as "ttyS0".
    void addOnBoard(const QString &name, const QString &pseudoTerminal);
    /// Leads an existing port to another pseudo terminal, or with an empty path to none: then it is listed
    /// but no longer opens.
    void relink(const QString &name, const QString &pseudoTerminal);
    /// Path of the lock file that stands for the opened port, whether there is one or not.
    QString lockFile(const QString &name) const;
    /// Pulls the adapter: the port is neither listed nor opened any more. A port that is open stays so until
    /// its pseudo terminal ends.
    void pull(const QString &name);

private:
    void addTty(const QString &name, const QString &parent, const QByteArray &properties);
    QString path(const QString &inside) const;
    void write(const QString &file, const QByteArray &content) const;
    void link(const QString &file, const QString &target) const;

    QTemporaryDir root_;
};
