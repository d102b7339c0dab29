// Changing a drive's password: what is asked for, what is taken and what is refused.

#include "shell/setpassworddialog.h"
#include "tests/shell/shelltest.h"
#include "tests/support/workingfolder.h"

#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <optional>

using namespace ShellTest;

namespace {

const char *const fields[] = {"edOldPassword", "edNewPassword_1", "edNewPassword_2"};

} // namespace

class TestSetPasswordDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void textsStandAtTheirPlaces();
    void textsComeFromTheLanguageFile();
    void introductionNamesTheDriveOfEachOpening();
    void buttonsHaveTheirIcons_data();
    void buttonsHaveTheirIcons();
    void framesAndErrorHaveTheirColours();
    void fieldsDoNotMoveWhenTheErrorAppears();

    void passwordIsVisibleAsItIsTyped();
    void onlyWholeNumbersCanBeTyped_data();
    void onlyWholeNumbersCanBeTyped();
    void everyOpeningStartsWithEmptyFields();
    void openingAgainGathersNoValidators();

    void goodInputIsReportedAndCloses_data();
    void goodInputIsReportedAndCloses();
    void enterConfirms();
    void badInputIsRefused_data();
    void badInputIsRefused();
    void refusedInputLeavesEmptyFieldsAndOneMessage();
    void messageComesFromTheLanguageFile();
    void inputAfterARefusalIsTaken();
    void errorIsGoneAtTheNextOpening();
    void unpreparedDialogKnowsNoPassword();

    void confirmationReportsOncePerOpening_data();
    void confirmationReportsOncePerOpening();
    void passwordOfTheLastOpeningCounts();
    void abortReportsNothingAndCloses();

private:
    void open(int password, const QString &drive = QStringLiteral("Port1 - Z7.3"));
    void fillIn(const QStringList &input) const;
    void enter(const QStringList &input) const
    {
        fillIn(input);
        press(*dialog, "BtnOK");
    }
    QString fieldText(const char *name) const { return child<QLineEdit>(*dialog, name).text(); }

    std::optional<WorkingFolder> folder;
    std::optional<SetPasswordDialog> dialog;
    std::optional<QSignalSpy> sent;
};

void TestSetPasswordDialog::init()
{
    folder.emplace();
    dialog.emplace();
    sent.emplace(&*dialog, SIGNAL(sendNewPassword(int)));
}

void TestSetPasswordDialog::cleanup()
{
    sent.reset();
    dialog.reset();
    folder.reset();
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
    for (int field = 0; field < input.size(); ++field)
        type(*dialog, fields[field], input.at(field));
}

void TestSetPasswordDialog::textsStandAtTheirPlaces()
{
    open(0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Passwort ändern"));
    QCOMPARE(textOf(*dialog, "LIntro"), QStringLiteral("Neues Passwort setzen für Motor Port1 - Z7.3"));
    QCOMPARE(textOf(*dialog, "lOldPassword"), QStringLiteral("Passwort"));
    QCOMPARE(textOf(*dialog, "lNewPassword_1"), QStringLiteral("Neues Passwort"));
    QCOMPARE(textOf(*dialog, "lNewPassword_2"), QStringLiteral("Passwort - Wiederholung"));
    QCOMPARE(child<QPushButton>(*dialog, "BtnOK").text(), QStringLiteral("OK"));
    QCOMPARE(child<QPushButton>(*dialog, "BtnAbort").text(), QStringLiteral("Abbrechen"));
}

void TestSetPasswordDialog::textsComeFromTheLanguageFile()
{
    folder->writeText("deutsch.z7lang",
        "[DialogSetPassword]\nTitle=a\nIntro=for %1\nPassword=c\nNewPassword=d\nNewPasswordRepetition=e\n"
        "[Common]\nOK=f\nAbort=g\n");
    open(0);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("a"));
    QCOMPARE(textOf(*dialog, "LIntro"), QStringLiteral("for Port1 - Z7.3"));
    QCOMPARE(textOf(*dialog, "lOldPassword"), QStringLiteral("c"));
    QCOMPARE(textOf(*dialog, "lNewPassword_1"), QStringLiteral("d"));
    QCOMPARE(textOf(*dialog, "lNewPassword_2"), QStringLiteral("e"));
    QCOMPARE(child<QPushButton>(*dialog, "BtnOK").text(), QStringLiteral("f"));
    QCOMPARE(child<QPushButton>(*dialog, "BtnAbort").text(), QStringLiteral("g"));
}

void TestSetPasswordDialog::introductionNamesTheDriveOfEachOpening()
{
    open(0, QStringLiteral("Port0 - Z7.3"));
    open(0, QStringLiteral("Port12 - Z7.4"));
    QCOMPARE(textOf(*dialog, "LIntro"), QStringLiteral("Neues Passwort setzen für Motor Port12 - Z7.4"));
}

