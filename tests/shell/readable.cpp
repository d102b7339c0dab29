#include "tests/shell/readable.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QTableWidget>
#include <QTreeView>

#include <algorithm>
#include <cmath>

namespace Readable {

namespace {

QString nameOf(const QWidget &widget)
{
    return QStringLiteral("%1 %2").arg(widget.metaObject()->className(), widget.objectName());
}

QList<const QWidget *> shownBelow(const QWidget &window)
{
    QList<const QWidget *> shown {&window};
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->isVisible() && widget->window() == &window)
            shown.append(widget);
    }
    return shown;
}

// --- what is cut ---

bool holds(const QSize &room, const QSize &text)
{
    return room.width() >= text.width() && room.height() >= text.height();
}

bool fits(const QLabel &label)
{
    if (!label.wordWrap())
        return holds(label.size(), label.sizeHint());
    const QRect words = label.fontMetrics().boundingRect(
        QRect(0, 0, label.contentsRect().width(), QWIDGETSIZE_MAX), Qt::TextWordWrap, label.text());
    return holds(label.contentsRect().size(), words.size());
}

bool fits(const QLineEdit &field)
{
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.hasFrame() ? field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth) : 0;
    const QRect room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field);
    return room.height() >= field.fontMetrics().height();
}

bool fits(const QComboBox &box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect room =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    return holds(room.size(),
        QSize(box.fontMetrics().horizontalAdvance(box.currentText()), box.fontMetrics().height()));
}

bool fits(const QProgressBar &bar)
{
    return !bar.isTextVisible() || holds(bar.size(), bar.fontMetrics().size(Qt::TextSingleLine, bar.text()));
}

bool fits(const QHeaderView &header)
{
    for (int section = 0; section < header.count(); ++section) {
        if (header.sectionSize(section) < header.sectionSizeHint(section))
            return false;
    }
    return true;
}

bool fits(const QTableWidget &table)
{
    for (int row = 0; row < table.rowCount(); ++row) {
        for (int column = 0; column < table.columnCount(); ++column) {
            const QSize needed =
                table.fontMetrics().size(Qt::TextSingleLine, table.item(row, column)->text());
            if (!holds(QSize(table.columnWidth(column), table.rowHeight(row)), needed))
                return false;
        }
    }
    return true;
}

bool fits(const QTreeView &tree)
{
    return tree.columnWidth(0) >= static_cast<const QAbstractItemView &>(tree).sizeHintForColumn(0);
}

bool textFits(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->text().isEmpty() || fits(*label);
    if (const auto *field = qobject_cast<const QLineEdit *>(&widget))
        return fits(*field);
    if (const auto *box = qobject_cast<const QComboBox *>(&widget))
        return fits(*box);
    if (const auto *bar = qobject_cast<const QProgressBar *>(&widget))
        return fits(*bar);
    if (const auto *header = qobject_cast<const QHeaderView *>(&widget))
        return fits(*header);
    if (const auto *table = qobject_cast<const QTableWidget *>(&widget))
        return fits(*table);
    if (const auto *tree = qobject_cast<const QTreeView *>(&widget))
        return fits(*tree);
    const auto *group = qobject_cast<const QGroupBox *>(&widget);
    if (qobject_cast<const QAbstractButton *>(&widget) || (group && !group->title().isEmpty()))
        return holds(widget.size(), widget.minimumSizeHint());
    return true;
}

bool isScrolledWidget(const QWidget &widget)
{
    const QWidget *parent = widget.parentWidget();
    const auto *area = parent ? qobject_cast<const QAbstractScrollArea *>(parent->parentWidget()) : nullptr;
    return area && area->viewport() == parent;
}

/// True if the widget stands whole in its window, or in what is scrolled there.
bool isWhole(const QWidget &widget)
{
    QRect place = widget.rect();
    for (const QWidget *at = &widget; !at->isWindow() && !isScrolledWidget(*at); at = at->parentWidget()) {
        place.translate(at->pos());
        if (!at->parentWidget()->rect().contains(place))
            return false;
    }
    return true;
}

/// True if no other widget that stands beside this one covers it.
bool isUncovered(const QWidget &widget)
{
    const QWidget *parent = widget.parentWidget();
    if (!parent || widget.isWindow() || parent->layout())
        return true;
    for (const QWidget *other : parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (other != &widget && other->isVisible() && other->geometry().intersects(widget.geometry()))
            return false;
    }
    return true;
}

bool bearsText(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return !label->text().isEmpty();
    return qobject_cast<const QAbstractButton *>(&widget) || qobject_cast<const QLineEdit *>(&widget)
        || qobject_cast<const QComboBox *>(&widget);
}

// --- what is faint ---

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

/// The colour in the middle between the lightest and the darkest dots of a part of a picture. Letters and
/// frames are the lesser part.
QColor groundIn(const QImage &picture, const QRect &part)
{
    QVector<QRgb> colours;
    const QRect seen = part & picture.rect();
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        for (int x = seen.left(); x <= seen.right(); ++x)
            colours.append(picture.pixel(x, y));
    }
    const auto middle = colours.begin() + colours.size() / 2;
    std::nth_element(colours.begin(), middle, colours.end(),
        [](QRgb one, QRgb other) { return qGray(one) < qGray(other); });
    return *middle;
}

