// Saving the selected drive's parameters, and putting a file on drives, through the window and the toolkit's
// dialogs.

#include "control/services/services.h"
#include "model/parameterfile.h"
#include "tests/shell/connectedwindow.h"
#include "tests/support/filedialogs.h"
#include "tests/support/isolatedtest.h"
#include "tests/support/messageboxes.h"
#include "tests/support/person.h"

#include <QAction>
#include <QDialogButtonBox>

#include <optional>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace ShellTest;

namespace {

QByteArray parameterFile(const char *version)
{
    return QByteArray("<Z7Device><DeviceInfo SoftwareVersion=\"") + version
        + "\"/><Z7-Parameter><parameter id=\"23\" val=\"777\"/></Z7-Parameter></Z7Device>";
}

/// The toolkit's way to press a button of the file dialog that opens next, after typing a name.
void pressInFileDialog(QDialogButtonBox::StandardButton button, const QString &name)
{
    QTimer::singleShot(0, qApp, [button, name] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        Person::type(*dialog, "fileNameEdit", name);
        Person::press(dialog->findChild<QDialogButtonBox *>()->button(button));
    });
}

/// A file that is there and that nobody can open: the entry of a socket.
void makeUnreadableFile(const char *name)
{
    sockaddr_un address = {AF_UNIX, {}};
    qstrncpy(address.sun_path, name, sizeof address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    ::close(socket);
}

} // namespace

class TestParameterFileActions : public IsolatedTest
{
    Q_OBJECT

private slots:
    void saveDialogAsksForParameterFile();
    void suffixIsAppendedUnlessItStandsInPath_data();
    void suffixIsAppendedUnlessItStandsInPath();
    void savedFileHoldsUsersValues();
    void driveWithoutChangesIsSavedAsItIs();
    void saveAlwaysAsksForName();
    void savingAgainReplacesFile();
    void nameIsConfirmedWithButton();
    void cancelledSavingWritesNothing_data();
    void cancelledSavingWritesNothing();
    void nameThatCannotBeOpenedGetsBox_data();
    void nameThatCannotBeOpenedGetsBox();

    void openDialogAsksForParameterFile();
    void cancelledOpeningKeepsFileOfBefore();
    void driveOfFilesVersionIsOffered();
    void driveOfAnotherVersionIsNotOffered();
    void amongManyOnlyDrivesOfFilesVersionAreOffered();
    void selectionOpensWithoutIntroduction();
    void tickedDrivesGetValuesAsPendingChanges();
    void valuesOfFileReplaceUsersChanges();
    void fileWithoutParametersKeepsUsersChanges();
    void nothingIsSentToDrives();
    void eachOpeningHasItsOwnDialog();
    void dialogOfFileServesLaterActionsToo();
    void savedChangesTakePlaceOfOpenedFile();
    void brokenFileShowsReadersErrorAndStaysUsable();
    void fileThatCannotBeReadGetsBox();

    void menuAndShortcutAskForFile_data();
    void menuAndShortcutAskForFile();

private:
    void prepare() override;
    void tidyUp() override;

    void open(const QString &name)
    {
        const FileDialogUser user(name);
        ui->press("BtnOpen");
        QCOMPARE(user.count(), 1);
    }

    std::unique_ptr<ConnectedWindow> ui;
};

void TestParameterFileActions::prepare()
{
    writeDefinitions();
    ui = std::make_unique<ConnectedWindow>(QList<int> {3, 4});
    QVERIFY(ui->begin({3, 4}));
}

void TestParameterFileActions::tidyUp()
{
    ui->window->close();
    ui.reset();
}

void TestParameterFileActions::saveDialogAsksForParameterFile()
{
    const FileDialogUser user("drive");
    ui->press("BtnSaveAs");
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.title(), QStringLiteral("Datei speichern"));
    QCOMPARE(user.folder(), QDir::currentPath());
    QCOMPARE(user.filters(), QStringList("Z7-Parameterdatei (*.z7param)"));
}

