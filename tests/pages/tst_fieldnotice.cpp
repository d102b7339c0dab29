// What a person is told who presses a key that a field does not take.

#include "pages/fieldnotice.h"
#include "pages/setpassworddialog.h"
#include "tests/pages/samplepage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <optional>

class TestFieldNotice : public IsolatedTest
{
    Q_OBJECT

private slots:
    void everyPageTellsWhatItsFieldsTake_data() { addPagesWithFields(); }
    void everyPageTellsWhatItsFieldsTake();
    void keyThatDoesNotFitLeavesNumber();
    void letterIsAnsweredToo();
    void keyThatIsTakenEndsNotice();
    void emptiedFieldEndsNotice();
    void otherFieldEndsNotice();
    void pageHasOneNotice();
    void noticeStandsBesideItsFieldOnPage_data() { addPagesWithFields(); }
    void noticeStandsBesideItsFieldOnPage();
    void noticeTakesNeitherFocusNorRoom();
    void fieldWithoutLimitsTakesAnyNumber();
    void passwordTakesNumbersOnly();

private:
    void tidyUp() override { shown.reset(); }

    QLineEdit *show(int page, const QString &field);
    QString notice() const { return Person::textOf(*shown->page, "FieldNotice"); }

    std::optional<SamplePage> shown;
};

QLineEdit *TestFieldNotice::show(int page, const QString &field)
{
    shown.emplace(page);
    return shown->field(field);
}

void TestFieldNotice::everyPageTellsWhatItsFieldsTake()
{
    QFETCH(int, page);
    shown.emplace(page);
    QLineEdit *field = shown->fieldsAsSeen().constFirst();
    QCOMPARE(notice(), QString());
    QVERIFY(Person::empty(field));
    QTest::keyClicks(field, "9999999");
    const auto *validator = qobject_cast<const QIntValidator *>(field->validator());
    QCOMPARE(notice(),
        QStringLiteral("Nur ganze Zahlen von %1 bis %2").arg(validator->bottom()).arg(validator->top()));
}

void TestFieldNotice::keyThatDoesNotFitLeavesNumber()
{
    QLineEdit *field = show(PageNumber::CalibrationRotations, "edValX1_User");
    QVERIFY(Person::type(field, "9999"));
    QCOMPARE(notice(), QString());
    QTest::keyClicks(field, "9");
    QCOMPARE(field->text(), QStringLiteral("9999"));
    QCOMPARE(notice(), QStringLiteral("Nur ganze Zahlen von 0 bis 1023"));
}

void TestFieldNotice::letterIsAnsweredToo()
{
    QLineEdit *field = show(PageNumber::RS485, "edParam0x52User");
    QVERIFY(Person::empty(field));
    QTest::keyClicks(field, "x");
    QCOMPARE(notice(), QStringLiteral("Nur ganze Zahlen von 1 bis 255"));
}

void TestFieldNotice::keyThatIsTakenEndsNotice()
{
    QLineEdit *field = show(PageNumber::RS485, "edParam0x52User");
    QTest::keyClicks(field, "x");
    QVERIFY(!notice().isEmpty());
    QTest::keyClicks(field, "1");
    QCOMPARE(notice(), QString());
}

void TestFieldNotice::emptiedFieldEndsNotice()
{
    QLineEdit *field = show(PageNumber::RS485, "edParam0x52User");
    QTest::keyClicks(field, "1x");
    QVERIFY(!notice().isEmpty());
    QTest::keyClick(field, Qt::Key_Backspace);
    QCOMPARE(notice(), QString());
}

void TestFieldNotice::otherFieldEndsNotice()
{
    QLineEdit *field = show(PageNumber::FixedResolutions, "edParam0x17User");
    QVERIFY(Person::empty(field));
    QTest::keyClicks(field, "x");
    QVERIFY(!notice().isEmpty());
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(notice(), QString());
}

void TestFieldNotice::pageHasOneNotice()
{
    show(PageNumber::Positioning, "edParam0x21User");
    for (QLineEdit *field : shown->fieldsAsSeen())
        QTest::keyClicks(field, "x");
    QCOMPARE(shown->page->findChildren<FieldNotice *>().size(), 1);
}

void TestFieldNotice::noticeStandsBesideItsFieldOnPage()
{
    QFETCH(int, page);
    shown.emplace(page);
    const QList<QLineEdit *> fields = shown->fieldsAsSeen();
    for (QLineEdit *field : {fields.constFirst(), fields.constLast()}) {
        field->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(field, "x");
        const QRect told = Person::seen(*shown->page, "FieldNotice")->geometry();
        const QRect asked(field->mapTo(shown->page.get(), QPoint()), field->size());
        QVERIFY(shown->page->rect().contains(told));
        QVERIFY(!told.intersects(asked));
        QVERIFY(told.adjusted(-5, -5, 5, 5).intersects(asked));
    }
}

void TestFieldNotice::noticeTakesNeitherFocusNorRoom()
{
    QLineEdit *field = show(PageNumber::Positioning, "edParam0x21User");
    QVERIFY(Person::empty(field));
    QList<QRect> before;
    for (const QWidget *widget : shown->page->findChildren<QLineEdit *>())
        before.append(widget->geometry());
    QTest::keyClicks(field, "x");
    QVERIFY(!notice().isEmpty());
    QVERIFY(field->hasFocus());
    QTest::qWait(0);
    QList<QRect> after;
    for (const QWidget *widget : shown->page->findChildren<QLineEdit *>())
        after.append(widget->geometry());
    QCOMPARE(after, before);
}

void TestFieldNotice::fieldWithoutLimitsTakesAnyNumber()
{
    ShownPage fresh(PageNumber::VoltageLimits);
    fresh.page->softwareVersion = "V999";
    fresh.page->initPage();
    fresh.page->show();
    QTest::keyClicks(fresh.field("edParam0x4AUser"), "x");
    QCOMPARE(Person::textOf(*fresh.page, "FieldNotice"), QStringLiteral("Nur ganze Zahlen"));
}

void TestFieldNotice::passwordTakesNumbersOnly()
{
    SetPasswordDialog dialog;
    dialog.prepare(4711, "Z7.1");
    dialog.show();
    auto *field = dialog.findChild<QLineEdit *>("edNewPassword_1");
    QCOMPARE(field->toolTip(), QStringLiteral("Nur ganze Zahlen"));
    QTest::keyClicks(field, "x");
    QCOMPARE(Person::textOf(dialog, "FieldNotice"), QStringLiteral("Nur ganze Zahlen"));
    QTest::keyClicks(field, "1");
    QCOMPARE(Person::textOf(dialog, "FieldNotice"), QString());
}

QTEST_MAIN(TestFieldNotice)

#include "tst_fieldnotice.moc"
