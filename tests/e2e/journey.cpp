#include "tests/e2e/journey.h"

#include "tests/support/person.h"
#include "tests/support/tablerows.h"

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>

#include <algorithm>

namespace {

const QStringList driveStates {QStringLiteral("active"), QStringLiteral("inactive"),
    QStringLiteral("active_modified"), QStringLiteral("inactive_modified")};

/// Hears whether a widget is switched off or on.
class SwitchWatch : public QObject
{
public:
    explicit SwitchWatch(QWidget *watched) { watched->installEventFilter(this); }
    bool wasSwitched() const { return m_switched; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_switched = m_switched || event->type() == QEvent::EnabledChange;
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_switched = false;
};

QTreeWidgetItem *childOf(QTreeWidgetItem *drive, const QString &title)
{
    if (title.isEmpty())
        return drive;
    for (int i = 0; i < drive->childCount(); ++i) {
        if (drive->child(i)->text(0) == title)
            return drive->child(i);
    }
    return nullptr;
}

QString lookOf(const QTreeWidgetItem *item)
{
    const QPixmap picture = item->icon(0).pixmap(24);
    const QString drive = Person::pictureOf(picture, QStringLiteral("home-icon_24px_%1.png"), driveStates);
    const QString page = Person::pictureOf(picture, QStringLiteral("table-icon_24px_%1.png"), driveStates);
    return drive + page;
}

bool isDrive(const QTreeWidgetItem *item)
{
    return item->text(0).contains(QLatin1String(" - Z7."));
}

} // namespace

Journey::Journey()
    : m_window(std::make_unique<MainWindow>())
{
    m_window->resize(1366, 700);
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get()))
        qWarning("the window does not show itself");
}

Journey::~Journey()
{
    if (m_window->isVisible())
        closeWindow();
}

bool Journey::closeWindow() const
{
    return m_window->close();
}

// --- connecting
// ------------------------------------------------------------------------------------------------

bool Journey::openWizard() const
{
    return Person::press(*m_window, "BtnConnection") && wizard().isOpen();
}

bool Journey::connectQuickly() const
{
    const WizardUser user = wizard();
    return openWizard() && user.press("BtnQuickConnect")
        && Person::waitUntil([&user] { return user.canPressOk(); }) && user.ok();
}

bool Journey::connectManually(const QString &port, int address, int password) const
{
    const WizardUser user = wizard();
    return openWizard() && user.logOn(port, address, password)
        && Person::waitUntil([&user] { return user.canPressOk(); }) && user.ok();
}

// --- the tree and the pages
// ------------------------------------------------------------------------------------

QTreeWidgetItem *Journey::item(const QString &drive, const QString &title) const
{
    auto *tree = m_window->findChild<QTreeWidget *>(QStringLiteral("MainMenuTree"));
    for (QTreeWidgetItemIterator entry(tree); *entry; ++entry) {
        if ((*entry)->text(0) == drive)
            return childOf(*entry, title);
    }
    return nullptr;
}

bool Journey::showPage(const QString &drive, const QString &title) const
{
    return Person::waitUntil([&] {
        QTreeWidgetItem *wanted = item(drive, title);
        return wanted && clickIsHeard(wanted);
    });
}

// The buttons beside the page are grey while it changes.
bool Journey::clickIsHeard(QTreeWidgetItem *item) const
{
    const SwitchWatch watch(m_window->findChild<QWidget *>(QStringLiteral("DeviceCommButtonFrame")));
    return Person::click(item) && watch.wasSwitched();
}

QString Journey::pageTitle() const
{
    return Person::textOf(*m_window, "LContentTitle");
}

QStringList Journey::drives() const
{
    QStringList list;
    auto *tree = m_window->findChild<QTreeWidget *>(QStringLiteral("MainMenuTree"));
    for (QTreeWidgetItemIterator entry(tree); *entry; ++entry) {
        if (isDrive(*entry))
            list.append((*entry)->text(0) + QStringLiteral(", ") + lookOf(*entry));
    }
    return list;
}

QString Journey::mark(const QString &drive, const QString &title) const
{
    const QTreeWidgetItem *wanted = item(drive, title);
    return wanted ? lookOf(wanted) : QString();
}

