#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// Files that are written whole or not at all: whatever goes wrong on the way, the file that stood there
/// stays byte for byte, with nothing else left in its folder. Any thread, as long as no two write one file.
namespace WholeFile {

/// No file that the program reads or replaces is larger: a set of all parameters that a drive can have takes
/// 3 MB. What is larger is not read, for it would only fill the memory.
constexpr qint64 largestFile = 16 * 1024 * 1024;

/// Judges the new content, which lies on the disk under that name by then, before it takes the file's place.
using Check = std::function<bool(const QString &fileName)>;

/// True for a pipe, a folder, a device: whatever bears the name without being a file, at the end of all
/// links. It could be read for ever, and nothing may be written over it, so it counts as a file that is
/// missing.
bool isSomethingElse(const QString &path);

/// Where the links that begin at `path` end, whether a file is there or not; empty if they go in a circle.
QString targetOf(const QString &path);

/// A name beside `path` that no other file has.
QString freeNameBeside(const QString &path);

/// Writes `content` into a new file beside the target of `path`, reads it back from the disk and renames it
/// over the target, which lends it its permissions. False, and nothing has changed, if one step fails: among
/// others where the folder takes no new file, or the file that is there may not be written.
bool replace(const QString &path, const QByteArray &content, const Check &isRight = {});

/// The same for a file that a person asks to be written now: in a folder whose permissions allow no new file,
/// `content` goes into the file itself, and what stood there is put back if that fails. Only there a loss of
/// power in the middle, or a disk that takes half of it and then nothing more, costs the old file.
bool write(const QString &path, const QByteArray &content);

} // namespace WholeFile
