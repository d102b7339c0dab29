#include "pages/fieldnotice.h"

#include "pages/fieldtexts.h"
#include "pages/pagestyle.h"

#include <QAccessible>
#include <QEvent>
#include <QLineEdit>

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

void FieldNotice::placeBeside(const QLineEdit &field)
{
    adjustSize();
    const QRect seen = parentWidget()->visibleRegion().boundingRect();
    const QRect covered(field.mapTo(parentWidget(), QPoint()), field.size());
    const int below = covered.bottom() + 1 + gap;
    const int above = covered.top() - gap - height();
    move(qMax(seen.left(), qMin(covered.left(), seen.right() + 1 - width())),
        below + height() <= seen.bottom() + 1 ? below : above);
}
