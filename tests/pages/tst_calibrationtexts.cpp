// What the two scaling curves say, in German and in the user's language.

#include "tests/pages/curvepage.h"
#include "tests/support/isolatedtest.h"

#include <optional>

namespace {

struct Text
{
    const char *widget;
    const char *key;
    QString text;
};

/// The texts that the two pages share.
const QVector<Text> commonTexts {
    {"lIntro", "Intro", {}},
    {"lDevice", "Z7Values", "Z7 Ist-Werte"},
    {"lDeviceLegend", "Z7Values", "Z7 Ist-Werte"},
    {"lUser", "UserValues", "Soll-Werte"},
    {"lUserLegend", "UserValues", "Soll-Werte"},
};

const QVector<Text> speedTexts {
    {"lFormDescription", "DialogDescription",
        QStringLiteral("Bei einer Vorgabe des Drehzahlsollwerts über den Analogeingang A1 (0V...10V) kann "
                       "hier die Skalierungskennlinie über Stützstellen vorgegeben werden.")},
    {"gBValues", "RevolutionsInput", "FE-Drehzahlen X1..X3, Y0..Y4"},
    {"LNameP0", "FERevolution_0", "FE_Drehzahl_0"},
    {"LNameP1", "FERevolution_1", "FE_Drehzahl_1"},
    {"LNameP2", "FERevolution_2", "FE_Drehzahl_2"},
    {"LNameP3", "FERevolution_3", "FE_Drehzahl_3"},
    {"LNameP4", "FERevolution_4", "FE_Drehzahl_4"},
};

const QVector<Text> currentTexts {
    {"lFormDescription", "DialogDescription",
        QStringLiteral("Bei einer Vorgabe des Stromsollwerts über den Analogeingang A1 (0V..10V) kann hier "
                       "die Skalierungskennlinie über Stützstellen vorgegeben werden. Der Stromsollwert wird "
                       "dann über den Analogeingang A1 vorgegeben, wenn über einen der Eingänge I1 oder I2 "
                       "in die \"dynamische Strombegrenzung\" umgeschaltet wird.")},
    {"gBValues", "CurrentInput", "FE-Strom X1..X3, Y0..Y4"},
    {"LNameP0", "FECurrent_0", "FE_Strom_X0"},
    {"LNameP1", "FECurrent_1", "FE_Strom_X1"},
    {"LNameP2", "FECurrent_2", "FE_Strom_X2"},
    {"LNameP3", "FECurrent_3", "FE_Strom_X3"},
    {"LNameP4", "FECurrent_4", "FE_Strom_X4"},
    {"lOperationsModeIntro", "OperationsModeInfo",
        QStringLiteral("Die Parameter der Sollwertskalierung (Strom) kommen nur im Betriebsmodus 2/x oder "
                       "x/2 zur Anwendung.")},
    {"lCurrentOperationsMode", "CurrentOperaionsMode", "Aktueller Betriebsmodus:"},
    {"lSwitchOperationsModeInfo", "SwitchOperationsModeInfo",
        QStringLiteral("Bitte wechseln Sie den aktuellen Betriebsmodus, um die Parameter zur Anwendung zu "
                       "bringen!")},
};

QVector<Text> textsOf(int page)
{
    return commonTexts + (page == PageNumber::CalibrationRotations ? speedTexts : currentTexts);
}

} // namespace

class TestCalibrationTexts : public IsolatedTest
{
    Q_OBJECT

private slots:
    void initTestCase_data() { addCurvePages(); }

    void textsAreGerman();
    void textsAreInUsersLanguage();
    void swatchesOfLegendBearNoText();
    void emptyTextsAreHidden();
    void introductionOfLanguageIsShown();
    void columnsBearUnitsOfTheirFirstParameters();
    void axisWordsAndUnitsAreInUsersLanguage();
    void unitsFollowDefinitionOfDrivesVersion();
    void pageHasNameOfItsClass();

private:
    void prepare() override;
    void tidyUp() override;

    void writeLanguage(const QString &entries) const;

    std::optional<ShownCurve> curve;
};

void TestCalibrationTexts::prepare()
{
    curve.emplace(curvePage());
}

