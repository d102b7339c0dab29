#pragma once

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/pages/pagetests.h"

#include <QGroupBox>
#include <QLabel>

#include <memory>

/// What tells the two scaling curves of the analogue input apart.
struct CurveData
{
    int page;
    const char *section;
    int firstX; ///< parameter of X1; X2 and X3 follow
    int firstY; ///< parameter of Y0; Y1 to Y4 follow
    int lowestY;
    int highestY;
    const char *yUnit;

    static CurveData of(int page)
    {
        if (page == PageNumber::CalibrationRotations)
            return {page, "DialogValueCalibrationRotations", 0x0B, 0x0E, -30000, 29999, "1/min"};
        return {page, "DialogValueCalibrationCurrent", 0x26, 0x29, 0, 100, "%"};
    }

    /// The parameter of a place, "X1" to "X3" or "Y0" to "Y4".
    int number(const QString &place) const
    {
        const int point = QString(place.at(1)).toInt();
        return place.startsWith('X') ? firstX + point - 1 : firstY + point;
    }
};

/// The places that are parameters, in the order of their numbers.
inline const QStringList curvePlaces {"X1", "X2", "X3", "Y0", "Y1", "Y2", "Y3", "Y4"};

/// A scaling curve as it is shown, with a person at its fields.
class ShownCurve
{
public:
    explicit ShownCurve(int number)
        : data(CurveData::of(number))
        , page(createDataPage(number))
        , modified(page.get(), SIGNAL(parameterModified(Z7DeviceParam)))
        , deleted(page.get(), SIGNAL(parameterDeleted(Z7DeviceParam)))
    {
    }

    /// Gives the curve's parameters limits that are none of the page's, and a unit that only those parameters
    /// bear whose unit is shown.
    void define(const QString &version = QStringLiteral("V123")) const
    {
        for (const QString &place : curvePlaces) {
            const QString sign = place.startsWith('X') ? "Unsigned" : "Signed";
            const QString unit = place == "X1" ? "Digit" : place == "Y0" ? data.yUnit : "none";
            const QString line = "%1;Support point;%2;0;5;10;%3;1;rw;0;";
            defineParameters(version, {line.arg(QString::number(data.number(place)), unit, sign)});
        }
    }

    /// A drive with these X1 to X3 and Y0 to Y4.
    Z7Device drive(const QList<int> &values) const
    {
        QList<Z7DeviceParam> params;
        for (int i = 0; i < values.size(); ++i)
            params.append(param(curvePlaces.at(i), values.at(i)));
        Z7Device drive = deviceWith(params);
        drive.setSoftwareVersion("V123");
        return drive;
    }
    /// The drive that most tests show.
    Z7Device drive() const { return drive({200, 500, 800, -1000, 0, 500, 1000, 2000}); }

    Z7DeviceParam param(const QString &place, int value) const
    {
        return readParam(data.number(place), value);
    }

    /// What the controller does to show a page for a drive.
    void showFor(const Z7Device &drive, const Z7DeviceParamSet &changes = Z7DeviceParamSet())
    {
        page->softwareVersion = drive.softwareVersion;
        page->initPage();
        page->DeviceUpdate(drive);
        page->clearUserValues();
        page->applyUserParams(changes);
        page->show();
    }

    template<typename Widget = QWidget>
    Widget *child(const QString &name) const
    {
        auto *found = page->findChild<Widget *>(name);
        if (!found)
            qFatal("no %s", qPrintable(name));
        return found;
    }
    QLineEdit *field(const QString &place) const { return child<QLineEdit>("edVal" + place + "_User"); }
    QLabel *deviceValue(const QString &place) const { return child<QLabel>("edVal" + place + "_Device"); }
    /// The text of a label or the title of a box.
    QString text(const QString &name) const
    {
        const QWidget *widget = child(name);
        return widget->property(qobject_cast<const QGroupBox *>(widget) ? "title" : "text").toString();
    }
    int reports() const { return modified.count() + deleted.count(); }

    const CurveData data;
    const std::unique_ptr<Z7DataWidget> page;
    QSignalSpy modified;
    QSignalSpy deleted;
};

/// Each test of a curve runs for both pages: the rows for initTestCase_data, and the page of the running row.
inline void addCurvePages()
{
    QTest::addColumn<int>("page");
    QTest::newRow("speed") << int(PageNumber::CalibrationRotations);
    QTest::newRow("current") << int(PageNumber::CalibrationCurrent);
}
inline int curvePage()
{
    QFETCH_GLOBAL(int, page);
    return page;
}
