#pragma once

/// One exchange, the sweep of a port and the first full read, each against the bare port on the same
/// simulator.
void runBusBenchmarks();
