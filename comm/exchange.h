#pragma once

#include "comm/telegramstack.h"

#include <QByteArray>

#include <atomic>

class Z7BusPort;

/// What became of one telegram.
struct Z7TelegramOutcome
{
    int command = 0;
    QByteArray request; ///< whole frame with command, address and checksum
    QByteArray reply; ///< what had come when the line fell silent; empty without an answer
    /// Of this telegram alone; 0 if all is well. The record may tell another one, since the stack forgives
    /// some errors and finds others in replies that are right.
    int error = 0;
    bool isAnswered = false; ///< a first byte came within the time-out
};

/// Hears of each telegram of a Z7Exchange, during the call of it and on its thread. What it does not override
/// passes it by.
class Z7ExchangeObserver
{
public:
    virtual ~Z7ExchangeObserver() = default;

    /// The first bytes of a reply are there; the rest is gathered after this call.
    virtual void replyBegan() { }
    /// The telegram has been judged, and the stack's record holds what follows from it.
    virtual void telegramEnded(const Z7TelegramOutcome &) { }
};

/// Walks telegram stacks on an open port: writes a telegram, waits for the first byte of its reply, gathers
/// until the line is silent and lets the stack judge it. No telegram is sent twice.
///
///     Z7BusPort port;
///     const int error = port.open(device.portInfo.portName());
///     ...
///     Z7Exchange(port, timeoutMs, stop, observer).walk(stack);
///
/// Blocks its caller and needs neither a thread of its own nor an event loop nor an application object,
/// without which Qt only warns that the port's notifiers stay off. Port and stacks belong to the calling
/// thread during the call. The stop flag may be set by any thread at any time and is seen between two
/// telegrams, so it can take two time-outs and the 20 ms gap to show, or the bound on a babbling line.
///
/// Nothing is thrown: a failure is an error number in the stack's record, 2 where the write was not finished
/// within `timeoutMs`, 1 where no first byte came within another `timeoutMs`, or what the stack found in the
/// reply.
class Z7Exchange
{
public:
    /// All that is handed over by reference has to outlive the exchange.
    Z7Exchange(Z7BusPort &port, int timeoutMs, const std::atomic<bool> &stop, Z7ExchangeObserver &observer);

    /// Sends what is pending until nothing is left, the record has an error or the flag is set. A record that
    /// has an error already sends nothing.
    void walk(Z7TelegramStack &stack);
    /// Sends what is pending until a drive has answered, a telegram stays without reply, nothing is left or
    /// the flag is set, whatever error the record has.
    void probe(Z7TelegramStack &stack);

private:
    /// Sends the current telegram and hands its reply to the stack. False if there was none.
    bool exchangeNext(Z7TelegramStack &stack);
    /// Sends a request and waits for the first byte of its reply. 0, or why there is none.
    int sendAndWait(const QByteArray &request);

    Z7BusPort &m_port;
    const int m_timeoutMs;
    const std::atomic<bool> &m_stop;
    Z7ExchangeObserver &m_observer;
};
