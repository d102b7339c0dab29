#pragma once

#include <QtGlobal>

/// Tree, keystrokes and start, each from the event to the finished redraw.
void runWindowBenchmarks();
void runPageBenchmarks();

/// Parts of the start benchmark, each in a process of its own: shows the window, prints the ms since
/// `startedNs` of the monotonic clock at which it was painted, and returns the exit code.
int showEmptyWindow(qint64 startedNs);
int showToolWindow(qint64 startedNs);
