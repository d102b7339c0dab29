#pragma once

#include <QString>

/// Something in a parameter file that is not as this program writes it. Whether it matters is for the reader
/// of the list to judge: the file is read all the same.
struct ParameterFileOddity
{
    enum class Kind {
        UnknownElement, ///< passed over
        MisplacedElement, ///< known, but not here, or not once more
        VersionMissing, ///< so nothing could be looked up
        VersionUnknown, ///< no definitions of the version are loaded, so nothing could be looked up
        NoParameters,
        AttributeMissing, ///< a parameter without number or value, which is skipped
        NumberUnreadable, ///< taken as parameter 0
        ValueUnreadable, ///< taken as 0
        RepeatedParameter, ///< the later value counts
        UnknownParameter, ///< the definitions of the file's version do not have it
        ReadOnlyParameter,
        ValueOutOfLimits,
        BrokenOff, ///< the file ends here for its reader
        More, ///< further ones are not listed
    };

    Kind kind;
    int number = -1; ///< of the parameter; -1 where it is about none
    QString text; ///< what stands in the file, at most its beginning; of BrokenOff the reader's reason
    int line = 0; ///< from 1; 0 for what the whole file lacks
};

/// The oddity as a sentence in the user's language, without the line. Main thread only.
QString oddityText(const ParameterFileOddity &oddity);
