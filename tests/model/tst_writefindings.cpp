// What stands against writing changes to a drive, in numbers for a program and in words for a person.

#include "control/services/services.h"
#include "model/parameterconflicts.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

using Values = QMap<int, int>;
Q_DECLARE_METATYPE(Values)

namespace {

const QString notWritable = QStringLiteral(
    "Der Parameter kann zur Zeit nicht geschrieben werden (Digitaleingänge A+B nicht auf low)");
const QString speedConflict = QStringLiteral("Parameterkonflikt Drehzahl: 500 <= 0 <= 0 verletzt.");

/// 11 to 13 and 38 to 40 are the support points; 20 is read-only, 30 and 31 are application functions.
void defineParameters()
{
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(QStringLiteral("V123"));
    for (const int number : {11, 12, 13, 38, 39, 40})
        definitions->parseLine(QStringLiteral("%1;Punkt;;0;-100;1000;Signed;1;rw;0;").arg(number));
    definitions->parseLine(QStringLiteral("20;Zähler;;0;0;10;Unsigned;1;r;0;"));
    for (const int number : {30, 31})
        definitions->parseLine(QStringLiteral("%1;Rampe;;0;0;10;Unsigned;0;rw;0;").arg(number));
}

Z7Device driveWithInputs(int digitalInputs, const Values &values = {})
{
    Z7Device drive = driveWith(values);
    drive.digitalInputs = static_cast<quint8>(digitalInputs);
    return drive;
}

const char *nameOf(WriteFinding::Kind kind)
{
    switch (kind) {
    case WriteFinding::Kind::NotRising:
        return "not rising";
    case WriteFinding::Kind::InputsNotLow:
        return "inputs not low";
    case WriteFinding::Kind::UnknownParameter:
        return "unknown";
    case WriteFinding::Kind::ReadOnly:
        return "read-only";
    case WriteFinding::Kind::OutOfLimits:
        return "out of limits";
    }
    return "?";
}

/// "out of limits 30=11 (0..10)"
QString inWords(const WriteFinding &finding)
{
    QString words = QLatin1String(nameOf(finding.kind));
    for (int i = 0; i < finding.numbers.size(); ++i)
        words += QStringLiteral(" %1=%2").arg(finding.numbers.at(i)).arg(finding.values.value(i));
    if (finding.kind == WriteFinding::Kind::OutOfLimits)
        words += QStringLiteral(" (%1..%2)").arg(finding.minimum).arg(finding.maximum);
    return words;
}

QStringList findingsOf(const Z7Device &drive, const Values &changes)
{
    QStringList words;
    for (const WriteFinding &finding : writeFindings(drive, setOf(changes)))
        words.append(inWords(finding));
    return words;
}

} // namespace

class TestWriteFindings : public IsolatedTest
{
    Q_OBJECT

private slots:
    void whatStandsAgainstWriteIsFound_data();
    void whatStandsAgainstWriteIsFound();
    void changeOfDriveWithoutDefinitionsIsUnknown();
    void highInputsBarApplicationFunctions_data();
    void highInputsBarApplicationFunctions();
    void conflictLineTellsRulesAndInputs_data();
    void conflictLineTellsRulesAndInputs();
    void sentenceOnInputsComesFromLanguageFile();

private:
    void prepare() override;
};

void TestWriteFindings::prepare()
{
    defineParameters();
}