void TestParameterFileActions::suffixIsAppendedUnlessItStandsInPath_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::newRow("no suffix") << "drive"
                               << "drive.z7param";
    QTest::newRow("the suffix") << "drive.z7param"
                                << "drive.z7param";
    QTest::newRow("the suffix in the middle") << "drive.z7param.old"
                                              << "drive.z7param.old";
    QTest::newRow("the suffix in the folder") << "old.z7param/drive"
                                              << "old.z7param/drive";
    QTest::newRow("the suffix in capitals") << "drive.Z7PARAM"
                                            << "drive.Z7PARAM.z7param";
}

void TestParameterFileActions::suffixIsAppendedUnlessItStandsInPath()
{
    QFETCH(QString, typed);
    QFETCH(QString, written);
    QDir().mkdir("old.z7param");
    const FileDialogUser user(typed);
    ui->press("BtnSaveAs");
    QVERIFY(QFile::exists(written));
    const QFileInfo file(written);
    QCOMPARE(file.dir().entryList({"drive*"}), QStringList(file.fileName()));
}

void TestParameterFileActions::savedFileHoldsUsersValues()
{
    ui->change("1234");
    const FileDialogUser user("drive");
    ui->press("BtnSaveAs");
    const QByteArray saved = WorkingFolder::read("drive.z7param");
    QVERIFY2(saved.contains("<DeviceInfo SoftwareVersion=\"V123\"/>"), saved.constData());
    QVERIFY2(saved.contains("<parameter id=\"23\" val=\"1234\"/>"), saved.constData());
}

void TestParameterFileActions::driveWithoutChangesIsSavedAsItIs()
{
    ui->bus.command("set 3 param 23 -77");
    QVERIFY(ui->waitForAPass());
    const MessageBoxAnswerer box(QMessageBox::Ok);
    const FileDialogUser user("drive");
    ui->press("BtnSaveAs");
    const QByteArray saved = WorkingFolder::read("drive.z7param");
    QVERIFY2(saved.contains("<parameter id=\"23\" val=\"-77\"/>"), saved.constData());
    QCOMPARE(box.count(), 0);
}

void TestParameterFileActions::saveAlwaysAsksForName()
{
    const FileDialogUser user("drive.z7param");
    const MessageBoxAnswerer overwrite(QMessageBox::Yes);
    ui->press("BtnSaveAs");
    ui->window->findChild<QAction *>("actionSave")->trigger();
    QCOMPARE(user.count(), 2);
    QCOMPARE(overwrite.count(), 1);
}

void TestParameterFileActions::savingAgainReplacesFile()
{
    const FileDialogUser user("drive.z7param");
    const MessageBoxAnswerer overwrite(QMessageBox::Yes);
    ui->press("BtnSaveAs");
    ui->change("1234");
    ui->press("BtnSaveAs");
    const QByteArray saved = WorkingFolder::read("drive.z7param");
    QVERIFY2(saved.contains("<parameter id=\"23\" val=\"1234\"/>"), saved.constData());
    QCOMPARE(saved.count("<DeviceInfo"), 1);
}

void TestParameterFileActions::nameIsConfirmedWithButton()
{
    pressInFileDialog(QDialogButtonBox::Save, "drive");
    ui->press("BtnSaveAs");
    QVERIFY(QFile::exists("drive.z7param"));
}

void TestParameterFileActions::cancelledSavingWritesNothing_data()
{
    QTest::addColumn<bool>("byButton");
    QTest::newRow("escape") << false;
    QTest::newRow("button, after a name was typed") << true;
}

void TestParameterFileActions::cancelledSavingWritesNothing()
{
    QFETCH(bool, byButton);
    std::optional<FileDialogUser> user;
    if (byButton)
        pressInFileDialog(QDialogButtonBox::Cancel, "drive");
    else
        user.emplace(QString());
    ui->press("BtnSaveAs");
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(QDir().entryList({"*.z7param"}), QStringList());
    QVERIFY(!Z7Services::instance()->parameterFile());
}

void TestParameterFileActions::nameThatCannotBeOpenedGetsBox_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("in a missing folder") << "missing/drive.z7param";
    QTest::newRow("of a pipe") << "pipe.z7param";
}

