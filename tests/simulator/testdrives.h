#pragma once

#include "simulator/simulatedbus.h"

#include <QTemporaryDir>

/// A folder with the definition files of the versions V123 and V200.
class TestDefinitions
{
public:
    TestDefinitions();
    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

/// Drive 3 of version V123 with the password 4711, on a bus that costs no time.
z7sim::BusConfig busWithDrive3(const QString &definitionFolder);

/// Access telegram to drive 3 with the password 4711, and the reply of a drive that opens.
constexpr char OpenDrive3[] = "09 03 00 00 12 67 d0";
constexpr char Opened[] = "89 03 00 d9";
