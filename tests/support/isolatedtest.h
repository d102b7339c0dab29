#pragma once

#include "tests/support/workingfolder.h"

#include <QObject>

#include <optional>

/// A test whose functions each begin in an empty working folder, with the program's services as at its start.
/// Afterwards the services are shut down, as when the window closes, and nothing is left of the folder.
///
/// The tests derive from it and add only what is theirs: prepare() makes it anew for each function, tidyUp()
/// puts it away.
class IsolatedTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

private:
    /// Comes before each test function, in the new folder.
    virtual void prepare() { }
    /// Comes after each test function, while folder and services are still there.
    virtual void tidyUp() { }

    std::optional<WorkingFolder> m_folder;
};
