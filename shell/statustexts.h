#pragma once

#include "control/knowledge.h"
#include "control/portwatch.h"
#include "shell/statusfield.h"

#include <QList>
#include <QVector>

/// The words of the status bar: what is known goes in, what a field says comes out, in the user's language.
/// Of an error the bar tells the number; its words are in the tool tip. Main thread only.
namespace StatusTexts {

/// What the user calls an operation.
QString operationName(DriveOperation operation);

StatusText fresh(const Z7Knowledge::Fresh &known);
/// Empty for null.
StatusText lastOperation(const OperationReport *report);
/// Names the drive of an operation where that is not the selected one.
StatusText neverRun(const QVector<NotRunOperation> &operations, int selectedDeviceId);
StatusText neverRead(const Z7Knowledge::NeverRead &known);
StatusText pending(const PendingOverview &changes);
/// What brings discarded changes back; empty if there are none.
StatusText undo(bool canRestore);
/// Ports against which something is known.
StatusText ports(const QList<PortState> &troubles);
/// `hidden` are drives that are connected and not shown.
StatusText hiddenDrives(const QVector<Z7Device> &hidden);
StatusText missingDefinitions(bool areMissing);

/// Tool tip of what writes all changes of a drive: how many, and how many of them the shown page does not
/// show.
QString wouldBeSent(const PendingOverview &changes);

} // namespace StatusTexts
