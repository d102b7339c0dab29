#pragma once

#include <QList>
#include <QSerialPortInfo>
#include <QString>
#include <QStringList>

/// What tells one USB adapter from another, whatever name its port has. A copied value.
struct Z7Adapter
{
    Z7Adapter() = default;
    explicit Z7Adapter(const QSerialPortInfo &port);

    /// True for the same vendor, product and serial number, all of which two adapters may share. A port
    /// without vendor is no adapter.
    bool looksLike(const Z7Adapter &other) const;

    QString portName;
    bool isUsb = false;
    quint16 vendor = 0;
    quint16 product = 0;
    QString serialNumber; ///< many adapters have none
};

/// The adapters that the system lists and whose ports are there. Takes some ms.
QList<Z7Adapter> listedAdapters();

/// The name of the port under which an adapter that was gone is listed now; empty if it is not, or if it
/// cannot be told from another one. `others` names the ports that were there beside it.
QString portOfReturned(const Z7Adapter &gone, const QStringList &others, const QList<Z7Adapter> &listed);
