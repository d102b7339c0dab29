// Saving the parameters of a drive: what the file holds, and what becomes of the file that stood there when
// the new one cannot be written.

#include "model/parameterfile.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

const QString version = QStringLiteral("V123");
const QString fileName = QStringLiteral("drive.z7param");
const QByteArray oldContent = "what stood here before";

Z7Device driveWithParameters(int count)
{
    QMap<int, int> values;
    for (int number = 1; number <= count; ++number)
        values.insert(number, number);
    return driveWith(values);
}

QString save(const Z7Device &drive, const QMap<int, int> &changes = {}, const QString &path = fileName)
{
    return Z7ParameterFile(path, drive, setOf(changes)).save();
}

/// The content of the file between the document's frame, or all of it if the frame is not as it should be.
QByteArray savedParameters(const QByteArray &fileVersion = "V123")
{
    const QByteArrayList frame = parameterDocument("|", fileVersion).split('|');
    const QByteArray content = WorkingFolder::read(fileName);
    const int size = content.size() - frame.at(0).size() - frame.at(1).size() - 1;
    const QByteArray parameters = content.mid(frame.at(0).size(), size);
    return content == frame.at(0) + parameters + frame.at(1) + "\n" ? parameters : content;
}

QStringList filesHere()
{
    return QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void writeOldFile(mode_t permissions)
{
    WorkingFolder::write(fileName, oldContent);
    chmod(qPrintable(fileName), permissions);
}

} // namespace

class TestParameterFileWriting : public IsolatedTest
{
    Q_OBJECT

private slots:
    void wholeFileIsOneLine();
    void parametersStandInAscendingOrder();
    void readOnlyParametersAreLeftOut();
    void versionOfDriveTellsWhatIsReadOnly();
    void valueOfUserWins_data();
    void valueOfUserWins();
    void changeOfParameterThatDriveDoesNotHaveIsLeftOut();
    void changeOfReadOnlyParameterIsLeftOut();
    void parameterThatWasNeverReadIsWrittenWithZero();
    void valuesAreWrittenOverTheirWholeRange();
    void driveWithoutWritableParametersGivesFileWithoutThem();
    void versionOfAnyCharactersIsWrittenSoThatItCanBeRead();

    void savingAgainLeavesNothingOfLongerFile();
    void savedFileKeepsItsPermissions();
    void linkStaysOneAndFileBehindItIsWritten();
    void nothingElseLiesInFolderAfterwards();
};

void TestParameterFileWriting::wholeFileIsOneLine()
{
    QCOMPARE(save(driveWith({{11, 100}, {12, -5}})), QString());
    QCOMPARE(WorkingFolder::read(fileName),
        QByteArray(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Z7Device><DeviceInfo SoftwareVersion=\"V123\"/>"
            "<Z7-Parameter><parameter id=\"11\" val=\"100\"/><parameter id=\"12\" val=\"-5\"/>"
            "</Z7-Parameter></Z7Device>\n"));
}

void TestParameterFileWriting::parametersStandInAscendingOrder()
{
    Z7DeviceParamSet set(version);
    for (const int number : {100, 9, 65535, 0, 10})
        set.insert({number, 1, 0, true});
    save(driveWithSet(set));
    QCOMPARE(savedParameters(),
        QByteArray(
            "<parameter id=\"0\" val=\"1\"/><parameter id=\"9\" val=\"1\"/><parameter id=\"10\" val=\"1\"/>"
            "<parameter id=\"100\" val=\"1\"/><parameter id=\"65535\" val=\"1\"/>"));
}

void TestParameterFileWriting::readOnlyParametersAreLeftOut()
{
    defineParameter(version, 11, "Signed");
    defineParameter(version, 20, "Signed", "r");
    save(driveWith({{11, 100}, {20, 7}}), {{11, 500}});
    QCOMPARE(savedParameters(), QByteArray("<parameter id=\"11\" val=\"500\"/>"));
}

void TestParameterFileWriting::versionOfDriveTellsWhatIsReadOnly()
{
    defineParameter(QStringLiteral("V200"), 11, "Signed", "r");
    defineParameter(version, 12, "Signed", "r");
    Z7Device drive = driveWith({{11, 1}, {12, 2}});
    drive.softwareVersion = QStringLiteral("V200");
    save(drive);
    QCOMPARE(savedParameters("V200"), QByteArray("<parameter id=\"12\" val=\"2\"/>"));
}

void TestParameterFileWriting::valueOfUserWins_data()
{
    QTest::addColumn<Z7DeviceParam>("read");
    QTest::addColumn<Z7DeviceParam>("changed");
    QTest::addColumn<int>("written");
    const Z7DeviceParam read {11, 100, 0, true};
    QTest::newRow("over the drive's value") << read << Z7DeviceParam {11, 500, 0, true} << 500;
    QTest::newRow("over a value never read")
        << Z7DeviceParam {11, 0, 0, false} << Z7DeviceParam {11, 500, 0, true} << 500;
    QTest::newRow("as zero") << read << Z7DeviceParam {11, 0, 0, true} << 0;
    QTest::newRow("as a negative one") << read << Z7DeviceParam {11, -1, 0, true} << -1;
    QTest::newRow("though its record has no value") << read << Z7DeviceParam {11, 5, 0, false} << 5;
    QTest::newRow("though its last write failed") << read << [] {
        Z7DeviceParam param {11, 6, 0, true};
        param.writeFailed = param.conflict = param.accessDenied = true;
        return param;
    }() << 6;
}

