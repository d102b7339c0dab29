#pragma once

#include <QStringList>
#include <QWidget>

/// A person at the dialog that connects drives. A hand returns false, with a warning, where there is nothing
/// to press.
class WizardUser
{
public:
    /// The window stays with the caller.
    explicit WizardUser(const QWidget &window)
        : m_window(window)
    {
    }

    bool isOpen() const;

    /// "BtnQuickConnect", "BtnManual", "BtnScanPort", "BtnScanAllPorts", "BtnRemoveConnection".
    bool press(const char *button) const;
    bool next() const;
    bool previous() const;
    /// Hands the drives over; messages that follow must be answered by somebody else.
    bool ok() const;
    bool close() const;
    bool canPressOk() const;
    bool canPressNext() const;

    /// The way by hand up to the log-on of a drive.
    bool logOn(const QString &port, int address, int password) const;

    bool choosePort(const QString &name) const;
    bool typeAddress(int address) const;
    bool typePassword(int password) const;
    /// The entries of the list of ports, empty if there is none on the screen.
    QStringList offeredPorts() const;

    /// The rows of the page that tries the drives: "Port0 - Z7.1: connected", ": refused", or nothing behind
    /// the name of a drive that has not been tried yet. A row of any other look tells it.
    QStringList triedDrives() const;
    /// Takes the tick off, or puts it on, before a drive in that list.
    bool tick(const QString &drive) const;

    /// The rows of the page that scans: "ttyUSB0: 3 Gerät(e) erkannt, tick", "ttyUSB1: Scanning...".
    QStringList scannedPorts() const;
    /// Presses the one button that stops the scan; false while there is none.
    bool abort() const;

    /// The drives in the tree of the dialog: "Port0 - Z7.1, active".
    QStringList drives() const;
    bool chooseDrive(int row) const;

private:
    QWidget *dialog() const;

    const QWidget &m_window;
};
