#include "model/errorcodes.h"

#include "control/services/language.h"
#include "control/services/rows.h"
#include "protocol/telegram.h"

namespace {

struct ErrorText
{
    int number;
    const char *text; ///< German; null where a number has none
};

constexpr ErrorText errorTexts[] = {
    {TelegramError::None, ""},
    {TelegramError::NoAnswer, "Das Gerät antwortet nicht (timeout)"},
    {TelegramError::WriteNotCompleted, nullptr},
    {TelegramError::PortNotOpened, "Der Port kann nicht geöffnet werden"},
    {TelegramError::PortSettingsRefused, nullptr},
    {TelegramError::PasswordNotSet, "Passwort nicht gesetzt"},
    {TelegramError::InvalidReplyLength, "Telegramm mit ungültiger Länge empfangen"},
    {TelegramError::InvalidReplyData, "Ungültige Telegrammdaten empfangen"},
    {TelegramError::WrongChecksum, "Telegramm mit falscher Prüfsumme empfangen"},
    {TelegramError::WrongParameterNumber, "Telegramm mit falsche Parameternummer empfangen"},
    {TelegramError::InvalidPassword, "Ungültiges Passwort"},
    {TelegramError::ParameterNotReadable, "Der Parameter kann nicht gelesen werden"},
    {TelegramError::Unassigned, nullptr},
    {TelegramError::PortNotReady, "Der Port ist nicht bereit zur Kommunikation"},
    {TelegramError::CommunicationError, "Kommunikationsfehler"},
    {TelegramError::VersionNotCompatible, "Die Softwareversion ist nicht kompatibel"},
    {TelegramError::NoParameterChange, "Keine Parameteränderung"},
    {TelegramError::FlashWriteFailed, "Fehler bei Beschreiben des Flash"},
    {TelegramError::InconsistentParameters, "Inkonsistente Parameter"},
    {TelegramError::TransactionAborted, "Die Transaktion wurde abgebrochen"},
    {TelegramError::MotorNotInFreeRun, "Der Motor ist nicht im Freilauf"},
};

static_assert(eachHasItsRow(errorTexts, &ErrorText::number, TelegramError::Count),
    "a number of TelegramError lacks its pair, or stands elsewhere");

} // namespace

QString errorText(int number)
{
    const bool isListed = number >= 0 && number < TelegramError::Count;
    if (!isListed || !errorTexts[number].text)
        return QStringLiteral("(%1)").arg(number);
    return QString::fromUtf8(errorTexts[number].text);
}

QString localizedErrorText(int number)
{
    const QByteArray key = "ErrorCode_" + QByteArray::number(number);
    return languageText("ErrorCodes", key.constData(), errorText(number));
}
