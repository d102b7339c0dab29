#include "shell/portwording.h"

#include "control/services/language.h"

#include <QStringList>

namespace {

QString heldText(const PortState &state)
{
    const Platform::Program &holder = state.diagnosis.holder;
    const QString id = QString::number(holder.id);
    if (!holder.isKnown())
        return statusBarText("PortHeld", "%1 von einem anderen Programm gehalten").arg(state.portName);
    if (holder.name.isEmpty())
        return statusBarText("PortHeldByProcess", "%1 gehalten von Prozess %2").arg(state.portName, id);
    return statusBarText("PortHeldBy", "%1 gehalten von %2 (%3)").arg(state.portName, holder.name, id);
}

QString rightsText(const PortState &state)
{
    const QString &group = state.diagnosis.group;
    if (group.isEmpty())
        return statusBarText("PortNoRights", "%1: keine Rechte").arg(state.portName);
    return statusBarText("PortNoRightsGroup", "%1: keine Rechte (Gruppe %2)").arg(state.portName, group);
}

QString failureText(const PortState &state)
{
    switch (state.diagnosis.kind) {
    case Z7PortDiagnosis::Fine:
        break;
    case Z7PortDiagnosis::NoRights:
        return rightsText(state);
    case Z7PortDiagnosis::Held:
        return heldText(state);
    case Z7PortDiagnosis::Gone:
        return statusBarText("PortGone", "%1 fort seit %2")
            .arg(state.portName, state.diagnosis.time.toString(QStringLiteral("HH:mm:ss")));
    case Z7PortDiagnosis::SettingsRefused:
        return statusBarText("PortSettingsRefused", "%1: Einstellungen abgelehnt").arg(state.portName);
    case Z7PortDiagnosis::NotOpened:
        return statusBarText("PortNotOpened", "%1 lässt sich nicht öffnen").arg(state.portName);
    }
    return QString();
}

QString returnText(const PortState &state)
{
    if (state.returnedAs.isEmpty())
        return QString();
    if (state.returnedAs == state.portName)
        return statusBarText("AdapterBackAsBefore", "Adapter wieder da als %1").arg(state.returnedAs);
    return statusBarText("AdapterBack", "Adapter wieder da als %1, neu verbinden").arg(state.returnedAs);
}

QString scanText(const PortState &state)
{
    if (!state.partialScan)
        return QString();
    const ScanReach &reach = *state.partialScan;
    const QString all = QString::number(ScanReach::allAddresses);
    if (reach.asked == 0)
        return statusBarText("ScanNothing", "Scan %1: keine von %2 Adressen").arg(state.portName, all);
    if (reach.asked == reach.lastAsked)
        return statusBarText("ScanPartial", "Scan %1: nur bis Adresse %2 von %3")
            .arg(state.portName, QString::number(reach.lastAsked), all);
    return statusBarText("ScanWithGaps", "Scan %1: nur %2 von %3 Adressen")
        .arg(state.portName, QString::number(reach.asked), all);
}

/// A scan that has asked nothing says less than why.
bool isFailureNews(const PortState &state)
{
    if (state.diagnosis.kind == Z7PortDiagnosis::Fine)
        return false;
    return !state.partialScan || state.partialScan->asked == 0
        || state.diagnosis.time > state.partialScan->endedAt;
}

QString advice(const PortState &state)
{
    const Z7PortDiagnosis &diagnosis = state.diagnosis;
    if (!diagnosis.group.isEmpty())
        return toolTipText("PortGroupAdvice", "Wer zur Gruppe %1 gehört, darf den Port benutzen.")
            .arg(diagnosis.group);
    if (!diagnosis.lockFile.isEmpty())
        return toolTipText("PortLockAdvice", "Im Weg ist die Sperrdatei %1.").arg(diagnosis.lockFile);
    return QString();
}

QString endOfScan(const PortState &state)
{
    return state.partialScan && state.partialScan->wasStopped
        ? toolTipText("ScanStopped", "Der Scan wurde abgebrochen.")
        : QString();
}

} // namespace

QString PortWording::text(const PortState &state)
{
    const QString returned = returnText(state);
    if (!returned.isEmpty())
        return returned;
    return isFailureNews(state) ? failureText(state) : scanText(state);
}

QString PortWording::toolTip(const PortState &state)
{
    QStringList lines {returnText(state), failureText(state), advice(state), scanText(state)};
    if (!isFailureNews(state))
        lines.move(3, 1);
    lines.append(endOfScan(state));
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

QString PortWording::text(const QList<PortState> &troubles)
{
    if (troubles.isEmpty())
        return QString();
    const QString first = text(troubles.first());
    return troubles.size() == 1 ? first : first + QStringLiteral(" (+%1)").arg(troubles.size() - 1);
}

QString PortWording::toolTip(const QList<PortState> &troubles)
{
    QStringList tips;
    for (const PortState &state : troubles)
        tips.append(toolTip(state));
    return tips.join(QLatin1Char('\n'));
}
