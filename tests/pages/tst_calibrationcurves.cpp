// The support points of the two scaling curves: what the fields take, show and report.

#include "tests/pages/curvepage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QIntValidator>
#include <QSignalMapper>

#include <optional>

class TestCalibrationCurves : public IsolatedTest
{
    Q_OBJECT

private slots:
    void initTestCase_data() { addCurvePages(); }

    void parametersAreReadXBeforeY();
    void placesAreEmptyButForEnds();
    void everyNumberStandsToRight();
    void deviceValueStandsAtItsPlace_data() { addPlaces(); }
    void deviceValueStandsAtItsPlace();
    void parameterOfAnotherPageChangesNothing();
    void recordWithoutParameterLeavesItsValue();

    void limitsAreThoseOfPage_data() { addPlaces(); }
    void limitsAreThoseOfPage();
    void limitsOfDefinitionPlayNoPart_data() { addPlaces(); }
    void limitsOfDefinitionPlayNoPart();
    void numberBeyondInputsRangeCannotBeTyped();
    void numberJustBeyondRangeIsReported();
    void separatorsOfUsersLanguageCannotBeTyped();
    void supportPointsNeedNotRise();

    void typedNumberReportsItsParameterOnce_data() { addPlaces(); }
    void typedNumberReportsItsParameterOnce();
    void reportTellsSignOfDefinition();
    void keystrokeBeforeFirstShowingIsReported();
    void emptiedFieldWithdrawsChange_data() { addPlaces(); }
    void emptiedFieldWithdrawsChange();
    void loneSignReportsNothing();
    void dayOfShowingsStillReportsKeystrokeOnce();

    void restoredUserValueIsShownAndNotReported_data() { addPlaces(); }
    void restoredUserValueIsShownAndNotReported();
    void userValueThatIsNoneIsIgnored();
    void userValueOfAnotherPageLeavesFields();
    void typingIntoRestoredFieldIsReported();
    void clearingEmptiesFieldsWithoutReport();
    void clearedPointCannotBeBroughtBack_data() { addPlaces(); }
    void clearedPointCannotBeBroughtBack();
    void clearingLeavesDevicesValues();
    void userValueStaysWhileDeviceValuesChange();

    void fixedEndsNeverChangeAndReportNothing_data();
    void fixedEndsNeverChangeAndReportNothing();

private:
    void prepare() override;
    void tidyUp() override;

    static void addPlaces();
    static QString place();

    std::optional<ShownCurve> curve;
};

void TestCalibrationCurves::prepare()
{
    curve.emplace(curvePage());
    curve->define();
}

void TestCalibrationCurves::tidyUp()
{
    curve.reset();
}

void TestCalibrationCurves::addPlaces()
{
    QTest::addColumn<QString>("place");
    for (const QString &place : curvePlaces)
        QTest::newRow(qPrintable(place)) << place;
}

QString TestCalibrationCurves::place()
{
    QFETCH(QString, place);
    return place;
}

void TestCalibrationCurves::parametersAreReadXBeforeY()
{
    const QList<int> speed {0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10, 0x11, 0x12};
    const QList<int> current {0x26, 0x27, 0x28, 0x29, 0x2A, 0x2B, 0x2C, 0x2D};
    QCOMPARE(curve->page->paramIds(), curvePage() == PageNumber::CalibrationCurrent ? current : speed);
}

void TestCalibrationCurves::placesAreEmptyButForEnds()
{
    for (const QString &place : curvePlaces) {
        QCOMPARE(curve->field(place)->text(), QString());
        QCOMPARE(curve->deviceValue(place)->text(), QString());
    }
    QCOMPARE(curve->field("X0")->text(), QStringLiteral("0"));
    QCOMPARE(curve->field("X4")->text(), QStringLiteral("1023"));
    QCOMPARE(curve->deviceValue("X0")->text(), QStringLiteral("0"));
    QCOMPARE(curve->deviceValue("X4")->text(), QStringLiteral("1023"));
}

void TestCalibrationCurves::everyNumberStandsToRight()
{
    for (const QString &place : curvePlaces + QStringList {"X0", "X4"}) {
        QCOMPARE(curve->field(place)->alignment(), Qt::AlignRight);
        QCOMPARE(curve->deviceValue(place)->alignment(), Qt::AlignRight);
    }
}

void TestCalibrationCurves::deviceValueStandsAtItsPlace()
{
    curve->page->newDeviceParam(curve->param(place(), -77));
    for (const QString &other : curvePlaces)
        QCOMPARE(curve->deviceValue(other)->text(), other == place() ? "-77" : "");
}

void TestCalibrationCurves::parameterOfAnotherPageChangesNothing()
{
    curve->showFor(curve->drive());
    for (const int number : {-1, 0, 0x0A, 0x13, 0x25, 0x2E, 0x9999}) {
        curve->page->newDeviceParam(readParam(number, 333));
        for (const QString &place : curvePlaces + QStringList {"X0", "X4"})
            QVERIFY(curve->deviceValue(place)->text() != QStringLiteral("333"));
    }
}

