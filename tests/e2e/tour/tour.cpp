#include "tests/e2e/tour/tour.h"

#include "tests/support/filedialogs.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

namespace {

const QString port = QStringLiteral("ttyUSB0");
const QString firstDrive = QStringLiteral("Port0 - Z7.1");
const QString secondDrive = QStringLiteral("Port0 - Z7.3");
const QString thirdDrive = QStringLiteral("Port0 - Z7.7");
const QString table = QStringLiteral("Parametertabelle");
const QString firmwarePage = QStringLiteral("Firmware update");

/// Until everything is painted and a person has seen it.
constexpr int lookMs = 400;

constexpr int fixedSpeed1 = 23;
constexpr int fixedSpeed2 = 24;
constexpr int supportPointX1 = 11;

QString quoted(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("nothing") : QStringLiteral("\"%1\"").arg(text);
}

} // namespace

Tour::Tour(SimulatorLine &simulator, Transcript &transcript)
    : m_simulator(simulator)
    , m_transcript(transcript)
{
    m_journey.window().setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
}

bool Tour::run()
{
    return start() && quickConnect() && scan() && connectByHand() && takeOver() && showStatus() && showTable()
        && showRemarks() && edit() && answerNo() && write() && store() && writeAndStore() && showPages()
        && saveParameters() && openParameters() && showDialogs() && loseAccess() && pullAdapter()
        && putAdapterBack() && keepOneDrive() && updateFirmware() && close();
}

bool Tour::step(const QString &title, const QString &picture, const Action &action)
{
    m_transcript.beginStep(title);
    const bool done = part(picture, action);
    describe();
    m_transcript.showWire(m_simulator.takeLog());
    return done;
}

bool Tour::part(const QString &picture, const Action &action)
{
    const bool done = action();
    QTest::qWait(lookMs);
    m_transcript.takePicture(picture);
    if (!done)
        m_transcript.say(QStringLiteral("**This step did not succeed.**"));
    return done;
}

void Tour::describe()
{
    const ControlBar bar = m_journey.bar();
    if (bar.port.isEmpty())
        return;
    m_transcript.say(QStringLiteral("Control bar: port %1 %2, drive %3, lamp %4, message %5.")
                         .arg(bar.port, bar.usb, quoted(bar.device), quoted(bar.lamp), quoted(bar.message)));
}

QString Tour::value(const char *where, int number)
{
    const QByteArray command = QByteArrayLiteral("get 1 ") + where + ' ' + QByteArray::number(number);
    return QString::fromLatin1(m_simulator.ask(command).value(0));
}

bool Tour::start()
{
    return step(QStringLiteral("The program has started; no drive is known yet"), QStringLiteral("start"),
        [] { return true; });
}

// --- three ways to connect
// -------------------------------------------------------------------------------------

bool Tour::quickConnect()
{
    const WizardUser wizard = m_journey.wizard();
    return step(QStringLiteral("The tool button \"Verbindungen...\" opens the wizard"),
               QStringLiteral("wizard"), [&] { return m_journey.openWizard(); })
        && step(QStringLiteral("\"Quickconnect\" logs on to the drive with the address 1 and the password 0"),
            QStringLiteral("quickconnect"), [&] {
                return wizard.press("BtnQuickConnect")
                    && Person::waitUntil([&] { return wizard.canPressOk(); });
            });
}

bool Tour::scan()
{
    const WizardUser wizard = m_journey.wizard();
    return step(QStringLiteral("\"Port scannen\" offers the ports"), QStringLiteral("ports"),
               [&] { return wizard.next() && wizard.press("BtnScanPort") && wizard.choosePort(port); })
        && step(QStringLiteral("\"Weiter\" tries the addresses 1 to 255, one after the other"),
            QStringLiteral("scanned"),
            [&] {
                return wizard.next() && part(QStringLiteral("scanning"), [] {
                    QTest::qWait(1500);
                    return true;
                }) && Person::waitUntil([&] { return wizard.canPressNext(); });
            })
        && step(QStringLiteral("The password for all of them, 0"), QStringLiteral("password"),
            [&] { return wizard.next() && wizard.typePassword(0); })
        && step(QStringLiteral("Two drives let the person in, the third has another password"),
            QStringLiteral("tried"), [&] {
                return wizard.next() && Person::waitUntil([&] { return wizard.canPressOk(); })
                    && wizard.triedDrives().size() == 3;
            });
}

