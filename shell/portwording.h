#pragma once

#include "control/portwatch.h"

#include <QList>
#include <QString>

/// How a person is told what is known about the ports. Nothing but words: the same value gives the same text
/// in the language in force. No text is rich text.
namespace PortWording {

/// One line on one port; empty if nothing is known against it. Of a scan and a failure the later one speaks.
QString text(const PortState &state);
/// All that is known against the port, and what can be done, a line each; empty if nothing is known.
QString toolTip(const PortState &state);

/// The same on all ports with trouble, in that order: the line tells the first and how many more there are.
QString text(const QList<PortState> &troubles);
QString toolTip(const QList<PortState> &troubles);

} // namespace PortWording
