#include "benchmarks/bars.h"
#include "benchmarks/benchmarkgroups.h"
#include "benchmarks/figures.h"
#include "benchmarks/heap.h"
#include "benchmarks/redraw.h"
#include "benchmarks/workbench.h"
#include "control/courserecorder.h"
#include "control/maincontroller.h"
#include "control/services/language.h"
#include "pages/pagefactory.h"
#include "shell/courseplot.h"

#include <QElapsedTimer>

#include <qwt_plot_curve.h>

namespace {

constexpr int repetitions = 100;
constexpr int heapSteps = 10000;
constexpr qint64 staleAfterMs = 2600;

/// What the bus tells at the end of a pass that has read the first drive.
void record(Workbench &bench)
{
    emit bench.controller().knowledge().driveRead(bench.controller().deviceIds().constFirst(), staleAfterMs);
}

double thousandRecordingsMs(Workbench &bench)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 1000; ++i)
        record(bench);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// What is kept of a record, beside all else that one costs up to the redraw of the page. One alone is too
/// short for the clock.
void benchRecording(int page)
{
    Workbench bench(1);
    bench.showPage(page);
    const CourseRecorder recorder(bench.controller());
    for (int i = 0; i < LiveCourse::mostValues; ++i)
        record(bench);
    Comparison recordings;
    for (int i = 0; i < repetitions; ++i) {
        const Z7Device polled = bench.nextRecord();
        const double floorMs = Redraw({}).ms([&] { bench.deliver(polled); });
        recordings.add(thousandRecordingsMs(bench), floorMs);
    }
    printFigure(QStringLiteral("recording of 1,000 records, %1").arg(pageTitle(page)),
        recordings.ratios().median(), Bars::recordings, QStringLiteral("× one record"), recordings.remark());
}

void benchHeap()
{
    Workbench bench(1);
    bench.showPage(PageNumber::DeviceStatus);
    const CourseRecorder recorder(bench.controller());
    const double growth = heapGrowth(2 * LiveCourse::mostValues, heapSteps, [&bench] { record(bench); });
    printFigure(QStringLiteral("heap growth over 10,000 steps, recording"), growth, Bars::heapPerStep,
        QStringLiteral("bytes a record"));
}

/// A full course, and the plots that draw its speed: that of the window, and a plain one that draws each
/// value.
class DrawnCourse
{
public:
    explicit DrawnCourse(Workbench &bench)
        : m_plot(m_courses, courseQuantities().front(), Qt::blue, CourseMarks::NamesShown)
    {
        const qint64 distanceMs = LiveCourse::spanMs / LiveCourse::mostValues;
        Z7Device record = bench.nextRecord();
        QVector<QPointF> points;
        for (int i = 0; i < LiveCourse::mostValues; ++i) {
            record.actualSpeed = i * 7919 % 3000; // restless
            m_courses.take(record, i * distanceMs, staleAfterMs);
            points.append(QPointF(double(i * distanceMs), record.actualSpeed));
        }
        m_curve.setSamples(points);
        m_curve.setPen(Qt::blue, 1.5);
        m_curve.setRenderHint(QwtPlotItem::RenderAntialiased, true);
        m_curve.attach(&m_plain);
        m_plot.setDrive(m_courses.ids().constFirst());
        for (QwtPlot *plot : {static_cast<QwtPlot *>(&m_plot), &m_plain}) {
            plot->setAxisScale(QwtPlot::xBottom, 0, double(LiveCourse::spanMs));
            plot->resize(1200, 120);
            plot->show();
        }
        settle();
    }

    double drawMs() { return replotMs(m_plot); }
    double plainMs() { return replotMs(m_plain); }

private:
    static double replotMs(QwtPlot &plot)
    {
        return Redraw({plot.canvas()}).ms([&plot] { plot.replot(); });
    }

    LiveCourses m_courses;
    QwtPlotCurve m_curve; ///< leaves its plot, which goes before it
    CoursePlot m_plot;
    QwtPlot m_plain;
};

void benchDrawing()
{
    Workbench bench(1);
    DrawnCourse course(bench);
    Comparison drawings;
    for (int i = 0; i < repetitions; ++i) {
        const double floorMs = course.plainMs();
        drawings.add(course.drawMs(), floorMs);
    }
    printFigure(QStringLiteral("drawing a full hour of one live value"), drawings.ratios().median(),
        Bars::courseDrawing, QStringLiteral("× plain curve"), drawings.remark());
}

} // namespace

void runCourseBenchmarks()
{
    benchRecording(PageNumber::DeviceStatus);
    benchRecording(PageNumber::ParameterTable);
    benchHeap();
    benchDrawing();
}
