// The two rules that a drive's values have to keep: support points of a curve rise.

#include "model/parameterconflicts.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

using Values = QMap<int, int>;
Q_DECLARE_METATYPE(Values)

namespace {

Z7DeviceParamSet setOf(const Values &values, bool hasValue = true)
{
    Z7DeviceParamSet set(QStringLiteral("V123"));
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        set.insert(Z7DeviceParam(it.key(), it.value(), 0, hasValue));
    return set;
}

QString conflicts(const Values &user, const Values &device)
{
    return paramConflicts(setOf(user), setOf(device));
}

} // namespace

class TestParameterConflicts : public IsolatedTest
{
    Q_OBJECT

private slots:
    void supportPointsHaveToRise_data();
    void supportPointsHaveToRise();
    void valueThatNobodyHasReadCountsToo();
    void deletedChangeFallsBackToDrivesValue();
    void sentenceComesFromLanguageFile();
    void translationMayLackOrRepeatPlaceholder_data();
    void translationMayLackOrRepeatPlaceholder();
};

void TestParameterConflicts::supportPointsHaveToRise_data()
{
    QTest::addColumn<Values>("user");
    QTest::addColumn<Values>("device");
    QTest::addColumn<QString>("text");

    const Values rising {{11, 0}, {12, 100}, {13, 1000}, {38, 0}, {39, 5}, {40, 10}};
    const QString none;

    QTest::newRow("nothing is known") << Values() << Values() << none;
    QTest::newRow("the drive's values rise") << Values() << rising << none;
    QTest::newRow("equal values are fine") << Values {{11, 100}, {13, 100}} << rising << none;
    QTest::newRow("negative values rise too")
        << Values {{11, -200}, {12, -100}, {13, -100}} << rising << none;
    QTest::newRow("the user's first speed is too high")
        << Values {{11, 500}} << rising << "Parameterkonflikt Drehzahl: 500 <= 100 <= 1000 verletzt.";
    QTest::newRow("the user's last speed is too low")
        << Values {{13, 99}} << rising << "Parameterkonflikt Drehzahl: 0 <= 100 <= 99 verletzt.";
    QTest::newRow("the user's middle current is too high")
        << Values {{39, 11}} << rising << "Parameterkonflikt Strom: 0 <= 11 <= 10 verletzt.";
    QTest::newRow("the user's middle current is too low")
        << Values {{39, -1}} << rising << "Parameterkonflikt Strom: 0 <= -1 <= 10 verletzt.";
    QTest::newRow("an unknown value counts as 0")
        << Values {{12, 100}} << Values() << "Parameterkonflikt Drehzahl: 0 <= 100 <= 0 verletzt.";
    QTest::newRow("the drive's own values are broken")
        << Values() << Values {{38, 1}} << "Parameterkonflikt Strom: 1 <= 0 <= 0 verletzt.";
    QTest::newRow("both rules are broken, speed comes first")
        << Values {{38, 20}, {11, 500}} << rising
        << "Parameterkonflikt Drehzahl: 500 <= 100 <= 1000 verletzt., "
           "Parameterkonflikt Strom: 20 <= 5 <= 10 verletzt.";
    QTest::newRow("other parameters have no order") << Values {{10, 9}, {14, -9}, {41, 3}} << rising << none;
}

void TestParameterConflicts::supportPointsHaveToRise()
{
    QFETCH(Values, user);
    QFETCH(Values, device);
    QTEST(conflicts(user, device), "text");
}

void TestParameterConflicts::valueThatNobodyHasReadCountsToo()
{
    QCOMPARE(paramConflicts(setOf({}), setOf({{11, 5}}, false)),
        QStringLiteral("Parameterkonflikt Drehzahl: 5 <= 0 <= 0 verletzt."));
}

void TestParameterConflicts::deletedChangeFallsBackToDrivesValue()
{
    const Z7DeviceParamSet device = setOf({{11, 0}, {12, 100}, {13, 1000}});
    Z7DeviceParamSet user = setOf({{11, 500}});
    QVERIFY(!paramConflicts(user, device).isEmpty());
    user.remove(user.value(11));
    QVERIFY(paramConflicts(user, device).isEmpty());
}

void TestParameterConflicts::sentenceComesFromLanguageFile()
{
    WorkingFolder::write(QStringLiteral("deutsch.z7lang"),
        "[ErrorCodes]\nConflictingParamsRotation=speed %3 %2 %1\nConflictingParamsCurrent=current %1 %2 "
        "%3\n");
    QCOMPARE(
        conflicts({{11, 3}, {12, 2}, {13, 1}, {38, 6}}, {}), QStringLiteral("speed 1 2 3, current 6 0 0"));
}

void TestParameterConflicts::translationMayLackOrRepeatPlaceholder_data()
{
    QTest::addColumn<QByteArray>("translation");
    QTest::addColumn<QString>("text");
    QTest::newRow("lacks the first") << QByteArray("then %2, last %3") << "then 20, last 10";
    QTest::newRow("lacks the middle") << QByteArray("first %1, last %3") << "first 30, last 10";
    QTest::newRow("lacks the last") << QByteArray("first %1, then %2") << "first 30, then 20";
    QTest::newRow("has the last alone") << QByteArray("last %3") << "last 10";
    QTest::newRow("has none") << QByteArray("speeds do not rise") << "speeds do not rise";
    QTest::newRow("is empty") << QByteArray() << "";
    QTest::newRow("repeats one") << QByteArray("%2 < %1, %2 > %3") << "20 < 30, 20 > 10";
    QTest::newRow("has a percent sign of its own") << QByteArray("20 %: %1 %2 %3 %") << "20 %: 30 20 10 %";
    QTest::newRow("has a placeholder too many") << QByteArray("%1 %2 %3 %4") << "30 20 10 %4";
}

void TestParameterConflicts::translationMayLackOrRepeatPlaceholder()
{
    QFETCH(QByteArray, translation);
    WorkingFolder::write(QStringLiteral("deutsch.z7lang"),
        "[ErrorCodes]\nConflictingParamsRotation=\"" + translation + "\"\n");
    QTEST(conflicts({{11, 30}, {12, 20}, {13, 10}}, {}), "text");
}

QTEST_APPLESS_MAIN(TestParameterConflicts)
#include "tst_parameterconflicts.moc"
