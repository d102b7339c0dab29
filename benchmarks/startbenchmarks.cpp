#include "benchmarks/startbenchmarks.h"

#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "benchmarks/heap.h"
#include "shell/mainwindow.h"

#include <QApplication>
#include <QEvent>
#include <QProcess>
#include <QTextStream>
#include <QTimer>

#include <cmath>
#include <ctime>

namespace {

constexpr int pairs = 61;

qint64 monotonicNs()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000000000LL + now.tv_nsec;
}

/// What a start has told; NaN if it has told nothing.
struct Start
{
    double ms = NAN;
    double heapMb = NAN;
};

Start startOf(const QString &window)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {window, QString::number(monotonicNs())});
    process.waitForFinished();
    Start start;
    qint64 heap = 0;
    QTextStream output(process.readAllStandardOutput());
    output >> start.ms >> heap;
    if (output.status() != QTextStream::Ok)
        return {};
    start.heapMb = static_cast<double>(heap) / (1024 * 1024);
    return start;
}

/// Prints what has been measured when the window has been painted, and ends the program.
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
            QTimer::singleShot(0, this, [this] { tell(); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void tell() const
    {
        QTextStream(stdout) << static_cast<double>(monotonicNs() - m_startedNs) / 1e6 << ' ' << heapBytes();
        QCoreApplication::quit();
    }

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

void runStartBenchmarks()
{
    Comparison starts;
    Samples heapsMb;
    Samples emptyHeapsMb;
    // The first pair only brings the files into memory.
    for (int i = 0; i <= pairs; ++i) {
        const Start empty = startOf(QStringLiteral("--empty-window"));
        const Start tool = startOf(QStringLiteral("--tool-window"));
        if (i == 0)
            continue;
        starts.add(tool.ms, empty.ms);
        heapsMb.add(tool.heapMb);
        emptyHeapsMb.add(empty.heapMb);
    }
    printFigure(QStringLiteral("start to the first painted window, %1 pairs").arg(pairs),
        starts.ratios().median(), Bars::start, QStringLiteral("× empty QMainWindow"), starts.remark());
    printFigure(QStringLiteral("heap after the first painted window"), heapsMb.median(), Bars::startHeapMb,
        QStringLiteral("MB"),
        QStringLiteral("empty QMainWindow %1 MB").arg(emptyHeapsMb.median(), 0, 'f', 2));
}