void TestParameterFileActions::nameThatCannotBeOpenedGetsBox()
{
    QFETCH(QString, typed);
    QCOMPARE(mkfifo("pipe.z7param", 0666), 0);
    const FileDialogUser user(typed);
    const MessageBoxAnswerer box([](QMessageBox *shown) {
        const bool isQuestion = shown->standardButtons() & QMessageBox::Yes; // whether to overwrite
        Person::press(shown->button(isQuestion ? QMessageBox::Yes : QMessageBox::Ok));
    });
    ui->press("BtnSaveAs");
    QVERIFY(box.count() >= 1);
    QCOMPARE(box.last().text, QStringLiteral("Die Datei kann nicht geöffnet werden"));
    QCOMPARE(box.last().title, QStringLiteral("Parameterdatei"));
    QCOMPARE(box.last().icon, QMessageBox::Critical);
    QVERIFY(!box.last().hasParent);
}

void TestParameterFileActions::openDialogAsksForParameterFile()
{
    const FileDialogUser user {QString()};
    ui->press("BtnOpen");
    QCOMPARE(user.count(), 1);
    QCOMPARE(user.title(), QStringLiteral("Datei öffnen"));
    QCOMPARE(user.folder(), QDir::currentPath());
    QCOMPARE(user.filters(), QStringList("Z7-Parameterdatei (*.z7param)"));
}

void TestParameterFileActions::cancelledOpeningKeepsFileOfBefore()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    ui->selection().close();
    const Z7ParameterFile *before = Z7Services::instance()->parameterFile();
    const FileDialogUser user {QString()};
    ui->press("BtnOpen");
    QCOMPARE(Z7Services::instance()->parameterFile(), before);
    QCOMPARE(before->userParams().value(23).value, 777);
}

void TestParameterFileActions::driveOfFilesVersionIsOffered()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    QVERIFY(ui->selection().isVisible());
    QVERIFY(ui->selection().isModal());
    QCOMPARE(ui->rows().count(), 2);
    QCOMPARE(ui->rows().item(0)->text(), deviceName(drive(3)) + " (V123)");
    QCOMPARE(ui->rows().item(1)->text(), deviceName(drive(4)) + " (V123)");
}

void TestParameterFileActions::driveOfAnotherVersionIsNotOffered()
{
    WorkingFolder::write("a.z7param", parameterFile("V1234"));
    open("a.z7param");
    QVERIFY(ui->selection().isVisible());
    QCOMPARE(ui->rows().count(), 0);
}

void TestParameterFileActions::amongManyOnlyDrivesOfFilesVersionAreOffered()
{
    writeDefinitions("V124");
    for (const char *further : {"add-drive 7,version=V124", "add-drive 8"})
        QCOMPARE(ui->bus.command(further), QByteArray("ok"));
    QVERIFY(ui->connectDrives({7, 8}));
    QVERIFY(ui->showDrive(3));
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    QCOMPARE(ui->offeredDrives(),
        (QStringList {"Port0 - Z7.3 (V123)", "Port0 - Z7.4 (V123)", "Port0 - Z7.8 (V123)"}));
}

void TestParameterFileActions::selectionOpensWithoutIntroduction()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    QCOMPARE(textOf(ui->selection(), "LIntro"), QString());
}

void TestParameterFileActions::tickedDrivesGetValuesAsPendingChanges()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    ui->pick({0});
    // The page shows them at once.
    QCOMPARE(ui->userValue(), QStringLiteral("777"));
    QCOMPARE(ui->pendingValue(3), QStringLiteral("777"));
    QCOMPARE(ui->pendingValue(4), QString());
}

void TestParameterFileActions::valuesOfFileReplaceUsersChanges()
{
    ui->change("5");
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    ui->pick({0, 1});
    QCOMPARE(ui->pendingValue(3), QStringLiteral("777"));
    QCOMPARE(ui->pendingValue(4), QStringLiteral("777"));
}

void TestParameterFileActions::fileWithoutParametersKeepsUsersChanges()
{
    ui->change("5");
    WorkingFolder::write("a.z7param", "<Z7Device><DeviceInfo SoftwareVersion=\"V123\"/></Z7Device>");
    open("a.z7param");
    ui->pick({0});
    QCOMPARE(ui->pendingValue(3), QStringLiteral("5"));
}

void TestParameterFileActions::nothingIsSentToDrives()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    ui->pick({0, 1});
    QVERIFY(ui->waitForAPass());
    // 03 writes a parameter.
    QCOMPARE(ui->requests('\x03'), QByteArrayList());
    QVERIFY(ui->bus.command("get 3 param 23") != "ok 777");
}

