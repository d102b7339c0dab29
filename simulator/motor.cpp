#include "simulator/motor.h"

#include <algorithm>
#include <cmath>

namespace z7sim {

namespace {

constexpr double FrictionPerRpm = 0.5; // mA
constexpr double RampCurrent = 500; // mA
constexpr double DegreesPerMilliamp = 0.01;
constexpr double WarmingSeconds = 30;
constexpr double AmbientDegrees = 24;
constexpr double AmbientSwing = 2;
constexpr double AmbientPeriodUs = 90e6;

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
    return AmbientDegrees
        + AmbientSwing * std::sin(2 * M_PI * std::fmod(double(now), AmbientPeriodUs) / AmbientPeriodUs);
}

} // namespace

bool Motor::turns() const
{
    return std::abs(speed_) >= 0.5;
}

void Motor::advance(qint64 now, const MotorDemand &demand)
{
    if (last_ < 0)
        last_ = now;
    const double seconds = double(now - last_) / 1e6;
    last_ = now;
    const double rest = followRamp(seconds, demand);
    turn(rest, speed_);
    const double ramping =
        speed_ == demand.setPoint ? 0 : std::copysign(RampCurrent, demand.setPoint - speed_);
    current_ = speed_ * FrictionPerRpm + ramping;
    warmUp(now, seconds);
}

// Returns the time that is left when the set-point is reached. A change of direction goes through standstill,
// because braking and accelerating have ramps of their own.
double Motor::followRamp(double seconds, const MotorDemand &demand)
{
    while (seconds > 0 && speed_ != demand.setPoint) {
        const double target = speed_ * demand.setPoint < 0 ? 0 : demand.setPoint;
        const double rate = ramp(speed_, target, demand);
        const double needed = std::abs(target - speed_) / rate;
        const double step = std::min(needed, seconds);
        turn(step, needed <= seconds ? target : speed_ + std::copysign(rate * step, target - speed_));
        seconds -= step;
    }
    return seconds;
}

void Motor::turn(double seconds, double toSpeed)
{
    position_ += (speed_ + toSpeed) / 2 * seconds / 60;
    speed_ = toSpeed;
}

void Motor::warmUp(qint64 now, double seconds)
{
    const double target = ambient(now) + std::abs(current_) * DegreesPerMilliamp;
    temperature_ += (target - temperature_) * (1 - std::exp(-seconds / WarmingSeconds));
}

} // namespace z7sim
