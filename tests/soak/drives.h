#pragma once

#include "simulator/definitions.h"
#include "tests/e2e/journey.h"
#include "tests/e2e/simulatorline.h"

#include <QVector>

/// A drive as the person knows it.
struct SoakDrive
{
    int address;
    int password;
    QString name; ///< in the tree
    z7sim::Definitions definitions;

    bool isWritable(int number) const;
    /// What it holds: "param" in its working memory, "flash" what it keeps.
    int value(SimulatorLine &line, const char *where, int number) const;
};

/// The drives of the simulator; their definition files lie in the working folder.
QVector<SoakDrive> drivesOn(SimulatorLine &line);

/// Connects them all through the wizard: scans the port and gives the first drive's password for all of them;
/// those that do not take it are connected by hand. False if one is left.
bool connectDrives(const Journey &journey, const QVector<SoakDrive> &drives);
