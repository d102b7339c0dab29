// Opening what is no whole parameter file: nothing there, half a document, rubbish, or a document that was
// made to bring the program down.

#include "model/parameterfile.h"
#include "tests/model/folderwithpermissions.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

#include <sys/stat.h>

namespace {

const QString fileName = QStringLiteral("drive.z7param");
const QString cannotRead = QStringLiteral("Parameterdatei");
const QString breaksOff = QStringLiteral("Premature end of document.");
const QByteArray parameter11 = R"(<parameter id="11" val="100"/>)";
const QByteArray parameter12 = R"(<parameter id="12" val="200"/>)";
constexpr int largestFile = 16 * 1024 * 1024;

QString load(Z7ParameterFile &file, const QByteArray &content)
{
    QFile::remove(fileName); // writing over a file makes some file systems wait for the disk
    WorkingFolder::write(fileName, content);
    return file.load(fileName);
}

/// A file that already holds a parameter 99 of a version V200.
Z7ParameterFile loadedFile()
{
    Z7ParameterFile file;
    load(file, parameterDocument(R"(<parameter id="99" val="1"/>)", "V200"));
    return file;
}

QList<int> numbersOf(const Z7ParameterFile &file)
{
    return file.userParams().params.keys();
}

/// A document with a declaration of its type.
QByteArray typedDocument(const QByteArray &declarations, const QByteArray &parameters = parameter11)
{
    return parameterDocument(parameters).replace("?><Z7", "?><!DOCTYPE Z7Device [" + declarations + "]><Z7");
}

/// Ten levels of entities, each of ten times the one below.
QByteArray growingEntities(const char *kind, char reference)
{
    QByteArray declarations = QByteArray("<!ENTITY ") + kind + "e0 'xxxxxxxxxx'>";
    for (int level = 1; level < 11; ++level) {
        const QByteArray below = reference + ('e' + QByteArray::number(level - 1)) + ';';
        declarations += QByteArray("<!ENTITY ") + kind + 'e' + QByteArray::number(level) + " '"
            + below.repeated(10) + "'>";
    }
    return declarations;
}

} // namespace

class TestDamagedParameterFiles : public IsolatedTest
{
    Q_OBJECT

private slots:
    void whatIsNoFileCannotBeOpened_data();
    void whatIsNoFileCannotBeOpened();
    void fileThatMayNotBeReadCannotBeOpened();
    void textComesFromLanguageFile();
    void fileThatCannotBeOpenedEmptiesValuesButKeepsVersion();

    void documentThatBreaksOffTellsSoAndKeepsItsValues_data();
    void documentThatBreaksOffTellsSoAndKeepsItsValues();
    void everyBeginningOfFileIsReadAsFarAsItGoes();
    void whatIsNoDocumentIsToldByReader_data();
    void whatIsNoDocumentIsToldByReader();

    void entitiesAreRefused_data();
    void entitiesAreRefused();
    void undeclaredEntityBreaksDocument();
    void fileOf16MegabytesIsRead();
    void largerFileIsRefused();

    void randomBytesAreNoParameterFile();
    void fileWithChangedBytesIsReadOrRefused();
};

void TestDamagedParameterFiles::whatIsNoFileCannotBeOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no name") << QString();
    QTest::newRow("nothing there") << QStringLiteral("missing.z7param");
    QTest::newRow("a missing folder") << QStringLiteral("missing/drive.z7param");
    QTest::newRow("a path below a file") << QStringLiteral("drive.z7param/drive.z7param");
    QTest::newRow("a folder") << QStringLiteral("folder");
    QTest::newRow("a pipe that nobody writes to") << QStringLiteral("pipe");
    QTest::newRow("a device without end") << QStringLiteral("/dev/zero");
    QTest::newRow("a link to itself") << QStringLiteral("loop");
}

void TestDamagedParameterFiles::whatIsNoFileCannotBeOpened()
{
    QFETCH(QString, path);
    WorkingFolder::write(fileName, parameterDocument(parameter11));
    QVERIFY(QDir().mkdir(QStringLiteral("folder")));
    QCOMPARE(mkfifo("pipe", 0600), 0);
    QVERIFY(QFile::link(QStringLiteral("loop"), QStringLiteral("loop")));
    Z7ParameterFile file;
    QCOMPARE(file.load(path), cannotRead);
}

void TestDamagedParameterFiles::fileThatMayNotBeReadCannotBeOpened()
{
    WorkingFolder::write(fileName, parameterDocument(parameter11));
    QCOMPARE(chmod(qPrintable(fileName), 0), 0);
    const FolderWithPermissions folder(0777);
    Z7ParameterFile file;
    QCOMPARE(file.load(fileName), cannotRead);
    QCOMPARE(numbersOf(file), QList<int>());
}

