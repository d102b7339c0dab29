#pragma once

#include "simulator/bus.h"
#include "simulator/pseudoterminal.h"

namespace z7sim {

/// What a text command may work on, at one moment.
struct CommandContext
{
    Bus &bus;
    PseudoTerminal &port;
    qint64 now; ///< microseconds
};

/// Carries out one command line. The answer is one line that begins with "ok" or "error"; if that line ends
/// with a colon, more lines follow, up to one that holds a single dot. No line feed at the end.
QByteArray runCommand(const CommandContext &context, const QByteArray &line);

} // namespace z7sim
