// The sample definition files, read here by a reader of the test's own: what they promise must hold whatever
// the program makes of them.

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

#include <algorithm>

namespace {

enum Column {
    Number,
    Name,
    Unit,
    Default,
    Minimum,
    Maximum,
    Signedness,
    AnyTime,
    Access,
    Variant,
    FirstText
};
constexpr int textColumns = 13;
constexpr int separatorsPerLine = FirstText + textColumns;

const QStringList versions {QStringLiteral("V123"), QStringLiteral("V200")};

struct Row
{
    QStringList columns;

    QString text(int column) const { return QString(columns.value(column)).remove(QLatin1Char('"')); }
    int number(int column) const { return columns.value(column).toInt(); }
    bool isSigned() const { return text(Signedness) == QLatin1String("Signed"); }
    bool isReadOnly() const { return text(Access) == QLatin1String("r"); }
    QString optionText(int value) const { return text(FirstText + value); }

    int limit(int column, int ifEmpty) const
    {
        return columns.value(column).isEmpty() ? ifEmpty : number(column);
    }
    int minimum() const { return limit(Minimum, isSigned() ? -32767 : 0); }
    int maximum() const { return limit(Maximum, isSigned() ? 32767 : 65535); }
};

QByteArray bytesOf(const QString &version)
{
    QFile file(QStringLiteral(Z7_SAMPLES_DIR "/Z7ParamDef_%1.csv").arg(version));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The lines without their line feeds; what follows the last line feed is dropped and has a test of its own.
QStringList linesOf(const QString &version)
{
    QStringList lines = QString::fromLatin1(bytesOf(version)).split(QLatin1Char('\n'));
    lines.removeLast();
    return lines;
}

/// The rows behind the header whose variant column reads as wanted.
QList<Row> rowsOf(const QString &version, const QString &variant = QStringLiteral("0"))
{
    QList<Row> rows;
    const QStringList lines = linesOf(version).mid(1);
    for (const QString &line : lines) {
        const Row row {line.split(QLatin1Char(';'))};
        if (row.columns.value(Variant) == variant)
            rows.append(row);
    }
    return rows;
}

Row rowOf(const QString &version, int number)
{
    const QList<Row> rows = rowsOf(version);
    const auto found = std::find_if(
        rows.begin(), rows.end(), [number](const Row &row) { return row.number(Number) == number; });
    return found == rows.end() ? Row() : *found;
}

void addVersions()
{
    QTest::addColumn<QString>("version");
    for (const QString &version : versions)
        QTest::newRow(qPrintable(version)) << version;
}

/// One data row per version and entry of \a table, which maps a name to parameter numbers.
void addVersionsTimes(const QMap<QString, QList<int>> &table)
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QList<int>>("numbers");
    for (const QString &version : versions) {
        for (auto entry = table.begin(); entry != table.end(); ++entry)
            QTest::addRow("%s, %s", qPrintable(version), qPrintable(entry.key())) << version << entry.value();
    }
}

const QMap<QString, QList<int>> pageParameters {
    {QStringLiteral("speed regulation"), {0x1E, 0x1F, 0x21, 0x3C}},
    {QStringLiteral("ramps"), {0x1A, 0x1B, 0x1C, 0x1D}},
    {QStringLiteral("current limits"), {0x36, 0x38, 0x39, 0x3A, 0x3B}},
    {QStringLiteral("fixed speeds"), {0x17, 0x18, 0x19}},
    {QStringLiteral("positioning"),
        {0x21, 0x3C, 0x3F, 0x40, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49}},
    {QStringLiteral("digital outputs"),
        {0x03, 0x04, 0x05, 0x23, 0x24, 0x25, 0x32, 0x33, 0x34, 0x35, 0x4F, 0x50, 0x46, 0x47, 0x48, 0x49}},
    {QStringLiteral("operating mode"), {0x01, 0x02, 0x06}},
    {QStringLiteral("speed curve"), {0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10, 0x11, 0x12}},
    {QStringLiteral("current curve"), {0x26, 0x27, 0x28, 0x29, 0x2A, 0x2B, 0x2C, 0x2D}},
    {QStringLiteral("brake resistor"), {0x4D, 0x4E}},
    {QStringLiteral("voltage limits"), {0x4A, 0x4B, 0x4C}},
    {QStringLiteral("bus address"), {0x52}},
};

const QList<int> liveValues {0x8001, 0x8003, 0x8004, 0x8005, 0x8007, 0x8008, 0x8009, 0x800D};

} // namespace

