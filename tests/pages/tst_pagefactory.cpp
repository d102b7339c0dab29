// The pages and their fixed numbers.

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/support/workingfolder.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

class TestPageFactory : public QObject
{
    Q_OBJECT

private slots:
    void eachNumberHasItsPage_data();
    void eachNumberHasItsPage();
    void numberOfNoPageGivesNone_data();
    void numberOfNoPageGivesNone();
    void slotsOfPageCanBeCalledFromOutside_data();
    void slotsOfPageCanBeCalledFromOutside();
    void editOfFieldThatIsNotThereReportsNothing_data();
    void editOfFieldThatIsNotThereReportsNothing();
    void onlyTableWantsAllParameters();
    void onlyFirmwarePageWantsAllDrives();

private:
    const WorkingFolder folder;
};

void TestPageFactory::eachNumberHasItsPage_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("pageClass");
    const char *const classes[] = {"NetworkDialog", "DeviceStatusDialog", "SpeedRegulationDialog",
        "AccelerationsDialog", "CurrentLimitsDialog", "FixedResolutionsDialog", "PositioningDialog",
        "OutputDialog", "OperationsModeDialog", "ParameterTableDialog", "FirmwareUploadDialog",
        "ValueCalibrationRotations", "ValueCalibrationCurrent", "FixResistanceDialog", "VoltageLimitsDialog",
        "RS485Dialog", "RemoteControlDialog"};
    int number = 0;
    for (const char *pageClass : classes)
        QTest::newRow(pageClass) << number++ << QByteArray(pageClass);
    QCOMPARE(number, PageNumber::Last + 1);
}

void TestPageFactory::eachNumberHasItsPage()
{
    QFETCH(int, number);
    QFETCH(QByteArray, pageClass);
    const std::unique_ptr<Z7DataWidget> page = createDataPage(number);
    QCOMPARE(QByteArray(page->metaObject()->className()), pageClass);
    QVERIFY(!page->parentWidget());
}

void TestPageFactory::numberOfNoPageGivesNone_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("none") << PageNumber::none;
    QTest::newRow("behind the last") << PageNumber::Last + 1;
    QTest::newRow("far behind the last") << 4711;
}

void TestPageFactory::numberOfNoPageGivesNone()
{
    QFETCH(int, number);
    QVERIFY(!createDataPage(number));
}

void TestPageFactory::slotsOfPageCanBeCalledFromOutside_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("slot");
    const auto row = [](const char *name, PageNumber::Number number, const char *slot) {
        QTest::newRow(name) << int(number) << QByteArray(slot);
    };
    row("edit of a labelled page", PageNumber::Positioning, "ParamChanged(int)");
    row("edit of the operating modes", PageNumber::OperationsMode, "ParamChanged(int)");
    row("edit of a curve", PageNumber::CalibrationCurrent, "ParamChanged(int)");
    row("edit in the table", PageNumber::ParameterTable, "TextChanged(int)");
    row("change of the address", PageNumber::RS485, "updateAdress()");
    row("choice of a firmware image", PageNumber::FirmwareUpload, "selectBinFile()");
    row("start of an update", PageNumber::FirmwareUpload, "startUpload()");
    row("start of the programmer", PageNumber::FirmwareUpload, "startUploadProc()");
    row("output of the programmer", PageNumber::FirmwareUpload, "uploadProcReadyRead()");
    row("end of the programmer", PageNumber::FirmwareUpload, "uploadProcFinished()");
}

void TestPageFactory::slotsOfPageCanBeCalledFromOutside()
{
    QFETCH(int, number);
    QFETCH(QByteArray, slot);
    const QMetaObject *pageClass = createDataPage(number)->metaObject();
    const QMetaMethod method = pageClass->method(pageClass->indexOfSlot(slot));
    QCOMPARE(method.methodSignature(), slot);
    QCOMPARE(method.access(), QMetaMethod::Public);
}

void TestPageFactory::editOfFieldThatIsNotThereReportsNothing_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("edit");
    QTest::newRow("labelled page") << int(PageNumber::Positioning) << QByteArray("ParamChanged");
    QTest::newRow("operating modes") << int(PageNumber::OperationsMode) << QByteArray("ParamChanged");
    QTest::newRow("speed curve") << int(PageNumber::CalibrationRotations) << QByteArray("ParamChanged");
    QTest::newRow("current curve") << int(PageNumber::CalibrationCurrent) << QByteArray("ParamChanged");
    QTest::newRow("table") << int(PageNumber::ParameterTable) << QByteArray("TextChanged");
}

void TestPageFactory::editOfFieldThatIsNotThereReportsNothing()
{
    QFETCH(int, number);
    QFETCH(QByteArray, edit);
    const std::unique_ptr<Z7DataWidget> page = createDataPage(number);
    page->initPage();
    const QSignalSpy modified(page.get(), SIGNAL(parameterModified(Z7DeviceParam)));
    const QSignalSpy deleted(page.get(), SIGNAL(parameterDeleted(Z7DeviceParam)));
    for (const int unknown : {-1, 0x7FFF})
        QVERIFY(QMetaObject::invokeMethod(page.get(), edit.constData(), Q_ARG(int, unknown)));
    QCOMPARE(modified.size() + deleted.size(), 0);
}

void TestPageFactory::onlyTableWantsAllParameters()
{
    for (int number = 0; number <= PageNumber::Last; ++number)
        QCOMPARE(createDataPage(number)->allParameters, number == 9);
}

void TestPageFactory::onlyFirmwarePageWantsAllDrives()
{
    for (int number = 0; number <= PageNumber::Last; ++number)
        QCOMPARE(createDataPage(number)->multiDevice, number == 10);
}

QTEST_MAIN(TestPageFactory)

#include "tst_pagefactory.moc"
