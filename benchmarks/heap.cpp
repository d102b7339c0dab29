#include "benchmarks/heap.h"

#include <malloc.h>

qint64 heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    // Large blocks are mapped one by one and counted apart.
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}
