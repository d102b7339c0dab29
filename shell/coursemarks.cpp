#include "shell/coursemarks.h"

#include "shell/coursecurve.h"

#include <QPainter>

#include <qwt_scale_map.h>

#include <algorithm>

namespace {

const QColor lineColour(90, 90, 90);
/// Lets the curve behind a name be guessed.
const QColor groundColour(255, 255, 255, 190);
constexpr int distance = 3;
constexpr int mostLetters = 28;
constexpr double aboveTheCurve = 30;

/// Names in rows, each in the first row that is free where it belongs.
class NameRows
{
public:
    NameRows(QPainter *painter, const QRectF &area)
        : m_painter(painter)
        , m_metrics(painter->fontMetrics())
        , m_area(area)
        , m_rowEnds(int(area.height()) / m_metrics.height(), area.left())
    {
    }

    /// Beside the line at `x`, to its left where the area ends. Left out if no row is free.
    void add(const QString &name, double x)
    {
        const QString text =
            m_metrics.elidedText(name, Qt::ElideRight, mostLetters * m_metrics.averageCharWidth());
        const double width = m_metrics.horizontalAdvance(text);
        const bool fits = x + distance + width <= m_area.right();
        const double left = fits ? x + distance : x - distance - width;
        const auto row = std::find_if(
            m_rowEnds.begin(), m_rowEnds.end(), [left](double rowEnd) { return rowEnd <= left; });
        if (row == m_rowEnds.end())
            return;
        *row = left + width + distance;
        draw(text,
            {left, m_area.top() + int(row - m_rowEnds.begin()) * m_metrics.height(), width,
                double(m_metrics.height())});
    }

private:
    void draw(const QString &text, const QRectF &place)
    {
        m_painter->fillRect(place, groundColour);
        m_painter->setPen(Qt::black);
        m_painter->drawText(place, Qt::AlignLeft, text);
    }

    QPainter *m_painter;
    const QFontMetrics m_metrics;
    const QRectF m_area;
    QVector<double> m_rowEnds;
};

} // namespace

CourseMarks::CourseMarks(const CourseSeries &series, Names names)
    : m_series(series)
    , m_names(names)
{
    setZ(aboveTheCurve);
}

void CourseMarks::draw(
    QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &, const QRectF &canvasRect) const
{
    const LiveCourse *course = m_series.course();
    if (!course)
        return;
    QVector<QPair<double, QString>> shown;
    for (const CourseMark &mark : course->marks()) {
        if (xMap.s1() <= mark.timeMs && mark.timeMs <= xMap.s2())
            shown.append({xMap.transform(double(mark.timeMs)), mark.text});
    }
    painter->setPen(QPen(lineColour, 1, Qt::DashLine));
    for (const auto &mark : qAsConst(shown))
        painter->drawLine(QPointF(mark.first, canvasRect.top()), QPointF(mark.first, canvasRect.bottom()));
    if (m_names == NamesHidden)
        return;
    NameRows rows(painter, canvasRect);
    for (const auto &mark : qAsConst(shown))
        rows.add(mark.second, mark.first);
}
