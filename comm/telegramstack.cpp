#include "comm/telegramstack.h"

#include "control/services/services.h"
#include "model/parameterdefinitions.h"
#include "protocol/telegramcatalogue.h"

namespace {

/// The outcome of a write, by the flags of its answer; uncertain where the answer is too short to hold them.
Z7ParamOutcome writeOutcome(const Z7Telegram &telegram)
{
    Z7ParamOutcome outcome;
    outcome.conflict = telegram.replyWord(6) != 0;
    if (!telegram.hasReplyByte(8))
        outcome.state = Z7ParamOutcome::Uncertain;
    else if (telegram.replyByte(8) & (ParameterResult::AccessDenied | ParameterResult::Failed))
        outcome.state = Z7ParamOutcome::Refused;
    else
        outcome.state = Z7ParamOutcome::Answered;
    return outcome;
}

/// The same of a read, without its value.
Z7ParamOutcome readOutcome(const Z7Telegram &telegram)
{
    Z7ParamOutcome outcome;
    if (!telegram.hasReplyByte(5))
        outcome.state = Z7ParamOutcome::Uncertain;
    else if (telegram.replyByte(6) & (ParameterResult::AccessDenied | ParameterResult::Failed))
        outcome.state = Z7ParamOutcome::Refused;
    else
        outcome.state = Z7ParamOutcome::Answered;
    return outcome;
}

/// True for an error with which the drive itself tells that it has stored nothing. Any other may come from a
/// reply that was damaged on its way.
bool isRefusalToStore(int error)
{
    return error == TelegramError::InvalidPassword || error == TelegramError::NoParameterChange
        || error == TelegramError::FlashWriteFailed || error == TelegramError::InconsistentParameters;
}

Z7PassOutcome::Store storeOutcome(const Z7Telegram &telegram, Z7ParamOutcome::State state)
{
    if (state == Z7ParamOutcome::Answered)
        return Z7PassOutcome::Stored;
    return state == Z7ParamOutcome::Unsent || isRefusalToStore(telegram.error())
        ? Z7PassOutcome::NotStored
        : Z7PassOutcome::StoreUncertain;
}

} // namespace

Z7TelegramStack::Z7TelegramStack(const Z7Device &device)
    : m_device(device)
{
}

Z7TelegramStack::~Z7TelegramStack() = default;

void Z7TelegramStack::append(std::unique_ptr<Z7Telegram> telegram)
{
    m_pendingTelegrams.push_back(std::move(telegram));
}

const Z7Telegram *Z7TelegramStack::currentTelegram() const
{
    return isEmpty() ? nullptr : m_pendingTelegrams.front().get();
}

template<typename Visitor>
void Z7TelegramStack::visitTelegrams(int command, Visitor visit)
{
    for (auto *telegrams : {&m_pendingTelegrams, &m_doneTelegrams}) {
        for (const auto &telegram : *telegrams) {
            if (telegram->command() == command)
                visit(*telegram);
        }
    }
}

void Z7TelegramStack::reset()
{
    visitTelegrams(TelegramCommand::ParameterRead,
        [this](const Z7Telegram &telegram) { m_device.clearParamState(telegram.requestWord(2)); });
    // The position is added up from two replies.
    m_device.actualPosition = 0.0;
}

void Z7TelegramStack::processReply(const QByteArray &reply)
{
    if (isEmpty())
        return;
    m_doneTelegrams.push_front(std::move(m_pendingTelegrams.front()));
    m_pendingTelegrams.pop_front();
    Z7Telegram *telegram = m_doneTelegrams.front().get();
    telegram->parseReply(reply);
    if (telegram->error() != TelegramError::None)
        setError(telegram->error());
    telegramFinished(telegram);
}

Z7PassOutcome Z7TelegramStack::outcome() const
{
    Z7PassOutcome outcome;
    outcome.deviceId = m_device.deviceId();
    outcome.address = m_device.address;
    outcome.error = m_device.error;
    outcome.isComplete = isEmpty() && !m_device.hasError();
    for (auto done = m_doneTelegrams.crbegin(); done != m_doneTelegrams.crend(); ++done) {
        const bool isAnswered = (*done)->error() == TelegramError::None;
        addOutcome(outcome, **done, isAnswered ? Z7ParamOutcome::Answered : Z7ParamOutcome::Uncertain);
    }
    // One that was written, if only in part, and not answered still stands first.
    bool isSent =
        outcome.error == TelegramError::NoAnswer || outcome.error == TelegramError::WriteNotCompleted;
    for (const auto &pending : m_pendingTelegrams) {
        addOutcome(outcome, *pending, isSent ? Z7ParamOutcome::Uncertain : Z7ParamOutcome::Unsent);
        isSent = false;
    }
    return outcome;
}

void Z7TelegramStack::addOutcome(
    Z7PassOutcome &outcome, const Z7Telegram &telegram, Z7ParamOutcome::State state) const
{
    const int command = telegram.command();
    if (command == TelegramCommand::Store)
        outcome.store = storeOutcome(telegram, state);
    if (command != TelegramCommand::ParameterRead && command != TelegramCommand::ParameterWrite)
        return;
    const bool isWrite = command == TelegramCommand::ParameterWrite;
    Z7ParamOutcome param;
    param.state = state;
    if (state == Z7ParamOutcome::Answered)
        param = isWrite ? writeOutcome(telegram) : readOutcome(telegram);
    param.kind = isWrite ? Z7ParamOutcome::Write : Z7ParamOutcome::Read;
    param.number = telegram.requestWord(2);
    if (!isWrite && param.state == Z7ParamOutcome::Answered)
        param.value = readValue(&telegram);
    outcome.params.append(param);
}

void Z7TelegramStack::restart()
{
    for (auto &telegram : m_doneTelegrams)
        m_pendingTelegrams.push_front(std::move(telegram));
    m_doneTelegrams.clear();
    setError(TelegramError::None);
}

void Z7TelegramStack::adoptDevice(const Z7Device &newer)
{
    const Z7Telegram_CustomerAccess access(newer.address, newer.password);
    visitTelegrams(TelegramCommand::CustomerAccess,
        [&access](Z7Telegram &telegram) { telegram.setRequest(access.request()); });

    if (newer.address != m_device.address || newer.portInfo.portName() != m_device.portInfo.portName()
        || newer.softwareVersion != m_device.softwareVersion)
        return;
    m_device.copyConnectionState(newer);
    m_device.parameterSet = newer.parameterSet;
}

int Z7TelegramStack::readValue(const Z7Telegram *telegram) const
{
    const int word = telegram->replyWord(4);
    const auto *definitions = Z7Services::instance()->definitions(m_device.softwareVersion);
    const bool isUnsigned = definitions->isUnsigned(telegram->replyWord(2)) == 1;
    return isUnsigned ? word : static_cast<qint16>(word);
}
