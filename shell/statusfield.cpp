#include "shell/statusfield.h"

#include "pages/pagestyle.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QTextDocument>
#include <QtMath>

namespace {

constexpr int margin = 4;
constexpr int markSize = 16;
constexpr int markGap = 4;

/// As wide as the text with whatever digits, so that a clock does not push its neighbours to and fro.
QString withWideDigits(QString text)
{
    static const QRegularExpression digit(QStringLiteral("\\d"));
    return text.replace(digit, QStringLiteral("0"));
}

} // namespace

bool operator==(const StatusText &a, const StatusText &b)
{
    return a.text == b.text && a.detail == b.detail && a.isWarning == b.isWarning;
}

StatusField::StatusField(const char *objectName, const QString &title, Click click, QWidget *parent)
    : QAbstractButton(parent)
    , m_click(click)
{
    setObjectName(QString::fromLatin1(objectName));
    setAccessibleName(title);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    if (click != DoesNothing)
        setCursor(Qt::PointingHandCursor);
}

void StatusField::say(const StatusText &text)
{
    if (text == m_said)
        return;
    const bool isNews = text.whole() != m_said.whole();
    m_said = text;
    if (isNews) {
        const QString whole = text.whole();
        setToolTip(Qt::mightBeRichText(whole) ? Qt::convertFromPlainText(whole) : whole);
        setAccessibleDescription(whole);
    }
    // Nobody can leave a field that has no place.
    if (text.isEmpty() && hasFocus())
        focusNextChild();
    setFocusPolicy(text.isEmpty() || m_click == DoesNothing ? Qt::NoFocus : Qt::TabFocus);
    if (text.isEmpty())
        m_widest = 0;
    remeasure();
    update();
}

void StatusField::remeasure()
{
    m_widest = m_said.isEmpty() ? 0 : qMax(m_widest, widthOfMarks() + widthOfText() + 2 * margin);
    updateGeometry();
}

QSize StatusField::sizeHint() const
{
    return {m_widest, minimumSizeHint().height()};
}

QSize StatusField::minimumSizeHint() const
{
    return {0, qMax(QFontMetrics(shownFont()).height(), markSize) + margin};
}

QFont StatusField::shownFont() const
{
    QFont shown = font();
    shown.setBold(m_said.isWarning);
    shown.setUnderline(m_click == Acts || (m_click == Opens && underMouse()));
    return shown;
}

int StatusField::widthOfText() const
{
    // A part of a pixel less, and the text would be cut.
    return qCeil(QFontMetricsF(shownFont()).horizontalAdvance(withWideDigits(m_said.text)));
}

int StatusField::widthOfMarks() const
{
    const int marks = (m_said.isWarning ? 1 : 0) + (m_click == Dismisses ? 1 : 0);
    return marks * (markSize + markGap);
}

QRect StatusField::roomForText() const
{
    const int before = m_said.isWarning ? markSize + markGap : 0;
    return rect().adjusted(margin + before, 0, -margin - (widthOfMarks() - before), 0);
}

QString StatusField::shownText() const
{
    return QFontMetrics(shownFont()).elidedText(m_said.text, Qt::ElideRight, roomForText().width());
}

bool StatusField::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::FontChange:
        m_widest = 0;
        remeasure();
        break;
    case QEvent::Enter:
    case QEvent::Leave:
        update();
        break;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void StatusField::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void StatusField::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    if (m_said.isEmpty())
        return;
    QPainter painter(this);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    const QRect room = roomForText();
    const QString shown = shownText();
    const int markTop = (height() - markSize) / 2;
    if (m_said.isWarning)
        painter.drawPixmap(margin, markTop, PageStyle::smallPixmap(":/images/YellowIcon_16px.png"));
    if (m_click == Dismisses) {
        const int behindText = room.left() + QFontMetrics(shownFont()).horizontalAdvance(shown) + markGap;
        painter.drawPixmap(behindText, markTop, PageStyle::smallPixmap(":/images/cancel-icon_16px.png"));
    }
    painter.setFont(shownFont());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(room, int(Qt::AlignVCenter) | int(Qt::TextSingleLine), shown);
}
