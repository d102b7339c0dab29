// What one line of a definition file says about a parameter.
// Columns: number; name; unit; default; minimum; maximum; signedness; at any time; access; variant; texts of
// 0 to 12

#include "model/parameterdefinitions.h"

#include <QtTest>

#include <memory>

namespace {

const QString version = QStringLiteral("V123");

using Lines = QStringList;

std::unique_ptr<Z7ParamDefinitions> definitionsOf(const Lines &lines)
{
    auto definitions = std::make_unique<Z7ParamDefinitions>(version);
    for (const QString &line : lines)
        definitions->parseLine(line);
    return definitions;
}

/// The definitions of the one line.
std::unique_ptr<Z7ParamDefinitions> definitionsOf(const char *line)
{
    return definitionsOf(Lines {QString::fromUtf8(line)});
}

QList<int> numbersOf(const Z7ParamDefinitions &definitions)
{
    return definitions.emptyParameterSet().params.keys();
}

} // namespace

class TestParameterDefinitions : public QObject
{
    Q_OBJECT

private slots:
    void fullLineTellsEverything();
    void unknownNumberHasDefaultRow();
    void eachRowGivesDriveParameterWithoutValue();

    void lineIsTakenOrSkipped_data();
    void lineIsTakenOrSkipped();
    void signednessDecidesLimits_data();
    void signednessDecidesLimits();
    void numberThatIsNoneFallsBack_data();
    void numberThatIsNoneFallsBack();
    void zeroMarksApplicationFunction_data();
    void zeroMarksApplicationFunction();
    void onlyRMarksReadOnlyParameter_data();
    void onlyRMarksReadOnlyParameter();
    void quotesAreTakenOutOfTexts();

    void textBelongsToValueOfItsColumn();
    void valueWithoutTextHasNone_data();
    void valueWithoutTextHasNone();
    void twoQuotesMakeEmptyTextThatExists();
    void lineEndStaysOnLastColumn_data();
    void lineEndStaysOnLastColumn();
    void ofTwoLinesLaterOneCounts();

    void oneLookUpGivesWholeRow();
    void askingTwiceGivesVeryRow_data();
    void askingTwiceGivesVeryRow();
    void rowThatIsHeldStaysAsItWas();

    void onlyNumbersOfRowsAreKnown();
    void limitsBelongToAllowedValues_data();
    void limitsBelongToAllowedValues();
    void factoryValuesAreThoseOfWritableParametersOfDrive();
    void factoryValueKeepsWhatRecordTellsOfItsParameter();
};

void TestParameterDefinitions::fullLineTellsEverything()
{
    const auto definitions = definitionsOf("11;Drehzahl X1;1/min;500;-100;4000;Signed;3;r;0;aus;ein;");
    QCOMPARE(definitions->paramName(11), QStringLiteral("Drehzahl X1"));
    QCOMPARE(definitions->paramUnit(11), QStringLiteral("1/min"));
    QCOMPARE(definitions->paramDefault(11), 500);
    QCOMPARE(definitions->paramMin(11), -100);
    QCOMPARE(definitions->paramMax(11), 4000);
    QCOMPARE(definitions->isUnsigned(11), 0);
    QVERIFY(!definitions->isApplFunction(11));
    QVERIFY(definitions->isReadOnly(11));
    QCOMPARE(definitions->paramOptionText(11, 0), QStringLiteral("aus"));
    QCOMPARE(definitions->paramOptionText(11, 1), QStringLiteral("ein"));
}

