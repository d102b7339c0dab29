#include "simulator/configuration.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace z7sim {

namespace {

QByteArray valueText(const QJsonValue &value)
{
    return value.isDouble() ? QByteArray::number(static_cast<qint64>(value.toDouble()))
                            : value.toVariant().toString().toLocal8Bit();
}

QByteArray readEntries(const QJsonObject &entries, const QByteArray &prefix, DriveConfig &drive)
{
    QByteArray error;
    for (auto entry = entries.begin(); entry != entries.end() && error.isEmpty(); ++entry)
        error = entry->isObject() ? readEntries(entry->toObject(), "param.", drive)
                                  : setDriveEntry(drive, prefix + entry.key().toLatin1(), valueText(*entry));
    return error;
}

QByteArray readDrives(const QJsonArray &drives, BusConfig &bus)
{
    for (const QJsonValue &entry : drives) {
        DriveConfig drive;
        const QByteArray error = readEntries(entry.toObject(), {}, drive);
        if (!error.isEmpty())
            return error;
        bus.drives.append(drive);
    }
    return {};
}

} // namespace

QByteArray readConfiguration(const QString &fileName, Configuration &configuration)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return "cannot read " + fileName.toLocal8Bit();
    QJsonParseError problem;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll(), &problem).object();
    if (problem.error != QJsonParseError::NoError)
        return fileName.toLocal8Bit() + ": " + problem.errorString().toLocal8Bit();
    BusConfig &bus = configuration.bus;
    bus.definitionFolder = root.value(QLatin1String("definitions")).toString(bus.definitionFolder);
    bus.link = root.value(QLatin1String("link")).toString(bus.link);
    bus.paced = root.value(QLatin1String("paced")).toBool(bus.paced);
    bus.turnaroundUs = static_cast<qint64>(
        root.value(QLatin1String("turnaroundUs")).toDouble(static_cast<double>(bus.turnaroundUs)));
    configuration.controlPath = root.value(QLatin1String("control")).toString(configuration.controlPath);
    for (const QJsonValue &command : root.value(QLatin1String("commands")).toArray())
        configuration.commands.append(command.toString().toLocal8Bit());
    return readDrives(root.value(QLatin1String("drives")).toArray(), bus);
}

} // namespace z7sim
