// Pages whose parameters act in one operating mode only, and the page where the modes are set.

#include "tests/pages/shownpage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <limits>

using namespace PageNumber;

namespace {

/// Two modes have words, in both places.
void defineModes()
{
    for (const int input : {1, 2})
        defineParameters("V123",
            {QString("%1;Betriebsmodus I%1;;0;0;8;Unsigned;0;rw;0;Analog;Fest %1;;Position %1;;;Zurück %1;")
                    .arg(input)});
    defineParameters("V123", {"6;Wiederanlauf;;0;0;2;Unsigned;1;rw;0;gesperrt;erlaubt;"});
}

} // namespace

class TestModePages : public IsolatedTest
{
    Q_OBJECT

private slots:
    // The panel
    void warningStandsUnlessModeIsThatOfPage_data();
    void warningStandsUnlessModeIsThatOfPage();
    void panelTellsWhichModesCount_data();
    void panelTellsWhichModesCount();
    void panelIsInUsersLanguage_data() { pagesWithAPanel(); }
    void panelIsInUsersLanguage();
    void modesStandInNumbersAndWords_data() { pagesWithAPanel(); }
    void modesStandInNumbersAndWords();
    void modeWithoutWordsLeavesItsPartEmpty_data();
    void modeWithoutWordsLeavesItsPartEmpty();
    void wordsOfModesAreTranslated_data() { pagesWithAPanel(); }
    void wordsOfModesAreTranslated();
    void warningGoesAndComesWithModesOfDrive_data() { pagesWithAPanel(); }
    void warningGoesAndComesWithModesOfDrive();
    void parameterOfAnotherPageBringsPanelUpToDate_data() { pagesWithAPanel(); }
    void parameterOfAnotherPageBringsPanelUpToDate();
    void recordWithoutParameterLeavesPanel();
    void panelForgetsModesAtNextShowing_data() { pagesWithAPanel(); }
    void panelForgetsModesAtNextShowing();

    // The page of the modes
    void modesAndRestartStandInNumbersAndWords();
    void parameterOfAnotherPageChangesNoWords();
    void valueWithoutWordsHasNoBrackets();
    void valueWhoseWordsAreTranslatedToNothingKeepsItsBrackets();
    void wordsFollowDriveAndNotUser();
    void wordsAreTranslated();
    void userValueIsBoldAndDeviceValueGrey_data() { modeFields(); }
    void userValueIsBoldAndDeviceValueGrey();
    void fieldTakesAnyNumberBeforeFirstValue_data() { modeFields(); }
    void fieldTakesAnyNumberBeforeFirstValue();
    void fieldTakesLimitsOfDefinition();
    void typedModeIsReported_data() { modeFields(); }
    void typedModeIsReported();
    void readOnlyModeHasNoField();
    void restoredModeIsNotReported_data() { modeFields(); }
    void restoredModeIsNotReported();
    void clearedModesAreNotReported();
    void clearedModeCannotBeBroughtBack_data() { modeFields(); }
    void clearedModeCannotBeBroughtBack();
    void anotherShowingEmptiesWords();

private:
    void prepare() override;

    static void pagesWithAPanel();
    static void modeFields();
    Z7Device modeDrive() const
    {
        return inModes(driveWith({readParam(1, 3), readParam(2, 6), readParam(6, 1)}), 3, 6);
    }
    /// A drive with one parameter of the page, so that its record brings the modes.
    Z7Device driveOf(const ShownPage &shown, int mode1, int mode2) const
    {
        return inModes(driveWith({readParam(shown.page->paramIds().constFirst(), 1)}), mode1, mode2);
    }
};

void TestModePages::prepare()
{
    defineModes();
}

void TestModePages::pagesWithAPanel()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("section");
    QTest::newRow("fixed speeds") << int(FixedResolutions) << QByteArray("DialogFixedResolutions");
    QTest::newRow("positioning") << int(Positioning) << QByteArray("DialogPositioning");
}

void TestModePages::modeFields()
{
    QTest::addColumn<QString>("widgets");
    QTest::addColumn<int>("number");
    QTest::newRow("first input") << "RevolutionN1" << 1;
    QTest::newRow("second input") << "RevolutionN2" << 2;
    QTest::newRow("restart") << "RevolutionN3" << 6;
}