void TestParameterDefinitions::unknownNumberHasDefaultRow()
{
    const auto definitions = definitionsOf("11;Name;rpm;1;2;3;Unsigned;1;r;0;aus;");
    QCOMPARE(definitions->paramName(12), QString());
    QCOMPARE(definitions->paramUnit(12), QString());
    QCOMPARE(definitions->paramDefault(12), 0);
    QCOMPARE(definitions->paramMin(12), 0);
    QCOMPARE(definitions->paramMax(12), 0);
    QCOMPARE(definitions->isUnsigned(12), 0);
    QVERIFY(definitions->isApplFunction(12));
    QVERIFY(!definitions->isReadOnly(12));
    QCOMPARE(definitions->paramOptionText(12, 0), QString());
    QCOMPARE(numbersOf(*definitions), QList<int>({11}));
}

void TestParameterDefinitions::eachRowGivesDriveParameterWithoutValue()
{
    const auto definitions = definitionsOf(
        Lines {QStringLiteral("12;B;;7;;;Unsigned;0;;0;"), QStringLiteral("11;A;;7;;;Signed;0;;0;")});
    const Z7DeviceParamSet set = definitions->emptyParameterSet();
    QCOMPARE(set.softwareVersion, version);
    QCOMPARE(set.params.keys(), QList<int>({11, 12}));
    QCOMPARE(set.value(11).isUnsigned, 0);
    QCOMPARE(set.value(12).isUnsigned, 1);
    QCOMPARE(set.value(12).number, 12);
    QCOMPARE(set.value(12).value, 0);
    QVERIFY(!set.value(12).hasValue);
}

void TestParameterDefinitions::lineIsTakenOrSkipped_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("isTaken");

    const auto row = [](const char *name, const char *line, bool isTaken) {
        QTest::newRow(name) << QString::fromUtf8(line) << isTaken;
    };
    row("a whole line", "7;Name;rpm;0;;;Signed;0;;0;\n", true);
    row("nothing but number and variant", "7;;;;;;;;;0;", true);
    row("nothing behind the variant, no line end", "7;Name;rpm;0;;;Signed;0;;0", true);
    row("nothing behind the variant but the line end", "7;Name;rpm;0;;;Signed;0;;0\n", false);
    row("variant 1", "7;Name;rpm;0;;;Signed;0;;1;", false);
    row("variant 00", "7;Name;rpm;0;;;Signed;0;;00;", false);
    row("variant in quotes", "7;Name;rpm;0;;;Signed;0;;\"0\";", false);
    row("no variant", "7;Name;rpm;0;;;Signed;0;;;", false);
    row("too few columns", "7;Name;rpm;0", false);
    row("no column at all", "7", false);
    row("an empty line", "", false);
    row("a line end alone", "\n", false);
    row("a header line", "Number;Name;Unit;Default;Min;Max;Signedness;Appl;Access;0;\n", false);
    row("a hexadecimal number", "0x07;Name;rpm;0;;;Signed;0;;0;", false);
    row("a number in quotes", "\"7\";Name;rpm;0;;;Signed;0;;0;", false);
    row("no number", ";Name;rpm;0;;;Signed;0;;0;", false);
    row("a number beyond an int", "99999999999;Name;rpm;0;;;Signed;0;;0;", false);
    row("more columns than there is meaning for", "7;;;;;;;;;0;;;;;;;;;;;;;;;;;;;;", true);
}

void TestParameterDefinitions::lineIsTakenOrSkipped()
{
    QFETCH(QString, line);
    QFETCH(bool, isTaken);
    const auto definitions = definitionsOf(Lines {line});
    QCOMPARE(numbersOf(*definitions), isTaken ? QList<int>({7}) : QList<int>());
    QVERIFY(isTaken || definitions->paramName(7).isEmpty());
}

void TestParameterDefinitions::signednessDecidesLimits_data()
{
    QTest::addColumn<QString>("signedness");
    QTest::addColumn<int>("isUnsigned");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");

    QTest::newRow("Signed") << "Signed" << 0 << -32767 << 32767;
    QTest::newRow("Signed in quotes") << "\"Signed\"" << 0 << -32767 << 32767;
    QTest::newRow("quotes inside") << "Sig\"\"ned" << 0 << -32767 << 32767;
    QTest::newRow("lower case") << "signed" << 1 << 0 << 65535;
    QTest::newRow("with a blank") << "Signed " << 1 << 0 << 65535;
    QTest::newRow("Unsigned") << "Unsigned" << 1 << 0 << 65535;
    QTest::newRow("nothing") << "" << 1 << 0 << 65535;
}

