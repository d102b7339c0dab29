// Actions on drives behind the tool buttons: discarding changes, default values, factory reset, password.

#include "pages/setpassworddialog.h"
#include "tests/shell/connectedwindow.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"

using namespace ShellTest;

namespace {

const char *const driveButtons[] = {"BtnOpen", "BtnSaveAs", "BtnFactoryReset", "BtnSetPassword"};

// Command bytes of the requests.
constexpr char parameterWrite = 0x03;
constexpr char factoryReset = 0x06;
constexpr char passwordReset = 0x0C;

} // namespace

class TestBatchActions : public IsolatedTest
{
    Q_OBJECT

private slots:
    // Discarding changes
    void resetOffersEveryDrive();
    void resetDiscardsChangesOfTickedDrives();
    void resetOfNoDriveKeepsChanges();
    void abortedResetKeepsChanges();
    void resetOpenedAgainReportsOncePerOpening();
    void resetNeverTakesDriveButtonsAway();

    // Default values
    void defaultsOfferEveryDrive();
    void defaultsBecomeChangesOfTickedDrives();
    void defaultsReplaceChangesOfUser();
    void defaultsLeaveDriveAlone();
    void defaultsLeaveDriveButtonsEnabled();
    void defaultsMakeResetButtonWorkTwice();

    // One dialog for both
    void resetAfterDefaultsDoesBoth();
    void defaultsAfterResetDoBoth();

    // Factory reset
    void factoryResetNamesDriveAndAsks();
    void questionIsAskedInUsersLanguage();
    void driveButtonsAreOffWhileQuestionIsOpen();
    void factoryResetIsNotDoneWithoutYes_data();
    void factoryResetIsNotDoneWithoutYes();
    void factoryResetAnsweredYesIsDone();

    // Password
    void passwordDialogIsForShownDrive();
    void passwordDialogLeavesDriveButtonsEnabled();
    void newPasswordIsSent();
    void wrongOldPasswordIsNotSent();
    void newPasswordIsOldOneOfNextChange();
    void passwordIsReportedPerOpeningAndSentOnce_data();
    void passwordIsReportedPerOpeningAndSentOnce();

private:
    void prepare() override;
    void tidyUp() override;

    bool areDriveButtonsEnabled(bool enabled) const;
    /// No control leads to the default values; they are called as the program would.
    void callDefaults() const { QMetaObject::invokeMethod(ui->window.get(), "SetDefaultValues"); }
    SetPasswordDialog &passwordDialog() const { return *ui->window->findChild<SetPasswordDialog *>(); }
    void changePassword(const QString &from, const QString &to) const;
    /// True once a whole pass has come after what is on the wire now.
    bool waitForTheBus() const { return ui->waitForAPass(); }

    std::unique_ptr<ConnectedWindow> ui;
};

void TestBatchActions::prepare()
{
    writeDefinitions();
    ui = std::make_unique<ConnectedWindow>(QList<int> {3, 4, 7});
    QVERIFY(ui->begin({3, 4, 7}));
}

void TestBatchActions::tidyUp()
{
    ui->window->close();
    ui.reset();
}

bool TestBatchActions::areDriveButtonsEnabled(bool enabled) const
{
    return std::all_of(std::begin(driveButtons), std::end(driveButtons),
        [&](const char *name) { return child(*ui->window, name).isEnabled() == enabled; });
}

// --- discarding changes ---

void TestBatchActions::resetOffersEveryDrive()
{
    ui->press("BtnResetChanges");
    QVERIFY(ui->selection().isVisible());
    QVERIFY(ui->selection().isModal());
    QCOMPARE(ui->selection().parentWidget(), ui->window.get());
    QCOMPARE(textOf(ui->selection(), "LIntro"),
        QStringLiteral("Bitte wählen Sie die Motoren, für die Sie die Änderungen verwerfen möchten."));
    QCOMPARE(ui->offeredDrives(),
        (QStringList {"Port0 - Z7.3 (V123)", "Port0 - Z7.4 (V123)", "Port0 - Z7.7 (V123)"}));
}

