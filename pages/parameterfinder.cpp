#include "pages/parameterfinder.h"

#include "control/services/language.h"
#include "pages/pagestyle.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QTableWidget>

namespace {

constexpr int inputWidth = 200;

} // namespace

ParameterFinder::ParameterFinder(QTableWidget *table, const Columns &columns, QWidget *parent)
    : QFrame(parent)
    , m_table(table)
    , m_columns(columns)
    , m_prompt(new QLabel(this))
    , m_input(new QLineEdit(this))
    , m_result(new QLabel(this))
    , m_frame(new QFrame(table->viewport()))
{
    setObjectName(QStringLiteral("ParameterFinder"));
    m_prompt->setObjectName(QStringLiteral("FindPrompt"));
    m_input->setObjectName(QStringLiteral("FindInput"));
    m_result->setObjectName(QStringLiteral("FindResult"));
    m_frame->setObjectName(QStringLiteral("FindFrame"));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_prompt);
    layout->addWidget(m_input);
    layout->addWidget(m_result, 1);
    m_prompt->setBuddy(m_input);
    m_input->setFixedWidth(inputWidth);
    m_input->installEventFilter(this);
    connect(m_input, SIGNAL(textChanged(QString)), SLOT(search(QString)));
    m_result->setTextFormat(Qt::PlainText);
    m_result->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_frame->setStyleSheet(QStringLiteral("border: 2px solid %1;").arg(PageStyle::blue().name()));
    m_frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_frame->hide();
    hide();
}

void ParameterFinder::setTexts()
{
    const QString keys = keyboardText("FindKeys",
        "Nummer oder Teil des Namens. Return oder F3: weiter, Umschalt+F3: zurück, Esc: schließen");
    m_prompt->setText(keyboardText("FindPrompt", "Parameter suchen:"));
    m_input->setAccessibleName(m_prompt->text());
    m_input->setAccessibleDescription(keys);
    m_input->setToolTip(keys);
}

void ParameterFinder::addShortcut(int key, const char *slot)
{
    auto *shortcut = new QShortcut(QKeySequence(key), parentWidget());
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, SIGNAL(activated()), this, slot);
}

void ParameterFinder::open()
{
    if (m_prompt->text().isEmpty()) {
        setTexts();
        addShortcut(Qt::Key_F3, SLOT(goForward()));
        addShortcut(Qt::SHIFT + Qt::Key_F3, SLOT(goBack()));
    }
    QWidget *focused = QApplication::focusWidget();
    if (focused != m_input)
        m_focusBefore = focused;
    show();
    m_input->setFocus(Qt::ShortcutFocusReason);
    m_input->selectAll();
    search(m_input->text());
}

bool ParameterFinder::eventFilter(QObject *input, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QFrame::eventFilter(input, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    return takeKey(key->key(), key->modifiers() & ~Qt::KeypadModifier);
}

bool ParameterFinder::takeKey(int key, Qt::KeyboardModifiers modifiers)
{
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (isReturn && (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier))
        step(modifiers == Qt::NoModifier ? 1 : -1);
    else if (key == Qt::Key_Escape && modifiers == Qt::NoModifier)
        leave();
    else
        return false;
    return true;
}

void ParameterFinder::leave()
{
    QWidget *field = fieldOfHit();
    m_frame->hide();
    hide();
    if (field && field->isEnabled())
        field->setFocus(Qt::TabFocusReason);
    else if (m_focusBefore && m_focusBefore->isVisible())
        m_focusBefore->setFocus(Qt::OtherFocusReason);
    else
        m_table->setFocus(Qt::OtherFocusReason);
}

void ParameterFinder::forgetRows()
{
    m_hits.clear();
    m_frame->hide();
    hide();
}

void ParameterFinder::goForward()
{
    step(1);
}

void ParameterFinder::goBack()
{
    step(-1);
}

void ParameterFinder::step(int by)
{
    if (!isVisible() || m_hits.isEmpty())
        return;
    m_hit = (m_hit + by + m_hits.size()) % m_hits.size();
    showHit();
    // Who is at the fields stays at the fields.
    if (!m_input->hasFocus())
        fieldOfHit()->setFocus(Qt::TabFocusReason);
}

QString ParameterFinder::textOf(int row, int column) const
{
    return m_table->item(row, column)->text();
}

QVector<int> ParameterFinder::rowsFor(const QString &wanted) const
{
    QVector<int> rows;
    for (int row = 0; row < m_table->rowCount() && !wanted.isEmpty(); ++row) {
        if (textOf(row, m_columns.number) == wanted)
            rows.prepend(row);
        else if (textOf(row, m_columns.name).contains(wanted, Qt::CaseInsensitive))
            rows.append(row);
    }
    return rows;
}

void ParameterFinder::search(const QString &wanted)
{
    m_hits = rowsFor(wanted.trimmed());
    m_hit = 0;
    if (!m_hits.isEmpty())
        return showHit();
    m_frame->hide();
    say(wanted.trimmed().isEmpty() ? QString() : keyboardText("FindNothing", "Nicht gefunden"));
}

void ParameterFinder::showHit()
{
    const int row = m_hits.at(m_hit);
    showRow(row);
    say(keyboardText("FindHit", "%1 von %2: Parameter %3, %4")
            .arg(QString::number(m_hit + 1), QString::number(m_hits.size()), textOf(row, m_columns.number),
                textOf(row, m_columns.name)));
}

void ParameterFinder::showRow(int row)
{
    m_table->scrollTo(m_table->model()->index(row, m_columns.field));
    m_frame->setGeometry(
        0, m_table->rowViewportPosition(row), m_table->viewport()->width(), m_table->rowHeight(row));
    m_frame->show();
    m_frame->raise();
}

void ParameterFinder::say(const QString &text)
{
    if (m_result->text() == text)
        return;
    m_result->setText(text);
    PageStyle::paintText(m_result, m_hits.isEmpty() ? PageStyle::warningRed() : QColor(Qt::black));
    QAccessibleEvent spoken(m_result, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

QWidget *ParameterFinder::fieldOfHit() const
{
    return m_hits.isEmpty() ? nullptr : m_table->cellWidget(m_hits.at(m_hit), m_columns.field);
}
