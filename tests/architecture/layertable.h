#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// One row of the table of layers.
struct Layer
{
    QString name; ///< also of its CMake target, if it has one
    QString folder; ///< of its sources, or a single source, relative to the root and without a slash behind
    QStringList includes; ///< names of the layers whose headers it may include, besides its own
    QStringList links; ///< what its target may link
    bool hasTarget = true;
};

/// The layers from below to above, as a document for people tells them.
///
/// The table is the one whose columns are "layer", "folder", "what it is", "may include" and "may link".
/// Names and folders stand in backquotes, several of them with commas between, and none at all as a dash. "no
/// target" in the last column marks what CMake does not build on its own.
class LayerTable
{
public:
    explicit LayerTable(const QString &markdown);

    /// Why the table does not hold as it stands, with the line that is wrong; empty if it does. A layer may
    /// include only what stands above its own row.
    QString error() const { return m_error; }

    const QVector<Layer> &layers() const { return m_layers; }
    QStringList folders() const;
    /// Null if there is none.
    const Layer *layerNamed(const QString &name) const;
    /// The layer that a source or an included path belongs to; the innermost folder counts, and a ui_ header
    /// belongs to the forms it is made of. Null if there is none.
    const Layer *layerOf(const QString &path) const;

private:
    void readRow(const QString &line);
    /// Adds the layer of a row. Gives what is wrong with the row, or nothing.
    QString addLayer(const QStringList &cells);

    QVector<Layer> m_layers;
    QString m_error;
};
