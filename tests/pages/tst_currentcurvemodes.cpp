// The current curve counts in operating mode 2 only, and the page says whether the drive is in it.

#include "tests/pages/curvepage.h"
#include "tests/support/isolatedtest.h"

#include <QFrame>

#include <optional>

class TestCurrentCurveModes : public IsolatedTest
{
    Q_OBJECT

private slots:
    void warningStandsUnlessModeIsTwo_data();
    void warningStandsUnlessModeIsTwo();
    void warningComesAndGoesWithModes();
    void modesStandInNumbersAndWords();
    void modesWithoutTextsLeaveSlash();
    void wordsOfModesAreInUsersLanguage();
    void anyParameterOfPageBringsModes();
    void recordWithoutParametersOfPageLeavesModes();
    void modesAreForgottenAtNextShowing();
    void panelIsFrameAboveValues();
    void speedCurveHasNoPanel();

private:
    void prepare() override;
    void tidyUp() override;

    Z7Device inModes(int mode1, int mode2) const;
    bool warns() const { return !curve->child("lSwitchOperationsModeInfo")->isHidden(); }
    QString modes() const { return curve->text("LCurrentOperationsModeTxt"); }

    std::optional<ShownCurve> curve;
};

void TestCurrentCurveModes::prepare()
{
    curve.emplace(PageNumber::CalibrationCurrent);
}

void TestCurrentCurveModes::tidyUp()
{
    curve.reset();
}

Z7Device TestCurrentCurveModes::inModes(int mode1, int mode2) const
{
    Z7Device drive = curve->drive();
    drive.operationMode1 = mode1;
    drive.operationMode2 = mode2;
    return drive;
}

void TestCurrentCurveModes::warningStandsUnlessModeIsTwo_data()
{
    QTest::addColumn<int>("mode1");
    QTest::addColumn<int>("mode2");
    QTest::addColumn<bool>("warns");
    QTest::newRow("first input") << 2 << 0 << false;
    QTest::newRow("second input") << 3 << 2 << false;
    QTest::newRow("both inputs") << 2 << 2 << false;
    QTest::newRow("positioning and fixed speed") << 3 << 1 << true;
    QTest::newRow("two digits") << 22 << 12 << true;
    QTest::newRow("nothing reported") << 0 << 0 << true;
}

void TestCurrentCurveModes::warningStandsUnlessModeIsTwo()
{
    QFETCH(int, mode1);
    QFETCH(int, mode2);
    curve->showFor(inModes(mode1, mode2));
    QTEST(warns(), "warns");
}

void TestCurrentCurveModes::warningComesAndGoesWithModes()
{
    curve->showFor(inModes(1, 3));
    QVERIFY(warns());
    curve->page->DeviceUpdate(inModes(1, 2));
    QVERIFY(!warns());
    curve->page->DeviceUpdate(inModes(1, 3));
    QVERIFY(warns());
}

void TestCurrentCurveModes::modesStandInNumbersAndWords()
{
    defineParameters("V123",
        {"1;I1;;0;0;8;Unsigned;0;rw;0;Analog;Fest;Strom", "2;I2;;0;0;8;Unsigned;0;rw;0;A;B;C;Strecke"});
    curve->showFor(inModes(2, 3));
    QCOMPARE(modes(), QStringLiteral("2/3 (Strom/Strecke)"));
}

void TestCurrentCurveModes::modesWithoutTextsLeaveSlash()
{
    curve->showFor(inModes(2, 7));
    QCOMPARE(modes(), QStringLiteral("2/7 (/)"));
}

void TestCurrentCurveModes::wordsOfModesAreInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nStrom=Current\n");
    defineParameters("V123", {"1;I1;;0;0;8;Unsigned;0;rw;0;Analog;Fest;Strom"});
    curve->showFor(inModes(2, 2));
    QCOMPARE(modes(), QStringLiteral("2/2 (Current/)"));
}

void TestCurrentCurveModes::anyParameterOfPageBringsModes()
{
    for (const QString &place : curvePlaces) {
        curve->showFor(inModes(1, 1));
        Z7Device drive = inModes(2, 1);
        drive.setParameterSet(paramSet({curve->param(place, 1)}));
        curve->page->DeviceUpdate(drive);
        QCOMPARE(modes(), QStringLiteral("2/1 (/)"));
        QVERIFY(!warns());
    }
}

void TestCurrentCurveModes::recordWithoutParametersOfPageLeavesModes()
{
    curve->showFor(inModes(1, 1));
    Z7Device drive = inModes(2, 1);
    drive.setParameterSet(paramSet({readParam(1, 2)}));
    curve->page->DeviceUpdate(drive);
    QCOMPARE(modes(), QStringLiteral("1/1 (/)"));
    QVERIFY(warns());
}

void TestCurrentCurveModes::modesAreForgottenAtNextShowing()
{
    curve->showFor(inModes(1, 1));
    curve->page->initPage();
    QCOMPARE(modes(), QString());
}

void TestCurrentCurveModes::panelIsFrameAboveValues()
{
    curve->showFor(inModes(1, 1));
    const auto *panel = curve->child<QFrame>("fCurrentOperationMode");
    for (const char *name : {"lOperationsModeIntro", "lCurrentOperationsMode", "LCurrentOperationsModeTxt",
             "lSwitchOperationsModeInfo"})
        QVERIFY(panel->findChild<QLabel *>(name));
    const auto bottom = [this](const QWidget *widget) {
        return widget->mapTo(curve->page.get(), widget->rect().bottomLeft()).y();
    };
    QTRY_VERIFY(bottom(curve->child("lFormDescription")) < panel->geometry().top());
    QVERIFY(bottom(panel) < curve->child("gBValues")->geometry().top());
}

void TestCurrentCurveModes::speedCurveHasNoPanel()
{
    const ShownCurve speed(PageNumber::CalibrationRotations);
    QVERIFY(!speed.page->findChild<QWidget *>("fCurrentOperationMode"));
    QVERIFY(!speed.page->findChild<QWidget *>("lSwitchOperationsModeInfo"));
}

QTEST_MAIN(TestCurrentCurveModes)

#include "tst_currentcurvemodes.moc"
