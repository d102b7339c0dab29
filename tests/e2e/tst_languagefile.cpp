// A person opens everything once. The language file then holds every text, and a file of translations reaches
// every corner of the window.

#include "pages/pagefactory.h"
#include "tests/e2e/desk.h"
#include "tests/support/filedialogs.h"
#include "tests/support/germantexts.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSettings>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

#include <algorithm>

namespace {

const QString drive = driveName(1);
const QString languageFile = QStringLiteral("deutsch.z7lang");
const QString mark = QStringLiteral("#");

/// What the window's language file holds; a text with commas was a list for QSettings unless it stood in
/// quotes.
QMap<QString, QString> writtenTexts()
{
    const QSettings settings(languageFile, QSettings::IniFormat);
    QMap<QString, QString> texts;
    for (const QString &key : settings.allKeys())
        texts.insert(key, settings.value(key).toStringList().join(", "));
    return texts;
}

/// Texts that are nobody's to translate: numbers, signs, names of drives, ports, versions and files.
bool isNeutral(const QString &text)
{
    static const QRegularExpression neutral(
        "^([^A-Za-zÄÖÜäöü]*|(Port\\d* - )?Z7\\.\\d+( \\(V\\d+\\))?|ttyUSB\\d|V\\d+|.*: ?|0x.*)$");
    return text.isEmpty() || neutral.match(text).hasMatch();
}

/// The whole of the program, seen once. After each step every text on the screen is looked at.
class Walk
{
public:
    Walk()
        : m_bus(m_bench.plugIn(port, TestBench::shortDrives({1, 2})))
    {
        WorkingFolder::write("Z7Programmer.exe", "");
        WorkingFolder::write("image.bin", "");
    }

    /// False if a step did not succeed.
    bool everything()
    {
        m_journey = std::make_unique<Journey>();
        const auto part = [](const char *name, bool seen) {
            if (!seen)
                qWarning("not seen whole: %s", name);
            return seen;
        };
        const bool seen = part("wizard", wizard()) && part("pages", pages()) && part("dialogs", dialogs())
            && part("boxes", boxes()) && part("files", files()) && part("firmware", firmware());
        m_journey.reset();
        return seen;
    }

    bool looksForMarks = false;
    QStringList unmarked; ///< what a person saw without a mark

private:
    bool done(bool step)
    {
        if (looksForMarks)
            look();
        return step;
    }

