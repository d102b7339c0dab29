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

    double speed() const { return m_speed; } ///< rpm
    double position() const { return m_position; } ///< turns
    double temperature() const { return m_temperature; } ///< degrees Celsius
    double current() const { return m_current; } ///< mA
    bool turns() const;

private:
    double followRamp(double seconds, const MotorDemand &demand);
    void turn(double seconds, double toSpeed);
    void warmUp(qint64 now, double seconds);

    qint64 m_last = -1;
    double m_speed = 0;
    double m_position = 0;
    double m_temperature = 24;
    double m_current = 0;
};

} // namespace z7sim
