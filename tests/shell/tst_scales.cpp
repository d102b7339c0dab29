// The window on a scaled desktop: everything fits on a screen of 1920 by 1080 dots and nothing is cut, and
// pictures keep their shape.
//
// A process has one scale, so that each row runs this program anew with a scale and the word "scaled".

#include "tests/shell/everyview.h"
#include "tests/shell/readable.h"
#include "tests/support/workingfolder.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

namespace {

constexpr QSize screenDots(1920, 1080);
/// The frame of a window and the bar of the desktop, in dots of the scale.
constexpr int desktopsOwn = 60;

constexpr int whole = 0;

/// What a person on this scaled desktop finds cut or outside of the screen.
QStringList faultsAtScale(double scale)
{
    const WorkingFolder folder;
    EveryView views("deutsch");
    const QSize screen(qFloor(screenDots.width() / scale), qFloor(screenDots.height() / scale) - desktopsOwn);
    views.window().resize(screen);
    QStringList faults;
    const auto look = [&](const QString &name, const QWidget &window) {
        for (const QString &text : Readable::cutTexts(window))
            faults.append(name + " | " + text);
        if (window.width() > screen.width() || window.height() > screen.height())
            faults.append(QString("%1 takes %2 x %3").arg(name).arg(window.width()).arg(window.height()));
    };
    if (!views.show(look))
        faults.append("not everything was shown");
    return faults;
}

} // namespace

class TestScales : public QObject
{
    Q_OBJECT

private slots:
    void everythingFitsAndIsWhole_data();
    void everythingFitsAndIsWhole();
};

void TestScales::everythingFitsAndIsWhole_data()
{
    QTest::addColumn<QString>("scale");
    for (const char *scale : {"1", "1.25", "1.5", "2"})
        QTest::newRow(scale) << QString(scale);
}

void TestScales::everythingFitsAndIsWhole()
{
    QFETCH(QString, scale);
    QProcess scaled;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", scale);
    scaled.setProcessEnvironment(environment);
    scaled.start(QCoreApplication::applicationFilePath(), {"scaled"});
    QVERIFY(scaled.waitForFinished(Person::patienceMs * 6));
    const QByteArray faults = scaled.readAllStandardOutput();
    QVERIFY2(scaled.exitStatus() == QProcess::NormalExit && scaled.exitCode() == whole, faults);
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    if (QCoreApplication::arguments().value(1) == "scaled") {
        QFont font = QApplication::font();
        font.setPointSize(10);
        QApplication::setFont(font);
        const QStringList faults = faultsAtScale(application.devicePixelRatio());
        printf("%s", qPrintable(faults.join('\n')));
        return faults.isEmpty() ? whole : 1;
    }
    TestScales test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scales.moc"
