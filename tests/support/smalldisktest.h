#pragma once

#include "tests/support/isolatedtest.h"
#include "tests/support/smallfilesystem.h"

/// An isolated test whose working folder lies on a disk of 64 pages. It skips all its functions where none
/// may be mounted; its main() runs it by SmallFileSystem::run(), so that CTest hears of that.
class SmallDiskTest : public IsolatedTest
{
    Q_OBJECT

private slots:
    void initTestCase();

private:
    void prepare() override;
    void tidyUp() override;

    std::optional<SmallFileSystem> m_disk;
};
