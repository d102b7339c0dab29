// The program can be built wherever Qt is: of the system it knows what stands in one source.

#include "tests/architecture/layertable.h"
#include "tests/architecture/sources.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

/// True for a header of this project, of Qt, of Qwt or of the C++ library, whose names have no ending. All
/// others belong to some system or compiler.
bool isEverywhere(const Include &include)
{
    static const QRegularExpression known(
        QStringLiteral("^(?:Q[A-Z]\\w+|Qt\\w+|Qt\\w+/Q\\w+|qwt_\\w+\\.h|[a-z_]+)$"));
    return include.isQuoted || known.match(include.path).hasMatch();
}

LayerTable layerTable()
{
    return LayerTable(contentOf(QStringLiteral(Z7_SOURCE_DIR "/ARCHITECTURE.md")));
}

QStringList foldersOfProgram()
{
    return layerTable().folders().filter(QRegularExpression(QStringLiteral("^(?!simulator)")));
}

/// The sources of the program that include headers which are not everywhere.
QStringList sourcesForOneSystem()
{
    const QString root = QStringLiteral(Z7_SOURCE_DIR);
    QStringList found;
    const QStringList sources = sourcesUnder(root, foldersOfProgram());
    for (const QString &source : sources) {
        const QList<Include> includes = includesOf(root + '/' + source);
        if (!source.endsWith(".ui") && !std::all_of(includes.begin(), includes.end(), isEverywhere))
            found.append(source);
    }
    return found;
}

} // namespace

class TestPortability : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void headersOfSystemAreToldApart_data();
    void headersOfSystemAreToldApart();
    void oneSourceOfProgramKnowsItsSystem();
};

void TestPortability::initTestCase()
{
    const QString error = layerTable().error();
    QVERIFY2(error.isEmpty(), qPrintable("ARCHITECTURE.md: " + error));
}

void TestPortability::headersOfSystemAreToldApart_data()
{
    QTest::addColumn<bool>("everywhere");
    for (const char *header : {"unistd.h", "fcntl.h", "termios.h", "poll.h", "signal.h", "dlfcn.h",
             "sys/stat.h", "sys/ioctl.h", "linux/serial.h", "windows.h", "io.h"})
        QTest::newRow(header) << false;
    for (const char *header : {"QByteArray", "QtTest", "QtCore/QFile", "QtGlobal", "qwt_plot.h", "memory",
             "cstdio", "type_traits", "filesystem"})
        QTest::newRow(header) << true;
}

void TestPortability::headersOfSystemAreToldApart()
{
    QTEST(isEverywhere({QString::fromLatin1(QTest::currentDataTag()), false}), "everywhere");
}

void TestPortability::oneSourceOfProgramKnowsItsSystem()
{
    QCOMPARE(sourcesForOneSystem(), QStringList("control/services/platform_posix.cpp"));
}

QTEST_APPLESS_MAIN(TestPortability)

#include "tst_portability.moc"
