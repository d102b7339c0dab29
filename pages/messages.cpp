#include "pages/messages.h"

#include "control/services/language.h"
#include "pages/keyboard.h"

#include <QPushButton>

namespace Messages {

namespace {

/// There is no translator, so the words of Qt itself are English in every language.
void word(QMessageBox &box, QMessageBox::StandardButton answer, const QString &text)
{
    box.button(answer)->setText(text);
    Keyboard::showFocus(box.button(answer));
}

} // namespace

void showError(QWidget *parent, const QString &text)
{
    showError(parent, commonText("ApplicationTitle", "Z7ConfigTool"), text);
}

void showError(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
    box.setDefaultButton(QMessageBox::Ok);
    word(box, QMessageBox::Ok, commonText("OK", "OK"));
    box.exec();
}

bool isConfirmed(QWidget *parent, QMessageBox::Icon icon, const QString &text, const QString &question)
{
    QMessageBox box(parent);
    box.setIcon(icon);
    box.setText(text);
    box.setInformativeText(question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    word(box, QMessageBox::Yes, keyboardText("Yes", "Ja"));
    word(box, QMessageBox::No, keyboardText("No", "Nein"));
    return box.exec() == QMessageBox::Yes;
}

} // namespace Messages
