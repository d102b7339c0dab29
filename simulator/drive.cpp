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

constexpr int FixedSpeeds = 1; // operation mode
constexpr int LastAnalogStep = 1023;
constexpr double DefaultRamp = 1000;

enum StatusBit : quint8 { Active = 0x02, Ready = 0x80 };

QByteArray statusReply(const QByteArray &request, quint8 status)
{
    return sealed(replyHead(request) + char(status));
}

} // namespace

Drive::Drive(const DriveConfig &config)
    : config_(config)
    , address_(config.address)
    , password_(storedPassword(quint32(config.password.value_or(config.address))))
{
    loadDefinitions();
    for (auto entry = config.parameters.begin(); entry != config.parameters.end(); ++entry)
        setFlash(entry.key(), entry.value());
    working_ = flash_;
}

void Drive::loadDefinitions()
{
    const QString inFolder =
        config_.definitionFolder + QLatin1Char('/') + definitionFileName(config_.version);
    const QString file = config_.definitionFile.isEmpty() ? inFolder : config_.definitionFile;
    definitions_ = withBuiltIns(z7sim::loadDefinitions(file));
    flash_ = working_ = factoryMemory();
}

Drive::Memory Drive::factoryMemory() const
{
    Memory memory;
    for (auto row = definitions_.begin(); row != definitions_.end(); ++row) {
        if (!isLiveValue(row.key()) && row.key() != BusAddress)
            memory.insert(row.key(), quint16(row->factoryValue));
    }
    return memory;
}

bool Drive::listensTo(const QByteArray &request) const
{
    const int address = byteAt(request, 1);
    return address == address_ || (bootloader_ && address == 0);
}

