#include "shell/maker.h"

#include "control/services/language.h"

namespace Maker {

QString programVersion()
{
    return QStringLiteral(Z7_PROGRAM_VERSION);
}

QString homePage()
{
    return commonText("URLHome", "https://www.norvik-tessel.example");
}

} // namespace Maker
