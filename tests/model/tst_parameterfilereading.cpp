// Opening a parameter file: what is taken out of a file that the program wrote, or that somebody wrote by
// hand.

#include "model/parameterfile.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QTextCodec>
#include <QtTest>

namespace {

using Values = QMap<int, int>;

const QString version = QStringLiteral("V123");
const QString fileName = QStringLiteral("drive.z7param");

QString load(Z7ParameterFile &file, const QByteArray &content)
{
    WorkingFolder::write(fileName, content);
    return file.load(fileName);
}

Values valuesOf(const Z7ParameterFile &file)
{
    return valuesOf(file.userParams());
}

/// The one parameter that the file holds.
Z7DeviceParam onlyParameter(const Z7ParameterFile &file)
{
    return file.userParams().params.size() == 1 ? file.userParams().params.first() : Z7DeviceParam();
}

} // namespace

class TestParameterFileReading : public IsolatedTest
{
    Q_OBJECT

private slots:
    void fileGivesItsVersionAndItsValues();
    void valueReadIsMarkedAsPresent();
    void formOfDocumentDoesNotMatter_data();
    void formOfDocumentDoesNotMatter();
    void documentInAnotherEncodingIsRead_data();
    void documentInAnotherEncodingIsRead();
    void namesAreComparedExactly_data();
    void namesAreComparedExactly();

    void parametersCountOnlyFromTheirElementOn();
    void parametersCountToEndOfDocument();
    void parametersInsideOfOtherElementsCount();
    void parameterWithoutNumberOrValueIsSkipped_data();
    void parameterWithoutNumberOrValueIsSkipped();
    void fileOfSuchParametersIsEmptySet();
    void textThatIsNoNumberCountsAsZero_data();
    void textThatIsNoNumberCountsAsZero();
    void ofTwoValuesOfOneParameterLaterCounts();
    void valueBeyondLimitsIsTaken();
    void readOnlyParameterIsTaken();
    void unknownParameterIsTakenAsDefaultOne();

    void versionOfFileTellsSignedness_data();
    void versionOfFileTellsSignedness();
    void versionBehindParametersIsNotRead();
    void withoutVersionSignednessIsUnknown();
    void emptyVersionIsNoVersion_data();
    void emptyVersionIsNoVersion();
    void ofTwoVersionsLaterCounts();
    void anyVersionIsTakenAsItStands();

    void openingAnotherFileForgetsValuesOfFirst();
    void openingFileWithoutVersionKeepsVersionOfFirst();
};

void TestParameterFileReading::fileGivesItsVersionAndItsValues()
{
    Z7ParameterFile file;
    const QByteArray parameters = R"(<parameter id="11" val="100"/><parameter id="12" val="-5"/>)";
    QCOMPARE(load(file, parameterDocument(parameters) + "\n"), QString());
    QCOMPARE(file.softwareVersion(), version);
    QCOMPARE(file.userParams().softwareVersion, version);
    QCOMPARE(valuesOf(file), Values({{11, 100}, {12, -5}}));
}

void TestParameterFileReading::valueReadIsMarkedAsPresent()
{
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="11" val="0"/>)"));
    QCOMPARE(onlyParameter(file).number, 11);
    QVERIFY(onlyParameter(file).hasValue);
    QVERIFY(!onlyParameter(file).valid);
}

void TestParameterFileReading::formOfDocumentDoesNotMatter_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray usual = parameterDocument(R"(<parameter id="11" val="100"/>)");
    QTest::newRow("other order of attributes") << parameterDocument(R"(<parameter val="100" id="11"/>)");
    QTest::newRow("other attributes too")
        << parameterDocument(R"(<parameter name="x" id="11" unit="y" val="100" ID="3" Val="4"/>)");
    QTest::newRow("single quotes and blanks")
        << parameterDocument("<parameter\n\tid = '11'\n\tval = '100'\n/>");
    QTest::newRow("an element with an end")
        << parameterDocument(R"(<parameter id="11" val="100"></parameter>)");
    QTest::newRow("digits as character references")
        << parameterDocument(R"(<parameter id="&#49;1" val="&#x31;00"/>)");
    QTest::newRow("indented") << QByteArray(usual).replace("><", ">\n    <");
    QTest::newRow("line ends of Windows") << QByteArray(usual).replace("><", ">\r\n<");
    QTest::newRow("no declaration") << usual.mid(usual.indexOf("<Z7Device"));
    QTest::newRow("unknown elements") << QByteArray(usual)
                                             .replace("<Z7-", "<a><b c=\"d\">text</b></a><Z7-")
                                             .replace("<parameter", "<e/>text<parameter");
    QTest::newRow("another document element") << QByteArray(usual).replace("Z7Device>", "Drive>");
    QTest::newRow("comments and instructions")
        << QByteArray(usual).replace("><", R"(><!--<parameter id="1" val="2"/>--><?x <parameter?><)");
    QTest::newRow("character data") << QByteArray(usual).replace(
        "<par", R"(<![CDATA[<parameter id="1" val="2"/>]]><par)");
    QTest::newRow("a byte order mark") << "\xEF\xBB\xBF" + usual;
    QTest::newRow("a name of a document type")
        << QByteArray(usual).replace("?><", R"(?><!DOCTYPE Z7Device SYSTEM "z7.dtd"><)");
    QTest::newRow("a document type without entities")
        << QByteArray(usual).replace("?><", "?><!DOCTYPE Z7Device [<!ELEMENT Z7Device ANY>]><");
}