void TestSetPasswordDialog::buttonsHaveTheirIcons_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("icon");
    QTest::newRow("abort") << QByteArray("BtnAbort") << QByteArray(":/images/cancel-icon_16px.png");
    QTest::newRow("ok") << QByteArray("BtnOK") << QByteArray(":/images/tick-icon_16px.png");
}

void TestSetPasswordDialog::buttonsHaveTheirIcons()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, icon);
    QVERIFY(!image(icon.constData(), 16).isNull());
    QCOMPARE(image(child<QPushButton>(*dialog, button.constData()).icon(), 16), image(icon.constData(), 16));
}

void TestSetPasswordDialog::framesAndErrorHaveTheirColours()
{
    QCOMPARE(child(*dialog, "fTop").palette().color(QPalette::Window), QColor(72, 131, 181));
    QCOMPARE(dialog->palette().color(QPalette::Window), QColor(240, 240, 240));
    QCOMPARE(child(*dialog, "lError").palette().color(QPalette::WindowText), QColor(Qt::red));
}

void TestSetPasswordDialog::fieldsDoNotMoveWhenTheErrorAppears()
{
    open(1);
    const QPoint before = child(*dialog, "edOldPassword").pos();
    press(*dialog, "BtnOK");
    QVERIFY(sees(*dialog, "lError"));
    QCoreApplication::processEvents();
    QCOMPARE(child(*dialog, "edOldPassword").pos(), before);
}

void TestSetPasswordDialog::passwordIsVisibleAsItIsTyped()
{
    open(0);
    fillIn({"123", "456", "789"});
    QStringList shown;
    for (const char *field : fields)
        shown.append(child<QLineEdit>(*dialog, field).displayText());
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
    for (const char *field : fields)
        QCOMPARE(fieldText(field), text);
}

void TestSetPasswordDialog::everyOpeningStartsWithEmptyFields()
{
    open(0);
    fillIn({"1", "2", "3"});
    press(*dialog, "BtnAbort");
    open(0);
    for (const char *field : fields)
        QCOMPARE(fieldText(field), QString());
}

void TestSetPasswordDialog::openingAgainGathersNoValidators()
{
    for (int opening = 0; opening < 3; ++opening)
        open(0);
    QCOMPARE(dialog->findChildren<QIntValidator *>().size(), 3);
    for (const char *field : fields)
        QCOMPARE(child<QLineEdit>(*dialog, field).validator()->parent(), &*dialog);
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
    QTest::keyClick(&child<QLineEdit>(*dialog, "edNewPassword_2"), Qt::Key_Return);
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
    QVERIFY(sees(*dialog, "lError"));
    QCOMPARE(
        textOf(*dialog, "lError"), QStringLiteral("Falsches Passwort, bitte wiederholen Sie Ihre Eingabe."));
}

void TestSetPasswordDialog::refusedInputLeavesEmptyFieldsAndOneMessage()
{
    open(1);
    open(1);
    enter({"2", "3", "3"});
    for (const char *field : fields)
        QCOMPARE(fieldText(field), QString());
    QCOMPARE(
        textOf(*dialog, "lError"), QStringLiteral("Falsches Passwort, bitte wiederholen Sie Ihre Eingabe."));
}

void TestSetPasswordDialog::messageComesFromTheLanguageFile()
{
    folder->writeText("deutsch.z7lang", "[DialogSetPassword]\nErrorWrongPassword=Try again\n");
    open(1);
    enter({"2", "3", "3"});
    QCOMPARE(textOf(*dialog, "lError"), QStringLiteral("Try again"));
}

void TestSetPasswordDialog::inputAfterARefusalIsTaken()
{
    open(4711);
    enter({"1", "2", "2"});
    enter({"4711", "2", "2"});
    QCOMPARE(*sent, (QList<QVariantList> {{2}}));
    QVERIFY(!dialog->isVisible());
}

void TestSetPasswordDialog::errorIsGoneAtTheNextOpening()
{
    open(4711);
    enter({"1", "2", "2"});
    press(*dialog, "BtnAbort");
    open(4711);
    QVERIFY(!sees(*dialog, "lError"));
    QCOMPARE(textOf(*dialog, "lError"), QString());
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

void TestSetPasswordDialog::passwordOfTheLastOpeningCounts()
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
    press(*dialog, "BtnAbort");
    QCOMPARE(sent->count(), 0);
    QVERIFY(!dialog->isVisible());
}

QTEST_MAIN(TestSetPasswordDialog)

#include "tst_setpassworddialog.moc"
