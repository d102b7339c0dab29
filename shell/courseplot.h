#pragma once

#include "control/coursequantities.h"
#include "shell/coursemarks.h"

#include <qwt_interval.h>
#include <qwt_plot.h>

class CourseSeries;
class LiveCourses;

/// The course of one quantity, with a scale of its own. The times have none: it stands once below all plots.
class CoursePlot : public QwtPlot
{
    Q_OBJECT

public:
    /// `courses` outlives the plot.
    CoursePlot(const LiveCourses &courses, const CourseQuantity &quantity, const QColor &colour,
        CourseMarks::Names names, QWidget *parent = nullptr);

    const CourseQuantity &quantity() const { return m_quantity; }
    /// Shows a drive from the next drawing on; one without a course leaves the plot empty.
    void setDrive(int deviceId);
    /// Draws what lies within these times, in ms since 1970 in UTC, as high as the values in them need.
    void showTimes(const QwtScaleDiv &times);

signals:
    /// A person drew a range over the plot; the height of the rectangle means nothing.
    void rangeDrawn(const QRectF &range);

protected:
    /// Tells what is under the pointer.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpScales();
    void fitScale(QwtInterval values);
    QString textAt(int x) const;
    QString markAt(int x) const;
    QString valueAt(int x) const;

    const CourseQuantity &m_quantity;
    CourseSeries *const m_series; ///< owned by the curve
};
