// One parameter of a drive, and the set of them: what a pass forgets and what it keeps.

#include "model/device.h"
#include "model/parameterdefinitions.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

namespace {

const QString version = QStringLiteral("V123");

Z7DeviceParam param(int number, int value = 0)
{
    return {number, value, 1, true};
}

/// A parameter to which everything has happened that can happen.
Z7DeviceParam troubledParam(int number)
{
    Z7DeviceParam p = param(number, 500);
    p.valid = p.accessDenied = p.writeFailed = p.readFailed = p.conflict = true;
    p.error = 9;
    return p;
}

Z7DeviceParamSet setOf(const QList<Z7DeviceParam> &params)
{
    Z7DeviceParamSet set(version);
    for (const Z7DeviceParam &p : params)
        set.insert(p);
    return set;
}

} // namespace

class TestDeviceParamSet : public IsolatedTest
{
    Q_OBJECT

private slots:
    void defaultParameterIsUnsignedAndHasNoNumber();
    void parameterTakesItsFourFields();
    void parameterWithNewValueHasOne();

    void newSetHasVersionAndNoParameters();
    void setForPageTakesSignednessFromDefinitions();
    void setForUnknownVersionIsSigned();
    void parametersAreWalkedByNumber();
    void secondParameterOfNumberReplacesFirst();
    void recordsOfAnotherSetReplaceThoseOfTheirNumbers();
    void removingGoesByNumberAlone();
    void removingWhatIsNotThereIsNoError();
    void recordOfSetsOwnCanBeRemoved();
    void recordOfSetsOwnCanBePutBack_data();
    void recordOfSetsOwnCanBePutBack();
    void missingParameterReadsAsDefaultOne();
    void lookingForParameterDoesNotAddIt();
    void parameterIsFoundInItsPlace();
    void missingParameterIsNotFound();

    void newPassForgetsLastReadButNotDenialAndConflict();
    void clearingOneParameterForgetsItsConflictButNotItsDenial();
    void clearingParameterThatIsNotThereAddsNone();
    void hasValueIsSetOnAllParameters();
    void copyIsIndependent();
};

void TestDeviceParamSet::defaultParameterIsUnsignedAndHasNoNumber()
{
    const Z7DeviceParam p;
    QCOMPARE(p.number, -1);
    QCOMPARE(p.isUnsigned, 1);
    QCOMPARE(p.value, 0);
    QCOMPARE(p.error, 0);
    QVERIFY(!p.valid && !p.hasValue && !p.accessDenied && !p.writeFailed && !p.readFailed && !p.conflict);
}

void TestDeviceParamSet::parameterTakesItsFourFields()
{
    const Z7DeviceParam p(11, -500, 0, true);
    QCOMPARE(p.number, 11);
    QCOMPARE(p.value, -500);
    QCOMPARE(p.isUnsigned, 0);
    QVERIFY(p.hasValue);
    QCOMPARE(p.error, 0);
    QVERIFY(!p.valid && !p.accessDenied && !p.writeFailed && !p.readFailed && !p.conflict);
}

void TestDeviceParamSet::parameterWithNewValueHasOne()
{
    Z7DeviceParam p(11, 0, 1, false);
    p.setValue(500);
    QCOMPARE(p.value, 500);
    QVERIFY(p.hasValue);
    QVERIFY(!p.valid);
}

void TestDeviceParamSet::newSetHasVersionAndNoParameters()
{
    QCOMPARE(Z7DeviceParamSet(version).softwareVersion, version);
    QVERIFY(Z7DeviceParamSet(version).params.isEmpty());
}

void TestDeviceParamSet::setForPageTakesSignednessFromDefinitions()
{
    Z7ParamDefinitions *definitions = Z7Services::instance()->definitions(version);
    definitions->parseLine(QStringLiteral("11;Speed;rpm;0;;;Signed;0;;0;"));
    definitions->parseLine(QStringLiteral("12;Ramp;ms;7;;;Unsigned;0;;0;"));
    const Z7DeviceParamSet set(version, {12, 11});
    QCOMPARE(set.softwareVersion, version);
    QCOMPARE(set.params.keys(), QList<int>({11, 12}));
    QCOMPARE(set.value(11).isUnsigned, 0);
    QCOMPARE(set.value(12).isUnsigned, 1);
    QCOMPARE(set.value(12).value, 0);
    QVERIFY(!set.value(12).hasValue);
}

void TestDeviceParamSet::setForUnknownVersionIsSigned()
{
    QCOMPARE(Z7DeviceParamSet(QStringLiteral("V999"), {11}).value(11).isUnsigned, 0);
}

void TestDeviceParamSet::parametersAreWalkedByNumber()
{
    const Z7DeviceParamSet set = setOf({param(0x8001), param(40), param(9), param(11)});
    QCOMPARE(set.params.keys(), QList<int>({9, 11, 40, 0x8001}));
}

void TestDeviceParamSet::secondParameterOfNumberReplacesFirst()
{
    const Z7DeviceParamSet set = setOf({param(11, 500), param(11, 600)});
    QCOMPARE(set.params.size(), 1);
    QCOMPARE(set.value(11).value, 600);
}

