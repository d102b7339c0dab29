// The remark of a row: everything that went wrong with the parameter, in words.

#include "tests/pages/shownparametertable.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

namespace {

constexpr int ramp = 11; ///< 10 to 500, writable at any time
constexpr int function = 50; ///< writable only while the inputs A and B are low

const QString notWritable = QStringLiteral(
    "Der Parameter kann zur Zeit nicht geschrieben werden (Digitaleingänge A+B nicht auf low)");
const QString outOfScope = QStringLiteral("Parameterwert außerhalb des zulässigen Bereichs");

using Change = void (*)(Z7DeviceParam &);

Z7DeviceParam paramWith(int number, int value, Change change)
{
    Z7DeviceParam param = readParam(number, value);
    change(param);
    return param;
}

Z7Device driveWithInputs(int digitalInputs)
{
    Z7Device drive = tableDrive({readParam(ramp, 250), readParam(function, 5)});
    drive.digitalInputs = static_cast<quint8>(digitalInputs);
    return drive;
}

} // namespace

Q_DECLARE_METATYPE(Change)

class TestParameterTableRemarks : public IsolatedTest
{
    Q_OBJECT

private slots:
    void cleanReadingLeavesNoRemark();
    void findingIsWorded_data();
    void findingIsWorded();
    void errorIsWordedInUsersLanguage();
    void conflictAlwaysNamesParameterOne();
    void severalFindingsJoinInTheirOrder();
    void findingWithoutTextIsFollowedByNoSeparator();
    void nextRecordReplacesRemark();

    void valueBeyondLimitsIsRemarked_data();
    void valueBeyondLimitsIsRemarked();

    void applicationFunctionCannotBeWrittenWhileInputIsHigh_data();
    void applicationFunctionCannotBeWrittenWhileInputIsHigh();
    void remarkOnWritingWaitsForNextRecord();
    void remarkOnWritingStaysUntilNextRecord();

private:
    void prepare() override;
};

void TestParameterTableRemarks::prepare()
{
    defineTableParameters();
}

void TestParameterTableRemarks::cleanReadingLeavesNoRemark()
{
    const ShownParameterTable shown(tableDrive({readParam(ramp, 250)}));
    QCOMPARE(shown.remark(ramp), QString());
}

void TestParameterTableRemarks::findingIsWorded_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("remark");
    QTest::newRow("error with a text") << Change([](Z7DeviceParam &param) { param.error = 8; })
                                       << "Telegramm mit falscher Prüfsumme empfangen";
    QTest::newRow("error without a text") << Change([](Z7DeviceParam &param) { param.error = 12; }) << "(12)";
    QTest::newRow("read failed") << Change([](Z7DeviceParam &param) { param.readFailed = true; })
                                 << "Der Parameter konnte nicht gelesen werden";
    QTest::newRow("write failed") << Change([](Z7DeviceParam &param) { param.writeFailed = true; })
                                  << "Der Parameter konnte nicht geschrieben werden";
    QTest::newRow("no access") << Change([](Z7DeviceParam &param) {
        param.accessDenied = true;
    }) << "Sie haben nicht die erforderliche Berechtigung, um diesen Parameter zu ändern";
    QTest::newRow("conflict") << Change([](Z7DeviceParam &param) { param.conflict = true; })
                              << "Das Schreiben des Parameters steht im Konflikt mit Parameter 1";
    QTest::newRow("out of scope") << Change([](Z7DeviceParam &param) { param.value = 501; }) << outOfScope;
}

void TestParameterTableRemarks::findingIsWorded()
{
    QFETCH(Change, change);
    const ShownParameterTable shown(tableDrive({paramWith(ramp, 250, change)}));
    QTEST(shown.remark(ramp), "remark");
}

void TestParameterTableRemarks::errorIsWordedInUsersLanguage()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ErrorCodes]\nErrorCode_12=odd reply\n");
    const ShownParameterTable shown(
        tableDrive({paramWith(ramp, 250, [](Z7DeviceParam &param) { param.error = 12; })}));
    QCOMPARE(shown.remark(ramp), QStringLiteral("odd reply"));
}

void TestParameterTableRemarks::conflictAlwaysNamesParameterOne()
{
    WorkingFolder::writeText("deutsch.z7lang", "[DialogParamTable]\nConflictingParam=%1 stört\n");
    const ShownParameterTable shown(
        tableDrive({paramWith(function, 5, [](Z7DeviceParam &param) { param.conflict = true; })}));
    QVERIFY2(shown.remark(function).startsWith("1 "), qPrintable(shown.remark(function)));
}