void TestParameterFileReading::formOfDocumentDoesNotMatter()
{
    QFETCH(QByteArray, content);
    Z7ParameterFile file;
    QCOMPARE(load(file, content), QString());
    QCOMPARE(file.softwareVersion(), version);
    QCOMPARE(valuesOf(file), Values({{11, 100}}));
}

void TestParameterFileReading::documentInAnotherEncodingIsRead_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::newRow("UTF-8") << QByteArray("UTF-8");
    QTest::newRow("UTF-16") << QByteArray("UTF-16");
    QTest::newRow("Latin-1") << QByteArray("ISO-8859-1");
}

void TestParameterFileReading::documentInAnotherEncodingIsRead()
{
    QFETCH(QByteArray, encoding);
    const QByteArray utf8 = parameterDocument(R"(<parameter id="11" val="100"/>)", "Vä");
    const QString content =
        QString::fromUtf8(utf8).replace(QStringLiteral("UTF-8"), QString::fromLatin1(encoding));
    Z7ParameterFile file;
    QCOMPARE(load(file, QTextCodec::codecForName(encoding)->fromUnicode(content)), QString());
    QCOMPARE(file.softwareVersion(), QStringLiteral("Vä"));
    QCOMPARE(valuesOf(file), Values({{11, 100}}));
}

void TestParameterFileReading::namesAreComparedExactly_data()
{
    QTest::addColumn<QByteArray>("exact");
    QTest::addColumn<QByteArray>("other");
    for (const char *other : {"z7-parameter", "Z7-PARAMETER", "Z7Parameter", "Z7_Parameter", "Z7-Parameters"})
        QTest::newRow(other) << QByteArray("Z7-Parameter") << QByteArray(other);
    for (const char *other : {"Parameter", "PARAMETER", "parameters"})
        QTest::newRow(other) << QByteArray("parameter ") << QByteArray(other) + ' ';
    for (const char *other : {"ID", "Id", "number"})
        QTest::newRow(other) << QByteArray("id=") << QByteArray(other) + '=';
    for (const char *other : {"Val", "VAL", "value"})
        QTest::newRow(other) << QByteArray("val=") << QByteArray(other) + '=';
}

void TestParameterFileReading::namesAreComparedExactly()
{
    QFETCH(QByteArray, exact);
    QFETCH(QByteArray, other);
    QByteArray content = parameterDocument(R"(<parameter id="11" val="100"/>)");
    Z7ParameterFile file;
    QCOMPARE(load(file, content.replace(exact, other)), QString());
    QCOMPARE(file.softwareVersion(), version);
    QCOMPARE(valuesOf(file), Values());
}

void TestParameterFileReading::parametersCountOnlyFromTheirElementOn()
{
    Z7ParameterFile file;
    const QByteArray content = parameterDocument(R"(<parameter id="11" val="100"/>)");
    load(file, QByteArray(content).replace("<Z7-", R"(<parameter id="12" val="1"/><Z7-)"));
    QCOMPARE(valuesOf(file), Values({{11, 100}}));
}

void TestParameterFileReading::parametersCountToEndOfDocument()
{
    Z7ParameterFile file;
    const QByteArray content = parameterDocument(R"(<parameter id="11" val="100"/>)");
    const QByteArray behind = R"(<parameter id="12" val="1"/><a><parameter id="13" val="2"/></a></Z7Device>)";
    QCOMPARE(load(file, QByteArray(content).replace("</Z7Device>", behind)), QString());
    QCOMPARE(valuesOf(file), Values({{11, 100}, {12, 1}, {13, 2}}));
}

