// The window itself: its start, its menus, its bands and its end.

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "shell/aboutdialog.h"
#include "shell/devicecontrolwidget.h"
#include "shell/maincontentwidget.h"
#include "shell/mainwindow.h"
#include "shell/optionsdialog.h"
#include "shell/topmenuwidget.h"
#include "shell/wizard/connectionsdialog.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestMainWindow : public IsolatedTest
{
    Q_OBJECT

private slots:
    void titleShowsVersionWithoutLanguageFile();
    void titleComesFromLanguageFileButVersionDoesNot();
    void windowHasIcon();
    void actionIsNamed_data();
    void actionIsNamed();
    void actionTextComesFromLanguageFile();
    void menusStandInTheirOrder_data();
    void menusStandInTheirOrder();
    void makersNameKeepsItsAmpersandInMenu();
    void someActionsAreInNoMenu();
    void idleActionsDoNothing_data();
    void idleActionsDoNothing();

    void fileActionsAreGreyWithoutDrive();
    void shortcutsOfGreyActionsDoNothing();
    void otherActionsWorkWithoutDrive();
    void menuOpensModalDialog_data();
    void menuOpensModalDialog();
    void noDialogIsOpenAtStart();
    void noPageIsPolishedBeforeItIsShown();

    void bandsLieAboveEachOther();
    void middleBandTakesRoomThatIsLeft();
    void bandsHaveTheirColours();
    void noDriveIsKnownAtStart();

    void closingWritesLanguageAndOptions_data();
    void closingWritesLanguageAndOptions();
    void closingKeepsForeignTextsOfLanguageFile();
    void closingEndsProgram();
    void nothingIsWrittenWithoutClosing();

private:
    void tidyUp() override;

    void open();
    QAction &action(const QByteArray &name) const;
    template<typename Widget>
    Widget &band() const
    {
        return *window->findChild<Widget *>();
    }
    void chooseFromMenu(const char *menu, const char *action);

    std::unique_ptr<MainWindow> window;
};

void TestMainWindow::open()
{
    window = std::make_unique<MainWindow>();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestMainWindow::tidyUp()
{
    window.reset();
}

QAction &TestMainWindow::action(const QByteArray &name) const
{
    auto *found = window->findChild<QAction *>(QString::fromLatin1(name));
    if (!found)
        qFatal("no action %s", name.constData());
    return *found;
}

void TestMainWindow::chooseFromMenu(const char *menuName, const char *actionName)
{
    auto &menu = child<QMenu>(*window, menuName);
    QTest::mouseClick(
        window->menuBar(), Qt::LeftButton, {}, window->menuBar()->actionGeometry(menu.menuAction()).center());
    QVERIFY(menu.isVisible());
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&action(actionName)).center());
}

void TestMainWindow::titleShowsVersionWithoutLanguageFile()
{
    QVERIFY(!QFile::exists(QStringLiteral("deutsch.z7lang")));
    open();
    QCOMPARE(window->windowTitle(), QStringLiteral("Z7ConfigTool - Norvik & Tessel GmbH - Version 1.0.6"));
}

void TestMainWindow::titleComesFromLanguageFileButVersionDoesNot()
{
    QSettings(QStringLiteral("deutsch.z7lang"), QSettings::IniFormat)
        .setValue(QStringLiteral("Common/ApplicationTitle"), QStringLiteral("Drive tool"));
    open();
    QCOMPARE(window->windowTitle(), QStringLiteral("Drive tool - Version 1.0.6"));
}

void TestMainWindow::windowHasIcon()
{
    open();
    QVERIFY(!image(window->windowIcon()).isNull());
    QCOMPARE(image(window->windowIcon()), image(":/images/favicon.ico"));
}

