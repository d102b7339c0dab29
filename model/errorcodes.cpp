#include "model/errorcodes.h"

#include "control/services/language.h"

#include <iterator>

namespace {

/// By number; null where a number has no text.
constexpr const char *errorTexts[] = {
    "",
    "Das Gerät antwortet nicht (timeout)",
    nullptr,
    "Der Port kann nicht geöffnet werden",
    nullptr,
    "Passwort nicht gesetzt",
    "Telegramm mit ungültiger Länge empfangen",
    "Ungültige Telegrammdaten empfangen",
    "Telegramm mit falscher Prüfsumme empfangen",
    "Telegramm mit falsche Parameternummer empfangen",
    "Ungültiges Passwort",
    "Der Parameter kann nicht gelesen werden",
    nullptr,
    "Der Port ist nicht bereit zur Kommunikation",
    "Kommunikationsfehler",
    "Die Softwareversion ist nicht kompatibel",
    "Keine Parameteränderung",
    "Fehler bei Beschreiben des Flash",
    "Inkonsistente Parameter",
    "Die Transaktion wurde abgebrochen",
    "Der Motor ist nicht im Freilauf",
};

} // namespace

QString errorText(int number)
{
    const bool isListed = number >= 0 && number < static_cast<int>(std::size(errorTexts));
    if (!isListed || !errorTexts[number])
        return QStringLiteral("(%1)").arg(number);
    return QString::fromUtf8(errorTexts[number]);
}

QString localizedErrorText(int number)
{
    const QByteArray key = "ErrorCode_" + QByteArray::number(number);
    return languageText("ErrorCodes", key.constData(), errorText(number));
}