void TestParameterFileReading::parametersInsideOfOtherElementsCount()
{
    Z7ParameterFile file;
    load(file,
        parameterDocument(R"(<a><parameter id="11" val="1"><parameter id="12" val="2"/></parameter></a>)"));
    QCOMPARE(valuesOf(file), Values({{11, 1}, {12, 2}}));
}

void TestParameterFileReading::parameterWithoutNumberOrValueIsSkipped_data()
{
    QTest::addColumn<QByteArray>("parameter");
    QTest::newRow("no attributes") << QByteArray(R"(<parameter/>)");
    QTest::newRow("no number") << QByteArray(R"(<parameter val="1"/>)");
    QTest::newRow("no value") << QByteArray(R"(<parameter id="12"/>)");
    QTest::newRow("an empty number") << QByteArray(R"(<parameter id="" val="1"/>)");
    QTest::newRow("an empty value") << QByteArray(R"(<parameter id="12" val=""/>)");
    QTest::newRow("both empty") << QByteArray(R"(<parameter id="" val=""/>)");
}

void TestParameterFileReading::parameterWithoutNumberOrValueIsSkipped()
{
    QFETCH(QByteArray, parameter);
    Z7ParameterFile file;
    QCOMPARE(load(file, parameterDocument(parameter + R"(<parameter id="11" val="100"/>)")), QString());
    QCOMPARE(valuesOf(file), Values({{11, 100}}));
}

void TestParameterFileReading::fileOfSuchParametersIsEmptySet()
{
    Z7ParameterFile file;
    QCOMPARE(load(file, parameterDocument("<parameter/><parameter/>")), QString());
    QCOMPARE(file.softwareVersion(), version);
    QCOMPARE(valuesOf(file), Values());
}

void TestParameterFileReading::textThatIsNoNumberCountsAsZero_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"abc", "-", "1.5", "0x10", "12abc", "1 2", "2147483648", "-2147483649",
             "99999999999999999999999999"})
        QTest::newRow(text) << QByteArray(text);
}

void TestParameterFileReading::textThatIsNoNumberCountsAsZero()
{
    QFETCH(QByteArray, text);
    Z7ParameterFile file;
    QCOMPARE(load(file, parameterDocument("<parameter id=\"11\" val=\"" + text + "\"/>")), QString());
    QCOMPARE(valuesOf(file), Values({{11, 0}}));
    QCOMPARE(load(file, parameterDocument("<parameter id=\"" + text + "\" val=\"100\"/>")), QString());
    QCOMPARE(valuesOf(file), Values({{0, 100}}));
}

void TestParameterFileReading::ofTwoValuesOfOneParameterLaterCounts()
{
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="11" val="1"/><parameter id="11" val="2"/>)"));
    QCOMPARE(valuesOf(file), Values({{11, 2}}));
}

void TestParameterFileReading::valueBeyondLimitsIsTaken()
{
    Z7ParameterFile file;
    load(file,
        parameterDocument(R"(<parameter id="1" val="2147483647"/><parameter id="-2" val="-2147483648"/>)"));
    QCOMPARE(valuesOf(file), Values({{1, 2147483647}, {-2, std::numeric_limits<int>::min()}}));
}

void TestParameterFileReading::readOnlyParameterIsTaken()
{
    defineParameter(version, 20, "Signed", "r");
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="20" val="7"/>)"));
    QCOMPARE(valuesOf(file), Values({{20, 7}}));
}

void TestParameterFileReading::unknownParameterIsTakenAsDefaultOne()
{
    defineParameter(version, 11, "Unsigned");
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="9999" val="7"/>)"));
    QCOMPARE(onlyParameter(file).number, 9999);
    QCOMPARE(onlyParameter(file).value, 7);
    QCOMPARE(onlyParameter(file).isUnsigned, Z7ParamDefinition().isUnsigned);
    const Z7DeviceParamSet ofTheDrive = Z7Services::instance()->definitions(version)->emptyParameterSet();
    QCOMPARE(valuesOf(ofTheDrive), Values({{11, 0}}));
}

