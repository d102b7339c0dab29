#include "pages/valuecalibrationrotations.h"

namespace {

constexpr CalibrationCurve speedCurve {
    "DialogValueCalibrationRotations",
    {0x0B, 0x0C, 0x0D},
    {0x0E, 0x0F, 0x10, 0x11, 0x12},
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
