// The manual, the remote help and the home page: what the window asks the system to open.

#include "shell/mainwindow.h"
#include "tests/shell/openedurls.h"
#include "tests/shell/shelltest.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QAction>
#include <QtTest>

#include <memory>

using namespace ShellTest;

class TestDocuments : public IsolatedTest
{
    Q_OBJECT

private slots:
    void documentIsLookedForInWorkingFolder_data();
    void documentIsLookedForInWorkingFolder();
    void documentIsLookedForInFolderOfMoment_data();
    void documentIsLookedForInFolderOfMoment();
    void fileNameComesFromLanguageFile_data();
    void fileNameComesFromLanguageFile();
    void documentThatOpensShowsNoBox_data();
    void documentThatOpensShowsNoBox();
    void documentThatDoesNotOpenIsReported_data();
    void documentThatDoesNotOpenIsReported();
    void missingDocumentIsReportedWhateverSystemSays_data();
    void missingDocumentIsReportedWhateverSystemSays();
    void folderIsNoDocument();
    void documentIsFileThatAddressNames_data();
    void documentIsFileThatAddressNames();
    void reportComesFromLanguageFile_data();
    void reportComesFromLanguageFile();

    void homePageIsOpened_data();
    void homePageIsOpened();
    void homePageIsSettingOfLanguageFile();
    void homePageThatDoesNotOpenIsNotReported();

private:
    void tidyUp() override;

    /// One row for each document, with its action, the name of its file and the keys of its texts.
    static void documentRows();
    void open();
    /// Chooses the menu entry, or presses the button of that name.
    void use(const QByteArray &control) const;

    std::unique_ptr<MainWindow> window;
};

void TestDocuments::tidyUp()
{
    window.reset();
}

void TestDocuments::open()
{
    window = std::make_unique<MainWindow>();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void TestDocuments::use(const QByteArray &control) const
{
    if (auto *action = window->findChild<QAction *>(QString::fromLatin1(control)))
        action->trigger();
    else
        QVERIFY(Person::press(*window, control.constData()));
}

void TestDocuments::documentRows()
{
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("fileKey");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("textKey");

    const auto row = [](const char *name, const char *control, bool isManual) {
        QTest::newRow(name) << QByteArray(control)
                            << (isManual ? QStringLiteral("Z7Manual.pdf")
                                         : QStringLiteral("TeamViewerQS_de_NuT.exe"))
                            << (isManual ? QStringLiteral("PdfHelpFile") : QStringLiteral("TeamviewerExe"))
                            << (isManual ? QStringLiteral("Die PDF-Hilfedatei kann nicht geöffnet werden.")
                                         : QStringLiteral("Der Teamviewer kann nicht geöffnet werden."))
                            << (isManual ? QStringLiteral("UnableToOpenPdfHelpFile")
                                         : QStringLiteral("UnableToOpenTeamviewerFile"));
    };
    row("manual, by menu", "actionHilfe", true);
    row("manual, by button", "BtnPdfHelp", true);
    row("remote help, by menu", "actionTeamviewer", false);
}

void TestDocuments::documentIsLookedForInWorkingFolder_data()
{
    documentRows();
}

void TestDocuments::documentIsLookedForInWorkingFolder()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, file);
    WorkingFolder::writeText(file, QString());
    const OpenedUrls viewer(QStringLiteral("file"));
    open();
    use(control);
    QVERIFY(QDir::currentPath() != QCoreApplication::applicationDirPath());
    QCOMPARE(viewer.urls, QList<QUrl> {QUrl("file:///" + QDir::currentPath() + '/' + file)});
}

void TestDocuments::documentIsLookedForInFolderOfMoment_data()
{
    documentRows();
}

void TestDocuments::documentIsLookedForInFolderOfMoment()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, file);
    const OpenedUrls viewer(QStringLiteral("file"));
    open();
    const QString folder = QDir::currentPath() + QStringLiteral("/Handbücher und mehr/");
    QVERIFY(QDir().mkdir(folder));
    QDir::setCurrent(folder);
    WorkingFolder::writeText(file, QString());
    use(control);
    QCOMPARE(viewer.urls.size(), 1);
    // The address has three slashes before a path that begins with one of its own.
    QCOMPARE(QDir::cleanPath(viewer.urls.first().toLocalFile()), folder + file);
}

void TestDocuments::fileNameComesFromLanguageFile_data()
{
    documentRows();
}

void TestDocuments::fileNameComesFromLanguageFile()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, fileKey);
    WorkingFolder::writeText("deutsch.z7lang", QStringLiteral("[Common]\n%1=other.txt\n").arg(fileKey));
    WorkingFolder::writeText("other.txt", QString());
    const OpenedUrls viewer(QStringLiteral("file"));
    open();
    use(control);
    QCOMPARE(viewer.urls.size(), 1);
    QCOMPARE(viewer.urls.first().fileName(), QStringLiteral("other.txt"));
}

void TestDocuments::documentThatOpensShowsNoBox_data()
{
    documentRows();
}

