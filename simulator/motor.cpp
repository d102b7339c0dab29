#include "simulator/motor.h"

#include <algorithm>
#include <cmath>

namespace z7sim {

namespace {

constexpr double frictionPerRpm = 0.5; // mA
constexpr double rampCurrent = 500; // mA
constexpr double degreesPerMilliamp = 0.01;
constexpr double warmingSeconds = 30;
constexpr double ambientDegrees = 24;
constexpr double ambientSwing = 2;
constexpr double ambientPeriodUs = 90e6;

double ramp(double speed, double target, const MotorDemand &demand)
{
    const bool toRight = speed > 0 || (speed == 0 && target > 0);
    const bool slower = std::abs(target) < std::abs(speed);
    if (toRight)
        return slower ? demand.brakingRight : demand.accelerationRight;
    return slower ? demand.brakingLeft : demand.accelerationLeft;
}

double ambient(qint64 now)
{
    return ambientDegrees
        + ambientSwing
        * std::sin(2 * M_PI * std::fmod(static_cast<double>(now), ambientPeriodUs) / ambientPeriodUs);
}

} // namespace

bool Motor::turns() const
{
    return std::abs(m_speed) >= 0.5;
}

void Motor::advance(qint64 now, const MotorDemand &demand)
{
    if (m_last < 0)
        m_last = now;
    const double seconds = static_cast<double>(now - m_last) / 1e6;
    m_last = now;
    const double rest = followRamp(seconds, demand);
    turn(rest, m_speed);
    const double ramping =
        m_speed == demand.setPoint ? 0 : std::copysign(rampCurrent, demand.setPoint - m_speed);
    m_current = m_speed * frictionPerRpm + ramping;
    warmUp(now, seconds);
}

// Returns the time that is left when the set-point is reached. A change of direction goes through standstill,
// because braking and accelerating have ramps of their own.
double Motor::followRamp(double seconds, const MotorDemand &demand)
{
    while (seconds > 0 && m_speed != demand.setPoint) {
        const double target = m_speed * demand.setPoint < 0 ? 0 : demand.setPoint;
        const double rate = ramp(m_speed, target, demand);
        const double needed = std::abs(target - m_speed) / rate;
        const double step = std::min(needed, seconds);
        turn(step, needed <= seconds ? target : m_speed + std::copysign(rate * step, target - m_speed));
        seconds -= step;
    }
    return seconds;
}

void Motor::turn(double seconds, double toSpeed)
{
    m_position += (m_speed + toSpeed) / 2 * seconds / 60;
    m_speed = toSpeed;
}

void Motor::warmUp(qint64 now, double seconds)
{
    const double target = ambient(now) + std::abs(m_current) * degreesPerMilliamp;
    m_temperature += (target - m_temperature) * (1 - std::exp(-seconds / warmingSeconds));
}

} // namespace z7sim
