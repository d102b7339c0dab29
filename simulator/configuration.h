#pragma once

#include "simulator/simulatedbus.h"

#include <QByteArrayList>

namespace z7sim {

/// Everything that z7sim is started with.
struct Configuration
{
    BusConfig bus;
    QString controlPath; ///< of the control socket, none if empty
    QByteArrayList commands; ///< carried out right after the start
};

/// Reads a configuration file into configuration. Returns an empty text, or what is wrong.
///
///     { "definitions": "samples", "paced": true, "turnaroundUs": 1000, "link": "port", "control": "socket",
///       "drives": [ { "address": 3, "password": 4711, "version": "V123", "inputs": 3,
///                     "parameters": { "0x0B": 500 } } ],
///       "commands": [ "fault 3 late ms=30" ] }
///
/// The names of a drive are those of the command line. Relative paths start at the working folder.
QByteArray readConfiguration(const QString &fileName, Configuration &configuration);

} // namespace z7sim
