// The drive's bus address is sent at the press of the button, or not at all.

#include "tests/pages/shownpage.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <optional>

class TestRs485Page : public IsolatedTest
{
    Q_OBJECT

private slots:
    void addressInForceIsShown();
    void captionsStandAtTheirPlaces();
    void captionsAreInUsersLanguage();
    void refusalIsInUsersLanguage();
    void parameterOfAnotherPageChangesNothing();
    void allowedAddressIsSent_data();
    void allowedAddressIsSent();
    void otherInputIsRefusedWithMessage_data();
    void otherInputIsRefusedWithMessage();
    void onePressSendsOnceHoweverOftenPageWasShown();
    void typedAddressIsNoPendingChange();
    void pendingChangeIsNotShown();
    void typedAddressOutlivesChangesOfAnotherDrive();
    void fieldKeepsAddressThatWasSent();
    void anotherShowingEmptiesField();
    void addressOfAnotherShowingCannotBeBroughtBack();
    void limitsOfDefinitionPlayNoPart();

private:
    void prepare() override;
    void tidyUp() override;

    bool press() { return Person::press(*shown->page, "BtnChangeAdress"); }

    std::optional<ShownPage> shown;
    std::optional<QSignalSpy> sent;
    QLineEdit *field = nullptr;
};

void TestRs485Page::prepare()
{
    // Read-only and narrow: this page does not go by the definition.
    defineParameters("V123", {"82;Busadresse;;1;10;20;Unsigned;1;r;0;"});
    shown.emplace(PageNumber::RS485);
    sent.emplace(shown->page.get(), SIGNAL(sendChangeAdress(int)));
    shown->showFor(driveWith({readParam(0x52, 3)}));
    field = shown->field("edParam0x52User");
}

void TestRs485Page::tidyUp()
{
    sent.reset();
    shown.reset();
}

void TestRs485Page::addressInForceIsShown()
{
    QCOMPARE(shown->text("lParam0x52Device"), QStringLiteral("3"));
    QVERIFY(!shown->label("lParam0x52Device")->isEnabled());
    QVERIFY(shown->label("lParam0x52Device")->alignment() & Qt::AlignRight);
    QVERIFY(field->font().bold());
    QVERIFY(field->alignment() & Qt::AlignRight);
}

void TestRs485Page::captionsStandAtTheirPlaces()
{
    QCOMPARE(shown->text("lDeviceAdress"), QStringLiteral("Aktuelle Adresse:"));
    QCOMPARE(shown->text("lNewAdress"), QStringLiteral("Neue Adresse:"));
    QCOMPARE(shown->child<QPushButton>("BtnChangeAdress")->text(), QStringLiteral("Adresse ändern"));
    QVERIFY(!shown->child<QPushButton>("BtnChangeAdress")->icon().isNull());
}

void TestRs485Page::captionsAreInUsersLanguage()
{
    Z7Services::shutdown();
    WorkingFolder::writeText("deutsch.z7lang",
        "[DialogRS485]\nCurrentAdress=Address now\nNewAdress=New address\nChangeAdress=Change it\n");
    shown->showFor(driveWith({}));
    QCOMPARE(shown->text("lDeviceAdress"), QStringLiteral("Address now"));
    QCOMPARE(shown->text("lNewAdress"), QStringLiteral("New address"));
    QCOMPARE(shown->child<QPushButton>("BtnChangeAdress")->text(), QStringLiteral("Change it"));
}

void TestRs485Page::refusalIsInUsersLanguage()
{
    Z7Services::shutdown();
    WorkingFolder::writeText("deutsch.z7lang",
        "[Common]\nApplicationTitle=Drive tool\n[DialogRS485]\nInvalidAdressMessage=Not this one\n");
    const MessageBoxAnswerer user(QMessageBox::Ok);
    press();
    QCOMPARE(user.last().title, QStringLiteral("Drive tool"));
    QCOMPARE(user.last().text, QStringLiteral("Not this one"));
}

