#pragma once

#include <QString>

class Workbench;

/// Prints the rows of keystrokes into a field of the shown page, against those into a bare field. `when`
/// tells what the window has been through.
void printKeystrokes(Workbench &bench, int page, int drives, const QString &when);
