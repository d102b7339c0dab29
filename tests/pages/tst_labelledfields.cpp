// What a labelled page makes of its widgets and of the drive's values.

#include "tests/pages/labelledpage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

namespace {

/// Connections to the end of a field; QObject tells them to its own kind only.
int connectionsToTheEndOf(const QLineEdit *field)
{
    struct Counter : QObject
    {
        static int count(const QObject *object)
        {
            return (object->*(&Counter::receivers))(SIGNAL(destroyed()));
        }
    };
    return Counter::count(field);
}

} // namespace

class TestLabelledFields : public IsolatedTest
{
    Q_OBJECT

private slots:
    void everyParameterOfFormBelongsToPage();
    void userValueIsBoldAndToRight();
    void deviceValueIsGreyAndToRight();
    void unitIsGreyAndComesFromDefinition();
    void nameComesFromDefinition();
    void nameAndUnitAreShownInUsersLanguage();
    void nameThatNoLabelShowsIsNotLookedUp();
    void readOnlyParameterShowsNoUserField();
    void fieldOfReadOnlyParameterIsNotBold();
    void readOnlyParameterShowsItsDeviceValue();

    void deviceValueIsShownAsRawNumber();
    void deviceValueBeyondLimitsIsShownAsItComes();
    void deviceValueStandsBesideBothFieldsOfParameter();
    void widgetsOfAnotherNameShowTheirParameter();
    void parameterOfAnotherPageChangesNothing();
    void recordWithoutParameterLeavesItsValue();
    void thousandRecordsLeaveNoMoreBehindThanTwo();

    void valueOfDriveIsShownBeforeFirstShowing();
    void limitsAreOpenUntilFirstDeviceValue();
    void limitsAreOpenAgainAtNextShowing();
    void limitsFollowDefinitionOfDrivesVersion();

    void separatorsOfUsersLanguageCannotBeTyped();
    void fieldOfReadOnlyVersionIsBackForWritableOne();

    void introductionWithoutTextIsHidden();
    void introductionShowsTextOfLanguage();

private:
    void prepare() override;
};

void TestLabelledFields::prepare()
{
    definePageParameters();
}

void TestLabelledFields::everyParameterOfFormBelongsToPage()
{
    QCOMPARE(LabelledPage().paramIds(), (QList<int> {0x03, 0x1E, 0x3C, 0x53}));
}

void TestLabelledFields::userValueIsBoldAndToRight()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.field("Param0x03")->font().weight(), int(QFont::Bold));
    QCOMPARE(page.field("Param0x03")->alignment(), Qt::AlignRight);
}

void TestLabelledFields::deviceValueIsGreyAndToRight()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(!page.deviceLabel("Param0x03")->isEnabled());
    QCOMPARE(page.deviceLabel("Param0x03")->alignment(), Qt::AlignRight);
}

void TestLabelledFields::unitIsGreyAndComesFromDefinition()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(!page.label("lParam0x03Unit")->isEnabled());
    QCOMPARE(page.label("lParam0x03Unit")->text(), QStringLiteral("ms"));
}

void TestLabelledFields::nameComesFromDefinition()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.label("lParam0x03ParamName")->text(), QStringLiteral("Rampe"));
}

void TestLabelledFields::nameAndUnitAreShownInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nRampe=Ramp\nms=millis\n");
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.label("lParam0x03ParamName")->text(), QStringLiteral("Ramp"));
    QCOMPARE(page.label("lParam0x03Unit")->text(), QStringLiteral("millis"));
}

void TestLabelledFields::nameThatNoLabelShowsIsNotLookedUp()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ParamDefinition]\nDrehzahl=Speed\n");
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.field("Param0x03")->accessibleName(), QStringLiteral("Rampe"));
    QCOMPARE(page.field("Param0x1E")->accessibleName(), QStringLiteral("Drehzahl"));
    Z7Services::shutdown();
    const QByteArray texts = WorkingFolder::read("deutsch.z7lang");
    QVERIFY(texts.contains("Rampe="));
    QVERIFY(!texts.contains("Umdrehungen="));
}

void TestLabelledFields::readOnlyParameterShowsNoUserField()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(page.field("Param0x53")->isHidden());
    QVERIFY(page.field("Param0x03")->isVisible());
}

void TestLabelledFields::fieldOfReadOnlyParameterIsNotBold()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.field("Param0x53")->font().weight(), int(QFont::Normal));
}

void TestLabelledFields::readOnlyParameterShowsItsDeviceValue()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(page.deviceLabel("Param0x53")->isVisible());
    QCOMPARE(page.deviceLabel("Param0x53")->text(), QStringLiteral("777"));
}

void TestLabelledFields::deviceValueIsShownAsRawNumber()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.deviceLabel("Param0x03")->text(), QStringLiteral("250"));
    QCOMPARE(page.deviceLabel("Param0x1E")->text(), QStringLiteral("-1500"));
}