void TestBatchActions::resetDiscardsChangesOfTickedDrives()
{
    for (int address : {3, 4, 7}) {
        QVERIFY(ui->showDrive(address));
        ui->change(QString::number(100 + address));
    }
    ui->press("BtnResetChanges");
    ui->pick({0, 2});
    // The field of the shown drive is empty at once.
    QCOMPARE(ui->userValue(), QString());
    QCOMPARE(ui->pendingValue(3), QString());
    QCOMPARE(ui->pendingValue(4), QStringLiteral("104"));
    QCOMPARE(ui->pendingValue(7), QString());
}

void TestBatchActions::resetOfNoDriveKeepsChanges()
{
    ui->change("5");
    ui->press("BtnResetChanges");
    ui->pick({});
    QVERIFY(!ui->selection().isVisible());
    QCOMPARE(ui->pendingValue(3), QStringLiteral("5"));
}

void TestBatchActions::abortedResetKeepsChanges()
{
    ui->change("5");
    ui->press("BtnResetChanges");
    QVERIFY(Person::tickRow(&ui->rows(), 0));
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    QCOMPARE(ui->pendingValue(3), QStringLiteral("5"));
}

void TestBatchActions::resetOpenedAgainReportsOncePerOpening()
{
    for (int opening = 0; opening < 3; ++opening) {
        ui->press("BtnResetChanges");
        QCOMPARE(ui->rows().count(), 3);
        if (opening < 2)
            QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    }
    QCOMPARE(ui->window->findChildren<DeviceSelectionDialog *>().size(), 1);
    QSignalSpy selected(&ui->selection(), SIGNAL(deviceSelected(int)));
    ui->pick({1});
    const int id = drive(4).deviceId();
    QCOMPARE(selected, (QList<QVariantList> {{id}, {id}, {id}}));
}

// Taking the buttons away and giving them back would make the button for a reset work once more.
void TestBatchActions::resetNeverTakesDriveButtonsAway()
{
    ui->press("BtnResetChanges");
    QVERIFY(areDriveButtonsEnabled(true));
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    ui->press("BtnResetChanges");
    QSignalSpy selected(&ui->selection(), SIGNAL(deviceSelected(int)));
    ui->pick({0});
    QCOMPARE(selected.count(), 2);
}

// --- default values ---

void TestBatchActions::defaultsOfferEveryDrive()
{
    callDefaults();
    QVERIFY(ui->selection().isVisible());
    QVERIFY(ui->selection().isModal());
    QCOMPARE(textOf(ui->selection(), "LIntro"),
        QStringLiteral(
            "Bitte wählen Sie die Motoren, für die Sie die Änderungen auf die Standardwerte setzen "
            "möchten. (Die eingegebenen Änderungen werden überschrieben)"));
    QCOMPARE(ui->offeredDrives(),
        (QStringList {"Port0 - Z7.3 (V123)", "Port0 - Z7.4 (V123)", "Port0 - Z7.7 (V123)"}));
}

void TestBatchActions::defaultsBecomeChangesOfTickedDrives()
{
    callDefaults();
    ui->pick({0, 1});
    QCOMPARE(ui->pendingValue(3), QStringLiteral("1200"));
    QCOMPARE(ui->pendingValue(4), QStringLiteral("1200"));
    QCOMPARE(ui->pendingValue(7), QString());
}

void TestBatchActions::defaultsReplaceChangesOfUser()
{
    ui->change("5");
    callDefaults();
    ui->pick({0});
    QCOMPARE(ui->pendingValue(3), QStringLiteral("1200"));
}

void TestBatchActions::defaultsLeaveDriveAlone()
{
    ui->bus.command("set 3 param 23 77");
    callDefaults();
    ui->pick({0});
    QVERIFY(waitForTheBus());
    QCOMPARE(ui->requests(parameterWrite), QByteArrayList());
    QCOMPARE(ui->bus.command("get 3 param 23"), QByteArray("ok 77"));
}

void TestBatchActions::defaultsLeaveDriveButtonsEnabled()
{
    callDefaults();
    QVERIFY(areDriveButtonsEnabled(true));
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    QVERIFY(areDriveButtonsEnabled(true));
}

