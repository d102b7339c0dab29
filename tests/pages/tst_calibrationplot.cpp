// The polylines of the two scaling curves: what the drive holds, and what the user is about to write.

#include "tests/pages/curvepage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QLayout>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_point_data.h>
#include <qwt_symbol.h>

#include <cmath>
#include <optional>

namespace {

using Points = QVector<QPointF>;

Points pointsOf(const QwtPlotCurve *curve)
{
    Points points;
    for (size_t i = 0; i < curve->dataSize(); ++i)
        points.append(curve->sample(int(i)));
    return points;
}

/// Where the samples of a curve lie in memory.
QPair<const double *, const double *> arraysOf(const QwtPlotCurve *curve)
{
    const auto *data = dynamic_cast<const QwtCPointerData *>(curve->data());
    return data ? qMakePair(data->xData(), data->yData()) : QPair<const double *, const double *>();
}

} // namespace

class TestCalibrationPlot : public IsolatedTest
{
    Q_OBJECT

private slots:
    void initTestCase_data() { addCurvePages(); }

    void plotStandsAboveLegend();
    void plotHasNoFrameAndDrawsByItself();
    void axesHaveTheirFont();
    void axesBearUnitsWithoutBrackets();
    void curvesHaveTheirColours();
    void supportPointsAreMarkedWithCrosses();
    void curvesAreStraightLines();
    void legendShowsColours();

    void axesAreWideUntilThereAreValues();
    void verticalAxisIsNothingWithoutValues();
    void verticalAxisLeavesOneTenth_data();
    void verticalAxisLeavesOneTenth();
    void verticalAxisReachesOverBothCurves();
    void horizontalAxisIsRangeOfInput();

    void devicesCurveRunsThroughItsPoints();
    void pointsStayInTheirOrderWhenXFalls();
    void emptyUserFieldFollowsDevice();
    void typingMovesOnlyUsersCurve_data();
    void typingMovesOnlyUsersCurve();
    void emptiedFieldIsBackOnDevicesCurve();
    void loneSignIsDrawnAsZero();
    void recordWithoutParametersOfPageRedraws();
    void keystrokeIsSeenInDrawing();

    void restoredUserValuesAreDrawnAtNextUpdate();
    void clearedUserValuesAreDrawnUntilNextUpdate();
    void curvesReadSamplesWhereTheyLie();

private:
    void prepare() override;
    void tidyUp() override;

    const QwtPlotCurve *curveAt(int index) const
    {
        return static_cast<const QwtPlotCurve *>(plot->itemList(QwtPlotItem::Rtti_PlotCurve).at(index));
    }
    /// In whole numbers.
    QwtInterval verticalAxis() const
    {
        const QwtInterval axis = plot->axisInterval(QwtPlot::yLeft);
        return {std::round(axis.minValue()), std::round(axis.maxValue())};
    }
    /// Drawn first, below the user's.
    const QwtPlotCurve *deviceCurve() const { return curveAt(0); }
    const QwtPlotCurve *userCurve() const { return curveAt(1); }

    std::optional<ShownCurve> curve;
    QwtPlot *plot = nullptr;
};

void TestCalibrationPlot::prepare()
{
    curve.emplace(curvePage());
    curve->define();
    plot = curve->page->findChild<QwtPlot *>();
    QVERIFY(plot);
    QCOMPARE(plot->itemList(QwtPlotItem::Rtti_PlotCurve).size(), 2);
}

void TestCalibrationPlot::tidyUp()
{
    curve.reset();
}

void TestCalibrationPlot::plotStandsAboveLegend()
{
    const auto *layout = curve->page->findChild<QLayout *>("graphicLayout");
    QCOMPARE(layout->indexOf(plot), 0);
    QCOMPARE(plot->parentWidget(), curve->page.get());
}

void TestCalibrationPlot::plotHasNoFrameAndDrawsByItself()
{
    QCOMPARE(plot->frameStyle(), 0);
    QCOMPARE(plot->lineWidth(), 2);
    QCOMPARE(plot->midLineWidth(), 0);
    QVERIFY(plot->autoReplot());
}

void TestCalibrationPlot::axesHaveTheirFont()
{
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        QCOMPARE(plot->axisFont(axis).family(), QStringLiteral("MS Shell Dlg"));
        QCOMPARE(plot->axisFont(axis).weight(), int(QFont::Normal));
        QVERIFY(!plot->axisFont(axis).italic());
    }
}

void TestCalibrationPlot::axesBearUnitsWithoutBrackets()
{
    curve->showFor(curve->drive());
    QCOMPARE(plot->axisTitle(QwtPlot::xBottom).text(), QStringLiteral("Digit"));
    QCOMPARE(plot->axisTitle(QwtPlot::yLeft).text(), QString(curve->data.yUnit));
}

void TestCalibrationPlot::curvesHaveTheirColours()
{
    QCOMPARE(deviceCurve()->pen(), QPen(QColor(Qt::darkGray), 0, Qt::SolidLine));
    QCOMPARE(userCurve()->pen(), QPen(QColor(Qt::darkGreen), 0, Qt::SolidLine));
    QVERIFY(deviceCurve()->title().isEmpty());
    QVERIFY(userCurve()->title().isEmpty());
}

