#pragma once

#include "protocol/telegram.h"

/// Command bytes of the drive's bus, request byte 0.
namespace TelegramCommand {
enum Number {
    Store = 0x02,
    ParameterWrite = 0x03,
    ParameterRead = 0x04,
    StatusRead = 0x05,
    FactoryReset = 0x06,
    SoftwareID = 0x07,
    CustomerAccess = 0x09,
    BootloaderInit = 0x0B,
    PasswordReset = 0x0C,
};
}

/// Result flags that a drive sets for one parameter, in byte 6 of a read's and byte 8 of a write's reply.
/// They are no error of the telegram.
namespace ParameterResult {
enum Flag { AccessDenied = 0x10, Failed = 0x20 };
}

/// Reads one parameter. Constructors take the address as an int of which the low byte is sent.
///
///     request  04 A  number(2)  CS
///     reply    84 A  number(2) value(2) flags  CS
///
/// Error 9 if the reply names another parameter number.
class Z7Telegram_ParameterRead : public Z7Telegram
{
public:
    Z7Telegram_ParameterRead(int address, int number);
    int expectedReplyLength() const override { return 8; }
    void decodeReply() override;
};

/// Writes the low 16 bits of a value into the drive's working memory.
///
///     request  03 A  number(2) value(2)  CS
///     reply    83 A  number(2) -(2) conflict word(2) flags  CS
///
/// Error 9 if the reply names another parameter number. This reply alone confirms the write.
class Z7Telegram_ParameterWrite : public Z7Telegram
{
public:
    Z7Telegram_ParameterWrite(int address, int number, int value);
    int expectedReplyLength() const override { return 10; }
    void decodeReply() override;
};

/// Reads the drive's status bits.
///
///     request  05 A  CS
///     reply    85 A  status bits, communication status  CS
class Z7Telegram_StatusRead : public Z7Telegram
{
public:
    explicit Z7Telegram_StatusRead(int address);
    int expectedReplyLength() const override { return 5; }
    void decodeReply() override { }
};

/// Reads the drive's software version: reply byte 18 is its letter, bytes 19 to 21 its three signed numbers.
///
///     request  07 A  CS
///     reply    87 A  -(16) letter n1 n2 n3 -(12)  CS
class Z7Telegram_SoftwareID : public Z7Telegram
{
public:
    explicit Z7Telegram_SoftwareID(int address);
    int expectedReplyLength() const override { return 35; }
    void decodeReply() override { }

    /// True if the reply is long enough to hold the version.
    bool hasVersion() const { return hasReplyByte(21); }
    /// The letter followed by the three numbers in decimal, without separators: "V123".
    QString version() const;
};

/// Base of the telegrams that carry the password and are answered by one status byte.
///
///     request  command A  password field(4)...  CS
///     reply    command+128 A  status  CS
///
/// The password field holds bits 31..24, a constant 0, bits 15..8 and bits 7..0: bits 23..16 never travel.
/// Status bit 0x10 gives error 10 in every one of them.
class Z7Telegram_PasswordCommand : public Z7Telegram
{
public:
    int expectedReplyLength() const override { return 4; }
    void decodeReply() override;

protected:
    Z7Telegram_PasswordCommand(int command, int address, const QByteArray &passwordFields);
    static QByteArray passwordField(int password);

    /// Error number of the status bits of one telegram, the refused password left aside; 0 if there is none.
    virtual int statusError(int status) const;
};

/// Opens the drive for this master. A drive that answers with error 10 is present and refuses the password.
class Z7Telegram_CustomerAccess : public Z7Telegram_PasswordCommand
{
public:
    Z7Telegram_CustomerAccess(int address, int password);
};

/// Makes the working values permanent. Errors 16 nothing to store, 17 flash write failed, 18 inconsistent
/// parameters.
class Z7Telegram_Store : public Z7Telegram_PasswordCommand
{
public:
    Z7Telegram_Store(int address, int password);

protected:
    int statusError(int status) const override;
};

/// Resets the drive's parameters to their factory values.
class Z7Telegram_FactoryReset : public Z7Telegram_PasswordCommand
{
public:
    Z7Telegram_FactoryReset(int address, int password);
};

/// Prepares the drive for a firmware update. Error 20 if the motor is not in free-run.
class Z7Telegram_BootloaderInit : public Z7Telegram_PasswordCommand
{
public:
    Z7Telegram_BootloaderInit(int address, int password);

protected:
    int statusError(int status) const override;
};

/// Sets a new password; the request holds the password in force and the new one.
class Z7Telegram_PasswordReset : public Z7Telegram_PasswordCommand
{
public:
    Z7Telegram_PasswordReset(int address, int oldPassword, int newPassword);
};
