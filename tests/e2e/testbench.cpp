#include "tests/e2e/testbench.h"

#include "simulator/definitions.h"

namespace {

QString definitionFile(const QByteArray &version)
{
    return z7sim::definitionFileName(version);
}

QString options(const TestBench::Options &options)
{
    return QStringLiteral("[OPTIONS]\npollingInterval=%1\ntimeoutScanning=%2\n")
        .arg(options.pollingIntervalMs)
        .arg(options.timeoutScanningMs);
}

} // namespace

const QByteArray TestBench::shortVersion = QByteArrayLiteral("V101");
const QList<int> TestBench::shortNumbers {1, 2, 11, 12, 13, 23, 24, 25, 82, 96, 0x8001, 0x8005};

TestBench::TestBench()
    : TestBench(Options())
{
}

TestBench::TestBench(const Options &given)
{
    copySamples();
    writeShortDefinitions();
    m_folder.writeText(QStringLiteral("Z7Properties.ini"), options(given));
}

void TestBench::copySamples()
{
    const QDir samples(QStringLiteral(Z7_SAMPLES));
    for (const QString &name : samples.entryList({QStringLiteral("*.csv")}))
        QFile::copy(samples.filePath(name), QDir(m_folder.path()).filePath(name));
}

// The rows of the full version, few of them.
void TestBench::writeShortDefinitions()
{
    QStringList lines;
    for (const QString &line : text(definitionFile("V123")).split(QLatin1Char('\n'))) {
        if (shortNumbers.contains(line.section(QLatin1Char(';'), 0, 0).toInt()))
            lines.append(line);
    }
    m_folder.writeText(definitionFile(shortVersion), lines.join(QLatin1Char('\n')));
}

z7sim::SimulatedBus &TestBench::plugIn(
    const QString &port, const QVector<z7sim::DriveConfig> &drives, const ListedPorts::UsbAdapter &adapter)
{
    z7sim::BusConfig config;
    config.definitionFolder = m_folder.path();
    config.drives = drives;
    config.paced = false;
    auto &bus = m_buses[port] = std::make_unique<z7sim::SimulatedBus>(config);
    if (!bus->start())
        qFatal("no simulated bus: %s", qPrintable(bus->errorText()));
    m_silences[port] = std::make_unique<SkippedSilence>(*bus);
    m_adapters.insert(port, adapter);
    m_ports.plugUsb(port, bus->portPath(), adapter);
    return *bus;
}

void TestBench::slowDown(const QString &port)
{
    m_buses.at(port)->command("pace on");
    m_silences.erase(port);
}

void TestBench::pull(const QString &port)
{
    m_buses.at(port)->command("pull");
    m_ports.pull(port);
}

void TestBench::putBack(const QString &port)
{
    z7sim::SimulatedBus &bus = *m_buses.at(port);
    bus.command("plug");
    m_ports.plugUsb(port, bus.portPath(), m_adapters.value(port, ListedPorts::ftdiAdapter()));
}

QList<int> TestBench::numbers(const QByteArray &version) const
{
    return z7sim::loadDefinitions(QDir(m_folder.path()).filePath(definitionFile(version))).keys();
}

void TestBench::removeDefinitions(const QByteArray &version)
{
    QFile::remove(QDir(m_folder.path()).filePath(definitionFile(version)));
}

QString TestBench::text(const QString &fileName) const
{
    QFile file(QDir(m_folder.path()).filePath(fileName));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLatin1(file.readAll());
}

z7sim::DriveConfig TestBench::shortDrive(int address, int password)
{
    return fullDrive(address, password, shortVersion);
}

QVector<z7sim::DriveConfig> TestBench::shortDrives(const QList<int> &addresses)
{
    QVector<z7sim::DriveConfig> drives;
    for (const int address : addresses)
        drives.append(shortDrive(address));
    return drives;
}

z7sim::DriveConfig TestBench::fullDrive(int address, int password, const QByteArray &version)
{
    z7sim::DriveConfig drive;
    drive.address = address;
    drive.password = password;
    drive.version = version;
    return drive;
}