bool Tour::connectByHand()
{
    const WizardUser wizard = m_journey.wizard();
    return step(QStringLiteral("\"Manuell\": the address 3 and its password, 4711"), QStringLiteral("manual"),
               [&] {
                   return wizard.next() && wizard.press("BtnManual") && wizard.choosePort(port)
                       && wizard.typeAddress(3) && wizard.typePassword(4711);
               })
        && step(QStringLiteral("The last drive refuses its address as password and takes 4711"),
            QStringLiteral("connected"), [&] {
                return wizard.next() && Person::waitUntil([&] { return wizard.canPressOk(); })
                    && wizard.next();
            });
}

bool Tour::takeOver()
{
    return step(QStringLiteral("\"OK\" takes the three drives over into the tree"), QStringLiteral("tree"),
        [&] { return m_journey.wizard().ok() && m_journey.drives().size() == 3; });
}

// --- watching and editing
// --------------------------------------------------------------------------------------

bool Tour::showStatus()
{
    m_simulator.ask("inputs 1 1");
    return step(QStringLiteral("A click on the first drive: its values are read, its motor turns"),
        QStringLiteral("status"), [&] {
            return m_journey.showPage(firstDrive)
                && Person::waitUntil([&] { return m_journey.bar().speed.toInt() > 0; });
        });
}

bool Tour::showTable()
{
    m_simulator.ask("inputs 1 0");
    return step(QStringLiteral("The table of all its parameters"), QStringLiteral("table"), [&] {
        return m_journey.showPage(firstDrive, table)
            && Person::waitUntil([&] { return m_journey.row(fixedSpeed1).deviceValue != QLatin1String("0"); })
            && Person::waitUntil([&] { return m_journey.bar().speed == QLatin1String("0"); });
    });
}

bool Tour::showRemarks()
{
    m_simulator.ask("lock 1 9");
    m_simulator.ask("set 1 param 10 200");
    return step(QStringLiteral("Remarks: parameter 9 is locked now, parameter 10 is out of its limits"),
        QStringLiteral("remarks"), [&] {
            const bool seen = Person::waitUntil([&] { return !m_journey.row(10).remark.isEmpty(); });
            m_transcript.say(QStringLiteral("Parameter 9: %1. Parameter 10: %2.")
                                 .arg(m_journey.row(9).remark, m_journey.row(10).remark));
            m_simulator.ask("unlock 1 9");
            m_simulator.ask("set 1 param 10 8");
            return seen;
        });
}

bool Tour::edit()
{
    return step(QStringLiteral("700 for parameter 23: the row turns grey, the tree marks the page"),
               QStringLiteral("edited"),
               [&] {
                   return m_journey.typeValue(fixedSpeed1, QStringLiteral("700"))
                       && m_journey.mark(firstDrive, table) == QLatin1String("active_modified");
               })
        && step(QStringLiteral("600 for parameter 11: the conflict line tells what stands against it"),
            QStringLiteral("conflict"), [&] {
                const bool typed = m_journey.typeValue(supportPointX1, QStringLiteral("600"));
                m_transcript.say(QStringLiteral("Conflict line: ") + m_journey.conflictLine());
                return typed && !m_journey.conflictLine().isEmpty();
            });
}

bool Tour::answerNo()
{
    return step(QStringLiteral("\"Schreiben\" asks first; the answer is No, so nothing is written"),
        QStringLiteral("not-written"), [&] {
            const MessageBoxAnswerer user([&](QMessageBox *box) {
                part(QStringLiteral("question"), [] { return true; });
                Person::press(box->button(QMessageBox::No));
            });
            return m_journey.press("BtnUpload") && user.count() == 1;
        });
}

