#pragma once

#include <QList>
#include <QString>

/// What the controller asks of the middle band of the window, which stands in the layer above it.
class IMainContent
{
public:
    virtual ~IMainContent() = default;

    /// Shows these drives, with the pages and marks that the controller tells on being asked.
    virtual void rebuildTree(const QList<int> &deviceIds) = 0;
    /// Shows the conflict line and connects the data buttons to the controller.
    virtual void enableDataButtons() = 0;
    /// Hides the conflict line and disconnects the data buttons.
    virtual void disableDataButtons() = 0;
    virtual void setConflictLine(const QString &text) = 0;
};

/// Stands in where there is no window: nobody is told anything. Never null, not owned.
IMainContent *noMainContent();
