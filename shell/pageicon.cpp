#include "shell/pageicon.h"

#include "control/services/language.h"
#include "pages/pagefactory.h"

#include <QCoreApplication>

#include <memory>

namespace {

/// The icons of an item that may bear marks.
class MarkedIcons
{
public:
    explicit MarkedIcons(const QString &name)
    {
        for (const bool modified : {false, true}) {
            for (const bool active : {false, true})
                m_icons[modified][active] =
                    QIcon(QStringLiteral(":images/%1-icon_24px_%2%3.png")
                              .arg(name, active ? QStringLiteral("active") : QStringLiteral("inactive"),
                                  modified ? QStringLiteral("_modified") : QString()));
        }
    }

    const QIcon &icon(bool modified, bool active) const { return m_icons[modified][active]; }

private:
    QIcon m_icons[2][2];
};

struct PageIcons
{
    const QIcon none;
    const QIcon network {QStringLiteral(":images/network-icon-hi_24px.png")};
    const MarkedIcons drive {QStringLiteral("home")};
    const MarkedIcons page {QStringLiteral("table")};
};

std::unique_ptr<const PageIcons> keptIcons;

/// Every icon made leaves pictures of its own in the cache, so each is made once.
const PageIcons &icons()
{
    if (!keptIcons) {
        keptIcons = std::make_unique<const PageIcons>();
        // No picture may outlive the application.
        qAddPostRoutine([] { keptIcons.reset(); });
    }
    return *keptIcons;
}

} // namespace

QIcon pageIcon(int pageNumber, int deviceId, bool modified, bool active)
{
    Q_UNUSED(deviceId)
    if (!PageNumber::isPage(pageNumber))
        return icons().none;
    if (pageNumber == PageNumber::Network)
        return icons().network;
    if (pageNumber == PageNumber::DeviceStatus)
        return icons().drive.icon(modified, active);
    return icons().page.icon(modified, active);
}

QString pageMarks(int pageNumber, bool modified, bool active)
{
    if (!PageNumber::isPage(pageNumber) || pageNumber == PageNumber::Network)
        return QString();
    QString marks = QStringLiteral(", ")
        + (active ? toolTipText("MarkAccess", "Zugriff") : toolTipText("MarkNoAccess", "kein Zugriff"));
    if (modified)
        marks += QStringLiteral(", ") + toolTipText("MarkModified", "geändert");
    return marks;
}