void TestWriteFindings::whatStandsAgainstWriteIsFound_data()
{
    QTest::addColumn<int>("digitalInputs");
    QTest::addColumn<Values>("changes");
    QTest::addColumn<QStringList>("findings");

    QTest::newRow("no change, no finding") << 0 << Values() << QStringList();
    QTest::newRow("values within their limits are fine")
        << 0 << Values {{13, 1000}, {30, 0}, {31, 10}} << QStringList();
    QTest::newRow("support points that do not rise are told with those of the drive")
        << 0 << Values {{11, 500}} << QStringList {"not rising 11=500 12=100 13=900"};
    QTest::newRow("speed comes before current")
        << 0 << Values {{11, 500}, {40, -1}}
        << QStringList {"not rising 11=500 12=100 13=900", "not rising 38=0 39=0 40=-1"};
    QTest::newRow("value above its limits")
        << 0 << Values {{30, 11}} << QStringList {"out of limits 30=11 (0..10)"};
    QTest::newRow("value below its limits")
        << 0 << Values {{11, -101}} << QStringList {"out of limits 11=-101 (-100..1000)"};
    QTest::newRow("read-only parameter") << 0 << Values {{20, 5}} << QStringList {"read-only 20=5"};
    QTest::newRow("read-only parameter has no limits to keep")
        << 0 << Values {{20, 11}} << QStringList {"read-only 20=11"};
    QTest::newRow("unknown parameter") << 0 << Values {{99, 5}} << QStringList {"unknown 99=5"};
    QTest::newRow("changes that the inputs bar are one finding")
        << 1 << Values {{13, 900}, {30, 1}, {31, 2}} << QStringList {"inputs not low 30=1 31=2"};
    QTest::newRow("rules and inputs come first, the rest by number")
        << 2 << Values {{11, 500}, {20, 5}, {30, 11}}
        << QStringList {"not rising 11=500 12=100 13=900", "inputs not low 30=11", "read-only 20=5",
               "out of limits 30=11 (0..10)"};
}

void TestWriteFindings::whatStandsAgainstWriteIsFound()
{
    QFETCH(int, digitalInputs);
    QFETCH(Values, changes);
    QTEST(findingsOf(driveWithInputs(digitalInputs, {{11, 0}, {12, 100}, {13, 900}}), changes), "findings");
}

void TestWriteFindings::changeOfDriveWithoutDefinitionsIsUnknown()
{
    Z7Device drive;
    drive.softwareVersion = QStringLiteral("V999");
    QCOMPARE(findingsOf(drive, {{30, 1}}), QStringList({"unknown 30=1"}));
}

void TestWriteFindings::highInputsBarApplicationFunctions_data()
{
    QTest::addColumn<int>("digitalInputs");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isBarred");

    QTest::newRow("both inputs are low") << 0b0000 << 30 << false;
    QTest::newRow("input A is high") << 0b0001 << 30 << true;
    QTest::newRow("input B is high") << 0b0010 << 30 << true;
    QTest::newRow("both inputs are high") << 0b0011 << 30 << true;
    QTest::newRow("inputs 3 and 4 do not matter") << 0b1100 << 30 << false;
    QTest::newRow("parameter that can be written at any time") << 0b0011 << 11 << false;
    QTest::newRow("unknown parameter counts as application function") << 0b0001 << 99 << true;
}

void TestWriteFindings::highInputsBarApplicationFunctions()
{
    QFETCH(int, digitalInputs);
    QFETCH(int, number);
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(QStringLiteral("V123"));
    QTEST(isBarredByInputs(definitions->row(number), driveWithInputs(digitalInputs)), "isBarred");
}

void TestWriteFindings::conflictLineTellsRulesAndInputs_data()
{
    QTest::addColumn<int>("digitalInputs");
    QTest::addColumn<Values>("changes");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing stands against it") << 3 << Values {{13, 100}} << QString();
    QTest::newRow("rule") << 0 << Values {{11, 500}, {30, 1}} << speedConflict;
    QTest::newRow("inputs, once for two changes") << 1 << Values {{30, 1}, {31, 2}} << notWritable;
    QTest::newRow("rule and inputs, each on its line")
        << 1 << Values {{11, 500}, {30, 1}} << speedConflict + QLatin1Char('\n') + notWritable;
    QTest::newRow("limits are no conflict") << 0 << Values {{20, 5}, {30, 11}, {99, 1}} << QString();
}

void TestWriteFindings::conflictLineTellsRulesAndInputs()
{
    QFETCH(int, digitalInputs);
    QFETCH(Values, changes);
    QTEST(writeConflicts(driveWithInputs(digitalInputs), setOf(changes)), "text");
}

void TestWriteFindings::sentenceOnInputsComesFromLanguageFile()
{
    WorkingFolder::write(
        QStringLiteral("deutsch.z7lang"), "[Common]\nApplFunctionCurrentlyNotWritable=inputs are high\n");
    QCOMPARE(writeConflicts(driveWithInputs(1), setOf({{30, 1}})), QStringLiteral("inputs are high"));
}

QTEST_APPLESS_MAIN(TestWriteFindings)
#include "tst_writefindings.moc"