void TestParameterDefinitions::signednessDecidesLimits()
{
    QFETCH(QString, signedness);
    const auto definitions = definitionsOf(Lines {QStringLiteral("7;;;;;;%1;;;0;").arg(signedness)});
    QTEST(definitions->isUnsigned(7), "isUnsigned");
    QTEST(definitions->paramMin(7), "minimum");
    QTEST(definitions->paramMax(7), "maximum");
}

void TestParameterDefinitions::numberThatIsNoneFallsBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters") << "abc";
    QTest::newRow("a decimal point") << "1.5";
    QTest::newRow("hexadecimal") << "0x10";
    QTest::newRow("in quotes") << "\"5\"";
    QTest::newRow("beyond an int") << "99999999999";
    QTest::newRow("nothing") << "";
}

void TestParameterDefinitions::numberThatIsNoneFallsBack()
{
    QFETCH(QString, text);
    const auto definitions = definitionsOf(Lines {QStringLiteral("7;;;%1;%1;%1;Signed;%1;;0;").arg(text)});
    QCOMPARE(definitions->paramDefault(7), 0);
    QCOMPARE(definitions->paramMin(7), -32767);
    QCOMPARE(definitions->paramMax(7), 32767);
    QVERIFY(definitions->isApplFunction(7));
}

void TestParameterDefinitions::zeroMarksApplicationFunction_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("isApplFunction");
    QTest::newRow("0") << "0" << true;
    QTest::newRow("1") << "1" << false;
    QTest::newRow("any other number") << "-3" << false;
    QTest::newRow("nothing") << "" << true;
}

void TestParameterDefinitions::zeroMarksApplicationFunction()
{
    QFETCH(QString, column);
    const auto definitions = definitionsOf(Lines {QStringLiteral("7;;;;;;;%1;;0;").arg(column)});
    QTEST(definitions->isApplFunction(7), "isApplFunction");
}

void TestParameterDefinitions::onlyRMarksReadOnlyParameter_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<bool>("isReadOnly");
    QTest::newRow("r") << "r" << true;
    QTest::newRow("r in quotes") << "\"r\"" << true;
    QTest::newRow("upper case") << "R" << false;
    QTest::newRow("rw") << "rw" << false;
    QTest::newRow("with a blank") << "r " << false;
    QTest::newRow("nothing") << "" << false;
}

void TestParameterDefinitions::onlyRMarksReadOnlyParameter()
{
    QFETCH(QString, column);
    const auto definitions = definitionsOf(Lines {QStringLiteral("7;;;;;;;;%1;0;").arg(column)});
    QTEST(definitions->isReadOnly(7), "isReadOnly");
}

void TestParameterDefinitions::quotesAreTakenOutOfTexts()
{
    const auto definitions = definitionsOf("7;\"Soll\"wert\";\"V\"\"s\";;;;;;;0;\"a\"us\";");
    QCOMPARE(definitions->paramName(7), QStringLiteral("Sollwert"));
    QCOMPARE(definitions->paramUnit(7), QStringLiteral("Vs"));
    QCOMPARE(definitions->paramOptionText(7, 0), QStringLiteral("aus"));
}

void TestParameterDefinitions::textBelongsToValueOfItsColumn()
{
    const auto definitions = definitionsOf("7;;;;;;;;;0;t0;t1;t2;t3;t4;t5;t6;t7;t8;t9;t10;t11;t12;t13;t14");
    for (int value = 0; value <= 12; ++value)
        QCOMPARE(definitions->paramOptionText(7, value), QStringLiteral("t%1").arg(value));
}