void TestCalibrationCurves::recordWithoutParameterLeavesItsValue()
{
    curve->showFor(curve->drive());
    curve->page->DeviceUpdate(deviceWith({curve->param("Y4", 2500)}));
    QCOMPARE(curve->deviceValue("Y3")->text(), QStringLiteral("1000"));
    QCOMPARE(curve->deviceValue("Y4")->text(), QStringLiteral("2500"));
}

void TestCalibrationCurves::limitsAreThoseOfPage()
{
    const auto *validator = qobject_cast<const QIntValidator *>(curve->field(place())->validator());
    QVERIFY(validator);
    const bool isX = place().startsWith('X');
    QCOMPARE(validator->bottom(), isX ? 0 : curve->data.lowestY);
    QCOMPARE(validator->top(), isX ? 1023 : curve->data.highestY);
}

void TestCalibrationCurves::limitsOfDefinitionPlayNoPart()
{
    const auto *validator = qobject_cast<const QIntValidator *>(curve->field(place())->validator());
    const int bottom = validator->bottom();
    const int top = validator->top();
    curve->showFor(curve->drive());
    curve->showFor(curve->drive());
    QCOMPARE(curve->field(place())->validator(), validator);
    QCOMPARE(validator->bottom(), bottom);
    QCOMPARE(validator->top(), top);
}

void TestCalibrationCurves::numberBeyondInputsRangeCannotBeTyped()
{
    curve->showFor(curve->drive());
    QVERIFY(!Person::type(curve->field("X2"), "10230"));
    QCOMPARE(curve->field("X2")->text(), QStringLiteral("1023"));
    QVERIFY(!Person::type(curve->field("X3"), "-1"));
    QCOMPARE(curve->field("X3")->text(), QStringLiteral("1"));
}

// Typing can only be stopped at the fifth digit; the conflict rules judge the rest.
void TestCalibrationCurves::numberJustBeyondRangeIsReported()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("X2"), "1024"));
    QCOMPARE(lastReported(curve->modified).value, 1024);
}

void TestCalibrationCurves::separatorsOfUsersLanguageCannotBeTyped()
{
    QLocale::setDefault(QLocale(QLocale::German));
    ShownCurve german(curvePage());
    german.showFor(curve->drive());
    QVERIFY(!Person::type(german.field("X1"), "1.00"));
    QLocale::setDefault(QLocale::c());
    QCOMPARE(german.field("X1")->text(), QStringLiteral("100"));
}

void TestCalibrationCurves::supportPointsNeedNotRise()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("X1"), "900"));
    QVERIFY(Person::type(curve->field("X2"), "100"));
    QCOMPARE(curve->field("X1")->text(), QStringLiteral("900"));
    QCOMPARE(lastReported(curve->modified).number, curve->data.number("X2"));
    QCOMPARE(lastReported(curve->modified).value, 100);
}

void TestCalibrationCurves::typedNumberReportsItsParameterOnce()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field(place()), "7"));
    QCOMPARE(curve->reports(), 1);
    QCOMPARE(lastReported(curve->modified).number, curve->data.number(place()));
    QCOMPARE(lastReported(curve->modified).value, 7);
    QVERIFY(lastReported(curve->modified).hasValue);
}

void TestCalibrationCurves::reportTellsSignOfDefinition()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("X1"), "7"));
    QCOMPARE(lastReported(curve->modified).isUnsigned, 1);
    QVERIFY(Person::type(curve->field("Y1"), "7"));
    QCOMPARE(lastReported(curve->modified).isUnsigned, 0);
}

void TestCalibrationCurves::keystrokeBeforeFirstShowingIsReported()
{
    QTest::keyClicks(curve->field("Y0"), "5");
    QCOMPARE(curve->modified.count(), 1);
}

void TestCalibrationCurves::emptiedFieldWithdrawsChange()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field(place()), "7"));
    curve->modified.clear();
    QVERIFY(Person::empty(curve->field(place())));
    QCOMPARE(curve->modified.count(), 0);
    QCOMPARE(curve->deleted.count(), 1);
    QCOMPARE(lastReported(curve->deleted).number, curve->data.number(place()));
    QCOMPARE(lastReported(curve->deleted).value, 0);
}

void TestCalibrationCurves::loneSignReportsNothing()
{
    curve->showFor(curve->drive());
    const QString sign = curve->data.lowestY < 0 ? "-" : "+";
    QVERIFY(Person::type(curve->field("Y2"), sign));
    QCOMPARE(curve->field("Y2")->text(), sign);
    QCOMPARE(curve->reports(), 0);
}