void TestBatchActions::defaultsMakeResetButtonWorkTwice()
{
    callDefaults();
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    ui->press("BtnResetChanges");
    QSignalSpy selected(&ui->selection(), SIGNAL(deviceSelected(int)));
    ui->pick({0});
    // The dialog was reset for the defaults and twice by the button.
    QCOMPARE(selected.count(), 3);
}

// --- one dialog for both ---

void TestBatchActions::resetAfterDefaultsDoesBoth()
{
    callDefaults();
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    ui->change("5");
    ui->press("BtnResetChanges");
    QCOMPARE(ui->window->findChildren<DeviceSelectionDialog *>().size(), 1);
    ui->pick({0});
    // The defaults are set first and discarded after that.
    QCOMPARE(ui->pendingValue(3), QString());
}

void TestBatchActions::defaultsAfterResetDoBoth()
{
    ui->change("5");
    ui->press("BtnResetChanges");
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    callDefaults();
    ui->pick({0});
    // Only the reset empties the field, only the defaults leave a change.
    QCOMPARE(ui->userValue(), QString());
    QCOMPARE(ui->pendingValue(3), QStringLiteral("1200"));
}

// --- factory reset ---

void TestBatchActions::factoryResetNamesDriveAndAsks()
{
    QVERIFY(ui->showDrive(4));
    const MessageBoxAnswerer user(QMessageBox::No);
    ui->press("BtnFactoryReset");
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().text,
        QStringLiteral(
            "Alle Parameter im Motor \"Port0 - Z7.4\" werden auf die Werkseinstellungen zurücksetzt."));
    QCOMPARE(user.last().informativeText, QStringLiteral("Fortfahren?"));
    QCOMPARE(user.last().icon, QMessageBox::Warning);
    QCOMPARE(user.last().buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(user.last().defaultButton, QMessageBox::No);
    QVERIFY(user.last().isModal);
    QVERIFY(user.last().hasParent);
}

void TestBatchActions::questionIsAskedInUsersLanguage()
{
    ui->window->close();
    ui.reset();
    WorkingFolder::writeText(
        "deutsch.z7lang", "[Common]\nConfirmFactoryReset=Reset %1?\nQuestionContinue=Go on?\n");
    ui = std::make_unique<ConnectedWindow>(QList<int> {3});
    QVERIFY(ui->begin({3}));
    const MessageBoxAnswerer user(QMessageBox::No);
    ui->press("BtnFactoryReset");
    QCOMPARE(user.last().text, QStringLiteral("Reset Port0 - Z7.3?"));
    QCOMPARE(user.last().informativeText, QStringLiteral("Go on?"));
}

void TestBatchActions::driveButtonsAreOffWhileQuestionIsOpen()
{
    bool wereOff = false;
    const MessageBoxAnswerer user([&](QMessageBox *box) {
        wereOff = areDriveButtonsEnabled(false);
        Person::press(box->button(QMessageBox::No));
    });
    ui->press("BtnFactoryReset");
    QVERIFY(wereOff);
    QVERIFY(areDriveButtonsEnabled(true));
}

void TestBatchActions::factoryResetIsNotDoneWithoutYes_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("enter presses no") << int(Qt::Key_Return);
    QTest::newRow("escape") << int(Qt::Key_Escape);
}

void TestBatchActions::factoryResetIsNotDoneWithoutYes()
{
    QFETCH(int, key);
    ui->bus.command("set 3 param 23 77");
    const MessageBoxAnswerer user([key](QMessageBox *box) { QTest::keyClick(box, Qt::Key(key)); });
    ui->press("BtnFactoryReset");
    QCOMPARE(user.count(), 1);
    QVERIFY(waitForTheBus());
    QCOMPARE(ui->requests(factoryReset), QByteArrayList());
    QCOMPARE(ui->bus.command("get 3 param 23"), QByteArray("ok 77"));
    QVERIFY(areDriveButtonsEnabled(true));
}

void TestBatchActions::factoryResetAnsweredYesIsDone()
{
    ui->bus.command("set 3 param 23 77");
    const MessageBoxAnswerer user(QMessageBox::Yes);
    ui->press("BtnFactoryReset");
    QTRY_COMPARE(ui->bus.command("get 3 param 23"), QByteArray("ok 1200"));
    QVERIFY(areDriveButtonsEnabled(true));
    QVERIFY(waitForTheBus());
    // The factory reset for address 3 with its password, 3.
    QCOMPARE(ui->requests(factoryReset).size(), 1);
    QVERIFY(ui->requests(factoryReset).first().startsWith("06 03 00 00 00 03"));
}

