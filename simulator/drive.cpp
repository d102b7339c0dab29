#include "simulator/drive.h"

#include <array>
#include <cmath>

namespace z7sim {

namespace {

/// Parameters whose values must rise from the first to the last.
using RisingRule = std::array<int, 3>;
constexpr RisingRule risingRules[] = {{0x0B, 0x0C, 0x0D}, {0x26, 0x27, 0x28}};

enum MotorParameter {
    FirstSpeedX = 0x0B,
    FirstSpeedY = 0x0E,
    FixedSpeed1 = 0x17,
    AccelerationRight = 0x1A,
    BrakingRight = 0x1B,
    AccelerationLeft = 0x1C,
    BrakingLeft = 0x1D,
};

constexpr int fixedSpeeds = 1; // operation mode
constexpr int lastAnalogStep = 1023;
constexpr double defaultRamp = 1000;

enum StatusBit : quint8 { Active = 0x02, Ready = 0x80 };

QByteArray statusReply(const QByteArray &request, quint8 status)
{
    return sealed(replyHead(request) + static_cast<char>(status));
}

} // namespace

Drive::Drive(const DriveConfig &config)
    : m_config(config)
    , m_address(config.address)
    , m_password(storedPassword(static_cast<quint32>(config.password.value_or(config.address))))
{
    loadDefinitions();
    for (auto entry = config.parameters.begin(); entry != config.parameters.end(); ++entry)
        setFlash(entry.key(), entry.value());
    m_working = m_flash;
}

void Drive::loadDefinitions()
{
    const QString inFolder =
        m_config.definitionFolder + QLatin1Char('/') + definitionFileName(m_config.version);
    const QString file = m_config.definitionFile.isEmpty() ? inFolder : m_config.definitionFile;
    m_definitions = withBuiltIns(z7sim::loadDefinitions(file));
    m_flash = m_working = factoryMemory();
}

Drive::Memory Drive::factoryMemory() const
{
    Memory memory;
    for (auto row = m_definitions.begin(); row != m_definitions.end(); ++row) {
        if (!isLiveValue(row.key()) && row.key() != BusAddress)
            memory.insert(row.key(), static_cast<quint16>(row->factoryValue));
    }
    return memory;
}

bool Drive::listensTo(const QByteArray &request) const
{
    const int address = byteAt(request, 1);
    return address == m_address || (m_bootloader && address == 0);
}

QByteArray Drive::execute(const QByteArray &request, qint64 now)
{
    advanceMotor(now);
    if (m_bootloader)
        return executeInBootloader(request, now);
    if (!isIntact(request)) {
        m_sawChecksumError = true;
        return shortErrorReply(m_address, ChecksumErrorSeen);
    }
    switch (byteAt(request, 0)) {
    case Store:
        return store(request);
    case ParameterWrite:
        return writeParameter(request);
    case ParameterRead:
        return readParameter(request);
    case StatusRead:
        return readStatus(request);
    case FactoryReset:
        return factoryReset(request);
    case SoftwareId:
        return readSoftwareId(request);
    case CustomerAccess:
        return customerAccess(request);
    case BootloaderInit:
        return initBootloader(request);
    case PasswordReset:
        return resetPassword(request);
    default:
        return {};
    }
}

QByteArray Drive::executeInBootloader(const QByteArray &request, qint64 now)
{
    if (byteAt(request, 0) != FirmwareStart || !isIntact(request))
        return {};
    m_config.version = versionText(request.mid(2, 4));
    loadDefinitions();
    powerCycle(now);
    return statusReply(request, 0);
}

void Drive::powerCycle(qint64 now)
{
    m_working = m_flash;
    m_motor = Motor();
    m_access = false;
    m_bootloader = false;
    m_sawChecksumError = false;
    advanceMotor(now);
}

QByteArray Drive::customerAccess(const QByteArray &request)
{
    m_access = passwordAt(request, 2) == m_password;
    return statusReply(request, m_access ? 0 : AccessRefused);
}

QByteArray Drive::readParameter(const QByteArray &request)
{
    const int number = wordAt(request, 2);
    const quint8 flags = readFlags(number);
    QByteArray reply = replyHead(request) + request.mid(2, 2);
    appendWord(reply, flags ? 0 : raw(number));
    return sealed(reply + static_cast<char>(flags));
}

quint8 Drive::readFlags(int number) const
{
    if (!m_access || isLocked(number))
        return AccessRefused;
    return m_definitions.contains(number) ? 0 : Failed;
}

bool Drive::isLocked(int number) const
{
    return m_config.surroundings.lockedParameters.contains(number);
}

QByteArray Drive::writeParameter(const QByteArray &request)
{
    const int number = wordAt(request, 2);
    const quint8 flags = writeFlags(number, wordAt(request, 4));
    if (!flags)
        take(number, wordAt(request, 4));
    QByteArray reply = replyHead(request) + request.mid(2, 2);
    appendWord(reply, readFlags(number) ? 0 : raw(number));
    appendWord(reply, flags ? 0 : static_cast<quint16>(conflictOf(number)));
    return sealed(reply + static_cast<char>(flags));
}

quint8 Drive::writeFlags(int number, quint16 raw) const
{
    constexpr int inputs1And2 = 0x03;
    if (!m_access || isLocked(number))
        return AccessRefused;
    const auto row = m_definitions.find(number);
    if (row == m_definitions.end() || row->isReadOnly || !row->allows(row->meaningOf(raw)))
        return Failed;
    const bool inUse = m_config.surroundings.digitalInputs & inputs1And2;
    return row->isApplicationFunction && inUse ? Failed : 0;
}

void Drive::take(int number, quint16 raw)
{
    if (number == BusAddress)
        m_address = raw;
    else
        m_working[number] = raw;
}

// The drive takes a value that breaks a rule, since a whole set is written one by one; it names the other
// parameter of the conflict and refuses to store until the rule holds again.
int Drive::conflictOf(int number) const
{
    for (const RisingRule &rule : risingRules) {
        for (std::size_t i = 1; i < rule.size(); ++i) {
            const int lower = rule[i - 1];
            const int upper = rule[i];
            if ((number == lower || number == upper) && value(lower) > value(upper))
                return number == lower ? upper : lower;
        }
    }
    return 0;
}

bool Drive::isConsistent() const
{
    for (const RisingRule &rule : risingRules) {
        if (conflictOf(rule[1]))
            return false;
    }
    return true;
}

QByteArray Drive::store(const QByteArray &request)
{
    if (passwordAt(request, 2) != m_password)
        return statusReply(request, AccessRefused);
    const quint8 status = storeStatus();
    if (!status)
        m_flash = m_working;
    return statusReply(request, status);
}

quint8 Drive::storeStatus() const
{
    if (!isConsistent())
        return Inconsistent;
    if (m_working == m_flash)
        return Failed;
    return m_config.surroundings.flashBroken ? FlashFailed : 0;
}

QByteArray Drive::factoryReset(const QByteArray &request)
{
    if (passwordAt(request, 2) != m_password)
        return statusReply(request, AccessRefused);
    m_working = m_flash = factoryMemory();
    return statusReply(request, 0);
}

QByteArray Drive::initBootloader(const QByteArray &request)
{
    if (passwordAt(request, 2) != m_password)
        return statusReply(request, AccessRefused);
    m_bootloader = !m_motor.turns();
    return statusReply(request, m_bootloader ? 0 : Failed);
}

QByteArray Drive::resetPassword(const QByteArray &request)
{
    if (passwordAt(request, 2) != m_password)
        return statusReply(request, AccessRefused);
    m_password = passwordAt(request, 6);
    return statusReply(request, 0);
}

// Without access the drive shows no status; it says so in the communication byte.
QByteArray Drive::readStatus(const QByteArray &request)
{
    const quint8 communication =
        static_cast<quint8>((m_sawChecksumError ? ChecksumErrorSeen : 0) | (m_access ? 0 : AccessRefused));
    m_sawChecksumError = false;
    return sealed(replyHead(request) + static_cast<char>(m_access ? currentStatus() : 0)
        + static_cast<char>(communication));
}

QByteArray Drive::readSoftwareId(const QByteArray &request) const
{
    const QByteArray maker = QByteArrayLiteral("SIMULATED DRIVE ");
    const QByteArray version = versionBytes(m_config.version).value_or(QByteArray(4, '\0'));
    return sealed(replyHead(request) + maker + version + QByteArray(12, '\0'));
}

quint8 Drive::statusBits(qint64 now)
{
    advanceMotor(now);
    return currentStatus();
}

quint8 Drive::currentStatus() const
{
    const bool active = m_motor.turns() || setPoint() != 0;
    return static_cast<quint8>(m_config.surroundings.statusBits.value_or(active ? Ready | Active : Ready));
}

std::optional<int> Drive::memory(int number, qint64 now)
{
    advanceMotor(now);
    if (!m_definitions.contains(number))
        return std::nullopt;
    return value(number);
}

std::optional<int> Drive::flash(int number) const
{
    if (number == BusAddress)
        return m_address;
    if (!m_flash.contains(number))
        return std::nullopt;
    return m_definitions.value(number).meaningOf(m_flash.value(number));
}

bool Drive::setMemory(int number, int value)
{
    if (isLiveValue(number))
        m_config.surroundings.liveValues.insert(number, value);
    else if (m_definitions.contains(number))
        take(number, static_cast<quint16>(value));
    return m_definitions.contains(number);
}

bool Drive::setFlash(int number, int value)
{
    if (!m_flash.contains(number))
        return false;
    m_flash[number] = static_cast<quint16>(value);
    return true;
}

quint16 Drive::raw(int number) const
{
    if (isLiveValue(number))
        return liveValue(number);
    return number == BusAddress ? static_cast<quint16>(m_address) : m_working.value(number);
}

int Drive::value(int number) const
{
    return m_definitions.value(number).meaningOf(raw(number));
}

quint16 Drive::liveValue(int number) const
{
    const Surroundings &around = m_config.surroundings;
    const double wholeTurns = std::floor(m_motor.position());
    if (around.liveValues.contains(number))
        return static_cast<quint16>(around.liveValues.value(number));
    switch (number) {
    case ActualSpeed:
        return static_cast<quint16>(std::lround(m_motor.speed()));
    case PositionFraction:
        return static_cast<quint16>(std::lround((m_motor.position() - wholeTurns) * 65535));
    case PositionTurns:
        return static_cast<quint16>(std::llround(wholeTurns));
    case ActualTemperature:
        return static_cast<quint16>(std::lround(m_motor.temperature()));
    case ActualCurrent:
        return static_cast<quint16>(std::lround(m_motor.current()));
    case DigitalOutputs:
        return static_cast<quint16>(around.digitalOutputs.value_or(m_motor.turns() ? 1 : 0));
    case DigitalInputs:
        return static_cast<quint16>(around.digitalInputs);
    default:
        return static_cast<quint16>(around.analogInput);
    }
}

void Drive::advanceMotor(qint64 now)
{
    m_motor.advance(now, demand());
}

MotorDemand Drive::demand() const
{
    const auto ramp = [this](int number) { return raw(number) ? raw(number) : defaultRamp; };
    return {
        setPoint(), ramp(AccelerationRight), ramp(BrakingRight), ramp(AccelerationLeft), ramp(BrakingLeft)};
}

// Inputs 1 and 2 enable the motor. In the mode of the fixed speeds they also choose one of three; in every
// other mode the analog input gives the speed.
double Drive::setPoint() const
{
    const Surroundings &around = m_config.surroundings;
    if (m_bootloader)
        return 0;
    if (around.setPoint)
        return *around.setPoint;
    const int selected = around.digitalInputs & 0x03;
    if (!selected)
        return 0;
    const int mode = value(selected == 2 ? OperationMode2 : OperationMode1);
    return mode == fixedSpeeds ? value(FixedSpeed1 + selected - 1) : speedFromAnalogInput();
}

double Drive::speedFromAnalogInput() const
{
    const std::array<int, 5> steps = {
        0, value(FirstSpeedX), value(FirstSpeedX + 1), value(FirstSpeedX + 2), lastAnalogStep};
    const int input = m_config.surroundings.analogInput;
    for (int i = 1; i < 5; ++i) {
        if (input > steps[i] || steps[i] <= steps[i - 1])
            continue;
        const double low = value(FirstSpeedY + i - 1);
        const double high = value(FirstSpeedY + i);
        return low + (high - low) * (input - steps[i - 1]) / (steps[i] - steps[i - 1]);
    }
    return value(FirstSpeedY + 4);
}

} // namespace z7sim
