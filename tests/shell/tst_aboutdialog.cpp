// What the program says about itself.

#include "control/services/options.h"
#include "control/services/services.h"
#include "shell/aboutdialog.h"
#include "shell/mainwindow.h"
#include "tests/shell/openedurls.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/person.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestAboutDialog : public IsolatedTest
{
    Q_OBJECT

private slots:
    void titleAndVersionAreShown();
    void titleComesFromLanguageFileButVersionDoesNot();
    void purposeAndMakerComeFromLanguageFile();
    void purposeAndMakerAreToldWithoutLanguageFile();
    void linkLeadsToHomePage();
    void linkTextsAreNoMarkup();
    void clickOnLinkOpensHomePage();
    void logoStandsOutInHeader();
    void okClosesDialog();

    void menuOpensDialog();
    void dialogIsInWindowsLanguageUntilRestart();
};

void TestAboutDialog::titleAndVersionAreShown()
{
    const AboutDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Z7ConfigTool"));
    QCOMPARE(textOf(dialog, "lApplicationVersion"), QStringLiteral("Z7ConfigTool\nVersion 1.0.6"));
}

void TestAboutDialog::titleComesFromLanguageFileButVersionDoesNot()
{
    WorkingFolder::writeText("deutsch.z7lang", "[Common]\nApplicationTitle=Drive tool\nOK=Fine\n");
    const AboutDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Drive tool"));
    QCOMPARE(textOf(dialog, "lApplicationVersion"), QStringLiteral("Drive tool\nVersion 1.0.6"));
    QCOMPARE(child<QPushButton>(dialog, "BtnOK").text(), QStringLiteral("Fine"));
}

void TestAboutDialog::purposeAndMakerComeFromLanguageFile()
{
    WorkingFolder::writeText(
        "deutsch.z7lang", "[Common]\nApplicationDescriptionText=What for\nCopyright=Who\n");
    const AboutDialog dialog;
    QCOMPARE(textOf(dialog, "lSubTitle"), QStringLiteral("What for"));
    QCOMPARE(textOf(dialog, "lCopyright"), QStringLiteral("Who"));
}

void TestAboutDialog::purposeAndMakerAreToldWithoutLanguageFile()
{
    const AboutDialog dialog;
    QVERIFY(textOf(dialog, "lSubTitle").contains(QStringLiteral("Z7")));
    QVERIFY(textOf(dialog, "lCopyright").contains(QStringLiteral("Norvik & Tessel GmbH")));
}

void TestAboutDialog::linkLeadsToHomePage()
{
    WorkingFolder::writeText(
        "deutsch.z7lang", "[Common]\nURLHome=http://drives.example/z7\nURLHomeTextLink=Our drives\n");
    const AboutDialog dialog;
    const auto &link = child<QLabel>(dialog, "lHyperlink");
    QCOMPARE(link.text(), QStringLiteral("<a href=\"http://drives.example/z7\">Our drives</a>"));
    QCOMPARE(link.textInteractionFlags(), Qt::TextInteractionFlags(Qt::TextBrowserInteraction));
    QVERIFY(link.openExternalLinks());
}

void TestAboutDialog::linkTextsAreNoMarkup()
{
    WorkingFolder::writeText("deutsch.z7lang",
        "[Common]\nURLHome=\"http://drives.example/?a=1&b=2\"\nURLHomeTextLink=\"Drives <&> more\"\n");
    const AboutDialog dialog;
    QCOMPARE(textOf(dialog, "lHyperlink"),
        QStringLiteral("<a href=\"http://drives.example/?a=1&amp;b=2\">Drives &lt;&amp;&gt; more</a>"));
}

void TestAboutDialog::clickOnLinkOpensHomePage()
{
    WorkingFolder::writeText(
        "deutsch.z7lang", "[Common]\nURLHome=http://drives.example\nURLHomeTextLink=A long name of a link\n");
    const OpenedUrls browser(QStringLiteral("http"));
    AboutDialog dialog;
    dialog.show();
    QTest::mouseClick(&child(dialog, "lHyperlink"), Qt::LeftButton);
    QCOMPARE(browser.urls, QList<QUrl> {QUrl(QStringLiteral("http://drives.example"))});
}

void TestAboutDialog::logoStandsOutInHeader()
{
    const AboutDialog dialog;
    const QImage logo = pictureOf(dialog, "lLogo");
    QVERIFY(!logo.isNull());
    QCOMPARE(logo, QIcon(QStringLiteral(":/images/logo.png")).pixmap(logo.size()).toImage());
    QCOMPARE(child(dialog, "fLogo").palette().color(QPalette::Window), QColor(72, 131, 181));
    // The logo is drawn in the same blue.
    QCOMPARE(child(dialog, "fInnerLogoFrame").palette().color(QPalette::Window), QColor(Qt::white));
}

void TestAboutDialog::okClosesDialog()
{
    AboutDialog dialog;
    dialog.show();
    QCOMPARE(child<QPushButton>(dialog, "BtnOK").text(), QStringLiteral("OK"));
    QVERIFY(Person::press(dialog, "BtnOK"));
    QVERIFY(!dialog.isVisible());
}

void TestAboutDialog::menuOpensDialog()
{
    MainWindow window;
    auto &dialog = *window.findChild<AboutDialog *>();
    QVERIFY(!dialog.isVisible());
    window.findChild<QAction *>(QStringLiteral("actionInfo"))->trigger();
    QVERIFY(dialog.isVisible());
    QVERIFY(dialog.isModal());
    // The window has asked for its title first, and its default is longer.
    QCOMPARE(textOf(dialog, "lApplicationVersion"),
        QStringLiteral("Z7ConfigTool - Norvik & Tessel GmbH\nVersion 1.0.6"));
}

void TestAboutDialog::dialogIsInWindowsLanguageUntilRestart()
{
    WorkingFolder::writeText("deutsch.z7lang", "[Common]\nCopyright=Hersteller\n");
    WorkingFolder::writeText("english.z7lang", "[Common]\nCopyright=Maker\n");
    const auto copyright = [](const MainWindow &window) {
        window.findChild<QAction *>(QStringLiteral("actionInfo"))->trigger();
        return textOf(*window.findChild<AboutDialog *>(), "lCopyright");
    };
    auto window = std::make_unique<MainWindow>();
    Z7Services::instance()->options()->setLanguage(QStringLiteral("english"));
    QCOMPARE(copyright(*window), QStringLiteral("Hersteller"));
    window->close();
    window = std::make_unique<MainWindow>();
    QCOMPARE(copyright(*window), QStringLiteral("Maker"));
}

QTEST_MAIN(TestAboutDialog)

#include "tst_aboutdialog.moc"