bool Tour::write()
{
    return step(QStringLiteral("Parameter 11 is emptied again, \"Schreiben\" writes parameter 23"),
        QStringLiteral("written"), [&] {
            const bool written = m_journey.typeValue(supportPointX1, QString())
                && m_journey.press("BtnUpload") && Person::waitUntil([&] {
                       return m_journey.row(fixedSpeed1).deviceValue == QLatin1String("700");
                   });
            m_transcript.say(QStringLiteral("The drive holds %1 in its memory and %2 in its flash.")
                                 .arg(value("param", fixedSpeed1), value("flash", fixedSpeed1)));
            return written && value("param", fixedSpeed1) == QLatin1String("700");
        });
}

bool Tour::store()
{
    return step(
        QStringLiteral("\"Im Motor speichern\" makes the drive keep it"), QStringLiteral("stored"), [&] {
            const bool stored = m_journey.press("BtnStore")
                && Person::waitUntil([&] { return value("flash", fixedSpeed1) == QLatin1String("700"); });
            m_transcript.say(QStringLiteral("The drive holds %1 in its memory and %2 in its flash.")
                                 .arg(value("param", fixedSpeed1), value("flash", fixedSpeed1)));
            return stored;
        });
}

bool Tour::writeAndStore()
{
    return step(QStringLiteral("\"Schreiben+Speichern\" does both for parameter 24"),
        QStringLiteral("written-and-stored"), [&] {
            return m_journey.typeValue(fixedSpeed2, QStringLiteral("1700"))
                && m_journey.press("BtnWriteAndStore") && Person::waitUntil([&] {
                       return m_journey.row(fixedSpeed2).deviceValue == QLatin1String("1700");
                   })
                && value("flash", fixedSpeed2) == QLatin1String("1700");
        });
}

// --- the other pages, files and dialogs

namespace {

struct PageOfTour
{
    const char *title;
    const char *picture;
    const char *field; ///< where a value is typed, and taken away again
    const char *value;
};

constexpr PageOfTour pagesOfTour[] = {
    {"Regelung", "regulation", "edParam0x1EUser", "130"},
    {"Dynamik", "ramps", "edParam0x1AUser", "4500"},
    {"Stromgrenzen", "current-limits", "edParam0x36User", "80"},
    {"Festdrehzahlen", "fixed-speeds", "edParam0x18User", "1200"},
    {"Positionierung", "positioning", "edParam0x41User", "900"},
    {"Digitale Ausgänge", "outputs", "edParam0x23User", "150"},
    {"Betriebsmodus", "modes", "edRevolutionN1User", "3"},
    {"Sollwertskalierung Drehzahl", "speed-curve", "edValY2_User", "500"},
    {"Sollwertskalierung Strom", "current-curve", "edValY2_User", "80"},
    {"Ballastwiderstand", "brake-resistor", "edParam0x4DUser", "550"},
    {"Spannungsgrenzen", "voltage-limits", "edParam0x4AUser", "200"},
    {"RS485", "bus-address", "edParam0x52User", "77"},
};

} // namespace

bool Tour::showPages()
{
    for (const PageOfTour &page : pagesOfTour) {
        const bool shown =
            step(QStringLiteral("The page \"%1\", with a value of the person's").arg(page.title),
                QString::fromLatin1(page.picture), [&] {
                    if (!m_journey.showPage(firstDrive, QString::fromUtf8(page.title)))
                        return false;
                    return Person::type(m_journey.window(), page.field, QString::fromLatin1(page.value));
                });
        if (!shown || !Person::type(m_journey.window(), page.field, QString()))
            return false;
    }
    return true;
}

bool Tour::saveParameters()
{
    return step(QStringLiteral("\"Speichern unter...\" writes the drive's parameters to a file"),
        QStringLiteral("saved"), [&] {
            QFile::remove(QStringLiteral("drive1.z7param"));
            const FileDialogUser user(QStringLiteral("drive1"));
            return m_journey.showPage(firstDrive, QStringLiteral("Festdrehzahlen"))
                && m_journey.press("BtnSaveAs") && QFile::exists(QStringLiteral("drive1.z7param"));
        });
}

