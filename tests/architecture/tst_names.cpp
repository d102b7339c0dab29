// The names of the classes tell their layer; those of the test functions are sentences without articles.

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

namespace {

bool hasArticle(const QString &name)
{
    static const QRegularExpression article("^(?:a|an|the)(?=[A-Z])|(?<=[a-z0-9])(?:A|An|The)(?=[A-Z]|$)");
    return name.contains(article);
}

/// The test functions that a source declares, and their data.
QStringList testFunctionsIn(const QString &source)
{
    static const QRegularExpression part(
        "private slots:(.*?)\\n(?:\\w+:|\\};)", QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression function("void (\\w+)\\(\\)");
    QStringList names;
    auto parts = part.globalMatch(source);
    while (parts.hasNext()) {
        auto functions = function.globalMatch(parts.next().captured(1));
        while (functions.hasNext())
            names.append(functions.next().captured(1));
    }
    return names;
}

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestNames : public QObject
{
    Q_OBJECT

private slots:
    void classesOfBusBearItsPrefix_data();
    void classesOfBusBearItsPrefix();
    void articleIsFound_data();
    void articleIsFound();
    void testFunctionsHaveNoArticle_data();
    void testFunctionsHaveNoArticle();
};

void TestNames::classesOfBusBearItsPrefix_data()
{
    QTest::addColumn<QString>("path");
    const QDir source(Z7_SOURCE_DIR);
    for (const QString folder : {"protocol", "comm"}) {
        for (const QString &file : QDir(source.filePath(folder)).entryList({"*.h"}))
            QTest::newRow(qPrintable(folder + '/' + file)) << source.filePath(folder + '/' + file);
    }
}

void TestNames::classesOfBusBearItsPrefix()
{
    QFETCH(QString, path);
    static const QRegularExpression declaration(
        "^(?:class|struct) (\\w+)", QRegularExpression::MultilineOption);
    auto match = declaration.globalMatch(contentOf(path));
    QVERIFY(match.hasNext());
    while (match.hasNext()) {
        const QString name = match.next().captured(1);
        QVERIFY2(name.startsWith("Z7") || name.startsWith("CommThread"), qPrintable(name));
    }
}

void TestNames::articleIsFound_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("none") << "pageShowsDeviceValue" << false;
    QTest::newRow("at the begin") << "thePageShowsDeviceValue" << true;
    QTest::newRow("within") << "pageShowsAValue" << true;
    QTest::newRow("before a vowel") << "pageShowsAnError" << true;
    QTest::newRow("begin of another word") << "thereIsAnotherAdapter" << false;
}

void TestNames::articleIsFound()
{
    QFETCH(QString, name);
    const QStringList declared = testFunctionsIn("private slots:\n    void " + name + "();\n\nprivate:\n");
    QCOMPARE(declared, QStringList(name));
    QTEST(hasArticle(declared.first()), "isFound");
}

void TestNames::testFunctionsHaveNoArticle_data()
{
    QTest::addColumn<QString>("path");
    const QDir tests(QStringLiteral(Z7_SOURCE_DIR "/tests"));
    QDirIterator it(tests.path(), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString name = tests.relativeFilePath(it.next());
        if (!testFunctionsIn(contentOf(it.filePath())).isEmpty())
            QTest::newRow(qPrintable(name)) << it.filePath();
    }
}

void TestNames::testFunctionsHaveNoArticle()
{
    QFETCH(QString, path);
    QStringList wrong = testFunctionsIn(contentOf(path));
    wrong.erase(
        std::remove_if(wrong.begin(), wrong.end(), [](const QString &name) { return !hasArticle(name); }),
        wrong.end());
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(' ')));
}

QTEST_APPLESS_MAIN(TestNames)

#include "tst_names.moc"
