// The pages and their fixed numbers.

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/support/workingfolder.h"

#include <QTest>

class TestPageFactory : public QObject
{
    Q_OBJECT

private slots:
    void eachNumberHasItsPage_data();
    void eachNumberHasItsPage();
    void numberOfNoPageGivesNone_data();
    void numberOfNoPageGivesNone();
    void onlyTheTableWantsAllParameters();
    void onlyTheFirmwarePageWantsAllDrives();

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

void TestPageFactory::onlyTheTableWantsAllParameters()
{
    for (int number = 0; number <= PageNumber::Last; ++number)
        QCOMPARE(createDataPage(number)->wantsAllParameters(), number == 9);
}

void TestPageFactory::onlyTheFirmwarePageWantsAllDrives()
{
    for (int number = 0; number <= PageNumber::Last; ++number)
        QCOMPARE(createDataPage(number)->wantsAllDevices(), number == 10);
}

QTEST_MAIN(TestPageFactory)

#include "tst_pagefactory.moc"
