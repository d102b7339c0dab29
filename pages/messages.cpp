#include "pages/messages.h"

#include "control/services/language.h"

namespace Messages {

void showError(QWidget *parent, const QString &text)
{
    showError(parent, commonText("ApplicationTitle", "Z7ConfigTool"), text);
}

void showError(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox::critical(parent, title, text, QMessageBox::Ok);
}

bool isConfirmed(QWidget *parent, QMessageBox::Icon icon, const QString &text, const QString &question)
{
    QMessageBox box(parent);
    box.setIcon(icon);
    box.setText(text);
    box.setInformativeText(question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

} // namespace Messages
