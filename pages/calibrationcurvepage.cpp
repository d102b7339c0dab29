#include "pages/calibrationcurvepage.h"

#include "control/services/language.h"
#include "model/parameterdefinitions.h"
#include "pages/fieldguide.h"
#include "pages/integervalidator.h"
#include "pages/pagestyle.h"
#include "pages/plainnumbers.h"
#include "ui_calibrationcurvepage.h"

#include <QSignalBlocker>
#include <QSignalMapper>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_symbol.h>

#include <algorithm>

namespace {

constexpr int fixedEnd = -1;
constexpr int lowestX = 0;
/// The greatest reading of the 10-bit input.
constexpr int highestX = 1023;
/// Both ways, until there are values to fit the axis to.
constexpr int initialY = 30000;

/// The lower end of an axis whose least value is `lowest`, with a margin of a tenth.
double below(double lowest)
{
    return lowest >= 0 ? lowest - lowest / 10 : lowest * 1.1;
}

/// The upper end of an axis whose greatest value is `highest`, with a margin of a tenth.
double above(double highest)
{
    return highest >= 0 ? highest * 1.1 : highest - highest / 10;
}

} // namespace

CalibrationCurvePage::CalibrationCurvePage(const CalibrationCurve &curve, QWidget *parent)
    : Z7DataWidget(parent)
    , m_curve(curve)
    , m_mapper(new QSignalMapper(this))
    , m_ui(std::make_unique<Ui::CalibrationCurvePage>())
{
    m_ui->setupUi(this);
    const auto &x = curve.xParams;
    const auto &y = curve.yParams;
    m_x = findCoordinates(QStringLiteral("X"), {fixedEnd, x[0], x[1], x[2], fixedEnd});
    m_y = findCoordinates(QStringLiteral("Y"), {y[0], y[1], y[2], y[3], y[4]});
    createPlot();
    connect(m_mapper, SIGNAL(mapped(int)), SLOT(ParamChanged(int)));
    prepareFields();
    for (const int number : x)
        addParamId(number);
    for (const int number : y)
        addParamId(number);
}

CalibrationCurvePage::~CalibrationCurvePage()
{
    // As a child it would go after the arrays that its curves refer to.
    delete m_plot;
}

CalibrationCurvePage::Coordinates CalibrationCurvePage::findCoordinates(
    const QString &axis, const QVector<int> &numbers) const
{
    Coordinates found {};
    for (int point = 0; point < pointCount; ++point) {
        const QString name = QStringLiteral("edVal%1%2").arg(axis).arg(point);
        found[point] = {numbers[point], findChild<QLineEdit *>(name + QStringLiteral("_User")),
            findChild<QLabel *>(name + QStringLiteral("_Device")), nullptr};
    }
    return found;
}

const CalibrationCurvePage::Coordinate *CalibrationCurvePage::coordinate(int number) const
{
    for (const Coordinates *axis : {&m_x, &m_y}) {
        for (const Coordinate &candidate : *axis) {
            if (candidate.number == number && number != fixedEnd)
                return &candidate;
        }
    }
    return nullptr;
}

void CalibrationCurvePage::createPlot()
{
    m_plot = new QwtPlot(this);
    m_plot->setFrameStyle(QFrame::NoFrame);
    m_plot->setLineWidth(2);
    m_plot->setMidLineWidth(0);
    qobject_cast<QFrame *>(m_plot->canvas())->setFrameStyle(QFrame::NoFrame);
    m_plot->setAxisScale(QwtPlot::xBottom, lowestX, highestX, 0);
    m_plot->setAxisScale(QwtPlot::yLeft, -initialY, initialY, 0);
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft}) {
        m_plot->setAxisScaleDraw(axis, new PlainNumbers);
        m_plot->setAxisFont(axis, QFont(QStringLiteral("MS Shell Dlg"), -1, -1, false));
    }
    m_deviceCurve = createCurve(Qt::darkGray, m_ui->lColorDevice);
    m_userCurve = createCurve(Qt::darkGreen, m_ui->lColorUser);
    // From here on each change redraws; on the way each would have laid out the axes anew, for nobody to see.
    m_plot->updateAxes();
    m_plot->setAutoReplot(true);
    m_ui->graphicLayout->insertWidget(0, m_plot, 1);
}