void TestModePages::warningStandsUnlessModeIsThatOfPage_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("mode1");
    QTest::addColumn<int>("mode2");
    QTest::addColumn<bool>("warns");
    QTest::newRow("positioning in 3/6") << int(Positioning) << 3 << 6 << false;
    QTest::newRow("positioning in 6/3") << int(Positioning) << 6 << 3 << false;
    QTest::newRow("positioning in 3/3") << int(Positioning) << 3 << 3 << false;
    QTest::newRow("positioning in 1/2") << int(Positioning) << 1 << 2 << true;
    QTest::newRow("fixed speeds in 1/0") << int(FixedResolutions) << 1 << 0 << false;
    QTest::newRow("fixed speeds in 0/1") << int(FixedResolutions) << 0 << 1 << false;
    QTest::newRow("fixed speeds in 3/2") << int(FixedResolutions) << 3 << 2 << true;
}

void TestModePages::warningStandsUnlessModeIsThatOfPage()
{
    QFETCH(int, page);
    QFETCH(int, mode1);
    QFETCH(int, mode2);
    ShownPage shown(page);
    shown.showFor(driveOf(shown, mode1, mode2));
    QTEST(!shown.label("lSwitchOperationsModeInfo")->isHidden(), "warns");
}

void TestModePages::panelTellsWhichModesCount_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("modeInfo");
    QTest::newRow("fixed speeds")
        << int(FixedResolutions)
        << "Die Parameter der Festdrehzahlen kommen nur im Betriebsmodus 1/x oder x/1 zur Anwendung.";
    QTest::newRow("positioning")
        << int(Positioning)
        << "Zum Abfahren einer Strecke muß der Betriebsmodus 3/x oder x/3 parametrisiert sein. Um die "
           "Strecke in die Gegenrichtung zu fahren, sind die Betriebsmodi 3/6 oder 6/3 auszuwählen. "
           "Falls die Strecke in der Anwendung \"geteached\" werden soll, ist der zu wählende Modus 3/4 bzw. "
           "4/3.";
}

void TestModePages::panelTellsWhichModesCount()
{
    QFETCH(int, page);
    ShownPage shown(page);
    shown.showFor(driveOf(shown, 0, 0));
    QTEST(shown.text("lOperationsModeIntro"), "modeInfo");
    QCOMPARE(shown.text("lCurrentOperationsMode"), QStringLiteral("Aktueller Betriebsmodus:"));
    QCOMPARE(shown.text("lSwitchOperationsModeInfo"),
        QStringLiteral(
            "Bitte wechseln Sie den aktuellen Betriebsmodus, um die Parameter zur Anwendung zu bringen!"));
}

void TestModePages::panelIsInUsersLanguage()
{
    QFETCH(int, page);
    QFETCH(QByteArray, section);
    WorkingFolder::writeText("deutsch.z7lang",
        "[" + section
            + "]\nOperationsModeInfo=Which modes\nCurrentOperaionsMode=Mode now\n"
              "SwitchOperationsModeInfo=Change it\n");
    ShownPage shown(page);
    shown.showFor(driveOf(shown, 0, 0));
    QCOMPARE(shown.text("lOperationsModeIntro"), QStringLiteral("Which modes"));
    QCOMPARE(shown.text("lCurrentOperationsMode"), QStringLiteral("Mode now"));
    QCOMPARE(shown.text("lSwitchOperationsModeInfo"), QStringLiteral("Change it"));
}

void TestModePages::modesStandInNumbersAndWords()
{
    QFETCH(int, page);
    ShownPage shown(page);
    shown.showFor(driveOf(shown, 3, 6));
    QCOMPARE(shown.text("LCurrentOperationsModeTxt"), QStringLiteral("3/6 (Position 1/Zurück 2)"));
}

void TestModePages::modeWithoutWordsLeavesItsPartEmpty_data()
{
    QTest::addColumn<int>("mode1");
    QTest::addColumn<int>("mode2");
    QTest::addColumn<QString>("modePair");
    QTest::newRow("the first") << 2 << 3 << "2/3 (/Position 2)";
    QTest::newRow("the second") << 1 << 2 << "1/2 (Fest 1/)";
    QTest::newRow("both") << 7 << 2 << "7/2 (/)";
    QTest::newRow("beyond the last of the definition") << 99 << 1 << "99/1 (/Fest 2)";
}

