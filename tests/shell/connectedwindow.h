#pragma once

#include "control/services/options.h"
#include "control/services/services.h"
#include "shell/deviceselectiondialog.h"
#include "tests/shell/drivenwindow.h"
#include "tests/support/person.h"

#include <QLineEdit>
#include <QListWidget>

/// The window with its drives connected and the fixed speeds of the first one shown. Polling passes follow
/// each other quickly.
class ConnectedWindow : public DrivenWindow
{
public:
    /// The page with the field of parameter 0x17, whose factory value is 1200.
    static constexpr int fixedSpeeds = 5;
    static constexpr int currentLimits = 4;

    explicit ConnectedWindow(const QList<int> &addresses)
        : DrivenWindow(addresses)
    {
        Z7Services::instance()->options()->setPollingInterval(20);
    }

    /// Connects the drives; false if one is not there. The first pass of polling comes a second later.
    bool begin(const QList<int> &addresses) const
    {
        return QTest::qWaitForWindowActive(window.get()) && connectDrives(addresses)
            && showDrive(addresses.first());
    }
    bool showDrive(int address) const { return showPage(fixedSpeeds, "Festdrehzahlen", address); }
    /// A person clicks until the tree takes it, which it does at the next record.
    bool showPage(int page, const char *title, int address) const
    {
        return QTest::qWaitFor([&] {
            click(page, address);
            return ShellTest::textOf(*window, "LContentTitle") == QString::fromUtf8(title)
                && ShellTest::textOf(*window, "LDevice") == shortDeviceName(ShellTest::drive(address));
        });
    }

    /// The user's value on the shown page.
    QString userValue() const { return ShellTest::child<QLineEdit>(*window, "edParam0x17User").text(); }
    bool change(const QString &value) const { return Person::type(*window, "edParam0x17User", value); }
    /// The pending change of a drive, as its page shows it when it is shown anew; "?" if that fails.
    QString pendingValue(int address) const
    {
        // The field of the shown page may hold what has been typed and is pending no more.
        const bool isShownAnew = showPage(currentLimits, "Stromgrenzen", address) && showDrive(address);
        return isShownAnew ? userValue() : QStringLiteral("?");
    }

    /// The dialog in which drives were picked last.
    DeviceSelectionDialog &selection() const
    {
        return *window->findChildren<DeviceSelectionDialog *>().constLast();
    }
    QListWidget &rows() const { return ShellTest::child<QListWidget>(selection(), "lstDevices"); }
    QStringList offeredDrives() const
    {
        QStringList texts;
        for (int row = 0; row < rows().count(); ++row)
            texts.append(rows().item(row)->text());
        return texts;
    }
    /// Ticks these rows and confirms.
    bool pick(const QList<int> &rowNumbers) const
    {
        for (int row : rowNumbers)
            Person::tickRow(&rows(), row);
        return Person::press(selection(), "BtnOK");
    }

    /// The requests with this command byte that were on the wire, oldest first, as hex bytes.
    QByteArrayList requests(char command)
    {
        QByteArrayList found;
        for (const QByteArray &request : drives.requests(ShellTest::firstPort)) {
            if (request.startsWith(QByteArray(1, command).toHex()))
                found.append(request);
        }
        return found;
    }
};
