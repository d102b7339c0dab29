#include "shell/changesdialog.h"

#include "control/services/language.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

enum Column { Number, Name, Actual, Wanted, Limits, ColumnCount };

QString limitsOf(const PendingChange &change)
{
    return change.hasLimits ? QStringLiteral("%1 ... %2").arg(change.minimum).arg(change.maximum) : QString();
}

/// Units stand behind the names, so that the numbers can be compared at a glance.
QString nameOf(const PendingChange &change)
{
    const QString name = definitionText(change.name);
    return change.unit.isEmpty() ? name : name + QStringLiteral(" [%1]").arg(definitionText(change.unit));
}

QStringList textsOf(const PendingChange &change)
{
    return {QString::number(change.number), nameOf(change),
        change.hasActual ? QString::number(change.actual) : QString(), QString::number(change.wanted),
        limitsOf(change)};
}

} // namespace

ChangesDialog::ChangesDialog(QWidget *parent)
    : QDialog(parent)
    , m_table(new QTableWidget(this))
    , m_showPage(new QPushButton(statusBarText("ShowPage", "Zur Seite"), this))
{
    setObjectName(QStringLiteral("ChangesDialog"));
    createTable();
    auto *buttons = new QDialogButtonBox(this);
    m_showPage->setObjectName(QStringLiteral("BtnShowPage"));
    m_showPage->setEnabled(false);
    buttons->addButton(m_showPage, QDialogButtonBox::ActionRole);
    QPushButton *close = buttons->addButton(commonText("Close", "Schließen"), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("BtnClose"));
    // Return goes to the page from the table, too.
    m_showPage->setDefault(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(buttons);
    connect(m_showPage, SIGNAL(clicked()), SLOT(askForPage()));
    connect(m_table, SIGNAL(cellDoubleClicked(int, int)), SLOT(askForPage(int)));
    connect(buttons, SIGNAL(rejected()), SLOT(reject()));
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    const int line = fontMetrics().height();
    resize(QSize(50 * line, 20 * line).boundedTo(room * 3 / 4));
}

void ChangesDialog::createTable()
{
    m_table->setObjectName(QStringLiteral("ChangesTable"));
    m_table->setAccessibleName(statusBarText("ChangesTitle", "Änderungen"));
    m_table->setColumnCount(ColumnCount);
    m_table->setHorizontalHeaderLabels({statusBarText("ChangeNumber", "Nr."),
        statusBarText("ChangeName", "Parameter"), statusBarText("ChangeActual", "Ist-Wert"),
        statusBarText("ChangeWanted", "Soll-Wert"), statusBarText("ChangeLimits", "Grenzen")});
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(Name, QHeaderView::Stretch);
}

void ChangesDialog::setChanges(const QString &drive, const QVector<PendingChange> &changes)
{
    setWindowTitle(statusBarText("ChangesOf", "Änderungen von %1").arg(drive));
    const int number = chosen() < 0 ? -1 : m_shown[chosen()].number;
    int current = qBound(0, m_table->currentRow(), qMax(0, changes.size() - 1));
    m_shown = changes;
    m_table->setRowCount(changes.size());
    for (int row = 0; row < changes.size(); ++row) {
        fillRow(row, changes[row]);
        if (changes[row].number == number)
            current = row;
    }
    m_table->setCurrentCell(current, Number);
    m_showPage->setEnabled(!changes.isEmpty());
}

void ChangesDialog::fillRow(int row, const PendingChange &change)
{
    const QStringList texts = textsOf(change);
    for (int column = 0; column < ColumnCount; ++column)
        cell(row, column)->setText(texts[column]);
    QTableWidgetItem *name = cell(row, Name);
    name->setToolTip(name->text());
    QTableWidgetItem *wanted = cell(row, Wanted);
    wanted->setIcon(change.isOutOfLimits ? QIcon(QStringLiteral(":/images/YellowIcon_16px.png")) : QIcon());
    const QString finding = change.isOutOfLimits
        ? statusBarText("ChangeOutOfLimits", "Der Soll-Wert liegt außerhalb der Grenzen")
        : QString();
    wanted->setToolTip(finding);
    wanted->setData(Qt::AccessibleDescriptionRole, finding);
}

QTableWidgetItem *ChangesDialog::cell(int row, int column)
{
    QTableWidgetItem *found = m_table->item(row, column);
    if (found)
        return found;
    auto *made = new QTableWidgetItem;
    if (column != Name)
        made->setTextAlignment(int(Qt::AlignRight) | int(Qt::AlignVCenter));
    m_table->setItem(row, column, made);
    return made;
}

int ChangesDialog::chosen() const
{
    const int row = m_table->currentRow();
    return row < m_shown.size() ? row : -1;
}

void ChangesDialog::askForPage()
{
    if (chosen() >= 0)
        askForPage(chosen());
}

void ChangesDialog::askForPage(int row)
{
    emit pageWanted(m_shown[row].number);
}