void TestParameterFileActions::eachOpeningHasItsOwnDialog()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    ui->selection().close();
    open("a.z7param");
    QCOMPARE(ui->window->findChildren<DeviceSelectionDialog *>().size(), 2);
    QSignalSpy selected(&ui->selection(), SIGNAL(deviceSelected(int)));
    ui->pick({0});
    QCOMPARE(selected.count(), 1);
}

void TestParameterFileActions::dialogOfFileServesLaterActionsToo()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    // No control leads to the default values.
    QMetaObject::invokeMethod(ui->window.get(), "SetDefaultValues");
    QCOMPARE(ui->window->findChildren<DeviceSelectionDialog *>().size(), 1);
    ui->pick({0});
    // Only the file's values are put into the field, the defaults come after them.
    QCOMPARE(ui->userValue(), QStringLiteral("777"));
    QCOMPARE(ui->pendingValue(3), QStringLiteral("1200"));
}

void TestParameterFileActions::savedChangesTakePlaceOfOpenedFile()
{
    WorkingFolder::write("a.z7param", parameterFile("V123"));
    open("a.z7param");
    QVERIFY(Person::press(ui->selection(), "BtnAbort"));
    ui->change("555");
    {
        const FileDialogUser user(QStringLiteral("b.z7param"));
        ui->press("BtnSaveAs");
    }
    // The dialog of the file serves this action too, and no control leads to it.
    QMetaObject::invokeMethod(ui->window.get(), "SetDefaultValues");
    ui->pick({0});
    QCOMPARE(ui->userValue(), QStringLiteral("555"));
    QCOMPARE(ui->pendingValue(3), QStringLiteral("1200"));
}

void TestParameterFileActions::brokenFileShowsReadersErrorAndStaysUsable()
{
    WorkingFolder::write("a.z7param", parameterFile("V123").chopped(20));
    const MessageBoxAnswerer box(QMessageBox::Ok);
    open("a.z7param");
    QCOMPARE(box.count(), 1);
    QCOMPARE(box.last().title, QStringLiteral("Parameterdatei"));
    QVERIFY(!box.last().text.isEmpty());
    QVERIFY(box.last().text != "Parameterdatei");
    QCOMPARE(ui->rows().count(), 2);
    ui->pick({0});
    QCOMPARE(ui->userValue(), QStringLiteral("777"));
}

void TestParameterFileActions::fileThatCannotBeReadGetsBox()
{
    makeUnreadableFile("a.z7param");
    const MessageBoxAnswerer box(QMessageBox::Ok);
    open("a.z7param");
    QCOMPARE(box.count(), 1);
    QCOMPARE(box.last().title, QStringLiteral("Parameterdatei"));
    QCOMPARE(box.last().text, QStringLiteral("Parameterdatei"));
    QCOMPARE(box.last().icon, QMessageBox::Critical);
    QVERIFY(!box.last().hasParent);
    QCOMPARE(ui->rows().count(), 0);
}

void TestParameterFileActions::menuAndShortcutAskForFile_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("title");
    const QString openTitle = QStringLiteral("Datei öffnen");
    const QString saveTitle = QStringLiteral("Datei speichern");
    QTest::newRow("open, by menu") << "actionOpen" << 0 << openTitle;
    QTest::newRow("open, by key") << QString() << int(Qt::Key_F) << openTitle;
    QTest::newRow("save as, by menu") << "actionSaveAs" << 0 << saveTitle;
    QTest::newRow("save as, by key") << QString() << int(Qt::Key_U) << saveTitle;
}

void TestParameterFileActions::menuAndShortcutAskForFile()
{
    QFETCH(QString, action);
    QFETCH(int, key);
    const FileDialogUser user {QString()};
    // Without a display nobody gives the window the keys back when the wizard has closed.
    QApplication::setActiveWindow(ui->window.get());
    if (key)
        QTest::keyClick(ui->window.get(), Qt::Key(key), Qt::ControlModifier);
    else
        ui->window->findChild<QAction *>(action)->trigger();
    QCOMPARE(user.count(), 1);
    QTEST(user.title(), "title");
}

QTEST_MAIN(TestParameterFileActions)

#include "tst_parameterfileactions.moc"
