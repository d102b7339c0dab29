#include "model/parameterconflicts.h"

#include "control/services/language.h"

namespace {

struct RisingRule
{
    int first, second, third; ///< numbers of the parameters whose values have to rise
    const char *key;
    const char *text;
};

constexpr RisingRule risingRules[] = {
    {11, 12, 13, "ConflictingParamsRotation", "Parameterkonflikt Drehzahl: %1 <= %2 <= %3 verletzt."},
    {38, 39, 40, "ConflictingParamsCurrent", "Parameterkonflikt Strom: %1 <= %2 <= %3 verletzt."},
};

int valueAfterWrite(int number, const Z7DeviceParamSet &user, const Z7DeviceParamSet &device)
{
    const Z7DeviceParam *changed = user.find(number);
    const Z7DeviceParam *param = changed ? changed : device.find(number);
    return param ? param->value : 0;
}

} // namespace

QString paramConflicts(const Z7DeviceParamSet &user, const Z7DeviceParamSet &device)
{
    QString conflicts;
    for (const RisingRule &rule : risingRules) {
        const int a = valueAfterWrite(rule.first, user, device);
        const int b = valueAfterWrite(rule.second, user, device);
        const int c = valueAfterWrite(rule.third, user, device);
        if (a <= b && b <= c)
            continue;
        if (!conflicts.isEmpty())
            conflicts += QStringLiteral(", ");
        conflicts += languageText("ErrorCodes", rule.key, rule.text).arg(a).arg(b).arg(c);
    }
    return conflicts;
}
