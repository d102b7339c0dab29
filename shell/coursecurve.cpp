#include "shell/coursecurve.h"

#include "control/livecourses.h"

#include <QPainter>

#include <qwt_clipper.h>
#include <qwt_painter.h>
#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// A hairline of one pixel would all but vanish on a fine screen.
constexpr double penWidth = 1.5;

/// So many values on one column of pixels are still drawn one by one.
constexpr int fewOnColumn = 3;

/// Draws a line through values that follow each other without a gap. Those that crowd on a column of pixels
/// become one stroke from the least to the greatest.
class CourseLine
{
public:
    /// Canvas and values are in pixels.
    CourseLine(QPainter *painter, const QRectF &canvas, const QColor &colour)
        : m_painter(painter)
        , m_canvas(canvas.adjusted(-outside, -outside, outside, outside))
        , m_colour(colour)
    {
        painter->setPen(QPen(colour, penWidth));
        painter->setBrush(colour);
    }

    void add(const QPointF &point)
    {
        if (m_count > 0 && std::floor(point.x()) != std::floor(m_last.x()))
            endColumn();
        m_least = m_count > 0 ? std::min(m_least, point.y()) : point.y();
        m_greatest = m_count > 0 ? std::max(m_greatest, point.y()) : point.y();
        if (m_count++ < fewOnColumn)
            m_onColumn.append(point);
        m_last = point;
    }

    /// What comes next follows a gap.
    void end()
    {
        endColumn();
        if (!m_isAfterStroke)
            drawPoints();
        m_points.clear();
        m_isAfterStroke = false;
    }

private:
    void endColumn()
    {
        if (m_count == 0)
            return;
        const bool isCrowded = m_count > fewOnColumn;
        if (isCrowded) {
            leadToStroke();
            drawStroke();
            m_points.clear();
            m_points.append(m_last);
        } else {
            m_points += m_onColumn;
        }
        m_isAfterStroke = isCrowded;
        m_onColumn.clear();
        m_count = 0;
    }

    /// From a stroke beside this one, it is made longer; from anything else, a line leads to it.
    void leadToStroke()
    {
        if (m_isAfterStroke) {
            m_least = std::min(m_least, m_points.last().y());
            m_greatest = std::max(m_greatest, m_points.last().y());
        } else if (!m_points.isEmpty()) {
            m_points.append(m_onColumn.first());
            drawPoints();
        }
    }

    void drawStroke()
    {
        const double height = std::max(penWidth, m_greatest - m_least);
        const QRectF stroke(std::floor(m_last.x()), m_least, 1, height);
        m_painter->fillRect(stroke & m_canvas, m_colour);
    }

    void drawPoints()
    {
        if (m_points.size() == 1) // values between two gaps
            m_painter->drawEllipse(m_points.first(), penWidth, penWidth);
        else if (!m_points.isEmpty())
            QwtPainter::drawPolyline(m_painter, QwtClipper::clipPolygonF(m_canvas, m_points));
    }

    /// Where lines may end without being seen to.
    static constexpr double outside = 9;

    QPainter *m_painter;
    const QRectF m_canvas;
    const QColor m_colour;
    QPolygonF m_points; ///< not drawn yet; behind a stroke its last value alone
    bool m_isAfterStroke = false;

    int m_count = 0; ///< of the values on the present column
    QPolygonF m_onColumn; ///< the first few of them
    double m_least = 0;
    double m_greatest = 0;
    QPointF m_last;
};

} // namespace

const DriveCourse *CourseSeries::drive() const
{
    return m_courses.find(m_deviceId);
}

const LiveCourse *CourseSeries::course() const
{
    return drive() ? &drive()->course : nullptr;
}

QPointF CourseSeries::pointOf(const LiveValues &values) const
{
    return {double(values.timeMs), m_quantity.valueOf(values)};
}

size_t CourseSeries::size() const
{
    const LiveCourse *values = course();
    return values ? values->count() : 0;
}

QPointF CourseSeries::sample(size_t index) const
{
    return pointOf(course()->at(int(index)));
}

QRectF CourseSeries::boundingRect() const
{
    return qwtBoundingRect(*this);
}

QwtInterval CourseSeries::valuesWithin(const QwtInterval &times) const
{
    QwtInterval values;
    const LiveCourse *shown = course();
    if (!shown)
        return values;
    const int end = shown->firstFrom(qint64(times.maxValue()) + 1);
    for (int i = shown->firstFrom(qint64(times.minValue())); i < end; ++i) {
        const double value = m_quantity.valueOf(shown->at(i));
        values |= QwtInterval(value, value);
    }
    return values;
}

CourseCurve::CourseCurve(CourseSeries *series, const QColor &colour)
    : m_series(series)
{
    setData(series);
    setPen(colour, penWidth);
    setRenderHint(QwtPlotItem::RenderAntialiased, true);
}

void CourseCurve::drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
    const QRectF &canvasRect, int from, int to) const
{
    Q_UNUSED(from)
    Q_UNUSED(to)
    const LiveCourse *course = m_series->course();
    if (!course)
        return;
    CourseLine line(painter, canvasRect, pen().color());
    // One more on each side, to which the lines lead.
    const int begin = std::max(0, course->firstFrom(qint64(xMap.s1())) - 1);
    const int end = std::min(course->count(), course->firstFrom(qint64(xMap.s2()) + 1) + 1);
    for (int i = begin; i < end; ++i) {
        const LiveValues &values = course->at(i);
        if (values.isAfterGap)
            line.end();
        line.add(QwtScaleMap::transform(xMap, yMap, m_series->pointOf(values)));
    }
    line.end();
}
