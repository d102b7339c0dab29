// The ports that other tests rely on: listed, described and opened as those of real adapters.

#include "tests/support/listedports.h"

#include <QSerialPort>
#include <QSerialPortInfo>
#include <QtTest>

#include <pty.h>
#include <unistd.h>

namespace {

/// The adapter's far side: what a drive would read and write.
class PseudoTerminal
{
public:
    PseudoTerminal()
    {
        char name[64];
        if (openpty(&master_, &slave_, name, nullptr, nullptr) != 0)
            qFatal("no pseudo terminal");
        path_ = QString::fromLatin1(name);
    }
    ~PseudoTerminal()
    {
        close(slave_);
        close(master_);
    }
    Q_DISABLE_COPY(PseudoTerminal)

    QString path() const { return path_; }
    void write(const QByteArray &bytes) const
    {
        QCOMPARE(::write(master_, bytes, bytes.size()), ssize_t(bytes.size()));
    }
    QByteArray read() const
    {
        QByteArray bytes(64, '\0');
        const ssize_t size = ::read(master_, bytes.data(), bytes.size());
        return bytes.left(int(size));
    }

private:
    int master_ = -1;
    int slave_ = -1;
    QString path_;
};

bool openAsTheProgramDoes(QSerialPort &port, const QString &name)
{
    port.setPortName(name);
    return port.open(QIODevice::ReadWrite) && port.setBaudRate(115200) && port.setDataBits(QSerialPort::Data8)
        && port.setParity(QSerialPort::EvenParity) && port.setStopBits(QSerialPort::OneStop)
        && port.setFlowControl(QSerialPort::NoFlowControl);
}

QStringList listedNames()
{
    QStringList names;
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts())
        names.append(port.portName());
    return names;
}

const QString first = QStringLiteral("ttyUSB0");
const QString second = QStringLiteral("ttyUSB1");

/// A drive behind the first port, which the program has opened.
struct OpenPort
{
    OpenPort()
    {
        ports.plugUsb(first, drive.path());
        if (!openAsTheProgramDoes(port, first))
            qFatal("%s", qPrintable(port.errorString()));
    }

    const PseudoTerminal drive;
    ListedPorts ports;
    QSerialPort port;
};

} // namespace

class TestListedPorts : public QObject
{
    Q_OBJECT

private slots:
    void pluggedAdapterIsListedWithItsDescription();
    void portOnBoardHasNoVendor();
    void portsAreListedByNameWhateverOrderOfPlugging();
    void bytesPassBothWaysAt115200BaudWithEvenParity();
    void openPortIsBusyUntilItIsClosed();
    void portInUseDoesNotOpenSecondTime();
    void pulledAdapterIsNeitherListedNorOpened();
    void portWithoutPseudoTerminalIsListedButDoesNotOpen();
    void pulledAdapterMayBeTriedAnyNumberOfTimes();
    void portWithoutNameDoesNotOpen();
    void adapterPluggedInAgainOpens();
    void portsOfMachineComeBackAtEnd();
};

void TestListedPorts::pluggedAdapterIsListedWithItsDescription()
{
    ListedPorts ports;
    ports.plugUsb(first, QString());
    const QSerialPortInfo port(first);
    QCOMPARE(port.systemLocation(), QStringLiteral("/dev/ttyUSB0"));
    QVERIFY(port.hasVendorIdentifier());
    QCOMPARE(port.vendorIdentifier(), quint16(1027));
    QCOMPARE(port.productIdentifier(), quint16(0x6001));
    QCOMPARE(port.description(), QStringLiteral("FT232R USB UART"));
    QCOMPARE(port.manufacturer(), QStringLiteral("FTDI"));
}

void TestListedPorts::portOnBoardHasNoVendor()
{
    ListedPorts ports;
    ports.addOnBoard(QStringLiteral("ttyS0"), QString());
    QCOMPARE(listedNames(), QStringList {QStringLiteral("ttyS0")});
    QVERIFY(!QSerialPortInfo(QStringLiteral("ttyS0")).hasVendorIdentifier());
}