void TestRs485Page::parameterOfAnotherPageChangesNothing()
{
    shown->page->newDeviceParam(readParam(0x51, 4711));
    QCOMPARE(shown->text("lParam0x52Device"), QStringLiteral("3"));
}

void TestRs485Page::allowedAddressIsSent_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("lowest") << 1;
    QTest::newRow("in between") << 77;
    QTest::newRow("highest") << 255;
}

void TestRs485Page::allowedAddressIsSent()
{
    QFETCH(int, address);
    QVERIFY(Person::type(field, QString::number(address)));
    press();
    QCOMPARE(sent->count(), 1);
    QCOMPARE(sent->first().first().toInt(), address);
}

void TestRs485Page::otherInputIsRefusedWithMessage_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << "";
    QTest::newRow("a lone sign") << "+";
    QTest::newRow("0, which can be typed") << "0";
    QTest::newRow("256, which can be typed") << "256";
}

void TestRs485Page::otherInputIsRefusedWithMessage()
{
    QFETCH(QString, text);
    QVERIFY(Person::type(field, text));
    QCOMPARE(field->text(), text);
    const MessageBoxAnswerer user(QMessageBox::Ok);
    press();
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().title, QStringLiteral("Z7ConfigTool"));
    QCOMPARE(user.last().text, QStringLiteral("Als Adresse ist nur der Bereich von 1...255 zulässig."));
    QCOMPARE(user.last().icon, QMessageBox::Critical);
    QCOMPARE(user.last().buttons, QMessageBox::Ok);
    QVERIFY(user.last().hasParent);
    QCOMPARE(sent->count(), 0);
}

void TestRs485Page::onePressSendsOnceHoweverOftenPageWasShown()
{
    for (int i = 0; i < 3; ++i)
        shown->showFor(driveWith({readParam(0x52, 3)}));
    QVERIFY(Person::type(field, "9"));
    press();
    QCOMPARE(sent->count(), 1);
}

void TestRs485Page::typedAddressIsNoPendingChange()
{
    QVERIFY(Person::type(field, "77"));
    press();
    QCOMPARE(shown->modified.count() + shown->deleted.count(), 0);
}

void TestRs485Page::pendingChangeIsNotShown()
{
    shown->page->applyUserParams(paramSet({readParam(0x52, 9)}));
    QCOMPARE(field->text(), QString());
}

void TestRs485Page::typedAddressOutlivesChangesOfAnotherDrive()
{
    QVERIFY(Person::type(field, "77"));
    shown->page->applyUserParams(paramSet({readParam(0x52, 9)}));
    shown->page->showUserValues(Z7DeviceParamSet());
    QCOMPARE(field->text(), QStringLiteral("77"));
}

void TestRs485Page::fieldKeepsAddressThatWasSent()
{
    QVERIFY(Person::type(field, "77"));
    press();
    QCOMPARE(field->text(), QStringLiteral("77"));
}

void TestRs485Page::anotherShowingEmptiesField()
{
    QVERIFY(Person::type(field, "77"));
    shown->showFor(driveWith({readParam(0x52, 3)}));
    QCOMPARE(field->text(), QString());
}

void TestRs485Page::addressOfAnotherShowingCannotBeBroughtBack()
{
    QCOMPARE(textAfterUndo(field), QString());
    QVERIFY(Person::type(field, "77"));
    shown->showFor(driveWith({readParam(0x52, 3)}));
    QCOMPARE(textAfterUndo(field), QString());
}

void TestRs485Page::limitsOfDefinitionPlayNoPart()
{
    QVERIFY(field->isVisible());
    const auto *validator = qobject_cast<const QIntValidator *>(field->validator());
    QCOMPARE(validator->bottom(), 1);
    QCOMPARE(validator->top(), 255);
}

QTEST_MAIN(TestRs485Page)

#include "tst_rs485page.moc"
