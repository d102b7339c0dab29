// What holds wherever a person works without a mouse: in the window, in each dialog and at each step of the
// wizard, in German and in English.

#include "pages/pagefactory.h"
#include "pages/setpassworddialog.h"
#include "shell/aboutdialog.h"
#include "shell/optionsdialog.h"
#include "tests/shell/connectedwindow.h"
#include "tests/support/germantexts.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/keyboardrules.h"
#include "tests/support/messageboxes.h"

#include <QAction>
#include <QtTest>

#include <functional>
#include <memory>

using namespace ShellTest;

namespace {

constexpr int drivePage = 1;
/// The definitions of a drive with all parameters of the pages.
const QString sample = QStringLiteral(Z7_SOURCE_DIR "/samples/Z7ParamDef_V123.csv");
const QString secondPort = QStringLiteral("ttyUSB1");

/// Where a person comes to: the window that is in front then, or null if there was no getting there.
struct Place
{
    const char *name;
    std::function<QWidget *(const ConnectedWindow &)> open;
};

/// Shows a page of a connected drive, whatever the language calls it.
bool showPage(const ConnectedWindow &ui, int page)
{
    return ui.connectDrives({3, 4}) && QTest::qWaitFor([&ui, page] {
        ui.click(page, 3);
        return textOf(*ui.window, "LDevice") == QLatin1String("Z7.3");
    });
}

template<typename Dialog>
QWidget *openDialog(const ConnectedWindow &ui, const char *button)
{
    return showPage(ui, drivePage) && ui.press(button) ? ui.window->findChildren<Dialog *>().constLast()
                                                       : nullptr;
}

/// The wizard after these buttons.
QWidget *openWizard(const ConnectedWindow &ui, const QList<const char *> &buttons)
{
    bool isThere = ui.press("BtnConnection");
    for (const char *button : buttons) {
        isThere = isThere
            && Person::waitUntil([&ui, button] { return child(*ui.wizard, button).isEnabled(); })
            && Person::press(*ui.wizard, button);
    }
    return isThere ? ui.wizard : nullptr;
}

QWidget *openScan(const ConnectedWindow &ui, const QList<const char *> &buttons)
{
    QWidget *wizard = openWizard(ui, buttons);
    return wizard && Person::waitUntil([&ui] { return child(*ui.wizard, "BtnNext").isEnabled(); }) ? wizard
                                                                                                   : nullptr;
}

const QList<Place> &places()
{
    static const QList<Place> all {
        {"window at the start", [](const ConnectedWindow &ui) { return ui.window.get(); }},
        {"window with a drive",
            [](const ConnectedWindow &ui) -> QWidget * {
                return showPage(ui, drivePage) ? ui.window.get() : nullptr;
            }},
        {"wizard", [](const ConnectedWindow &ui) { return openWizard(ui, {}); }},
        {"wizard with drives",
            [](const ConnectedWindow &ui) -> QWidget * {
                const bool isBack = ui.connectDrives({3, 4}) && Person::bringToFront(ui.window.get());
                return isBack ? openWizard(ui, {}) : nullptr;
            }},
        {"wizard, quick connect",
            [](const ConnectedWindow &ui) { return openWizard(ui, {"BtnQuickConnect"}); }},
        {"wizard, manual", [](const ConnectedWindow &ui) { return openWizard(ui, {"BtnManual"}); }},
        {"wizard, drive that has let the user in",
            [](const ConnectedWindow &ui) -> QWidget * {
                const bool isIn = ui.press("BtnConnection") && ui.logOn(3)
                    && Person::waitUntil([&ui] { return ui.hasConnected(); });
                return isIn ? ui.wizard : nullptr;
            }},
        {"wizard, behind the last step",
            [](const ConnectedWindow &ui) -> QWidget * {
                const bool isIn = ui.press("BtnConnection") && ui.logOn(3)
                    && Person::waitUntil([&ui] { return ui.hasConnected(); })
                    && Person::press(*ui.wizard, "BtnNext");
                return isIn ? ui.wizard : nullptr;
            }},
        {"wizard, one port", [](const ConnectedWindow &ui) { return openWizard(ui, {"BtnScanPort"}); }},
        {"wizard, all ports", [](const ConnectedWindow &ui) { return openWizard(ui, {"BtnScanAllPorts"}); }},
        {"wizard, after the scan",
            [](const ConnectedWindow &ui) {
                return openScan(ui, {"BtnScanPort", "BtnNext"});
            }},
        {"wizard, password",
            [](const ConnectedWindow &ui) {
                return openScan(ui, {"BtnScanPort", "BtnNext", "BtnNext"});
            }},
        {"options", [](const ConnectedWindow &ui) { return openDialog<optionsdialog>(ui, "BtnOptions"); }},
        {"drives to pick",
            [](const ConnectedWindow &ui) {
                return openDialog<DeviceSelectionDialog>(ui, "BtnResetChanges");
            }},
        {"password",
            [](const ConnectedWindow &ui) { return openDialog<SetPasswordDialog>(ui, "BtnSetPassword"); }},
        {"about",
            [](const ConnectedWindow &ui) -> QWidget * {
                ui.window->findChild<QAction *>("actionInfo")->trigger();
                return ui.window->findChild<AboutDialog *>();
            }},
    };
    return all;
}

void addPlaces(const QStringList &languages)
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("place");
    for (const QString &language : languages) {
        for (int place = 0; place < places().size(); ++place)
            QTest::addRow("%s, %s", places().at(place).name, qPrintable(language)) << language << place;
    }
}

