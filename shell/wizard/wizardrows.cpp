#include "shell/wizard/wizardrows.h"

#include "control/services/language.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "shell/portwording.h"

#include <QHBoxLayout>
#include <QLabel>

#include <memory>

namespace WizardRows {

namespace {

constexpr int rowMargin = 2;
constexpr int stretch = 100;

} // namespace

QHBoxLayout *addRow(QBoxLayout *rows)
{
    auto *holder = new QWidget;
    auto *row = new QHBoxLayout(holder);
    row->setMargin(rowMargin);
    row->setSpacing(rowMargin);
    rows->addWidget(holder);
    return row;
}

void removeRows(QBoxLayout *rows)
{
    while (const std::unique_ptr<QLayoutItem> item {rows->takeAt(0)})
        delete item->widget();
}

void endRow(QHBoxLayout *row)
{
    row->addStretch(stretch);
}

void showOutcome(QLabel *status, bool isGood)
{
    status->setPixmap(
        PageStyle::smallPixmap(isGood ? ":/images/tick-icon_16px.png" : ":/images/stop-icon_16px.png"));
    Keyboard::setName(status,
        isGood ? toolTipText("OutcomeGood", "erfolgreich") : toolTipText("OutcomeBad", "nicht erfolgreich"));
}

void tellOfPort(QWidget *described, const PortState &port)
{
    const QString known = PortWording::toolTip(port);
    described->parentWidget()->setToolTip(known);
    described->setAccessibleDescription(known);
}

QLabel *addLabel(QHBoxLayout *row, const QString &text)
{
    auto *label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    row->addWidget(label);
    return label;
}

} // namespace WizardRows
