#include "tests/support/smalldisktest.h"

void SmallDiskTest::initTestCase()
{
    if (!SmallFileSystem::isPossible())
        QSKIP("No file system may be mounted here.");
}

void SmallDiskTest::prepare()
{
    m_disk.emplace(64);
}

void SmallDiskTest::tidyUp()
{
    m_disk.reset();
}