void TestDocuments::documentThatOpensShowsNoBox()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, file);
    WorkingFolder::writeText(file, QString());
    const OpenedUrls viewer(QStringLiteral("file"));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    open();
    use(control);
    QCoreApplication::processEvents();
    QCOMPARE(viewer.urls.size(), 1);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(user.count(), 0);
}

void TestDocuments::documentThatDoesNotOpenIsReported_data()
{
    documentRows();
}

// Without a display there are no programs that could open anything.
void TestDocuments::documentThatDoesNotOpenIsReported()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, file);
    QFETCH(QString, text);
    WorkingFolder::writeText(file, QString());
    const MessageBoxAnswerer user(QMessageBox::Ok);
    open();
    use(control);
    QCOMPARE(user.count(), 1);
    // The window has asked for its title first, and its default is longer.
    QCOMPARE(user.last().title, QStringLiteral("Z7ConfigTool - Norvik & Tessel GmbH"));
    QCOMPARE(user.last().text, text);
    QCOMPARE(user.last().icon, QMessageBox::Critical);
    QCOMPARE(user.last().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(user.last().hasParent);
}

void TestDocuments::missingDocumentIsReportedWhateverSystemSays_data()
{
    documentRows();
}

// What the system starts to open a file fails without a word if there is none.
void TestDocuments::missingDocumentIsReportedWhateverSystemSays()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, text);
    const OpenedUrls viewer(QStringLiteral("file"));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    open();
    use(control);
    QCOMPARE(viewer.urls.size(), 1);
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.last().text, text);
    QCOMPARE(user.last().icon, QMessageBox::Critical);
}

void TestDocuments::folderIsNoDocument()
{
    QVERIFY(QDir().mkdir(QStringLiteral("Z7Manual.pdf")));
    const OpenedUrls viewer(QStringLiteral("file"));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    open();
    use("BtnPdfHelp");
    QCOMPARE(user.count(), 1);
}

void TestDocuments::documentIsFileThatAddressNames_data()
{
    QTest::addColumn<QString>("folderName");
    QTest::addColumn<bool>("isReported");
    QTest::newRow("plain") << QStringLiteral("hall 3") << false;
    QTest::newRow("a sharp cuts the address") << QStringLiteral("hall #3") << true;
    QTest::newRow("a percent sign stands for another one") << QStringLiteral("hall 100%25") << true;
}

void TestDocuments::documentIsFileThatAddressNames()
{
    QFETCH(QString, folderName);
    QFETCH(bool, isReported);
    const OpenedUrls viewer(QStringLiteral("file"));
    open();
    QVERIFY(QDir().mkdir(folderName));
    QDir::setCurrent(folderName);
    WorkingFolder::writeText(QStringLiteral("Z7Manual.pdf"), QString());
    const MessageBoxAnswerer user(QMessageBox::Ok);
    use("BtnPdfHelp");
    QCOMPARE(user.count(), isReported ? 1 : 0);
}

void TestDocuments::reportComesFromLanguageFile_data()
{
    documentRows();
}

void TestDocuments::reportComesFromLanguageFile()
{
    QFETCH(QByteArray, control);
    QFETCH(QString, textKey);
    WorkingFolder::writeText(
        "deutsch.z7lang", QStringLiteral("[Common]\nApplicationTitle=Tool\n%1=Sorry\n").arg(textKey));
    const MessageBoxAnswerer user(QMessageBox::Ok);
    open();
    use(control);
    QCOMPARE(user.last().title, QStringLiteral("Tool"));
    QCOMPARE(user.last().text, QStringLiteral("Sorry"));
}

void TestDocuments::homePageIsOpened_data()
{
    QTest::addColumn<QByteArray>("control");
    QTest::newRow("by menu") << QByteArray("actionNorvik_Tessel_Home");
    QTest::newRow("by button") << QByteArray("BtnWeb");
}

void TestDocuments::homePageIsOpened()
{
    QFETCH(QByteArray, control);
    const OpenedUrls browser(QStringLiteral("https"));
    open();
    use(control);
    QCOMPARE(browser.urls, QList<QUrl> {QUrl(QStringLiteral("https://www.norvik-tessel.example"))});
}

void TestDocuments::homePageIsSettingOfLanguageFile()
{
    WorkingFolder::writeText("deutsch.z7lang", "[Common]\nURLHome=http://drives.example/z7\n");
    const OpenedUrls browser(QStringLiteral("http"));
    open();
    use("BtnWeb");
    QCOMPARE(browser.urls, QList<QUrl> {QUrl(QStringLiteral("http://drives.example/z7"))});
}

void TestDocuments::homePageThatDoesNotOpenIsNotReported()
{
    const MessageBoxAnswerer user(QMessageBox::Ok);
    open();
    use("BtnWeb");
    QCoreApplication::processEvents();
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(user.count(), 0);
}

QTEST_MAIN(TestDocuments)

#include "tst_documents.moc"
