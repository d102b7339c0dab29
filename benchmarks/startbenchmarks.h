#pragma once

#include <QtGlobal>

/// The two sides of the start, each in a process of its own: shows the window, prints the ms from `startedNs`
/// of the monotonic clock to its first painting and the bytes of the heap then, and returns the exit code.
int showEmptyWindow(qint64 startedNs);
int showToolWindow(qint64 startedNs);
