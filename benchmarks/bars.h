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

constexpr double treeRebuild = 2.2;
constexpr double treeRefresh = 0.075;

struct Keystroke
{
    double median;
    double p99;
};
constexpr Keystroke keystroke {1.85, 2};
constexpr Keystroke tableKeystroke {2.5, 2.6};
constexpr Keystroke curveKeystroke {5.5, 5.5};

// --- pages, × the showing of a plain widget with as many children ---

constexpr double pageShowing = 4.5;
constexpr double tableShowing = 20;
constexpr double firstShowings = 7;

// --- output of a firmware programmer, in ms ---

constexpr double outputHoldMs = 70; ///< a person takes 100 ms for at once

// --- course of the live values ---

constexpr double recordings = 0.2; ///< 1,000 of them × what one record costs without
constexpr double courseDrawing = 0.2; ///< × a plain curve of as many values

// --- start ---

constexpr double start = 3; ///< × an empty QMainWindow
constexpr double startHeapMb = 10; ///< of the program alone, in a process of its own

// --- heap, in bytes for each of 10,000 steps ---

constexpr double heapPerStep = 10;

// --- × the time of the program in the file "baseline" ---

constexpr double pairedKeystroke = 0.7;
constexpr double pairedRecord = 0.5;

} // namespace Bars
