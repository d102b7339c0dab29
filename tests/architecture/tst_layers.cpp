// The layers of the program know those below them and no others; the simulator knows none of them.

#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Layer
{
    QString folder; ///< folder of its sources, or a file at the root
    QStringList uses; ///< folders of the layers whose headers it may include, besides its own
};

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// From below to above; a layer may use only what stands before it. Forms stand for the ui_ headers made of
/// them.
const QVector<Layer> layers {
    {"protocol", {}},
    {"control/services", {}},
    {"model", words("protocol control/services")},
    {"comm", words("protocol model control/services")},
    {"forms", {}},
    {"pages", words("forms model control/services")},
    {"control", words("pages comm model control/services protocol")},
    {"shell", words("forms control pages comm model control/services protocol")},
    {"shell/main.cpp", words("shell")},
    {"simulator", {}},
};

struct Include
{
    QString path;
    bool isQuoted;
};

bool isInside(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

/// The layer that a source or an included path belongs to; the innermost folder counts. Null if there is
/// none.
const Layer *layerOf(const QString &path)
{
    const QString inFolder = path.startsWith(QLatin1String("ui_")) ? QStringLiteral("forms/") + path : path;
    const Layer *innermost = nullptr;
    for (const Layer &layer : layers) {
        if (isInside(inFolder, layer.folder)
            && (!innermost || layer.folder.size() > innermost->folder.size()))
            innermost = &layer;
    }
    return innermost;
}

QString contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The sources and forms of all layers, relative to the root.
QStringList sourcesUnder(const QString &root)
{
    QStringList sources;
    const QStringList names {"*.cpp", "*.h", "*.c", "*.ui"};
    for (const Layer &layer : layers) {
        QDirIterator it(
            root + QLatin1Char('/') + layer.folder, names, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            sources.append(QDir(root).relativeFilePath(it.next()));
        if (layer.folder.endsWith(QLatin1String(".cpp")) && QFile::exists(root + '/' + layer.folder))
            sources.append(layer.folder);
    }
    sources.removeDuplicates();
    return sources;
}

/// What a source includes, and what a form makes its ui_ header include.
QList<Include> includesOf(const QString &fileName)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"((?:^\s*#\s*include\s*|<header[^>]*>)([<"]?)([^<>"\n]+))"),
        QRegularExpression::MultilineOption);
    QList<Include> includes;
    auto matches = pattern.globalMatch(contentOf(fileName));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        includes.append({match.captured(2), match.captured(1) == QLatin1String("\"")});
    }
    return includes;
}

bool mayInclude(const Layer &layer, const Include &include)
{
    const Layer *included = layerOf(include.path);
    if (!included) // a library's header, or one of ours that is not named by its folder
        return !include.isQuoted;
    return included == &layer || layer.uses.contains(included->folder);
}

/// "file includes path" for each include that the order of the layers forbids.
QStringList wrongIncludes(const QString &root)
{
    QStringList wrong;
    const QStringList sources = sourcesUnder(root);
    for (const QString &source : sources) {
        const QList<Include> includes = includesOf(root + QLatin1Char('/') + source);
        for (const Include &include : includes) {
            if (!mayInclude(*layerOf(source), include))
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
            return words(qPrintable(line.section(QLatin1Char('='), 1)));
    }
    return {QStringLiteral("(no such target)")};
}

} // namespace

class TestLayers : public QObject
{
    Q_OBJECT

private slots:
    void layerUsesOnlyLayersBelowIt();
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

void TestLayers::layerUsesOnlyLayersBelowIt()
{
    QStringList below;
    for (const Layer &layer : layers) {
        for (const QString &used : layer.uses)
            QVERIFY2(below.contains(used), qPrintable(layer.folder + " uses " + used));
        below.append(layer.folder);
    }
}

void TestLayers::everyLayerIsLookedThrough_data()
{
    QTest::addColumn<QString>("folder");
    for (const Layer &layer : layers)
        QTest::newRow(qPrintable(layer.folder)) << layer.folder;
}

void TestLayers::everyLayerIsLookedThrough()
{
    QFETCH(QString, folder);
    const QStringList sources = sourcesUnder(QStringLiteral(Z7_SOURCE_DIR));
    QVERIFY(std::any_of(sources.cbegin(), sources.cend(),
        [&folder](const QString &source) { return layerOf(source)->folder == folder; }));
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

    const auto row = [](const char *target, const char *allowed) { QTest::newRow(target) << words(allowed); };
    row("protocol", "Qt5::Core");
    row("services", "Qt5::Core");
    row("model", "protocol services Qt5::SerialPort");
    row("comm", "protocol model services Qt5::SerialPort");
    row("pages", "model services Qt5::Widgets Qwt::Qwt");
    row("maincontrol", "pages comm");
    row("shell", "maincontrol pages");
    row("Z7ConfigTool", "shell z7resources");
    row("simulator", "Qt5::Core Threads::Threads");
    row("z7sim", "simulator");
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
    const QStringList sources = sourcesUnder(root);
    for (const QString &source : sources) {
        if (!isInside(source, QStringLiteral("control/services"))
            && contentOf(root + source).contains(definition))
            elsewhere.append(source);
    }
    QCOMPARE(elsewhere, QStringList({QStringLiteral("model/servicesdefinitions.cpp")}));
}

QTEST_APPLESS_MAIN(TestLayers)
#include "tst_layers.moc"