void TestDeviceParamSet::recordsOfAnotherSetReplaceThoseOfTheirNumbers()
{
    Z7DeviceParamSet set = setOf({param(11, 1), param(12, 2)});
    Z7DeviceParamSet other = setOf({param(12, 20), param(13, 30)});
    other.softwareVersion = QStringLiteral("V200");
    set.insertAll(other);
    QCOMPARE(set.params.keys(), QList<int>({11, 12, 13}));
    QCOMPARE(set.value(11).value, 1);
    QCOMPARE(set.value(12).value, 20);
    QCOMPARE(set.softwareVersion, version);
}

void TestDeviceParamSet::removingGoesByNumberAlone()
{
    Z7DeviceParamSet set = setOf({param(11, 500), param(12, 600)});
    set.remove(param(11, 999));
    QCOMPARE(set.params.keys(), QList<int>({12}));
}

void TestDeviceParamSet::removingWhatIsNotThereIsNoError()
{
    Z7DeviceParamSet set = setOf({param(11)});
    set.remove(param(12));
    QCOMPARE(set.params.keys(), QList<int>({11}));
}

void TestDeviceParamSet::recordOfSetsOwnCanBeRemoved()
{
    Z7DeviceParamSet set = setOf({param(11), param(12)});
    set.remove(*set.find(11));
    QCOMPARE(set.params.keys(), QList<int>({12}));
}

void TestDeviceParamSet::recordOfSetsOwnCanBePutBack_data()
{
    QTest::addColumn<bool>("isShared");
    QTest::newRow("of a set alone") << false;
    QTest::newRow("of a set that shares its records with a copy") << true;
}

void TestDeviceParamSet::recordOfSetsOwnCanBePutBack()
{
    QFETCH(bool, isShared);
    Z7Device drive;
    drive.setParameterSet(setOf({param(11, 500), param(12, 600)}));
    const Z7Device copy = isShared ? drive : Z7Device();
    drive.parameterSet.insert(*drive.parameterSet.find(11));
    drive.updateParam(*drive.parameterSet.find(12));
    QCOMPARE(drive.parameterSet.value(11).value, 500);
    QCOMPARE(drive.parameterSet.value(12).value, 600);
}

void TestDeviceParamSet::missingParameterReadsAsDefaultOne()
{
    const Z7DeviceParam p = setOf({param(11, 500)}).value(12);
    QCOMPARE(p.number, -1);
    QCOMPARE(p.value, 0);
    QVERIFY(!p.hasValue);
}

void TestDeviceParamSet::lookingForParameterDoesNotAddIt()
{
    const Z7DeviceParamSet set = setOf({param(11)});
    QVERIFY(set.contains(11));
    QVERIFY(!set.contains(12));
    set.value(12);
    QVERIFY(!set.contains(12));
}

void TestDeviceParamSet::parameterIsFoundInItsPlace()
{
    const Z7DeviceParamSet set = setOf({param(11, 500), param(12, 600)});
    QCOMPARE(set.find(12), &*set.params.constFind(12));
    QCOMPARE(set.find(12)->value, 600);
}

void TestDeviceParamSet::missingParameterIsNotFound()
{
    QVERIFY(!setOf({param(11, 500)}).find(12));
}

void TestDeviceParamSet::newPassForgetsLastReadButNotDenialAndConflict()
{
    Z7DeviceParamSet set = setOf({troubledParam(11), troubledParam(12)});
    set.resetReadState();
    for (const int number : {11, 12}) {
        const Z7DeviceParam p = set.value(number);
        QVERIFY(!p.valid && !p.writeFailed && !p.readFailed);
        QCOMPARE(p.error, 0);
        QVERIFY(p.accessDenied);
        QVERIFY(p.conflict);
        QVERIFY(p.hasValue);
        QCOMPARE(p.value, 500);
    }
}

void TestDeviceParamSet::clearingOneParameterForgetsItsConflictButNotItsDenial()
{
    Z7DeviceParamSet set = setOf({troubledParam(11), troubledParam(12)});
    set.clearParamState(11);
    const Z7DeviceParam p = set.value(11);
    QVERIFY(!p.valid && !p.writeFailed && !p.readFailed && !p.conflict);
    QCOMPARE(p.error, 0);
    QVERIFY(p.accessDenied);
    QVERIFY(p.hasValue);
    QCOMPARE(p.value, 500);
    QVERIFY(set.value(12).valid && set.value(12).conflict);
}

void TestDeviceParamSet::clearingParameterThatIsNotThereAddsNone()
{
    Z7DeviceParamSet set = setOf({param(11)});
    set.clearParamState(12);
    QCOMPARE(set.params.keys(), QList<int>({11}));
}

void TestDeviceParamSet::hasValueIsSetOnAllParameters()
{
    Z7DeviceParamSet set = setOf({param(11), param(12)});
    set.setAllHasValue(false);
    QVERIFY(!set.value(11).hasValue && !set.value(12).hasValue);
    set.setAllHasValue(true);
    QVERIFY(set.value(11).hasValue && set.value(12).hasValue);
}

void TestDeviceParamSet::copyIsIndependent()
{
    const Z7DeviceParamSet original = setOf({param(11, 500)});
    Z7DeviceParamSet copy = original;
    copy.insert(param(11, 600));
    QCOMPARE(original.value(11).value, 500);
}

QTEST_APPLESS_MAIN(TestDeviceParamSet)
#include "tst_deviceparamset.moc"
