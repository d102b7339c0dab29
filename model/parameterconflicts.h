#pragma once

#include "model/device.h"

#include <QString>
#include <QVector>

#include <optional>

class Z7ParamDefinitions;
struct Z7ParamDefinition;

/// One thing that stands against writing changes to a drive. None is a refusal: the drive has the last word.
struct WriteFinding
{
    enum class Kind {
        NotRising, ///< support points of a curve that have to rise do not
        InputsNotLow, ///< application functions, while digital input A or B is high
        UnknownParameter, ///< the definitions of the drive's version do not have it
        ReadOnly,
        OutOfLimits, ///< the value lies beyond the definition's limits
    };

    Kind kind;
    QVector<int> numbers; ///< of the parameters concerned
    QVector<int> values; ///< what the drive would hold in each of them after the write, raw
    int minimum = 0; ///< of OutOfLimits alone, as maximum
    int maximum = 0;
};

/// What stands against writing: the support points of the speed curve (11, 12, 13) and of the current curve
/// (38, 39, 40) have to rise, with the user's value where there is one and the drive's otherwise.
/// One sentence per broken rule, joined by ", "; empty if there is none. It is a text for people, not a
/// refusal.
QString paramConflicts(const Z7DeviceParamSet &user, const Z7DeviceParamSet &device);

/// True while the drive would refuse to write this parameter: an application function is writable only while
/// both of its inputs A and B, the digital inputs 1 and 2, are low.
bool isBarredByInputs(const Z7ParamDefinition &definition, const Z7Device &device);
/// The sentence that tells a person so.
QString barredByInputsText();

/// The text of the conflict line: that of paramConflicts(), and on a line of its own the sentence on the
/// inputs, once, whatever the number of changes that they bar. Empty if nothing stands against the write.
QString writeConflicts(const Z7Device &device, const Z7DeviceParamSet &changes);

/// What the definitions alone say against writing a value; nothing if they allow it.
std::optional<WriteFinding> definitionFinding(
    const Z7ParamDefinitions &definitions, const Z7DeviceParam &change);

/// All that is known to stand against writing these changes, with the numbers for a program to judge: first
/// what writeConflicts() tells, then what the definitions of the drive's version say against each change, in
/// ascending order of its number. Empty if nothing does.
QVector<WriteFinding> writeFindings(const Z7Device &device, const Z7DeviceParamSet &changes);
