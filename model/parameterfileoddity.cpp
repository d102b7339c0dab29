#include "model/parameterfileoddity.h"

#include "control/services/language.h"

#include <algorithm>
#include <iterator>

namespace {

using Kind = ParameterFileOddity::Kind;

struct OddityText
{
    Kind kind;
    const char *key;
    const char *text; ///< %1: the number of the parameter, or what stands in the file if there is no number
};

constexpr OddityText oddityTexts[] = {
    {Kind::UnknownElement, "UnknownElement", "Das Element %1 ist unbekannt"},
    {Kind::MisplacedElement, "MisplacedElement", "Das Element %1 steht an falscher Stelle"},
    {Kind::VersionMissing, "VersionMissing", "Die Softwareversion fehlt"},
    {Kind::VersionUnknown, "VersionUnknown", "Zur Softwareversion %1 ist keine Parameter-Definition geladen"},
    {Kind::NoParameters, "NoParameters", "Die Datei enthält keine Parameter"},
    {Kind::AttributeMissing, "AttributeMissing", "Einem Parameter fehlt die Nummer oder der Wert"},
    {Kind::NumberUnreadable, "NumberUnreadable", "Die Parameternummer %1 ist keine Zahl"},
    {Kind::ValueUnreadable, "ValueUnreadable", "Der Wert des Parameters %1 ist keine Zahl"},
    {Kind::RepeatedParameter, "RepeatedParameter", "Der Parameter %1 kommt mehrfach vor"},
    {Kind::UnknownParameter, "UnknownParameter", "Der Parameter %1 ist unbekannt"},
    {Kind::ReadOnlyParameter, "ReadOnlyParameter", "Der Parameter %1 kann nur gelesen werden"},
    {Kind::ValueOutOfLimits, "ValueOutOfLimits",
        "Der Wert des Parameters %1 liegt außerhalb des zulässigen Bereichs"},
    {Kind::BrokenOff, "BrokenOff", "Die Datei ist beschädigt: %1"},
    {Kind::More, "More", "Weitere Auffälligkeiten sind nicht aufgeführt"},
};
static_assert(std::size(oddityTexts) == static_cast<int>(Kind::More) + 1, "a kind lacks its text");

} // namespace

QString oddityText(const ParameterFileOddity &oddity)
{
    const auto row = std::find_if(std::begin(oddityTexts), std::end(oddityTexts),
        [&oddity](const OddityText &candidate) { return candidate.kind == oddity.kind; });
    const QString subject = oddity.number == -1 ? oddity.text : QString::number(oddity.number);
    const QString text = languageText("ParameterfileOddities", row->key, row->text);
    return text.contains(QLatin1String("%1")) ? text.arg(subject) : text;
}