void TestMainWindow::actionIsNamed_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QByteArray>("icon");

    const auto row = [](const char *name, const char *text, const char *shortcut, const char *icon) {
        QTest::newRow(name) << QByteArray(name) << QString::fromUtf8(text) << QString::fromLatin1(shortcut)
                            << QByteArray(icon);
    };
    row("actionBeenden", "Beenden", "", ":/images/close-icon.png");
    row("actionOpen", "Öffnen...", "Ctrl+F", ":/images/open-icon.png");
    row("actionSaveAs", "Speichern unter...", "Ctrl+U", ":/images/save-as-icon.png");
    row("actionInfo", "Über Z7ConfigTool", "", ":/images/help-icon.png");
    row("actionHilfe", "Hilfe", "", ":/images/Adobe-PDF-Document-icon.png");
    row("actionNeu", "Neu", "Ctrl+N", ":/images/new-icon.png");
    row("actionSave", "Speichern", "Ctrl+S", ":/images/save-icon.png");
    row("actionNorvik_Tessel_Home", "Norvik & Tessel", "", ":/images/web-icon.png");
    row("actionConnect", "Verbindungen...", "", ":/images/connection_24px.png");
    row("actionOptions", "Optionen...", "", ":/images/options-icon.png");
    row("actionMode_ndern", "Mode umschaltren", "", "");
    row("actionTeamviewer", "Teamviewer...", "", ":/images/teamviewer_24px.png");
    row("actionKommunikationsprotokoll", "Kommunikationsprotokoll...", "", ":/images/02-File-icon_24px.png");
}

void TestMainWindow::actionIsNamed()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    QFETCH(QString, shortcut);
    QFETCH(QByteArray, icon);
    open();
    QCOMPARE(action(name).text(), text);
    QCOMPARE(action(name).shortcut().toString(), shortcut);
    QCOMPARE(action(name).icon().isNull(), icon.isEmpty());
    QCOMPARE(image(action(name).icon()), image(icon.constData()));
}

void TestMainWindow::actionTextComesFromLanguageFile()
{
    QSettings(QStringLiteral("deutsch.z7lang"), QSettings::IniFormat)
        .setValue(QStringLiteral("Common/Cancel"), QStringLiteral("Quit"));
    open();
    QCOMPARE(action("actionBeenden").text(), QStringLiteral("Quit"));
}

void TestMainWindow::menusStandInTheirOrder_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("entries");

    const QString line = QStringLiteral("-");
    QTest::newRow("file") << 0 << QStringLiteral("&Datei")
                          << QStringList {QStringLiteral("actionOpen"), QStringLiteral("actionSaveAs"), line,
                                 QStringLiteral("actionBeenden")};
    QTest::newRow("settings") << 1 << QStringLiteral("&Einstellungen")
                              << QStringList {
                                     QStringLiteral("actionConnect"), QStringLiteral("actionOptions")};
    QTest::newRow("help") << 2 << QStringLiteral("&Hilfe")
                          << QStringList {line, QStringLiteral("actionHilfe"), line,
                                 QStringLiteral("actionTeamviewer"), line,
                                 QStringLiteral("actionNorvik_Tessel_Home"), line,
                                 QStringLiteral("actionInfo")};
}

void TestMainWindow::menusStandInTheirOrder()
{
    QFETCH(int, place);
    QFETCH(QString, title);
    QFETCH(QStringList, entries);
    open();
    QCOMPARE(window->menuBar()->actions().size(), 3);
    const QAction *menu = window->menuBar()->actions().at(place);
    QCOMPARE(menu->text(), title);
    QStringList found;
    for (const QAction *entry : menu->menu()->actions())
        found << (entry->isSeparator() ? QStringLiteral("-") : entry->objectName());
    QCOMPARE(found, entries);
}

void TestMainWindow::makersNameKeepsItsAmpersandInMenu()
{
    open();
    auto &menu = child<QMenu>(*window, "menuHilfe");
    QAction &home = action("actionNorvik_Tessel_Home");
    const auto picture = [&] {
        menu.popup(window->mapToGlobal(QPoint()));
        return menu.grab(menu.actionGeometry(&home)).toImage();
    };
    const QImage shown = picture();
    menu.close();
    // The way in which Qt's own menus show an ampersand.
    menu.setStyle(nullptr);
    home.setText(QStringLiteral("Norvik && Tessel"));
    QCOMPARE(shown, picture());
}

void TestMainWindow::someActionsAreInNoMenu()
{
    open();
    for (const char *name : {"actionNeu", "actionSave", "actionMode_ndern", "actionKommunikationsprotokoll"})
        QVERIFY2(action(name).associatedWidgets().isEmpty(), name);
}