void TestDamagedParameterFiles::textComesFromLanguageFile()
{
    WorkingFolder::write(QStringLiteral("deutsch.z7lang"), "[Parameterfile]\nParameterfile=Parameter set\n");
    QCOMPARE(Z7ParameterFile().load(QStringLiteral("missing.z7param")), QStringLiteral("Parameter set"));
}

void TestDamagedParameterFiles::fileThatCannotBeOpenedEmptiesValuesButKeepsVersion()
{
    Z7ParameterFile file = loadedFile();
    QCOMPARE(file.load(QStringLiteral("missing.z7param")), cannotRead);
    QCOMPARE(numbersOf(file), QList<int>());
    QCOMPARE(file.softwareVersion(), QStringLiteral("V200"));
    QCOMPARE(file.userParams().softwareVersion, QStringLiteral("V200"));
}

void TestDamagedParameterFiles::documentThatBreaksOffTellsSoAndKeepsItsValues_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<QString>("error");
    QTest::newRow("behind a parameter") << QByteArray() << breaksOff;
    QTest::newRow("in the next parameter") << QByteArray(R"(<parameter id="12" val="2)") << breaksOff;
    QTest::newRow("before the last end") << QByteArray("</Z7-Parameter>") << breaksOff;
    QTest::newRow("with the wrong end")
        << QByteArray("</Z7Device>" + parameter12) << QStringLiteral("Opening and ending tag mismatch.");
}

void TestDamagedParameterFiles::documentThatBreaksOffTellsSoAndKeepsItsValues()
{
    QFETCH(QByteArray, end);
    const QByteArray content = parameterDocument(parameter11);
    Z7ParameterFile file = loadedFile();
    const QString error = load(file, content.left(content.indexOf("</Z7-Parameter>")) + end);
    QTEST(error, "error");
    QCOMPARE(file.softwareVersion(), QStringLiteral("V123"));
    QCOMPARE(numbersOf(file), QList<int>({11}));
    QCOMPARE(file.userParams().value(11).value, 100);
}

void TestDamagedParameterFiles::everyBeginningOfFileIsReadAsFarAsItGoes()
{
    const QByteArray content = parameterDocument(parameter11 + parameter12);
    const int end11 = content.indexOf(parameter11) + parameter11.size();
    const int end12 = end11 + parameter12.size();
    for (int size = 0; size < content.size(); ++size) {
        Z7ParameterFile file;
        QVERIFY2(!load(file, content.left(size)).isEmpty(), content.left(size));
        const QList<int> numbers = size < end11 ? QList<int>() : QList<int>({11});
        QCOMPARE(numbersOf(file), size < end12 ? numbers : QList<int>({11, 12}));
    }
}

void TestDamagedParameterFiles::whatIsNoDocumentIsToldByReader_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \n\n");
    QTest::newRow("another kind of file") << QByteArray("1;\"Name\";\"\";1;0;8;\"Unsigned\"\n");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("two documents") << QByteArray("<Z7Device/>") + parameterDocument({}).mid(38);
    QTest::newRow("an attribute twice") << parameterDocument(R"(<parameter id="1" id="2" val="3"/>)");
    QTest::newRow("a broken character") << parameterDocument("\xFF");
    QTest::newRow("an unknown encoding") << parameterDocument({}).replace("UTF-8", "UTF-9");
}

void TestDamagedParameterFiles::whatIsNoDocumentIsToldByReader()
{
    QFETCH(QByteArray, content);
    Z7ParameterFile file = loadedFile();
    const QString error = load(file, content);
    QVERIFY(!error.isEmpty());
    QVERIFY(error != cannotRead);
    QCOMPARE(numbersOf(file), QList<int>());
}

