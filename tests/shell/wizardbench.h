#pragma once

#include "shell/wizard/connectionsdialog.h"
#include "tests/shell/contentband.h"
#include "tests/support/person.h"

#include <QTreeWidget>

/// The connection wizard beside the page tree, on a controller of its own, and a person in front of it.
class WizardBench
{
public:
    explicit WizardBench(const QList<Z7Device> &listed = {})
        : controller(band.controller)
        , dialog(new ConnectionsDialog(&band.controller, band.content->window()))
    {
        open(listed);
    }

    /// Opens the dialog as the window does it.
    void open(const QList<Z7Device> &listed)
    {
        controller.cancelCommunication();
        dialog->fill(listed);
        dialog->show();
    }

    bool press(const char *button) const { return Person::press(*dialog, button); }
    bool type(const char *field, const QString &text) const { return Person::type(*dialog, field, text); }
    bool sees(const char *name) const { return ShellTest::sees(*dialog, name); }
    bool isEnabled(const char *name) const { return ShellTest::child(*dialog, name).isEnabled(); }
    QString textOf(const char *label) const { return ShellTest::textOf(*dialog, label); }

    /// The page in the frame; null if there is none.
    QWidget *page() const
    {
        return ShellTest::child(*dialog, "WizardWidget").findChild<QWidget *>({}, Qt::FindDirectChildrenOnly);
    }
    /// Class name of the page in the frame; empty if there is none.
    QString pageName() const
    {
        return page() ? QString::fromLatin1(page()->metaObject()->className()) : QString();
    }

    QTreeWidget &rows() const { return ShellTest::child<QTreeWidget>(*dialog, "LbConnectedDevices"); }
    QStringList rowTexts() const
    {
        QStringList texts;
        for (int i = 0; i < rows().topLevelItemCount(); ++i)
            texts << rows().topLevelItem(i)->text(0);
        return texts;
    }

    ContentBand<> band;
    Z7MainController &controller;
    ConnectionsDialog *const dialog;
};
