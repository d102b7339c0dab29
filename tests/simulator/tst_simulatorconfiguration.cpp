#include "testdrives.h"

#include "simulator/configuration.h"
#include "simulator/definitions.h"

#include <QFile>
#include <QtTest>

using namespace z7sim;

/// How drives are described on the command line and in files, and the answers of the command language.
class TestSimulatorConfiguration : public QObject
{
    Q_OBJECT

private slots:
    void driveOnCommandLineHasItsEntries();
    void driveWithoutPasswordHasItsAddressAsPassword();
    void wrongDriveIsError_data();
    void wrongDriveIsError();
    void fileDescribesBusDrivesAndCommands();
    void brokenFileIsError();

    void definitionLineIsReadAsItsColumnsSay();
    void lineThatDefinesNothingIsSkipped_data();
    void lineThatDefinesNothingIsSkipped();
    void emptyLimitsOfSignedRowAreSymmetric();
    void everyDriveHasModeAddressAndLiveValues();
    void driveWithoutItsDefinitionFileIsNotAdded();

    void commandAnswers_data();
    void commandAnswers();

private:
    QString write(const QByteArray &text);

    QTemporaryDir folder;
};

QString TestSimulatorConfiguration::write(const QByteArray &text)
{
    QFile file(folder.filePath(QStringLiteral("file")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

void TestSimulatorConfiguration::driveOnCommandLineHasItsEntries()
{
    DriveConfig drive;
    QCOMPARE(parseDrive(
                 "3,password=4711,version=V200,inputs=0x03,param.0x0B=500,locked=30+0x20,status=0x81", drive),
        QByteArray());
    QCOMPARE(drive.address, 3);
    QCOMPARE(drive.password, std::optional<int>(4711));
    QCOMPARE(drive.version, QByteArray("V200"));
    QCOMPARE(drive.surroundings.digitalInputs, 3);
    QCOMPARE(drive.surroundings.statusBits, std::optional<int>(0x81));
    QCOMPARE(drive.parameters.value(11), 500);
    QCOMPARE(drive.surroundings.lockedParameters, (QSet<int> {30, 32}));
}

void TestSimulatorConfiguration::driveWithoutPasswordHasItsAddressAsPassword()
{
    SimulatedBus bus;
    bus.command("add-drive 9");
    QCOMPARE(bus.command("get 9 password"), QByteArray("ok 9"));
}

void TestSimulatorConfiguration::wrongDriveIsError_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("address 0") << QByteArray("0");
    QTest::newRow("address 256") << QByteArray("256");
    QTest::newRow("two plain words") << QByteArray("3,4");
    QTest::newRow("unknown entry") << QByteArray("3,colour=4");
    QTest::newRow("password that is no number") << QByteArray("3,password=secret");
    QTest::newRow("version without three numbers") << QByteArray("3,version=V12");
    QTest::newRow("parameter without a number") << QByteArray("3,param.x=1");
}

void TestSimulatorConfiguration::wrongDriveIsError()
{
    QFETCH(QByteArray, text);
    DriveConfig drive;
    QVERIFY(!parseDrive(text, drive).isEmpty());
}

void TestSimulatorConfiguration::fileDescribesBusDrivesAndCommands()
{
    const QString file = write(R"({
        "definitions": "somewhere", "paced": false, "turnaroundUs": 250, "link": "port", "control": "socket",
        "drives": [ { "address": 3, "password": -1, "version": "V200", "parameters": { "0x0B": 500 } },
                    { "address": 7, "setpoint": 1500 } ],
        "commands": [ "fault 3 late ms=30" ] })");
    Configuration configuration;
    QCOMPARE(readConfiguration(file, configuration), QByteArray());
    QCOMPARE(configuration.bus.definitionFolder, QStringLiteral("somewhere"));
    QVERIFY(!configuration.bus.paced);
    QCOMPARE(configuration.bus.turnaroundUs, 250);
    QCOMPARE(configuration.bus.link, QStringLiteral("port"));
    QCOMPARE(configuration.controlPath, QStringLiteral("socket"));
    QCOMPARE(configuration.commands, QByteArrayList {"fault 3 late ms=30"});
    QCOMPARE(configuration.bus.drives.size(), 2);
    QCOMPARE(configuration.bus.drives.at(0).password, std::optional<int>(-1));
    QCOMPARE(configuration.bus.drives.at(0).parameters.value(11), 500);
    QCOMPARE(configuration.bus.drives.at(1).surroundings.setPoint, std::optional<int>(1500));
}

void TestSimulatorConfiguration::brokenFileIsError()
{
    Configuration configuration;
    QVERIFY(!readConfiguration(write("{ \"drives\": ["), configuration).isEmpty());
    QVERIFY(!readConfiguration(folder.filePath(QStringLiteral("missing")), configuration).isEmpty());
}

void TestSimulatorConfiguration::definitionLineIsReadAsItsColumnsSay()
{
    const Definitions definitions =
        loadDefinitions(write("7;\"Name\";rpm;-3;-10;20;\"Signed\";0;\"r\";0;text;\n"));
    QCOMPARE(definitions.keys(), QList<int> {7});
    const Definition row = definitions.value(7);
    QCOMPARE(row.factoryValue, -3);
    QCOMPARE(row.minimum, -10);
    QCOMPARE(row.maximum, 20);
    QVERIFY(row.isSigned);
    QVERIFY(row.isApplicationFunction);
    QVERIFY(row.isReadOnly);
}

void TestSimulatorConfiguration::lineThatDefinesNothingIsSkipped_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("header") << QByteArray("Number;Name;;;;;;;;0;\n");
    QTest::newRow("another variant") << QByteArray("7;Name;rpm;0;;;Signed;0;;1;\n");
    QTest::newRow("no column behind the variant") << QByteArray("7;Name;rpm;0;;;Signed;0;;0\n");
}

