// The objects of the pages by name, on the pages as they are built: some come from forms that pages share.

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/forms/formfile.h"
#include "tests/support/workingfolder.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QtTest>

namespace {

struct Objects
{
    int page;
    const char *kind;
    const char *names; ///< separated by blanks
};

using namespace PageNumber;

const char *const topLabels = "lFormDescription lIntro";
const char *const modeLabels = "lOperationsModeIntro lCurrentOperationsMode LCurrentOperationsModeTxt "
                               "lSwitchOperationsModeInfo";
const char *const curveLabels =
    "LNameP0 LNameP1 LNameP2 LNameP3 LNameP4 edValX0_Device edValX1_Device "
    "edValX2_Device edValX3_Device edValX4_Device edValY0_Device edValY1_Device "
    "edValY2_Device edValY3_Device edValY4_Device lDevice lUser lXDevice lYDevice "
    "lXUser lYUser lColorDevice lColorUser lDeviceLegend lUserLegend";
const char *const curveFields = "edValX0_User edValX1_User edValX2_User edValX3_User edValX4_User "
                                "edValY0_User edValY1_User edValY2_User edValY3_User edValY4_User";

/// What is found by name on the pages, besides the widgets of the parameters. A page that gets its content
/// gets its lines here.
const QVector<Objects> table {
    {DeviceStatus, "QFrame", "topFrame"},
    {DeviceStatus, "QGroupBox",
        "gbDevice gbMotorStatus gbRotations gbPower gbPosition gbTemperature gbOutput gbInput "
        "gbAnalogInputA1"},
    {DeviceStatus, "QLabel",
        "lIntro lMotor lDeviceName lMotorSoftwareVersion lMotorSoftwareVersion_2 lMotorAdress lMotorAdress_2 "
        "lOperationStatus lOperationStatus_2 lDeviceStatus lDeviceStatusIcon"},
    {DeviceStatus, "QLabel",
        "lCurrentRotationsDevice lCurrentRotationsUnit lCurrentPowerDevice lCurrentPowerUnit "
        "lCurrentPositionDevice lCurrentPositionUnit lCurrentTempDevice lCurrentTempUnit"},
    {DeviceStatus, "QLabel",
        "lOverTemp lActive lOverVoltage lUnderVoltage lHardwareError lOverPower lAckRequired lReady"},
    {DeviceStatus, "QCheckBox",
        "cbOverTemp cbActive cbOverVoltage cbUnderVoltage cbHardwareError cbOverPower cbAckRequired cbReady"},
    {DeviceStatus, "QLabel", "lOutput_1 lOutput_2 lOutput_3 lInput_1 lInput_2 lInput_3 lInput_4"},
    {DeviceStatus, "QWidget",
        "edOutput_1 edOutput_2 edOutput_3 edInput_1 edInput_2 edInput_3 edInput_4 edAnalogInput "
        "edAnalogInputUnit"},

    {SpeedRegulation, "QLabel", topLabels},
    {Accelerations, "QLabel", topLabels},
    {CurrentLimits, "QLabel", topLabels},
    {FixedResolutions, "QLabel", topLabels},
    {FixedResolutions, "QFrame", "fCurrentOperationMode"},
    {FixedResolutions, "QLabel", modeLabels},
    {Positioning, "QLabel", topLabels},
    {Positioning, "QFrame", "fCurrentOperationMode"},
    {Positioning, "QLabel", modeLabels},
    {Output, "QLabel", topLabels},
    {FixResistance, "QLabel", topLabels},
    {VoltageLimits, "QLabel", topLabels},

    {OperationsMode, "QLabel", topLabels},
    {OperationsMode, "QLabel", "lRevolutionN1 lRevolutionN1Device lTextI1"},
    {OperationsMode, "QLabel", "lRevolutionN2 lRevolutionN2Device lTextI2"},
    {OperationsMode, "QLabel", "lRevolutionN3 lRevolutionN3Device lTextWiederanlauf"},
    {OperationsMode, "QLineEdit", "edRevolutionN1User edRevolutionN2User edRevolutionN3User"},

    {ParameterTable, "QFrame", "TopFrame"},
    {ParameterTable, "QLabel", "LIntro"},
    {ParameterTable, "QTableWidget", "ParameterTable"},

    {CalibrationRotations, "QGroupBox", "gBValues"},
    {CalibrationRotations, "QLabel", topLabels},
    {CalibrationRotations, "QLabel", curveLabels},
    {CalibrationRotations, "QLineEdit", curveFields},
    {CalibrationRotations, "QFrame", "hrDevice hrDevice_2"},
    {CalibrationRotations, "QLayout", "graphicLayout"},
    {CalibrationCurrent, "QGroupBox", "gBValues"},
    {CalibrationCurrent, "QLabel", topLabels},
    {CalibrationCurrent, "QLabel", curveLabels},
    {CalibrationCurrent, "QLineEdit", curveFields},
    {CalibrationCurrent, "QFrame", "hrDevice hrDevice_2 fCurrentOperationMode"},
    {CalibrationCurrent, "QLabel", modeLabels},
    {CalibrationCurrent, "QLayout", "graphicLayout"},

    {RS485, "QLabel", topLabels},
    {RS485, "QLabel", "lParam0x52Device lDeviceAdress lNewAdress"},
    {RS485, "QLineEdit", "edParam0x52User"},
    {RS485, "QPushButton", "BtnChangeAdress"},
    {FirmwareUpload, "QLabel", topLabels},
    {FirmwareUpload, "QFrame", "fFileSelect fStatus"},
    {FirmwareUpload, "QLabel", "lFirmwareFile lProcess lUpdateStarted lStatus lCurrentStatus"},
    {FirmwareUpload, "QLineEdit", "edFirmwareFile"},
    {FirmwareUpload, "QPlainTextEdit", "edOutput"},
    {FirmwareUpload, "QAbstractButton", "BtnSelectFile BtnUploadFirmwareFile"},
};

/// The widgets of the parameters: a field, the drive's value, the unit, and the name where the picture does
/// not spell it out.
struct Fields
{
    int page;
    const char *numbers; ///< as in the widgets' names
    bool haveNames;
};

const QVector<Fields> fields {
    {SpeedRegulation, "1E 1F 20 22", false},
    {Accelerations, "1A 1B 1C 1D", false},
    {CurrentLimits, "36 38 39 3A 3B", false},
    {FixedResolutions, "17 18 19", true},
    {Positioning, "21 3C 3F 40 41 42 43 44 45 46 47 48 49", true},
    {Output, "03 04 05 23 24 25 32 33 34 35 4F 50 46 47 48 49", true},
    {FixResistance, "4D 4E", true},
    {VoltageLimits, "4A 4B 4C", true},
};

void addObjects(int page, const char *kind, const QStringList &names)
{
    const QByteArray pageName = createDataPage(page)->metaObject()->className();
    for (const QString &name : names)
        QTest::newRow(pageName + ": " + name.toLatin1()) << page << QByteArray(kind) << name;
}

void addFields(int page, const QString &number, bool hasName, const QString &suffix = {})
{
    const QString stem = "Param0x" + number;
    QStringList labels {"l" + stem + "Device" + suffix, "l" + stem + "Unit" + suffix};
    if (hasName)
        labels.append("l" + stem + "ParamName");
    addObjects(page, "QLabel", labels);
    addObjects(page, "QLineEdit", {"ed" + stem + "User" + suffix});
}

bool isLookedAt(int page, const QString &number, const QString &fieldName)
{
    const bool hasNumber = std::any_of(std::begin(fields), std::end(fields), [&](const Fields &row) {
        return row.page == page && QString(row.numbers).split(' ').contains(number);
    });
    return hasNumber || std::any_of(std::begin(table), std::end(table), [&](const Objects &row) {
        return row.page == page && QString(row.names).split(' ').contains(fieldName);
    });
}

void addPages()
{
    QTest::addColumn<int>("page");
    for (int page = 0; page <= Last; ++page)
        QTest::newRow(createDataPage(page)->metaObject()->className()) << page;
}

std::unique_ptr<Z7DataWidget> page()
{
    QFETCH(int, page);
    return createDataPage(page);
}

} // namespace

