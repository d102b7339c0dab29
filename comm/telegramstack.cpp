#include "comm/telegramstack.h"

#include "control/services/services.h"
#include "model/parameterdefinitions.h"
#include "protocol/telegramcatalogue.h"

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