void TestCalibrationTexts::tidyUp()
{
    curve.reset();
}

/// Writes entries of the page's section; call it before anything asks for a text.
void TestCalibrationTexts::writeLanguage(const QString &entries) const
{
    WorkingFolder::writeText("deutsch.z7lang", QStringLiteral("[%1]\n%2").arg(curve->data.section, entries));
}

void TestCalibrationTexts::textsAreGerman()
{
    curve->showFor(curve->drive());
    const QVector<Text> texts = textsOf(curvePage());
    for (const Text &text : texts)
        QCOMPARE(curve->text(text.widget), text.text);
}

void TestCalibrationTexts::textsAreInUsersLanguage()
{
    const QVector<Text> texts = textsOf(curvePage());
    QString entries;
    for (const Text &text : texts)
        entries += QStringLiteral("%1=My %1\n").arg(text.key);
    writeLanguage(entries);
    curve->showFor(curve->drive());
    for (const Text &text : texts)
        QCOMPARE(curve->text(text.widget), QStringLiteral("My ") + text.key);
}

void TestCalibrationTexts::swatchesOfLegendBearNoText()
{
    curve->showFor(curve->drive());
    QCOMPARE(curve->text("lColorDevice"), QString());
    QCOMPARE(curve->text("lColorUser"), QString());
}

void TestCalibrationTexts::emptyTextsAreHidden()
{
    writeLanguage("DialogDescription=\n");
    curve->showFor(curve->drive());
    QVERIFY(curve->child("lIntro")->isHidden());
    QVERIFY(curve->child("lFormDescription")->isHidden());
}

void TestCalibrationTexts::introductionOfLanguageIsShown()
{
    writeLanguage("Intro=Five points\n");
    curve->showFor(curve->drive());
    QVERIFY(curve->child("lIntro")->isVisible());
    QVERIFY(curve->child("lFormDescription")->isVisible());
}

void TestCalibrationTexts::columnsBearUnitsOfTheirFirstParameters()
{
    curve->define();
    curve->showFor(curve->drive());
    const QString yTitle = QStringLiteral("y [%1]").arg(curve->data.yUnit);
    QCOMPARE(curve->text("lXDevice"), QStringLiteral("x [Digit]"));
    QCOMPARE(curve->text("lXUser"), QStringLiteral("x [Digit]"));
    QCOMPARE(curve->text("lYDevice"), yTitle);
    QCOMPARE(curve->text("lYUser"), yTitle);
}

void TestCalibrationTexts::axisWordsAndUnitsAreInUsersLanguage()
{
    writeLanguage("XAxis=In\nYAxis=Out\n[ParamDefinition]\nDigit=Counts\n1/min=rpm\n%=percent\n");
    curve->define();
    curve->showFor(curve->drive());
    const bool isSpeed = curvePage() == PageNumber::CalibrationRotations;
    QCOMPARE(curve->text("lXDevice"), QStringLiteral("In [Counts]"));
    QCOMPARE(curve->text("lXUser"), QStringLiteral("In [Counts]"));
    QCOMPARE(curve->text("lYDevice"), isSpeed ? "Out [rpm]" : "Out [percent]");
    QCOMPARE(curve->text("lYUser"), isSpeed ? "Out [rpm]" : "Out [percent]");
}

void TestCalibrationTexts::unitsFollowDefinitionOfDrivesVersion()
{
    curve->define("V123");
    const QString line = "%1;Support point;Volt;0;0;9;Unsigned;1;rw;0;";
    defineParameters("V200", {line.arg(curve->data.firstX)});
    curve->showFor(curve->drive());
    Z7Device newer = curve->drive();
    newer.softwareVersion = "V200";
    curve->showFor(newer);
    QCOMPARE(curve->text("lXUser"), QStringLiteral("x [Volt]"));
    QCOMPARE(curve->text("lYUser"), QStringLiteral("y []"));
}

void TestCalibrationTexts::pageHasNameOfItsClass()
{
    QCOMPARE(curve->page->objectName(), QString(curve->page->metaObject()->className()));
}

QTEST_MAIN(TestCalibrationTexts)

#include "tst_calibrationtexts.moc"
