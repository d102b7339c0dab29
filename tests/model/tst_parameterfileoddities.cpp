// What a parameter file holds that this program would not have written: listed for who wants to know, while
// the file is read all the same.

#include "model/parameterfile.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

using Kind = ParameterFileOddity::Kind;
Q_DECLARE_METATYPE(ParameterFileOddity)

namespace {

const QString fileName = QStringLiteral("drive.z7param");

/// Parameters 11 and 12 take 0 to 100; 20 is read-only.
void defineParameters()
{
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(QStringLiteral("V123"));
    for (const int number : {11, 12})
        definitions->parseLine(QStringLiteral("%1;Name;;0;0;100;Unsigned;1;rw;0;").arg(number));
    definitions->parseLine(QStringLiteral("20;Name;;0;0;100;Unsigned;1;r;0;"));
}

Z7ParameterFile loaded(const QByteArray &content)
{
    WorkingFolder::write(fileName, content);
    Z7ParameterFile file;
    file.load(fileName);
    return file;
}

/// "line 3: Der Parameter 99 ist unbekannt [5]", with what stands in the file in brackets
QString inWords(const ParameterFileOddity &oddity)
{
    return QStringLiteral("line %1: %2 [%3]")
        .arg(QString::number(oddity.line), oddityText(oddity), oddity.text);
}

QStringList odditiesOf(const QByteArray &content)
{
    QStringList words;
    const Z7ParameterFile file = loaded(content);
    for (const ParameterFileOddity &oddity : file.oddities())
        words.append(inWords(oddity));
    return words;
}

/// One element a line: the list begins in line 3, its first parameter stands in line 4.
QByteArray document(const QByteArray &parameters)
{
    return "<Z7Device>\n<DeviceInfo SoftwareVersion=\"V123\"/>\n<Z7-Parameter>\n" + parameters
        + "</Z7-Parameter>\n</Z7Device>\n";
}

QByteArray parameter(const QByteArray &number, const QByteArray &value)
{
    return "<parameter id=\"" + number + "\" val=\"" + value + "\"/>\n";
}

} // namespace

class TestParameterFileOddities : public IsolatedTest
{
    Q_OBJECT

private slots:
    void fileOfThisProgramHasNone();
    void oddParameterIsListedWithItsLine_data();
    void oddParameterIsListedWithItsLine();
    void oddDocumentIsListed_data();
    void oddDocumentIsListed();
    void oddFileIsStillRead();
    void withoutLoadedDefinitionsOnlyThatIsListed();
    void listBelongsToFileOpenedLast();
    void veryOddFileIsListedToItsThousandthOddity();
    void longTextIsCutOff();
    void eachKindHasItsSentence_data();
    void eachKindHasItsSentence();
    void sentenceComesFromLanguageFile_data();
    void sentenceComesFromLanguageFile();
    void openingFileLooksUpNoSentence();

private:
    void prepare() override;
};

void TestParameterFileOddities::prepare()
{
    defineParameters();
}

void TestParameterFileOddities::fileOfThisProgramHasNone()
{
    const Z7Device drive = driveWith({{11, 0}, {12, 100}, {20, 7}});
    QCOMPARE(Z7ParameterFile(fileName, drive, setOf({{11, 50}})).save(), QString());
    Z7ParameterFile file;
    QCOMPARE(file.load(fileName), QString());
    QVERIFY(file.oddities().isEmpty());
}

