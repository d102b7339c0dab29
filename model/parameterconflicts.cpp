#include "model/parameterconflicts.h"

#include "control/services/language.h"
#include "control/services/services.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"

#include <algorithm>
#include <array>

namespace {

struct RisingRule
{
    std::array<int, 3> numbers; ///< of the parameters whose values have to rise
    const char *key;
    const char *text;
};

constexpr RisingRule risingRules[] = {
    {{ParameterNumber::SpeedCurveX1, ParameterNumber::SpeedCurveX2, ParameterNumber::SpeedCurveX3},
        "ConflictingParamsRotation", "Parameterkonflikt Drehzahl: %1 <= %2 <= %3 verletzt."},
    {{ParameterNumber::CurrentCurveX1, ParameterNumber::CurrentCurveX2, ParameterNumber::CurrentCurveX3},
        "ConflictingParamsCurrent", "Parameterkonflikt Strom: %1 <= %2 <= %3 verletzt."},
};

int valueAfterWrite(int number, const Z7DeviceParamSet &user, const Z7DeviceParamSet &device)
{
    const Z7DeviceParam *changed = user.find(number);
    const Z7DeviceParam *param = changed ? changed : device.find(number);
    return param ? param->value : 0;
}

std::array<int, 3> valuesAfterWrite(
    const RisingRule &rule, const Z7DeviceParamSet &user, const Z7DeviceParamSet &device)
{
    std::array<int, 3> values {};
    std::transform(rule.numbers.cbegin(), rule.numbers.cend(), values.begin(),
        [&](int number) { return valueAfterWrite(number, user, device); });
    return values;
}

/// Calls `take(rule, values)` for each rule that the values after the write would break.
template<typename Take>
void forBrokenRules(const Z7DeviceParamSet &user, const Z7DeviceParamSet &device, Take take)
{
    for (const RisingRule &rule : risingRules) {
        const std::array<int, 3> values = valuesAfterWrite(rule, user, device);
        if (!std::is_sorted(values.cbegin(), values.cend()))
            take(rule, values);
    }
}

/// The text with %1, %2 and %3 filled in. A translation may lack a placeholder or have one twice: QString
/// gives the values to the lowest placeholders that are there, so all three are put behind the text and cut
/// off again.
QString filledText(const QString &text, const std::array<int, 3> &values)
{
    const QString texts[] = {
        QString::number(values[0]), QString::number(values[1]), QString::number(values[2])};
    const int tail = texts[0].size() + texts[1].size() + texts[2].size();
    const QString filled = (text + QStringLiteral("%1%2%3")).arg(texts[0], texts[1], texts[2]);
    return filled.left(filled.size() - tail);
}

bool isInputHigh(const Z7Device &device)
{
    return device.isDigitalInputSet(digitalInputA) || device.isDigitalInputSet(digitalInputB);
}

const Z7ParamDefinitions &definitionsOf(const Z7Device &device)
{
    return *Z7Services::instance()->definitions(device.softwareVersion);
}

void addRisingFindings(
    QVector<WriteFinding> &findings, const Z7Device &device, const Z7DeviceParamSet &changes)
{
    forBrokenRules(changes, device.parameterSet, [&](const RisingRule &rule, const auto &values) {
        findings.append({WriteFinding::Kind::NotRising, {rule.numbers.cbegin(), rule.numbers.cend()},
            {values.cbegin(), values.cend()}});
    });
}

/// The changes that the inputs bar, in ascending order of their numbers.
QVector<Z7DeviceParam> barredChanges(const Z7Device &device, const Z7DeviceParamSet &changes)
{
    QVector<Z7DeviceParam> barred;
    for (const Z7DeviceParam &change : changes.params) {
        if (isBarredByInputs(definitionsOf(device).row(change.number), device))
            barred.append(change);
    }
    return barred;
}

/// One finding for all of them.
void addInputsFinding(
    QVector<WriteFinding> &findings, const Z7Device &device, const Z7DeviceParamSet &changes)
{
    WriteFinding finding {WriteFinding::Kind::InputsNotLow, {}, {}};
    for (const Z7DeviceParam &change : barredChanges(device, changes)) {
        finding.numbers.append(change.number);
        finding.values.append(change.value);
    }
    if (!finding.numbers.isEmpty())
        findings.append(finding);
}

} // namespace

QString paramConflicts(const Z7DeviceParamSet &user, const Z7DeviceParamSet &device)
{
    QString conflicts;
    forBrokenRules(user, device, [&conflicts](const RisingRule &rule, const auto &values) {
        if (!conflicts.isEmpty())
            conflicts += QStringLiteral(", ");
        conflicts += filledText(languageText("ErrorCodes", rule.key, rule.text), values);
    });
    return conflicts;
}

bool isBarredByInputs(const Z7ParamDefinition &definition, const Z7Device &device)
{
    return definition.isApplFunction() && isInputHigh(device);
}

QString barredByInputsText()
{
    return commonText("ApplFunctionCurrentlyNotWritable",
        "Der Parameter kann zur Zeit nicht geschrieben werden (Digitaleingänge A+B nicht auf low)");
}

QString writeConflicts(const Z7Device &device, const Z7DeviceParamSet &changes)
{
    QString text = paramConflicts(changes, device.parameterSet);
    if (barredChanges(device, changes).isEmpty())
        return text;
    if (!text.isEmpty())
        text += QLatin1Char('\n');
    return text + barredByInputsText();
}

std::optional<WriteFinding> definitionFinding(
    const Z7ParamDefinitions &definitions, const Z7DeviceParam &change)
{
    const auto finding = [&change](WriteFinding::Kind kind) {
        return WriteFinding {kind, {change.number}, {change.value}};
    };
    const Z7ParamDefinition &row = definitions.row(change.number);
    if (!definitions.contains(change.number))
        return finding(WriteFinding::Kind::UnknownParameter);
    if (row.readOnly)
        return finding(WriteFinding::Kind::ReadOnly);
    if (row.isWithinLimits(change.value))
        return std::nullopt;
    WriteFinding beyond = finding(WriteFinding::Kind::OutOfLimits);
    beyond.minimum = row.minimum;
    beyond.maximum = row.maximum;
    return beyond;
}

QVector<WriteFinding> writeFindings(const Z7Device &device, const Z7DeviceParamSet &changes)
{
    QVector<WriteFinding> findings;
    addRisingFindings(findings, device, changes);
    addInputsFinding(findings, device, changes);
    for (const Z7DeviceParam &change : changes.params) {
        if (const auto finding = definitionFinding(definitionsOf(device), change))
            findings.append(*finding);
    }
    return findings;
}
