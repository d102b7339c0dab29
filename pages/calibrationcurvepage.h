#pragma once

#include "pages/datawidget.h"

#include <QVector>

#include <array>
#include <memory>

class FieldGuide;
class QLabel;
class QLineEdit;
class QSignalMapper;
class QVBoxLayout;
class QwtPlot;
class QwtPlotCurve;

namespace Ui {
class CalibrationCurvePage;
}

/// What tells one scaling curve of the analogue input from another: its parameters, limits and texts.
struct CalibrationCurve
{
    TextSection texts;
    std::array<int, 3> xParams; ///< parameters of points 1 to 3
    std::array<int, 5> yParams; ///< parameters of points 0 to 4
    int lowestY;
    int highestY;
    const char *titleKey;
    const char *title;
    const char *rowKey; ///< followed by the number of the point
    const char *rowName; ///< likewise
    const char *description;
};

/// A scaling curve of the analogue input: five support points, X being the raw reading of the 10-bit input.
/// The drive interpolates; the page edits the points and draws what the drive holds and what the user is
/// about to write. The first point lies at 0 and the last at 1023; the eight other numbers are parameters.
///
/// A point that the user has not touched lies on the drive's curve. Whether X rises is not judged here.
class CalibrationCurvePage : public Z7DataWidget
{
    Q_OBJECT

public:
    ~CalibrationCurvePage() override;

    void clearUserValues() override;
    void initPage() override;
    void deviceUpdateFinished() override;
    void newDeviceParam(const Z7DeviceParam &param) override;
    void newUserParam(const Z7DeviceParam &param) override;

protected:
    CalibrationCurvePage(const CalibrationCurve &curve, QWidget *parent);

    /// Where a page adds what it has above the curve.
    QVBoxLayout *upperLayout() const;

public slots:
    void ParamChanged(int nParamID);

private:
    static constexpr int pointCount = 5;
    using Samples = std::array<double, pointCount>;

    /// One coordinate of one point, as the drive and as the user have it.
    struct Coordinate
    {
        int number; ///< parameter number; -1 for the two fixed ends
        QLineEdit *user;
        QLabel *deviceValue;
        FieldGuide *guide; ///< null for the two fixed ends
    };
    using Coordinates = std::array<Coordinate, pointCount>;

    Coordinates findCoordinates(const QString &axis, const QVector<int> &numbers) const;
    const Coordinate *coordinate(int number) const;
    void createPlot();
    QwtPlotCurve *createCurve(const QColor &colour, QLabel *swatch);
    void prepareFields();
    void prepareField(Coordinate &field, int bottom, int top);
    void setRowNames();
    void setAxisTexts();
    void setFieldTexts(const QString &axis, const Coordinates &coordinates, int bottom, int top);
    static void readSamples(const Coordinates &axis, Samples &deviceSamples, Samples &userSamples);
    void fitVerticalAxis();
    void updatePlot();

    const CalibrationCurve m_curve;
    QSignalMapper *const m_mapper; ///< made once; a new showing changes texts only
    QwtPlot *m_plot = nullptr;
    QwtPlotCurve *m_deviceCurve = nullptr;
    QwtPlotCurve *m_userCurve = nullptr;
    // The curves refer to these arrays, so that a keystroke copies nothing.
    Samples m_deviceX {};
    Samples m_deviceY {};
    Samples m_userX {};
    Samples m_userY {};
    const std::unique_ptr<Ui::CalibrationCurvePage> m_ui;
    Coordinates m_x {};
    Coordinates m_y {};
};