bool Tour::openParameters()
{
    return step(QStringLiteral("\"Öffnen...\" offers the drives of the file's version; one is ticked"),
        QStringLiteral("opened"), [&] {
            const FileDialogUser user(QStringLiteral("drive1.z7param"));
            if (!m_journey.press("BtnOpen") || !m_journey.tickDrives({1}))
                return false;
            part(QStringLiteral("selection"), [] { return true; });
            return Person::press(m_journey.dialog("DeviceSelectionDialog"), "BtnOK")
                && m_journey.mark(secondDrive, table) == QLatin1String("active_modified");
        });
}

bool Tour::showDialogs()
{
    const auto dialogStep = [this](const char *title, const char *picture, const char *button,
                                const char *dialogName, const char *leave) {
        return step(QString::fromUtf8(title), QString::fromLatin1(picture), [&] {
            return m_journey.press(button);
        }) && Person::press(m_journey.dialog(dialogName), leave);
    };
    return dialogStep("The options", "options", "BtnOptions", "optionsdialog", "BtnCancel")
        && dialogStep("A new password for the drive", "password-dialog", "BtnSetPassword",
            "SetPasswordDialog", "BtnAbort")
        && dialogStep("Changes are discarded, drive by drive", "discard", "BtnResetChanges",
            "DeviceSelectionDialog", "BtnAbort");
}

bool Tour::loseAccess()
{
    return step(
        QStringLiteral("A drive that no longer takes the password"), QStringLiteral("no-access"), [&] {
            const bool shown = m_journey.showPage(thirdDrive);
            m_simulator.ask("set 7 password 99");
            m_simulator.ask("power-cycle 7");
            const bool lost = shown && Person::waitUntil([&] {
                return !m_journey.window().findChild<QWidget *>(QStringLiteral("gbMotorStatus"))->isVisible();
            });
            m_simulator.ask("set 7 password 0");
            return lost;
        });
}

// --- interruption and end
// --------------------------------------------------------------------------------------

bool Tour::pullAdapter()
{
    return step(QStringLiteral("The adapter is pulled"), QStringLiteral("pulled"), [&] {
        m_simulator.ask("pull");
        return Person::waitUntil([&] { return m_journey.bar().usb == QLatin1String("yellow"); });
    });
}

bool Tour::putAdapterBack()
{
    return step(QStringLiteral("The adapter is put back"), QStringLiteral("put-back"), [&] {
        m_simulator.ask("plug");
        return Person::waitUntil([&] { return m_journey.bar().usb == QLatin1String("green"); });
    });
}

bool Tour::keepOneDrive()
{
    const WizardUser wizard = m_journey.wizard();
    return step(QStringLiteral("New firmware needs a bus with one drive: the others are removed"),
        QStringLiteral("one-drive"), [&] {
            return m_journey.openWizard() && wizard.chooseDrive(1) && wizard.chooseDrive(2)
                && wizard.press("BtnRemoveConnection") && wizard.ok() && m_journey.drives().size() == 1;
        });
}

bool Tour::updateFirmware()
{
    return step(
        QStringLiteral("The programmer loads new firmware into the drive"), QStringLiteral("firmware"), [&] {
            if (!m_journey.showPage(firstDrive, firmwarePage))
                return false;
            const FileDialogUser files(QStringLiteral("Z7Firmware_V200.bin"));
            const MessageBoxAnswerer yes([&](QMessageBox *box) {
                part(QStringLiteral("firmware-question"), [] { return true; });
                Person::press(box->button(QMessageBox::Yes));
            });
            return m_journey.press("BtnSelectFile") && m_journey.press("BtnUploadFirmwareFile")
                && Person::waitUntil([&] {
                       return m_simulator.ask("get 1 version").value(0) == "V200"
                           && Person::textOf(m_journey.window(), "lUpdateStarted") == QLatin1String("Bereit");
                   });
        });
}

bool Tour::close()
{
    m_transcript.beginStep(QStringLiteral("The window is closed; options and language are written"));
    return m_journey.closeWindow();
}