// --- the buttons and the bar
// -----------------------------------------------------------------------------------

bool Journey::press(const char *button) const
{
    return Person::press(*m_window, button);
}

QString Journey::conflictLine() const
{
    return Person::textOf(*m_window, "LParamWarning");
}

ControlBar Journey::bar() const
{
    // The wizard has labels of the same names.
    const auto &band = *m_window->findChild<QWidget *>(QStringLiteral("DeviceControlWidget"));
    const auto text = [&band](const char *label) { return Person::textOf(band, label); };
    const auto picture = [&band](const char *label, const QString &pattern, const QStringList &names) {
        return Person::pictureOf(qobject_cast<QLabel *>(Person::seen(band, label)), pattern, names);
    };
    ControlBar bar;
    bar.port = text("LPort");
    bar.usb = picture("LCommStatus", QStringLiteral("usb_%1_24px.png"),
        {QStringLiteral("green"), QStringLiteral("yellow"), QStringLiteral("red")});
    bar.device = text("LDevice");
    bar.lamp = picture("LDeviceStatus", QStringLiteral("%1Icon_16px.png"),
        {QStringLiteral("Green"), QStringLiteral("Yellow"), QStringLiteral("Red"), QStringLiteral("Gray")});
    bar.speed = text("lCurrent");
    bar.current = text("LPower");
    bar.message = text("LLastMessage");
    bar.progress = Person::seen(band, "PgBarComm") != nullptr;
    return bar;
}

// --- the dialogs
// -----------------------------------------------------------------------------------------------

const QDialog &Journey::dialog(const char *name) const
{
    const auto dialogs = m_window->findChildren<QDialog *>(QString::fromLatin1(name));
    if (dialogs.isEmpty())
        qFatal("the window has no dialog %s", name);
    return *dialogs.constLast();
}

bool Journey::tickDrives(const QList<int> &rows) const
{
    auto *list = dialog("DeviceSelectionDialog").findChild<QListWidget *>(QStringLiteral("lstDevices"));
    return std::all_of(rows.begin(), rows.end(), [list](int row) { return Person::tickRow(list, row); });
}

bool Journey::pickDrives(const QList<int> &rows) const
{
    return tickDrives(rows) && Person::press(dialog("DeviceSelectionDialog"), "BtnOK");
}

bool Journey::changePassword(const QString &from, const QString &to) const
{
    const QDialog &asked = dialog("SetPasswordDialog");
    return Person::type(asked, "edOldPassword", from) && Person::type(asked, "edNewPassword_1", to)
        && Person::type(asked, "edNewPassword_2", to) && Person::press(asked, "BtnOK");
}

// --- the table
// -------------------------------------------------------------------------------------------------

QTableWidget *Journey::table() const
{
    return qobject_cast<QTableWidget *>(Person::seen(*m_window, "ParameterTable"));
}

int Journey::rowCount() const
{
    return table() ? table()->rowCount() : 0;
}

int Journey::rowOf(int number) const
{
    return table() ? tableRow(*table(), number) : -1;
}

bool Journey::typeValue(int number, const QString &text, int pauseMs) const
{
    const int row = rowOf(number);
    if (row < 0)
        return false;
    table()->scrollToItem(table()->item(row, TableColumn::Number));
    return Person::type(tableField(*table(), number), text, pauseMs);
}

QLineEdit *Journey::valueField(int number) const
{
    return rowOf(number) < 0 ? nullptr : tableField(*table(), number);
}

TableRow Journey::row(int number) const
{
    const int row = rowOf(number);
    if (row < 0)
        return TableRow();
    const auto text = [this, row](int column) { return table()->item(row, column)->text(); };
    TableRow seen;
    const QLineEdit *field = tableField(*table(), number);
    seen.name = text(TableColumn::Name);
    seen.deviceValue = text(TableColumn::DeviceValue);
    seen.unit = text(TableColumn::Unit);
    seen.remark = text(TableColumn::Remark);
    seen.userValue = field->text();
    seen.writable = field->isEnabled();
    seen.colour = table()->item(row, TableColumn::Number)->background().color();
    seen.bold = field->font().bold();
    return seen;
}
