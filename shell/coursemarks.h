#pragma once

#include <qwt_plot_item.h>

class CourseSeries;

/// Upright lines where operations ended, with their names where those find room beside each other.
class CourseMarks : public QwtPlotItem
{
public:
    enum Names { NamesHidden, NamesShown };

    /// Those of the series' drive; the series outlives the lines.
    CourseMarks(const CourseSeries &series, Names names);

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
        const QRectF &canvasRect) const override;

private:
    const CourseSeries &m_series;
    const Names m_names;
};
