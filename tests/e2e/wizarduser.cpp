#include "tests/e2e/wizarduser.h"

#include "tests/support/person.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace {

const QStringList marks {QStringLiteral("tick"), QStringLiteral("stop")};
const QString markPattern = QStringLiteral("%1-icon_16px.png");

template<typename Widget>
QList<Widget *> onScreen(const QWidget *parent)
{
    QList<Widget *> visible;
    for (Widget *widget : parent->findChildren<Widget *>()) {
        if (widget->isVisible())
            visible.append(widget);
    }
    return visible;
}

/// The rows in the scroll area of a page, from top to bottom.
QList<QWidget *> rowsOf(const QWidget *dialog)
{
    QList<QWidget *> rows;
    const auto *frame = dialog->findChild<QWidget *>(QStringLiteral("WizardWidget"));
    const auto *layout = frame->findChild<QVBoxLayout *>(QStringLiteral("verticalLayout_3"));
    for (int i = 0; layout && i < layout->count(); ++i)
        rows.append(layout->itemAt(i)->widget());
    return rows;
}

QString markIn(const QWidget *row)
{
    for (const QLabel *label : onScreen<QLabel>(row)) {
        const QString mark = Person::pictureOf(label, markPattern, marks);
        if (!mark.isEmpty())
            return mark;
    }
    return QString();
}

QString outcomeOf(const QCheckBox *drive, const QString &mark)
{
    if (mark.isEmpty() && !drive->isChecked() && !drive->isEnabled())
        return QString();
    if (mark == QLatin1String("tick") && drive->isChecked() && drive->isEnabled())
        return QStringLiteral(": connected");
    if (mark == QLatin1String("stop") && !drive->isChecked() && !drive->isEnabled())
        return QStringLiteral(": refused");
    return QStringLiteral(": %1, %2, %3")
        .arg(mark, drive->isChecked() ? QStringLiteral("ticked") : QStringLiteral("not ticked"),
            drive->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("grey"));
}

QString joinedTexts(const QWidget *row)
{
    QStringList texts;
    for (const QLabel *label : onScreen<QLabel>(row))
        texts.append(label->text().trimmed());
    texts.removeAll(QString());
    return texts.join(QLatin1Char(' '));
}

} // namespace

QWidget *WizardUser::dialog() const
{
    return m_window.findChild<QWidget *>(QStringLiteral("ConnectionsDialog"));
}

bool WizardUser::isOpen() const
{
    return dialog()->isVisible();
}

bool WizardUser::press(const char *button) const
{
    return Person::press(*dialog(), button);
}

bool WizardUser::next() const
{
    return press("BtnNext");
}

bool WizardUser::previous() const
{
    return press("BtnPrevious");
}

bool WizardUser::ok() const
{
    return press("BtnOK");
}

bool WizardUser::close() const
{
    return press("BtnCancel");
}

bool WizardUser::canPressOk() const
{
    return dialog()->findChild<QPushButton *>(QStringLiteral("BtnOK"))->isEnabled();
}

bool WizardUser::canPressNext() const
{
    const QWidget *button = Person::seen(*dialog(), "BtnNext");
    return button && button->isEnabled();
}

bool WizardUser::logOn(const QString &port, int address, int password) const
{
    return press("BtnManual") && choosePort(port) && typeAddress(address) && typePassword(password) && next();
}

bool WizardUser::choosePort(const QString &name) const
{
    return Person::choose(qobject_cast<QComboBox *>(Person::seen(*dialog(), "cbPorts")), name);
}

bool WizardUser::typeAddress(int address) const
{
    return Person::type(*dialog(), "EdAdress", QString::number(address));
}

bool WizardUser::typePassword(int password) const
{
    return Person::type(*dialog(), "EdPassword", QString::number(password));
}

QStringList WizardUser::offeredPorts() const
{
    QStringList texts;
    const auto *ports = qobject_cast<QComboBox *>(Person::seen(*dialog(), "cbPorts"));
    for (int i = 0; ports && i < ports->count(); ++i)
        texts.append(ports->itemText(i));
    return texts;
}

QStringList WizardUser::triedDrives() const
{
    QStringList rows;
    for (const QWidget *row : rowsOf(dialog())) {
        if (const auto *drive = row->findChild<QCheckBox *>())
            rows.append(drive->text() + outcomeOf(drive, markIn(row)));
        else
            rows.append(joinedTexts(row));
    }
    return rows;
}

bool WizardUser::tick(const QString &drive) const
{
    for (const QWidget *row : rowsOf(dialog())) {
        auto *box = row->findChild<QCheckBox *>();
        if (box && box->text() == drive)
            return Person::tick(box);
    }
    return false;
}

QStringList WizardUser::scannedPorts() const
{
    QStringList rows;
    for (const QWidget *row : rowsOf(dialog())) {
        const QString mark = markIn(row);
        rows.append(joinedTexts(row) + (mark.isEmpty() ? QString() : QStringLiteral(", ") + mark));
    }
    return rows;
}

bool WizardUser::abort() const
{
    for (const QWidget *row : rowsOf(dialog())) {
        auto *button = row->findChild<QPushButton *>();
        if (button && button->isVisible())
            return Person::press(button);
    }
    return false;
}

QStringList WizardUser::drives() const
{
    QStringList list;
    const auto *tree = dialog()->findChild<QTreeWidget *>(QStringLiteral("LbConnectedDevices"));
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = tree->topLevelItem(i);
        const QString state = Person::pictureOf(item->icon(0).pixmap(24),
            QStringLiteral("home-icon_24px_%1.png"), {QStringLiteral("active"), QStringLiteral("inactive")});
        list.append(item->text(0) + QStringLiteral(", ") + state);
    }
    return list;
}

bool WizardUser::chooseDrive(int row) const
{
    const auto *tree = dialog()->findChild<QTreeWidget *>(QStringLiteral("LbConnectedDevices"));
    QTreeWidgetItem *item = tree->topLevelItem(row);
    return Person::click(item) && item->isSelected();
}