class TestPageObjects : public QObject
{
    Q_OBJECT

private slots:
    void objectIsOfItsKind_data();
    void objectIsOfItsKind();
    void pageWithContentIsLookedAt_data() { addPages(); }
    void pageWithContentIsLookedAt();
    void everyParametersFieldIsLookedAt_data() { addPages(); }
    void everyParametersFieldIsLookedAt();
    void noNameStandsTwice_data() { addPages(); }
    void noNameStandsTwice();
    void pageBearsNameOfItsClass_data() { addPages(); }
    void pageBearsNameOfItsClass();
    void pictureHasWidgetsOfParameters_data();
    void pictureHasWidgetsOfParameters();

private:
    const WorkingFolder folder;
};

void TestPageObjects::objectIsOfItsKind_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QString>("name");
    for (const Objects &objects : table)
        addObjects(objects.page, objects.kind, QString(objects.names).split(' '));
    for (const Fields &row : fields) {
        const QStringList numbers = QString(row.numbers).split(' ');
        for (const QString &number : numbers)
            addFields(row.page, number, row.haveNames);
    }
    // The reversal threshold acts in two quadrants of the picture.
    addFields(CurrentLimits, "36", false, "_2");
}

void TestPageObjects::objectIsOfItsKind()
{
    QFETCH(QByteArray, kind);
    QFETCH(QString, name);
    const std::unique_ptr<Z7DataWidget> built = page();
    const auto *object = built->findChild<QObject *>(name);
    QVERIFY(object);
    QVERIFY2(object->inherits(kind), object->metaObject()->className());
}

