#pragma once

#include "protocol/telegramcatalogue.h"
#include "tests/comm/drivereplies.h"

/// Tells what it is asked for, and can take errors back.
class RecordingStack : public Z7TelegramStack
{
public:
    /// Reads these parameters of the drive.
    explicit RecordingStack(const QList<int> &numbers, const Z7Device &device = drive3())
        : Z7TelegramStack(device)
    {
        for (const int number : numbers)
            append(std::make_unique<Z7Telegram_ParameterRead>(device.address, number));
    }

    void telegramFinished(const Z7Telegram *telegram) override
    {
        finished << telegram;
        errorsAtFinish << device().error;
        if (forgiving)
            setError(TelegramError::None);
    }

    using Z7TelegramStack::append;

    QList<const Z7Telegram *> finished;
    QList<int> errorsAtFinish;
    bool forgiving = false;
};

// The drive's answers to a read of parameter 1.
inline const QByteArray valueOf1 = frame("84 03 00 01 00 05 00");
inline const QByteArray wrongNumber = frame("84 03 00 63 00 05 00"); // names parameter 99: error 9

inline const QByteArrayList readsOf1To4 {
    "04 03 00 01 5d", "04 03 00 02 5c", "04 03 00 03 5f", "04 03 00 04 5e"};
