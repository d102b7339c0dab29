#include "protocol/telegramcatalogue.h"

namespace {

constexpr int passwordRefused = 0x10;
constexpr int nothingToStore = 0x20;
constexpr int flashWriteFailed = 0x40;
constexpr int inconsistentParameters = 0x80;
constexpr int motorNotInFreeRun = 0x20;

QByteArray word(int value)
{
    QByteArray bytes;
    bytes.append(static_cast<char>(value >> 8));
    bytes.append(static_cast<char>(value));
    return bytes;
}

/// Error of a parameter telegram: its reply has to name the parameter of the request in bytes 2 and 3.
int parameterNumberError(const Z7Telegram &telegram)
{
    if (!telegram.hasReplyByte(3))
        return TelegramError::InvalidReplyLength;
    const bool sameNumber = telegram.replyWord(2) == telegram.requestWord(2);
    return sameNumber ? TelegramError::None : TelegramError::WrongParameterNumber;
}

} // namespace

Z7Telegram_ParameterRead::Z7Telegram_ParameterRead(int address, int number)
    : Z7Telegram(TelegramCommand::ParameterRead)
{
    buildRequest(address, word(number));
}

void Z7Telegram_ParameterRead::decodeReply()
{
    noteError(parameterNumberError(*this));
}

Z7Telegram_ParameterWrite::Z7Telegram_ParameterWrite(int address, int number, int value)
    : Z7Telegram(TelegramCommand::ParameterWrite)
{
    buildRequest(address, word(number) + word(value));
}

void Z7Telegram_ParameterWrite::decodeReply()
{
    noteError(parameterNumberError(*this));
}

Z7Telegram_StatusRead::Z7Telegram_StatusRead(int address)
    : Z7Telegram(TelegramCommand::StatusRead)
{
    buildRequest(address);
}

Z7Telegram_SoftwareID::Z7Telegram_SoftwareID(int address)
    : Z7Telegram(TelegramCommand::SoftwareID)
{
    buildRequest(address);
}

QString Z7Telegram_SoftwareID::version() const
{
    QString text(QLatin1Char(static_cast<char>(replyByte(18))));
    for (int index = 19; index <= 21; ++index)
        text += QString::number(static_cast<qint8>(replyByte(index)));
    return text;
}

Z7Telegram_PasswordCommand::Z7Telegram_PasswordCommand(
    int command, int address, const QByteArray &passwordFields)
    : Z7Telegram(command)
{
    buildRequest(address, passwordFields);
}

QByteArray Z7Telegram_PasswordCommand::passwordField(int password)
{
    QByteArray bytes;
    bytes.append(static_cast<char>(password >> 24));
    bytes.append('\0');
    return bytes + word(password);
}

void Z7Telegram_PasswordCommand::decodeReply()
{
    if (!hasReplyByte(2))
        noteError(TelegramError::InvalidReplyLength);
    else if (replyByte(2) & passwordRefused)
        noteError(TelegramError::InvalidPassword);
    else
        noteError(statusError(replyByte(2)));
}

int Z7Telegram_PasswordCommand::statusError(int status) const
{
    Q_UNUSED(status)
    return TelegramError::None;
}

Z7Telegram_CustomerAccess::Z7Telegram_CustomerAccess(int address, int password)
    : Z7Telegram_PasswordCommand(TelegramCommand::CustomerAccess, address, passwordField(password))
{
}

Z7Telegram_Store::Z7Telegram_Store(int address, int password)
    : Z7Telegram_PasswordCommand(TelegramCommand::Store, address, passwordField(password))
{
}

int Z7Telegram_Store::statusError(int status) const
{
    if (status & nothingToStore)
        return TelegramError::NoParameterChange;
    if (status & flashWriteFailed)
        return TelegramError::FlashWriteFailed;
    return status & inconsistentParameters ? TelegramError::InconsistentParameters : TelegramError::None;
}

Z7Telegram_FactoryReset::Z7Telegram_FactoryReset(int address, int password)
    : Z7Telegram_PasswordCommand(TelegramCommand::FactoryReset, address, passwordField(password))
{
}

Z7Telegram_BootloaderInit::Z7Telegram_BootloaderInit(int address, int password)
    : Z7Telegram_PasswordCommand(TelegramCommand::BootloaderInit, address, passwordField(password))
{
}

int Z7Telegram_BootloaderInit::statusError(int status) const
{
    return status & motorNotInFreeRun ? TelegramError::MotorNotInFreeRun : TelegramError::None;
}

Z7Telegram_PasswordReset::Z7Telegram_PasswordReset(int address, int oldPassword, int newPassword)
    : Z7Telegram_PasswordCommand(
        TelegramCommand::PasswordReset, address, passwordField(oldPassword) + passwordField(newPassword))
{
}
