#pragma once

#include "comm/telegramstack.h"

/// Logs on, reads the status bits, the software version and the ten live values: 14 telegrams.
///
/// It logs on twice: with the bus address as password, the drive's state at delivery, and with the record's
/// password. A refusal of the first attempt is forgiven, a refusal of the second ends the pass with error 10
/// and the drive shown as connected. Error 15 if the drive tells another version than the record's known one.
class Z7DeviceStatusTelegramStack : public Z7TelegramStack
{
public:
    explicit Z7DeviceStatusTelegramStack(const Z7Device &device);
    void reset() override;
    void telegramFinished(const Z7Telegram *telegram) override;

private:
    void accessFinished(const Z7Telegram *telegram);
    void versionFinished(const Z7Telegram *telegram);
    void statusFinished(const Z7Telegram *telegram);
    void liveValueFinished(const Z7Telegram *telegram);

    bool m_secondAccess = false;
};

/// The status stack, and behind it one read per parameter of a set.
/// An error of a read goes into the entry that the reply names.
class Z7UpdateParameterSetTelegramStack : public Z7DeviceStatusTelegramStack
{
public:
    Z7UpdateParameterSetTelegramStack(const Z7Device &device, const Z7DeviceParamSet &parameterSet);
    void telegramFinished(const Z7Telegram *telegram) override;

private:
    void parameterRead(const Z7Telegram *telegram);

    const Z7DeviceParamSet m_parameterSet; ///< what the telegrams were built from
};

/// The status stack, and behind it one write per parameter of a set, into the drive's working memory.
/// A refused write is noted in the parameter's entry and does not end the pass.
class Z7TelegramstackWriteParameterSet : public Z7DeviceStatusTelegramStack
{
public:
    Z7TelegramstackWriteParameterSet(const Z7Device &device, const Z7DeviceParamSet &parameterSet);
    void telegramFinished(const Z7Telegram *telegram) override;

private:
    void parameterWritten(const Z7Telegram *telegram);

    const Z7DeviceParamSet m_parameterSet; ///< what the telegrams were built from
};

/// The same, and behind the writes one store.
class Z7TelegramstackWriteAndStoreParameterSet : public Z7TelegramstackWriteParameterSet
{
public:
    Z7TelegramstackWriteAndStoreParameterSet(const Z7Device &device, const Z7DeviceParamSet &parameterSet);
};

/// Asks one bus address whether a drive is there, with the address as password. A drive that answers counts
/// as connected whether or not it takes the password.
class Z7CheckProtocolTelegramStack : public Z7TelegramStack
{
public:
    explicit Z7CheckProtocolTelegramStack(const Z7Device &device);
    void telegramFinished(const Z7Telegram *telegram) override;
};

/// Makes the drive's working values permanent.
class Z7TelegramstackStoreParameter : public Z7TelegramStack
{
public:
    explicit Z7TelegramstackStoreParameter(const Z7Device &device);
    void telegramFinished(const Z7Telegram *telegram) override;
};

/// Logs on and writes the new bus address. Where the drive took it, the record comes back with the new
/// address, unconnected, and keeps the old one in previousAddress.
class Z7TelegramstackChangeAdress : public Z7TelegramStack
{
public:
    Z7TelegramstackChangeAdress(const Z7Device &device, int newAddress);
    void telegramFinished(const Z7Telegram *telegram) override;

private:
    void accessFinished(const Z7Telegram *telegram);
    void addressWritten(const Z7Telegram *telegram);
};

/// Resets the drive's parameters to their factory values.
class Z7TelegramstackFactoryReset : public Z7TelegramStack
{
public:
    explicit Z7TelegramstackFactoryReset(const Z7Device &device);
    void telegramFinished(const Z7Telegram *telegram) override;
};

/// Sets a new password. The record keeps it as the drive does, without bits 23 to 16.
class Z7TelegramstackPasswordReset : public Z7TelegramStack
{
public:
    Z7TelegramstackPasswordReset(const Z7Device &device, int newPassword);
    void telegramFinished(const Z7Telegram *telegram) override;
};

/// Sends the drive into its bootloader.
class Z7TelegramstackBootloaderInit : public Z7TelegramStack
{
public:
    explicit Z7TelegramstackBootloaderInit(const Z7Device &device);
    void telegramFinished(const Z7Telegram *telegram) override;
};
