#pragma once

#include "tests/e2e/journey.h"
#include "tests/e2e/testbench.h"

#include <QStringList>
#include <QVector>

/// The port of most tests.
inline const QString port = QStringLiteral("ttyUSB0");
/// The page that shows all parameters of a drive.
inline const QString table = QStringLiteral("Parametertabelle");

/// A drive behind that port as the program names it.
inline QString driveName(int address)
{
    return QStringLiteral("Port0 - Z7.%1").arg(address);
}

/// Drives behind the first port, and a person at the window before them.
struct Desk
{
    explicit Desk(const QVector<z7sim::DriveConfig> &drivesThere,
        const TestBench::Options &options = TestBench::Options());

    /// Connects all drives by hand, each with its password.
    bool connectAll() const;
    /// Shows the table of a drive and waits until its fixed speed, parameter 23, is there.
    bool showTable(int address) const;
    /// What has been asked on the bus since its log was cleared.
    QStringList requests() const;
    bool waitForRequest(const QString &request) const;
    /// From now on the bus takes its time, as TestBench::slowDown() says.
    void slowDown() { bench.slowDown(port); }

    TestBench bench;
    z7sim::SimulatedBus &bus;
    const QVector<z7sim::DriveConfig> drives;
    Journey journey;
};