void TestMainWindow::idleActionsDoNothing_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"actionNeu", "actionMode_ndern", "actionKommunikationsprotokoll"})
        QTest::newRow(name) << QByteArray(name);
}

void TestMainWindow::idleActionsDoNothing()
{
    QFETCH(QByteArray, name);
    open();
    const QImage before = window->grab().toImage();
    action(name).trigger();
    QVERIFY(window->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(window->grab().toImage(), before);
}

void TestMainWindow::fileActionsAreGreyWithoutDrive()
{
    open();
    for (const char *name : {"actionOpen", "actionSave", "actionSaveAs"})
        QVERIFY2(!action(name).isEnabled(), name);
    for (const char *name : {"BtnOpen", "BtnSaveAs", "BtnFactoryReset", "BtnSetPassword", "BtnResetChanges"})
        QVERIFY2(!child(*window, name).isEnabled(), name);
}

void TestMainWindow::shortcutsOfGreyActionsDoNothing()
{
    open();
    QSignalSpy opened(&action("actionOpen"), SIGNAL(triggered()));
    QSignalSpy saved(&action("actionSaveAs"), SIGNAL(triggered()));
    QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(window.get(), Qt::Key_U, Qt::ControlModifier);
    QCOMPARE(opened.size() + saved.size(), 0);
}

void TestMainWindow::otherActionsWorkWithoutDrive()
{
    open();
    for (const char *name : {"actionBeenden", "actionConnect", "actionOptions", "actionHilfe",
             "actionTeamviewer", "actionNorvik_Tessel_Home", "actionInfo"})
        QVERIFY2(action(name).isEnabled(), name);
}

void TestMainWindow::menuOpensModalDialog_data()
{
    QTest::addColumn<QByteArray>("menu");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("dialog");
    QTest::newRow("connection wizard")
        << QByteArray("menuOptions") << QByteArray("actionConnect") << QByteArray("ConnectionsDialog");
    QTest::newRow("options") << QByteArray("menuOptions") << QByteArray("actionOptions")
                             << QByteArray("optionsdialog");
    QTest::newRow("about") << QByteArray("menuHilfe") << QByteArray("actionInfo")
                           << QByteArray("AboutDialog");
}

void TestMainWindow::menuOpensModalDialog()
{
    QFETCH(QByteArray, menu);
    QFETCH(QByteArray, entry);
    QFETCH(QByteArray, dialog);
    open();
    chooseFromMenu(menu.constData(), entry.constData());
    QWidget *shown = QApplication::activeModalWidget();
    QVERIFY(shown);
    QCOMPARE(shown->metaObject()->className(), dialog.constData());
    QCOMPARE(shown->windowModality(), Qt::ApplicationModal);
    QCOMPARE(shown->parentWidget(), window.get());
}

void TestMainWindow::noDialogIsOpenAtStart()
{
    open();
    QVERIFY(!band<ConnectionsDialog>().isVisible());
    QVERIFY(!band<optionsdialog>().isVisible());
    QVERIFY(!band<AboutDialog>().isVisible());
}

// Polishing a page decodes the pictures of its style sheet.
void TestMainWindow::noPageIsPolishedBeforeItIsShown()
{
    open();
    QCoreApplication::processEvents();
    QVERIFY(window->testAttribute(Qt::WA_WState_Polished));
    QWidgetList pages;
    const QWidgetList tops = QApplication::topLevelWidgets();
    std::copy_if(tops.begin(), tops.end(), std::back_inserter(pages),
        [](const QWidget *widget) { return qobject_cast<const Z7DataWidget *>(widget) != nullptr; });
    QCOMPARE(pages.size(), int(PageNumber::Count));
    for (const QWidget *page : qAsConst(pages))
        QVERIFY2(!page->testAttribute(Qt::WA_WState_Polished), page->metaObject()->className());
}

void TestMainWindow::bandsLieAboveEachOther()
{
    open();
    auto *layout = qobject_cast<QVBoxLayout *>(window->centralWidget()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(6, 6, 6, 6));
    QCOMPARE(layout->spacing(), 0);
    QCOMPARE(layout->count(), 3);
    QCOMPARE(layout->itemAt(0)->widget(), &band<TopMenuWidget>());
    QCOMPARE(layout->itemAt(1)->widget(), &band<MainContentWidget>());
    QCOMPARE(layout->itemAt(2)->widget(), &band<DeviceControlWidget>());
}

void TestMainWindow::middleBandTakesRoomThatIsLeft()
{
    open();
    const int topHeight = band<TopMenuWidget>().height();
    const int contentHeight = band<MainContentWidget>().height();
    const int bottomHeight = band<DeviceControlWidget>().height();
    window->resize(window->width(), window->height() + 100);
    QCoreApplication::processEvents();
    QCOMPARE(band<MainContentWidget>().height(), contentHeight + 100);
    QCOMPARE(band<TopMenuWidget>().height(), topHeight);
    QCOMPARE(band<DeviceControlWidget>().height(), bottomHeight);
}

void TestMainWindow::bandsHaveTheirColours()
{
    open();
    const QColor light(240, 240, 240);
    const QColor blue(72, 131, 181);
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(window->palette().color(group, QPalette::Window), light);
        QCOMPARE(band<TopMenuWidget>().palette().color(group, QPalette::Window), light);
        QCOMPARE(band<MainContentWidget>().palette().color(group, QPalette::Window), blue);
        QCOMPARE(band<DeviceControlWidget>().palette().color(group, QPalette::Window), light);
    }
    QVERIFY(band<TopMenuWidget>().autoFillBackground());
    QVERIFY(band<MainContentWidget>().autoFillBackground());
    QVERIFY(band<DeviceControlWidget>().autoFillBackground());
}

