#pragma once

#include "protocol/telegram.h"

#include <QMetaType>
#include <QVector>

namespace Z7CommInterface {

/// What the bus is used for.
enum class BusState {
    Idle, ///< nothing has asked for the live update yet
    Scanning, ///< a port is being swept
    Transferring, ///< a transfer has the bus
    Polling, ///< the live update has the bus, in a pass or in the pause between two
    PollingOff, ///< the option holds the live update off, its interval being below 1; it comes back with that
    Held, ///< a cancel has ended the live update, and only a request brings it back
    Lent, ///< another program has the bus
};

/// Why a transfer that was asked for did not begin.
enum class NotRun {
    TransferRunning, ///< another transfer had the bus
    Replaced, ///< another request took its place while it was waiting
    Cancelled, ///< all communication was cancelled while it was waiting
    BusLent, ///< another program had the bus
};

} // namespace Z7CommInterface
Q_DECLARE_METATYPE(Z7CommInterface::BusState)
Q_DECLARE_METATYPE(Z7CommInterface::NotRun)

/// What became of one telegram that reads or writes a parameter.
struct Z7ParamOutcome
{
    enum Kind { Read, Write };
    enum State {
        Answered, ///< the drive has taken or given the value
        Refused, ///< the drive has answered that it does not
        Uncertain, ///< sent, or begun to be sent, and no valid answer came
        Unsent, ///< the pass ended before
    };

    Kind kind = Read;
    State state = Unsent;
    int number = -1; ///< of the parameter that was asked for
    int value = 0; ///< that the drive gave to a read; 0 otherwise
    bool conflict = false; ///< the answer to a write had a conflict word other than 0
};

/// How far one pass with one drive came. Unlike the drive's record it tells what happened in this very pass.
/// A copied value.
struct Z7PassOutcome
{
    enum Store {
        NotAsked,
        Stored,
        NotStored, ///< not sent, or the drive has answered that it did not
        StoreUncertain, ///< sent, and no valid answer came
    };

    int deviceId = -1; ///< of the drive's record at the end, as address
    int address = 0;
    int error = TelegramError::TransactionAborted; ///< of the pass; 0 if it had none
    bool isComplete = false; ///< every telegram was sent and answered, and the pass had no error
    Store store = NotAsked;
    QVector<Z7ParamOutcome> params; ///< in the order of the telegrams; a number may come twice
};
Q_DECLARE_METATYPE(Z7PassOutcome)