void TestParameterDefinitions::valueWithoutTextHasNone_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("its column is empty") << 1;
    QTest::newRow("beyond the last column of texts") << 13;
    QTest::newRow("negative") << -1;
    QTest::newRow("the highest wire value") << 65535;
}

void TestParameterDefinitions::valueWithoutTextHasNone()
{
    QFETCH(int, value);
    const auto definitions = definitionsOf("7;;;;;;;;;0;t0;;t2;t3;t4;t5;t6;t7;t8;t9;t10;t11;t12;t13");
    QCOMPARE(definitions->paramOptionText(7, value), QString());
}

void TestParameterDefinitions::twoQuotesMakeEmptyTextThatExists()
{
    const auto definitions = definitionsOf("7;;;;;;;;;0;\"\";;");
    QCOMPARE(definitions->paramOptionText(7, 0), QString());
    // A null text would be one that nobody stored.
    QVERIFY(!definitions->paramOptionText(7, 0).isNull());
    QVERIFY(definitions->paramOptionText(7, 1).isNull());
}

void TestParameterDefinitions::lineEndStaysOnLastColumn_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::newRow("behind the separator it is a text") << "7;Name;rpm;0;;;Signed;0;;0;\n"
                                                       << "\n";
    QTest::newRow("without it there is no text") << "7;Name;rpm;0;;;Signed;0;;0;" << QString();
    QTest::newRow("behind a text it belongs to it") << "7;Name;rpm;0;;;Signed;0;;0;aus\n"
                                                    << "aus\n";
}

void TestParameterDefinitions::lineEndStaysOnLastColumn()
{
    QFETCH(QString, line);
    const auto definitions = definitionsOf(Lines {line});
    QTEST(definitions->paramOptionText(7, 0), "text");
    QCOMPARE(definitions->paramOptionText(7, 1), QString());
    QCOMPARE(definitions->isUnsigned(7), 0);
    QVERIFY(!definitions->isReadOnly(7));
}

void TestParameterDefinitions::ofTwoLinesLaterOneCounts()
{
    const auto definitions = definitionsOf(Lines {QStringLiteral("7;first;V;1;2;3;Signed;1;r;0;aus;ein;"),
        QStringLiteral("7;second;;;;;Unsigned;;;0;Aus;")});
    QCOMPARE(definitions->paramName(7), QStringLiteral("second"));
    QCOMPARE(definitions->paramUnit(7), QString());
    QCOMPARE(definitions->paramMax(7), 65535);
    QVERIFY(!definitions->isReadOnly(7));
    QCOMPARE(definitions->paramOptionText(7, 0), QStringLiteral("Aus"));
    QCOMPARE(definitions->paramOptionText(7, 1), QString());
    QCOMPARE(definitions->emptyParameterSet().value(7).isUnsigned, 1);
}

void TestParameterDefinitions::oneLookUpGivesWholeRow()
{
    const auto definitions = definitionsOf("11;Drehzahl X1;1/min;500;-100;4000;Signed;3;r;0;aus;ein;");
    const Z7ParamDefinition &row = definitions->row(11);
    QCOMPARE(row.number, 11);
    QCOMPARE(row.name, QStringLiteral("Drehzahl X1"));
    QCOMPARE(row.unit, QStringLiteral("1/min"));
    QCOMPARE(row.defaultValue, 500);
    QCOMPARE(row.minimum, -100);
    QCOMPARE(row.maximum, 4000);
    QCOMPARE(row.isUnsigned, 0);
    QVERIFY(!row.isApplFunction());
    QVERIFY(row.readOnly);
    QCOMPARE(row.optionText(1), QStringLiteral("ein"));
}

void TestParameterDefinitions::askingTwiceGivesVeryRow_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("a number that is known") << 11;
    QTest::newRow("an unknown number") << 12;
}

