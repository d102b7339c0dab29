#pragma once

#include <QString>

/// German text of an error number of the communication; "(n)" for a number without a text, empty for 0.
QString errorText(int number);

/// The text of an error number in the language in force. A language file can name a number that has no text
/// of its own. Main thread only.
QString localizedErrorText(int number);