class TestSamples : public QObject
{
    Q_OBJECT

private slots:
    void bytesAreLatin1AndNotUtf8_data() { addVersions(); }
    void bytesAreLatin1AndNotUtf8();
    void linesEndWithBareLineFeed_data() { addVersions(); }
    void linesEndWithBareLineFeed();
    void everyLineHasSeparatorBehindItsLastText_data() { addVersions(); }
    void everyLineHasSeparatorBehindItsLastText();
    void headerIsNoParameter_data() { addVersions(); }
    void headerIsNoParameter();
    void onlyTextColumnsStandInQuotes_data() { addVersions(); }
    void onlyTextColumnsStandInQuotes();
    void fileHasRowsThatReadmeTells_data();
    void fileHasRowsThatReadmeTells();
    void skippedRowWouldOverwriteRowInUse_data() { addVersions(); }
    void skippedRowWouldOverwriteRowInUse();

    void numbersAreUnique_data() { addVersions(); }
    void numbersAreUnique();
    void everyParameterHasNameOfItsOwn_data() { addVersions(); }
    void everyParameterHasNameOfItsOwn();
    void limitsFitSixteenBitsOfWire_data() { addVersions(); }
    void limitsFitSixteenBitsOfWire();
    void factoryValueLiesWithinLimits_data() { addVersions(); }
    void factoryValueLiesWithinLimits();
    void everyKindOfRowOccurs_data();
    void everyKindOfRowOccurs();

    void pageFindsItsParameters_data() { addVersionsTimes(pageParameters); }
    void pageFindsItsParameters();
    void liveValuesAreReadOnlyAndHaveUnit_data() { addVersions(); }
    void liveValuesAreReadOnlyAndHaveUnit();
    void onlyBusAddressIsReadOnlyOnPage_data() { addVersions(); }
    void onlyBusAddressIsReadOnlyOnPage();
    void modesCarryNumbersThatPagesSpeakOf_data();
    void modesCarryNumbersThatPagesSpeakOf();
    void everyValueOfEnumerationHasText_data() { addVersions(); }
    void everyValueOfEnumerationHasText();
    void curveLimitsAreThoseOfCurvePages_data();
    void curveLimitsAreThoseOfCurvePages();
    void factoryCurvesRise_data();
    void factoryCurvesRise();
    void brakeResistorSwitchesOffBelowWhereItSwitchesOn_data() { addVersions(); }
    void brakeResistorSwitchesOffBelowWhereItSwitchesOn();
};

void TestSamples::bytesAreLatin1AndNotUtf8()
{
    QFETCH(QString, version);
    const QString text = QString::fromLatin1(bytesOf(version));
    QVERIFY(text.contains(QStringLiteral("°C")));
    QVERIFY(text.contains(QStringLiteral("µ")));
    QVERIFY(text.contains(QStringLiteral("Übertemperatur")));

    // Lead bytes of UTF-8 and the control characters that Latin-1 has no letters for.
    const QRegularExpression strange(QStringLiteral("[\\x{00}-\\x{09}\\x{0B}-\\x{1F}\\x{7F}-\\x{9F}ÂÃ]"));
    QVERIFY2(!text.contains(strange), qPrintable(strange.match(text).captured()));
}

