#include "pages/pagestyle.h"

#include <QApplication>
#include <QColor>
#include <QDialog>
#include <QEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <QIcon>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPalette>
#include <QPixmapCache>
#include <QToolTip>
#include <QWidget>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

const QColor disabledText(100, 104, 110);

/// The smallest font that a person reads, in pixels.
constexpr int smallestFont = 9;

/// True if any text of the desktop is lighter than its ground.
bool isDark(const QPalette &palette)
{
    using Roles = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    const Roles pairs[] = {{QPalette::WindowText, QPalette::Window}, {QPalette::Text, QPalette::Base},
        {QPalette::ButtonText, QPalette::Button}};
    return std::any_of(std::begin(pairs), std::end(pairs), [&palette](const Roles &roles) {
        return palette.color(roles.first).lightness() > palette.color(roles.second).lightness();
    });
}

/// Names every role in every group: what it left out would come from the dark desktop.
QPalette lightPalette()
{
    const std::pair<QPalette::ColorRole, QColor> colours[] = {
        {QPalette::Window, {240, 240, 240}},
        {QPalette::WindowText, Qt::black},
        {QPalette::Base, Qt::white},
        {QPalette::AlternateBase, {245, 246, 248}},
        {QPalette::Text, Qt::black},
        {QPalette::PlaceholderText, disabledText},
        {QPalette::Button, {240, 240, 240}},
        {QPalette::ButtonText, Qt::black},
        {QPalette::BrightText, Qt::white},
        {QPalette::Light, Qt::white},
        {QPalette::Midlight, {227, 227, 227}},
        {QPalette::Mid, {184, 184, 184}},
        {QPalette::Dark, {160, 160, 160}},
        {QPalette::Shadow, {105, 105, 105}},
        {QPalette::Highlight, {42, 100, 150}},
        {QPalette::HighlightedText, Qt::white},
        {QPalette::Link, {11, 87, 164}},
        {QPalette::LinkVisited, {106, 61, 143}},
        {QPalette::ToolTipBase, {255, 255, 220}},
        {QPalette::ToolTipText, Qt::black},
    };
    QPalette palette;
    for (const auto &colour : colours)
        palette.setColor(QPalette::All, colour.first, colour.second);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, disabledText);
    return palette;
}

/// Gives a window the height that the lines of its texts need. Owned by the window.
class RoomForTexts : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show || (event->type() == QEvent::LayoutRequest && window->isVisible()))
            grow(window);
        return QObject::eventFilter(watched, event);
    }

private:
    static void grow(QWidget *window)
    {
        window->layout()->activate();
        const QSize least = window->size().expandedTo(window->minimumSizeHint());
        const int lines = window->layout()->totalHeightForWidth(least.width());
        window->resize(least.expandedTo(QSize(0, lines)));
    }
};

} // namespace

namespace PageStyle {

QColor blue()
{
    return {72, 131, 181};
}

QColor lightGrey()
{
    return {240, 240, 240};
}

QColor warningRed()
{
    return {198, 40, 40};
}

void makeTextsReadable()
{
    QPalette palette = QApplication::palette();
    if (isDark(palette)) {
        palette = lightPalette();
        QToolTip::setPalette(palette);
    }
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabledText);
    QApplication::setPalette(palette);
}

void paintGround(QWidget *widget, const QColor &colour)
{
    QPalette palette = widget->palette();
    palette.setBrush(QPalette::Window, colour);
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

void paintHeader(QWidget *frame)
{
    paintGround(frame, blue());
    paintText(frame, Qt::white);
    frame->setFont(loudFont());
}

void paintText(QWidget *label, const QColor &colour)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
}

void keepPlaceWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

void setTextOrHide(QLabel *label, const QString &text)
{
    label->setText(text);
    if (text.isEmpty())
        label->hide();
}

void emptyField(QLineEdit *field)
{
    // clear() is an edit that can be undone; a text that is set drops the history, also where it is the same.
    field->setText(QString());
}

QFont boldFont()
{
    QFont font;
    font.setWeight(QFont::Bold);
    return font;
}

qreal pointsOf(const QFont &font)
{
    // What the screen makes of a font is rounded to whole dots.
    return font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
}

QFont loudFont()
{
    constexpr qreal leastPoints = 14;
    QFont font = boldFont();
    if (pointsOf(font) < leastPoints)
        font.setPointSizeF(leastPoints);
    return font;
}

QFont fittingFont(const QWidget &widget, QFont wanted, const QSize &place, const QString &text, int flags)
{
    auto *device = const_cast<QWidget *>(&widget);
    constexpr int anyHeight = 10000;
    const QRect room(0, 0, place.width(), anyHeight);
    const auto fits = [&] {
        const QSize needed = QFontMetrics(wanted, device).boundingRect(room, flags, text).size();
        return needed.width() <= place.width() && needed.height() <= place.height();
    };
    for (int size = QFontInfo(QFont(wanted, device)).pixelSize(); !fits() && size > smallestFont;)
        wanted.setPixelSize(--size);
    return wanted;
}

void growWithTexts(QDialog *dialog)
{
    dialog->installEventFilter(new RoomForTexts(dialog));
}

void takeOut(QWidget *page)
{
    page->hide();
    page->setParent(nullptr);
}

QPixmap sharpPixmap(const char *resource, const QSize &size)
{
    // Every QIcon leaves a pixmap of its own in the cache, so the picture is kept under its name.
    const QString key =
        QStringLiteral("%1@%2x%3").arg(QLatin1String(resource)).arg(size.width()).arg(size.height());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QIcon(QString::fromLatin1(resource)).pixmap(size);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QPixmap smallPixmap(const char *resource)
{
    return sharpPixmap(resource, QSize(16, 16));
}

QPixmap mediumPixmap(const char *resource)
{
    return sharpPixmap(resource, QSize(24, 24));
}

} // namespace PageStyle
