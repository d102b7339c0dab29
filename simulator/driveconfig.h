#pragma once

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>
#include <optional>

namespace z7sim {

/// What surrounds a drive and what a test holds fast in it. May change while the drive runs.
struct Surroundings
{
    int digitalInputs = 0; ///< bits 0 to 3 are inputs 1 to 4
    std::optional<int> digitalOutputs; ///< without a value the drive sets them itself
    std::optional<int> statusBits; ///< without a value the drive sets them itself
    int analogInput = 0; ///< 0 to 1023
    std::optional<int> setPoint; ///< rpm; without a value it follows from inputs and parameters
    bool flashBroken = false; ///< storing fails
    QMap<int, int> liveValues; ///< live values held fast, by parameter number
    QSet<int>
        lockedParameters; ///< numbers that the drive neither reads out nor takes without a higher access
};

/// A drive as it is put on the bus.
struct DriveConfig
{
    int address = 1;
    std::optional<int> password; ///< without a value the address is the password
    QByteArray version = "V123"; ///< a letter and three numbers, the first two of one digit
    QString definitionFile; ///< wins over the folder
    QString definitionFolder; ///< holds the file of each version
    QMap<int, int> parameters; ///< values that differ from the factory's, in working memory and flash
    Surroundings surroundings;
};

/// Where the definitions of a drive are read from; empty if it names neither a file nor a folder.
QString definitionPath(const DriveConfig &config);

/// Changes one of the surroundings by its name: inputs, outputs, status, analog, setpoint, flash-broken.
/// Where the drive can find a value itself, the text "auto" gives it back to the drive. Returns an empty
/// text, or what is wrong.
QByteArray setSurrounding(Surroundings &surroundings, const QByteArray &name, const QByteArray &value);

/// Changes one entry of a configuration by its name: address, password, version, definition, definitions,
/// locked (numbers joined by "+"), param.<number> and all names of setSurrounding. Returns an empty text, or
/// what is wrong.
QByteArray setDriveEntry(DriveConfig &config, const QByteArray &name, const QByteArray &value);

/// Reads a drive as the command line has it, "3,password=4711,version=V123", into config.
/// Returns an empty text, or what is wrong.
QByteArray parseDrive(const QByteArray &text, DriveConfig &config);

/// The four bytes that tell a version on the wire, a letter and three numbers; nothing if the text is no
/// version.
std::optional<QByteArray> versionBytes(const QByteArray &version);

/// A version as its text, from the four bytes of the wire.
QByteArray versionText(const QByteArray &bytes);

} // namespace z7sim