void TestSamples::linesEndWithBareLineFeed()
{
    QFETCH(QString, version);
    const QByteArray bytes = bytesOf(version);
    QVERIFY(bytes.endsWith(";\n"));
    QVERIFY(!bytes.contains('\r'));
}

void TestSamples::everyLineHasSeparatorBehindItsLastText()
{
    QFETCH(QString, version);
    const QStringList lines = linesOf(version);
    QVERIFY(!lines.isEmpty());
    for (const QString &line : lines) {
        QCOMPARE(line.count(QLatin1Char(';')), separatorsPerLine);
        QVERIFY2(line.endsWith(QLatin1Char(';')), qPrintable(line));
    }
}

void TestSamples::headerIsNoParameter()
{
    QFETCH(QString, version);
    const QStringList lines = linesOf(version);
    QVERIFY(lines.value(0).startsWith(QStringLiteral("\"Nummer\";\"Name\";\"Einheit\";")));
    for (int i = 1; i < lines.size(); ++i) {
        bool isNumber = false;
        lines[i].section(QLatin1Char(';'), 0, 0).toInt(&isNumber);
        QVERIFY2(isNumber, qPrintable(lines[i]));
    }
}

void TestSamples::onlyTextColumnsStandInQuotes()
{
    QFETCH(QString, version);
    const QRegularExpression form(QStringLiteral(
        R"re(^\d+;"[^"]+";"[^"]*";-?\d+;(-?\d+)?;(-?\d+)?;"(Signed|Unsigned)";[01];"(r|rw)";[01];(("[^"]+")?;){13}$)re"));
    const QStringList lines = linesOf(version).mid(1);
    for (const QString &line : lines)
        QVERIFY2(form.match(line).hasMatch(), qPrintable(line));
}

void TestSamples::fileHasRowsThatReadmeTells_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("inUse");
    QTest::addColumn<int>("skipped");
    QTest::newRow("V123") << "V123" << 120 << 6;
    QTest::newRow("V200") << "V200" << 78 << 2;
}

void TestSamples::fileHasRowsThatReadmeTells()
{
    QFETCH(QString, version);
    QFETCH(int, inUse);
    QFETCH(int, skipped);
    QCOMPARE(rowsOf(version).size(), inUse);
    QCOMPARE(rowsOf(version, QStringLiteral("1")).size(), skipped);
    QCOMPARE(linesOf(version).size(), 1 + inUse + skipped);
}

// Behind the row in use and unlike it, so that a reader that takes every variant is found out.
void TestSamples::skippedRowWouldOverwriteRowInUse()
{
    QFETCH(QString, version);
    const QStringList lines = linesOf(version);
    const int inUse = lines.indexOf(rowOf(version, 0x2F).columns.join(QLatin1Char(';')));
    QVERIFY(inUse > 0);
    const Row skipped {lines.value(inUse + 1).split(QLatin1Char(';'))};
    QCOMPARE(skipped.number(Number), 0x2F);
    QCOMPARE(skipped.text(Variant), QStringLiteral("1"));
    QVERIFY(skipped.maximum() != rowOf(version, 0x2F).maximum());
}

void TestSamples::numbersAreUnique()
{
    QFETCH(QString, version);
    const QList<Row> rows = rowsOf(version);
    QVERIFY(!rows.isEmpty());
    QSet<int> seen;
    for (const Row &row : rows) {
        QVERIFY2(!seen.contains(row.number(Number)), qPrintable(row.columns[Number]));
        seen.insert(row.number(Number));
    }
}

void TestSamples::everyParameterHasNameOfItsOwn()
{
    QFETCH(QString, version);
    QSet<QString> seen;
    const QList<Row> rows = rowsOf(version);
    QVERIFY(!rows.isEmpty());
    for (const Row &row : rows) {
        QVERIFY2(!row.text(Name).isEmpty(), qPrintable(row.columns[Number]));
        QVERIFY2(!seen.contains(row.text(Name)), qPrintable(row.text(Name)));
        seen.insert(row.text(Name));
    }
}

