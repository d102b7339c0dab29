// The layers of the program know those below them and no others; the simulator knows none of them. Which
// they are stands in ARCHITECTURE.md.

#include "tests/architecture/layertable.h"
#include "tests/architecture/sources.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString tableTitles = QStringLiteral("| layer | folder | what it is | may include | may link |\n"
                                           "|---|---|---|---|---|\n");

const LayerTable &table()
{
    static const LayerTable table(contentOf(QStringLiteral(Z7_SOURCE_DIR "/ARCHITECTURE.md")));
    return table;
}

bool mayInclude(const Layer &layer, const Include &include)
{
    const Layer *included = table().layerOf(include.path);
    if (!included) // a library's header, or one of ours that is not named by its folder
        return !include.isQuoted;
    return included == &layer || layer.includes.contains(included->name);
}

QStringList sourcesOfLayers(const QString &root)
{
    return sourcesUnder(root, table().folders());
}

/// "file includes path" for each include that the order of the layers forbids.
QStringList wrongIncludes(const QString &root)
{
    QStringList wrong;
    const QStringList sources = sourcesOfLayers(root);
    for (const QString &source : sources) {
        const QList<Include> includes = includesOf(root + QLatin1Char('/') + source);
        for (const Include &include : includes) {
            if (!mayInclude(*table().layerOf(source), include))
                wrong.append(source + QStringLiteral(" includes ") + include.path);
        }
    }
    return wrong;
}

QStringList linksOf(const QString &target)
{
    const QStringList lines = contentOf(QStringLiteral(Z7_LINKS_FILE)).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.section(QLatin1Char('='), 0, 0) == target)
            return line.section(QLatin1Char('='), 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }
    return {QStringLiteral("(no such target)")};
}

} // namespace

class TestLayers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void tableThatDoesNotHoldSaysWhy_data();
    void tableThatDoesNotHoldSaysWhy();
    void documentWithoutTableSaysSo();
    void layerUsesOnlyLayersBelowIt();
    void everyFolderWithSourcesIsLayer();
    void everyLayerIsLookedThrough_data();
    void everyLayerIsLookedThrough();
    void noSourceIncludesHigherLayer();
    void forbiddenIncludeIsFound_data();
    void forbiddenIncludeIsFound();
    void allowedIncludeIsPassed_data();
    void allowedIncludeIsPassed();
    void targetLinksNoMoreThanItsLayerMay_data();
    void targetLinksNoMoreThanItsLayerMay();
    void servicesAreDefinedInTheirLayerButForOneFile();

private:
    static QStringList findingsOf(const QString &source, const QByteArray &line);
};

void TestLayers::initTestCase()
{
    QVERIFY2(table().error().isEmpty(), qPrintable("ARCHITECTURE.md: " + table().error()));
}

void TestLayers::tableThatDoesNotHoldSaysWhy_data()
{
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *rows, const char *error) {
        QTest::newRow(name) << QString::fromUtf8(rows) << QString::fromUtf8(error);
    };
    row("whole", "| `comm` | `comm/` | stacks | `protocol` | `protocol`, `Qt5::SerialPort` |", "");
    row("layer that CMake does not build", "| `forms` | `forms/` | forms | – | no target |", "");
    row("other table behind", "\n| a | b |", "");
    row("cell too few", "| `comm` | `comm/` | `protocol` | `protocol` |",
        "4 cells in the place of 5: | `comm`");
    row("name without quotes", "| comm | `comm/` | stacks | – | – |", "a cell is no list of names: | comm");
    row("list without commas", "| `comm` | `comm/` | stacks | `protocol` `protocol` | – |",
        "a cell is no list of names");
    row("empty cell", "| `comm` | `comm/` | stacks | | – |", "a cell is no list of names");
    row("no name", "| – | `comm/` | stacks | – | – |", "a layer has one name and one folder");
    row("two folders", "| `comm` | `comm/`, `net/` | stacks | – | – |",
        "a layer has one name and one folder");
    row("layer twice", "| `protocol` | `net/` | frames | – | – |", "a second layer of this name");
    row("layer above", "| `comm` | `comm/` | stacks | `pages` | – |",
        "no layer pages stands above: | `comm`");
}

