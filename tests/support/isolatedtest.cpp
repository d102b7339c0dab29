#include "tests/support/isolatedtest.h"

void IsolatedTest::init()
{
    m_folder.emplace();
    prepare();
}

void IsolatedTest::cleanup()
{
    tidyUp();
    m_folder.reset();
}
