#include "tests/control/testedcontroller.h"

#include "pages/pagefactory.h"
#include "tests/support/person.h"
#include "tests/support/tablerows.h"

#include <algorithm>

namespace {

const char *const definitionsV123 =
    "Nummer;Name;Einheit;Werk;Min;Max;Vorzeichen;Jederzeit;Zugriff;Variante;\n"
    "11;X1;Digit;100;0;1023;Unsigned;1;rw;0;\n"
    "12;X2;Digit;200;0;1023;Unsigned;1;rw;0;\n"
    "13;X3;Digit;300;0;1023;Unsigned;1;rw;0;\n"
    "30;Verstärkung;;120;0;1000;Unsigned;1;rw;0;\n"
    "31;Versatz;;-5;-100;100;Signed;1;rw;0;\n"
    "50;Funktion;;3;0;12;Unsigned;0;rw;0;\n"
    "83;Seriennummer;;777;;;Unsigned;1;r;0;\n";

} // namespace

void NotingMainContent::rebuildTree(const QList<int> &deviceIds)
{
    tree = deviceIds;
    notes.append(QStringLiteral("tree"));
}

void NotingMainContent::enableDataButtons()
{
    buttonsWork = true;
    notes.append(QStringLiteral("enable"));
}

void NotingMainContent::disableDataButtons()
{
    buttonsWork = false;
    notes.append(QStringLiteral("disable"));
}

void NotingMainContent::setConflictLine(const QString &text)
{
    conflictLine = text;
    notes.append(QStringLiteral("conflict line"));
}

void NotingListener::DeviceUpdate(const Z7Device &device)
{
    records.append(device);
    note(QStringLiteral("record ") + shortDeviceName(device));
}

void NotingListener::transactionStarted(int maxProgress, const Z7Device &device)
{
    note(QStringLiteral("started %1 %2").arg(maxProgress).arg(shortDeviceName(device)));
}

void NotingListener::transactionTerminated()
{
    note(QStringLiteral("terminated"));
}

void NotingListener::transactionProgress()
{
    note(QStringLiteral("progress"));
}

void NotingListener::note(const QString &text)
{
    notes.append(text);
    if (m_journal)
        m_journal->append(m_name + QStringLiteral(": ") + text);
}

void writeDefinitionsV123()
{
    WorkingFolder::writeText(QStringLiteral("Z7ParamDef_V123.csv"), QString::fromUtf8(definitionsV123));
}

TestedController::TestedController()
    : layout(&content)
{
    writeDefinitionsV123();
    Z7Services::instance()->options()->setPollingInterval(0);
    controller.setMainContent(&mainContent);
    controller.setDeviceControl(&deviceControl);
    for (int number = 0; number < PageNumber::Count; ++number)
        controller.createPage(number);
    content.show();
}

bool TestedController::showPage(int number, int deviceId)
{
    return controller.showPage(number, deviceId, &content, &layout);
}

void TestedController::showTableOf(const QList<Z7Device> &drives)
{
    connectDrives(drives);
    const int id = drives.first().deviceId();
    showPage(tablePage, id);
    controller.PostDeviceUpdate(Z7CommInterface::DevicePolling, controller.device(id));
    forgetNotes();
}

QTableWidget *TestedController::table() const
{
    return content.findChild<QTableWidget *>(QStringLiteral("ParameterTable"));
}

QString TestedController::tableText(int number, int column) const
{
    const QTableWidgetItem *item = table()->item(tableRow(*table(), number), column);
    return item ? item->text() : QString();
}

QLineEdit *TestedController::tableField(int number) const
{
    return ::tableField(*table(), number);
}

bool TestedController::typeInTable(int number, const QString &text) const
{
    return Person::typeAtEnd(tableField(number), text);
}

bool TestedController::emptyInTable(int number) const
{
    return Person::empty(tableField(number));
}

QString TestedController::userChanges() const
{
    Z7DeviceParamSet changes;
    if (!controller.currentUserParams(changes))
        return QStringLiteral("none");
    QStringList texts;
    for (const Z7DeviceParam &param : qAsConst(changes.params))
        texts.append(QStringLiteral("%1=%2").arg(param.number).arg(param.value));
    return texts.join(QLatin1Char(' '));
}

void TestedController::forgetNotes()
{
    mainContent.notes.clear();
    deviceControl.notes.clear();
    deviceControl.records.clear();
}

Z7Device connectedDrive(int address)
{
    Z7Device device;
    device.assignAddress(address);
    device.setPassword(address);
    device.setSoftwareVersion(QStringLiteral("V123"));
    device.setAccessGranted(true);
    return device;
}

Z7Device withValue(Z7Device device, int number, int value)
{
    Z7DeviceParam param(number, value, 1, true);
    param.valid = true;
    device.parameterSet.insert(param);
    return device;
}

Z7DeviceParam userChange(int number, int value)
{
    return Z7DeviceParam(number, value, 1, true);
}

Z7DeviceParamSet changeSet(const QList<Z7DeviceParam> &changes)
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    std::for_each(changes.cbegin(), changes.cend(), [&set](const Z7DeviceParam &each) { set.insert(each); });
    return set;
}