QwtPlotCurve *CalibrationCurvePage::createCurve(const QColor &colour, QLabel *swatch)
{
    auto *curve = new QwtPlotCurve(QString());
    curve->setSymbol(new QwtSymbol(QwtSymbol::Cross, Qt::NoBrush, QPen(Qt::black), QSize(5, 5)));
    curve->setStyle(QwtPlotCurve::Lines);
    curve->setCurveAttribute(QwtPlotCurve::Inverted, true);
    // A hairline of one pixel would all but vanish on a fine screen.
    curve->setRenderHint(QwtPlotItem::RenderAntialiased, true);
    curve->setPen(colour, 0, Qt::SolidLine);
    curve->attach(m_plot);
    swatch->clear();
    PageStyle::paintGround(swatch, colour);
    return curve;
}

void CalibrationCurvePage::prepareFields()
{
    for (Coordinate &x : m_x)
        prepareField(x, lowestX, highestX);
    for (Coordinate &y : m_y)
        prepareField(y, m_curve.lowestY, m_curve.highestY);
    for (const auto &end : {qMakePair(m_x.front(), lowestX), qMakePair(m_x.back(), highestX)}) {
        end.first.deviceValue->setText(QString::number(end.second));
        end.first.user->setText(QString::number(end.second));
        end.first.user->setEnabled(false);
    }
}

void CalibrationCurvePage::prepareField(Coordinate &field, int bottom, int top)
{
    field.user->setAlignment(Qt::AlignRight);
    field.deviceValue->setAlignment(Qt::AlignRight);
    field.deviceValue->clear();
    if (field.number == fixedEnd)
        return;
    field.user->setValidator(new IntegerValidator(bottom, top, this));
    field.guide = new FieldGuide(this, field.user);
    m_mapper->setMapping(field.user, field.number);
    connect(field.user, SIGNAL(textChanged(QString)), m_mapper, SLOT(map()));
}

QVBoxLayout *CalibrationCurvePage::upperLayout() const
{
    return m_ui->upperLayout;
}

void CalibrationCurvePage::initPage()
{
    PageStyle::setTextOrHide(m_ui->lFormDescription, m_curve.texts("DialogDescription", m_curve.description));
    PageStyle::setTextOrHide(m_ui->lIntro, m_curve.texts("Intro", ""));
    m_ui->gBValues->setTitle(m_curve.texts(m_curve.titleKey, m_curve.title));
    for (QLabel *label : {m_ui->lDevice, m_ui->lDeviceLegend})
        label->setText(m_curve.texts("Z7Values", "Z7 Ist-Werte"));
    for (QLabel *label : {m_ui->lUser, m_ui->lUserLegend})
        label->setText(m_curve.texts("UserValues", "Soll-Werte"));
    setRowNames();
    setAxisTexts();
    setFieldTexts(QStringLiteral("X"), m_x, lowestX, highestX);
    setFieldTexts(QStringLiteral("Y"), m_y, m_curve.lowestY, m_curve.highestY);
}

void CalibrationCurvePage::setRowNames()
{
    int point = 0;
    for (QLabel *label : {m_ui->LNameP0, m_ui->LNameP1, m_ui->LNameP2, m_ui->LNameP3, m_ui->LNameP4}) {
        const QByteArray number = QByteArray::number(point++);
        const QByteArray key = m_curve.rowKey + number;
        const QByteArray name = m_curve.rowName + number;
        label->setText(m_curve.texts(key.constData(), name.constData()));
    }
}

