// Changing a drive's password: what is asked for, what is taken and what is refused.

#include "pages/setpassworddialog.h"
#include "tests/pages/pagetests.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/looks.h"
#include "tests/support/person.h"

#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <optional>

namespace {

const char *const fields[] = {"edOldPassword", "edNewPassword_1", "edNewPassword_2"};

} // namespace

class TestSetPasswordDialog : public IsolatedTest
{
    Q_OBJECT

private slots:
    void textsStandAtTheirPlaces();
    void textsComeFromLanguageFile();
    void introductionNamesDriveOfEachOpening();
    void buttonsHaveTheirIcons_data();
    void buttonsHaveTheirIcons();
    void framesAndErrorHaveTheirColours();
    void fieldsDoNotMoveWhenErrorAppears();

    void passwordIsVisibleAsItIsTyped();
    void onlyWholeNumbersCanBeTyped_data();
    void onlyWholeNumbersCanBeTyped();
    void everyOpeningStartsWithEmptyFields();
    void passwordsOfLastOpeningCannotBeBroughtBack();
    void openingAgainGathersNoValidators();

    void goodInputIsReportedAndCloses_data();
    void goodInputIsReportedAndCloses();
    void enterConfirms();
    void badInputIsRefused_data();
    void badInputIsRefused();
    void refusedInputLeavesEmptyFieldsAndOneMessage();
    void messageComesFromLanguageFile();
    void refusedPasswordsCannotBeBroughtBack();
    void inputAfterRefusalIsTaken();
    void errorIsGoneAtNextOpening();
    void unpreparedDialogKnowsNoPassword();

    void confirmationReportsOncePerOpening_data();
    void confirmationReportsOncePerOpening();
    void passwordOfLastOpeningCounts();
    void abortReportsNothingAndCloses();

private:
    void prepare() override;
    void tidyUp() override;

    void open(int password, const QString &drive = QStringLiteral("Port1 - Z7.3"));
    void fillIn(const QStringList &input) const;
    void enter(const QStringList &input) const
    {
        fillIn(input);
        press("BtnOK");
    }
    bool press(const char *name) const { return Person::press(*dialog, name); }
    template<typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        return dialog->findChild<Widget *>(QString::fromLatin1(name));
    }
    QPushButton *button(const char *name) const { return child<QPushButton>(name); }
    QLineEdit *field(const char *name) const { return child<QLineEdit>(name); }
    QString fieldText(const char *name) const { return field(name)->text(); }
    QString textOf(const char *label) const { return child<QLabel>(label)->text(); }

    std::optional<SetPasswordDialog> dialog;
    std::optional<QSignalSpy> sent;
};

void TestSetPasswordDialog::prepare()
{
    dialog.emplace();
    sent.emplace(&*dialog, SIGNAL(sendNewPassword(int)));
}

void TestSetPasswordDialog::tidyUp()
{
    sent.reset();
    dialog.reset();
}

void TestSetPasswordDialog::open(int password, const QString &drive)
{
    dialog->prepare(password, drive);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(&*dialog));
}

/// The password in force, the new one and its repetition.
void TestSetPasswordDialog::fillIn(const QStringList &input) const
{
    for (int i = 0; i < input.size(); ++i) {
        Person::type(field(fields[i]), input.at(i));
    }
}

