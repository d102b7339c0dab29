#pragma once

#include "tests/shell/connectedwindow.h"

#include <QMessageBox>

#include <functional>

/// All that the program shows: the window, the steps of the wizard, every page, the dialogs, a box with a
/// question, menus, a list that drops down and a tool tip, one after the other, with two drives and the
/// definitions of the samples.
class EveryView
{
public:
    /// Told of each view: what it is, and its window.
    using Look = std::function<void(const QString &name, const QWidget &window)>;

    /// `language` is one of those that are shipped. Needs an empty working folder and fresh services.
    explicit EveryView(const QString &language);

    /// Shows everything once; false if a step did not succeed.
    bool show(const Look &look);

    MainWindow &window() const { return *m_desk->window; }

private:
    bool showWizard() const;
    bool showPages() const;
    bool showPage(int page) const;
    bool showConflictAndError() const;
    bool showDialogs() const;
    bool showBox() const;
    void showMenus() const;
    void showToolTip() const;
    void look(const QString &name, const QWidget &window) const;

    std::unique_ptr<ConnectedWindow> m_desk;
    Look m_look;
};
