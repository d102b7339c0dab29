#include "comm/telegramstackcatalogue.h"

#include "model/drivefacts.h"
#include "protocol/telegramcatalogue.h"

namespace {

constexpr int driveSawChecksumError = 0x02; ///< communication status of the status reply

constexpr int liveParameters[] = {
    ParameterNumber::OperationMode1,
    ParameterNumber::OperationMode2,
    ParameterNumber::ActualSpeed,
    ParameterNumber::ActualCurrent,
    ParameterNumber::ActualTemperature,
    ParameterNumber::ActualPositionFraction,
    ParameterNumber::ActualPositionTurns,
    ParameterNumber::DigitalOutputs,
    ParameterNumber::DigitalInputs,
    ParameterNumber::AnalogInputA1,
};

/// Parameter numbers have 16 bits on the wire; a definition with another one has no parameter in the drive.
bool isOnTheWire(int number)
{
    return number >= 0 && number <= 0xFFFF;
}

/// The entry that the reply to a parameter telegram names; a default record, which no drive has, where the
/// reply is too short to name one or the drive lacks the number.
Z7DeviceParam namedEntry(const Z7Device &device, const Z7Telegram *telegram)
{
    return telegram->hasReplyByte(3) ? device.parameterSet.value(telegram->replyWord(2)) : Z7DeviceParam();
}

/// The outcome of a write in the bytes that have come: conflict word and result flags. True if the flags are
/// there.
bool takeWriteResult(const Z7Telegram *telegram, Z7DeviceParam &param)
{
    if (telegram->hasReplyByte(7))
        param.conflict = telegram->replyWord(6) != 0;
    if (!telegram->hasReplyByte(8))
        return false;
    param.accessDenied = (telegram->replyByte(8) & ParameterResult::AccessDenied) != 0;
    param.writeFailed = (telegram->replyByte(8) & ParameterResult::Failed) != 0;
    return true;
}

} // namespace

Z7DeviceStatusTelegramStack::Z7DeviceStatusTelegramStack(const Z7Device &device)
    : Z7TelegramStack(device)
{
    const int address = device.address;
    append(std::make_unique<Z7Telegram_CustomerAccess>(address, address));
    append(std::make_unique<Z7Telegram_CustomerAccess>(address, device.password));
    append(std::make_unique<Z7Telegram_StatusRead>(address));
    append(std::make_unique<Z7Telegram_SoftwareID>(address));
    for (const int number : liveParameters)
        append(std::make_unique<Z7Telegram_ParameterRead>(address, number));
}

void Z7DeviceStatusTelegramStack::reset()
{
    m_secondAccess = false;
    Z7TelegramStack::reset();
}

void Z7DeviceStatusTelegramStack::telegramFinished(const Z7Telegram *telegram)
{
    switch (telegram->command()) {
    case TelegramCommand::CustomerAccess:
        accessFinished(telegram);
        break;
    case TelegramCommand::SoftwareID:
        versionFinished(telegram);
        break;
    case TelegramCommand::StatusRead:
        statusFinished(telegram);
        break;
    case TelegramCommand::ParameterRead:
        liveValueFinished(telegram);
        break;
    }
}

void Z7DeviceStatusTelegramStack::accessFinished(const Z7Telegram *telegram)
{
    if (telegram->error() == TelegramError::None) {
        m_device.setAccessGranted(true);
    } else if (telegram->error() == TelegramError::InvalidPassword) {
        m_device.setConnected(true);
        // The bus address is only the password of a drive at delivery.
        if (!m_secondAccess)
            setError(TelegramError::None);
    }
    m_secondAccess = !m_secondAccess;
}

void Z7DeviceStatusTelegramStack::versionFinished(const Z7Telegram *telegram)
{
    const auto *softwareID = static_cast<const Z7Telegram_SoftwareID *>(telegram);
    if (!softwareID->hasVersion())
        return;
    const QString version = softwareID->version();
    if (m_device.softwareVersion != Z7Device::unknownVersion() && m_device.softwareVersion != version)
        setError(TelegramError::VersionNotCompatible);
    else
        m_device.setSoftwareVersion(version);
}

void Z7DeviceStatusTelegramStack::statusFinished(const Z7Telegram *telegram)
{
    if (telegram->hasReplyByte(2))
        m_device.statusBits = static_cast<quint8>(telegram->replyByte(2));
    if (telegram->replyByte(3) & driveSawChecksumError) {
        setError(TelegramError::WrongChecksum);
        m_device.setConnected(false);
    }
}