// --- password ---

void TestBatchActions::changePassword(const QString &from, const QString &to) const
{
    QVERIFY(Person::type(passwordDialog(), "edOldPassword", from));
    QVERIFY(Person::type(passwordDialog(), "edNewPassword_1", to));
    QVERIFY(Person::type(passwordDialog(), "edNewPassword_2", to));
    QVERIFY(Person::press(passwordDialog(), "BtnOK"));
}

void TestBatchActions::passwordDialogIsForShownDrive()
{
    QVERIFY(ui->showDrive(4));
    ui->press("BtnSetPassword");
    QVERIFY(passwordDialog().isVisible());
    QVERIFY(passwordDialog().isModal());
    QCOMPARE(passwordDialog().parentWidget(), ui->window.get());
    QCOMPARE(
        textOf(passwordDialog(), "LIntro"), QStringLiteral("Neues Passwort setzen für Motor Port0 - Z7.4"));
}

void TestBatchActions::passwordDialogLeavesDriveButtonsEnabled()
{
    ui->press("BtnSetPassword");
    QVERIFY(areDriveButtonsEnabled(true));
}

void TestBatchActions::newPasswordIsSent()
{
    ui->press("BtnSetPassword");
    changePassword("3", "4711");
    QTRY_COMPARE(ui->bus.command("get 3 password"), QByteArray("ok 4711"));
    // The change of the password at address 3, from 3 to 4711.
    QCOMPARE(ui->requests(passwordReset).size(), 1);
    QVERIFY(ui->requests(passwordReset).first().startsWith("0c 03 00 00 00 03 00 00 12 67"));
    QCOMPARE(ui->bus.command("get 4 password"), QByteArray("ok 4"));
}

void TestBatchActions::wrongOldPasswordIsNotSent()
{
    ui->press("BtnSetPassword");
    changePassword("4", "9");
    QVERIFY(passwordDialog().isVisible());
    QVERIFY(waitForTheBus());
    QCOMPARE(ui->requests(passwordReset), QByteArrayList());
}

void TestBatchActions::newPasswordIsOldOneOfNextChange()
{
    ui->press("BtnSetPassword");
    changePassword("3", "9");
    QTRY_COMPARE(ui->bus.command("get 3 password"), QByteArray("ok 9"));
    QVERIFY(waitForTheBus());
    ui->press("BtnSetPassword");
    changePassword("3", "10");
    QVERIFY(passwordDialog().isVisible());
    changePassword("9", "10");
    QVERIFY(!passwordDialog().isVisible());
    QTRY_COMPARE(ui->bus.command("get 3 password"), QByteArray("ok 10"));
}

void TestBatchActions::passwordIsReportedPerOpeningAndSentOnce_data()
{
    QTest::addColumn<int>("openings");
    QTest::newRow("opened once") << 1;
    QTest::newRow("opened twice") << 2;
    QTest::newRow("opened four times") << 4;
}

void TestBatchActions::passwordIsReportedPerOpeningAndSentOnce()
{
    QFETCH(int, openings);
    for (int opening = 0; opening < openings; ++opening) {
        ui->press("BtnSetPassword");
        if (opening < openings - 1)
            QVERIFY(Person::press(passwordDialog(), "BtnAbort"));
    }
    QCOMPARE(ui->window->findChildren<SetPasswordDialog *>().size(), 1);
    QSignalSpy sent(&passwordDialog(), SIGNAL(sendNewPassword(int)));
    changePassword("3", "9");
    QCOMPARE(sent.count(), openings);
    QTRY_COMPARE(ui->bus.command("get 3 password"), QByteArray("ok 9"));
    QVERIFY(waitForTheBus());
    QCOMPARE(ui->requests(passwordReset).size(), 1);
}

QTEST_MAIN(TestBatchActions)

#include "tests/support/person.h"
#include "tst_batchactions.moc"
