#include "pages/valuecalibrationrotations.h"

#include "model/drivefacts.h"

namespace {

constexpr CalibrationCurve speedCurve {
    ValueCalibrationRotations::texts,
    {ParameterNumber::SpeedCurveX1, ParameterNumber::SpeedCurveX2, ParameterNumber::SpeedCurveX3},
    {ParameterNumber::SpeedCurveY0, ParameterNumber::SpeedCurveY1, ParameterNumber::SpeedCurveY2,
        ParameterNumber::SpeedCurveY3, ParameterNumber::SpeedCurveY4},
    -30000,
    29999,
    "RevolutionsInput",
    "FE-Drehzahlen X1..X3, Y0..Y4",
    "FERevolution_",
    "FE_Drehzahl_",
    "Bei einer Vorgabe des Drehzahlsollwerts über den Analogeingang A1 (0V...10V) kann hier die "
    "Skalierungskennlinie über Stützstellen vorgegeben werden.",
};

} // namespace

ValueCalibrationRotations::ValueCalibrationRotations(QWidget *parent)
    : CalibrationCurvePage(speedCurve, parent)
{
    setObjectName(QStringLiteral("ValueCalibrationRotations"));
}
