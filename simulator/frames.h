#pragma once

#include <QByteArray>
#include <optional>

namespace z7sim {

/// Command bytes that a drive knows. A normal reply carries the command with bit 7 set.
enum Command : quint8 {
    Store = 0x02,
    ParameterWrite = 0x03,
    ParameterRead = 0x04,
    StatusRead = 0x05,
    FactoryReset = 0x06,
    SoftwareId = 0x07,
    CustomerAccess = 0x09,
    BootloaderInit = 0x0B,
    PasswordReset = 0x0C,
    /// Known to the bootloader alone: the letter and the three numbers of a new version (bytes 2 to 5). The
    /// drive confirms with a status byte 0 and restarts with that version. Address 0 reaches any drive in its
    /// bootloader.
    FirmwareStart = 0x60,
};

/// Status and result bits of replies.
enum ReplyBits : quint8 {
    AccessRefused = 0x10,
    Failed = 0x20,
    FlashFailed = 0x40,
    Inconsistent = 0x80,
    ChecksumErrorSeen = 0x02,
    WrongNumberSeen = 0x04,
};

/// Whole length in bytes of a request with this command, 0 for a command that no drive knows.
int requestLength(quint8 command);

/// Sum of all bytes modulo 256, XOR 0x55.
quint8 checksum(const QByteArray &bytes);

/// The frame with its checksum appended.
QByteArray sealed(const QByteArray &frame);

/// The frame with its last byte replaced by the checksum of the bytes before it.
QByteArray resealed(const QByteArray &frame);

/// True if the last byte is the checksum of the bytes before it.
bool isIntact(const QByteArray &frame);

quint8 byteAt(const QByteArray &frame, int position);
/// The two bytes from position on, high byte first.
quint16 wordAt(const QByteArray &frame, int position);
void appendWord(QByteArray &frame, quint16 word);

/// A password as drives keep it: bits 23 to 16 do not travel, so no drive holds them.
quint32 storedPassword(quint32 password);
/// The password field whose four bytes begin at position, as a drive compares it.
quint32 passwordAt(const QByteArray &frame, int position);

/// First two bytes of the normal reply to a request.
QByteArray replyHead(const QByteArray &request);

/// The reply of four bytes with which a drive answers a request it cannot take. The master reads the last
/// byte both as checksum and as error bits, so byte 2 is filled such that the checksum comes out as exactly
/// these bits.
QByteArray shortErrorReply(int address, quint8 bits);

/// Parameter number of a read or write request, nothing for other requests.
std::optional<int> parameterNumber(const QByteArray &request);

} // namespace z7sim
