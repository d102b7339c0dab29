#include "protocol/telegram.h"

namespace {

constexpr int checksumSeed = 0x55;
constexpr int replyFlag = 0x80;
constexpr int shortErrorCommand = 0x85;
constexpr int shortErrorLength = 4;

/// Bits of the last byte of the short error reply.
constexpr int checksumErrorBit = 0x02;
constexpr int parameterErrorBit = 0x04;

int shortErrorNumber(int errorBits)
{
    if (errorBits & checksumErrorBit)
        return TelegramError::WrongChecksum;
    if (errorBits & parameterErrorBit)
        return TelegramError::WrongParameterNumber;
    return errorBits != 0 ? TelegramError::InvalidReplyData : TelegramError::None;
}

} // namespace

int telegramChecksum(const QByteArray &bytes, int count)
{
    const int length = count < 1 ? bytes.size() : qMin(count, bytes.size());
    int sum = 0;
    for (int i = 0; i < length; ++i)
        sum += static_cast<quint8>(bytes.at(i));
    return (sum & 0xFF) ^ checksumSeed;
}

QString hexDump(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes)
        text += QStringLiteral("0x%1 ").arg(static_cast<quint8>(byte), 0, 16);
    return text;
}

void Z7Telegram::parseReply(const QByteArray &bytes)
{
    m_error = TelegramError::None;
    m_reply = bytes;
    judgeReply();
}

void Z7Telegram::judgeReply()
{
    if (!hasReplyByte(1)) {
        noteError(TelegramError::InvalidReplyLength);
        return;
    }
    if (replyByte(1) != byteAt(m_request, 1)) {
        noteError(TelegramError::InvalidReplyData);
        return;
    }
    if (replyByte(0) == ((byteAt(m_request, 0) + replyFlag) & 0xFF))
        judgeNormalReply();
    else if (replyByte(0) == shortErrorCommand)
        judgeShortErrorReply();
    else
        decodeReply();
}

void Z7Telegram::judgeNormalReply()
{
    if (!isChecksumRight())
        noteError(TelegramError::WrongChecksum);
    else if (m_reply.size() != expectedReplyLength())
        noteError(TelegramError::InvalidReplyLength);
    else
        decodeReply();
}

void Z7Telegram::judgeShortErrorReply()
{
    if (m_reply.size() != shortErrorLength) {
        noteError(TelegramError::InvalidReplyLength);
        return;
    }
    if (!isChecksumRight()) {
        noteError(TelegramError::WrongChecksum);
        return;
    }
    // The error bits stand in the last byte, the very byte that has just been compared as checksum.
    noteError(shortErrorNumber(replyByte(shortErrorLength - 1)));
    if (m_error == TelegramError::None)
        decodeReply();
}

bool Z7Telegram::isChecksumRight() const
{
    const int last = m_reply.size() - 1;
    return telegramChecksum(m_reply, last) == replyByte(last);
}

void Z7Telegram::buildRequest(int address, const QByteArray &payload)
{
    m_request.clear();
    m_request.append(static_cast<char>(m_command));
    m_request.append(static_cast<char>(address));
    m_request.append(payload);
    m_request.append(static_cast<char>(telegramChecksum(m_request, -1)));
}

int Z7Telegram::byteAt(const QByteArray &bytes, int index)
{
    return index >= 0 && index < bytes.size() ? static_cast<quint8>(bytes.at(index)) : 0;
}

int Z7Telegram::wordAt(const QByteArray &bytes, int index)
{
    return (byteAt(bytes, index) << 8) + byteAt(bytes, index + 1);
}
