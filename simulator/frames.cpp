#include "simulator/frames.h"

#include <numeric>

namespace z7sim {

int requestLength(quint8 command)
{
    switch (command) {
    case Store:
    case ParameterWrite:
    case FactoryReset:
    case CustomerAccess:
    case BootloaderInit:
    case FirmwareStart:
        return 7;
    case ParameterRead:
        return 5;
    case StatusRead:
    case SoftwareId:
        return 3;
    case PasswordReset:
        return 11;
    default:
        return 0;
    }
}

quint8 checksum(const QByteArray &bytes)
{
    const auto add = [](quint8 sum, char byte) {
        return static_cast<quint8>(sum + static_cast<quint8>(byte));
    };
    return std::accumulate(bytes.begin(), bytes.end(), quint8 {}, add) ^ 0x55;
}

QByteArray sealed(const QByteArray &frame)
{
    return frame + static_cast<char>(checksum(frame));
}

QByteArray resealed(const QByteArray &frame)
{
    return sealed(frame.left(frame.size() - 1));
}

bool isIntact(const QByteArray &frame)
{
    return !frame.isEmpty() && resealed(frame) == frame;
}

quint8 byteAt(const QByteArray &frame, int position)
{
    return static_cast<quint8>(frame.at(position));
}

quint16 wordAt(const QByteArray &frame, int position)
{
    return static_cast<quint16>(byteAt(frame, position) << 8 | byteAt(frame, position + 1));
}

void appendWord(QByteArray &frame, quint16 word)
{
    frame.append(static_cast<char>(word >> 8)).append(static_cast<char>(word));
}

quint32 storedPassword(quint32 password)
{
    return password & 0xFF00FFFFu;
}

quint32 passwordAt(const QByteArray &frame, int position)
{
    return storedPassword(static_cast<quint32>(wordAt(frame, position)) << 16 | wordAt(frame, position + 2));
}

QByteArray replyHead(const QByteArray &request)
{
    return QByteArray(1, static_cast<char>(request.at(0) | '\x80')) + request.at(1);
}

QByteArray shortErrorReply(int address, quint8 bits)
{
    const quint8 filler = static_cast<quint8>((bits ^ 0x55) - 0x85 - address);
    return QByteArray(1, '\x85') + static_cast<char>(address) + static_cast<char>(filler)
        + static_cast<char>(bits);
}

std::optional<int> parameterNumber(const QByteArray &request)
{
    const quint8 command = byteAt(request, 0);
    if (command != ParameterRead && command != ParameterWrite)
        return std::nullopt;
    return wordAt(request, 2);
}

} // namespace z7sim