void TestLayers::tableThatDoesNotHoldSaysWhy()
{
    QFETCH(QString, rows);
    QFETCH(QString, error);
    const QString firstRow(QStringLiteral(u"| `protocol` | `protocol/` | frames | – | `Qt5::Core` |\n"));
    const QString found = LayerTable("# Layers\n\n" + tableTitles + firstRow + rows).error();
    QVERIFY2(error.isEmpty() ? found.isEmpty() : found.startsWith(error), qPrintable(found));
}

void TestLayers::documentWithoutTableSaysSo()
{
    QCOMPARE(LayerTable("# Layers\n\n| layer | folder |\n|---|---|\n").error(),
        QStringLiteral("no table with the columns layer, folder, what it is, may include, may link"));
    QCOMPARE(LayerTable(tableTitles).error(), QStringLiteral("the table of layers has no rows"));
}

void TestLayers::layerUsesOnlyLayersBelowIt()
{
    QStringList below;
    for (const Layer &layer : table().layers()) {
        for (const QString &used : layer.includes)
            QVERIFY2(below.contains(used), qPrintable(layer.name + " uses " + used));
        below.append(layer.name);
    }
}

void TestLayers::everyFolderWithSourcesIsLayer()
{
    const QDir root(Z7_SOURCE_DIR);
    QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString besideTheProgram : {"tests", "benchmarks", "build", "out"})
        folders.removeAll(besideTheProgram);
    const QStringList sources = sourcesUnder(root.path(), folders);
    for (const QString &source : sources)
        QVERIFY2(table().layerOf(source), qPrintable(source));
}

void TestLayers::everyLayerIsLookedThrough_data()
{
    QTest::addColumn<QString>("name");
    for (const Layer &layer : table().layers())
        QTest::newRow(qPrintable(layer.name)) << layer.name;
}

void TestLayers::everyLayerIsLookedThrough()
{
    QFETCH(QString, name);
    const QStringList sources = sourcesOfLayers(QStringLiteral(Z7_SOURCE_DIR));
    QVERIFY(std::any_of(sources.cbegin(), sources.cend(),
        [&name](const QString &source) { return table().layerOf(source)->name == name; }));
}

