#pragma once

#include "comm/busnews.h"
#include "model/device.h"
#include "protocol/telegram.h"

#include <deque>
#include <memory>

/// One transaction with one drive: telegrams still to send, telegrams answered, and a copy of the drive's
/// record that the replies update. An error number in that record ends the pass.
///
/// Built on the main thread, then used by the thread that runs it and by nobody else. The polling stack comes
/// back to the main thread between two passes; only there is it given newer records (adoptDevice).
class Z7TelegramStack
{
public:
    virtual ~Z7TelegramStack();
    Z7TelegramStack(const Z7TelegramStack &) = delete;
    Z7TelegramStack &operator=(const Z7TelegramStack &) = delete;

    /// Prepares the stack for a pass: what its reads told before counts no more. The record's error stays.
    virtual void reset();

    /// The reaction to one answered telegram, by its command; one of a foreign command changes nothing. Runs
    /// after an error too, and may take the record's error back.
    virtual void telegramFinished(const Z7Telegram *telegram) = 0;

    bool isEmpty() const { return m_pendingTelegrams.empty(); }
    int pendingCount() const { return static_cast<int>(m_pendingTelegrams.size()); }
    /// The next telegram to send, or null.
    const Z7Telegram *currentTelegram() const;

    const Z7Device &device() const { return m_device; }
    void setError(int number) { m_device.setDeviceError(number); }

    /// Hands the reply to the current telegram, puts its error into the record and calls telegramFinished.
    /// Without a current telegram nothing happens.
    void processReply(const QByteArray &reply);

    /// How far the pass came; between two passes, or on the thread that runs it.
    Z7PassOutcome outcome() const;

    /// Brings the telegrams back into the order of the constructor and clears the record's error.
    void restart();

    /// Takes over what a transfer has changed: every access telegram gets the address and password of
    /// `newer`, and if it is the record of this very drive, its state and its parameters are copied. Only
    /// between two passes.
    void adoptDevice(const Z7Device &newer);

protected:
    explicit Z7TelegramStack(const Z7Device &device);

    void append(std::unique_ptr<Z7Telegram> telegram);

    /// The value in bytes 4 and 5 of the reply to a parameter read, signed or unsigned as the definitions of
    /// the drive's version tell.
    int readValue(const Z7Telegram *telegram) const;

    Z7Device m_device;

private:
    template<typename Visitor>
    void visitTelegrams(int command, Visitor visit);
    /// Adds what became of one telegram, in a state of Z7ParamOutcome.
    void addOutcome(Z7PassOutcome &outcome, const Z7Telegram &telegram, Z7ParamOutcome::State state) const;

    std::deque<std::unique_ptr<Z7Telegram>> m_pendingTelegrams;
    std::deque<std::unique_ptr<Z7Telegram>> m_doneTelegrams; ///< newest first
};
