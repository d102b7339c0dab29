#pragma once

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/pages/pagetests.h"

#include <QFrame>
#include <QIntValidator>
#include <QLabel>
#include <QPushButton>

#include <memory>

/// One of the program's pages as it is shown, with a person at its fields.
class ShownPage
{
public:
    explicit ShownPage(int number)
        : page(createDataPage(number))
        , modified(page.get(), SIGNAL(parameterModified(Z7DeviceParam)))
        , deleted(page.get(), SIGNAL(parameterDeleted(Z7DeviceParam)))
    {
    }

    /// What the controller does to show the page for a drive.
    void showFor(const Z7Device &drive)
    {
        page->softwareVersion = drive.softwareVersion;
        page->initPage();
        page->DeviceUpdate(drive);
        page->clearUserValues();
        page->show();
    }

    template<typename Widget>
    Widget *child(const QString &name) const
    {
        return page->findChild<Widget *>(name);
    }
    QLineEdit *field(const QString &name) const { return child<QLineEdit>(name); }
    QLabel *label(const QString &name) const { return child<QLabel>(name); }
    QString text(const QString &name) const { return label(name)->text(); }

    std::unique_ptr<Z7DataWidget> page;
    QSignalSpy modified;
    QSignalSpy deleted;
};

/// A drive of version V123 that has these parameters.
inline Z7Device driveWith(const QList<Z7DeviceParam> &params)
{
    Z7Device drive = deviceWith(params);
    drive.setSoftwareVersion("V123");
    return drive;
}

inline Z7Device inModes(Z7Device drive, int mode1, int mode2)
{
    drive.operationMode1 = mode1;
    drive.operationMode2 = mode2;
    return drive;
}