void TestModePages::modeWithoutWordsLeavesItsPartEmpty()
{
    QFETCH(int, mode1);
    QFETCH(int, mode2);
    ShownPage shown(Positioning);
    shown.showFor(driveOf(shown, mode1, mode2));
    QTEST(shown.text("LCurrentOperationsModeTxt"), "modePair");
}

void TestModePages::wordsOfModesAreTranslated()
{
    QFETCH(int, page);
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nPosition%201=forth\nZur%FCck%202=back\n");
    ShownPage shown(page);
    shown.showFor(driveOf(shown, 3, 6));
    QCOMPARE(shown.text("LCurrentOperationsModeTxt"), QStringLiteral("3/6 (forth/back)"));
}

void TestModePages::warningGoesAndComesWithModesOfDrive()
{
    QFETCH(int, page);
    ShownPage shown(page);
    const QLabel *warning = shown.label("lSwitchOperationsModeInfo");
    shown.showFor(driveOf(shown, 4, 5));
    QVERIFY(warning->isVisible());
    shown.page->DeviceUpdate(driveOf(shown, 1, 3));
    QVERIFY(!warning->isVisible());
    shown.page->DeviceUpdate(driveOf(shown, 4, 5));
    QVERIFY(warning->isVisible());
}

void TestModePages::parameterOfAnotherPageBringsPanelUpToDate()
{
    QFETCH(int, page);
    ShownPage shown(page);
    shown.showFor(driveOf(shown, 3, 6));
    shown.page->initPage();
    shown.page->newDeviceParam(readParam(0x7FFF, 1));
    QCOMPARE(shown.text("LCurrentOperationsModeTxt"), QStringLiteral("3/6 (Position 1/Zurück 2)"));
}

void TestModePages::recordWithoutParameterLeavesPanel()
{
    ShownPage shown(Positioning);
    shown.showFor(driveOf(shown, 3, 6));
    shown.page->DeviceUpdate(inModes(driveWith({}), 1, 2));
    QCOMPARE(shown.text("LCurrentOperationsModeTxt"), QStringLiteral("3/6 (Position 1/Zurück 2)"));
}

void TestModePages::panelForgetsModesAtNextShowing()
{
    QFETCH(int, page);
    ShownPage shown(page);
    shown.showFor(driveOf(shown, 3, 6));
    shown.page->initPage();
    QCOMPARE(shown.text("LCurrentOperationsModeTxt"), QString());
}

void TestModePages::modesAndRestartStandInNumbersAndWords()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QCOMPARE(shown.text("lRevolutionN1"), QStringLiteral("Betriebsmodus I1"));
    QCOMPARE(shown.text("lRevolutionN2"), QStringLiteral("Betriebsmodus I2"));
    QCOMPARE(shown.text("lRevolutionN3"), QStringLiteral("Wiederanlauf"));
    QCOMPARE(shown.text("lRevolutionN1Device"), QStringLiteral("3"));
    QCOMPARE(shown.text("lRevolutionN2Device"), QStringLiteral("6"));
    QCOMPARE(shown.text("lRevolutionN3Device"), QStringLiteral("1"));
    QCOMPARE(shown.text("lTextI1"), QStringLiteral("(Position 1)"));
    QCOMPARE(shown.text("lTextI2"), QStringLiteral("(Zurück 2)"));
    QCOMPARE(shown.text("lTextWiederanlauf"), QStringLiteral("(erlaubt)"));
}

void TestModePages::parameterOfAnotherPageChangesNoWords()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    shown.page->DeviceUpdate(driveWith({readParam(1, 3), readParam(0x7FFF, 1)}));
    shown.page->newDeviceParam(readParam(0x7FFF, 1));
    QCOMPARE(shown.text("lTextI1"), QStringLiteral("(Position 1)"));
}

void TestModePages::valueWithoutWordsHasNoBrackets()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    shown.page->DeviceUpdate(driveWith({readParam(1, 2), readParam(6, 2)}));
    QCOMPARE(shown.text("lTextI1"), QString());
    QCOMPARE(shown.text("lTextWiederanlauf"), QString());
}

void TestModePages::valueWhoseWordsAreTranslatedToNothingKeepsItsBrackets()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nPosition%201=\n");
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QCOMPARE(shown.text("lTextI1"), QStringLiteral("()"));
}

