#pragma once

#include <QMap>
#include <QMutex>
#include <QString>

#include <memory>

class Z7Language;
class Z7Options;
class Z7ParamDefinitions;
class Z7ParameterFile;
struct Z7Device;
struct Z7DeviceParamSet;

/// The one process-wide object: options, language and parameter definitions hang on it, and each comes into
/// being at its first use.
///
/// Main thread only, with one exception: definitions() is also called by the worker threads. The first call
/// of instance() has to come from the main thread, before a worker runs, and shutdown() after the last one
/// has ended.
class Z7Services
{
public:
    static Z7Services *instance();

    /// Writes the language file and the options file, then frees everything. Called when the main window
    /// closes.
    static void shutdown();

    ~Z7Services();

    /// Names the folder in which the files of options, languages and parameter definitions lie, for as long
    /// as this object lives. Called before the first of them is read. Without it, or with an empty name, that
    /// is the current folder of each access.
    void setFolder(const QString &folder);
    /// Absolute, or empty for the current folder. Any thread.
    QString folder() const { return m_folder; }

    /// The options, read from their file at the first call.
    Z7Options *options();
    /// The language table, read from the file that the options name at the first call.
    Z7Language *language();

    /// The parameter definitions of a software version: a working, empty object if nobody has loaded them
    /// yet. Any thread. It is defined with the definitions themselves, in the layer above this one.
    Z7ParamDefinitions *definitions(const QString &version);

    /// The parameter set that was opened or saved last; null before the first. It stays until the next one,
    /// so that one file can serve several drives. Defined, like the two below, in the layer above.
    Z7ParameterFile *parameterFile() const { return m_parameterFile.get(); }
    /// Puts an empty one in its place.
    Z7ParameterFile *newParameterFile();
    /// Puts the parameters of a drive in its place, with the user's changes, and writes them to a file.
    /// Returns what went wrong, or an empty text.
    QString saveParameterFile(
        const QString &path, const Z7Device &device, const Z7DeviceParamSet &userParams);

private:
    Z7Services();

    QString m_folder;
    std::unique_ptr<Z7Language> m_language;
    std::unique_ptr<Z7Options> m_options;

    /// Guards m_definitions: a version that turns up in a reply makes a worker thread ask for it.
    QMutex m_definitionsMutex;
    /// Shared pointers, since they know how to delete what this layer only declares.
    QMap<QString, std::shared_ptr<Z7ParamDefinitions>> m_definitions;
    std::shared_ptr<Z7ParameterFile> m_parameterFile;
};
