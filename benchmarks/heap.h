#pragma once

#include <QPixmapCache>

/// Bytes that the process has allocated and not freed, those of all threads. Pages that the allocator keeps
/// for later do not count, so a leak shows to the byte.
qint64 heapBytes();

/// Growth of the heap in bytes a step, over `steps` steps after the first `before`, which fill what is only
/// filled once. Begins with an empty cache of pictures, or those of earlier steps would go meanwhile and hide
/// a growth.
template<typename Step>
double heapGrowth(int before, int steps, Step step)
{
    QPixmapCache::clear();
    for (int i = 0; i < before; ++i)
        step();
    const qint64 atFirst = heapBytes();
    for (int i = 0; i < steps; ++i)
        step();
    return static_cast<double>(heapBytes() - atFirst) / steps;
}