void TestParameterTableRemarks::severalFindingsJoinInTheirOrder()
{
    Z7Device drive = tableDrive({paramWith(function, 13, [](Z7DeviceParam &param) {
        param.error = 2;
        param.readFailed = param.writeFailed = param.accessDenied = param.conflict = true;
    })});
    drive.digitalInputs = 1;
    ShownParameterTable shown(drive);
    QVERIFY(Person::type(shown.field(function), "7"));
    shown.page.DeviceUpdate(drive);
    const QStringList findings {"(2)", "Der Parameter konnte nicht gelesen werden",
        "Der Parameter konnte nicht geschrieben werden",
        "Sie haben nicht die erforderliche Berechtigung, um diesen Parameter zu ändern",
        "Das Schreiben des Parameters steht im Konflikt mit Parameter 1", outOfScope, notWritable};
    QCOMPARE(shown.remark(function), findings.join(", "));
}

void TestParameterTableRemarks::findingWithoutTextIsFollowedByNoSeparator()
{
    WorkingFolder::writeText("deutsch.z7lang", "[ErrorCodes]\nErrorCode_8=\n");
    const ShownParameterTable shown(
        tableDrive({paramWith(ramp, 501, [](Z7DeviceParam &param) { param.error = 8; })}));
    QCOMPARE(shown.remark(ramp), outOfScope);
}

void TestParameterTableRemarks::nextRecordReplacesRemark()
{
    ShownParameterTable shown(
        tableDrive({paramWith(ramp, 250, [](Z7DeviceParam &param) { param.readFailed = true; })}));
    shown.page.DeviceUpdate(tableDrive({readParam(ramp, 501)}));
    QCOMPARE(shown.remark(ramp), outOfScope);
    shown.page.DeviceUpdate(tableDrive({readParam(ramp, 250)}));
    QCOMPARE(shown.remark(ramp), QString());
}

void TestParameterTableRemarks::valueBeyondLimitsIsRemarked_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("remark");
    QTest::newRow("below the minimum") << 9 << true << outOfScope;
    QTest::newRow("the minimum") << 10 << true << "";
    QTest::newRow("the maximum") << 500 << true << "";
    QTest::newRow("above the maximum") << 501 << true << outOfScope;
    QTest::newRow("a value that was not read") << 501 << false << "";
}

void TestParameterTableRemarks::valueBeyondLimitsIsRemarked()
{
    QFETCH(int, value);
    QFETCH(bool, valid);
    Z7DeviceParam param = readParam(ramp, value);
    param.valid = valid;
    const ShownParameterTable shown(tableDrive({param}));
    QTEST(shown.remark(ramp), "remark");
}

void TestParameterTableRemarks::applicationFunctionCannotBeWrittenWhileInputIsHigh_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("digitalInputs");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("remark");
    QTest::newRow("input A high") << function << 0x01 << "7" << notWritable;
    QTest::newRow("input B high") << function << 0x02 << "7" << notWritable;
    QTest::newRow("both high") << function << 0x03 << "7" << notWritable;
    QTest::newRow("both low, the others high") << function << 0x0C << "7"
                                               << "";
    QTest::newRow("nothing typed") << function << 0x03 << ""
                                   << "";
    QTest::newRow("parameter that can be written at any time") << ramp << 0x03 << "7"
                                                               << "";
}

void TestParameterTableRemarks::applicationFunctionCannotBeWrittenWhileInputIsHigh()
{
    QFETCH(int, number);
    QFETCH(int, digitalInputs);
    QFETCH(QString, typed);
    ShownParameterTable shown(driveWithInputs(digitalInputs));
    QVERIFY(Person::type(shown.field(number), typed));
    shown.page.DeviceUpdate(driveWithInputs(digitalInputs));
    QTEST(shown.remark(number), "remark");
}

void TestParameterTableRemarks::remarkOnWritingWaitsForNextRecord()
{
    ShownParameterTable shown(driveWithInputs(0x01));
    QVERIFY(Person::type(shown.field(function), "7"));
    QCOMPARE(shown.remark(function), QString());
}

void TestParameterTableRemarks::remarkOnWritingStaysUntilNextRecord()
{
    ShownParameterTable shown(driveWithInputs(0x01));
    QVERIFY(Person::type(shown.field(function), "7"));
    shown.page.DeviceUpdate(driveWithInputs(0x01));
    QVERIFY(Person::empty(shown.field(function)));
    QCOMPARE(shown.remark(function), notWritable);
    shown.page.DeviceUpdate(driveWithInputs(0x01));
    QCOMPARE(shown.remark(function), QString());
}

QTEST_MAIN(TestParameterTableRemarks)

#include "tst_parametertableremarks.moc"
