#include "tests/architecture/layertable.h"

#include "tests/architecture/sources.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace {

const QStringList columns {"layer", "folder", "what it is", "may include", "may link"};

/// The names in a cell of names in backquotes; nothing if it holds something else, too.
std::optional<QStringList> namesIn(const QString &cell)
{
    static const QRegularExpression name(QStringLiteral("`([^`]+)`"));
    QStringList names;
    auto matches = name.globalMatch(cell);
    while (matches.hasNext())
        names.append(matches.next().captured(1));
    const QString written =
        names.isEmpty() ? QStringLiteral(u"–") : '`' + names.join(QStringLiteral("`, `")) + '`';
    return written == cell ? std::make_optional(names) : std::nullopt;
}

QStringList cellsOf(const QString &line)
{
    QStringList cells = line.trimmed().split(QLatin1Char('|'));
    for (QString &cell : cells)
        cell = cell.trimmed();
    return cells.mid(1, cells.size() - 2);
}

bool isRow(const QString &line)
{
    return line.startsWith(QLatin1Char('|'));
}

} // namespace

LayerTable::LayerTable(const QString &markdown)
{
    const QStringList lines = markdown.split(QLatin1Char('\n'));
    auto line = std::find_if(
        lines.begin(), lines.end(), [](const QString &l) { return isRow(l) && cellsOf(l) == columns; });
    if (line == lines.end()) {
        m_error = QStringLiteral("no table with the columns ") + columns.join(QStringLiteral(", "));
        return;
    }
    // The line below the titles only makes them a table.
    for (line += 2; line < lines.end() && isRow(*line) && m_error.isEmpty(); ++line)
        readRow(*line);
    if (m_layers.isEmpty() && m_error.isEmpty())
        m_error = QStringLiteral("the table of layers has no rows");
}

void LayerTable::readRow(const QString &line)
{
    const QStringList cells = cellsOf(line);
    const QString objection = cells.size() == columns.size()
        ? addLayer(cells)
        : QStringLiteral("%1 cells in the place of %2").arg(cells.size()).arg(columns.size());
    if (!objection.isEmpty())
        m_error = objection + QStringLiteral(": ") + line;
}

QString LayerTable::addLayer(const QStringList &cells)
{
    const bool hasTarget = cells.at(4) != QLatin1String("no target");
    const auto names = namesIn(cells.at(0));
    const auto folders = namesIn(cells.at(1));
    const auto includes = namesIn(cells.at(3));
    const auto links = hasTarget ? namesIn(cells.at(4)) : QStringList();
    if (!names || !folders || !includes || !links)
        return QStringLiteral("a cell is no list of names");
    if (names->size() != 1 || folders->size() != 1)
        return QStringLiteral("a layer has one name and one folder");
    if (layerNamed(names->first()))
        return QStringLiteral("a second layer of this name");
    for (const QString &included : *includes) {
        if (!layerNamed(included))
            return QStringLiteral("no layer %1 stands above").arg(included);
    }
    QString folder = folders->first();
    if (folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    m_layers.append({names->first(), folder, *includes, *links, hasTarget});
    return QString();
}

QStringList LayerTable::folders() const
{
    QStringList folders;
    for (const Layer &layer : m_layers)
        folders.append(layer.folder);
    return folders;
}

const Layer *LayerTable::layerNamed(const QString &name) const
{
    const auto layer = std::find_if(
        m_layers.begin(), m_layers.end(), [&name](const Layer &each) { return each.name == name; });
    return layer == m_layers.end() ? nullptr : layer;
}

const Layer *LayerTable::layerOf(const QString &path) const
{
    const QString inFolder = path.startsWith(QLatin1String("ui_")) ? QStringLiteral("forms/") + path : path;
    const Layer *innermost = nullptr;
    for (const Layer &layer : m_layers) {
        if (isInside(inFolder, layer.folder)
            && (!innermost || layer.folder.size() > innermost->folder.size()))
            innermost = &layer;
    }
    return innermost;
}