void TestLabelledFields::deviceValueBeyondLimitsIsShownAsItComes()
{
    LabelledPage page;
    page.showFor(pageDrive());
    page.newDeviceParam(readParam(3, 60000));
    QCOMPARE(page.deviceLabel("Param0x03")->text(), QStringLiteral("60000"));
}

void TestLabelledFields::deviceValueStandsBesideBothFieldsOfParameter()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.deviceLabel("Param0x1E", "_2")->text(), QStringLiteral("-1500"));
}

void TestLabelledFields::widgetsOfAnotherNameShowTheirParameter()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QCOMPARE(page.deviceLabel("Revolution")->text(), QStringLiteral("7"));
    QCOMPARE(page.label("lRevolutionUnit")->text(), QStringLiteral("U"));
}

void TestLabelledFields::parameterOfAnotherPageChangesNothing()
{
    LabelledPage page;
    page.showFor(pageDrive());
    page.newDeviceParam(readParam(0x9999, 1));
    page.newDeviceParam(readParam(4, 1));
    for (const char *stem : {"Param0x03", "Param0x1E", "Revolution", "Param0x53"})
        QVERIFY(page.deviceLabel(stem)->text() != QStringLiteral("1"));
}

void TestLabelledFields::recordWithoutParameterLeavesItsValue()
{
    LabelledPage page;
    page.showFor(pageDrive());
    page.DeviceUpdate(deviceWith({readParam(60, 8)}));
    QCOMPARE(page.deviceLabel("Param0x03")->text(), QStringLiteral("250"));
    QCOMPARE(page.deviceLabel("Revolution")->text(), QStringLiteral("8"));
}

void TestLabelledFields::valueOfDriveIsShownBeforeFirstShowing()
{
    LabelledPage page;
    page.DeviceUpdate(pageDrive());
    QCOMPARE(page.deviceLabel("Param0x03")->text(), QStringLiteral("250"));
    QCOMPARE(page.deviceLabel("Param0x1E", "_2")->text(), QStringLiteral("-1500"));
    QVERIFY(!page.field("Param0x03")->validator());
}

void TestLabelledFields::limitsAreOpenUntilFirstDeviceValue()
{
    LabelledPage page;
    page.softwareVersion = "V123";
    page.initPage();
    QCOMPARE(page.validator("Param0x03")->bottom(), INT_MIN);
    QCOMPARE(page.validator("Param0x03")->top(), INT_MAX);
    page.newDeviceParam(readParam(3, 250));
    QCOMPARE(page.validator("Param0x03")->bottom(), 10);
    QCOMPARE(page.validator("Param0x03")->top(), 500);
}

void TestLabelledFields::limitsAreOpenAgainAtNextShowing()
{
    LabelledPage page;
    page.showFor(pageDrive());
    page.initPage();
    QCOMPARE(page.validator("Param0x03")->top(), INT_MAX);
}

void TestLabelledFields::separatorsOfUsersLanguageCannotBeTyped()
{
    QLocale::setDefault(QLocale(QLocale::German));
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(!Person::type(page.field("Param0x03"), "2.00"));
    QLocale::setDefault(QLocale::c());
    QCOMPARE(page.field("Param0x03")->text(), QStringLiteral("200"));
}

void TestLabelledFields::fieldOfReadOnlyVersionIsBackForWritableOne()
{
    defineParameters("V300", {"83;Hours;h;0;0;9;Unsigned;1;rw;0;"});
    LabelledPage page;
    page.showFor(pageDrive());
    page.softwareVersion = "V300";
    page.initPage();
    QVERIFY(page.field("Param0x53")->isVisible());
}

void TestLabelledFields::limitsFollowDefinitionOfDrivesVersion()
{
    LabelledPage page;
    page.showFor(pageDrive());
    Z7Device other = deviceWith({readParam(3, 250)});
    other.setSoftwareVersion("V200");
    page.showFor(other);
    QCOMPARE(page.validator("Param0x03")->bottom(), 0);
    QCOMPARE(page.validator("Param0x03")->top(), 99);
}

void TestLabelledFields::introductionWithoutTextIsHidden()
{
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(page.label("lIntro")->isHidden());
}

void TestLabelledFields::introductionShowsTextOfLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang", "[DialogTest]\nIntroduction=Rampen des Reglers\n");
    LabelledPage page;
    page.showFor(pageDrive());
    QVERIFY(page.label("lIntro")->isVisible());
    QCOMPARE(page.label("lIntro")->text(), QStringLiteral("Rampen des Reglers"));
}

void TestLabelledFields::thousandRecordsLeaveNoMoreBehindThanTwo()
{
    LabelledPage page;
    page.showFor(pageDrive());
    page.DeviceUpdate(pageDrive());
    const int afterTwo = connectionsToTheEndOf(page.field("Param0x03"));
    for (int record = 2; record < 1000; ++record)
        page.DeviceUpdate(pageDrive());
    QCOMPARE(connectionsToTheEndOf(page.field("Param0x03")), afterTwo);
}

QTEST_MAIN(TestLabelledFields)

#include "tst_labelledfields.moc"
