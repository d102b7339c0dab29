#include "pages/valuecalibrationcurrent.h"

#include "model/drivefacts.h"
#include "pages/operationmodepanel.h"

#include <QVBoxLayout>

namespace {

constexpr CalibrationCurve currentCurve {
    ValueCalibrationCurrent::texts,
    {ParameterNumber::CurrentCurveX1, ParameterNumber::CurrentCurveX2, ParameterNumber::CurrentCurveX3},
    {ParameterNumber::CurrentCurveY0, ParameterNumber::CurrentCurveY1, ParameterNumber::CurrentCurveY2,
        ParameterNumber::CurrentCurveY3, ParameterNumber::CurrentCurveY4},
    0,
    100,
    "CurrentInput",
    "FE-Strom X1..X3, Y0..Y4",
    "FECurrent_",
    "FE_Strom_X",
    "Bei einer Vorgabe des Stromsollwerts über den Analogeingang A1 (0V..10V) kann hier die "
    "Skalierungskennlinie über Stützstellen vorgegeben werden. Der Stromsollwert wird dann über den "
    "Analogeingang A1 vorgegeben, wenn über einen der Eingänge I1 oder I2 in die \"dynamische "
    "Strombegrenzung\" umgeschaltet wird.",
};

} // namespace

ValueCalibrationCurrent::ValueCalibrationCurrent(QWidget *parent)
    : CalibrationCurvePage(currentCurve, parent)
    , m_modePanel(new OperationModePanel(AnalogCurrentMode, this))
{
    setObjectName(QStringLiteral("ValueCalibrationCurrent"));
    upperLayout()->addWidget(m_modePanel);
}

void ValueCalibrationCurrent::initPage()
{
    CalibrationCurvePage::initPage();
    m_modePanel->setTexts(texts,
        "Die Parameter der Sollwertskalierung (Strom) kommen nur im Betriebsmodus 2/x oder x/2 zur "
        "Anwendung.");
}

void ValueCalibrationCurrent::newDeviceParam(const Z7DeviceParam &param)
{
    CalibrationCurvePage::newDeviceParam(param);
    m_modePanel->showModes(device, modePairText());
}