void TestCalibrationPlot::supportPointsAreMarkedWithCrosses()
{
    for (const QwtPlotCurve *drawn : {deviceCurve(), userCurve()}) {
        QCOMPARE(drawn->symbol()->style(), QwtSymbol::Cross);
        QCOMPARE(drawn->symbol()->size(), QSize(5, 5));
        QCOMPARE(drawn->symbol()->brush().style(), Qt::NoBrush);
        QCOMPARE(drawn->symbol()->pen(), QPen(Qt::black));
    }
}

void TestCalibrationPlot::curvesAreStraightLines()
{
    for (const QwtPlotCurve *drawn : {deviceCurve(), userCurve()}) {
        QCOMPARE(drawn->style(), QwtPlotCurve::Lines);
        QVERIFY(drawn->testCurveAttribute(QwtPlotCurve::Inverted));
        QVERIFY(!drawn->testCurveAttribute(QwtPlotCurve::Fitted));
        QVERIFY(drawn->isVisible());
    }
}

void TestCalibrationPlot::legendShowsColours()
{
    const auto colourOf = [this](const char *name) {
        const QWidget *swatch = curve->child(name);
        return swatch->autoFillBackground() ? swatch->palette().brush(QPalette::Window).color() : QColor();
    };
    QCOMPARE(colourOf("lColorDevice"), QColor(Qt::darkGray));
    QCOMPARE(colourOf("lColorUser"), QColor(Qt::darkGreen));
}

void TestCalibrationPlot::axesAreWideUntilThereAreValues()
{
    plot->updateAxes();
    QCOMPARE(plot->axisInterval(QwtPlot::xBottom), QwtInterval(0, 1023));
    QCOMPARE(plot->axisInterval(QwtPlot::yLeft), QwtInterval(-30000, 30000));
    QCOMPARE(plot->axisStepSize(QwtPlot::xBottom), 0.0);
    QCOMPARE(plot->axisStepSize(QwtPlot::yLeft), 0.0);
}

void TestCalibrationPlot::verticalAxisIsNothingWithoutValues()
{
    curve->showFor(Z7Device());
    QCOMPARE(plot->axisInterval(QwtPlot::yLeft), QwtInterval(0, 0));
    QCOMPARE(pointsOf(deviceCurve()), (Points {{0, 0}, {0, 0}, {0, 0}, {0, 0}, {1023, 0}}));
    QCOMPARE(pointsOf(userCurve()), pointsOf(deviceCurve()));
}

void TestCalibrationPlot::verticalAxisLeavesOneTenth_data()
{
    QTest::addColumn<int>("lowest");
    QTest::addColumn<int>("highest");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");
    QTest::newRow("across zero") << -1000 << 2000 << -1100.0 << 2200.0;
    QTest::newRow("above zero") << 100 << 200 << 90.0 << 220.0;
    QTest::newRow("below zero") << -200 << -100 << -220.0 << -90.0;
    QTest::newRow("up from zero") << 0 << 2000 << 0.0 << 2200.0;
    QTest::newRow("up to zero") << -2000 << 0 << -2200.0 << 0.0;
    QTest::newRow("flat") << 50 << 50 << 45.0 << 55.0;
    QTest::newRow("whole range") << -30000 << 29999 << -33000.0 << 32998.9;
}

void TestCalibrationPlot::verticalAxisLeavesOneTenth()
{
    QFETCH(int, lowest);
    QFETCH(int, highest);
    curve->showFor(curve->drive({200, 500, 800, highest, highest, lowest, highest, highest}));
    QTEST(plot->axisInterval(QwtPlot::yLeft).minValue(), "bottom");
    QTEST(plot->axisInterval(QwtPlot::yLeft).maxValue(), "top");
    QCOMPARE(plot->axisStepSize(QwtPlot::yLeft), 0.0);
}

void TestCalibrationPlot::verticalAxisReachesOverBothCurves()
{
    curve->showFor(curve->drive({200, 500, 800, 20, 20, 20, 20, 30}));
    QVERIFY(Person::type(curve->field("Y1"), "90"));
    QCOMPARE(verticalAxis(), QwtInterval(18, 99));
    QVERIFY(Person::type(curve->field("Y0"), "10"));
    QCOMPARE(verticalAxis(), QwtInterval(9, 99));
    QVERIFY(Person::empty(curve->field("Y1")));
    QVERIFY(Person::type(curve->field("Y4"), "20"));
    QCOMPARE(verticalAxis(), QwtInterval(9, 33));
}

void TestCalibrationPlot::horizontalAxisIsRangeOfInput()
{
    curve->showFor(curve->drive({1200, 1500, 1800, 1, 2, 3, 4, 5}));
    QVERIFY(Person::type(curve->field("X1"), "900"));
    QCOMPARE(plot->axisInterval(QwtPlot::xBottom), QwtInterval(0, 1023));
}