void TestSetPasswordDialog::textsStandAtTheirPlaces()
{
    open(0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Passwort ändern"));
    QCOMPARE(textOf("LIntro"), QStringLiteral("Neues Passwort setzen für Motor Port1 - Z7.3"));
    QCOMPARE(textOf("lOldPassword"), QStringLiteral("Passwort"));
    QCOMPARE(textOf("lNewPassword_1"), QStringLiteral("Neues Passwort"));
    QCOMPARE(textOf("lNewPassword_2"), QStringLiteral("Passwort - Wiederholung"));
    QCOMPARE(button("BtnOK")->text(), QStringLiteral("OK"));
    QCOMPARE(button("BtnAbort")->text(), QStringLiteral("Abbrechen"));
}

void TestSetPasswordDialog::textsComeFromLanguageFile()
{
    WorkingFolder::writeText("deutsch.z7lang",
        "[DialogSetPassword]\nTitle=a\nIntro=for %1\nPassword=c\nNewPassword=d\nNewPasswordRepetition=e\n"
        "[Common]\nOK=f\nAbort=g\n");
    open(0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("a"));
    QCOMPARE(textOf("LIntro"), QStringLiteral("for Port1 - Z7.3"));
    QCOMPARE(textOf("lOldPassword"), QStringLiteral("c"));
    QCOMPARE(textOf("lNewPassword_1"), QStringLiteral("d"));
    QCOMPARE(textOf("lNewPassword_2"), QStringLiteral("e"));
    QCOMPARE(button("BtnOK")->text(), QStringLiteral("f"));
    QCOMPARE(button("BtnAbort")->text(), QStringLiteral("g"));
}

void TestSetPasswordDialog::introductionNamesDriveOfEachOpening()
{
    open(0, QStringLiteral("Port0 - Z7.3"));
    open(0, QStringLiteral("Port12 - Z7.4"));
    QCOMPARE(textOf("LIntro"), QStringLiteral("Neues Passwort setzen für Motor Port12 - Z7.4"));
}

void TestSetPasswordDialog::buttonsHaveTheirIcons_data()
{
    Looks::addButtonColumns();
    Looks::addButton("BtnAbort", "Abbrechen", ":/images/cancel-icon_16px.png");
    Looks::addButton("BtnOK", "OK", ":/images/tick-icon_16px.png");
}

void TestSetPasswordDialog::buttonsHaveTheirIcons()
{
    open(0);
    Looks::checkButton(*dialog, 16);
}

void TestSetPasswordDialog::framesAndErrorHaveTheirColours()
{
    QCOMPARE(child("fTop")->palette().color(QPalette::Window), QColor(72, 131, 181));
    QCOMPARE(dialog->palette().color(QPalette::Window), QColor(240, 240, 240));
    QCOMPARE(child("lError")->palette().color(QPalette::WindowText), QColor(Qt::red));
}

void TestSetPasswordDialog::fieldsDoNotMoveWhenErrorAppears()
{
    open(1);
    const QPoint before = child("edOldPassword")->pos();
    press("BtnOK");
    QVERIFY(child("lError")->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(child("edOldPassword")->pos(), before);
}

void TestSetPasswordDialog::passwordIsVisibleAsItIsTyped()
{
    open(0);
    fillIn({"123", "456", "789"});
    QStringList shown;
    for (const char *name : fields)
        shown.append(field(name)->displayText());
    QCOMPARE(shown, (QStringList {"123", "456", "789"}));
}

void TestSetPasswordDialog::onlyWholeNumbersCanBeTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("letters and blanks") << "1a b2"
                                        << "12";
    QTest::newRow("separators") << "1.2,3"
                                << "123";
    QTest::newRow("sign in front") << "-12"
                                   << "-12";
    QTest::newRow("sign inside") << "1-2"
                                 << "12";
    QTest::newRow("largest number") << "2147483647"
                                    << "2147483647";
    QTest::newRow("smallest number") << "-2147483648"
                                     << "-2147483648";
    QTest::newRow("a digit too many") << "21474836470"
                                      << "2147483647";
}

void TestSetPasswordDialog::onlyWholeNumbersCanBeTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, text);
    open(0);
    fillIn({typed, typed, typed});
    for (const char *name : fields)
        QCOMPARE(fieldText(name), text);
}

void TestSetPasswordDialog::everyOpeningStartsWithEmptyFields()
{
    open(0);
    fillIn({"1", "2", "3"});
    press("BtnAbort");
    open(0);
    for (const char *name : fields)
        QCOMPARE(fieldText(name), QString());
}

void TestSetPasswordDialog::passwordsOfLastOpeningCannotBeBroughtBack()
{
    open(0);
    fillIn({"1", "2", "3"});
    QVERIFY(Person::empty(field("edNewPassword_2")));
    press("BtnAbort");
    open(0);
    for (const char *name : fields)
        QCOMPARE(textAfterUndo(field(name)), QString());
}

void TestSetPasswordDialog::openingAgainGathersNoValidators()
{
    for (int opening = 0; opening < 3; ++opening)
        open(0);
    QCOMPARE(dialog->findChildren<QIntValidator *>().size(), 3);
    for (const char *name : fields)
        QCOMPARE(field(name)->validator()->parent(), &*dialog);
}

void TestSetPasswordDialog::goodInputIsReportedAndCloses_data()
{
    QTest::addColumn<int>("inForce");
    QTest::addColumn<QStringList>("input");
    QTest::addColumn<int>("reported");
    QTest::newRow("numbers") << 4711 << QStringList {"4711", "12", "12"} << 12;
    QTest::newRow("leading zeros in the old one") << 7 << QStringList {"007", "1", "1"} << 1;
    QTest::newRow("leading zeros in one of the new ones") << 7 << QStringList {"7", "007", "7"} << 7;
    QTest::newRow("plus sign") << 7 << QStringList {"+7", "+8", "8"} << 8;
    QTest::newRow("lone sign as the old 0") << 0 << QStringList {"-", "5", "5"} << 5;
    QTest::newRow("lone signs as the new 0") << 4 << QStringList {"4", "-", "+"} << 0;
    QTest::newRow("below 0") << -3 << QStringList {"-3", "-9", "-9"} << -9;
    QTest::newRow("one digit") << 1234 << QStringList {"1234", "1", "1"} << 1;
    QTest::newRow("largest number") << 1 << QStringList {"1", "2147483647", "2147483647"} << 2147483647;
    QTest::newRow("same as before") << 5 << QStringList {"5", "5", "5"} << 5;
}

void TestSetPasswordDialog::goodInputIsReportedAndCloses()
{
    QFETCH(int, inForce);
    QFETCH(QStringList, input);
    QFETCH(int, reported);
    open(inForce);
    enter(input);
    QCOMPARE(*sent, (QList<QVariantList> {{reported}}));
    QVERIFY(!dialog->isVisible());
}

