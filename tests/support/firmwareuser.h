#pragma once

#include "tests/support/filedialogs.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"
#include "tests/support/workingfolder.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>

/// The texts of the stages of a firmware update, as the status line and the output have them.
namespace Stage {
const QString idle = QStringLiteral("Idle");
const QString stopping = QStringLiteral("Beende Kommunication...");
const QString bootloader = QStringLiteral("Aktiviere Bootloader...");
const QString programming = QStringLiteral("Upload wurde gestartet, bitte warten...");
} // namespace Stage

/// A person at the firmware update page. The working folder is the current one. Main thread only.
class FirmwareUser
{
public:
    explicit FirmwareUser(const QWidget *page)
        : m_page(page)
    {
    }

    /// Puts all that an update needs into the working folder. This programmer cannot be executed.
    static void writeImageAndProgrammer()
    {
        WorkingFolder::write(QStringLiteral("image.bin"), "firmware");
        WorkingFolder::write(QStringLiteral("Z7Programmer.exe"), "programmer");
    }

    /// Picks a file of the working folder in the dialog.
    void choose(const QString &fileName) const
    {
        const FileDialogUser user(fileName);
        Person::press(fileButton());
    }
    /// Presses the start button and answers what is asked with the mouse; the box that was seen.
    SeenMessageBox start(QMessageBox::StandardButton answer) const
    {
        const MessageBoxAnswerer user(answer);
        Person::press(startButton());
        return user.last();
    }

    QPlainTextEdit *output() const { return child<QPlainTextEdit>("edOutput"); }
    QString log() const { return output()->toPlainText(); }
    QString stage() const { return child<QLabel>("lCurrentStatus")->text(); }
    QString process() const { return child<QLabel>("lUpdateStarted")->text(); }
    QString chosenFile() const { return child<QLineEdit>("edFirmwareFile")->text(); }
    QPushButton *startButton() const { return child<QPushButton>("BtnUploadFirmwareFile"); }
    QToolButton *fileButton() const { return child<QToolButton>("BtnSelectFile"); }
    bool isBusy() const { return !startButton()->isEnabled() && !fileFrame()->isEnabled(); }
    bool isReady() const { return startButton()->isEnabled() && fileFrame()->isEnabled(); }

private:
    template<typename Widget>
    Widget *child(const char *name) const
    {
        return m_page->findChild<Widget *>(QLatin1String(name));
    }
    QFrame *fileFrame() const { return child<QFrame>("fFileSelect"); }

    const QWidget *const m_page;
};
