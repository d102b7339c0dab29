#include "tests/soak/drives.h"

#include "tests/support/person.h"

namespace {

const QString port = QStringLiteral("ttyUSB0");

constexpr int scanMs = 300000;

/// "3 version=V123 password=4711 access=0 bootloader=0": what stands behind a name.
QByteArray wordBehind(const QByteArray &line, const char *name)
{
    const QByteArray key = QByteArray(name) + '=';
    for (const QByteArray &word : line.split(' ')) {
        if (word.startsWith(key))
            return word.mid(key.size());
    }
    return QByteArray();
}

bool scan(const Journey &journey, int password)
{
    const WizardUser wizard = journey.wizard();
    return journey.openWizard() && wizard.press("BtnScanPort") && wizard.choosePort(port) && wizard.next()
        && Person::waitUntil([&] { return wizard.canPressNext(); }, scanMs) && wizard.next()
        && wizard.typePassword(password) && wizard.next()
        && Person::waitUntil([&] { return wizard.canPressOk(); }, scanMs);
}

bool connectByHand(const WizardUser &wizard, const SoakDrive &drive)
{
    return wizard.next() && wizard.logOn(port, drive.address, drive.password)
        && Person::waitUntil([&] { return wizard.canPressOk(); });
}

} // namespace

bool SoakDrive::isWritable(int number) const
{
    return definitions.contains(number) && !definitions.value(number).isReadOnly;
}

int SoakDrive::value(SimulatorLine &line, const char *where, int number) const
{
    const QByteArray command =
        "get " + QByteArray::number(address) + ' ' + where + ' ' + QByteArray::number(number);
    return line.ask(command).value(0).toInt();
}

QVector<SoakDrive> drivesOn(SimulatorLine &line)
{
    QVector<SoakDrive> drives;
    for (const QByteArray &text : line.ask("drives")) {
        const int address = text.left(text.indexOf(' ')).toInt();
        const QString file = z7sim::definitionFileName(wordBehind(text, "version"));
        drives.append({address, wordBehind(text, "password").toInt(),
            QStringLiteral("Port0 - Z7.%1").arg(address), z7sim::loadDefinitions(file)});
    }
    return drives;
}

bool connectDrives(const Journey &journey, const QVector<SoakDrive> &drives)
{
    const WizardUser wizard = journey.wizard();
    if (drives.isEmpty() || !scan(journey, drives.first().password))
        return false;
    // Those with a password of their own, and any that a busy computer made late.
    const QStringList tried = wizard.triedDrives();
    for (const SoakDrive &drive : drives) {
        if (!tried.contains(drive.name + QStringLiteral(": connected")) && !connectByHand(wizard, drive))
            return false;
    }
    return wizard.ok() && journey.drives().size() == drives.size();
}
