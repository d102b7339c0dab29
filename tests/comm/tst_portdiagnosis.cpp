// Why a port could not be used: found by looking at the system, without opening the port.

#include "comm/portdiagnosis.h"
#include "protocol/telegram.h"
#include "simulator/pseudoterminal.h"
#include "tests/support/listedports.h"
#include "tests/support/portholder.h"

#include <QFileInfo>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString name = QStringLiteral("ttyUSB0");
constexpr uid_t nobody = 65534;

/// Takes root's rights from this process, if it has any, for as long as this lives.
class WithoutRootsRights
{
public:
    WithoutRootsRights()
    {
        if (m_user == 0 && seteuid(nobody) != 0)
            qFatal("cannot be nobody");
    }
    ~WithoutRootsRights()
    {
        if (seteuid(m_user) != 0)
            qFatal("cannot be who this was");
    }

private:
    const uid_t m_user = geteuid();
};

void write(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

} // namespace

class TestPortDiagnosis : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { ports.reset(); }

    void pulledAdapterIsGone();
    void portWithoutDeviceFileIsGone();
    void deviceFileOfOthersTellsItsGroup();
    void deviceFileWithoutRightsOfGroupTellsNone();
    void settingsThatWereRefusedAreTold();

    void programWithLockFileIsNamed();
    void programWithoutLockFileIsNamedIfItIsLookedFor();
    void portInUseOfUnknownProgramIsOnlyHeld();
    void endedProgramHoldsNoPort();
    void lockFileLeftBehindIsNamed();
    void lockFileOfOtherFormatsIsRead_data();
    void lockFileOfOtherFormatsIsRead();
    void numberThatWentToAnotherProgramNamesNoHolder();
    void ownLockIsNoOtherProgram();
    void pipeInPlaceOfLockFileKeepsNobodyWaiting();

    void otherRefusalIsNotExplained();
    void openedPortIsNotBlamedForSilentDrive();

private:
    static Z7PortDiagnosis diagnose(QSerialPort::SerialPortError refusal = QSerialPort::PermissionError,
        int error = TelegramError::PortNotOpened)
    {
        return diagnosePort(QSerialPortInfo(name), error, refusal, ProgramSearch::Lock);
    }
    /// Nobody but root may pass through the folders of a test.
    void letOthersLookIn() const;
    /// Root's own group would let this process in.
    void setMode(mode_t mode) const
    {
        if (geteuid() == 0)
            QCOMPARE(chown(qPrintable(adapter.path()), 0, nobody), 0);
        QCOMPARE(chmod(qPrintable(adapter.path()), mode), 0);
    }

    z7sim::PseudoTerminal adapter;
    std::unique_ptr<ListedPorts> ports;
};

void TestPortDiagnosis::init()
{
    QCOMPARE(adapter.open(), QString());
    ports = std::make_unique<ListedPorts>();
    ports->plugUsb(name, adapter.path());
}

void TestPortDiagnosis::letOthersLookIn() const
{
    const QString folder = QFileInfo(QFileInfo(ports->lockFile(name)).path()).path();
    QCOMPARE(chmod(qPrintable(folder), 0755), 0);
}

void TestPortDiagnosis::pulledAdapterIsGone()
{
    const QSerialPortInfo port(name);
    const QDateTime before = QDateTime::currentDateTime();
    ports->pull(name);
    QVERIFY(isPortGone(port));
    const Z7PortDiagnosis found = diagnosePort(
        port, TelegramError::PortNotOpened, QSerialPort::DeviceNotFoundError, ProgramSearch::Lock);
    QCOMPARE(found.kind, Z7PortDiagnosis::Gone);
    QVERIFY(found.time >= before && found.time <= QDateTime::currentDateTime());
}

void TestPortDiagnosis::portWithoutDeviceFileIsGone()
{
    ports->relink(name, QString());
    QCOMPARE(diagnose().kind, Z7PortDiagnosis::Gone);
}

void TestPortDiagnosis::deviceFileOfOthersTellsItsGroup()
{
    letOthersLookIn();
    // The group may, the owner may not, and the rest neither.
    setMode(0060);
    const WithoutRootsRights user;
    const Z7PortDiagnosis found = diagnose();
    QCOMPARE(found.kind, Z7PortDiagnosis::NoRights);
    QCOMPARE(found.group, QFileInfo(adapter.path()).group());
    QVERIFY(!found.group.isEmpty());
}

