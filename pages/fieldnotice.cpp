#include "pages/fieldnotice.h"

#include "pages/fieldtexts.h"
#include "pages/pagestyle.h"

#include <QAccessible>
#include <QEvent>
#include <QLineEdit>

#include <algorithm>

namespace {

/// Between the field and the notice.
constexpr int gap = 2;

/// A light yellow, as notes have it.
constexpr QRgb ground = qRgb(255, 248, 225);

} // namespace

void FieldNotice::sayWhatIsTaken(QWidget *surface, QLineEdit *field)
{
    auto *notice = surface->findChild<FieldNotice *>(QString(), Qt::FindDirectChildrenOnly);
    if (!notice)
        notice = new FieldNotice(surface);
    notice->watch(field);
    notice->setText(FieldTexts::whatIsTaken(field->validator()));
    notice->placeBeside(*field);
    notice->show();
    notice->raise();
    QAccessibleEvent spoken(notice, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

FieldNotice::FieldNotice(QWidget *surface)
    : QLabel(surface)
{
    setObjectName(QStringLiteral("FieldNotice"));
    setTextFormat(Qt::PlainText);
    setFrameShape(QFrame::Box);
    setMargin(3);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    PageStyle::paintGround(this, QColor(ground));
    PageStyle::paintText(this, Qt::black);
    hide();
}

void FieldNotice::watch(QLineEdit *field)
{
    if (m_field == field)
        return;
    if (m_field) {
        m_field->removeEventFilter(this);
        m_field->disconnect(this);
    }
    m_field = field;
    field->installEventFilter(this);
    connect(field, SIGNAL(textChanged(QString)), SLOT(hide()));
}

bool FieldNotice::eventFilter(QObject *field, QEvent *event)
{
    // A field that is scrolled moves away from under its notice.
    const bool leaves =
        event->type() == QEvent::FocusOut || event->type() == QEvent::Move || event->type() == QEvent::Hide;
    if (leaves && isVisible())
        hide();
    return QLabel::eventFilter(field, event);
}

/// Below the field, to its right or above it: where it is seen whole and covers no other field, if it can.
void FieldNotice::placeBeside(const QLineEdit &field)
{
    adjustSize();
    const QRect seen = parentWidget()->visibleRegion().boundingRect();
    const QRect asked = placeOf(field);
    const int left = qMax(seen.left(), qMin(asked.left(), seen.right() + 1 - width()));
    const QPoint below(left, asked.bottom() + 1 + gap);
    const QPoint right(asked.right() + 1 + gap, asked.center().y() - height() / 2);
    const QPoint above(left, asked.top() - gap - height());
    QPoint place = seen.contains(QRect(below, size())) ? below : above;
    for (const QPoint &candidate : {below, right, above}) {
        const QRect covered(candidate, size());
        if (seen.contains(covered) && !coversAnotherField(covered, field)) {
            place = candidate;
            break;
        }
    }
    move(place);
}

QRect FieldNotice::placeOf(const QLineEdit &field) const
{
    return {field.mapTo(parentWidget(), QPoint()), field.size()};
}

bool FieldNotice::coversAnotherField(const QRect &covered, const QLineEdit &field) const
{
    const auto fields = parentWidget()->findChildren<QLineEdit *>();
    return std::any_of(fields.begin(), fields.end(), [&](const QLineEdit *other) {
        return other != &field && other->isVisible() && placeOf(*other).intersects(covered);
    });
}