void TestPageObjects::pageWithContentIsLookedAt()
{
    QFETCH(int, page);
    const bool isEmpty = createDataPage(page)->findChildren<QWidget *>().isEmpty();
    const bool isInTable = std::any_of(
        table.cbegin(), table.cend(), [page](const Objects &objects) { return objects.page == page; });
    QVERIFY2(isEmpty || isInTable, "add the page's objects to the table of this test");
}

void TestPageObjects::everyParametersFieldIsLookedAt()
{
    QFETCH(int, page);
    static const QRegularExpression parameterField("^edParam0x(\\w\\w)User");
    const std::unique_ptr<Z7DataWidget> built = createDataPage(page);
    for (const QLineEdit *field : built->findChildren<QLineEdit *>(parameterField)) {
        const QString number = parameterField.match(field->objectName()).captured(1);
        QVERIFY2(isLookedAt(page, number, field->objectName()), qPrintable(field->objectName()));
    }
}

// Layouts are left out: a form that pages share has its own, whose names nobody looks for.
void TestPageObjects::noNameStandsTwice()
{
    const std::unique_ptr<Z7DataWidget> built = page();
    QStringList names;
    const auto widgets = built->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        // The parts that widgets are made of bear names of the libraries, or none.
        static const QRegularExpression ofALibrary(QStringLiteral("^$|^qt_|^Qwt"));
        if (!widget->objectName().contains(ofALibrary))
            names.append(widget->objectName());
    }
    QCOMPARE(repeatedNames(names), QStringList());
}

void TestPageObjects::pageBearsNameOfItsClass()
{
    const std::unique_ptr<Z7DataWidget> built = page();
    QCOMPARE(built->objectName(), QString(built->metaObject()->className()));
    QCOMPARE(built->windowTitle(), QStringLiteral("Form"));
}

void TestPageObjects::pictureHasWidgetsOfParameters_data()
{
    QTest::addColumn<int>("page");
    for (const Fields &row : fields)
        QTest::newRow(createDataPage(row.page)->metaObject()->className()) << row.page;
    QTest::newRow("OperationsModeDialog") << int(OperationsMode);
    QTest::newRow("RS485Dialog") << int(RS485);
}

void TestPageObjects::pictureHasWidgetsOfParameters()
{
    const std::unique_ptr<Z7DataWidget> built = page();
    const auto *picture = built->findChild<QWidget *>("bg");
    QVERIFY(picture);
    const auto edits = built->findChildren<QLineEdit *>();
    QVERIFY(!edits.isEmpty());
    QCOMPARE(picture->findChildren<QLineEdit *>(), edits);
}

QTEST_MAIN(TestPageObjects)

#include "tst_pageobjects.moc"