void TestModePages::wordsFollowDriveAndNotUser()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QVERIFY(Person::type(shown.field("edRevolutionN1User"), "1"));
    QCOMPARE(shown.text("lTextI1"), QStringLiteral("(Position 1)"));
    shown.page->DeviceUpdate(driveWith({readParam(1, 1)}));
    QCOMPARE(shown.text("lTextI1"), QStringLiteral("(Fest 1)"));
}

void TestModePages::wordsAreTranslated()
{
    WorkingFolder::writeText(
        "deutsch.z7lang", "[ParamDefinition]\nPosition%201=positioning\nWiederanlauf=restart\n");
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QCOMPARE(shown.text("lTextI1"), QStringLiteral("(positioning)"));
    QCOMPARE(shown.text("lRevolutionN3"), QStringLiteral("restart"));
}

void TestModePages::userValueIsBoldAndDeviceValueGrey()
{
    QFETCH(QString, widgets);
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    const QLineEdit *field = shown.field("ed" + widgets + "User");
    QCOMPARE(field->font().weight(), int(QFont::Bold));
    QCOMPARE(field->alignment(), Qt::AlignRight);
    const QLabel *deviceValue = shown.label("l" + widgets + "Device");
    QVERIFY(!deviceValue->isEnabled());
    QCOMPARE(deviceValue->alignment(), Qt::AlignRight);
}

void TestModePages::fieldTakesAnyNumberBeforeFirstValue()
{
    QFETCH(QString, widgets);
    ShownPage shown(OperationsMode);
    shown.showFor(driveWith({}));
    QLineEdit *field = shown.field("ed" + widgets + "User");
    for (const int number : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QVERIFY(Person::type(field, QString::number(number)));
        QVERIFY(field->hasAcceptableInput());
    }
}

void TestModePages::fieldTakesLimitsOfDefinition()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QLineEdit *field = shown.field("edRevolutionN3User");
    QVERIFY(!Person::type(field, "-"));
    QCOMPARE(field->text(), QString());
    QVERIFY(Person::type(field, "2"));
    QVERIFY(field->hasAcceptableInput());
    QVERIFY(!Person::typeAtEnd(field, "5"));
    QCOMPARE(field->text(), QStringLiteral("2"));
}

void TestModePages::typedModeIsReported()
{
    QFETCH(QString, widgets);
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QLineEdit *field = shown.field("ed" + widgets + "User");
    QVERIFY(Person::type(field, "1"));
    QTEST(lastReported(shown.modified).number, "number");
    QCOMPARE(lastReported(shown.modified).value, 1);
    QVERIFY(Person::empty(field));
    QTEST(lastReported(shown.deleted).number, "number");
}

void TestModePages::readOnlyModeHasNoField()
{
    defineParameters("V123", {"6;Wiederanlauf;;0;0;2;Unsigned;1;r;0;gesperrt;"});
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QVERIFY(!shown.field("edRevolutionN3User")->isVisible());
    QVERIFY(shown.field("edRevolutionN1User")->isVisible());
}

void TestModePages::restoredModeIsNotReported()
{
    QFETCH(QString, widgets);
    QFETCH(int, number);
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    shown.page->applyUserParams(paramSet({readParam(number, 2)}));
    QCOMPARE(shown.field("ed" + widgets + "User")->text(), QStringLiteral("2"));
    QCOMPARE(shown.modified.count(), 0);
}

void TestModePages::clearedModesAreNotReported()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    shown.page->applyUserParams(paramSet({readParam(1, 1), readParam(2, 2), readParam(6, 1)}));
    shown.page->clearUserValues();
    for (const QLineEdit *field : shown.page->findChildren<QLineEdit *>())
        QCOMPARE(field->text(), QString());
    QCOMPARE(shown.modified.count() + shown.deleted.count(), 0);
}

void TestModePages::clearedModeCannotBeBroughtBack()
{
    QFETCH(QString, widgets);
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    QLineEdit *field = shown.field("ed" + widgets + "User");
    QCOMPARE(textAfterUndo(field), QString());
    QVERIFY(Person::type(field, "2"));
    shown.showFor(modeDrive());
    QCOMPARE(textAfterUndo(field), QString());
}

void TestModePages::anotherShowingEmptiesWords()
{
    ShownPage shown(OperationsMode);
    shown.showFor(modeDrive());
    shown.page->initPage();
    QCOMPARE(shown.text("lTextI1") + shown.text("lTextI2") + shown.text("lTextWiederanlauf"), QString());
}

QTEST_MAIN(TestModePages)

#include "tst_modepages.moc"
