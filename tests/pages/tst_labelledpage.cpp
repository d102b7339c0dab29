// The life of an edit on a labelled page: what the page reports for what is typed, and what it never reports.

#include "tests/pages/labelledpage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <optional>

class TestLabelledPage : public IsolatedTest
{
    Q_OBJECT

private slots:
    void typedNumberIsReportedAsChange();
    void reportBearsNothingButNumberAndValue();
    void reportTellsSignOfDefinition();
    void eachKeystrokeReportsNumberSoFar();
    void emptiedFieldWithdrawsChange();
    void loneMinusSignReportsNothing();
    void numberBelowMinimumIsStillReported();
    void letterIsNotTaken();
    void fieldOfAnotherNameReportsItsParameter();
    void numberThatIsNoneOfPagesReportsNothing();
    void keystrokeBeforeFirstDeviceValueReportsNothing();

    void oneRecordReportsKeystrokeOnce();
    void laterRecordsRepeatSameReport();
    void dayOfRecordsReportsKeystrokeNoMoreThanTwice();
    void newShowingReportsKeystrokeOnceAgain();

    void restoredUserValueIsShownAndNotReported();
    void userValueThatIsNoneIsIgnored();
    void userValueOfAnotherPageLeavesFields();
    void typingIntoRestoredFieldIsReported();
    void pendingValueOfAnotherDriveCannotBeBroughtBack_data();
    void pendingValueOfAnotherDriveCannotBeBroughtBack();
    void valueOfHiddenFieldCannotBeBroughtBackOnceItIsShown();
    void fieldsShowOwnChangesAgainAfterThoseOfAnotherDrive();
    void clearingEmptiesEveryFieldWithoutReport();
    void clearingReachesHiddenFieldOfReadOnlyParameter();
    void userValueStaysWhileDeviceValuesChange();

    void textOfOneFieldAppearsInSecond();
    void textOfSecondFieldAppearsInFirst();
    void secondFieldReportsParameterOnce();
    void emptiedSecondFieldWithdrawsChange();
    void restoredValueStandsInBothFields();

private:
    void prepare() override;
    void tidyUp() override;

    std::optional<LabelledPage> page;
    std::optional<QSignalSpy> modified;
    std::optional<QSignalSpy> deleted;
};

void TestLabelledPage::prepare()
{
    definePageParameters();
    page.emplace();
    page->showFor(pageDrive());
    modified.emplace(&*page, SIGNAL(parameterModified(Z7DeviceParam)));
    deleted.emplace(&*page, SIGNAL(parameterDeleted(Z7DeviceParam)));
}

void TestLabelledPage::tidyUp()
{
    deleted.reset();
    modified.reset();
    page.reset();
}

void TestLabelledPage::typedNumberIsReportedAsChange()
{
    QVERIFY(Person::type(page->field("Param0x03"), "200"));
    QCOMPARE(lastReported(*modified).number, 3);
    QCOMPARE(lastReported(*modified).value, 200);
    QVERIFY(lastReported(*modified).hasValue);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::reportBearsNothingButNumberAndValue()
{
    Z7DeviceParam failed = readParam(3, 250);
    failed.error = 6;
    failed.conflict = failed.writeFailed = failed.accessDenied = true;
    page->newDeviceParam(failed);
    QVERIFY(Person::type(page->field("Param0x03"), "9"));
    const Z7DeviceParam reported = lastReported(*modified);
    QCOMPARE(reported.error, 0);
    QVERIFY(!reported.valid && !reported.conflict && !reported.writeFailed && !reported.accessDenied);
}

void TestLabelledPage::reportTellsSignOfDefinition()
{
    QVERIFY(Person::type(page->field("Param0x03"), "200"));
    QCOMPARE(lastReported(*modified).isUnsigned, 1);
    QVERIFY(Person::type(page->field("Param0x1E"), "-200"));
    QCOMPARE(lastReported(*modified).isUnsigned, 0);
    QCOMPARE(lastReported(*modified).value, -200);
}

void TestLabelledPage::eachKeystrokeReportsNumberSoFar()
{
    QVERIFY(Person::type(page->field("Param0x03"), "123"));
    QList<int> values;
    for (const QList<QVariant> &report : qAsConst(*modified))
        values.append(report.first().value<Z7DeviceParam>().value);
    QCOMPARE(values, (QList<int> {1, 12, 123}));
}

void TestLabelledPage::emptiedFieldWithdrawsChange()
{
    QVERIFY(Person::type(page->field("Param0x1E"), "200"));
    modified->clear();
    QVERIFY(Person::empty(page->field("Param0x1E")));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 1);
    QCOMPARE(lastReported(*deleted).number, 0x1E);
    QCOMPARE(lastReported(*deleted).value, 0);
    QCOMPARE(lastReported(*deleted).isUnsigned, 0);
    QVERIFY(lastReported(*deleted).hasValue);
}

