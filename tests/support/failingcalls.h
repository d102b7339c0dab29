#pragma once

#include "tests/support/preload/failingcalls.h"

#include <QtGlobal>

/// A disk that is full, or broken, for as long as this lives. The test has to link failingcalls.
class FailingCalls
{
public:
    FailingCalls(const char *call, int callsBefore, z7_failure failure)
    {
        z7_fail_calls(call, callsBefore, failure);
    }
    ~FailingCalls() { z7_fail_calls(nullptr, 0, Z7_FAILS_ONCE); }
    Q_DISABLE_COPY(FailingCalls)

    /// False if so many calls were never made.
    bool haveFailed() const { return z7_failures() > 0; }
};
