#pragma once

#include "simulator/definitions.h"
#include "simulator/driveconfig.h"
#include "simulator/frames.h"
#include "simulator/motor.h"

namespace z7sim {

/// One drive: takes requests and gives replies, keeps its parameters in working memory and flash, and turns
/// its motor.
///
/// A value type without a clock or a thread of its own: every call that depends on time gets it in
/// microseconds. Address and password are kept at once when they change; everything else is lost at a power
/// cycle unless stored. Access is open from an access telegram with the right password to the next one with a
/// wrong password or to the next power cycle. Commands that carry the password themselves need no access.
class Drive
{
public:
    explicit Drive(const DriveConfig &config);

    /// True if the drive takes this request (of the length of its command) for its own.
    bool listensTo(const QByteArray &request) const;

    /// Does what the request asks and returns the reply, empty if the drive keeps silent.
    QByteArray execute(const QByteArray &request, qint64 now);

    void powerCycle(qint64 now);

    int address() const { return m_address; }
    quint32 password() const { return m_password; }
    void setPassword(quint32 password) { m_password = storedPassword(password); }
    QByteArray version() const { return m_config.version; }
    bool hasAccess() const { return m_access; }
    bool isInBootloader() const { return m_bootloader; }
    quint8 statusBits(qint64 now);

    Surroundings &surroundings() { return m_config.surroundings; }
    const Surroundings &surroundings() const { return m_config.surroundings; }

    /// Value of a parameter as its definition says, signed or unsigned; nothing for a number the drive does
    /// not have.
    std::optional<int> memory(int number, qint64 now);
    std::optional<int> flash(int number) const;
    /// Puts a value past all rules of the drive; false for a number the drive does not have. A live value is
    /// held fast.
    bool setMemory(int number, int value);
    bool setFlash(int number, int value);

private:
    using Memory = QMap<int, quint16>;

    void loadDefinitions();
    Memory factoryMemory() const;

    QByteArray executeInBootloader(const QByteArray &request, qint64 now);
    QByteArray customerAccess(const QByteArray &request);
    QByteArray readParameter(const QByteArray &request);
    QByteArray writeParameter(const QByteArray &request);
    QByteArray store(const QByteArray &request);
    QByteArray factoryReset(const QByteArray &request);
    QByteArray initBootloader(const QByteArray &request);
    QByteArray resetPassword(const QByteArray &request);
    QByteArray readStatus(const QByteArray &request);
    QByteArray readSoftwareId(const QByteArray &request) const;

    quint8 readFlags(int number) const;
    quint8 writeFlags(int number, quint16 raw) const;
    bool isLocked(int number) const;
    quint16 raw(int number) const;
    int value(int number) const;
    quint16 liveValue(int number) const;
    void take(int number, quint16 raw);
    int conflictOf(int number) const;
    bool isConsistent() const;
    quint8 storeStatus() const;
    quint8 currentStatus() const;

    void advanceMotor(qint64 now);
    MotorDemand demand() const;
    double setPoint() const;
    double speedFromAnalogInput() const;

    DriveConfig m_config;
    Definitions m_definitions;
    Memory m_working;
    Memory m_flash;
    Motor m_motor;
    int m_address;
    quint32 m_password;
    bool m_access = false;
    bool m_bootloader = false;
    bool m_sawChecksumError = false;
};

} // namespace z7sim