void TestLabelledPage::loneMinusSignReportsNothing()
{
    QVERIFY(Person::type(page->field("Param0x1E"), "-"));
    QCOMPARE(page->field("Param0x1E")->text(), QStringLiteral("-"));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::numberBelowMinimumIsStillReported()
{
    QVERIFY(Person::type(page->field("Param0x03"), "5"));
    QCOMPARE(lastReported(*modified).value, 5);
}

void TestLabelledPage::letterIsNotTaken()
{
    QVERIFY(!Person::type(page->field("Param0x03"), "x"));
    QCOMPARE(page->field("Param0x03")->text(), QString());
    QCOMPARE(modified->count(), 0);
}

void TestLabelledPage::fieldOfAnotherNameReportsItsParameter()
{
    QVERIFY(Person::type(page->field("Revolution"), "42"));
    QCOMPARE(lastReported(*modified).number, 0x3C);
    QCOMPARE(lastReported(*modified).value, 42);
}

void TestLabelledPage::numberThatIsNoneOfPagesReportsNothing()
{
    QVERIFY(QMetaObject::invokeMethod(&*page, "ParamChanged", Q_ARG(int, 4)));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::keystrokeBeforeFirstDeviceValueReportsNothing()
{
    page->initPage();
    QVERIFY(Person::type(page->field("Param0x03"), "200"));
    QCOMPARE(page->field("Param0x03")->text(), QStringLiteral("200"));
    QCOMPARE(modified->count(), 0);
}

void TestLabelledPage::oneRecordReportsKeystrokeOnce()
{
    QVERIFY(Person::type(page->field("Param0x03"), "7"));
    QCOMPARE(modified->count(), 1);
}

void TestLabelledPage::laterRecordsRepeatSameReport()
{
    page->DeviceUpdate(pageDrive());
    QVERIFY(Person::type(page->field("Param0x03"), "7"));
    QCOMPARE(modified->count(), 2);
    for (const QList<QVariant> &report : qAsConst(*modified))
        QCOMPARE(report.first().value<Z7DeviceParam>().value, 7);
}

void TestLabelledPage::dayOfRecordsReportsKeystrokeNoMoreThanTwice()
{
    for (int record = 0; record < 1000; ++record)
        page->DeviceUpdate(pageDrive());
    QVERIFY(Person::type(page->field("Param0x03"), "7"));
    QCOMPARE(modified->count(), 2);
}

void TestLabelledPage::newShowingReportsKeystrokeOnceAgain()
{
    page->DeviceUpdate(pageDrive());
    page->showFor(pageDrive());
    QVERIFY(Person::type(page->field("Param0x03"), "7"));
    QCOMPARE(modified->count(), 1);
}

void TestLabelledPage::restoredUserValueIsShownAndNotReported()
{
    page->applyUserParams(paramSet({readParam(3, 200), readParam(30, -7)}));
    QCOMPARE(page->field("Param0x03")->text(), QStringLiteral("200"));
    QCOMPARE(page->field("Param0x1E")->text(), QStringLiteral("-7"));
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::userValueThatIsNoneIsIgnored()
{
    page->newUserParam(Z7DeviceParam(3, 200, 1, false));
    QCOMPARE(page->field("Param0x03")->text(), QString());
}

void TestLabelledPage::userValueOfAnotherPageLeavesFields()
{
    page->newUserParam(readParam(4, 200));
    for (const QLineEdit *field : page->findChildren<QLineEdit *>())
        QCOMPARE(field->text(), QString());
}

void TestLabelledPage::typingIntoRestoredFieldIsReported()
{
    page->newUserParam(readParam(3, 20));
    QVERIFY(Person::typeAtEnd(page->field("Param0x03"), "1"));
    QCOMPARE(lastReported(*modified).value, 201);
}

void TestLabelledPage::pendingValueOfAnotherDriveCannotBeBroughtBack_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("emptied");
    QTest::addColumn<QList<int>>("own");
    QTest::addColumn<QString>("shown");
    QTest::newRow("typed") << "77" << false << QList<int> {} << "";
    QTest::newRow("typed and deleted by hand") << "77" << true << QList<int> {} << "";
    QTest::newRow("a lone sign") << "-" << false << QList<int> {} << "";
    QTest::newRow("typed where this drive has a change") << "77" << false << QList<int> {5} << "5";
    QTest::newRow("typed where this drive has the same") << "77" << false << QList<int> {77} << "77";
}

void TestLabelledPage::pendingValueOfAnotherDriveCannotBeBroughtBack()
{
    QFETCH(QString, typed);
    QFETCH(bool, emptied);
    QFETCH(QList<int>, own);
    QFETCH(QString, shown);
    QLineEdit *field = page->field("Param0x1E");
    QVERIFY(Person::type(field, typed));
    if (emptied)
        QVERIFY(Person::empty(field));
    page->showFor(pageDrive());
    for (const int value : own)
        page->newUserParam(readParam(30, value));
    modified->clear();
    deleted->clear();
    QCOMPARE(textAfterUndo(field), shown);
    QCOMPARE(page->field("Param0x1E", "_2")->text(), shown);
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::valueOfHiddenFieldCannotBeBroughtBackOnceItIsShown()
{
    page->newUserParam(readParam(83, 778));
    defineParameters("V300", {"83;Hours;h;0;0;9;Unsigned;1;rw;0;"});
    Z7Device other = deviceWith({readParam(83, 4)});
    other.setSoftwareVersion("V300");
    page->showFor(other);
    QVERIFY(page->field("Param0x53")->isVisible());
    QCOMPARE(textAfterUndo(page->field("Param0x53")), QString());
}

void TestLabelledPage::fieldsShowOwnChangesAgainAfterThoseOfAnotherDrive()
{
    page->applyUserParams(paramSet({readParam(3, 111), readParam(60, 11)}));
    page->showUserValues(paramSet({readParam(3, 200)}));
    QCOMPARE(page->field("Param0x03")->text(), QStringLiteral("200"));
    QCOMPARE(page->field("Revolution")->text(), QString());
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::clearingEmptiesEveryFieldWithoutReport()
{
    page->applyUserParams(paramSet({readParam(3, 200), readParam(30, -7), readParam(60, 9)}));
    page->clearUserValues();
    for (const QLineEdit *field : page->findChildren<QLineEdit *>())
        QCOMPARE(field->text(), QString());
    QCOMPARE(modified->count(), 0);
    QCOMPARE(deleted->count(), 0);
}

void TestLabelledPage::clearingReachesHiddenFieldOfReadOnlyParameter()
{
    page->newUserParam(readParam(83, 1));
    QCOMPARE(page->field("Param0x53")->text(), QStringLiteral("1"));
    page->clearUserValues();
    QCOMPARE(page->field("Param0x53")->text(), QString());
    QVERIFY(page->field("Param0x53")->isHidden());
}

void TestLabelledPage::userValueStaysWhileDeviceValuesChange()
{
    QVERIFY(Person::type(page->field("Param0x03"), "200"));
    page->DeviceUpdate(deviceWith({readParam(3, 200)}));
    page->DeviceUpdate(deviceWith({readParam(3, 201)}));
    QCOMPARE(page->field("Param0x03")->text(), QStringLiteral("200"));
    QCOMPARE(page->field("Param0x03")->font().weight(), int(QFont::Bold));
    QCOMPARE(page->deviceLabel("Param0x03")->text(), QStringLiteral("201"));
}

void TestLabelledPage::textOfOneFieldAppearsInSecond()
{
    QVERIFY(Person::type(page->field("Param0x1E"), "-20"));
    QCOMPARE(page->field("Param0x1E", "_2")->text(), QStringLiteral("-20"));
}

void TestLabelledPage::textOfSecondFieldAppearsInFirst()
{
    QVERIFY(Person::type(page->field("Param0x1E", "_2"), "-20"));
    QCOMPARE(page->field("Param0x1E")->text(), QStringLiteral("-20"));
}

void TestLabelledPage::secondFieldReportsParameterOnce()
{
    QVERIFY(Person::type(page->field("Param0x1E", "_2"), "8"));
    QCOMPARE(modified->count(), 1);
    QCOMPARE(lastReported(*modified).number, 0x1E);
    QCOMPARE(lastReported(*modified).value, 8);
}

void TestLabelledPage::emptiedSecondFieldWithdrawsChange()
{
    page->newUserParam(readParam(30, 8));
    QVERIFY(Person::empty(page->field("Param0x1E", "_2")));
    QCOMPARE(page->field("Param0x1E")->text(), QString());
    QCOMPARE(lastReported(*deleted).number, 0x1E);
    QCOMPARE(modified->count(), 0);
}

void TestLabelledPage::restoredValueStandsInBothFields()
{
    page->newUserParam(readParam(30, 8));
    QCOMPARE(page->field("Param0x1E")->text(), QStringLiteral("8"));
    QCOMPARE(page->field("Param0x1E", "_2")->text(), QStringLiteral("8"));
}

QTEST_MAIN(TestLabelledPage)

#include "tst_labelledpage.moc"