void TestCalibrationPlot::devicesCurveRunsThroughItsPoints()
{
    curve->showFor(curve->drive());
    QCOMPARE(pointsOf(deviceCurve()), (Points {{0, -1000}, {200, 0}, {500, 500}, {800, 1000}, {1023, 2000}}));
}

void TestCalibrationPlot::pointsStayInTheirOrderWhenXFalls()
{
    curve->showFor(curve->drive({800, 500, 200, 1, 2, 3, 4, 5}));
    QCOMPARE(pointsOf(deviceCurve()), (Points {{0, 1}, {800, 2}, {500, 3}, {200, 4}, {1023, 5}}));
}

void TestCalibrationPlot::emptyUserFieldFollowsDevice()
{
    curve->showFor(curve->drive());
    QCOMPARE(pointsOf(userCurve()), pointsOf(deviceCurve()));
    curve->page->DeviceUpdate(deviceWith({curve->param("X2", 600), curve->param("Y4", 2500)}));
    QCOMPARE(pointsOf(userCurve()), (Points {{0, -1000}, {200, 0}, {600, 500}, {800, 1000}, {1023, 2500}}));
}

void TestCalibrationPlot::typingMovesOnlyUsersCurve_data()
{
    QTest::addColumn<QString>("place");
    for (const QString &place : curvePlaces)
        QTest::newRow(qPrintable(place)) << place;
}

void TestCalibrationPlot::typingMovesOnlyUsersCurve()
{
    QFETCH(QString, place);
    curve->showFor(curve->drive());
    const Points devicePoints = pointsOf(deviceCurve());
    Points wanted = devicePoints;
    QPointF &moved = wanted[QString(place.at(1)).toInt()];
    (place.startsWith('X') ? moved.rx() : moved.ry()) = 42;
    QVERIFY(Person::type(curve->field(place), "42"));
    QCOMPARE(pointsOf(userCurve()), wanted);
    QCOMPARE(pointsOf(deviceCurve()), devicePoints);
}

void TestCalibrationPlot::emptiedFieldIsBackOnDevicesCurve()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("Y3"), "42"));
    QVERIFY(Person::empty(curve->field("Y3")));
    QCOMPARE(pointsOf(userCurve()), pointsOf(deviceCurve()));
}

void TestCalibrationPlot::loneSignIsDrawnAsZero()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("Y3"), curve->data.lowestY < 0 ? "-" : "+"));
    QCOMPARE(pointsOf(userCurve()).at(3), QPointF(800, 0));
    QCOMPARE(curve->reports(), 0);
}

void TestCalibrationPlot::recordWithoutParametersOfPageRedraws()
{
    curve->showFor(curve->drive());
    curve->page->newUserParam(curve->param("Y4", 42));
    curve->page->DeviceUpdate(deviceWith({readParam(1, 2)}));
    QCOMPARE(pointsOf(userCurve()).at(4), QPointF(1023, 42));
}

void TestCalibrationPlot::keystrokeIsSeenInDrawing()
{
    curve->showFor(curve->drive());
    QVERIFY(QTest::qWaitForWindowExposed(curve->page.get()));
    const QImage before = plot->canvas()->grab().toImage();
    QVERIFY(Person::type(curve->field("X2"), "9"));
    QVERIFY(plot->canvas()->grab().toImage() != before);
}

void TestCalibrationPlot::restoredUserValuesAreDrawnAtNextUpdate()
{
    curve->showFor(curve->drive(), paramSet({curve->param("Y2", 42)}));
    QCOMPARE(curve->field("Y2")->text(), QStringLiteral("42"));
    QCOMPARE(pointsOf(userCurve()).at(2), QPointF(500, 500));
    curve->page->DeviceUpdate(curve->drive());
    QCOMPARE(pointsOf(userCurve()).at(2), QPointF(500, 42));
}

void TestCalibrationPlot::clearedUserValuesAreDrawnUntilNextUpdate()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("Y2"), "42"));
    curve->page->clearUserValues();
    QCOMPARE(pointsOf(userCurve()).at(2), QPointF(500, 42));
    curve->page->DeviceUpdate(curve->drive());
    QCOMPARE(pointsOf(userCurve()).at(2), QPointF(500, 500));
}

// No copy is made of the samples: neither for one redraw nor at the next.
void TestCalibrationPlot::curvesReadSamplesWhereTheyLie()
{
    curve->showFor(curve->drive());
    const auto deviceArrays = arraysOf(deviceCurve());
    const auto userArrays = arraysOf(userCurve());
    QVERIFY(deviceArrays.first && deviceArrays.first != userArrays.first);
    QVERIFY(userArrays.second && deviceArrays.second != userArrays.second);
    QVERIFY(Person::type(curve->field("Y2"), "42"));
    curve->page->DeviceUpdate(curve->drive());
    curve->showFor(curve->drive());
    QCOMPARE(arraysOf(deviceCurve()), deviceArrays);
    QCOMPARE(arraysOf(userCurve()), userArrays);
}

QTEST_MAIN(TestCalibrationPlot)

#include "tst_calibrationplot.moc"
