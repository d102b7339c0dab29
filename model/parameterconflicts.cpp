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

/// The text with %1, %2 and %3 filled in. A translation may lack a placeholder or have one twice: QString
/// gives the values to the lowest placeholders that are there, so all three are put behind the text and cut
/// off again.
QString filledText(const QString &text, int a, int b, int c)
{
    const QString texts[] = {QString::number(a), QString::number(b), QString::number(c)};
    const int tail = texts[0].size() + texts[1].size() + texts[2].size();
    const QString filled = (text + QStringLiteral("%1%2%3")).arg(texts[0], texts[1], texts[2]);
    return filled.left(filled.size() - tail);
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
        conflicts += filledText(languageText("ErrorCodes", rule.key, rule.text), a, b, c);
    }
    return conflicts;
}