void TestSamples::limitsFitSixteenBitsOfWire()
{
    QFETCH(QString, version);
    const QList<Row> rows = rowsOf(version);
    QVERIFY(!rows.isEmpty());
    for (const Row &row : rows) {
        QVERIFY2(row.minimum() >= (row.isSigned() ? -32768 : 0), qPrintable(row.text(Name)));
        QVERIFY2(row.maximum() <= (row.isSigned() ? 32767 : 65535), qPrintable(row.text(Name)));
        QVERIFY2(row.minimum() < row.maximum(), qPrintable(row.text(Name)));
    }
}

void TestSamples::factoryValueLiesWithinLimits()
{
    QFETCH(QString, version);
    const QList<Row> rows = rowsOf(version);
    QVERIFY(!rows.isEmpty());
    for (const Row &row : rows) {
        QVERIFY2(row.number(Default) >= row.minimum(), qPrintable(row.text(Name)));
        QVERIFY2(row.number(Default) <= row.maximum(), qPrintable(row.text(Name)));
    }
}

using RowTest = bool (*)(const Row &);
Q_DECLARE_METATYPE(RowTest)

void TestSamples::everyKindOfRowOccurs_data()
{
    const QList<QPair<const char *, RowTest>> kinds {
        {"application function", [](const Row &row) { return row.number(AnyTime) == 0; }},
        {"writable at any time",
            [](const Row &row) { return row.number(AnyTime) != 0 && !row.isReadOnly(); }},
        {"negative factory value", [](const Row &row) { return row.number(Default) < 0; }},
        {"signed without limits",
            [](const Row &row) { return row.isSigned() && row.columns[Minimum].isEmpty(); }},
        {"unsigned without limits",
            [](const Row &row) { return !row.isSigned() && row.columns[Maximum].isEmpty(); }},
        {"unsigned beyond 15 bits", [](const Row &row) { return row.number(Maximum) == 65535; }},
        {"name wider than a column", [](const Row &row) { return row.text(Name).size() > 36; }},
        {"all thirteen texts", [](const Row &row) { return !row.optionText(textColumns - 1).isEmpty(); }},
    };
    QTest::addColumn<QString>("version");
    QTest::addColumn<RowTest>("isOfKind");
    for (const QString &version : versions) {
        for (const auto &kind : kinds)
            QTest::addRow("%s, %s", qPrintable(version), kind.first) << version << kind.second;
    }
}

void TestSamples::everyKindOfRowOccurs()
{
    QFETCH(QString, version);
    QFETCH(RowTest, isOfKind);
    const QList<Row> rows = rowsOf(version);
    QVERIFY(std::any_of(rows.begin(), rows.end(), isOfKind));
}

void TestSamples::pageFindsItsParameters()
{
    QFETCH(QString, version);
    QFETCH(QList<int>, numbers);
    for (int number : numbers)
        QVERIFY2(!rowOf(version, number).columns.isEmpty(), qPrintable(QString::number(number, 16)));
}

void TestSamples::liveValuesAreReadOnlyAndHaveUnit()
{
    QFETCH(QString, version);
    for (int number : liveValues) {
        const Row row = rowOf(version, number);
        QVERIFY2(row.isReadOnly(), qPrintable(QString::number(number, 16)));
        QVERIFY2(!row.text(Unit).isEmpty(), qPrintable(row.text(Name)));
    }
}

// A factory value or a parameter file that carried the address along would move the drive on the bus.
void TestSamples::onlyBusAddressIsReadOnlyOnPage()
{
    QFETCH(QString, version);
    QSet<int> readOnly;
    for (const QList<int> &numbers : pageParameters) {
        for (int number : numbers) {
            if (rowOf(version, number).isReadOnly())
                readOnly.insert(number);
        }
    }
    QCOMPARE(readOnly, QSet<int> {0x52});
    QCOMPARE(rowOf(version, 0x52).minimum(), 1);
    QCOMPARE(rowOf(version, 0x52).maximum(), 255);
}

