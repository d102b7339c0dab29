#pragma once

#include "model/parameterdefinitions.h"

#include <QString>

class QValidator;

struct WriteFinding;

/// The words in which a field tells what it is, in the user's language: for tool tips and for screen readers.
/// Main thread only.
namespace FieldTexts {

/// What a person calls a parameter, whose translated name may be empty.
QString nameOf(int number, const QString &name);

/// Number, name, limits, unit, factory value and named values, a line each. `name` is in the user's language;
/// number, limits and all else are the definition's.
QString describe(const Z7ParamDefinition &definition, const QString &name);
/// The same for a parameter that the drive's definitions do not have.
QString describeUnknown(int number);

/// What a field with this validator takes.
QString whatIsTaken(const QValidator *validator);

/// Words a finding on a value beyond its limits; empty for any other.
QString beyondLimits(const WriteFinding &finding);

/// The text as a tool tip that shows each character of it, whatever it looks like.
QString asToolTip(const QString &text);

} // namespace FieldTexts