/// German texts that have an English one, among what screen readers and tool tips tell.
QStringList germanWords(const QWidget &window)
{
    QStringList german;
    for (const GermanText &text : germanTexts())
        german.append(text.text);
    QStringList found;
    QList<const QWidget *> widgets {&window};
    for (const QWidget *widget : window.findChildren<QWidget *>())
        widgets.append(widget);
    for (const QWidget *widget : widgets) {
        for (const QString &told :
            {widget->accessibleName(), widget->accessibleDescription(), widget->toolTip()}) {
            const bool isSpelledAlike = told == QLatin1String("OK") || told == QLatin1String("Ports")
                || told == QLatin1String("Port") || told == QLatin1String("Norvik & Tessel");
            if (!told.isEmpty() && !isSpelledAlike && german.contains(told))
                found.append(told);
        }
    }
    return found;
}

} // namespace

class TestKeyboardRules : public IsolatedTest
{
    Q_OBJECT

private slots:
    void everyFieldIsNamedReachedAndSeen_data() { addPlaces({"deutsch", "english"}); }
    void everyFieldIsNamedReachedAndSeen();
    void everyFieldOfPageIsNamedReachedAndSeen_data();
    void everyFieldOfPageIsNamedReachedAndSeen();
    void readersAreToldNoGerman_data() { addPlaces({"english"}); }
    void readersAreToldNoGerman();
    void dialogBeginsInItsFirstFieldEachTime_data();
    void dialogBeginsInItsFirstFieldEachTime();
    void escapeClosesDialog_data() { addPlaces({"deutsch"}); }
    void escapeClosesDialog();
    void questionIsAnsweredWithNoByDefault_data();
    void questionIsAnsweredWithNoByDefault();
    void errorIsAnsweredWithOk();

private:
    void prepare() override;
    void tidyUp() override { ui.reset(); }

    /// Starts the program in a language.
    void begin(const QString &language);
    /// Goes to the place of the row; null if it cannot be reached.
    QWidget *goToPlace();

    std::unique_ptr<ConnectedWindow> ui;
};

void TestKeyboardRules::prepare()
{
    writeDefinitions();
    WorkingFolder::write("deutsch.z7lang", "");
    QVERIFY(QFile::copy(QStringLiteral(Z7_SOURCE_DIR "/languages/english.z7lang"), "english.z7lang"));
}

void TestKeyboardRules::begin(const QString &language)
{
    Z7Services::instance()->options()->setLanguage(language);
    Z7Services::instance()->options()->setTimeoutScanning(20);
    ui = std::make_unique<ConnectedWindow>(QList<int> {3, 4});
    ui->drives.plug(secondPort, ListedPorts::otherAdapter());
    ui->window->activateWindow();
}

QWidget *TestKeyboardRules::goToPlace()
{
    const QString language = *static_cast<QString *>(QTest::qData("language", qMetaTypeId<QString>()));
    const int place = *static_cast<int *>(QTest::qData("place", qMetaTypeId<int>()));
    begin(language);
    QWidget *window = places().at(place).open(*ui);
    if (!window) {
        qWarning("there is no getting there");
        return nullptr;
    }
    return Person::bringToFront(window) ? window : nullptr;
}

void TestKeyboardRules::everyFieldIsNamedReachedAndSeen()
{
    QWidget *window = goToPlace();
    QVERIFY(window);
    QCOMPARE(KeyboardRules::faults(*window).join("\n"), QString());
}

void TestKeyboardRules::everyFieldOfPageIsNamedReachedAndSeen_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("page");
    for (const char *language : {"deutsch", "english"}) {
        for (const int page : drivePages())
            QTest::addRow("page %d, %s", page, language) << QString::fromLatin1(language) << page;
    }
}