void TestSimulatorConfiguration::lineThatDefinesNothingIsSkipped()
{
    QFETCH(QByteArray, line);
    QVERIFY(loadDefinitions(write(line)).isEmpty());
}

void TestSimulatorConfiguration::emptyLimitsOfSignedRowAreSymmetric()
{
    const Definition row = loadDefinitions(write("7;Name;rpm;0;;;Signed;1;;0;\n")).value(7);
    QCOMPARE(row.minimum, -32767);
    QCOMPARE(row.maximum, 32767);
}

void TestSimulatorConfiguration::everyDriveHasModeAddressAndLiveValues()
{
    const Definitions definitions = withBuiltIns({});
    QCOMPARE(definitions.keys(),
        (QList<int> {1, 2, 0x52, 0x8001, 0x8003, 0x8004, 0x8005, 0x8007, 0x8008, 0x8009, 0x800D}));
    QVERIFY(definitions.value(0x8001).isReadOnly);
    QVERIFY(!definitions.value(0x52).isReadOnly);
}

void TestSimulatorConfiguration::driveWithoutItsDefinitionFileIsNotAdded()
{
    BusConfig config;
    config.definitionFolder = folder.path();
    SimulatedBus bus(config);
    DriveConfig drive;
    drive.version = "V999";
    QVERIFY(!bus.addDrive(drive));
    QVERIFY(bus.errorText().contains(QStringLiteral("Z7ParamDef_V999.csv")));
}

void TestSimulatorConfiguration::commandAnswers_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("value by decimal number") << QByteArray("get 3 param 11") << QByteArray("ok 100");
    QTest::newRow("value by hexadecimal number") << QByteArray("get 3 flash 0x0B") << QByteArray("ok 100");
    QTest::newRow("signed value") << QByteArray("get 3 param 80") << QByteArray("ok -5");
    QTest::newRow("address") << QByteArray("get 3 address") << QByteArray("ok 3");
    QTest::newRow("drives") << QByteArray("drives")
                            << QByteArray("ok 1:\n3 version=V123 password=4711 access=0 bootloader=0\n.");
    QTest::newRow("unknown command") << QByteArray("dance") << QByteArray("error no command: dance");
    QTest::newRow("unknown drive") << QByteArray("get 4 param 11") << QByteArray("error no drive 4");
    QTest::newRow("unknown parameter")
        << QByteArray("get 3 param 999") << QByteArray("error nothing of this number");
    QTest::newRow("too few arguments")
        << QByteArray("inputs 3") << QByteArray("error usage: inputs ADDRESS N");
}

void TestSimulatorConfiguration::commandAnswers()
{
    QFETCH(QByteArray, line);
    const TestDefinitions definitions;
    SimulatedBus bus(busWithDrive3(definitions.folder()));
    QTEST(bus.command(line), "answer");
}

QTEST_GUILESS_MAIN(TestSimulatorConfiguration)
#include "tst_simulatorconfiguration.moc"
