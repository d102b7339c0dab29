#pragma once

#include <QIcon>

/// Icon of a page in the tree and in the wizard: the house for a drive, a table for its pages, the network
/// for all drives. `modified` marks changes that are not written yet, `active` a drive that has granted
/// access. Empty for any other page number; the device id does not influence the choice.
/// Each icon is made once and kept until the application ends. Main thread only.
QIcon pageIcon(int pageNumber, int deviceId, bool modified, bool active);

/// The same marks in words, to be put behind the item's text for screen readers: ", Zugriff, geändert". Empty
/// where the icon bears none.
QString pageMarks(int pageNumber, bool modified, bool active);
