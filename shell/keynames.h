#pragma once

#include "control/services/language.h"

/// What the tool tips call the keys that press the buttons.
namespace KeyNames {

inline QString read()
{
    return keyboardText("KeyRead", "Taste: F5");
}

inline QString write()
{
    return keyboardText("KeyWrite", "Tasten: Strg+Eingabe");
}

inline QString writeAndStore()
{
    return keyboardText("KeyWriteAndStore", "Tasten: Strg+Umschalt+Eingabe");
}

} // namespace KeyNames