void TestKeyboardRules::everyFieldOfPageIsNamedReachedAndSeen()
{
    QFETCH(QString, language);
    QFETCH(int, page);
    WorkingFolder::write("Z7ParamDef_V123.csv", WorkingFolder::read(sample));
    begin(language);
    QVERIFY(showPage(*ui, page) && ui->waitForAPass() && Person::bringToFront(ui->window.get()));
    const QWidget &window = *ui->window;
    QCOMPARE(KeyboardRules::faults(window).join("\n"), QString());
    if (language == QLatin1String("english"))
        QCOMPARE(germanWords(window).join("; "), QString());
}

void TestKeyboardRules::readersAreToldNoGerman()
{
    QWidget *window = goToPlace();
    QVERIFY(window);
    QCOMPARE(germanWords(*window).join("; "), QString());
}

void TestKeyboardRules::dialogBeginsInItsFirstFieldEachTime_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("dialog");
    QTest::addColumn<QString>("field");
    QTest::newRow("options") << QByteArray("BtnOptions") << QByteArray("optionsdialog")
                             << QStringLiteral("cbLanguage");
    QTest::newRow("drives to pick") << QByteArray("BtnResetChanges") << QByteArray("DeviceSelectionDialog")
                                    << QStringLiteral("lstDevices");
    QTest::newRow("password") << QByteArray("BtnSetPassword") << QByteArray("SetPasswordDialog")
                              << QStringLiteral("edOldPassword");
}

void TestKeyboardRules::dialogBeginsInItsFirstFieldEachTime()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, dialog);
    QFETCH(QString, field);
    begin(QStringLiteral("deutsch"));
    QVERIFY(showPage(*ui, drivePage));
    for (int time = 0; time < 2; ++time) {
        QVERIFY(ui->press(button.constData()));
        auto &shown = child(*ui->window, dialog.constData());
        QCOMPARE(shown.focusWidget()->objectName(), field);
        child(shown, "BtnOK").setFocus();
        shown.close();
    }
}

void TestKeyboardRules::escapeClosesDialog()
{
    QWidget *window = goToPlace();
    QVERIFY(window);
    QVERIFY(window->focusWidget());
    QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
    // The window is no dialog.
    QCOMPARE(window->isVisible(), window == ui->window.get());
}

void TestKeyboardRules::questionIsAnsweredWithNoByDefault_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("words");
    const QStringList german {"Ja", "Nein"};
    const QStringList english {"Yes", "No"};
    QTest::newRow("return, German") << QStringLiteral("deutsch") << int(Qt::Key_Return) << german;
    QTest::newRow("escape, German") << QStringLiteral("deutsch") << int(Qt::Key_Escape) << german;
    QTest::newRow("return, English") << QStringLiteral("english") << int(Qt::Key_Return) << english;
    QTest::newRow("escape, English") << QStringLiteral("english") << int(Qt::Key_Escape) << english;
}

void TestKeyboardRules::questionIsAnsweredWithNoByDefault()
{
    QFETCH(QString, language);
    QFETCH(int, key);
    QFETCH(QStringList, words);
    begin(language);
    QVERIFY(showPage(*ui, drivePage));
    QStringList faults;
    const MessageBoxAnswerer user([&](QMessageBox *box) {
        QVERIFY(Person::bringToFront(box));
        QCOMPARE(box->button(QMessageBox::Yes)->text(), words.at(0));
        QCOMPARE(box->button(QMessageBox::No)->text(), words.at(1));
        faults += KeyboardRules::faults(*box);
        box->button(QMessageBox::No)->setFocus();
        QTest::keyClick(box, Qt::Key(key));
    });
    QVERIFY(ui->press("BtnFactoryReset"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().defaultButton, QMessageBox::No);
    QCOMPARE(faults.join("; "), QString());
    // 06: factory reset.
    QVERIFY(ui->waitForAPass());
    QVERIFY(ui->requests(0x06).isEmpty());
}

void TestKeyboardRules::errorIsAnsweredWithOk()
{
    begin(QStringLiteral("deutsch"));
    QString word;
    const MessageBoxAnswerer user([&word](QMessageBox *box) {
        word = box->button(QMessageBox::Ok)->text();
        QTest::keyClick(box, Qt::Key_Return);
    });
    QVERIFY(ui->press("BtnPdfHelp"));
    QCOMPARE(user.count(), 1);
    QCOMPARE(word, QStringLiteral("OK"));
}

QTEST_MAIN(TestKeyboardRules)

#include "tst_keyboardrules.moc"