void TestListedPorts::portsAreListedByNameWhateverOrderOfPlugging()
{
    ListedPorts ports;
    ports.plugUsb(second, QString(), ListedPorts::otherAdapter());
    ports.addOnBoard(QStringLiteral("ttyS0"), QString());
    ports.plugUsb(first, QString());
    const QStringList ascending {QStringLiteral("ttyS0"), first, second};
    QCOMPARE(listedNames(), ascending);
    QCOMPARE(QSerialPortInfo(second).vendorIdentifier(), quint16(0x067b));
}

void TestListedPorts::bytesPassBothWaysAt115200BaudWithEvenParity()
{
    OpenPort open;
    // Every control character of a terminal is a byte like any other.
    const QByteArray toDrive = QByteArray::fromHex("0103040a0d11131a7f80ff00");
    open.port.write(toDrive);
    QVERIFY(open.port.waitForBytesWritten(1000));
    QCOMPARE(open.drive.read(), toDrive);

    const QByteArray fromDrive = QByteArray::fromHex("ff00031113");
    open.drive.write(fromDrive);
    QVERIFY(open.port.waitForReadyRead(1000));
    QCOMPARE(open.port.readAll(), fromDrive);
}

void TestListedPorts::openPortIsBusyUntilItIsClosed()
{
    OpenPort open;
    QVERIFY(QSerialPortInfo(first).isBusy());
    QVERIFY2(access("/var/lock/LCK..ttyUSB0", F_OK) == 0, "the lock file is seen under its usual path");
    open.port.close();
    QVERIFY(!QSerialPortInfo(first).isBusy());
}

void TestListedPorts::portInUseDoesNotOpenSecondTime()
{
    const OpenPort open;
    QSerialPort intruder;
    QVERIFY(!openAsTheProgramDoes(intruder, first));
    QCOMPARE(intruder.error(), QSerialPort::PermissionError);
}

void TestListedPorts::pulledAdapterIsNeitherListedNorOpened()
{
    const PseudoTerminal drive;
    ListedPorts ports;
    ports.plugUsb(first, drive.path());
    ports.plugUsb(second, drive.path(), ListedPorts::otherAdapter());
    ports.pull(first);
    QCOMPARE(listedNames(), QStringList {second});
    QSerialPort port;
    QVERIFY(!openAsTheProgramDoes(port, first));
    QVERIFY(openAsTheProgramDoes(port, second));
}

void TestListedPorts::portWithoutPseudoTerminalIsListedButDoesNotOpen()
{
    ListedPorts ports;
    ports.plugUsb(first, QString());
    QCOMPARE(listedNames(), QStringList {first});
    QSerialPort port;
    QVERIFY(!openAsTheProgramDoes(port, first));
}

void TestListedPorts::pulledAdapterMayBeTriedAnyNumberOfTimes()
{
    constexpr int moreThanUmockdevCanTake = 60;
    ListedPorts ports;
    ports.plugUsb(first, QString());
    for (int i = 0; i < moreThanUmockdevCanTake; ++i) {
        QSerialPort port;
        QVERIFY(!openAsTheProgramDoes(port, first));
    }
}

void TestListedPorts::portWithoutNameDoesNotOpen()
{
    ListedPorts ports;
    ports.plugUsb(first, QString());
    QSerialPort port;
    QVERIFY(!openAsTheProgramDoes(port, QString()));
}

void TestListedPorts::adapterPluggedInAgainOpens()
{
    const PseudoTerminal drive;
    ListedPorts ports;
    ports.plugUsb(first, drive.path());
    ports.pull(first);
    ports.plugUsb(first, drive.path());
    QSerialPort port;
    QVERIFY(openAsTheProgramDoes(port, first));
}

void TestListedPorts::portsOfMachineComeBackAtEnd()
{
    const QStringList before = listedNames();
    {
        ListedPorts ports;
        ports.plugUsb(QStringLiteral("ttyUSB77"), QString());
        QCOMPARE(listedNames(), QStringList {QStringLiteral("ttyUSB77")});
    }
    QCOMPARE(listedNames(), before);
}

QTEST_GUILESS_MAIN(TestListedPorts)

#include "tst_listedports.moc"
