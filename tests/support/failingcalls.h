#pragma once

#include "tests/support/preload/failingcalls.h"

#include <QtTest>

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

    /// Does the work on such a disk; the answer of haveFailed().
    template<typename Work>
    static bool during(const char *call, int callsBefore, z7_failure failure, Work work)
    {
        const FailingCalls disk(call, callsBefore, failure);
        work();
        return disk.haveFailed();
    }

    /// The data of a test on disks that fail, in columns "call" and "failure": each call of each way to fail,
    /// or the ways in which a disk fails altogether.
    static void addEachFailure();
    static void addFailuresForGood();

private:
    static void addColumns();
    static void addRows(const char *name, z7_failure failure);
    static void addHalfWrite();
};

Q_DECLARE_METATYPE(z7_failure)

inline void FailingCalls::addEachFailure()
{
    addColumns();
    addRows("fails once", Z7_FAILS_ONCE);
    addRows("fails from then on", Z7_FAILS_FROM_THEN_ON);
    addHalfWrite();
}

inline void FailingCalls::addFailuresForGood()
{
    addColumns();
    addRows("fails", Z7_FAILS_FROM_THEN_ON);
    addHalfWrite();
}

inline void FailingCalls::addColumns()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<z7_failure>("failure");
}

inline void FailingCalls::addRows(const char *name, z7_failure failure)
{
    for (const char *call : {"write", "fsync", "rename"})
        QTest::addRow("%s %s", call, name) << QByteArray(call) << failure;
}

inline void FailingCalls::addHalfWrite()
{
    QTest::newRow("write takes half and then nothing") << QByteArray("write") << Z7_FAILS_HALF_WAY;
}
