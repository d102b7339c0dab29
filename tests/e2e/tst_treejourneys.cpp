// What a person finds in the tree and behind the help button, whatever was put away or is missing.

#include "tests/e2e/desk.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QTreeWidget>
#include <QtTest>

class TestTreeJourneys : public QObject
{
    Q_OBJECT

private slots:
    void driveThatWasCollapsedIsOpenAgainWithNextRecord();
    void missingManualIsReported();
};

void TestTreeJourneys::driveThatWasCollapsedIsOpenAgainWithNextRecord()
{
    const Desk desk(TestBench::shortDrives({1}));
    const Journey &journey = desk.journey;
    QVERIFY(journey.connectQuickly());
    QVERIFY(journey.showPage(driveName(1), QStringLiteral("Festdrehzahlen")));
    auto *tree = journey.window().findChild<QTreeWidget *>(QStringLiteral("MainMenuTree"));
    QTreeWidgetItem *item = tree->topLevelItem(0);
    tree->setFocus();
    tree->setCurrentItem(item);
    QTest::keyClick(tree, Qt::Key_Left);
    QVERIFY(!item->isExpanded());
    QTRY_VERIFY_WITH_TIMEOUT(item->isExpanded(), Person::patienceMs);
}

void TestTreeJourneys::missingManualIsReported()
{
    TestBench bench;
    const Journey journey;
    const MessageBoxAnswerer user(QMessageBox::Ok);
    QVERIFY(journey.press("BtnPdfHelp"));
    QCOMPARE(user.last().text, QStringLiteral("Die PDF-Hilfedatei kann nicht geöffnet werden."));
}

QTEST_MAIN(TestTreeJourneys)

#include "tst_treejourneys.moc"
