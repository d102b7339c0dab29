// The definition file of a version in the working folder, as delivered or as anything else that bears its
// name.

#include "control/services/services.h"
#include "model/parameterdefinitions.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <atomic>
#include <sys/stat.h>
#include <thread>

namespace {

const QString version = QStringLiteral("V123");
const QString fileName = QStringLiteral("Z7ParamDef_V123.csv");
const QByteArray header = "Number;Name;Unit;Default;Min;Max;Signedness;Appl;Access;Variant;\n";
const QByteArray row7 = "7;Name;rpm;0;;;Signed;0;;0;\n";

QByteArray row(int number)
{
    return QByteArray::number(number) + ";Name;rpm;0;;;Signed;0;;0;\n";
}

void writeFile(const QByteArray &content)
{
    WorkingFolder::write(fileName, content);
}

QList<int> numbersOf(const Z7ParamDefinitions &definitions)
{
    return definitions.emptyParameterSet().params.keys();
}

} // namespace

class TestParameterDefinitionFiles : public IsolatedTest
{
    Q_OBJECT

private slots:
    void fileOfVersionIsRead();
    void fileIsReadFromFolderThatWasGiven();
    void unusualVersionIsPartOfNameAsItIs();
    void umlautsAreLatin1();
    void windowsLineEndsAreLineFeeds();
    void lastLineNeedsNoLineEnd();
    void fileWithoutUsableLineIsFailure_data();
    void fileWithoutUsableLineIsFailure();
    void usableLinesOfDamagedFileCount_data();
    void usableLinesOfDamagedFileCount();
    void numbersOutOfRangeFallBack();
    void fileOf15MegabytesIsRead();
    void fileOf20MegabytesIsLeftAlone();

    void missingFileIsFailureEvenIfRowsAreKnown();
    void whatIsNoFileCountsAsMissing_data();
    void whatIsNoFileCountsAsMissing();
    void fileThatCannotBeOpenedKeepsRowsThatAreKnown_data();
    void fileThatCannotBeOpenedKeepsRowsThatAreKnown();
    void readingAgainPutsNewRowsOverOldOnes();

    void definitionsAreMadeEmptyAndReadNothing();
    void versionWithoutFileHasWorkingDefinitions();
    void oneVersionHasOneObject();
    void endForgetsDefinitions();
    void workerMayAskWhileFileIsRead();
    void rowsOfFileComeAllAtOnce();
    void workersThatMeetNewVersionGetSameObject();
};

void TestParameterDefinitionFiles::fileOfVersionIsRead()
{
    writeFile(header + row7 + row(8));
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7, 8}));
    QCOMPARE(definitions.paramName(7), QStringLiteral("Name"));
    QCOMPARE(definitions.paramOptionText(7, 0), QStringLiteral("\n"));
}

void TestParameterDefinitionFiles::fileIsReadFromFolderThatWasGiven()
{
    writeFile(row7);
    QVERIFY(QDir().mkdir("elsewhere"));
    WorkingFolder::write("elsewhere/" + fileName, row(8));
    Z7Services::instance()->setFolder("elsewhere");
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(version);
    QVERIFY(definitions->load());
    QCOMPARE(numbersOf(*definitions), QList<int>({8}));
}

void TestParameterDefinitionFiles::unusualVersionIsPartOfNameAsItIs()
{
    WorkingFolder::write(QStringLiteral("Z7ParamDef_B-1 x.csv"), row7);
    QVERIFY(Z7ParamDefinitions(QStringLiteral("B-1 x")).load());
}

void TestParameterDefinitionFiles::umlautsAreLatin1()
{
    writeFile("7;\xDC"
              "bertemperatur;\xB0"
              "C;;;;;;;0;gro\xDF;\n");
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(definitions.paramName(7), QString::fromUtf8("Übertemperatur"));
    QCOMPARE(definitions.paramUnit(7), QString::fromUtf8("°C"));
    QCOMPARE(definitions.paramOptionText(7, 0), QString::fromUtf8("groß"));
}

void TestParameterDefinitionFiles::windowsLineEndsAreLineFeeds()
{
    writeFile("7;Name;rpm;0;;;Signed;0;;0;aus\r\n");
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(definitions.paramOptionText(7, 0), QStringLiteral("aus\n"));
}

void TestParameterDefinitionFiles::lastLineNeedsNoLineEnd()
{
    writeFile(header + "7;Name;rpm;0;;;Signed;0;;0");
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7}));
}

