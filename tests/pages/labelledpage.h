#pragma once

#include "pages/labelleddatawidget.h"
#include "tests/pages/pagetests.h"

#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>

/// A page of the tests' own, with one field of each kind that a labelled page may have:
///
///     3     a number of one digit, its name on the form
///     0x1E  signed, shown in a second field too
///     0x3C  its widgets bear another stem than the number
///     0x53  read-only
class LabelledPage : public LabelledDataWidget
{
    Q_OBJECT

public:
    LabelledPage()
        : LabelledDataWidget(TextSection("DialogTest"), "", nullptr)
    {
        addWidgets("Param0x03");
        addWidget<QLabel>("lParam0x03ParamName");
        addWidgets("Param0x1E");
        addWidgets("Param0x1E", "_2");
        addWidgets("Revolution");
        addWidgets("Param0x53");
        addWidget<QLabel>("lFormDescription");
        addWidget<QLabel>("lIntro");
        addParam(0x03);
        addParam(0x1E);
        addSecondField(0x1E, 0x9999);
        addParam(0x3C, "Revolution");
        addParam(0x53);
    }

    QLineEdit *field(const QString &stem, const QString &suffix = {}) const
    {
        return findChild<QLineEdit *>("ed" + stem + "User" + suffix);
    }
    QLabel *deviceLabel(const QString &stem, const QString &suffix = {}) const
    {
        return findChild<QLabel *>("l" + stem + "Device" + suffix);
    }
    QLabel *label(const QString &name) const { return findChild<QLabel *>(name); }
    const QIntValidator *validator(const QString &stem) const
    {
        return qobject_cast<const QIntValidator *>(field(stem)->validator());
    }

    /// What the controller does to show a page for a drive.
    void showFor(const Z7Device &shown)
    {
        softwareVersion = shown.softwareVersion;
        initPage();
        DeviceUpdate(shown);
        clearUserValues();
        show();
    }

private:
    template<typename Widget>
    void addWidget(const QString &name)
    {
        (new Widget(this))->setObjectName(name);
    }
    void addWidgets(const QString &stem, const QString &suffix = {})
    {
        addWidget<QLineEdit>("ed" + stem + "User" + suffix);
        addWidget<QLabel>("l" + stem + "Device" + suffix);
        addWidget<QLabel>("l" + stem + "Unit" + suffix);
    }
};

/// The definitions of the page's parameters in version V123. In V200 parameter 3 has other limits.
inline void definePageParameters()
{
    defineParameters("V123",
        {"3;Rampe;ms;5;10;500;Unsigned;1;rw;0;", "30;Drehzahl;1/min;0;-6000;6000;Signed;1;rw;0;",
            "60;Umdrehungen;U;0;0;99;Unsigned;1;rw;0;", "83;Seriennummer;;0;;;Unsigned;1;r;0;"});
    defineParameters("V200", {"3;Rampe;ms;5;0;99;Unsigned;1;rw;0;"});
}

/// The drive that most tests show: version V123, each parameter read.
inline Z7Device pageDrive()
{
    Z7Device drive =
        deviceWith({readParam(3, 250), readParam(30, -1500), readParam(60, 7), readParam(83, 777)});
    drive.setSoftwareVersion("V123");
    return drive;
}