void CalibrationCurvePage::setAxisTexts()
{
    const QString xUnit = definitionText(paramDefinitions()->paramUnit(m_curve.xParams.front()));
    const QString yUnit = definitionText(paramDefinitions()->paramUnit(m_curve.yParams.front()));
    const QString title = QStringLiteral("%1 [%2]");
    for (QLabel *label : {m_ui->lXDevice, m_ui->lXUser})
        label->setText(title.arg(m_curve.texts("XAxis", "x"), xUnit));
    for (QLabel *label : {m_ui->lYDevice, m_ui->lYUser})
        label->setText(title.arg(m_curve.texts("YAxis", "y"), yUnit));
    m_plot->setAxisTitle(QwtPlot::xBottom, xUnit);
    m_plot->setAxisTitle(QwtPlot::yLeft, yUnit);
}

void CalibrationCurvePage::setFieldTexts(
    const QString &axis, const Coordinates &coordinates, int bottom, int top)
{
    int point = 0;
    for (const Coordinate &field : coordinates) {
        field.user->setAccessibleName(
            toolTipText("FieldWanted", "%1 Soll").arg(axis + QString::number(point++)));
        if (field.guide)
            field.guide->tell(field.number, definitionText(paramDefinitions()->paramName(field.number)),
                FieldGuide::Limits {bottom, top});
    }
}

void CalibrationCurvePage::newDeviceParam(const Z7DeviceParam &param)
{
    if (const Coordinate *field = coordinate(param.number))
        field->deviceValue->setText(QString::number(param.value));
}

void CalibrationCurvePage::deviceUpdateFinished()
{
    updatePlot();
}

void CalibrationCurvePage::newUserParam(const Z7DeviceParam &param)
{
    const Coordinate *field = coordinate(param.number);
    if (!field || !param.hasValue)
        return;
    const QSignalBlocker blocker(m_mapper);
    field->user->setText(QString::number(param.value));
}

void CalibrationCurvePage::clearUserValues()
{
    const QSignalBlocker blocker(m_mapper);
    for (const Coordinates *axis : {&m_x, &m_y}) {
        for (const Coordinate &field : *axis) {
            if (field.number != fixedEnd)
                PageStyle::emptyField(field.user);
        }
    }
    m_x.front().user->setText(QString::number(lowestX));
    m_x.back().user->setText(QString::number(highestX));
}

void CalibrationCurvePage::ParamChanged(int nParamID)
{
    const Coordinate *field = coordinate(nParamID);
    if (!field)
        return;
    reportUserText(nParamID, field->user->text());
    updatePlot();
}

void CalibrationCurvePage::readSamples(const Coordinates &axis, Samples &deviceSamples, Samples &userSamples)
{
    for (int point = 0; point < pointCount; ++point) {
        const QString userText = axis[point].user->text();
        deviceSamples[point] = axis[point].deviceValue->text().toInt();
        userSamples[point] = userText.isEmpty() ? deviceSamples[point] : userText.toInt();
    }
}

void CalibrationCurvePage::fitVerticalAxis()
{
    const auto driveRange = std::minmax_element(m_deviceY.cbegin(), m_deviceY.cend());
    const auto userRange = std::minmax_element(m_userY.cbegin(), m_userY.cend());
    const double lowest = std::min(*driveRange.first, *userRange.first);
    const double highest = std::max(*driveRange.second, *userRange.second);
    m_plot->setAxisScale(QwtPlot::yLeft, below(lowest), above(highest), 0);
}

void CalibrationCurvePage::updatePlot()
{
    readSamples(m_x, m_deviceX, m_userX);
    readSamples(m_y, m_deviceY, m_userY);
    // One drawing for the axis and both curves.
    m_plot->setAutoReplot(false);
    fitVerticalAxis();
    m_userCurve->setRawSamples(m_userX.data(), m_userY.data(), pointCount);
    m_deviceCurve->setRawSamples(m_deviceX.data(), m_deviceY.data(), pointCount);
    m_plot->setAutoReplot(true);
    m_plot->replot();
}