void TestParameterDefinitionFiles::fileWithoutUsableLineIsFailure_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("nothing but a header") << header;
    QTest::newRow("lines without columns") << QByteArray("7\n8\n\n\n9");
    QTest::newRow("rows of another variant") << QByteArray("7;Name;rpm;0;;;Signed;0;;1;\n");
    QTest::newRow("separators") << QByteArray(100000, ';');
    QTest::newRow("nothing but NULs") << QByteArray(100000, '\0');
    QTest::newRow("binary") << QByteArray::fromHex("7F 45 4C 46 02 01 01 00 FF D8 0A 00 3B 3B 0D 0A 1A");
    QTest::newRow("UTF-16") << QByteArray::fromHex("FF FE 37 00 3B 00 4E 00 3B 00 0A 00");
    QTest::newRow("a row behind a UTF-8 mark") << "\xEF\xBB\xBF" + row7;
}

void TestParameterDefinitionFiles::fileWithoutUsableLineIsFailure()
{
    QFETCH(QByteArray, content);
    writeFile(content);
    Z7ParamDefinitions definitions(version);
    QVERIFY(!definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>());
    QCOMPARE(definitions.paramName(7), QString());
}

void TestParameterDefinitionFiles::usableLinesOfDamagedFileCount_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray nul(1, '\0');
    QTest::newRow("a line ends at its first NUL") << row7 + "8;Name;rpm;0;;;Signed;0" + nul + ";;0;\n";
    QTest::newRow("a NUL behind what counts") << "7;Name;rpm;0;;;Signed;0;;0;aus" + nul + "garbage\n";
    QTest::newRow("binary before and behind") << nul + "\xFF\n" + row7 + "\x01\x02" + nul + ";;;;;;;;;0;";
    QTest::newRow("cut off in a row") << row7 + "8;Name;rp";
    QTest::newRow("a line of a million columns") << row7 + "x" + QByteArray(1000000, ';') + "\n";
}

void TestParameterDefinitionFiles::usableLinesOfDamagedFileCount()
{
    QFETCH(QByteArray, content);
    writeFile(content);
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7}));
}

void TestParameterDefinitionFiles::numbersOutOfRangeFallBack()
{
    const QByteArray tooGreat = "99999999999";
    writeFile(tooGreat + ";;;;;;;;;0;\n7;;;" + tooGreat + ";-" + tooGreat + ";" + tooGreat + ";Signed;"
        + tooGreat + ";;0;\n");
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7}));
    QCOMPARE(definitions.paramDefault(7), 0);
    QCOMPARE(definitions.paramMin(7), -32767);
    QCOMPARE(definitions.paramMax(7), 32767);
    QVERIFY(definitions.isApplFunction(7));
}

void TestParameterDefinitionFiles::fileOf15MegabytesIsRead()
{
    writeFile(row7 + QByteArray(15 * 1024 * 1024, 'x') + "\n" + row(8));
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7, 8}));
}

void TestParameterDefinitionFiles::fileOf20MegabytesIsLeftAlone()
{
    writeFile(row7 + QByteArray(20 * 1024 * 1024, 'x') + "\n");
    Z7ParamDefinitions definitions(version);
    QVERIFY(!definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>());
}

void TestParameterDefinitionFiles::missingFileIsFailureEvenIfRowsAreKnown()
{
    Z7ParamDefinitions definitions(version);
    QVERIFY(!definitions.load());
    definitions.parseLine(QString::fromLatin1(row7));
    QVERIFY(!definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7}));
}

void TestParameterDefinitionFiles::whatIsNoFileCountsAsMissing_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("a pipe that nobody writes to") << int(S_IFIFO);
    QTest::newRow("a socket") << int(S_IFSOCK);
    QTest::newRow("a link to a device without end") << int(S_IFLNK);
}

void TestParameterDefinitionFiles::whatIsNoFileCountsAsMissing()
{
    QFETCH(int, kind);
    if (kind == S_IFLNK)
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), fileName));
    else
        QCOMPARE(mknod(qPrintable(fileName), mode_t(kind) | 0666, 0), 0);
    Z7ParamDefinitions definitions(version);
    definitions.parseLine(QString::fromLatin1(row7));
    QVERIFY(!definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7}));
}

void TestParameterDefinitionFiles::fileThatCannotBeOpenedKeepsRowsThatAreKnown_data()
{
    QTest::addColumn<bool>("isKnown");
    QTest::newRow("nothing is known") << false;
    QTest::newRow("a row is known") << true;
}