void TestLayers::noSourceIncludesHigherLayer()
{
    const QStringList wrong = wrongIncludes(QStringLiteral(Z7_SOURCE_DIR));
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

/// What is found in a tree whose one source holds the one line.
QStringList TestLayers::findingsOf(const QString &source, const QByteArray &line)
{
    const QTemporaryDir root;
    QFile file(root.filePath(source));
    QDir().mkpath(QFileInfo(file).path());
    if (!file.open(QIODevice::WriteOnly) || file.write("\n" + line + "\n") < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
    file.close();
    return wrongIncludes(root.path());
}

void TestLayers::forbiddenIncludeIsFound_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QByteArray>("line");

    const auto row = [](const char *name, const char *source, const char *line) {
        QTest::newRow(name) << source << QByteArray(line);
    };
    row("protocol to services", "protocol/telegram.h", R"(#include "control/services/language.h")");
    row("protocol to model", "protocol/telegram.h", R"(#include "model/device.h")");
    row("services to model", "control/services/services.h", R"(#include "model/parameterdefinitions.h")");
    row("services to the controller", "control/services/services.cpp",
        R"(#include "control/maincontroller.h")");
    row("model to pages", "model/device.h", R"(#include "pages/datawidget.h")");
    row("model to a form", "model/device.cpp", R"(#include "ui_mainwindow.h")");
    row("comm to pages", "comm/commthreads.h", R"(#include "pages/idevicedatacallback.h")");
    row("pages to comm", "pages/datawidget.h", R"(#include "comm/communicationinterface.h")");
    row("pages to the controller", "pages/datawidget.cpp", R"(#include "control/maincontroller.h")");
    row("the controller to the shell", "control/maincontroller.cpp",
        R"(#include "shell/maincontentwidget.h")");
    row("a form to the shell", "forms/network.ui", "<header>shell/pageicon.h</header>");
    row("the shell to the simulator", "shell/wizard/wizardrows.cpp", R"(#include "simulator/bus.h")");
    row("the simulator to protocol", "simulator/frames.cpp", R"(#include "protocol/telegram.h")");
    row("the program to anything but the shell", "shell/main.cpp", R"(#include "control/maincontroller.h")");
    row("a header without its folder", "pages/rs485dialog.cpp", R"(#include "datawidget.h")");
    row("a header by a way round", "model/device.cpp", R"(#include "../pages/datawidget.h")");
    row("in angle brackets", "model/device.cpp", "#include <pages/datawidget.h>");
    row("with blanks", "model/device.cpp", R"(  #  include   "pages/datawidget.h")");
}

void TestLayers::forbiddenIncludeIsFound()
{
    QFETCH(QString, source);
    QFETCH(QByteArray, line);
    QCOMPARE(findingsOf(source, line).size(), 1);
}

void TestLayers::allowedIncludeIsPassed_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QByteArray>("line");

    const auto row = [](const char *name, const char *source, const char *line) {
        QTest::newRow(name) << source << QByteArray(line);
    };
    row("a layer its own", "shell/wizard/wizardrows.cpp", R"(#include "shell/pageicon.h")");
    row("model to protocol", "model/errorcodes.cpp", R"(#include "protocol/telegram.h")");
    row("model to services", "model/device.cpp", R"(#include "control/services/services.h")");
    row("a page to its form", "pages/rs485dialog.cpp", R"(#include "ui_rs485dialog.h")");
    row("the controller to protocol", "control/maincontroller.cpp", R"(#include "protocol/telegram.h")");
    row("a library", "protocol/telegram.h", "#include <QByteArray>");
    row("a form to a library", "forms/curve.ui", "<header>qwt_plot.h</header>");
    row("a comment", "model/device.cpp", R"(// #include "pages/datawidget.h")");
}

void TestLayers::allowedIncludeIsPassed()
{
    QFETCH(QString, source);
    QFETCH(QByteArray, line);
    QCOMPARE(findingsOf(source, line), QStringList());
}

void TestLayers::targetLinksNoMoreThanItsLayerMay_data()
{
    QTest::addColumn<QStringList>("allowed");

    for (const Layer &layer : table().layers()) {
        if (layer.hasTarget)
            QTest::newRow(qPrintable(layer.name)) << layer.links;
    }
}

void TestLayers::targetLinksNoMoreThanItsLayerMay()
{
    QFETCH(QStringList, allowed);
    const QStringList links = linksOf(QString::fromLatin1(QTest::currentDataTag()));
    for (const QString &library : links)
        QVERIFY2(allowed.contains(library), qPrintable(library));
}

// The services own the parameter definitions, which lie above them: the one place where a class of one layer
// is finished by another.
void TestLayers::servicesAreDefinedInTheirLayerButForOneFile()
{
    static const QRegularExpression definition(
        QStringLiteral(R"(^\w.*\bZ7Services::~?\w+\()"), QRegularExpression::MultilineOption);
    const QString root = QStringLiteral(Z7_SOURCE_DIR "/");
    QStringList elsewhere;
    const QStringList sources = sourcesOfLayers(root);
    for (const QString &source : sources) {
        if (!isInside(source, QStringLiteral("control/services"))
            && contentOf(root + source).contains(definition))
            elsewhere.append(source);
    }
    QCOMPARE(elsewhere, QStringList({QStringLiteral("model/servicesdefinitions.cpp")}));
}

QTEST_APPLESS_MAIN(TestLayers)
#include "tst_layers.moc"
