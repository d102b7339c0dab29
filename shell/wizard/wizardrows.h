#pragma once

#include "control/services/language.h"

#include <QString>

struct PortState;
class QBoxLayout;
class QHBoxLayout;
class QLabel;
class QWidget;

/// The texts of the wizard.
inline constexpr TextSection connectionText("DialogConnection");

/// The rows in which the wizard's pages list ports and drives.
namespace WizardRows {

constexpr int statusHeight = 16;

/// Adds an empty row at the end of `rows`; the widget that holds it belongs to the layout's widget.
QHBoxLayout *addRow(QBoxLayout *rows);
/// Takes all rows out and deletes them.
void removeRows(QBoxLayout *rows);
/// Ends a row: what is in it keeps to the left.
void endRow(QHBoxLayout *row);
/// Shows in a row's label whether its port or drive has answered as it should, as a picture with a name.
void showOutcome(QLabel *status, bool isGood);
/// Says in the tool tip of a row what is known against its port, and with that widget of the row, which is
/// described, to those who do not see it.
void tellOfPort(QWidget *described, const PortState &port);
/// Adds a label of one line to a row. Its text is shown as it stands, whatever a port calls itself.
QLabel *addLabel(QHBoxLayout *row, const QString &text);

} // namespace WizardRows
