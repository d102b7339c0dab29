// The reversing threshold acts in two quadrants, so the page of the current limits shows it in two fields.

#include "tests/pages/shownpage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <optional>

class TestCurrentLimitsPage : public IsolatedTest
{
    Q_OBJECT

private slots:
    void driveValueStandsInBothPlaces();
    void typingInOneFieldFillsOther_data();
    void typingInOneFieldFillsOther();
    void noReportBearsPrivateNumber_data();
    void noReportBearsPrivateNumber();
    void emptyingOneFieldEmptiesOtherAndWithdrawsChange();
    void userValueComesBackIntoBothFields();
    void clearingEmptiesBothFields();
    void loneSignInOneFieldReportsNothing();

private:
    void prepare() override;
    void tidyUp() override;

    std::optional<ShownPage> shown;
    QLineEdit *upper = nullptr;
    QLineEdit *lower = nullptr;
};

void TestCurrentLimitsPage::prepare()
{
    defineParameters("V123", {"54;Reversierschwelle;1/min;50;-1000;1000;Signed;1;rw;0;"});
    shown.emplace(PageNumber::CurrentLimits);
    shown->showFor(driveWith({readParam(0x36, 50)}));
    upper = shown->field("edParam0x36User");
    lower = shown->field("edParam0x36User_2");
}

void TestCurrentLimitsPage::tidyUp()
{
    shown.reset();
}

void TestCurrentLimitsPage::driveValueStandsInBothPlaces()
{
    QCOMPARE(shown->text("lParam0x36Device"), QStringLiteral("50"));
    QCOMPARE(shown->text("lParam0x36Device_2"), QStringLiteral("50"));
    QCOMPARE(shown->text("lParam0x36Unit_2"), QStringLiteral("1/min"));
}

void TestCurrentLimitsPage::typingInOneFieldFillsOther_data()
{
    QTest::addColumn<QString>("typedInto");
    QTest::addColumn<QString>("other");
    QTest::newRow("the first") << "edParam0x36User"
                               << "edParam0x36User_2";
    QTest::newRow("the second") << "edParam0x36User_2"
                                << "edParam0x36User";
}

void TestCurrentLimitsPage::typingInOneFieldFillsOther()
{
    QFETCH(QString, typedInto);
    QFETCH(QString, other);
    QVERIFY(Person::type(shown->field(typedInto), "12"));
    QCOMPARE(shown->field(other)->text(), QStringLiteral("12"));
    QCOMPARE(lastReported(shown->modified).number, 0x36);
    QCOMPARE(lastReported(shown->modified).value, 12);
}

void TestCurrentLimitsPage::noReportBearsPrivateNumber_data()
{
    QTest::addColumn<int>("laterRecords");
    QTest::newRow("after the first record") << 0;
    QTest::newRow("after many records") << 20;
}

void TestCurrentLimitsPage::noReportBearsPrivateNumber()
{
    QFETCH(int, laterRecords);
    for (int record = 0; record < laterRecords; ++record)
        shown->page->DeviceUpdate(driveWith({readParam(0x36, record)}));
    QVERIFY(Person::type(upper, "1"));
    QVERIFY(Person::type(lower, "2"));
    QVERIFY(Person::empty(lower));
    for (const QSignalSpy *spy : {&shown->modified, &shown->deleted}) {
        QVERIFY(!spy->isEmpty());
        for (const auto &report : *spy)
            QCOMPARE(report.first().value<Z7DeviceParam>().number, 0x36);
    }
}

void TestCurrentLimitsPage::emptyingOneFieldEmptiesOtherAndWithdrawsChange()
{
    QVERIFY(Person::type(upper, "12"));
    QVERIFY(Person::empty(lower));
    QCOMPARE(upper->text(), QString());
    QCOMPARE(lastReported(shown->deleted).number, 0x36);
}

void TestCurrentLimitsPage::userValueComesBackIntoBothFields()
{
    shown->page->applyUserParams(paramSet({readParam(0x36, -7)}));
    QCOMPARE(upper->text(), QStringLiteral("-7"));
    QCOMPARE(lower->text(), QStringLiteral("-7"));
    QCOMPARE(shown->modified.count(), 0);
}

void TestCurrentLimitsPage::clearingEmptiesBothFields()
{
    QVERIFY(Person::type(upper, "12"));
    shown->page->clearUserValues();
    QCOMPARE(upper->text() + lower->text(), QString());
    QCOMPARE(shown->deleted.count(), 0);
}

void TestCurrentLimitsPage::loneSignInOneFieldReportsNothing()
{
    QVERIFY(Person::type(lower, "-"));
    QCOMPARE(upper->text(), QStringLiteral("-"));
    QCOMPARE(shown->modified.count() + shown->deleted.count(), 0);
}

QTEST_MAIN(TestCurrentLimitsPage)

#include "tst_currentlimitspage.moc"
