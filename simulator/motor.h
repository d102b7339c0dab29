#pragma once

#include <QtGlobal>

namespace z7sim {

/// What the drive asks of its motor.
struct MotorDemand
{
    double setPoint = 0; ///< rpm, the sign is the direction
    /// Changes of speed in rpm per second.
    double accelerationRight = 1000;
    double brakingRight = 1000;
    double accelerationLeft = 1000;
    double brakingLeft = 1000;
};

/// A motor that follows its demand: the speed along the ramps, the position with the speed, current and
/// temperature with both. A value type; time comes from outside, in microseconds.
class Motor
{
public:
    /// Lets the time since the last call pass under this demand.
    void advance(qint64 now, const MotorDemand &demand);

    double speed() const { return speed_; } ///< rpm
    double position() const { return position_; } ///< turns
    double temperature() const { return temperature_; } ///< degrees Celsius
    double current() const { return current_; } ///< mA
    bool turns() const;

private:
    double followRamp(double seconds, const MotorDemand &demand);
    void turn(double seconds, double toSpeed);
    void warmUp(qint64 now, double seconds);

    qint64 last_ = -1;
    double speed_ = 0;
    double position_ = 0;
    double temperature_ = 24;
    double current_ = 0;
};

} // namespace z7sim
