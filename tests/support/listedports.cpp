#include "tests/support/listedports.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr auto rootVariable = "UMOCKDEV_DIR";

QByteArray hex(quint16 id)
{
    return QByteArray::number(id, 16).rightJustified(4, '0');
}

QString deviceFolder(const QString &parent)
{
    return QStringLiteral("/sys/devices/") + parent;
}

QString deviceFile(const QString &name)
{
    return QStringLiteral("/ports/") + name;
}

QString adapterOf(const QString &name)
{
    return QStringLiteral("usb-") + name;
}

QString boardOf(const QString &name)
{
    return QStringLiteral("board-") + name;
}

QString classLink(const QString &name)
{
    return QStringLiteral("/sys/class/tty/") + name;
}

} // namespace

ListedPorts::UsbAdapter ListedPorts::ftdiAdapter()
{
    return {0x0403, 0x6001, QStringLiteral("FT232R USB UART"), QStringLiteral("FTDI")};
}

ListedPorts::UsbAdapter ListedPorts::otherAdapter()
{
    return {0x067b, 0x2303, QStringLiteral("USB-Serial Controller"), QStringLiteral("Prolific Technology")};
}

// What lies under sys in the folder is seen as /sys in the whole process, by umockdev's library. The files of
// the ports and of their locks lie in ports and locks, for preload/portfiles.c.
ListedPorts::ListedPorts()
{
    Q_ASSERT(!qEnvironmentVariableIsSet(rootVariable));
    for (const auto *folder : {"/sys/class/tty", "/sys/bus", "/sys/devices", "/ports", "/locks"})
        QDir().mkpath(path(QLatin1String(folder)));
    qputenv(rootVariable, QFile::encodeName(root_.path()));
}

ListedPorts::~ListedPorts()
{
    qunsetenv(rootVariable);
}

void ListedPorts::plugUsb(const QString &name, const QString &pseudoTerminal, const UsbAdapter &adapter)
{
    const QString folder = deviceFolder(adapterOf(name));
    QByteArray properties = "ID_VENDOR_ID=" + hex(adapter.vendorId) + "\nID_MODEL_ID="
        + hex(adapter.productId) + "\nID_MODEL=" + adapter.product.toUtf8().replace(' ', '_')
        + "\nID_VENDOR=" + adapter.manufacturer.toUtf8().replace(' ', '_') + '\n';
    if (!adapter.serialNumber.isEmpty())
        properties += "ID_SERIAL_SHORT=" + adapter.serialNumber.toUtf8() + '\n';
    write(folder + QStringLiteral("/uevent"), "DEVTYPE=usb_device\n" + properties);
    write(folder + QStringLiteral("/idVendor"), hex(adapter.vendorId));
    write(folder + QStringLiteral("/idProduct"), hex(adapter.productId));
    link(folder + QStringLiteral("/subsystem"), QStringLiteral("../../bus/usb"));
    addTty(name, adapterOf(name), properties);
    relink(name, pseudoTerminal);
}

void ListedPorts::addOnBoard(const QString &name, const QString &pseudoTerminal)
{
    const QString folder = deviceFolder(boardOf(name));
    write(folder + QStringLiteral("/uevent"), QByteArray());
    link(folder + QStringLiteral("/subsystem"), QStringLiteral("../../bus/pnp"));
    addTty(name, boardOf(name), QByteArray());
    relink(name, pseudoTerminal);
}

void ListedPorts::addTty(const QString &name, const QString &parent, const QByteArray &properties)
{
    const QString folder = deviceFolder(parent) + QLatin1Char('/') + name;
    write(folder + QStringLiteral("/uevent"), "DEVNAME=" + name.toLatin1() + '\n' + properties);
    link(folder + QStringLiteral("/subsystem"), QStringLiteral("../../../class/tty"));
    link(classLink(name), QStringLiteral("../../devices/%1/%2").arg(parent, name));
}

void ListedPorts::relink(const QString &name, const QString &pseudoTerminal)
{
    QFile::remove(path(deviceFile(name)));
    if (!pseudoTerminal.isEmpty())
        link(deviceFile(name), pseudoTerminal);
}

QString ListedPorts::lockFile(const QString &name) const
{
    return path(QStringLiteral("/locks/LCK..") + name);
}

void ListedPorts::pull(const QString &name)
{
    relink(name, QString());
    QFile::remove(path(classLink(name)));
    for (const QString &parent : {adapterOf(name), boardOf(name)})
        QDir(path(deviceFolder(parent))).removeRecursively();
}

QString ListedPorts::path(const QString &inside) const
{
    return root_.path() + inside;
}

void ListedPorts::write(const QString &file, const QByteArray &content) const
{
    QFile out(path(file));
    QDir().mkpath(QFileInfo(out).path());
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
        qFatal("%s: %s", qPrintable(out.fileName()), qPrintable(out.errorString()));
}

void ListedPorts::link(const QString &file, const QString &target) const
{
    QFile::remove(path(file));
    if (!QFile::link(target, path(file)))
        qFatal("cannot link %s to %s", qPrintable(path(file)), qPrintable(target));
}
