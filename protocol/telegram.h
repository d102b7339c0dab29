#pragma once

#include <QByteArray>
#include <QString>

/// Checksum of the drive's bus: the first `count` bytes added up modulo 256, XOR 0x55.
/// A count below 1, or beyond the array, means the whole array; nothing at all gives 0x55.
int telegramChecksum(const QByteArray &bytes, int count);

/// The bytes as text for inspection: "0x5 0xa3 ", lower case, no leading zero, a blank behind each.
QString hexDump(const QByteArray &bytes);

/// Numbers with which a telegram, or the thread that sends it, tells how an exchange ended.
/// Their texts are looked up where a person reads them; a number that is missing there does not compile.
namespace TelegramError {
enum Number {
    None = 0,
    NoAnswer = 1,
    WriteNotCompleted = 2,
    PortNotOpened = 3,
    PortSettingsRefused = 4,
    PasswordNotSet = 5, ///< not set by this program, as 11 to 14
    InvalidReplyLength = 6,
    InvalidReplyData = 7,
    WrongChecksum = 8,
    WrongParameterNumber = 9,
    InvalidPassword = 10,
    ParameterNotReadable = 11,
    Unassigned = 12,
    PortNotReady = 13,
    CommunicationError = 14,
    VersionNotCompatible = 15,
    NoParameterChange = 16,
    FlashWriteFailed = 17,
    InconsistentParameters = 18,
    TransactionAborted = 19,
    MotorNotInFreeRun = 20,
    Count, ///< of the numbers from 0 on; stays behind the last of them
};
}

/// One request to a drive and its reply.
///
/// A frame is a plain row of bytes without start mark, end mark or length: command, bus address, payload
/// (numbers high byte first), checksum. A normal reply carries the request's command plus 128; any request
/// may instead be answered by the short error reply, four bytes that begin with 0x85.
///
/// A telegram does no input or output. One thread uses it at a time, and it has no lock.
class Z7Telegram
{
public:
    virtual ~Z7Telegram() = default;
    Z7Telegram(const Z7Telegram &) = delete;
    Z7Telegram &operator=(const Z7Telegram &) = delete;

    /// Length in bytes of the normal reply, checksum included.
    virtual int expectedReplyLength() const = 0;

    /// Checks the content of the stored reply and sets error() where it tells of a failure; clears none.
    /// Also runs on replies of other lengths than expected, so it asks before it reads a byte.
    virtual void decodeReply() = 0;

    /// Stores `bytes` as the reply and judges it; the outcome is in error().
    /// The address is tested before anything else, so a frame from another drive gives 7 whatever else is
    /// wrong with it. A first byte that is neither the normal reply's nor 0x85 is no failure at this level.
    void parseReply(const QByteArray &bytes);

    /// Replaces the whole request, checksum included.
    void setRequest(const QByteArray &bytes) { m_request = bytes; }

    int command() const { return m_command; }
    int error() const { return m_error; }
    const QByteArray &request() const { return m_request; }
    const QByteArray &reply() const { return m_reply; }

    QString requestText() const { return hexDump(m_request); }
    QString replyText() const { return hexDump(m_reply); }

    /// True if the reply is long enough to hold byte `index`.
    bool hasReplyByte(int index) const { return index < m_reply.size(); }
    /// Byte `index` of the reply, 0 to 255; 0 where the reply is too short.
    int replyByte(int index) const { return byteAt(m_reply, index); }
    /// Bytes `index` and `index` + 1 of the reply, high byte first, 0 to 65535.
    int replyWord(int index) const { return wordAt(m_reply, index); }
    /// Bytes `index` and `index` + 1 of the request, high byte first, 0 to 65535.
    int requestWord(int index) const { return wordAt(m_request, index); }

protected:
    explicit Z7Telegram(int command)
        : m_command(command)
    {
    }

    /// Notes a failure. 0 clears none: an error stands until the next reply.
    void noteError(int error)
    {
        if (error != TelegramError::None)
            m_error = error;
    }

    /// Builds the request: command, low byte of the address, payload, checksum.
    void buildRequest(int address, const QByteArray &payload = QByteArray());

    static int byteAt(const QByteArray &bytes, int index);
    static int wordAt(const QByteArray &bytes, int index);

private:
    void judgeReply();
    void judgeNormalReply();
    void judgeShortErrorReply();
    bool isChecksumRight() const;

    int m_command;
    int m_error = TelegramError::None;
    QByteArray m_request;
    QByteArray m_reply;
};
