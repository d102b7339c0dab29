// What each test function finds and leaves behind, whatever the one before it did.

#include "control/services/options.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

class TestIsolatedTest : public IsolatedTest
{
    Q_OBJECT

private slots:
    void initTestCase() { before = QDir::currentPath(); }

    void functionBeginsAfresh_data();
    void functionBeginsAfresh();
    void ownThingsAreMadeInFolderAndPutAwayBeforeIt();
    void cleanupTestCase();

private:
    void prepare() override { WorkingFolder::write(QStringLiteral("made"), "anew"); }
    void tidyUp() override { leftAtTheEnd = WorkingFolder::files(); }

    QString before;
    QStringList leftAtTheEnd;
};

void TestIsolatedTest::functionBeginsAfresh_data()
{
    QTest::addColumn<int>("round");
    for (const int round : {1, 2})
        QTest::addRow("round %d", round) << round;
}

void TestIsolatedTest::functionBeginsAfresh()
{
    QVERIFY(QDir::currentPath() != before);
    QCOMPARE(WorkingFolder::files(), QStringList("made"));
    QCOMPARE(Z7Services::instance()->options()->timeout(), 140);
    Z7Services::instance()->options()->setTimeout(4711);
    WorkingFolder::write(QStringLiteral("left"), "behind");
}

void TestIsolatedTest::ownThingsAreMadeInFolderAndPutAwayBeforeIt()
{
    QCOMPARE(leftAtTheEnd, QStringList({"left", "made"}));
    QCOMPARE(WorkingFolder::read(QStringLiteral("made")), QByteArray("anew"));
}

void TestIsolatedTest::cleanupTestCase()
{
    QCOMPARE(QDir::currentPath(), before);
    QVERIFY(!WorkingFolder::files().contains("left"));
}

QTEST_APPLESS_MAIN(TestIsolatedTest)

#include "tst_isolatedtest.moc"
