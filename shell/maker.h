#pragma once

#include "control/services/language.h"

/// What the window says of the program and its maker.
namespace Maker {

inline QString programVersion()
{
    return QStringLiteral("1.0.6");
}

/// The address of the maker's home page; a setting of the language file.
inline QString homePage()
{
    return commonText("URLHome", "https://www.norvik-tessel.example");
}

} // namespace Maker