void TestParameterFileReading::versionOfFileTellsSignedness_data()
{
    QTest::addColumn<QByteArray>("fileVersion");
    QTest::addColumn<int>("isUnsigned");
    QTest::newRow("unsigned there") << QByteArray("V123") << 1;
    QTest::newRow("signed there") << QByteArray("V200") << 0;
}

void TestParameterFileReading::versionOfFileTellsSignedness()
{
    QFETCH(QByteArray, fileVersion);
    defineParameter(version, 11, "Unsigned");
    defineParameter(QStringLiteral("V200"), 11, "Signed");
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="11" val="1"/>)", fileVersion));
    QTEST(onlyParameter(file).isUnsigned, "isUnsigned");
}

void TestParameterFileReading::versionBehindParametersIsNotRead()
{
    defineParameter(version, 11, "Unsigned");
    Z7ParameterFile file;
    const QByteArray content = R"(<Z7Device><Z7-Parameter><parameter id="11" val="1"/></Z7-Parameter>)"
                               R"(<DeviceInfo SoftwareVersion="V123"/></Z7Device>)";
    QCOMPARE(load(file, content), QString());
    QCOMPARE(file.softwareVersion(), QString());
    QCOMPARE(onlyParameter(file).isUnsigned, 0);
}

void TestParameterFileReading::withoutVersionSignednessIsUnknown()
{
    defineParameter(version, 11, "Unsigned");
    Z7ParameterFile file;
    QCOMPARE(load(file, R"(<Z7Device><Z7-Parameter><parameter id="11" val="1"/></Z7-Parameter></Z7Device>)"),
        QString());
    QCOMPARE(file.softwareVersion(), QString());
    QCOMPARE(onlyParameter(file).value, 1);
    QCOMPARE(onlyParameter(file).isUnsigned, 0);
}

void TestParameterFileReading::emptyVersionIsNoVersion_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::newRow("empty") << QByteArray(R"(<DeviceInfo SoftwareVersion=""/>)");
    QTest::newRow("missing") << QByteArray(R"(<DeviceInfo/>)");
    QTest::newRow("other attribute") << QByteArray(R"(<DeviceInfo softwareversion="V200"/>)");
    QTest::newRow("other element") << QByteArray(R"(<deviceinfo SoftwareVersion="V200"/>)");
}

void TestParameterFileReading::emptyVersionIsNoVersion()
{
    QFETCH(QByteArray, element);
    Z7ParameterFile file;
    const QByteArray content = parameterDocument(R"(<parameter id="11" val="1"/>)");
    load(file, QByteArray(content).replace("<Z7-", element + "<Z7-"));
    QCOMPARE(file.softwareVersion(), version);
    QCOMPARE(file.userParams().softwareVersion, version);
}

void TestParameterFileReading::ofTwoVersionsLaterCounts()
{
    Z7ParameterFile file;
    const QByteArray content = parameterDocument(R"(<parameter id="11" val="1"/>)");
    load(file, QByteArray(content).replace("<Z7-", R"(<DeviceInfo SoftwareVersion="V200"/><Z7-)"));
    QCOMPARE(file.softwareVersion(), QStringLiteral("V200"));
}

void TestParameterFileReading::anyVersionIsTakenAsItStands()
{
    Z7ParameterFile file;
    QCOMPARE(load(file, parameterDocument({}, " v 1.2.3 &lt;beta&gt;")), QString());
    QCOMPARE(file.softwareVersion(), QStringLiteral(" v 1.2.3 <beta>"));
}

void TestParameterFileReading::openingAnotherFileForgetsValuesOfFirst()
{
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="11" val="1"/>)"));
    load(file, parameterDocument(R"(<parameter id="12" val="2"/>)", "V200"));
    QCOMPARE(file.softwareVersion(), QStringLiteral("V200"));
    QCOMPARE(valuesOf(file), Values({{12, 2}}));
}

void TestParameterFileReading::openingFileWithoutVersionKeepsVersionOfFirst()
{
    defineParameter(version, 12, "Unsigned");
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="11" val="1"/>)"));
    load(file, R"(<Z7-Parameter><parameter id="12" val="2"/></Z7-Parameter>)");
    QCOMPARE(file.softwareVersion(), version);
    QCOMPARE(file.userParams().softwareVersion, version);
    QCOMPARE(valuesOf(file), Values({{12, 2}}));
    QCOMPARE(onlyParameter(file).isUnsigned, 1);
}

QTEST_APPLESS_MAIN(TestParameterFileReading)
#include "tst_parameterfilereading.moc"