    void look()
    {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || window->inherits("QMessageBox") || window->inherits("QFileDialog"))
                continue;
            see(window->windowTitle());
            for (const QWidget *widget : window->findChildren<QWidget *>())
                if (widget->isVisible() && !widget->window()->inherits("QFileDialog"))
                    seeWidget(widget);
        }
    }

    void seeWidget(const QWidget *widget)
    {
        if (const auto *tree = qobject_cast<const QTreeWidget *>(widget)) {
            for (QTreeWidgetItemIterator item(const_cast<QTreeWidget *>(tree)); *item; ++item)
                see((*item)->text(0));
        } else if (const auto *table = qobject_cast<const QTableWidget *>(widget)) {
            for (int row = 0; row < table->rowCount(); ++row)
                for (int column = 0; column < table->columnCount(); ++column)
                    if (const QTableWidgetItem *cell = table->item(row, column))
                        see(cell->text());
        } else if (qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget)) {
            see(widget->property("text").toString());
        } else if (qobject_cast<const QGroupBox *>(widget)) {
            see(widget->property("title").toString());
        }
    }

    void see(const QString &text)
    {
        if (!text.contains(mark) && !isNeutral(text) && !unmarked.contains(text))
            unmarked.append(text);
    }

    bool wizard()
    {
        const WizardUser user = m_journey->wizard();
        return done(m_journey->openWizard()) && done(user.press("BtnManual")) && user.close()
            && done(m_journey->openWizard()) && done(user.press("BtnScanPort")) && done(user.choosePort(port))
            && done(user.next()) && Person::waitUntil([&] { return user.canPressNext(); })
            && done(user.next()) && done(user.typePassword(0)) && done(user.next())
            && Person::waitUntil([&] { return user.canPressOk(); }) && done(user.ok());
    }

    /// The titles of the first drive's pages in the tree, which may be translated, by their numbers.
    QMap<int, QString> pageTitles() const
    {
        constexpr int pageRole = Qt::UserRole + 1;
        QMap<int, QString> titles;
        const auto *tree = m_journey->window().findChild<QTreeWidget *>("MainMenuTree");
        const QTreeWidgetItem *driveOfPages = tree->topLevelItem(0)->child(0);
        for (int i = 0; i < driveOfPages->childCount(); ++i) {
            const QTreeWidgetItem *page = driveOfPages->child(i);
            titles.insert(page->data(0, pageRole).toInt(), page->text(0));
        }
        return titles;
    }
    bool showPage(int number) const
    {
        const QString title = pageTitles().value(number);
        return m_journey->showPage(drive, title)
            && Person::waitUntil([&] { return m_journey->pageTitle() == title; });
    }

    bool pages()
    {
        const QList<int> numbers = pageTitles().keys();
        return numbers.size() == drivePages().size() && done(m_journey->showPage(drive))
            && std::all_of(numbers.begin(), numbers.end(), [this](int page) { return done(showPage(page)); });
    }

    bool dialog(const char *button, const char *name, const char *leave)
    {
        if (!done(m_journey->press(button)))
            return false;
        return done(Person::press(m_journey->dialog(name), leave));
    }

    bool dialogs()
    {
        m_journey->window().findChild<QAction *>("actionInfo")->trigger();
        const bool about = done(true) && Person::press(m_journey->dialog("AboutDialog"), "BtnOK");
        m_journey->window().activateWindow();
        return about && dialog("BtnOptions", "optionsdialog", "BtnCancel")
            && dialog("BtnResetChanges", "DeviceSelectionDialog", "BtnAbort")
            && done(m_journey->press("BtnSetPassword"))
            && done(Person::press(m_journey->dialog("SetPasswordDialog"), "BtnOK"))
            && Person::press(m_journey->dialog("SetPasswordDialog"), "BtnAbort");
    }

    /// True if a step brings up a box, all of whose texts are marked.
    bool box(QMessageBox::StandardButton answer, const std::function<bool()> &step)
    {
        const MessageBoxAnswerer user(answer);
        const bool pressed = step();
        for (const SeenMessageBox &seen : user.seen()) {
            if (looksForMarks) {
                see(seen.text);
                see(seen.informativeText);
                see(seen.title);
            }
        }
        return pressed && user.count() == 1;
    }
    bool box(QMessageBox::StandardButton answer, const char *button)
    {
        return box(answer, [&] { return m_journey->press(button); });
    }
    bool boxOfAction(const char *action)
    {
        return box(QMessageBox::Ok, [&] {
            m_journey->window().findChild<QAction *>(action)->trigger();
            return true;
        });
    }

    bool boxes()
    {
        return showPage(PageNumber::RS485) && box(QMessageBox::Ok, "BtnChangeAdress")
            && box(QMessageBox::No, "BtnFactoryReset") && boxOfAction("actionHilfe")
            && boxOfAction("actionTeamviewer");
    }

    bool files()
    {
        {
            const FileDialogUser user("everything");
            if (!m_journey->press("BtnSaveAs"))
                return false;
        }
        const FileDialogUser user("everything.z7param");
        return done(m_journey->press("BtnOpen"))
            && Person::press(m_journey->dialog("DeviceSelectionDialog"), "BtnAbort");
    }

    bool firmware()
    {
        const FileDialogUser user("image.bin");
        return showPage(PageNumber::FirmwareUpload) && done(m_journey->press("BtnSelectFile"))
            && box(QMessageBox::Ok, "BtnUploadFirmwareFile");
    }

    TestBench m_bench;
    z7sim::SimulatedBus &m_bus;
    std::unique_ptr<Journey> m_journey;
};

} // namespace

class TestLanguageFile : public QObject
{
    Q_OBJECT

private slots:
    void everyTextGoesIntoFileWithItsGermanDefault();
    void translatedTextsReachEveryCorner();
};

void TestLanguageFile::everyTextGoesIntoFileWithItsGermanDefault()
{
    Walk walk;
    QVERIFY(walk.everything());
    const QMap<QString, GermanText> expected = germanTexts();
    const QMap<QString, QString> written = writtenTexts();
    QStringList wrong;
    for (auto text = written.begin(); text != written.end(); ++text) {
        // The names of parameters and units belong to the definitions.
        if (text.key().startsWith("ParamDefinition"))
            continue;
        if (!expected.contains(text.key()))
            wrong.append("unknown: " + text.key());
        else if (expected.value(text.key()).text != text.value())
            wrong.append(text.key() + ": " + text.value());
    }
    for (auto text = expected.begin(); text != expected.end(); ++text) {
        if (!text->onlyWhenItHappens && !written.contains(text.key()))
            wrong.append("missing: " + text.key());
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join("\n")));
}

void TestLanguageFile::translatedTextsReachEveryCorner()
{
    Walk walk;
    QVERIFY(walk.everything());
    {
        // Empty ones too: an introduction may have a text. What names a file or an address stays.
        QSettings settings(languageFile, QSettings::IniFormat);
        for (const QString &key : settings.allKeys()) {
            const bool isName =
                key == "Common/PdfHelpFile" || key == "Common/TeamviewerExe" || key == "Common/URLHome";
            if (!isName)
                settings.setValue(key, mark + settings.value(key).toStringList().join(", "));
        }
    }
    walk.looksForMarks = true;
    QVERIFY(walk.everything());
    // A parameter that this drive does not have keeps the form's text in the place of its value.
    walk.unmarked.removeAll(QStringLiteral("TextLabel"));
    QVERIFY2(walk.unmarked.isEmpty(), qPrintable(walk.unmarked.join("\n")));
}

QTEST_MAIN(TestLanguageFile)

#include "tst_languagefile.moc"
