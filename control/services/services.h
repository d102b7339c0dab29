#pragma once

#include <QMap>
#include <QMutex>
#include <QString>

#include <memory>

class Z7Language;
class Z7Options;
class Z7ParamDefinitions;

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

    /// The options, read from their file at the first call.
    Z7Options *options();
    /// The language table, read from the file that the options name at the first call.
    Z7Language *language();

    /// The parameter definitions of a software version: a working, empty object if nobody has loaded them
    /// yet. Any thread. It is defined with the definitions themselves, in the layer above this one.
    Z7ParamDefinitions *definitions(const QString &version);

private:
    Z7Services();

    std::unique_ptr<Z7Language> m_language;
    std::unique_ptr<Z7Options> m_options;

    /// Guards m_definitions: a version that turns up in a reply makes a worker thread ask for it.
    QMutex m_definitionsMutex;
    /// Shared pointers, since they know how to delete what this layer only declares.
    QMap<QString, std::shared_ptr<Z7ParamDefinitions>> m_definitions;
};
