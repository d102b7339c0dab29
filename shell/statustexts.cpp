#include "shell/statustexts.h"

#include "control/services/language.h"
#include "model/errorcodes.h"
#include "shell/portwording.h"

#include <QMap>

namespace StatusTexts {

namespace {

constexpr int numbersInBar = 6;
constexpr int numbersInLine = 12;
const QString comma = QStringLiteral(", ");
const QString semicolon = QStringLiteral("; ");

QString clockTime(const QDateTime &time)
{
    return time.toString(QStringLiteral("HH:mm:ss"));
}

QString counted(const char *key, const char *text, int count)
{
    return statusBarText(key, text).arg(count);
}

// --- numbers of parameters ---

QStringList texts(const QVector<int> &numbers)
{
    QStringList list;
    for (const int number : numbers)
        list.append(QString::number(number));
    return list;
}

/// The first ones, for the bar.
QString someNumbers(const QVector<int> &numbers)
{
    const QString shown = texts(numbers.mid(0, numbersInBar)).join(comma);
    return numbers.size() > numbersInBar ? shown + comma + QStringLiteral("...") : shown;
}

/// All of them, for a tool tip, which breaks no line by itself.
QString allNumbers(const QVector<int> &numbers)
{
    QStringList lines;
    for (int i = 0; i < numbers.size(); i += numbersInLine)
        lines.append(texts(numbers.mid(i, numbersInLine)).join(comma));
    return lines.join(QStringLiteral(",\n"));
}

QString countedNumbers(const char *key, const char *text, const QVector<int> &numbers)
{
    return statusBarText(key, text).arg(numbers.size()).arg(someNumbers(numbers));
}

// --- operations ---

struct OperationName
{
    DriveOperation operation;
    const char *key;
    const char *text;
};

constexpr OperationName operationNames[] = {
    {DriveOperation::Read, "OperationRead", "Lesen"},
    {DriveOperation::Write, "OperationWrite", "Schreiben"},
    {DriveOperation::WriteAndStore, "OperationWriteAndStore", "Schreiben+Speichern"},
    {DriveOperation::Store, "OperationStore", "Im Motor speichern"},
    {DriveOperation::FactoryReset, "OperationFactoryReset", "Auf Werkseinstellungen zurücksetzen"},
    {DriveOperation::ChangePassword, "OperationChangePassword", "Neues Passwort setzen"},
    {DriveOperation::ChangeAddress, "OperationChangeAddress", "Adresse ändern"},
    {DriveOperation::EnterBootloader, "OperationEnterBootloader", "Bootloader aktivieren"},
    {DriveOperation::OpenFile, "OperationOpenFile", "Datei öffnen"},
};

QString withError(const QString &text, int error)
{
    return error == 0 ? text : statusBarText("WithError", "%1 (Fehler %2)").arg(text, QString::number(error));
}

/// What was answered, and what is known of the rest.
QStringList answeredParts(const OperationReport &report, const char *allKey, const char *allText,
    const char *someKey, const char *someText)
{
    const int open = report.uncertain.size() + report.unsent.size();
    QStringList parts;
    if (open == 0)
        parts.append(counted(allKey, allText, report.done.size()));
    else
        parts.append(statusBarText(someKey, someText).arg(report.done.size()).arg(report.asked()));
    if (!report.refused.isEmpty())
        parts.append(countedNumbers("Refused", "%1 abgelehnt (%2)", report.refused));
    if (!report.conflicts.isEmpty())
        parts.append(countedNumbers("Conflicting", "%1 mit Konflikt (%2)", report.conflicts));
    if (!report.uncertain.isEmpty())
        parts.append(withError(statusBarText("RestUncertain", "Rest ungewiss"), report.error));
    else if (open > 0)
        parts.append(withError(statusBarText("RestUnsent", "Rest nicht gesendet"), report.error));
    return parts;
}

QStringList readBackParts(const OperationReport &report)
{
    QStringList parts;
    if (!report.readBackEqual.isEmpty())
        parts.append(counted("ReadBackEqual", "%1 zurückgelesen, gleich", report.readBackEqual.size()));
    if (!report.readBackDifferent.isEmpty())
        parts.append(
            countedNumbers("ReadBackDifferent", "%1 zurückgelesen, anders (%2)", report.readBackDifferent));
    return parts;
}

/// What became of the values beyond the drive's working memory.
QString storePart(const OperationReport &report)
{
    // The error of a pass that came to the store is that of the store.
    const bool isErrorTold = !report.uncertain.isEmpty() || !report.unsent.isEmpty();
    const int error = isErrorTold ? 0 : report.error;
    switch (report.store) {
    case Z7PassOutcome::Stored:
        return statusBarText("Stored", "im Motor gespeichert");
    case Z7PassOutcome::StoreUncertain:
        return withError(statusBarText("StoreUncertain", "Speichern ungewiss"), error);
    case Z7PassOutcome::NotStored:
        return withError(statusBarText("NotStored", "nicht im Motor gespeichert"), error);
    case Z7PassOutcome::NotAsked:
        break;
    }
    return statusBarText("NotStored", "nicht im Motor gespeichert");
}

QString writeText(const OperationReport &report)
{
    QStringList parts {
        answeredParts(report, "Written", "%1 geschrieben", "WrittenOf", "%1 von %2 geschrieben").join(comma)};
    parts += readBackParts(report);
    parts.append(storePart(report));
    return parts.join(semicolon);
}

QString readText(const OperationReport &report)
{
    return answeredParts(report, "Read", "%1 gelesen", "ReadOf", "%1 von %2 gelesen").join(comma);
}

QString fileText(const FileComparison &file)
{
    QStringList parts {
        counted("FileNew", "%1 neu", file.different), counted("FileEqual", "%1 gleich", file.equal)};
    if (file.unread > 0)
        parts.append(counted("FileUnread", "%1 noch nicht gelesen", file.unread));
    if (file.unknown > 0)
        parts.append(counted("FileUnknown", "%1 unbekannt", file.unknown));
    if (file.outOfLimits > 0)
        parts.append(counted("OutOfLimits", "%1 außerhalb der Grenzen", file.outOfLimits));
    return parts.join(comma);
}

QString outcomeText(const OperationReport &report)
{
    switch (report.operation) {
    case DriveOperation::Write:
    case DriveOperation::WriteAndStore:
        return writeText(report);
    case DriveOperation::Read:
        return readText(report);
    case DriveOperation::Store:
        return storePart(report);
    case DriveOperation::OpenFile:
        return fileText(report.file);
    default:
        return report.isComplete ? statusBarText("Confirmed", "ausgeführt")
                                 : withError(statusBarText("Unconfirmed", "nicht bestätigt"), report.error);
    }
}

/// The lines of the tool tip that tell which numbers, and the error in words.
QString reportDetail(const OperationReport &report)
{
    QStringList lines {report.driveName};
    const auto add = [&lines](const QString &text, const QVector<int> &numbers) {
        if (!numbers.isEmpty())
            lines.append(text.arg(allNumbers(numbers)));
    };
    add(statusBarText("DetailRefused", "abgelehnt: %1"), report.refused);
    add(statusBarText("DetailConflicts", "Konflikt gemeldet, der vorübergehen kann: %1"), report.conflicts);
    add(statusBarText("DetailUncertain", "ohne gültige Antwort: %1"), report.uncertain);
    add(statusBarText("DetailUnsent", "nicht gesendet: %1"), report.unsent);
    add(statusBarText("DetailDifferent", "mit anderem Wert zurückgelesen: %1"), report.readBackDifferent);
    if (report.error != 0)
        lines.append(statusBarText("DetailError", "Fehler %1: %2")
                         .arg(QString::number(report.error), localizedErrorText(report.error)));
    return lines.join(QLatin1Char('\n'));
}

QString reasonOf(Z7CommInterface::NotRun reason)
{
    switch (reason) {
    case Z7CommInterface::NotRun::TransferRunning:
        return statusBarText("ReasonTransfer", "Übertragung lief");
    case Z7CommInterface::NotRun::Replaced:
        return statusBarText("ReasonReplaced", "durch eine andere Anforderung ersetzt");
    case Z7CommInterface::NotRun::Cancelled:
        return statusBarText("ReasonCancelled", "abgebrochen");
    case Z7CommInterface::NotRun::BusLent:
        return statusBarText("ReasonLent", "Programmierer lief");
    }
    return QString();
}

QString notRunText(const NotRunOperation &operation)
{
    return QStringLiteral("%1 (%2)").arg(operationName(operation.operation), reasonOf(operation.reason));
}

} // namespace

QString operationName(DriveOperation operation)
{
    for (const OperationName &name : operationNames) {
        if (name.operation == operation)
            return statusBarText(name.key, name.text);
    }
    return QString();
}

StatusText fresh(const Z7Knowledge::Fresh &known)
{
    using State = Freshness::State;
    // Each but the first two leaves open how old what is shown is.
    QString detail;
    if (!known.readAt.isNull())
        detail = statusBarText("LastReading", "%1 zuletzt gelesen: %2")
                     .arg(known.driveName, known.readAt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    switch (known.state) {
    case State::NoDrive:
        return {};
    case State::NeverRead:
        return {statusBarText("NotReadYet", "noch nicht gelesen"), known.driveName};
    case State::Read:
        return {statusBarText("ReadAt", "%1 gelesen %2").arg(known.driveName, clockTime(known.readAt)), {}};
    case State::Stale:
        return {statusBarText("StaleSince", "veraltet seit %1").arg(clockTime(known.readAt)), detail, true};
    case State::LiveValuesOff:
        return {statusBarText("LiveValuesOff", "Live-Werte aus"), detail};
    case State::Held:
        return {statusBarText("Held", "angehalten – Seite anklicken"), detail};
    case State::Waiting:
        return {statusBarText("Waiting", "wartet"), detail};
    }
    return {};
}

StatusText lastOperation(const OperationReport *report)
{
    if (!report || report->operation == DriveOperation::None)
        return {};
    const QString text =
        statusBarText("Operation", "%1 %2: %3")
            .arg(clockTime(report->endedAt), operationName(report->operation), outcomeText(*report));
    return {text, reportDetail(*report)};
}

StatusText neverRun(const QVector<NotRunOperation> &operations, int selectedDeviceId)
{
    QStringList shown;
    QStringList lines;
    for (const NotRunOperation &operation : operations) {
        const QString text = notRunText(operation);
        const QString ofDrive = operation.driveName + QLatin1Char(' ') + text;
        shown.append(operation.deviceId == selectedDeviceId ? text : ofDrive);
        lines.append(clockTime(operation.at) + QLatin1Char(' ') + ofDrive);
    }
    if (shown.isEmpty())
        return {};
    return {statusBarText("NotRun", "Nicht ausgeführt: %1").arg(shown.join(comma)),
        lines.join(QLatin1Char('\n')), true};
}

StatusText neverRead(const Z7Knowledge::NeverRead &known)
{
    if (!known.isKnown || known.numbers.isEmpty())
        return {};
    return {statusBarText("NeverRead", "%1 von %2 nie gelesen (in einer Datei als 0)")
                .arg(known.numbers.size())
                .arg(known.total),
        allNumbers(known.numbers)};
}

namespace {

QString changesText(int count)
{
    return count == 1 ? statusBarText("OneChange", "1 Änderung") : counted("Changes", "%1 Änderungen", count);
}

} // namespace

StatusText pending(const PendingOverview &changes)
{
    if (changes.total == 0)
        return {};
    QStringList parts {
        changesText(changes.total), counted("OnThisPage", "%1 auf dieser Seite", changes.onShownPage)};
    if (changes.outOfLimits > 0)
        parts.append(counted("OutOfLimits", "%1 außerhalb der Grenzen", changes.outOfLimits));
    return {parts.join(comma), {}};
}

StatusText undo(bool canRestore)
{
    if (!canRestore)
        return {};
    return {statusBarText("Undo", "Rückgängig"),
        statusBarText("UndoDetail", "Holt die verworfenen Änderungen zurück")};
}

StatusText ports(const QList<PortState> &troubles)
{
    const QString text = PortWording::text(troubles);
    // All that is known begins with the line in the bar where that is not the last word on several ports.
    QStringList lines = PortWording::toolTip(troubles).split(QLatin1Char('\n'));
    if (lines.first() == text)
        lines.removeFirst();
    return {text, lines.join(QLatin1Char('\n')), !text.isEmpty()};
}

StatusText hiddenDrives(const QVector<Z7Device> &hidden)
{
    QMap<int, int> drivesById;
    QStringList names;
    for (const Z7Device &drive : hidden) {
        ++drivesById[drive.deviceId()];
        names.append(QStringLiteral("%1: %2").arg(drive.portInfo.portName(), shortDeviceName(drive)));
    }
    QStringList parts;
    for (const int others : qAsConst(drivesById))
        parts.append(counted("SameId", "%1 Antriebe mit derselben Kennung, nur einer gezeigt", others + 1));
    if (parts.isEmpty())
        return {};
    return {parts.join(semicolon), statusBarText("SameIdDetail", "Nicht gezeigt: %1").arg(names.join(comma)),
        true};
}

StatusText missingDefinitions(bool areMissing)
{
    if (!areMissing)
        return {};
    return {statusBarText("NoDefinitions", "Arbeitsordner ohne Parameter-Definitionen"),
        statusBarText("NoDefinitionsDetail", "Ein Klick öffnet den Ordner"), true};
}

QString wouldBeSent(const PendingOverview &changes)
{
    QStringList parts {changesText(changes.total)};
    if (changes.onOtherPages() > 0)
        parts.append(counted("FromOtherPages", "%1 von anderen Seiten", changes.onOtherPages()));
    return parts.join(comma);
}

} // namespace StatusTexts
