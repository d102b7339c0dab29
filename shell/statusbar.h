#pragma once

#include "shell/statusfieldrow.h"

class Z7MainController;

/// The fields of the window's status bar: how fresh the shown values are, what became of the last operation,
/// what did not run, what was never read, what is pending, and what is wrong with ports and drives. It says
/// what the controller's knowledge says, when that says so, and asks for what a click is to open.
class StatusBar : public StatusFieldRow
{
    Q_OBJECT

public:
    /// The controller stays with the caller and outlives the bar.
    explicit StatusBar(Z7MainController *controller, QWidget *parent = nullptr);

signals:
    /// The course of the live values.
    void courseWanted();
    /// The list of changes.
    void changesWanted();
    /// The table of all parameters.
    void tableWanted();
    /// The wizard that connects drives.
    void wizardWanted();
    /// The folder with the parameter definitions.
    void folderWanted();

public slots:
    void sayFresh();
    void sayLastOperation();
    void sayNeverRun();
    void sayNeverRead();
    void sayPending();
    void sayPort();
    void sayDrives();

private slots:
    void dismissNeverRun();
    void undo();

private:
    void followKnowledge();
    void followClicks();

    Z7MainController *const m_controller;
    StatusField *const m_fresh;
    StatusField *const m_lastOperation;
    StatusField *const m_neverRun;
    StatusField *const m_neverRead;
    StatusField *const m_pending;
    StatusField *const m_undo;
    StatusField *const m_port;
    StatusField *const m_drives;
    StatusField *const m_definitions;
};
