#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

/// The boxes that the user has to answer before the program goes on. Each call returns with the answer;
/// events are handled meanwhile, so whatever was true before it may have changed. `parent` may be null. Main
/// thread only.
namespace Messages {

/// Tells what went wrong, titled with the program's name.
void showError(QWidget *parent, const QString &text);
void showError(QWidget *parent, const QString &title, const QString &text);

/// Asks a question with Yes and No below a text. True for Yes alone: No is the default, and closing the box
/// means No.
bool isConfirmed(QWidget *parent, QMessageBox::Icon icon, const QString &text, const QString &question);

} // namespace Messages