class FaintTexts
{
public:
    explicit FaintTexts(const QWidget &window)
        : m_window(window)
        , m_picture(const_cast<QWidget &>(window).grab().toImage())
    {
    }

    QStringList find()
    {
        for (const QWidget *widget : shownBelow(m_window))
            look(*widget);
        return m_found;
    }

private:
    void look(const QWidget &widget)
    {
        const QPalette colours = widget.palette();
        if (const auto *label = qobject_cast<const QLabel *>(&widget))
            judge(widget, widget.rect(), colours.color(label->foregroundRole()), label->text());
        else if (qobject_cast<const QAbstractButton *>(&widget))
            judge(widget, widget.rect(), colours.color(widget.foregroundRole()),
                widget.property("text").toString());
        else if (const auto *field = qobject_cast<const QLineEdit *>(&widget))
            judge(widget, widget.rect(), colours.color(QPalette::Text), field->text() + '0');
        else if (const auto *box = qobject_cast<const QComboBox *>(&widget))
            judge(widget, widget.rect(), colours.color(QPalette::Text), box->currentText());
        else if (const auto *group = qobject_cast<const QGroupBox *>(&widget))
            judge(widget, widget.rect(), colours.color(QPalette::WindowText), group->title());
        else if (const auto *header = qobject_cast<const QHeaderView *>(&widget))
            judge(widget, widget.rect(), colours.color(QPalette::ButtonText), header->objectName() + '0');
        else if (const auto *output = qobject_cast<const QPlainTextEdit *>(&widget))
            judge(widget, widget.rect(), colours.color(QPalette::Text), output->toPlainText());
        else if (const auto *menu = qobject_cast<const QMenu *>(&widget))
            judgeMenu(*menu);
        else if (const auto *items = qobject_cast<const QAbstractItemView *>(&widget))
            judgeItems(*items);
        else if (qobject_cast<const QMenuBar *>(&widget))
            judge(widget, widget.rect(), colours.color(QPalette::WindowText), "menus");
    }

    void judgeMenu(const QMenu &menu)
    {
        for (QAction *action : menu.actions()) {
            for (const QPalette::ColorRole role :
                {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
                const auto group = action->isEnabled() ? QPalette::Active : QPalette::Disabled;
                judge(menu, menu.actionGeometry(action), menu.palette().color(group, role), action->text());
            }
        }
    }

    void judgeItems(const QAbstractItemView &view)
    {
        QModelIndex index = view.indexAt(QPoint(1, 1));
        for (; index.isValid(); index = below(view, index)) {
            for (int column = 0; column < view.model()->columnCount(index.parent()); ++column)
                judgeItem(view, index.sibling(index.row(), column));
        }
    }

    static QModelIndex below(const QAbstractItemView &view, const QModelIndex &index)
    {
        if (const auto *tree = qobject_cast<const QTreeView *>(&view))
            return tree->indexBelow(index);
        return index.sibling(index.row() + 1, 0);
    }

    void judgeItem(const QAbstractItemView &view, const QModelIndex &index)
    {
        const QVariant own = index.data(Qt::ForegroundRole);
        const QColor colour =
            own.isValid() ? own.value<QBrush>().color() : view.palette().color(QPalette::Text);
        // The rows of the remarks are too low for large letters. What is selected has the desktop's colours.
        if (colour == Qt::red || view.selectionModel()->isSelected(index))
            return;
        const QRect place = view.visualRect(index).translated(view.viewport()->pos());
        judge(view, place, colour, index.data().toString());
    }

    void judge(const QWidget &widget, const QRect &part, const QColor &colour, const QString &text)
    {
        if (text.trimmed().isEmpty())
            return;
        const QRect place(widget.mapTo(&m_window, part.topLeft()), part.size());
        if (!m_picture.rect().contains(place.center()) || !isOnScreen(widget, part))
            return;
        const double ratio = contrast(colour, groundIn(m_picture, place));
        const bool isLarge = widget.font().bold() && widget.font().pointSizeF() >= 14;
        if (ratio < (isLarge ? 3 : 4.5))
            m_found.append(QStringLiteral("%1: %2 (%3)").arg(nameOf(widget), text).arg(ratio, 0, 'f', 1));
    }

    /// Not what is scrolled away.
    static bool isOnScreen(const QWidget &widget, const QRect &part)
    {
        return widget.visibleRegion().contains(part);
    }

    const QWidget &m_window;
    const QImage m_picture;
    QStringList m_found;
};

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const double lighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

QStringList cutTexts(const QWidget &window)
{
    QStringList cut;
    for (const QWidget *widget : shownBelow(window)) {
        const bool isGood =
            textFits(*widget) && (!bearsText(*widget) || (isWhole(*widget) && isUncovered(*widget)));
        if (!isGood)
            cut.append(QStringLiteral("%1: %2 (%3 x %4 of %5 x %6)")
                           .arg(nameOf(*widget), widget->property("text").toString())
                           .arg(widget->width())
                           .arg(widget->height())
                           .arg(widget->minimumSizeHint().width())
                           .arg(widget->minimumSizeHint().height()));
    }
    return cut;
}

QStringList faintTexts(const QWidget &window)
{
    return FaintTexts(window).find();
}

} // namespace Readable