void Z7DeviceStatusTelegramStack::liveValueFinished(const Z7Telegram *telegram)
{
    if (telegram->error() != TelegramError::None || !telegram->hasReplyByte(5))
        return;
    const int value = readValue(telegram);
    const auto lowByte = static_cast<quint8>(telegram->replyByte(5));
    switch (telegram->replyWord(2)) {
    case ParameterNumber::OperationMode1:
        m_device.operationMode1 = value;
        break;
    case ParameterNumber::OperationMode2:
        m_device.operationMode2 = value;
        break;
    case ParameterNumber::ActualSpeed:
        m_device.actualSpeed = value;
        break;
    case ParameterNumber::ActualCurrent:
        m_device.actualCurrent = value;
        break;
    case ParameterNumber::ActualTemperature:
        m_device.actualTemperature = value;
        break;
    case ParameterNumber::AnalogInputA1:
        m_device.analogInputA1 = value;
        break;
    case ParameterNumber::DigitalOutputs:
        m_device.digitalOutputs = lowByte;
        break;
    case ParameterNumber::DigitalInputs:
        m_device.digitalInputs = lowByte;
        break;
    case ParameterNumber::ActualPositionFraction:
        m_device.actualPosition += value / 65535.0;
        break;
    case ParameterNumber::ActualPositionTurns:
        m_device.actualPosition += value;
        break;
    }
}

Z7UpdateParameterSetTelegramStack::Z7UpdateParameterSetTelegramStack(
    const Z7Device &device, const Z7DeviceParamSet &parameterSet)
    : Z7DeviceStatusTelegramStack(device)
    , m_parameterSet(parameterSet)
{
    for (const Z7DeviceParam &param : m_parameterSet.params) {
        if (isOnTheWire(param.number))
            append(std::make_unique<Z7Telegram_ParameterRead>(device.address, param.number));
    }
}

void Z7UpdateParameterSetTelegramStack::telegramFinished(const Z7Telegram *telegram)
{
    Z7DeviceStatusTelegramStack::telegramFinished(telegram);
    if (telegram->command() == TelegramCommand::ParameterRead)
        parameterRead(telegram);
}

void Z7UpdateParameterSetTelegramStack::parameterRead(const Z7Telegram *telegram)
{
    Z7DeviceParam param = namedEntry(m_device, telegram);
    if (telegram->error() != TelegramError::None) {
        param.valid = false;
        param.error = telegram->error();
    } else {
        if (telegram->hasReplyByte(5)) {
            param.setValue(readValue(telegram));
            param.valid = true;
        }
        if (telegram->hasReplyByte(6)) {
            param.accessDenied = (telegram->replyByte(6) & ParameterResult::AccessDenied) != 0;
            param.readFailed = (telegram->replyByte(6) & ParameterResult::Failed) != 0;
        }
    }
    m_device.updateParam(param);
}

Z7TelegramstackWriteParameterSet::Z7TelegramstackWriteParameterSet(
    const Z7Device &device, const Z7DeviceParamSet &parameterSet)
    : Z7DeviceStatusTelegramStack(device)
    , m_parameterSet(parameterSet)
{
    for (const Z7DeviceParam &param : m_parameterSet.params) {
        if (isOnTheWire(param.number))
            append(std::make_unique<Z7Telegram_ParameterWrite>(device.address, param.number, param.value));
    }
}

void Z7TelegramstackWriteParameterSet::telegramFinished(const Z7Telegram *telegram)
{
    Z7DeviceStatusTelegramStack::telegramFinished(telegram);
    if (telegram->command() == TelegramCommand::ParameterWrite && telegram->error() == TelegramError::None)
        parameterWritten(telegram);
}

void Z7TelegramstackWriteParameterSet::parameterWritten(const Z7Telegram *telegram)
{
    Z7DeviceParam param = namedEntry(m_device, telegram);
    takeWriteResult(telegram, param);
    m_device.updateParam(param);
}

Z7TelegramstackWriteAndStoreParameterSet::Z7TelegramstackWriteAndStoreParameterSet(
    const Z7Device &device, const Z7DeviceParamSet &parameterSet)
    : Z7TelegramstackWriteParameterSet(device, parameterSet)
{
    append(std::make_unique<Z7Telegram_Store>(device.address, device.password));
}

