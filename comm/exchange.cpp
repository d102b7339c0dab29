#include "comm/exchange.h"

#include "comm/busport.h"

Z7Exchange::Z7Exchange(
    Z7BusPort &port, int timeoutMs, const std::atomic<bool> &stop, Z7ExchangeObserver &observer)
    : m_port(port)
    , m_timeoutMs(timeoutMs)
    , m_stop(stop)
    , m_observer(observer)
{
}

void Z7Exchange::walk(Z7TelegramStack &stack)
{
    while (!stack.isEmpty() && !m_stop && !stack.device().hasError())
        exchangeNext(stack);
}

void Z7Exchange::probe(Z7TelegramStack &stack)
{
    while (!stack.isEmpty() && !m_stop) {
        if (!exchangeNext(stack) || stack.device().isConnected())
            return;
    }
}

int Z7Exchange::sendAndWait(const QByteArray &request)
{
    if (!m_port.send(request, m_timeoutMs))
        return TelegramError::WriteNotCompleted;
    return m_port.waitForReply(m_timeoutMs) ? TelegramError::None : TelegramError::NoAnswer;
}

bool Z7Exchange::exchangeNext(Z7TelegramStack &stack)
{
    // It stays with the stack, which keeps what is answered.
    const Z7Telegram &telegram = *stack.currentTelegram();
    Z7TelegramOutcome outcome;
    outcome.command = telegram.command();
    outcome.request = telegram.request();
    outcome.error = sendAndWait(outcome.request);
    outcome.isAnswered = outcome.error == TelegramError::None;
    if (outcome.isAnswered) {
        m_observer.replyBegan();
        outcome.reply = m_port.readReply();
        stack.processReply(outcome.reply);
        outcome.error = telegram.error();
    } else {
        stack.setError(outcome.error);
    }
    m_observer.telegramEnded(outcome);
    return outcome.isAnswered;
}