void TestParameterDefinitionFiles::fileThatCannotBeOpenedKeepsRowsThatAreKnown()
{
    QFETCH(bool, isKnown);
    QDir().mkpath(fileName); // a folder of that name
    Z7ParamDefinitions definitions(version);
    if (isKnown)
        definitions.parseLine(QString::fromLatin1(row7));
    QCOMPARE(definitions.load(), isKnown);
    QCOMPARE(numbersOf(definitions).size(), isKnown ? 1 : 0);
}

void TestParameterDefinitionFiles::readingAgainPutsNewRowsOverOldOnes()
{
    writeFile(row7 + row(8));
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    writeFile("8;New;;;;;;;;0;\n9;New;;;;;;;;0;\n");
    QVERIFY(definitions.load());
    QCOMPARE(numbersOf(definitions), QList<int>({7, 8, 9}));
    QCOMPARE(definitions.paramName(7), QStringLiteral("Name"));
    QCOMPARE(definitions.paramName(8), QStringLiteral("New"));
    writeFile(header);
    QVERIFY(definitions.load());
}

void TestParameterDefinitionFiles::definitionsAreMadeEmptyAndReadNothing()
{
    writeFile(row7);
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(version);
    QCOMPARE(numbersOf(*definitions), QList<int>());
    QVERIFY(definitions->load());
    QCOMPARE(numbersOf(*Z7Services::instance()->definitions(version)), QList<int>({7}));
}

void TestParameterDefinitionFiles::versionWithoutFileHasWorkingDefinitions()
{
    const Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(QStringLiteral("V999"));
    for (const int number : {-1, 0, 7, 0x8001})
        QCOMPARE(definitions->paramName(number), QString());
    QCOMPARE(definitions->emptyParameterSet().softwareVersion, QStringLiteral("V999"));
}

void TestParameterDefinitionFiles::oneVersionHasOneObject()
{
    Z7Services *services = Z7Services::instance();
    QCOMPARE(services->definitions(version), services->definitions(version));
    QVERIFY(services->definitions(version) != services->definitions(QStringLiteral("V200")));
}

void TestParameterDefinitionFiles::endForgetsDefinitions()
{
    Z7Services::instance()->definitions(version)->parseLine(QString::fromLatin1(row7));
    Z7Services::shutdown();
    QCOMPARE(numbersOf(*Z7Services::instance()->definitions(version)), QList<int>());
}

void TestParameterDefinitionFiles::workerMayAskWhileFileIsRead()
{
    QByteArray content;
    for (int number = 0; number < 5000; ++number)
        content += row(number);
    writeFile(content);
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(version);

    std::atomic_bool isAsking {false};
    std::atomic_bool isRead {false};
    std::thread worker([&] {
        for (int number = 0; !isRead; number = (number + 1) % 5000) {
            const Z7ParamDefinitions *asked = Z7Services::instance()->definitions(version);
            const QString name = asked->paramName(number);
            if (asked->isUnsigned(number) != 0 || (!name.isEmpty() && name != QLatin1String("Name")))
                qFatal("half a row");
            isAsking = true;
        }
    });
    while (!isAsking)
        std::this_thread::yield();
    const bool isLoaded = definitions->load();
    isRead = true;
    worker.join();
    QVERIFY(isLoaded);
    QCOMPARE(definitions->paramName(4999), QStringLiteral("Name"));
}

void TestParameterDefinitionFiles::rowsOfFileComeAllAtOnce()
{
    constexpr int last = 20000;
    QByteArray content;
    for (int number = 0; number <= last; ++number)
        content += row(number);
    writeFile(content);
    Z7ParamDefinitions definitions(version);

    std::atomic_bool isAsking {false};
    bool isLastThere = false;
    std::thread worker([&] {
        while (definitions.paramName(0).isEmpty())
            isAsking = true;
        isLastThere = !definitions.paramName(last).isEmpty();
    });
    while (!isAsking)
        std::this_thread::yield();
    const bool isLoaded = definitions.load();
    worker.join();
    QVERIFY(isLoaded);
    QVERIFY(isLastThere);
}

void TestParameterDefinitionFiles::workersThatMeetNewVersionGetSameObject()
{
    Z7Services *services = Z7Services::instance();
    const auto ask = [services](QVector<Z7ParamDefinitions *> &found) {
        for (int i = 0; i < 1000; ++i)
            found.append(services->definitions(QStringLiteral("V%1").arg(i)));
    };
    QVector<Z7ParamDefinitions *> first;
    QVector<Z7ParamDefinitions *> second;
    std::thread worker([&] { ask(first); });
    ask(second);
    worker.join();
    QCOMPARE(first, second);
}

QTEST_APPLESS_MAIN(TestParameterDefinitionFiles)
#include "tst_parameterdefinitionfiles.moc"