Z7CheckProtocolTelegramStack::Z7CheckProtocolTelegramStack(const Z7Device &device)
    : Z7TelegramStack(device)
{
    append(std::make_unique<Z7Telegram_CustomerAccess>(device.address, device.address));
}

void Z7CheckProtocolTelegramStack::telegramFinished(const Z7Telegram *telegram)
{
    if (telegram->command() != TelegramCommand::CustomerAccess)
        return;
    if (telegram->error() == TelegramError::None)
        m_device.setAccessGranted(true);
    else if (telegram->error() == TelegramError::InvalidPassword)
        m_device.setConnected(true);
}

Z7TelegramstackStoreParameter::Z7TelegramstackStoreParameter(const Z7Device &device)
    : Z7TelegramStack(device)
{
    append(std::make_unique<Z7Telegram_Store>(device.address, device.password));
}

void Z7TelegramstackStoreParameter::telegramFinished(const Z7Telegram *telegram)
{
    Q_UNUSED(telegram)
}

Z7TelegramstackChangeAdress::Z7TelegramstackChangeAdress(const Z7Device &device, int newAddress)
    : Z7TelegramStack(device)
{
    append(std::make_unique<Z7Telegram_CustomerAccess>(device.address, device.password));
    append(
        std::make_unique<Z7Telegram_ParameterWrite>(device.address, ParameterNumber::BusAddress, newAddress));
}

void Z7TelegramstackChangeAdress::telegramFinished(const Z7Telegram *telegram)
{
    if (telegram->command() == TelegramCommand::CustomerAccess)
        accessFinished(telegram);
    else if (telegram->command() == TelegramCommand::ParameterWrite
        && telegram->error() == TelegramError::None)
        addressWritten(telegram);
}

void Z7TelegramstackChangeAdress::accessFinished(const Z7Telegram *telegram)
{
    if (telegram->error() == TelegramError::None) {
        m_device.setAccessGranted(true);
        return;
    }
    setError(telegram->error());
    if (telegram->error() == TelegramError::InvalidPassword)
        m_device.setConnected(true);
}

void Z7TelegramstackChangeAdress::addressWritten(const Z7Telegram *telegram)
{
    Z7DeviceParam param = namedEntry(m_device, telegram);
    // The reply does not tell the address that is in force now: the drive has taken the one it was sent.
    if (takeWriteResult(telegram, param) && !param.writeFailed)
        m_device.setAddress(telegram->requestWord(4));
    m_device.updateParam(param);
}

Z7TelegramstackFactoryReset::Z7TelegramstackFactoryReset(const Z7Device &device)
    : Z7TelegramStack(device)
{
    append(std::make_unique<Z7Telegram_FactoryReset>(device.address, device.password));
}

void Z7TelegramstackFactoryReset::telegramFinished(const Z7Telegram *telegram)
{
    if (telegram->command() == TelegramCommand::FactoryReset && telegram->error() != TelegramError::None)
        setError(telegram->error());
}

Z7TelegramstackPasswordReset::Z7TelegramstackPasswordReset(const Z7Device &device, int newPassword)
    : Z7TelegramStack(device)
{
    append(std::make_unique<Z7Telegram_PasswordReset>(device.address, device.password, newPassword));
}

void Z7TelegramstackPasswordReset::telegramFinished(const Z7Telegram *telegram)
{
    if (telegram->command() != TelegramCommand::PasswordReset)
        return;
    if (telegram->error() != TelegramError::None) {
        setError(telegram->error());
        return;
    }
    const quint32 high = static_cast<quint32>(telegram->requestWord(6)) << 16;
    m_device.setPassword(static_cast<int>(high | static_cast<quint32>(telegram->requestWord(8))));
    m_device.setAccessGranted(true);
}

Z7TelegramstackBootloaderInit::Z7TelegramstackBootloaderInit(const Z7Device &device)
    : Z7TelegramStack(device)
{
    append(std::make_unique<Z7Telegram_BootloaderInit>(device.address, device.password));
}

void Z7TelegramstackBootloaderInit::telegramFinished(const Z7Telegram *telegram)
{
    if (telegram->command() == TelegramCommand::BootloaderInit && telegram->error() == TelegramError::None)
        m_device.bootloaderActive = true;
}
