#include "shell/courseplot.h"

#include "control/livecourses.h"
#include "pages/plainnumbers.h"
#include "shell/coursecurve.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QToolTip>

#include <qwt_picker_machine.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_picker.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>

#include <cmath>

namespace {

const QColor gridColour(220, 220, 220);
constexpr int mostScaleSteps = 4;
constexpr int leastHeight = 48;
/// What the ticks need beside the numbers.
constexpr int tickWidth = 14;
/// How near the pointer has to be to what it asks for.
constexpr int nearbyPixels = 4;

/// Marks a range of time with the mouse: from top to bottom, wherever the pointer goes.
class RangePicker : public QwtPlotPicker
{
public:
    explicit RangePicker(QWidget *canvas)
        : QwtPlotPicker(QwtPlot::xBottom, QwtPlot::yLeft, RectRubberBand, AlwaysOff, canvas)
    {
        setStateMachine(new QwtPickerDragRectMachine);
        setRubberBandPen(QPen(Qt::black, 1, Qt::DotLine));
    }

protected:
    QPolygon adjustedPoints(const QPolygon &points) const override
    {
        if (points.size() != 2)
            return points;
        const QRect area = pickArea().boundingRect().toRect();
        return QPolygon(
            QVector<QPoint> {{points.first().x(), area.top()}, {points.last().x(), area.bottom()}});
    }
};

} // namespace

CoursePlot::CoursePlot(const LiveCourses &courses, const CourseQuantity &quantity, const QColor &colour,
    CourseMarks::Names names, QWidget *parent)
    : QwtPlot(parent)
    , m_quantity(quantity)
    , m_series(new CourseSeries(courses, quantity))
{
    setUpScales();
    auto *grid = new QwtPlotGrid;
    grid->setPen(gridColour, 1);
    grid->attach(this);
    (new CourseCurve(m_series, colour))->attach(this);
    (new CourseMarks(*m_series, names))->attach(this);
    connect(new RangePicker(canvas()), SIGNAL(selected(QRectF)), SIGNAL(rangeDrawn(QRectF)));
    canvas()->installEventFilter(this);
    // The keys of the window work without it.
    canvas()->setFocusPolicy(Qt::NoFocus);
    setFocusPolicy(Qt::NoFocus);
}

void CoursePlot::setUpScales()
{
    setCanvasBackground(Qt::white);
    static_cast<QwtPlotCanvas *>(canvas())->setFrameStyle(QFrame::NoFrame);
    plotLayout()->setCanvasMargin(0);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    setMinimumHeight(leastHeight);
    // The last time below the plots reaches half of its width beyond them.
    setContentsMargins(0, 0, fontMetrics().horizontalAdvance(QStringLiteral("00:00:00")) / 2 + 1, 0);
    enableAxis(xBottom, false);
    auto *numbers = new PlainNumbers;
    // Plots one above the other begin at the same place.
    numbers->setMinimumExtent(fontMetrics().horizontalAdvance(QStringLiteral("-32768.8")) + tickWidth);
    setAxisScaleDraw(yLeft, numbers);
    setAxisFont(yLeft, font());
    setAxisMaxMinor(yLeft, 0);
}

void CoursePlot::setDrive(int deviceId)
{
    m_series->setDrive(deviceId);
    const DriveCourse *drive = m_series->drive();
    setAccessibleName(drive ? m_quantity.title(drive->version) : m_quantity.text());
}

void CoursePlot::showTimes(const QwtScaleDiv &times)
{
    setAxisScaleDiv(xBottom, times);
    fitScale(m_series->valuesWithin(times.interval()));
    replot();
}

void CoursePlot::fitScale(QwtInterval values)
{
    if (!values.isValid())
        values.setInterval(0, 1);
    if (values.width() == 0)
        values.setInterval(values.minValue() - 1, values.maxValue() + 1);
    double least = values.minValue();
    double greatest = values.maxValue();
    double step = 0;
    // Numbers stand at least their own height apart.
    const int room = canvas()->height() / (2 * fontMetrics().height());
    QwtLinearScaleEngine().autoScale(qBound(1, room, mostScaleSteps), least, greatest, step);
    setAxisScale(yLeft, least, greatest, step);
}

bool CoursePlot::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != canvas() || event->type() != QEvent::ToolTip)
        return QwtPlot::eventFilter(watched, event);
    const auto *help = static_cast<QHelpEvent *>(event);
    QToolTip::showText(help->globalPos(), textAt(help->x()), canvas());
    return true;
}

QString CoursePlot::textAt(int x) const
{
    const QString mark = markAt(x);
    return mark.isEmpty() ? valueAt(x) : mark;
}

QString CoursePlot::markAt(int x) const
{
    const LiveCourse *course = m_series->course();
    if (!course)
        return QString();
    const QwtScaleMap map = canvasMap(xBottom);
    for (const CourseMark &mark : course->marks()) {
        if (std::abs(map.transform(double(mark.timeMs)) - x) <= nearbyPixels)
            return mark.text;
    }
    return QString();
}

QString CoursePlot::valueAt(int x) const
{
    const DriveCourse *drive = m_series->drive();
    if (!drive)
        return QString();
    const QwtScaleMap map = canvasMap(xBottom);
    const int index = drive->course.firstFrom(qint64(map.invTransform(x - nearbyPixels)));
    if (index == drive->course.count())
        return QString();
    const LiveValues &values = drive->course.at(index);
    if (map.transform(double(values.timeMs)) > x + nearbyPixels)
        return QString();
    const QString time = QDateTime::fromMSecsSinceEpoch(values.timeMs).toString(QStringLiteral("hh:mm:ss"));
    return QStringLiteral("%1  %2 %3")
        .arg(time, m_quantity.number(m_quantity.valueOf(values)), m_quantity.unit(drive->version));
}
