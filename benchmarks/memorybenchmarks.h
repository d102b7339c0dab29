#pragma once

/// Growth of the process over polling passes of the table page.
void runMemoryBenchmarks();
