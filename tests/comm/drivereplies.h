#pragma once

#include "comm/telegramstackcatalogue.h"

#include <QByteArrayList>

/// The bytes of a frame from hex text, with the checksum behind them: "05 01" gives 05 01 53.
QByteArray frame(const QByteArray &hex);

/// Makes known what the parameters of version V123 mean. Signed are 80 (0x50), the speed, the turns and the
/// temperature; 1, 2, 11 (0x0B), 82 (0x52), 256 (0x0100) and the other live values are unsigned.
void loadDefinitionsOfV123();

/// A drive of version V123 at address 3 with the password 4711 (0x1267), not reached yet.
/// Its parameters are those of the definitions, without values.
Z7Device drive3();
/// The same as the wizard finds it: version and parameters are not known.
Z7Device unknownDrive3();

/// A parameter with a value, such as the user enters.
Z7DeviceParam enteredParam(int number, int value);
/// A parameter of the value 100 on which everything has gone wrong that can.
Z7DeviceParam troubledParam(int number);
/// The whole state of an entry: "100 valid accessDenied error 9", "none" for an entry without a value.
QByteArray describe(const Z7DeviceParam &param);
/// The same for the entry of that number in the record of a stack.
QByteArray describe(const Z7TelegramStack &stack, int number);

/// Place of a telegram in the status stack and in those that begin like it.
enum StatusTelegram {
    FirstAccess,
    SecondAccess,
    StatusBits,
    Version,
    Mode1,
    Mode2,
    Speed,
    Current,
    Temperature,
    PositionFraction,
    PositionTurns,
    Outputs,
    Inputs,
    AnalogInput,
    StatusTelegramCount
};

/// What drive 3 answers to the 14 telegrams of the status stack when all is well: V123, ready, standing
/// still.
QByteArrayList statusReplies();
/// The same with another reply in one place.
QByteArrayList statusRepliesWith(StatusTelegram place, const QByteArray &reply);
/// The version reply of drive 3 with these bytes for letter and numbers: "56 01 02 03" is V123.
QByteArray versionReply(const QByteArray &hex);

/// Gives the replies to the telegrams of a stack as the communication thread does: until the record holds an
/// error. Returns how many telegrams were answered.
int answer(Z7TelegramStack &stack, const QByteArrayList &replies);

/// The record after a status stack's pass in which one telegram got another reply than usual.
Z7Device afterPass(const Z7Device &device, StatusTelegram place, const QByteArray &reply);

/// The requests still to be sent, as hex text; each is answered by nothing on the way.
QByteArrayList takeRequests(Z7TelegramStack &stack);
/// The same for what follows the 14 telegrams of the status stack.
QByteArrayList takeRequestsBehindStatus(Z7TelegramStack &stack);
