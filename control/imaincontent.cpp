#include "control/imaincontent.h"

namespace {

class NoMainContent : public IMainContent
{
public:
    void rebuildTree(const QList<int> &deviceIds) override { Q_UNUSED(deviceIds) }
    void enableDataButtons() override { }
    void disableDataButtons() override { }
    void setConflictLine(const QString &text) override { Q_UNUSED(text) }
};

} // namespace

IMainContent *noMainContent()
{
    static NoMainContent content;
    return &content;
}
