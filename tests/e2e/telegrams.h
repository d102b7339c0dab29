#pragma once

#include "simulator/wirelog.h"

#include <QList>
#include <QStringList>

/// Requests on the bus in a form that can be read, and the lists of them that the program is to send:
///
///     09 A=1 pw=4711         log on to the drive with address 1
///     05 A=1                 read its status          07 A=1    read its software version
///     04 A=1 p=0x8001        read a parameter         03 A=1 p=0x17 v=700    write one
///     02 A=1 pw=4711         store
namespace Telegrams {

QString text(const QByteArray &request);
/// The requests among what was on the wire, in their order.
QStringList requests(const QVector<z7sim::WireEntry> &log);

QString access(int address, int password);
QString read(int address, int number);
QString write(int address, int number, int value);
QString store(int address, int password);
QStringList reads(int address, const QList<int> &numbers);

/// What every transaction with a drive begins with: the bus address as password, the password, status,
/// version, and the ten live values.
QStringList logOn(int address, int password);
/// One probe of each address, itself as password.
QStringList sweep(int firstAddress, int lastAddress);

/// What the live update sends to a drive, again and again.
struct Polling
{
    int address;
    int password;
    QList<int> numbers; ///< the parameters that it reads, in ascending order

    /// A pass before the drive has confirmed its password: it tries the bus address first.
    QStringList firstPass() const;
    /// A pass from then on.
    QStringList laterPass() const;
};

/// The transactions in these requests that are not the live update's. Of its passes, the first may be cut at
/// its begin and any other broken off.
QList<QStringList> besides(const Polling &polling, const QStringList &requests);

} // namespace Telegrams