void TestParameterDefinitions::askingTwiceGivesVeryRow()
{
    QFETCH(int, number);
    const auto definitions = definitionsOf("11;Name;rpm;1;2;3;Unsigned;1;r;0;aus;");
    const Z7ParamDefinition *row = &definitions->row(number);
    definitions->parseLine(QStringLiteral("11;Name;rpm;1;2;3;Unsigned;1;r;0;aus;"));
    QCOMPARE(&definitions->row(number), row);
}

void TestParameterDefinitions::rowThatIsHeldStaysAsItWas()
{
    const auto definitions = definitionsOf("11;first;V;1;2;3;Signed;1;r;0;aus;");
    const Z7ParamDefinition &row = definitions->row(11);
    const Z7DeviceParamSet &set = definitions->emptyParameterSet();
    for (int i = 0; i < 100; ++i)
        definitions->parseLine(QStringLiteral("11;second;V;%1;2;3;Unsigned;1;r;0;an;").arg(i));
    QCOMPARE(row.name, QStringLiteral("first"));
    QCOMPARE(row.optionText(0), QStringLiteral("aus"));
    QCOMPARE(set.value(11).isUnsigned, 0);
    QCOMPARE(definitions->row(11).name, QStringLiteral("second"));
    QCOMPARE(definitions->emptyParameterSet().value(11).isUnsigned, 1);
}

void TestParameterDefinitions::onlyNumbersOfRowsAreKnown()
{
    QVERIFY(!Z7ParamDefinitions(version).hasRows());
    const auto definitions = definitionsOf("11;Name;rpm;1;2;3;Unsigned;1;r;0;aus;");
    QVERIFY(definitions->hasRows());
    QVERIFY(definitions->contains(11));
    QVERIFY(!definitions->contains(12));
    QVERIFY(!definitions->contains(0));
}

void TestParameterDefinitions::limitsBelongToAllowedValues_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("below the least") << -6 << false;
    QTest::newRow("the least") << -5 << true;
    QTest::newRow("the greatest") << 10 << true;
    QTest::newRow("above the greatest") << 11 << false;
}

void TestParameterDefinitions::limitsBelongToAllowedValues()
{
    QFETCH(int, value);
    const auto definitions = definitionsOf("11;Name;rpm;0;-5;10;Signed;1;rw;0;");
    QTEST(definitions->row(11).isWithinLimits(value), "isAllowed");
}

void TestParameterDefinitions::factoryValuesAreThoseOfWritableParametersOfDrive()
{
    const auto definitions = definitionsOf(Lines {"11;Name;rpm;500;;;Signed;1;rw;0;",
        "12;Name;rpm;7;;;Signed;1;r;0;", "13;Name;rpm;9;;;Signed;1;rw;0;"});
    Z7DeviceParamSet params(version);
    for (const int number : {11, 12, 99})
        params.insert({number, 1, 0, false});
    const Z7DeviceParamSet values = definitions->factoryValues(params);
    QCOMPARE(values.softwareVersion, version);
    // Unknown to the definitions, 99 is writable and has the value of a default row.
    QCOMPARE(values.params.keys(), QList<int>({11, 99}));
    QCOMPARE(values.value(11).value, 500);
    QVERIFY(values.value(11).hasValue);
    QCOMPARE(values.value(99).value, 0);
}

void TestParameterDefinitions::factoryValueKeepsWhatRecordTellsOfItsParameter()
{
    const auto definitions = definitionsOf("11;Name;rpm;500;;;Signed;1;rw;0;");
    Z7DeviceParam param(11, 1, 1, false);
    param.accessDenied = true;
    Z7DeviceParamSet params(version);
    params.insert(param);
    const Z7DeviceParam value = definitions->factoryValues(params).value(11);
    QVERIFY(value.accessDenied);
    QCOMPARE(value.isUnsigned, 1);
}

QTEST_APPLESS_MAIN(TestParameterDefinitions)
#include "tst_parameterdefinitions.moc"
