#pragma once

#include "simulator/wirelog.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <QVector>

/// The report of the tour: a Markdown file and the pictures that it shows, numbered in their order.
class Transcript
{
public:
    /// Writes into a folder that exists; what an earlier tour left there is removed.
    explicit Transcript(const QString &folder);

    bool isOpen() const { return m_file.isOpen(); }

    void beginStep(const QString &title);
    void say(const QString &text);
    /// What was on the wire; long runs of telegrams of one kind are cut short.
    void showWire(const QVector<z7sim::WireEntry> &log);
    /// A picture of the whole screen; `name` becomes part of the file's name.
    void takePicture(const QString &name);

private:
    void write(const QString &text);

    QDir m_folder;
    QFile m_file;
    int m_step = 0;
    int m_picture = 0;
};