void TestSamples::modesCarryNumbersThatPagesSpeakOf_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    QTest::newRow("fixed speeds") << 1 << "Festdrehzahlen";
    QTest::newRow("current from A1") << 2 << "dynamische Strombegrenzung";
    QTest::newRow("positioning") << 3 << "Positionierung";
    QTest::newRow("teaching a distance") << 4 << "Teach-Funktion";
    QTest::newRow("positioning backwards") << 6 << "Positionierung Gegenrichtung";
}

void TestSamples::modesCarryNumbersThatPagesSpeakOf()
{
    QFETCH(int, mode);
    QFETCH(QString, text);
    for (const QString &version : versions) {
        QCOMPARE(rowOf(version, 0x01).optionText(mode), text);
        QCOMPARE(rowOf(version, 0x02).optionText(mode), text);
    }
}

void TestSamples::everyValueOfEnumerationHasText()
{
    QFETCH(QString, version);
    int enumerations = 0;
    const QList<Row> rows = rowsOf(version);
    for (const Row &row : rows) {
        if (row.optionText(0).isEmpty())
            continue;
        ++enumerations;
        QCOMPARE(row.minimum(), 0);
        for (int value = 0; value < textColumns; ++value)
            QVERIFY2(row.optionText(value).isEmpty() == (value > row.maximum()), qPrintable(row.text(Name)));
    }
    QVERIFY(enumerations >= 6);
}

void TestSamples::curveLimitsAreThoseOfCurvePages_data()
{
    QTest::addColumn<QList<int>>("numbers");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::newRow("readings of the input") << QList<int> {0x0B, 0x0C, 0x0D, 0x26, 0x27, 0x28} << 0 << 1023;
    QTest::newRow("speeds") << QList<int> {0x0E, 0x0F, 0x10, 0x11, 0x12} << -30000 << 29999;
    QTest::newRow("currents") << QList<int> {0x29, 0x2A, 0x2B, 0x2C, 0x2D} << 0 << 100;
}

void TestSamples::curveLimitsAreThoseOfCurvePages()
{
    QFETCH(QList<int>, numbers);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    for (const QString &version : versions) {
        for (int number : numbers) {
            QCOMPARE(rowOf(version, number).minimum(), minimum);
            QCOMPARE(rowOf(version, number).maximum(), maximum);
        }
    }
}

void TestSamples::factoryCurvesRise_data()
{
    addVersionsTimes({
        {QStringLiteral("readings of the speed curve"), {0x0B, 0x0C, 0x0D}},
        {QStringLiteral("speeds"), {0x0E, 0x0F, 0x10, 0x11, 0x12}},
        {QStringLiteral("readings of the current curve"), {0x26, 0x27, 0x28}},
        {QStringLiteral("currents"), {0x29, 0x2A, 0x2B, 0x2C, 0x2D}},
    });
}

void TestSamples::factoryCurvesRise()
{
    QFETCH(QString, version);
    QFETCH(QList<int>, numbers);
    for (int i = 1; i < numbers.size(); ++i)
        QVERIFY(rowOf(version, numbers[i - 1]).number(Default) < rowOf(version, numbers[i]).number(Default));
}

void TestSamples::brakeResistorSwitchesOffBelowWhereItSwitchesOn()
{
    QFETCH(QString, version);
    QVERIFY(rowOf(version, 0x4E).number(Default) < rowOf(version, 0x4D).number(Default));
    QVERIFY(rowOf(version, 0x4D).number(Default) < rowOf(version, 0x4B).number(Default));
    QVERIFY(rowOf(version, 0x4A).number(Default) < rowOf(version, 0x4E).number(Default));
}

QTEST_GUILESS_MAIN(TestSamples)
#include "tst_samples.moc"
