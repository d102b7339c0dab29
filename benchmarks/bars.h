#pragma once

/// What each figure may come to: at most twice what it is on a quiet machine. All bars of the table stand
/// here; its column "to spare" tells how many times the figure fits under its bar.
namespace Bars {

// --- bus, × the bare port ---

constexpr double sweep = 1.01;
constexpr double exchange = 1.005;
constexpr double slowExchange = 1.1;
constexpr double fullRead = 1.01;

// --- window, × the same done to plain widgets ---

constexpr double treeRebuild = 10;
constexpr double treeRefresh = 0.2;

struct Keystroke
{
    double median;
    double p99;
};
constexpr Keystroke keystroke {3.3, 3.6};
constexpr Keystroke curveKeystroke {8, 8};

// --- pages, × the showing of a plain widget with as many children ---

constexpr double pageShowing = 4.6;
constexpr double tableShowing = 20;
constexpr double firstShowings = 7;

// --- output of a firmware programmer, in ms ---

constexpr double outputHoldMs = 100; ///< what a person takes for at once

// --- start ---

constexpr double start = 3; ///< × an empty QMainWindow
constexpr double startHeapMb = 12; ///< of the program alone, in a process of its own

// --- heap, in bytes for each of 10,000 steps ---

constexpr double heapPerStep = 10;

// --- × the time of the program in the file "baseline" ---

constexpr double pairedKeystroke = 0.7;
constexpr double pairedRecord = 0.5;

} // namespace Bars
