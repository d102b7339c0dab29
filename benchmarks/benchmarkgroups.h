#pragma once

/// The groups of z7bench. Each prints its rows of the table.

/// One exchange, the sweep of a port and the first full read, each against the bare port on the same
/// simulator.
void runBusBenchmarks();
/// The tree and keystrokes, each from the event to the finished redraw.
void runWindowBenchmarks();
/// The showing of each page, from the click to the painted page.
void runPageBenchmarks();
/// What a firmware programmer prints, from its read to the finished redraw of the page.
void runOutputBenchmarks();
/// What the course of the live values costs a record, and its drawing.
void runCourseBenchmarks();
/// The start to the first painted window, and the heap that it leaves.
void runStartBenchmarks();
/// Growth of the heap over 10,000 updates, passes and keystrokes, and the keystrokes after the updates.
void runMemoryBenchmarks();
/// Today's program against the one that is named in the file "baseline".
void runPairedBenchmarks();
