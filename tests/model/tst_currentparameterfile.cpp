// The one parameter file that the program has open, and the way of a drive's values into a file and back.

#include "model/parameterfile.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

namespace {

using Values = QMap<int, int>;

const QString version = QStringLiteral("V123");
const QString fileName = QStringLiteral("drive.z7param");

} // namespace

class TestCurrentParameterFile : public IsolatedTest
{
    Q_OBJECT

private slots:
    void thereIsNoParameterFileAtStart();
    void savedFileStaysCurrentOne();
    void fileThatCouldNotBeWrittenIsCurrentOneToo();
    void savingReplacesCurrentFile();
    void savingChangesNeitherDriveNorChanges();

    void newParameterFileIsEmpty();
    void openedFileStaysUntilNextOne();
    void endForgetsFile();

    void sampleDriveComesBackFromItsFile_data();
    void sampleDriveComesBackFromItsFile();
};

void TestCurrentParameterFile::thereIsNoParameterFileAtStart()
{
    QVERIFY(!Z7Services::instance()->parameterFile());
}

void TestCurrentParameterFile::savedFileStaysCurrentOne()
{
    Z7Services *services = Z7Services::instance();
    QCOMPARE(services->saveParameterFile(fileName, driveWith({{11, 100}}), setOf({{11, 500}})), QString());
    QCOMPARE(WorkingFolder::read(fileName), parameterDocument(R"(<parameter id="11" val="500"/>)") + "\n");
    const Z7ParameterFile *file = services->parameterFile();
    QVERIFY(file);
    QCOMPARE(services->parameterFile(), file);
    QCOMPARE(file->softwareVersion(), version);
    QCOMPARE(file->userParams().params.keys(), QList<int>({11}));
    QCOMPARE(file->userParams().value(11).value, 500);
}

void TestCurrentParameterFile::fileThatCouldNotBeWrittenIsCurrentOneToo()
{
    Z7Services *services = Z7Services::instance();
    QCOMPARE(services->saveParameterFile(QString(), driveWith({{11, 100}}), setOf({})),
        QStringLiteral("Die Datei kann nicht geöffnet werden"));
    QVERIFY(services->parameterFile());
    QCOMPARE(services->parameterFile()->softwareVersion(), version);
}

void TestCurrentParameterFile::savingReplacesCurrentFile()
{
    Z7Services *services = Z7Services::instance();
    services->saveParameterFile(fileName, driveWith({{11, 100}}), setOf({{11, 500}}));
    services->saveParameterFile(fileName, driveWith({{11, 100}}), setOf({}));
    QCOMPARE(services->parameterFile()->userParams().params.size(), 0);
}

void TestCurrentParameterFile::savingChangesNeitherDriveNorChanges()
{
    const Z7Device drive = driveWith({{11, 100}});
    const Z7DeviceParamSet changes = setOf({{11, 500}});
    Z7Services::instance()->saveParameterFile(fileName, drive, changes);
    QCOMPARE(drive.parameterSet.value(11).value, 100);
    QCOMPARE(changes.value(11).value, 500);
}

void TestCurrentParameterFile::newParameterFileIsEmpty()
{
    Z7Services *services = Z7Services::instance();
    WorkingFolder::write(fileName, parameterDocument(R"(<parameter id="11" val="1"/>)"));
    services->newParameterFile()->load(fileName);
    const Z7ParameterFile *file = services->newParameterFile();
    QCOMPARE(services->parameterFile(), file);
    QCOMPARE(file->softwareVersion(), QString());
    QCOMPARE(valuesOf(file->userParams()), Values());
}

void TestCurrentParameterFile::openedFileStaysUntilNextOne()
{
    Z7Services *services = Z7Services::instance();
    Z7ParameterFile *file = services->newParameterFile();
    WorkingFolder::write(fileName, parameterDocument(R"(<parameter id="11" val="1"/>)"));
    file->load(fileName);
    QCOMPARE(services->parameterFile(), file);
    QCOMPARE(valuesOf(services->parameterFile()->userParams()), Values({{11, 1}}));
}

void TestCurrentParameterFile::endForgetsFile()
{
    Z7Services::instance()->newParameterFile();
    Z7Services::shutdown();
    QVERIFY(!Z7Services::instance()->parameterFile());
}

void TestCurrentParameterFile::sampleDriveComesBackFromItsFile_data()
{
    QTest::addColumn<QString>("sample");
    QTest::newRow("V123") << version;
    QTest::newRow("V200") << QStringLiteral("V200");
}

void TestCurrentParameterFile::sampleDriveComesBackFromItsFile()
{
    QFETCH(QString, sample);
    for (const QString &known : {version, QStringLiteral("V200")}) {
        const QString definitionFile = QStringLiteral("Z7ParamDef_%1.csv").arg(known);
        QVERIFY(QFile::copy(QStringLiteral(Z7_SAMPLES_DIR "/") + definitionFile, definitionFile));
        QVERIFY(Z7Services::instance()->definitions(known)->load());
    }
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(sample);
    Z7Device drive;
    drive.softwareVersion = sample;
    drive.parameterSet = definitions->emptyParameterSet();
    Z7DeviceParamSet expected(sample);
    for (Z7DeviceParam &param : drive.parameterSet.params) {
        param.setValue(param.isUnsigned ? 65535 - param.number : -param.number);
        if (!definitions->isReadOnly(param.number))
            expected.insert(param);
    }
    QVERIFY(!expected.params.isEmpty());
    QVERIFY(expected.params.size() < drive.parameterSet.params.size());

    QCOMPARE(Z7ParameterFile(fileName, drive, Z7DeviceParamSet()).save(), QString());
    Z7ParameterFile file;
    QCOMPARE(file.load(fileName), QString());
    QCOMPARE(file.softwareVersion(), sample);
    QCOMPARE(valuesOf(file.userParams()), valuesOf(expected));
    for (const Z7DeviceParam &param : file.userParams().params)
        QCOMPARE(param.isUnsigned, expected.value(param.number).isUnsigned);
}

QTEST_APPLESS_MAIN(TestCurrentParameterFile)
#include "tst_currentparameterfile.moc"