void TestDamagedParameterFiles::entitiesAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray longText(4000, 'x');
    const QByteArray longValue = "<!ENTITY e '" + longText + "'>";
    const QByteArray manyReferences = QByteArray("&e;").repeated(5000000);
    QTest::newRow("declared and not used") << typedDocument("<!ENTITY e '1'>");
    QTest::newRow("used as a value") << typedDocument("<!ENTITY e '1'>", R"(<parameter id="11" val="&e;"/>)");
    QTest::newRow("of the document type") << typedDocument("<!ENTITY % e '<!-- -->'>");
    QTest::newRow("of the document type, and used there") << typedDocument("<!ENTITY % e '<!-- -->'>%e;");
    QTest::newRow("out of a file") << typedDocument("<!ENTITY e SYSTEM 'file:///etc/passwd'>");
    QTest::newRow("out of a file, and used")
        << typedDocument("<!ENTITY e SYSTEM 'file:///etc/passwd'>", "&e;" + parameter11);
    QTest::newRow("of the document type, out of a file, and used")
        << typedDocument("<!ENTITY % e SYSTEM 'file:///dev/zero'>%e;");
    QTest::newRow("not to be parsed")
        << typedDocument("<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'file' NDATA n>");
    QTest::newRow("that grow by levels")
        << typedDocument(growingEntities("", '&'), R"(<parameter id="11" val="&e10;"/>)");
    QTest::newRow("that grow by levels in the document type")
        << typedDocument(growingEntities("% ", '%') + "%e10;");
    QTest::newRow("that grow by levels in a default")
        << typedDocument(growingEntities("", '&') + "<!ATTLIST parameter x CDATA '&e10;'>");
    QTest::newRow("in a long row") << typedDocument(longValue, manyReferences + parameter11);
    QTest::newRow("in a long row in a value")
        << typedDocument(longValue, "<parameter id='11' val='" + manyReferences + "'/>");
    QTest::newRow("in a long row in the document type")
        << typedDocument("<!ENTITY % e '<!--" + longText + "-->'>" + QByteArray("%e;").repeated(5000000));
    QTest::newRow("in a long row in a default")
        << typedDocument(longValue + "<!ATTLIST parameter x CDATA '" + manyReferences + "'>");
}

void TestDamagedParameterFiles::entitiesAreRefused()
{
    QFETCH(QByteArray, content);
    QVERIFY(content.size() < largestFile);
    Z7ParameterFile file;
    QElapsedTimer timer;
    timer.start();
    const QString error = load(file, content);
    QVERIFY2(timer.elapsed() < 30000, "to replace them all takes minutes");
    QVERIFY(!error.isEmpty());
    QVERIFY(error != cannotRead);
    QCOMPARE(file.softwareVersion(), QString());
    QCOMPARE(numbersOf(file), QList<int>());
}

void TestDamagedParameterFiles::undeclaredEntityBreaksDocument()
{
    Z7ParameterFile file;
    QCOMPARE(load(file, parameterDocument(parameter11 + "&e;" + parameter12)),
        QStringLiteral("Entity 'e' not declared."));
    QCOMPARE(numbersOf(file), QList<int>({11}));
}

void TestDamagedParameterFiles::fileOf16MegabytesIsRead()
{
    Z7ParameterFile file;
    QCOMPARE(load(file, parameterDocument(parameter11).leftJustified(largestFile, ' ')), QString());
    QCOMPARE(numbersOf(file), QList<int>({11}));
}

void TestDamagedParameterFiles::largerFileIsRefused()
{
    Z7ParameterFile file = loadedFile();
    const QString error = load(file, parameterDocument(parameter11).leftJustified(largestFile + 1, ' '));
    QCOMPARE(error, QStringLiteral("The file is larger than 16 MB."));
    QCOMPARE(numbersOf(file), QList<int>());
    QCOMPARE(file.softwareVersion(), QStringLiteral("V200"));
}

void TestDamagedParameterFiles::randomBytesAreNoParameterFile()
{
    QRandomGenerator random(1);
    for (int i = 0; i < 500; ++i) {
        QByteArray content(random.bounded(1, 500), Qt::Uninitialized);
        for (char &byte : content)
            byte = static_cast<char>(random.bounded(256));
        Z7ParameterFile file;
        QVERIFY2(!load(file, content).isEmpty(), content.toHex());
        QCOMPARE(numbersOf(file), QList<int>());
    }
}

void TestDamagedParameterFiles::fileWithChangedBytesIsReadOrRefused()
{
    const QByteArray whole =
        typedDocument("<!ELEMENT a ANY>", parameter11 + "<!--c--><![CDATA[d]]>" + parameter12);
    QRandomGenerator random(2);
    for (int i = 0; i < 3000; ++i) {
        QByteArray content = whole;
        for (int change = random.bounded(1, 4); change > 0; --change) {
            const int at = random.bounded(content.size());
            const int byte = random.bounded(256);
            content.replace(
                at, random.bounded(0, 3), QByteArray(random.bounded(0, 3), static_cast<char>(byte)));
        }
        Z7ParameterFile file;
        load(file, content);
        const QMap<int, Z7DeviceParam> &params = file.userParams().params;
        for (auto it = params.begin(); it != params.end(); ++it)
            QVERIFY2(it->number == it.key() && it->hasValue, content);
        QVERIFY2(params.size() <= 2, content);
    }
}

QTEST_APPLESS_MAIN(TestDamagedParameterFiles)
#include "tst_damagedparameterfiles.moc"
