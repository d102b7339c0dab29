#include "benchmarks/windowbenchmarks.h"

#include "benchmarks/figures.h"
#include "benchmarks/workbench.h"
#include "control/maincontroller.h"
#include "control/services/language.h"
#include "pages/pagefactory.h"
#include "shell/maincontentwidget.h"
#include "shell/mainwindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <ctime>
#include <map>

namespace {

constexpr int manyDrives = 32;
constexpr int manyRecords = 10000;
constexpr int repetitions = 100;
constexpr int starts = 9;
constexpr int rounds = 20;

template<typename Action>
double msToRedraw(Action action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    QCoreApplication::processEvents();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void benchTree()
{
    Workbench bench(manyDrives);
    const QList<int> all = bench.controller().deviceIds();
    Samples rebuilds;
    Samples refreshes;
    for (int i = 0; i < repetitions; ++i) {
        // A list without its last drive is another tree, so both calls build it from nothing.
        rebuilds.add(msToRedraw([&] { bench.content().rebuildTree(all.mid(0, manyDrives - 1)); }));
        rebuilds.add(msToRedraw([&] { bench.content().rebuildTree(all); }));
        refreshes.add(msToRedraw([&] { bench.content().rebuildTree(all); }));
    }
    printFigure(QStringLiteral("tree rebuild, 32 drives, median"), rebuilds.median(), 16, "ms",
        QStringLiteral("p99 %1 ms, marks only %2 ms")
            .arg(rebuilds.p99(), 0, 'f', 2)
            .arg(refreshes.median(), 0, 'f', 2));
}

double keystrokesP99(QLineEdit *field)
{
    Samples samples;
    for (int i = 0; i < repetitions; ++i) {
        samples.add(msToRedraw([&] { QTest::keyClick(field, '1'); }));
        samples.add(msToRedraw([&] { QTest::keyClick(field, Qt::Key_Backspace); }));
    }
    return samples.p99();
}

void benchKeystrokes(int drives, PageNumber::Number page)
{
    Workbench bench(drives);
    bench.showPage(page);
    QLineEdit *field = bench.userField();
    field->setFocus();
    const QString what =
        QStringLiteral("keystroke, %1, %2 drive(s), %3, p99").arg(pageTitle(page)).arg(drives);
    printFigure(what.arg(QStringLiteral("fresh")), keystrokesP99(field), 16, "ms");
    for (int i = 0; i < manyRecords; ++i) {
        bench.deliverRecord();
        QCoreApplication::processEvents();
    }
    printFigure(what.arg(QStringLiteral("after 10,000 updates")), keystrokesP99(field), 50, "ms");
}

void benchCurve()
{
    Workbench bench(1);
    bench.showPage(PageNumber::CalibrationRotations);
    bench.deliverRecord();
    QLineEdit *field = bench.userField();
    field->setFocus();
    printFigure(QStringLiteral("keystroke that redraws a curve, p99"), keystrokesP99(field), 5, "ms");
}

/// From the click to the painted page, coming from the fullest page, the parameter table, or going there.
void benchPages()
{
    Workbench bench(1);
    bench.deliverRecord();
    std::map<int, Samples> byPage;
    const auto show = [&bench, &byPage](
                          int number) { byPage[number].add(msToRedraw([&] { bench.showPage(number); })); };
    for (int i = 0; i < rounds; ++i) {
        for (int number = PageNumber::Network; number < PageNumber::RemoteControl; ++number) {
            show(number);
            show(PageNumber::ParameterTable);
        }
    }
    for (const auto &page : byPage)
        printFigure(QStringLiteral("showing %1, p99").arg(pageTitle(page.first)), page.second.p99(), 50, "ms",
            QStringLiteral("median %1 ms, the first time %2 ms")
                .arg(page.second.median(), 0, 'f', 1)
                .arg(page.second.first(), 0, 'f', 1));
}

qint64 monotonicNs()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}

double startMs(const QString &window)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {window, QString::number(monotonicNs())});
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed().toDouble();
}

void benchStart()
{
    Samples empty;
    Samples tool;
    for (int i = 0; i < starts; ++i) {
        empty.add(startMs(QStringLiteral("--empty-window")));
        tool.add(startMs(QStringLiteral("--tool-window")));
    }
    printFigure(QStringLiteral("start to first painted window"), tool.median() / empty.median(), 3,
        QStringLiteral("× empty QMainWindow"),
        QStringLiteral("%1 ms, empty %2 ms").arg(tool.median(), 0, 'f', 0).arg(empty.median(), 0, 'f', 0));
}

/// Prints the time when the window has been painted, and ends the program.
class FirstPaint : public QObject
{
public:
    explicit FirstPaint(qint64 startedNs)
        : m_startedNs(startedNs)
    {
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QTimer::singleShot(0, this, [this] {
                QTextStream(stdout) << static_cast<double>(monotonicNs() - m_startedNs) / 1e6 << '\n';
                QCoreApplication::quit();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    const qint64 m_startedNs;
    bool m_painted = false;
};

template<typename Window>
int showWindow(qint64 startedNs)
{
    FirstPaint firstPaint(startedNs);
    Window window;
    window.installEventFilter(&firstPaint);
    window.showMaximized();
    return QApplication::exec();
}

} // namespace

int showEmptyWindow(qint64 startedNs)
{
    return showWindow<QMainWindow>(startedNs);
}

int showToolWindow(qint64 startedNs)
{
    return showWindow<MainWindow>(startedNs);
}

void runWindowBenchmarks()
{
    benchTree();
    benchKeystrokes(1, PageNumber::ParameterTable);
    benchKeystrokes(manyDrives, PageNumber::ParameterTable);
    benchKeystrokes(1, PageNumber::Positioning);
    benchStart();
}

void runPageBenchmarks()
{
    benchCurve();
    benchPages();
}
