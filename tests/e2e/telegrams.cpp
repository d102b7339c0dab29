#include "tests/e2e/telegrams.h"

namespace Telegrams {

namespace {

QString command(int code)
{
    return QStringLiteral("%1").arg(code, 2, 16, QLatin1Char('0'));
}

QString toDrive(int code, int address)
{
    return command(code) + QStringLiteral(" A=%1").arg(address);
}

QString withPassword(int code, int address, int password)
{
    return toDrive(code, address) + QStringLiteral(" pw=%1").arg(password);
}

QString withNumber(int code, int address, int number)
{
    return toDrive(code, address) + QStringLiteral(" p=0x") + QString::number(number, 16).toUpper();
}

int byteAt(const QByteArray &request, int position)
{
    return quint8(request.at(position));
}

int wordAt(const QByteArray &request, int position)
{
    return byteAt(request, position) << 8 | byteAt(request, position + 1);
}

int passwordAt(const QByteArray &request, int position)
{
    return int(quint32(wordAt(request, position)) << 16) | wordAt(request, position + 2);
}

bool isAccess(const QString &request)
{
    return request.startsWith(command(0x09));
}

bool isWrite(const QString &request)
{
    return request.startsWith(command(0x03));
}

bool isStore(const QString &request)
{
    return request.startsWith(command(0x02));
}

/// A transaction begins with two access telegrams in a row; the command to store may also stand alone.
bool beginsTransaction(const QStringList &requests, int i)
{
    const QString before = requests.value(i - 1);
    if (isStore(requests.at(i)))
        return !isWrite(before);
    return isAccess(requests.at(i)) && (isAccess(requests.value(i + 1)) || !isAccess(before));
}

QList<QStringList> transactions(const QStringList &requests)
{
    QList<QStringList> list;
    for (int i = 0; i < requests.size(); ++i) {
        if (i == 0 || beginsTransaction(requests, i))
            list.append(QStringList());
        list.last().append(requests.at(i));
    }
    return list;
}

/// Part of a pass: its begin, if it was broken off, or its end, if that is all that was seen of it.
bool isPartOf(const QStringList &pass, const QStringList &part)
{
    for (int start = 0; start + part.size() <= pass.size(); ++start) {
        if (pass.mid(start, part.size()) == part)
            return true;
    }
    return false;
}

} // namespace

QString text(const QByteArray &request)
{
    const int code = byteAt(request, 0);
    const int address = byteAt(request, 1);
    switch (code) {
    case 0x03:
        return withNumber(code, address, wordAt(request, 2))
            + QStringLiteral(" v=%1").arg(wordAt(request, 4));
    case 0x04:
        return withNumber(code, address, wordAt(request, 2));
    case 0x05:
    case 0x07:
        return toDrive(code, address);
    default:
        return withPassword(code, address, passwordAt(request, 2));
    }
}

QStringList requests(const QVector<z7sim::WireEntry> &log)
{
    QStringList list;
    for (const z7sim::WireEntry &entry : log) {
        if (entry.direction == z7sim::WireEntry::Request)
            list.append(text(entry.bytes));
        else if (entry.direction == z7sim::WireEntry::Dropped)
            list.append(QStringLiteral("no request: ") + QString::fromLatin1(entry.bytes.toHex(' ')));
    }
    return list;
}

QString access(int address, int password)
{
    return withPassword(0x09, address, password);
}

QString read(int address, int number)
{
    return withNumber(0x04, address, number);
}

QString write(int address, int number, int value)
{
    return withNumber(0x03, address, number) + QStringLiteral(" v=%1").arg(quint16(value));
}

QString store(int address, int password)
{
    return withPassword(0x02, address, password);
}

QStringList reads(int address, const QList<int> &numbers)
{
    QStringList list;
    for (const int number : numbers)
        list.append(read(address, number));
    return list;
}

QStringList logOn(int address, int password)
{
    return QStringList {access(address, address), access(address, password), toDrive(0x05, address),
               toDrive(0x07, address)}
    + reads(address, {1, 2, 0x8001, 0x8007, 0x8005, 0x8003, 0x8004, 0x8008, 0x8009, 0x800D});
}

QStringList sweep(int firstAddress, int lastAddress)
{
    QStringList list;
    for (int address = firstAddress; address <= lastAddress; ++address)
        list.append(access(address, address));
    return list;
}

QStringList Polling::firstPass() const
{
    return logOn(address, password) + reads(address, numbers);
}

QStringList Polling::laterPass() const
{
    QStringList pass = firstPass();
    pass.first() = access(address, password);
    return pass;
}

QList<QStringList> besides(const Polling &polling, const QStringList &requests)
{
    QList<QStringList> others;
    for (const QStringList &transaction : transactions(requests)) {
        if (!isPartOf(polling.firstPass(), transaction) && !isPartOf(polling.laterPass(), transaction))
            others.append(transaction);
    }
    return others;
}

} // namespace Telegrams