void TestPortDiagnosis::deviceFileWithoutRightsOfGroupTellsNone()
{
    letOthersLookIn();
    // Reading alone does not do.
    setMode(0040);
    const WithoutRootsRights user;
    const Z7PortDiagnosis found = diagnose();
    QCOMPARE(found.kind, Z7PortDiagnosis::NoRights);
    QCOMPARE(found.group, QString());
}

void TestPortDiagnosis::settingsThatWereRefusedAreTold()
{
    const Z7PortDiagnosis found =
        diagnose(QSerialPort::UnsupportedOperationError, TelegramError::PortSettingsRefused);
    QCOMPARE(found.kind, Z7PortDiagnosis::SettingsRefused);
}

void TestPortDiagnosis::programWithLockFileIsNamed()
{
    const PortHolder other(name);
    const Z7PortDiagnosis found = diagnose();
    QCOMPARE(found.kind, Z7PortDiagnosis::Held);
    QCOMPARE(found.holder.name, PortHolder::name());
    QCOMPARE(found.holder.id, other.processId());
}

void TestPortDiagnosis::programWithoutLockFileIsNamedIfItIsLookedFor()
{
    const auto other = PortHolder::ofFile(adapter.path());
    const Platform::Program found = Platform::deviceHolder(adapter.path());
    QCOMPARE(found.name, PortHolder::name());
    QCOMPARE(found.id, other->processId());
    other->end();
    QVERIFY(!Platform::deviceHolder(adapter.path()).isKnown());
}

void TestPortDiagnosis::portInUseOfUnknownProgramIsOnlyHeld()
{
    const Z7PortDiagnosis found = diagnose();
    QCOMPARE(found.kind, Z7PortDiagnosis::Held);
    QVERIFY(!found.holder.isKnown());
}

void TestPortDiagnosis::endedProgramHoldsNoPort()
{
    PortHolder other(name);
    other.end();
    QVERIFY(!diagnose().holder.isKnown());
}

void TestPortDiagnosis::lockFileLeftBehindIsNamed()
{
    PortHolder other(name);
    other.kill();
    const Z7PortDiagnosis found = diagnose();
    QCOMPARE(found.kind, Z7PortDiagnosis::NotOpened);
    QVERIFY(found.lockFile.endsWith(QStringLiteral("/LCK..ttyUSB0")));
}

void TestPortDiagnosis::lockFileOfOtherFormatsIsRead_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("number with blanks before it") << QByteArray("%1\n");
    QTest::newRow("program and user behind number") << QByteArray("%1 minicom root\n");
    QTest::newRow("without end of line") << QByteArray("%1");
}

void TestPortDiagnosis::lockFileOfOtherFormatsIsRead()
{
    QFETCH(QByteArray, format);
    const auto other = PortHolder::ofFile(adapter.path());
    write(ports->lockFile(name),
        format.replace("%1", QByteArray::number(other->processId()).rightJustified(10)));
    const Z7PortDiagnosis found = diagnose();
    QCOMPARE(found.kind, Z7PortDiagnosis::Held);
    QCOMPARE(found.holder.id, other->processId());
    QCOMPARE(found.holder.name, PortHolder::name());
}

void TestPortDiagnosis::numberThatWentToAnotherProgramNamesNoHolder()
{
    const auto other = PortHolder::ofFile(adapter.path());
    write(ports->lockFile(name), QByteArray::number(other->processId()) + "\nz7ctl\nbench\n");
    QCOMPARE(diagnose().kind, Z7PortDiagnosis::NotOpened);
}

void TestPortDiagnosis::ownLockIsNoOtherProgram()
{
    QSerialPort own(name);
    QVERIFY(own.open(QIODevice::ReadWrite));
    QVERIFY(!diagnose().holder.isKnown());
}

void TestPortDiagnosis::pipeInPlaceOfLockFileKeepsNobodyWaiting()
{
    QCOMPARE(mkfifo(qPrintable(ports->lockFile(name)), 0600), 0);
    QCOMPARE(diagnose().kind, Z7PortDiagnosis::NotOpened);
}

void TestPortDiagnosis::otherRefusalIsNotExplained()
{
    QCOMPARE(diagnose(QSerialPort::ResourceError).kind, Z7PortDiagnosis::NotOpened);
}

void TestPortDiagnosis::openedPortIsNotBlamedForSilentDrive()
{
    const PortHolder other(name);
    QCOMPARE(diagnose(QSerialPort::PermissionError, TelegramError::NoAnswer).kind, Z7PortDiagnosis::Fine);
}

QTEST_GUILESS_MAIN(TestPortDiagnosis)

#include "tst_portdiagnosis.moc"