void TestMainWindow::noDriveIsKnownAtStart()
{
    open();
    QCOMPARE(child<QTreeWidget>(*window, "MainMenuTree").topLevelItemCount(), 0);
    QVERIFY(!child(*window, "DeviceCommButtonFrame").isEnabled());
    QCOMPARE(textOf(*window, "LPort"), QString());
}

void TestMainWindow::closingWritesLanguageAndOptions_data()
{
    QTest::addColumn<bool>("byMenu");
    QTest::newRow("title bar") << false;
    QTest::newRow("menu") << true;
}

void TestMainWindow::closingWritesLanguageAndOptions()
{
    QFETCH(bool, byMenu);
    open();
    if (byMenu)
        chooseFromMenu("menuDatei", "actionBeenden");
    else
        window->close();
    QVERIFY(!window->isVisible());
    const QSettings texts(QStringLiteral("deutsch.z7lang"), QSettings::IniFormat);
    QCOMPARE(texts.value(QStringLiteral("Common/Cancel")).toString(), QStringLiteral("Beenden"));
    QCOMPARE(
        texts.value(QStringLiteral("DialogConnection/ScanPort")).toString(), QStringLiteral("Port scannen"));
    const QSettings options(QStringLiteral("Z7Properties.ini"), QSettings::IniFormat);
    QCOMPARE(options.value(QStringLiteral("OPTIONS/language")).toString(), QStringLiteral("deutsch"));
}

void TestMainWindow::closingKeepsForeignTextsOfLanguageFile()
{
    QSettings(QStringLiteral("deutsch.z7lang"), QSettings::IniFormat)
        .setValue(QStringLiteral("Common/NobodyAsks"), QStringLiteral("kept"));
    open();
    window->close();
    QCOMPARE(QSettings(QStringLiteral("deutsch.z7lang"), QSettings::IniFormat)
                 .value(QStringLiteral("Common/NobodyAsks"))
                 .toString(),
        QStringLiteral("kept"));
}

void TestMainWindow::closingEndsProgram()
{
    open();
    QTimer::singleShot(0, window.get(), &QWidget::close);
    QTimer::singleShot(10000, window.get(), [] { QApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
}

void TestMainWindow::nothingIsWrittenWithoutClosing()
{
    open();
    window.reset();
    QVERIFY(!QFile::exists(QStringLiteral("deutsch.z7lang")));
    QVERIFY(!QFile::exists(QStringLiteral("Z7Properties.ini")));
}

QTEST_MAIN(TestMainWindow)

#include "tst_mainwindow.moc"
