#pragma once

#include "control/services/language.h"
#include "tests/pages/shownpage.h"
#include "tests/support/workingfolder.h"

#include <QtTest>

#include <algorithm>

/// A page of the program with the definitions that are shipped, shown for a drive that holds its factory
/// values, with a person at its fields. Needs Z7_SOURCE_DIR, the folder of the sources.
class SamplePage : public ShownPage
{
public:
    explicit SamplePage(int number)
        : ShownPage(number)
    {
        WorkingFolder::write("Z7ParamDef_V123.csv",
            WorkingFolder::read(QStringLiteral(Z7_SOURCE_DIR "/samples/Z7ParamDef_V123.csv")));
        if (!definitions().load())
            qFatal("no definitions");
        showFor(drive());
        page->activateWindow();
        if (!QTest::qWaitForWindowActive(page.get()))
            qFatal("the page does not come to the front");
    }

    static Z7ParamDefinitions &definitions() { return *Z7Services::instance()->definitions("V123"); }
    /// A drive as it left the factory, every parameter read.
    static Z7Device drive()
    {
        Z7Device drive;
        drive.setSoftwareVersion("V123");
        Z7DeviceParamSet params = definitions().emptyParameterSet();
        for (Z7DeviceParam &param : params.params) {
            param.value = definitions().paramDefault(param.number);
            param.valid = param.hasValue = true;
        }
        drive.setParameterSet(params);
        drive.setAccessGranted(true);
        return drive;
    }

    /// The fields that a person can type into, as the eye finds them: by lines from top to bottom, in a line
    /// from left to right.
    QList<QLineEdit *> fieldsAsSeen() const
    {
        QList<QLineEdit *> fields;
        for (QLineEdit *field : page->findChildren<QLineEdit *>()) {
            if (field->isVisible() && field->isEnabled() && !field->isReadOnly())
                fields.append(field);
        }
        std::sort(fields.begin(), fields.end(), [this](const QLineEdit *a, const QLineEdit *b) {
            const QPoint first = a->mapTo(page.get(), QPoint());
            const QPoint second = b->mapTo(page.get(), QPoint());
            return first.y() != second.y() ? first.y() < second.y() : first.x() < second.x();
        });
        return fields;
    }
};

/// The pages with fields for parameters.
inline void addPagesWithFields()
{
    QTest::addColumn<int>("page");
    for (const int number : {PageNumber::SpeedRegulation, PageNumber::Accelerations,
             PageNumber::CurrentLimits, PageNumber::FixedResolutions, PageNumber::Positioning,
             PageNumber::Output, PageNumber::OperationsMode, PageNumber::ParameterTable,
             PageNumber::CalibrationRotations, PageNumber::CalibrationCurrent, PageNumber::FixResistance,
             PageNumber::VoltageLimits, PageNumber::RS485})
        QTest::newRow(createDataPage(number)->metaObject()->className()) << int(number);
}