void TestParameterFileWriting::valueOfUserWins()
{
    QFETCH(Z7DeviceParam, read);
    QFETCH(Z7DeviceParam, changed);
    QFETCH(int, written);
    Z7DeviceParamSet set(version);
    set.insert(read);
    Z7DeviceParamSet changes(QStringLiteral("V999"));
    changes.insert(changed);
    QCOMPARE(Z7ParameterFile(fileName, driveWithSet(set), changes).save(), QString());
    QCOMPARE(savedParameters(), "<parameter id=\"11\" val=\"" + QByteArray::number(written) + "\"/>");
}

void TestParameterFileWriting::changeOfParameterThatDriveDoesNotHaveIsLeftOut()
{
    save(driveWith({{11, 100}}), {{12, 500}});
    QCOMPARE(savedParameters(), QByteArray("<parameter id=\"11\" val=\"100\"/>"));
}

void TestParameterFileWriting::changeOfReadOnlyParameterIsLeftOut()
{
    defineParameter(version, 20, "Signed", "r");
    save(driveWith({{11, 100}, {20, 7}}), {{20, 8}});
    QCOMPARE(savedParameters(), QByteArray("<parameter id=\"11\" val=\"100\"/>"));
}

void TestParameterFileWriting::parameterThatWasNeverReadIsWrittenWithZero()
{
    defineParameter(version, 11, "Signed");
    save(driveWithSet(Z7Services::instance()->definitions(version)->emptyParameterSet()));
    QCOMPARE(savedParameters(), QByteArray("<parameter id=\"11\" val=\"0\"/>"));
}

void TestParameterFileWriting::valuesAreWrittenOverTheirWholeRange()
{
    save(driveWith({{1, -32768}, {2, 32767}, {3, 65535}}));
    QCOMPARE(savedParameters(),
        QByteArray("<parameter id=\"1\" val=\"-32768\"/><parameter id=\"2\" val=\"32767\"/>"
                   "<parameter id=\"3\" val=\"65535\"/>"));
}

void TestParameterFileWriting::driveWithoutWritableParametersGivesFileWithoutThem()
{
    defineParameter(version, 20, "Signed", "r");
    QCOMPARE(save(driveWith({{20, 7}})), QString());
    const QByteArray expected =
        parameterDocument({}).replace("<Z7-Parameter></Z7-Parameter>", "<Z7-Parameter/>");
    QCOMPARE(WorkingFolder::read(fileName), expected + "\n");
}

void TestParameterFileWriting::versionOfAnyCharactersIsWrittenSoThatItCanBeRead()
{
    Z7Device drive = driveWith({{11, 1}});
    drive.softwareVersion = QStringLiteral("V<1&\"2\">ä");
    save(drive);
    Z7ParameterFile file;
    QCOMPARE(file.load(fileName), QString());
    QCOMPARE(file.softwareVersion(), drive.softwareVersion);
}

void TestParameterFileWriting::savingAgainLeavesNothingOfLongerFile()
{
    save(driveWithParameters(5000));
    QVERIFY(QFileInfo(fileName).size() > 100000);
    QCOMPARE(save(driveWith({{11, 100}})), QString());
    QCOMPARE(savedParameters(), QByteArray("<parameter id=\"11\" val=\"100\"/>"));
}

void TestParameterFileWriting::savedFileKeepsItsPermissions()
{
    writeOldFile(0640);
    QCOMPARE(save(driveWith({{11, 100}})), QString());
    struct stat status = {};
    QCOMPARE(stat(qPrintable(fileName), &status), 0);
    QCOMPARE(status.st_mode & 0777U, 0640U);
}

void TestParameterFileWriting::linkStaysOneAndFileBehindItIsWritten()
{
    writeOldFile(0600);
    const QString link = QStringLiteral("link.z7param");
    QVERIFY(QFile::link(fileName, link));
    QCOMPARE(save(driveWith({{11, 100}}), {}, link), QString());
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(!QFileInfo(fileName).isSymLink());
    QCOMPARE(savedParameters(), QByteArray("<parameter id=\"11\" val=\"100\"/>"));
}

void TestParameterFileWriting::nothingElseLiesInFolderAfterwards()
{
    for (int i = 0; i < 3; ++i)
        save(driveWith({{11, i}}));
    QCOMPARE(filesHere(), QStringList(fileName));
}

QTEST_APPLESS_MAIN(TestParameterFileWriting)
#include "tst_parameterfilewriting.moc"
