// The status bar in the window: where it stands, what of it opens what.

#include "shell/mainwindow.h"
#include "shell/statusbar.h"
#include "tests/shell/openedurls.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QAction>
#include <QDir>
#include <QMenuBar>
#include <QStatusBar>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestStatusBar : public IsolatedTest
{
    Q_OBJECT

private slots:
    void fieldsStandInTheirOrder();
    void barWidensNoWindow();
    void emptyTipOfMenuTakesNothingAway();
    void folderWithoutDefinitionsIsTold();
    void definitionsThatCameAreSeenWhenWindowIsUsedAgain();
    void clickOpensFolder();
    void fieldsAreNamedForScreenReaders();

private:
    void prepare() override;
    void tidyUp() override { window.reset(); }
    StatusField &field(const char *name) const { return child<StatusField>(*window, name); }
    StatusField &definitions() const { return field("StatusDefinitions"); }

    std::unique_ptr<MainWindow> window;
};

void TestStatusBar::prepare()
{
    window = std::make_unique<MainWindow>();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestStatusBar::fieldsStandInTheirOrder()
{
    QStringList names;
    for (const StatusField *one : window->statusBar()->findChildren<StatusField *>())
        names.append(one->objectName());
    QCOMPARE(names,
        QStringList({"StatusFresh", "StatusLastOperation", "StatusNeverRun", "StatusNeverRead",
            "StatusPending", "StatusUndo", "StatusPort", "StatusDrives", "StatusDefinitions"}));
}

void TestStatusBar::barWidensNoWindow()
{
    const int narrowest = window->minimumSizeHint().width();
    for (StatusField *one : window->statusBar()->findChildren<StatusField *>())
        one->say({QString(200, 'x'), QString(), true});
    QTest::qWait(0);
    QCOMPARE(window->minimumSizeHint().width(), narrowest);
}

void TestStatusBar::emptyTipOfMenuTakesNothingAway()
{
    QTRY_VERIFY(definitions().width() > 0);
    QStatusTipEvent tip {QString()};
    QApplication::sendEvent(window.get(), &tip);
    QVERIFY(definitions().isVisible() && definitions().width() > 0);
}

void TestStatusBar::folderWithoutDefinitionsIsTold()
{
    QCOMPARE(definitions().said().text, QStringLiteral("Arbeitsordner ohne Parameter-Definitionen"));
    writeDefinitions();
    window = std::make_unique<MainWindow>();
    QCOMPARE(definitions().said().text, QString());
}

void TestStatusBar::definitionsThatCameAreSeenWhenWindowIsUsedAgain()
{
    QWidget files;
    files.show();
    files.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&files));
    writeDefinitions();
    window->activateWindow();
    QTRY_COMPARE(definitions().said().text, QString());
}

void TestStatusBar::clickOpensFolder()
{
    const OpenedUrls opened(QStringLiteral("file"));
    QTRY_VERIFY(definitions().width() > 0);
    QVERIFY(Person::press(&definitions()));
    QCOMPARE(opened.urls, QList<QUrl> {QUrl::fromLocalFile(QDir::currentPath())});
}

void TestStatusBar::fieldsAreNamedForScreenReaders()
{
    QStringList names;
    for (const StatusField *one : window->statusBar()->findChildren<StatusField *>())
        names.append(one->accessibleName());
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.removeDuplicates(), 0);
}

QTEST_MAIN(TestStatusBar)

#include "tst_statusbar.moc"
