#pragma once

#include "control/coursequantities.h"

#include <qwt_interval.h>
#include <qwt_plot_curve.h>
#include <qwt_series_data.h>

class LiveCourses;
struct DriveCourse;

/// One quantity of a drive's course as points, read where the values lie. A drive without a course has none.
class CourseSeries : public QwtSeriesData<QPointF>
{
public:
    /// `courses` outlives the series.
    CourseSeries(const LiveCourses &courses, const CourseQuantity &quantity)
        : m_courses(courses)
        , m_quantity(quantity)
    {
    }

    void setDrive(int deviceId) { m_deviceId = deviceId; }
    /// Both null if the drive has none, and valid until the next record comes.
    const DriveCourse *drive() const;
    const LiveCourse *course() const;
    /// The least and the greatest value between two times; invalid if there are none.
    QwtInterval valuesWithin(const QwtInterval &times) const;
    QPointF pointOf(const LiveValues &values) const;

    size_t size() const override;
    QPointF sample(size_t index) const override;
    QRectF boundingRect() const override;

private:
    const LiveCourses &m_courses;
    const CourseQuantity &m_quantity;
    int m_deviceId = 0;
};

/// Draws a series with its gaps, an hour of it at once and without losing a peak: what crowds on a column of
/// pixels is drawn as one stroke.
class CourseCurve : public QwtPlotCurve
{
public:
    /// Takes the series over.
    CourseCurve(CourseSeries *series, const QColor &colour);

protected:
    void drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
        const QRectF &canvasRect, int from, int to) const override;

private:
    const CourseSeries *const m_series; ///< owned by the base class
};
