#pragma once

#include "comm/telegramstackcatalogue.h"

class Workbench;

/// Polling passes of the first drive of a workbench, without the time on the wire: what each does to the
/// stack, the controller, the page, the bar and the tree. The drive's values change from pass to pass.
class PolledRecords
{
public:
    explicit PolledRecords(Workbench &bench);
    /// One pass, to the finished redraw.
    void pass();

private:
    Workbench &m_bench;
    Z7UpdateParameterSetTelegramStack m_stack;
    int m_passes = 0;
};