QByteArray Drive::execute(const QByteArray &request, qint64 now)
{
    advanceMotor(now);
    if (bootloader_)
        return executeInBootloader(request, now);
    if (!isIntact(request)) {
        sawChecksumError_ = true;
        return shortErrorReply(address_, ChecksumErrorSeen);
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
    config_.version = versionText(request.mid(2, 4));
    loadDefinitions();
    powerCycle(now);
    return statusReply(request, 0);
}

void Drive::powerCycle(qint64 now)
{
    working_ = flash_;
    motor_ = Motor();
    access_ = false;
    bootloader_ = false;
    sawChecksumError_ = false;
    advanceMotor(now);
}

QByteArray Drive::customerAccess(const QByteArray &request)
{
    access_ = passwordAt(request, 2) == password_;
    return statusReply(request, access_ ? 0 : AccessRefused);
}

QByteArray Drive::readParameter(const QByteArray &request)
{
    const int number = wordAt(request, 2);
    const quint8 flags = readFlags(number);
    QByteArray reply = replyHead(request) + request.mid(2, 2);
    appendWord(reply, flags ? 0 : raw(number));
    return sealed(reply + char(flags));
}

quint8 Drive::readFlags(int number) const
{
    if (!access_ || isLocked(number))
        return AccessRefused;
    return definitions_.contains(number) ? 0 : Failed;
}

bool Drive::isLocked(int number) const
{
    return config_.surroundings.lockedParameters.contains(number);
}

QByteArray Drive::writeParameter(const QByteArray &request)
{
    const int number = wordAt(request, 2);
    const quint8 flags = writeFlags(number, wordAt(request, 4));
    if (!flags)
        take(number, wordAt(request, 4));
    QByteArray reply = replyHead(request) + request.mid(2, 2);
    appendWord(reply, readFlags(number) ? 0 : raw(number));
    appendWord(reply, flags ? 0 : quint16(conflictOf(number)));
    return sealed(reply + char(flags));
}

quint8 Drive::writeFlags(int number, quint16 raw) const
{
    constexpr int Inputs1And2 = 0x03;
    if (!access_ || isLocked(number))
        return AccessRefused;
    const auto row = definitions_.find(number);
    if (row == definitions_.end() || row->isReadOnly || !row->allows(row->meaningOf(raw)))
        return Failed;
    const bool inUse = config_.surroundings.digitalInputs & Inputs1And2;
    return row->isApplicationFunction && inUse ? Failed : 0;
}

void Drive::take(int number, quint16 raw)
{
    if (number == BusAddress)
        address_ = raw;
    else
        working_[number] = raw;
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
    if (passwordAt(request, 2) != password_)
        return statusReply(request, AccessRefused);
    const quint8 status = storeStatus();
    if (!status)
        flash_ = working_;
    return statusReply(request, status);
}

quint8 Drive::storeStatus() const
{
    if (!isConsistent())
        return Inconsistent;
    if (working_ == flash_)
        return Failed;
    return config_.surroundings.flashBroken ? FlashFailed : 0;
}

QByteArray Drive::factoryReset(const QByteArray &request)
{
    if (passwordAt(request, 2) != password_)
        return statusReply(request, AccessRefused);
    working_ = flash_ = factoryMemory();
    return statusReply(request, 0);
}

QByteArray Drive::initBootloader(const QByteArray &request)
{
    if (passwordAt(request, 2) != password_)
        return statusReply(request, AccessRefused);
    bootloader_ = !motor_.turns();
    return statusReply(request, bootloader_ ? 0 : Failed);
}

QByteArray Drive::resetPassword(const QByteArray &request)
{
    if (passwordAt(request, 2) != password_)
        return statusReply(request, AccessRefused);
    password_ = passwordAt(request, 6);
    return statusReply(request, 0);
}

// Without access the drive shows no status; it says so in the communication byte.
QByteArray Drive::readStatus(const QByteArray &request)
{
    const quint8 communication =
        quint8((sawChecksumError_ ? ChecksumErrorSeen : 0) | (access_ ? 0 : AccessRefused));
    sawChecksumError_ = false;
    return sealed(replyHead(request) + char(access_ ? currentStatus() : 0) + char(communication));
}

QByteArray Drive::readSoftwareId(const QByteArray &request) const
{
    const QByteArray maker = QByteArrayLiteral("SIMULATED DRIVE ");
    const QByteArray version = versionBytes(config_.version).value_or(QByteArray(4, '\0'));
    return sealed(replyHead(request) + maker + version + QByteArray(12, '\0'));
}

quint8 Drive::statusBits(qint64 now)
{
    advanceMotor(now);
    return currentStatus();
}

quint8 Drive::currentStatus() const
{
    const bool active = motor_.turns() || setPoint() != 0;
    return quint8(config_.surroundings.statusBits.value_or(active ? Ready | Active : Ready));
}

std::optional<int> Drive::memory(int number, qint64 now)
{
    advanceMotor(now);
    if (!definitions_.contains(number))
        return std::nullopt;
    return value(number);
}

std::optional<int> Drive::flash(int number) const
{
    if (number == BusAddress)
        return address_;
    if (!flash_.contains(number))
        return std::nullopt;
    return definitions_.value(number).meaningOf(flash_.value(number));
}

bool Drive::setMemory(int number, int value)
{
    if (isLiveValue(number))
        config_.surroundings.liveValues.insert(number, value);
    else if (definitions_.contains(number))
        take(number, quint16(value));
    return definitions_.contains(number);
}

bool Drive::setFlash(int number, int value)
{
    if (!flash_.contains(number))
        return false;
    flash_[number] = quint16(value);
    return true;
}

quint16 Drive::raw(int number) const
{
    if (isLiveValue(number))
        return liveValue(number);
    return number == BusAddress ? quint16(address_) : working_.value(number);
}

int Drive::value(int number) const
{
    return definitions_.value(number).meaningOf(raw(number));
}

quint16 Drive::liveValue(int number) const
{
    const Surroundings &around = config_.surroundings;
    const double wholeTurns = std::floor(motor_.position());
    if (around.liveValues.contains(number))
        return quint16(around.liveValues.value(number));
    switch (number) {
    case ActualSpeed:
        return quint16(std::lround(motor_.speed()));
    case PositionFraction:
        return quint16(std::lround((motor_.position() - wholeTurns) * 65535));
    case PositionTurns:
        return quint16(std::llround(wholeTurns));
    case ActualTemperature:
        return quint16(std::lround(motor_.temperature()));
    case ActualCurrent:
        return quint16(std::lround(motor_.current()));
    case DigitalOutputs:
        return quint16(around.digitalOutputs.value_or(motor_.turns() ? 1 : 0));
    case DigitalInputs:
        return quint16(around.digitalInputs);
    default:
        return quint16(around.analogInput);
    }
}

void Drive::advanceMotor(qint64 now)
{
    motor_.advance(now, demand());
}

MotorDemand Drive::demand() const
{
    const auto ramp = [this](int number) { return raw(number) ? double(raw(number)) : DefaultRamp; };
    return {
        setPoint(), ramp(AccelerationRight), ramp(BrakingRight), ramp(AccelerationLeft), ramp(BrakingLeft)};
}

// Inputs 1 and 2 enable the motor. In the mode of the fixed speeds they also choose one of three; in every
// other mode the analog input gives the speed.
double Drive::setPoint() const
{
    const Surroundings &around = config_.surroundings;
    if (bootloader_)
        return 0;
    if (around.setPoint)
        return *around.setPoint;
    const int selected = around.digitalInputs & 0x03;
    if (!selected)
        return 0;
    const int mode = value(selected == 2 ? OperationMode2 : OperationMode1);
    return mode == FixedSpeeds ? value(FixedSpeed1 + selected - 1) : speedFromAnalogInput();
}

double Drive::speedFromAnalogInput() const
{
    const std::array<int, 5> steps = {
        0, value(FirstSpeedX), value(FirstSpeedX + 1), value(FirstSpeedX + 2), LastAnalogStep};
    const int input = config_.surroundings.analogInput;
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
