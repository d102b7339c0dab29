#include "shell/pageicon.h"

#include "pages/pagefactory.h"

QIcon pageIcon(int pageNumber, int deviceId, bool modified, bool active)
{
    Q_UNUSED(deviceId)
    if (pageNumber == PageNumber::Network)
        return QIcon(QStringLiteral(":images/network-icon-hi_24px.png"));
    if (pageNumber < PageNumber::Network || pageNumber > PageNumber::Last)
        return QIcon();
    const bool isDrive = pageNumber == PageNumber::DeviceStatus;
    return QIcon(QStringLiteral(":images/%1-icon_24px_%2%3.png")
                     .arg(isDrive ? QStringLiteral("home") : QStringLiteral("table"),
                         active ? QStringLiteral("active") : QStringLiteral("inactive"),
                         modified ? QStringLiteral("_modified") : QString()));
}
