#pragma once

#include "shell/mainwindow.h"
#include "shell/wizard/connectionsdialog.h"
#include "tests/shell/shelltest.h"
#include "tests/shell/simulateddrives.h"
#include "tests/support/person.h"

#include <QTreeWidget>
#include <QtTest>

#include <algorithm>
#include <memory>

/// The whole window with drives on a bus that costs no time, and a person in front of it.
class DrivenWindow
{
public:
    /// Drives at these addresses behind the first port, each with its address as password.
    explicit DrivenWindow(const QList<int> &addresses)
        : bus(drives.plug(ShellTest::firstPort))
        , window(std::make_unique<MainWindow>())
        , wizard(window->findChild<ConnectionsDialog *>())
    {
        for (int address : addresses) {
            z7sim::DriveConfig drive;
            drive.address = address;
            bus.addDrive(drive);
        }
        window->show();
    }

    bool press(const char *button) const { return Person::press(*window, button); }
    QTreeWidget &tree() const { return ShellTest::child<QTreeWidget>(*window, "MainMenuTree"); }
    QTreeWidgetItem *item(int page, int address) const
    {
        return ShellTest::itemOf(tree(), page, ShellTest::drive(address).deviceId());
    }
    bool click(int page, int address) const { return Person::click(item(page, address)); }

    /// Begins the log-on to a drive on the manual way.
    bool logOn(int address) const
    {
        return Person::press(*wizard, "BtnManual")
            && Person::type(*wizard, "EdAdress", QString::number(address))
            && Person::type(*wizard, "EdPassword", QString::number(address))
            && Person::press(*wizard, "BtnNext");
    }
    /// Connects these drives with the wizard; false if that fails.
    bool connectDrives(const QList<int> &addresses) const
    {
        if (!press("BtnConnection"))
            return false;
        for (int address : addresses) {
            if (!logOn(address) || !Person::waitUntil([this] { return hasConnected(); })
                || !Person::press(*wizard, "BtnNext"))
                return false;
        }
        return Person::press(*wizard, "BtnOK");
    }
    bool hasConnected() const { return ShellTest::child(*wizard, "BtnOK").isEnabled(); }
    /// True once more has been on the wire than now.
    bool waitForTraffic() const
    {
        const int seen = bus.log().size();
        return QTest::qWaitFor([this, seen] { return bus.log().size() > seen; });
    }
    /// True once the record of a polling pass that begins from now on has come.
    bool waitForAPass() const
    {
        const int begun = statusRequests();
        // The next pass but one begins when that record has been taken.
        return QTest::qWaitFor([this, begun] { return statusRequests() >= begun + 2; });
    }
    /// True if nothing is on the wire for a while.
    bool staysSilent(int ms) const
    {
        const int seen = bus.log().size();
        QTest::qWait(ms);
        return bus.log().size() == seen;
    }

    int statusRequests() const
    {
        // 05 is the request for the status; every pass has one.
        const QVector<z7sim::WireEntry> log = bus.log();
        return int(std::count_if(log.begin(), log.end(), [](const z7sim::WireEntry &entry) {
            return entry.direction == z7sim::WireEntry::Request && entry.bytes.startsWith('\x05');
        }));
    }

    SimulatedDrives drives;
    z7sim::SimulatedBus &bus;
    std::unique_ptr<MainWindow> window;
    ConnectionsDialog *const wizard;
};