void TestParameterFileOddities::oddParameterIsListedWithItsLine_data()
{
    QTest::addColumn<QByteArray>("parameters");
    QTest::addColumn<QStringList>("oddities");

    const QByteArray right = parameter("11", "5");
    QTest::newRow("unknown parameter")
        << right + parameter("99", "5") << QStringList {"line 5: Der Parameter 99 ist unbekannt [5]"};
    QTest::newRow("read-only parameter") << right
            + parameter("20", "5") << QStringList {"line 5: Der Parameter 20 kann nur gelesen werden [5]"};
    QTest::newRow("value above its limits")
        << parameter("11", "101")
        << QStringList {"line 4: Der Wert des Parameters 11 liegt außerhalb des zulässigen Bereichs [101]"};
    QTest::newRow("value below its limits")
        << parameter("11", "-1")
        << QStringList {"line 4: Der Wert des Parameters 11 liegt außerhalb des zulässigen Bereichs [-1]"};
    QTest::newRow("value that is no number")
        << parameter("11", "abc") << QStringList {"line 4: Der Wert des Parameters 11 ist keine Zahl [abc]"};
    QTest::newRow("value that no number can hold") << parameter(
        "11", "2147483648") << QStringList {"line 4: Der Wert des Parameters 11 ist keine Zahl [2147483648]"};
    QTest::newRow("number that is none")
        << parameter("x1", "5") << QStringList {"line 4: Die Parameternummer x1 ist keine Zahl [x1]"};
    QTest::newRow("neither is a number") << parameter("x", "y")
                                         << QStringList {"line 4: Die Parameternummer x ist keine Zahl [x]",
                                                "line 4: Der Wert des Parameters 0 ist keine Zahl [y]"};
    QTest::newRow("parameter twice") << right + parameter("12", "1") + parameter("11", "6")
                                     << QStringList {"line 6: Der Parameter 11 kommt mehrfach vor [6]"};
    QTest::newRow("no number") << QByteArray("<parameter val=\"5\"/>\n") + right
                               << QStringList {"line 4: Einem Parameter fehlt die Nummer oder der Wert [5]"};
    QTest::newRow("no value") << QByteArray("<parameter id=\"12\"/>\n") + right
                              << QStringList {"line 4: Einem Parameter fehlt die Nummer oder der Wert [12]"};
    QTest::newRow("unknown element") << "<comment>text</comment>\n" + right
                                     << QStringList {"line 4: Das Element comment ist unbekannt [comment]"};
    QTest::newRow("several, in their order")
        << parameter("99", "1") + parameter("11", "a") + parameter("11", "300")
        << QStringList {"line 4: Der Parameter 99 ist unbekannt [1]",
               "line 5: Der Wert des Parameters 11 ist keine Zahl [a]",
               "line 6: Der Parameter 11 kommt mehrfach vor [300]",
               "line 6: Der Wert des Parameters 11 liegt außerhalb des zulässigen Bereichs [300]"};
}

void TestParameterFileOddities::oddParameterIsListedWithItsLine()
{
    QFETCH(QByteArray, parameters);
    QTEST(odditiesOf(document(parameters)), "oddities");
}

void TestParameterFileOddities::oddDocumentIsListed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("oddities");

    const QByteArray usual = document(parameter("11", "5"));
    const auto changed = [&usual](const char *before, const QByteArray &after) {
        return QByteArray(usual).replace(before, after);
    };
    QTest::newRow("version missing") << changed("<DeviceInfo SoftwareVersion=\"V123\"/>", "")
                                     << QStringList {"line 0: Die Softwareversion fehlt []"};
    QTest::newRow("version empty") << changed("V123", "")
                                   << QStringList {"line 0: Die Softwareversion fehlt []"};
    QTest::newRow("two versions")
        << changed("<Z7-Parameter>", "<DeviceInfo SoftwareVersion=\"V123\"/><Z7-Parameter>")
        << QStringList {"line 3: Das Element DeviceInfo steht an falscher Stelle [DeviceInfo]"};
    QTest::newRow("version behind the parameters")
        << changed("</Z7Device>", "<DeviceInfo SoftwareVersion=\"V200\"/></Z7Device>")
        << QStringList {"line 6: Das Element DeviceInfo steht an falscher Stelle [DeviceInfo]"};
    QTest::newRow("no parameters") << document("")
                                   << QStringList {"line 0: Die Datei enthält keine Parameter []"};
    QTest::newRow("parameter before its element")
        << changed("<Z7-Parameter>", "<parameter id=\"12\" val=\"5\"/><Z7-Parameter>")
        << QStringList {"line 3: Das Element parameter steht an falscher Stelle [parameter]"};
    QTest::newRow("parameter behind its element")
        << changed("</Z7Device>", "<parameter id=\"12\" val=\"5\"/></Z7Device>")
        << QStringList {"line 6: Das Element parameter steht an falscher Stelle [parameter]"};
    QTest::newRow("another document element")
        << changed("Z7Device>", "Drive>") << QStringList {"line 1: Das Element Drive ist unbekannt [Drive]"};
    QTest::newRow("document that breaks off")
        << usual.left(usual.indexOf("</Z7-"))
        << QStringList {
               "line 5: Die Datei ist beschädigt: Premature end of document. [Premature end of document.]"};
    QTest::newRow("empty file")
        << QByteArray()
        << QStringList {
               "line 1: Die Datei ist beschädigt: Premature end of document. [Premature end of document.]",
               "line 0: Die Softwareversion fehlt []", "line 0: Die Datei enthält keine Parameter []"};
}

void TestParameterFileOddities::oddDocumentIsListed()
{
    QFETCH(QByteArray, content);
    QTEST(odditiesOf(content), "oddities");
}

void TestParameterFileOddities::oddFileIsStillRead()
{
    const Z7ParameterFile file =
        loaded(document(parameter("99", "5") + parameter("20", "7") + parameter("11", "500")));
    QCOMPARE(file.oddities().size(), 3);
    QCOMPARE(valuesOf(file.userParams()), (QMap<int, int> {{11, 500}, {20, 7}, {99, 5}}));
}

