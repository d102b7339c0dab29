#include "pages/fieldguide.h"

#include "model/parameterconflicts.h"
#include "model/parameterdefinitions.h"
#include "pages/datawidget.h"
#include "pages/fieldnotice.h"
#include "pages/fieldtexts.h"
#include "pages/pagestyle.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>

namespace {

/// Room around a field that is scrolled into view.
constexpr int surroundings = 30;

constexpr int markSize = 16;
/// Below this the mark would not be seen.
constexpr int smallestMark = 8;
/// Between the field's edge, the mark and the number.
constexpr int markGap = 3;

/// Menus and other windows only borrow the focus, and give it back like this.
bool isBorrowed(Qt::FocusReason reason)
{
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason
        || reason == Qt::MenuBarFocusReason;
}

} // namespace

FieldGuide::FieldGuide(Z7DataWidget *page, QLineEdit *field)
    : QObject(field)
    , m_page(page)
    , m_field(field)
{
    field->installEventFilter(this);
    connect(field, SIGNAL(textChanged(QString)), SLOT(takeChange()));
    connect(field, SIGNAL(inputRejected()), SLOT(sayWhatIsTaken()));
}

void FieldGuide::tell(int number, const QString &name, const std::optional<Limits> &limits)
{
    m_number = number;
    const Z7ParamDefinitions &definitions = *m_page->paramDefinitions();
    Z7ParamDefinition definition = definitions.row(number);
    if (limits) {
        definition.minimum = limits->lowest;
        definition.maximum = limits->highest;
        definition.readOnly = false;
    }
    m_description = definitions.contains(number) ? FieldTexts::describe(definition, name)
                                                 : FieldTexts::describeUnknown(number);
    showTexts();
    judge();
}

void FieldGuide::judge()
{
    const QString text = m_field->text();
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    // With a lone sign the number that was accepted last stays in force.
    if (isNumber || text.isEmpty())
        setFinding(isNumber ? findingOn(value) : QString());
}

QString FieldGuide::findingOn(int value) const
{
    const auto finding =
        definitionFinding(*m_page->paramDefinitions(), Z7DeviceParam(m_number, value, 0, true));
    return finding ? FieldTexts::beyondLimits(*finding) : QString();
}

void FieldGuide::setFinding(const QString &finding)
{
    if (m_finding != finding) {
        m_finding = finding;
        showTexts();
    }
    showMark();
}

void FieldGuide::showTexts()
{
    const QString text = m_finding.isEmpty() ? m_description : m_finding + QLatin1Char('\n') + m_description;
    m_field->setToolTip(FieldTexts::asToolTip(text));
    m_field->setAccessibleDescription(text);
}

void FieldGuide::showMark()
{
    if (m_mark)
        m_mark->setVisible(!m_finding.isEmpty());
    if (m_finding.isEmpty())
        return;
    if (!m_mark) {
        m_mark = new QLabel(m_field);
        m_mark->setObjectName(QStringLiteral("FieldMark"));
        m_mark->setAttribute(Qt::WA_TransparentForMouseEvents);
        m_mark->show();
    }
    m_mark->setAccessibleName(m_finding);
    placeMark();
}

/// Numbers stand at the right; the mark takes what they leave free.
void FieldGuide::placeMark()
{
    const int number = m_field->fontMetrics().horizontalAdvance(m_field->text());
    const int room = m_field->width() - number - 4 * markGap;
    const int size = qBound(smallestMark, room, qMin(markSize, m_field->height()));
    m_mark->setPixmap(PageStyle::sharpPixmap(":/images/YellowIcon_16px.png", {size, size}));
    m_mark->setGeometry(markGap, (m_field->height() - size) / 2, size, size);
}

void FieldGuide::takeChange()
{
    // What has been put into the field is what Escape gives back; a record or a file may have replaced what
    // stood there before.
    if (m_held && !m_field->isModified())
        m_held = m_field->text();
    judge();
}

void FieldGuide::sayWhatIsTaken()
{
    FieldNotice::sayWhatIsTaken(m_page, m_field);
}

bool FieldGuide::eventFilter(QObject *field, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        takeFocus(static_cast<QFocusEvent *>(event)->reason());
        break;
    // Under a button that is down nothing moves.
    case QEvent::MouseButtonRelease:
        scrollIntoView();
        break;
    case QEvent::KeyPress:
        return takeKey(*static_cast<QKeyEvent *>(event));
    case QEvent::Resize:
    case QEvent::FontChange:
        if (m_mark)
            placeMark();
        break;
    default:
        break;
    }
    return QObject::eventFilter(field, event);
}

void FieldGuide::takeFocus(Qt::FocusReason reason)
{
    if (!m_held || !isBorrowed(reason))
        m_held = m_field->text();
    if (reason != Qt::MouseFocusReason)
        scrollIntoView();
}

bool FieldGuide::takeKey(const QKeyEvent &key)
{
    // The wheel may have moved the field out of sight since it got the focus; nothing is typed unseen.
    if (!key.text().isEmpty())
        scrollIntoView();
    if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    switch (key.key()) {
    case Qt::Key_Up:
        return goToNextField(Direction::Backward);
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return goToNextField(Direction::Forward);
    case Qt::Key_Escape:
        return giveBack();
    default:
        return false;
    }
}

bool FieldGuide::goToNextField(Direction direction) const
{
    QLineEdit *next = nextField(direction);
    if (next)
        next->setFocus(direction == Direction::Forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return next != nullptr;
}

/// In the order of the Tab key, which is that of the eye; null behind the last field and before the first.
QLineEdit *FieldGuide::nextField(Direction direction) const
{
    const auto next = [direction](const QWidget *widget) {
        return direction == Direction::Forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    const auto isOnPage = [this](const QWidget *widget) {
        return widget != m_page && m_page->isAncestorOf(widget);
    };
    for (QWidget *widget = next(m_field); isOnPage(widget) && widget != m_field; widget = next(widget)) {
        auto *field = qobject_cast<QLineEdit *>(widget);
        const bool isUsed = field && field->isEnabled() && field->isVisible();
        if (isUsed && field->findChild<FieldGuide *>(QString(), Qt::FindDirectChildrenOnly))
            return field;
    }
    return nullptr;
}

bool FieldGuide::giveBack()
{
    if (!m_held || *m_held == m_field->text())
        return false;
    m_field->setText(*m_held);
    return true;
}

void FieldGuide::scrollIntoView() const
{
    for (QWidget *around = m_field->parentWidget(); around; around = around->parentWidget()) {
        if (auto *table = qobject_cast<QAbstractItemView *>(around))
            table->scrollTo(table->indexAt(m_field->geometry().center()));
        else if (auto *area = qobject_cast<QScrollArea *>(around))
            area->ensureWidgetVisible(m_field, surroundings, surroundings);
    }
}
