#include "simulator/driveconfig.h"

#include "simulator/definitions.h"
#include "simulator/text.h"

#include <functional>

namespace z7sim {

namespace {

using SetNumber = std::function<void(int)>;

QByteArray setNumber(const QByteArray &value, const SetNumber &set)
{
    const std::optional<int> number = parseNumber(value);
    if (!number)
        return "no number: " + value;
    set(*number);
    return {};
}

QByteArray setOwn(std::optional<int> &field, const QByteArray &value)
{
    if (value != "auto")
        return setNumber(value, [&field](int number) { field = number; });
    field.reset();
    return {};
}

QByteArray setLocked(QSet<int> &locked, const QByteArray &value)
{
    for (const QByteArray &part : value.split('+')) {
        const QByteArray error = setNumber(part, [&locked](int number) { locked.insert(number); });
        if (!error.isEmpty())
            return error;
    }
    return {};
}

QByteArray setVersion(QByteArray &version, const QByteArray &value)
{
    if (!versionBytes(value))
        return "no version: " + value;
    version = value;
    return {};
}

QByteArray setAddress(int &address, const QByteArray &value)
{
    const std::optional<int> number = parseNumber(value);
    if (!number || *number < 1 || *number > 255)
        return "no bus address: " + value;
    address = *number;
    return {};
}

QByteArray setParameter(QMap<int, int> &parameters, const QByteArray &numberText, const QByteArray &value)
{
    const std::optional<int> number = parseNumber(numberText);
    if (!number)
        return "no parameter number: " + numberText;
    return setNumber(value, [&](int given) { parameters.insert(*number, given); });
}

QByteArray setText(QString &field, const QByteArray &value)
{
    field = QString::fromLocal8Bit(value);
    return {};
}

} // namespace

QString definitionPath(const DriveConfig &config)
{
    if (!config.definitionFile.isEmpty() || config.definitionFolder.isEmpty())
        return config.definitionFile;
    return config.definitionFolder + QLatin1Char('/') + definitionFileName(config.version);
}

QByteArray setSurrounding(Surroundings &surroundings, const QByteArray &name, const QByteArray &value)
{
    if (name == "inputs")
        return setNumber(value, [&](int number) { surroundings.digitalInputs = number; });
    if (name == "outputs")
        return setOwn(surroundings.digitalOutputs, value);
    if (name == "status")
        return setOwn(surroundings.statusBits, value);
    if (name == "analog")
        return setNumber(value, [&](int number) { surroundings.analogInput = number; });
    if (name == "setpoint")
        return setOwn(surroundings.setPoint, value);
    if (name == "flash-broken")
        return setNumber(value, [&](int number) { surroundings.flashBroken = number != 0; });
    return "nothing of this name: " + name;
}

QByteArray setDriveEntry(DriveConfig &config, const QByteArray &name, const QByteArray &value)
{
    if (name == "address")
        return setAddress(config.address, value);
    if (name == "password")
        return setNumber(value, [&](int number) { config.password = number; });
    if (name == "version")
        return setVersion(config.version, value);
    if (name == "definition")
        return setText(config.definitionFile, value);
    if (name == "definitions")
        return setText(config.definitionFolder, value);
    if (name == "locked")
        return setLocked(config.surroundings.lockedParameters, value);
    if (name.startsWith("param."))
        return setParameter(config.parameters, name.mid(6), value);
    return setSurrounding(config.surroundings, name, value);
}

QByteArray parseDrive(const QByteArray &text, DriveConfig &config)
{
    const Words words = parseWords(text, ',');
    if (words.plain.size() > 1)
        return "not of the form name=value: " + words.plain.at(1);
    QByteArray error = words.plain.isEmpty() ? QByteArray() : setAddress(config.address, words.plain.first());
    for (auto entry = words.named.begin(); entry != words.named.end() && error.isEmpty(); ++entry)
        error = setDriveEntry(config, entry.key(), entry.value());
    return error;
}

std::optional<QByteArray> versionBytes(const QByteArray &version)
{
    QByteArray bytes = version.left(1);
    for (const QByteArray &part : {version.mid(1, 1), version.mid(2, 1), version.mid(3)}) {
        const std::optional<int> number = parseNumber(part);
        if (!number || *number < 0 || *number > 127)
            return std::nullopt;
        bytes.append(static_cast<char>(*number));
    }
    return bytes.size() == 4 ? std::optional<QByteArray>(bytes) : std::nullopt;
}

QByteArray versionText(const QByteArray &bytes)
{
    QByteArray text = bytes.left(1);
    for (char number : bytes.mid(1))
        text += QByteArray::number(static_cast<int>(static_cast<signed char>(number)));
    return text;
}

} // namespace z7sim
