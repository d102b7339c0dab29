#pragma once

#include <QMap>
#include <QSettings>
#include <QString>

/// The INI files that a person may edit: read with tolerance, written without loss.
namespace SettingsFile {

/// False for a file of more than 16 MB, and for what is no file: a pipe, a folder, a device. Such a thing is
/// none of ours; it is neither read nor written, so that it can neither hang the program nor be lost.
bool isUsable(const QString &fileName);

/// Writes `values` (full key, section included, to text) into the INI file. Keys that are not in `values`
/// stay, and so does an entry that reads back as the very text; where all do, nothing is written. Where the
/// file holds lines that are no INI, a copy of it is kept as "<fileName>.damaged" before the write, since
/// writing drops such lines; if that fails, the file stays as it is. Comments, which begin with a semicolon,
/// go at the first write.
///
/// The file is replaced as a whole, once all of its keys and texts have been read back from the new one. On a
/// full or failing disk, and in a folder that takes no new file, it stays byte for byte. A link stays, and
/// its target is replaced.
void write(const QString &fileName, const QMap<QString, QString> &values);

} // namespace SettingsFile