void TestCalibrationCurves::dayOfShowingsStillReportsKeystrokeOnce()
{
    const auto mappers = curve->page->findChildren<QSignalMapper *>();
    for (int showing = 0; showing < 20; ++showing) {
        curve->showFor(curve->drive());
        curve->page->DeviceUpdate(curve->drive());
    }
    QVERIFY(Person::type(curve->field("X3"), "8"));
    QVERIFY(Person::type(curve->field("Y4"), "9"));
    QCOMPARE(curve->modified.count(), 2);
    QCOMPARE(curve->page->findChildren<QSignalMapper *>(), mappers);
}

void TestCalibrationCurves::restoredUserValueIsShownAndNotReported()
{
    curve->showFor(curve->drive(), paramSet({curve->param(place(), 44)}));
    for (const QString &other : curvePlaces)
        QCOMPARE(curve->field(other)->text(), other == place() ? "44" : "");
    QCOMPARE(curve->reports(), 0);
}

void TestCalibrationCurves::userValueThatIsNoneIsIgnored()
{
    curve->showFor(curve->drive());
    curve->page->newUserParam(Z7DeviceParam(curve->data.number("Y0"), 44, 0, false));
    QCOMPARE(curve->field("Y0")->text(), QString());
}

void TestCalibrationCurves::userValueOfAnotherPageLeavesFields()
{
    curve->showFor(curve->drive());
    for (const int number : {0, 0x0A, 0x13, 0x25, 0x2E})
        curve->page->newUserParam(readParam(number, 44));
    for (const QString &place : curvePlaces)
        QCOMPARE(curve->field(place)->text(), QString());
}

void TestCalibrationCurves::typingIntoRestoredFieldIsReported()
{
    curve->showFor(curve->drive(), paramSet({curve->param("Y1", 4)}));
    QVERIFY(Person::typeAtEnd(curve->field("Y1"), "2"));
    QCOMPARE(curve->modified.count(), 1);
    QCOMPARE(lastReported(curve->modified).value, 42);
}

void TestCalibrationCurves::clearingEmptiesFieldsWithoutReport()
{
    QList<Z7DeviceParam> changes;
    for (const QString &place : curvePlaces)
        changes.append(curve->param(place, 44));
    curve->showFor(curve->drive(), paramSet(changes));
    curve->page->clearUserValues();
    for (const QString &place : curvePlaces)
        QCOMPARE(curve->field(place)->text(), QString());
    QCOMPARE(curve->reports(), 0);
    QVERIFY(Person::type(curve->field("Y1"), "2"));
    QCOMPARE(curve->modified.count(), 1);
}

void TestCalibrationCurves::clearedPointCannotBeBroughtBack()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field(place()), "7"));
    curve->showFor(curve->drive());
    curve->modified.clear();
    QCOMPARE(textAfterUndo(curve->field(place())), QString());
    QCOMPARE(curve->reports(), 0);
}

void TestCalibrationCurves::clearingLeavesDevicesValues()
{
    curve->showFor(curve->drive());
    curve->page->clearUserValues();
    QCOMPARE(curve->deviceValue("X1")->text(), QStringLiteral("200"));
    QCOMPARE(curve->deviceValue("Y0")->text(), QStringLiteral("-1000"));
}

void TestCalibrationCurves::userValueStaysWhileDeviceValuesChange()
{
    curve->showFor(curve->drive());
    QVERIFY(Person::type(curve->field("Y1"), "33"));
    curve->page->DeviceUpdate(deviceWith({curve->param("Y1", 66)}));
    QCOMPARE(curve->field("Y1")->text(), QStringLiteral("33"));
    QCOMPARE(curve->deviceValue("Y1")->text(), QStringLiteral("66"));
}

void TestCalibrationCurves::fixedEndsNeverChangeAndReportNothing_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("value");
    QTest::newRow("first") << "X0"
                           << "0";
    QTest::newRow("last") << "X4"
                          << "1023";
}

void TestCalibrationCurves::fixedEndsNeverChangeAndReportNothing()
{
    QFETCH(QString, value);
    curve->showFor(curve->drive());
    QLineEdit *end = curve->field(place());
    QVERIFY(!end->isEnabled());
    QTest::mouseClick(end, Qt::LeftButton);
    QTest::keyClicks(end, "5");
    QTest::keyClick(end, Qt::Key_Backspace);
    QCOMPARE(end->text(), value);
    for (const int number : {-1, 0, 4}) {
        curve->page->newUserParam(readParam(number, 333));
        curve->page->newDeviceParam(readParam(number, 333));
    }
    curve->page->clearUserValues();
    QCOMPARE(end->text(), value);
    QCOMPARE(curve->deviceValue(place())->text(), value);
    QCOMPARE(curve->reports(), 0);
}

QTEST_MAIN(TestCalibrationCurves)

#include "tst_calibrationcurves.moc"
