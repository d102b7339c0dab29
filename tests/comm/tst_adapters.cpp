// An adapter that was gone and is there again, told by what it says of itself and not by the name of its
// port.

#include "comm/adapters.h"
#include "tests/support/listedports.h"

#include <QtTest>

namespace {

/// Vendor and product of all of them; what follows is port and serial number.
Z7Adapter adapter(const QString &portName, const QString &serialNumber = QString())
{
    Z7Adapter adapter;
    adapter.portName = portName;
    adapter.isUsb = true;
    adapter.vendor = 0x0403;
    adapter.product = 0x6001;
    adapter.serialNumber = serialNumber;
    return adapter;
}

Z7Adapter otherVendor(Z7Adapter adapter)
{
    adapter.vendor = 0x067b;
    return adapter;
}

Z7Adapter otherProduct(Z7Adapter adapter)
{
    adapter.product = 0x6015;
    return adapter;
}

Z7Adapter onBoard(const QString &portName)
{
    Z7Adapter port;
    port.portName = portName;
    return port;
}

} // namespace

Q_DECLARE_METATYPE(Z7Adapter)

class TestAdapters : public QObject
{
    Q_OBJECT

private slots:
    void returnedAdapterIsTold_data();
    void returnedAdapterIsTold();
    void listTellsSerialNumbers();
    void portWithoutDeviceFileIsNotListed();
};

void TestAdapters::returnedAdapterIsTold_data()
{
    QTest::addColumn<Z7Adapter>("gone");
    QTest::addColumn<QStringList>("others");
    QTest::addColumn<QList<Z7Adapter>>("listed");
    QTest::addColumn<QString>("port");
    using Adapters = QList<Z7Adapter>;
    const auto row = [](const char *rowName, const Z7Adapter &gone, const QStringList &others,
                         const Adapters &listed, const char *port) {
        QTest::newRow(rowName) << gone << others << listed << QString::fromLatin1(port);
    };
    const Z7Adapter numbered = adapter("ttyUSB0", "A10");
    const Z7Adapter plain = adapter("ttyUSB0");
    row("nothing is listed", numbered, {}, {}, "");
    row("same number under another name", numbered, {}, {adapter("ttyUSB1", "A10")}, "ttyUSB1");
    row("same number under same name", numbered, {}, {numbered}, "ttyUSB0");
    row("other number", numbered, {}, {adapter("ttyUSB1", "A11")}, "");
    row("without number", numbered, {}, {adapter("ttyUSB1")}, "");
    row("other vendor of same number", numbered, {}, {otherVendor(adapter("ttyUSB1", "A10"))}, "");
    row("other product of same number", numbered, {}, {otherProduct(adapter("ttyUSB1", "A10"))}, "");
    row("two of same number", numbered, {}, {adapter("ttyUSB1", "A10"), adapter("ttyUSB2", "A10")}, "");
    row("two of same number, one was beside it", numbered, {"ttyUSB1"},
        {adapter("ttyUSB1", "A10"), adapter("ttyUSB2", "A10")}, "ttyUSB2");
    row("none has number, one is new", plain, {"ttyUSB1"}, {adapter("ttyUSB1"), adapter("ttyUSB2")},
        "ttyUSB2");
    row("none has number, two are new", plain, {}, {adapter("ttyUSB1"), adapter("ttyUSB2")}, "");
    row("none has number, none is new", plain, {"ttyUSB1"}, {adapter("ttyUSB1")}, "");
    row("new one has number", plain, {}, {adapter("ttyUSB1", "A10")}, "");
    row("port on board is no adapter", onBoard("ttyS0"), {}, {onBoard("ttyS1")}, "");
}

void TestAdapters::returnedAdapterIsTold()
{
    QFETCH(Z7Adapter, gone);
    QFETCH(QStringList, others);
    QFETCH(QList<Z7Adapter>, listed);
    QTEST(portOfReturned(gone, others, listed), "port");
}

void TestAdapters::listTellsSerialNumbers()
{
    ListedPorts ports;
    ListedPorts::UsbAdapter numbered = ListedPorts::ftdiAdapter();
    numbered.serialNumber = QStringLiteral("A10");
    ports.plugUsb(QStringLiteral("ttyUSB0"), QStringLiteral("/dev/null"), numbered);
    ports.plugUsb(QStringLiteral("ttyUSB1"), QStringLiteral("/dev/null"));
    const QList<Z7Adapter> listed = listedAdapters();
    QCOMPARE(listed.size(), 2);
    QCOMPARE(listed.first().serialNumber, QStringLiteral("A10"));
    QCOMPARE(listed.first().vendor, quint16(0x0403));
    QCOMPARE(listed.last().serialNumber, QString());
    QVERIFY(!listed.first().looksLike(listed.last()));
}

void TestAdapters::portWithoutDeviceFileIsNotListed()
{
    ListedPorts ports;
    ports.plugUsb(QStringLiteral("ttyUSB0"), QString());
    QVERIFY(listedAdapters().isEmpty());
}

QTEST_GUILESS_MAIN(TestAdapters)

#include "tst_adapters.moc"