void TestSetPasswordDialog::enterConfirms()
{
    open(1);
    fillIn({"1", "2", "2"});
    QTest::keyClick(field("edNewPassword_2"), Qt::Key_Return);
    QCOMPARE(*sent, (QList<QVariantList> {{2}}));
}

void TestSetPasswordDialog::badInputIsRefused_data()
{
    QTest::addColumn<int>("inForce");
    QTest::addColumn<QStringList>("input");
    QTest::newRow("no old password") << 4711 << QStringList {"", "1", "1"};
    QTest::newRow("no old password where it is 0") << 0 << QStringList {"", "1", "1"};
    QTest::newRow("another old password") << 4711 << QStringList {"4712", "1", "1"};
    QTest::newRow("old password with the other sign") << 4711 << QStringList {"-4711", "1", "1"};
    QTest::newRow("lone sign where the old one is not 0") << 4711 << QStringList {"-", "1", "1"};
    QTest::newRow("no new password") << 4711 << QStringList {"4711", "", "1"};
    QTest::newRow("no repetition") << 4711 << QStringList {"4711", "1", ""};
    QTest::newRow("0 without a repetition") << 4711 << QStringList {"4711", "0", ""};
    QTest::newRow("repetition alone, of 0") << 4711 << QStringList {"4711", "", "0"};
    QTest::newRow("neither new password nor repetition") << 4711 << QStringList {"4711", "", ""};
    QTest::newRow("another repetition") << 4711 << QStringList {"4711", "1", "2"};
    QTest::newRow("nothing at all") << 4711 << QStringList {"", "", ""};
}

void TestSetPasswordDialog::badInputIsRefused()
{
    QFETCH(int, inForce);
    QFETCH(QStringList, input);
    open(inForce);
    enter(input);
    QCOMPARE(sent->count(), 0);
    QVERIFY(dialog->isVisible());
    QVERIFY(child("lError")->isVisible());
    QCOMPARE(textOf("lError"), QStringLiteral("Falsches Passwort, bitte wiederholen Sie Ihre Eingabe."));
}

void TestSetPasswordDialog::refusedInputLeavesEmptyFieldsAndOneMessage()
{
    open(1);
    open(1);
    enter({"2", "3", "3"});
    for (const char *name : fields)
        QCOMPARE(fieldText(name), QString());
    QCOMPARE(textOf("lError"), QStringLiteral("Falsches Passwort, bitte wiederholen Sie Ihre Eingabe."));
}

void TestSetPasswordDialog::messageComesFromLanguageFile()
{
    WorkingFolder::writeText("deutsch.z7lang", "[DialogSetPassword]\nErrorWrongPassword=Try again\n");
    open(1);
    enter({"2", "3", "3"});
    QCOMPARE(textOf("lError"), QStringLiteral("Try again"));
}

void TestSetPasswordDialog::refusedPasswordsCannotBeBroughtBack()
{
    open(4711);
    enter({"4712", "2", "3"});
    for (const char *name : fields)
        QCOMPARE(textAfterUndo(field(name)), QString());
}

void TestSetPasswordDialog::inputAfterRefusalIsTaken()
{
    open(4711);
    enter({"1", "2", "2"});
    enter({"4711", "2", "2"});
    QCOMPARE(*sent, (QList<QVariantList> {{2}}));
    QVERIFY(!dialog->isVisible());
}

void TestSetPasswordDialog::errorIsGoneAtNextOpening()
{
    open(4711);
    enter({"1", "2", "2"});
    press("BtnAbort");
    open(4711);
    QVERIFY(!child("lError")->isVisible());
    QCOMPARE(textOf("lError"), QString());
}

void TestSetPasswordDialog::unpreparedDialogKnowsNoPassword()
{
    dialog->show();
    enter({"-1", "2", "2"});
    QCOMPARE(sent->count(), 0);
    QVERIFY(dialog->isVisible());
}

void TestSetPasswordDialog::confirmationReportsOncePerOpening_data()
{
    QTest::addColumn<int>("openings");
    QTest::newRow("opened once") << 1;
    QTest::newRow("opened twice") << 2;
    QTest::newRow("opened four times") << 4;
}

void TestSetPasswordDialog::confirmationReportsOncePerOpening()
{
    QFETCH(int, openings);
    for (int opening = 0; opening < openings; ++opening)
        open(1);
    enter({"1", "2", "2"});
    QCOMPARE(sent->count(), openings);
    QVERIFY(!dialog->isVisible());
}

void TestSetPasswordDialog::passwordOfLastOpeningCounts()
{
    open(1);
    open(2);
    enter({"1", "3", "3"});
    QCOMPARE(sent->count(), 0);
    enter({"2", "3", "3"});
    QCOMPARE(*sent, (QList<QVariantList> {{3}, {3}}));
}

void TestSetPasswordDialog::abortReportsNothingAndCloses()
{
    open(1);
    fillIn({"1", "2", "2"});
    press("BtnAbort");
    QCOMPARE(sent->count(), 0);
    QVERIFY(!dialog->isVisible());
}

QTEST_MAIN(TestSetPasswordDialog)

#include "tst_setpassworddialog.moc"