void TestParameterFileOddities::withoutLoadedDefinitionsOnlyThatIsListed()
{
    const QByteArray content =
        document(parameter("99", "5") + parameter("11", "500")).replace("V123", "V999");
    QCOMPARE(odditiesOf(content),
        QStringList({"line 2: Zur Softwareversion V999 ist keine Parameter-Definition geladen [V999]"}));
}

void TestParameterFileOddities::listBelongsToFileOpenedLast()
{
    Z7ParameterFile file = loaded(document(parameter("99", "5")));
    QCOMPARE(file.oddities().size(), 1);
    WorkingFolder::write(fileName, document(parameter("11", "5")));
    file.load(fileName);
    QVERIFY(file.oddities().isEmpty());
}

void TestParameterFileOddities::veryOddFileIsListedToItsThousandthOddity()
{
    const Z7ParameterFile file = loaded(document(parameter("99", "5").repeated(3000)));
    QCOMPARE(file.oddities().size(), 1001);
    QVERIFY(file.oddities().at(999).kind != Kind::More);
    QVERIFY(file.oddities().constLast().kind == Kind::More);
}

void TestParameterFileOddities::longTextIsCutOff()
{
    const Z7ParameterFile file = loaded(document(parameter("11", QByteArray(100000, 'x'))));
    QCOMPARE(file.oddities().size(), 1);
    QCOMPARE(file.oddities().constFirst().text, QString(80, 'x'));
}

void TestParameterFileOddities::eachKindHasItsSentence_data()
{
    QTest::addColumn<ParameterFileOddity>("oddity");
    QTest::addColumn<QString>("sentence");

    const auto row = [](Kind kind, int number, const char *text, const char *sentence) {
        QTest::newRow(sentence) << ParameterFileOddity {kind, number, QString::fromUtf8(text), 1}
                                << QString::fromUtf8(sentence);
    };
    row(Kind::UnknownElement, -1, "a", "Das Element a ist unbekannt");
    row(Kind::MisplacedElement, -1, "a", "Das Element a steht an falscher Stelle");
    row(Kind::VersionMissing, -1, "", "Die Softwareversion fehlt");
    row(Kind::VersionUnknown, -1, "V1", "Zur Softwareversion V1 ist keine Parameter-Definition geladen");
    row(Kind::NoParameters, -1, "", "Die Datei enthält keine Parameter");
    row(Kind::AttributeMissing, -1, "5", "Einem Parameter fehlt die Nummer oder der Wert");
    row(Kind::NumberUnreadable, -1, "x", "Die Parameternummer x ist keine Zahl");
    row(Kind::ValueUnreadable, 11, "x", "Der Wert des Parameters 11 ist keine Zahl");
    row(Kind::RepeatedParameter, 11, "5", "Der Parameter 11 kommt mehrfach vor");
    row(Kind::UnknownParameter, 99, "5", "Der Parameter 99 ist unbekannt");
    row(Kind::ReadOnlyParameter, 20, "5", "Der Parameter 20 kann nur gelesen werden");
    row(Kind::ValueOutOfLimits, 11, "5",
        "Der Wert des Parameters 11 liegt außerhalb des zulässigen Bereichs");
    row(Kind::BrokenOff, -1, "why", "Die Datei ist beschädigt: why");
    row(Kind::More, -1, "", "Weitere Auffälligkeiten sind nicht aufgeführt");
}

void TestParameterFileOddities::eachKindHasItsSentence()
{
    QFETCH(ParameterFileOddity, oddity);
    QTEST(oddityText(oddity), "sentence");
}

void TestParameterFileOddities::sentenceComesFromLanguageFile_data()
{
    QTest::addColumn<QByteArray>("translation");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("with its placeholder") << QByteArray("unknown: %1") << "unknown: 99";
    QTest::newRow("without a placeholder") << QByteArray("unknown") << "unknown";
}

void TestParameterFileOddities::sentenceComesFromLanguageFile()
{
    QFETCH(QByteArray, translation);
    WorkingFolder::write(
        QStringLiteral("deutsch.z7lang"), "[ParameterfileOddities]\nUnknownParameter=" + translation + '\n');
    QTEST(oddityText({Kind::UnknownParameter, 99, QString(), 1}), "sentence");
}

// A sentence that nobody has read has no place in the language file.
void TestParameterFileOddities::openingFileLooksUpNoSentence()
{
    QCOMPARE(loaded(document(parameter("99", "5"))).oddities().size(), 1);
    Z7Services::shutdown();
    QVERIFY(!WorkingFolder::read(QStringLiteral("deutsch.z7lang")).contains("Oddities"));
}

QTEST_APPLESS_MAIN(TestParameterFileOddities)
#include "tst_parameterfileoddities.moc"
