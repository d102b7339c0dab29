// Options and language files as a person or a failing disk may leave them: never a crash, never a lost text.

#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

const QString optionsFile = QStringLiteral("Z7Properties.ini");
const QString languageFile = QStringLiteral("deutsch.z7lang");
const QString damagedSuffix = QStringLiteral(".damaged");

/// The program from its start to its normal end, without drives.
void runProgram()
{
    Z7Services::instance()->options()->timeout();
    languageText("Common", "OK", QStringLiteral("OK"));
    Z7Services::shutdown();
}

/// Gives up root's right to write everywhere for as long as it lives.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (m_before == 0 && seteuid(nobody) != 0)
            qFatal("cannot become an ordinary user");
    }
    ~OrdinaryUser()
    {
        if (seteuid(m_before) != 0)
            qFatal("cannot become root again");
    }
    Q_DISABLE_COPY(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;
    uid_t m_before = geteuid();
};

constexpr QFile::Permissions readable =
    QFile::ReadOwner | QFile::ReadUser | QFile::ReadGroup | QFile::ReadOther;
constexpr QFile::Permissions writable =
    QFile::WriteOwner | QFile::WriteUser | QFile::WriteGroup | QFile::WriteOther;
constexpr QFile::Permissions searchable =
    QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther;

enum class Thing { Pipe, Folder, Device, Socket };

/// One like /dev/zero. That of the machine is not put at stake, unless nobody here could do it harm.
bool makeDevice(const QString &name)
{
    return mknod(QFile::encodeName(name).constData(), S_IFCHR | 0666, makedev(1, 5)) == 0
        || (geteuid() != 0 && QFile::link(QStringLiteral("/dev/zero"), name));
}

void make(Thing thing, const QString &name)
{
    const QByteArray path = QFile::encodeName(name);
    bool isMade = false;
    if (thing == Thing::Pipe)
        isMade = mkfifo(path.constData(), 0666) == 0;
    else if (thing == Thing::Folder)
        isMade = QDir().mkdir(name);
    else if (thing == Thing::Device)
        isMade = makeDevice(name);
    else
        isMade = mknod(path.constData(), S_IFSOCK | 0666, 0) == 0;
    if (!isMade)
        qFatal("%s cannot be made", path.constData());
}

/// What lies there, without following links.
mode_t kindOf(const QString &name)
{
    struct stat status
    {
    };
    return lstat(QFile::encodeName(name).constData(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

mode_t permissionsOf(const QString &name)
{
    struct stat status
    {
    };
    return stat(QFile::encodeName(name).constData(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
}

void addThings(const QString &prefix, const QString &fileName)
{
    const auto row = [&](const char *name, Thing thing) {
        QTest::newRow(qPrintable(prefix + QLatin1String(name))) << fileName << thing;
    };
    row("a pipe", Thing::Pipe);
    row("a folder", Thing::Folder);
    row("a device", Thing::Device);
    row("a socket", Thing::Socket);
}

void addFileColumns()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("content");
}

} // namespace

Q_DECLARE_METATYPE(Thing)

class TestSettingsFile : public IsolatedTest
{
    Q_OBJECT

private slots:
    void damagedFileIsKeptBesideNewOne_data();
    void damagedFileIsKeptBesideNewOne();
    void goodLinesOfDamagedFileCount();
    void soundFileLeavesNoCopy_data();
    void soundFileLeavesNoCopy();
    void textWithUnquotedCommaSurvivesRun();
    void fileWithUtf8MarkKeepsItsUmlauts();
    void fileCutOffInTextKeepsTextsBefore();
    void fileOfMoreThan16MegabytesIsNeitherReadNorChanged_data();
    void fileOfMoreThan16MegabytesIsNeitherReadNorChanged();
    void folderOfThatNameIsLeftAlone();
    void readOnlyFileStaysAsItIs();
    void readOnlyFolderStaysAsItIs();
    void fileThatMayNotBeReadIsNotReplaced();

    void whatIsNoFileCountsAsMissing_data();
    void whatIsNoFileCountsAsMissing();
    void whatIsNoFileInPlaceOfCopyKeepsDamagedFile_data();
    void whatIsNoFileInPlaceOfCopyKeepsDamagedFile();
    void pipeInPlaceOfLockDoesNotHoldEnd();

    void linkStaysAndItsTargetIsWritten_data();
    void linkStaysAndItsTargetIsWritten();
    void linkToNothingMakesItsTarget();
    void linksInCircleAreLeftAlone();
    void writtenFileKeepsItsPermissions_data();
    void writtenFileKeepsItsPermissions();
    void nothingIsWrittenWhereNothingIsNew();
    void textIsWrittenWhateverItHolds();
};

void TestSettingsFile::damagedFileIsKeptBesideNewOne_data()
{
    addFileColumns();
    const auto rows = [](const char *name, const QByteArray &content) {
        QTest::addRow("options: %s", name) << optionsFile << content;
        QTest::addRow("language: %s", name) << languageFile << content;
    };
    rows("lines that are no INI", "[OPTIONS]\nnotes of the commissioning\ntimeout=99\n");
    rows("lines that are no INI outside of a section", "notes of the commissioning\n[Common]\nOK=Fine\n");
    rows("a section that does not end", "[Common\nOK=Fine\n");
    rows("cut off in a section's name", "[Common]\nOK=Fine\n\n[Dia");
    rows("a text without a key", "[OPTIONS]\n=99\n[Common]\n=Fine\n");
    rows("a key that ends in a separator", "[OPTIONS]\ntimeout\\=99\n[Common]\nOK\\=Fine\n");
    rows("binary with NULs", QByteArray::fromHex("7F 45 4C 46 00 01 0A FF FE 00 5B 78 00 3D 0A 00"));
    rows("a NUL in a value", QByteArray("[OPTIONS]\ntimeout=9") + '\0' + "9\n");
    rows("nothing but NULs", QByteArray(4096, '\0'));
}

void TestSettingsFile::damagedFileIsKeptBesideNewOne()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, content);
    WorkingFolder::write(fileName, content);
    runProgram();
    QCOMPARE(WorkingFolder::read(fileName + damagedSuffix), content);
    QVERIFY(WorkingFolder::read(optionsFile).contains("timeout="));
    QVERIFY(WorkingFolder::read(languageFile).contains("OK="));
}

void TestSettingsFile::goodLinesOfDamagedFileCount()
{
    WorkingFolder::write(optionsFile, "[OPTIONS]\nnotes of the commissioning\ntimeout=99\n");
    QCOMPARE(Z7Services::instance()->options()->timeout(), 99);
}

void TestSettingsFile::soundFileLeavesNoCopy_data()
{
    addFileColumns();
    QTest::newRow("empty") << optionsFile << QByteArray();
    QTest::newRow("as the program writes it") << optionsFile << QByteArray("[OPTIONS]\ntimeout=99\n");
    QTest::newRow("with a comment") << optionsFile << QByteArray("; slow adapter\n[OPTIONS]\ntimeout=99\n");
    QTest::newRow("with Windows line ends") << optionsFile << QByteArray("[OPTIONS]\r\ntimeout=99\r\n");
    QTest::newRow("cut off in a value") << optionsFile << QByteArray("[OPTIONS]\ntimeout=9");
    QTest::newRow("with a UTF-8 mark") << languageFile << QByteArray("\xEF\xBB\xBF[Common]\nOK=Fine\n");
}

void TestSettingsFile::soundFileLeavesNoCopy()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, content);
    WorkingFolder::write(fileName, content);
    runProgram();
    QVERIFY(!QFile::exists(fileName + damagedSuffix));
}

void TestSettingsFile::textWithUnquotedCommaSurvivesRun()
{
    const QByteArray content = "[Common]\nOK=OK\nWriteAnyway=Yes, write\n";
    WorkingFolder::write(languageFile, content);
    QCOMPARE(languageText("Common", "WriteAnyway", QStringLiteral("Trotzdem schreiben?")), QString());
    languageText("Common", "Yes", QStringLiteral("Ja")); // a new text, so that the file is written
    Z7Services::shutdown();
    QCOMPARE(WorkingFolder::read(languageFile), content + "Yes=Ja\n");
}

void TestSettingsFile::fileWithUtf8MarkKeepsItsUmlauts()
{
    WorkingFolder::write(languageFile, "\xEF\xBB\xBF[Common]\nSize=Größe\n");
    QCOMPARE(languageText("Common", "Size", QString()), QString::fromUtf8("Größe"));
    runProgram();
    QCOMPARE(WorkingFolder::read(languageFile), QByteArray("[Common]\nOK=OK\nSize=Gr\\xf6\\xdf\\x65\n"));
}

void TestSettingsFile::fileCutOffInTextKeepsTextsBefore()
{
    WorkingFolder::write(languageFile, "[Common]\nOK=Fine\n\n[DialogRS485]\nTitle=\"Seri");
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("Fine"));
    runProgram();
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("Fine"));
}

void TestSettingsFile::fileOfMoreThan16MegabytesIsNeitherReadNorChanged_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("options") << optionsFile;
    QTest::newRow("language") << languageFile;
}

void TestSettingsFile::fileOfMoreThan16MegabytesIsNeitherReadNorChanged()
{
    QFETCH(QString, fileName);
    const QByteArray content =
        "[OPTIONS]\ntimeout=99\n[Common]\nOK=Fine\n" + QByteArray(20 * 1024 * 1024, 'x');
    WorkingFolder::write(fileName, content);
    if (fileName == optionsFile)
        QCOMPARE(Z7Services::instance()->options()->timeout(), 140);
    else
        QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("OK"));
    runProgram();
    QVERIFY(WorkingFolder::read(fileName) == content);
}

void TestSettingsFile::folderOfThatNameIsLeftAlone()
{
    QDir().mkpath(optionsFile + QStringLiteral("/inside"));
    QDir().mkpath(languageFile + QStringLiteral("/inside"));
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("OK"));
    runProgram();
    QVERIFY(QDir(optionsFile + QStringLiteral("/inside")).exists());
    QVERIFY(QDir(languageFile + QStringLiteral("/inside")).exists());
}

void TestSettingsFile::readOnlyFileStaysAsItIs()
{
    const QByteArray content = "[OPTIONS]\ntimeout=99\n";
    WorkingFolder::write(optionsFile, content);
    QFile::setPermissions(optionsFile, readable);
    QFile::setPermissions(QDir::currentPath(), readable | writable | searchable);
    {
        const OrdinaryUser user;
        Z7Services::instance()->options()->setTimeout(200);
        runProgram();
    }
    QCOMPARE(WorkingFolder::read(optionsFile), content);
    QVERIFY(QFile::exists(languageFile));
}

void TestSettingsFile::readOnlyFolderStaysAsItIs()
{
    QFile::setPermissions(QDir::currentPath(), readable | searchable);
    {
        const OrdinaryUser user;
        runProgram();
    }
    QVERIFY(QDir().entryList(QDir::Files | QDir::Hidden).isEmpty());
    QFile::setPermissions(QDir::currentPath(), readable | writable | searchable);
}

void TestSettingsFile::fileThatMayNotBeReadIsNotReplaced()
{
    const QByteArray content = "[Common]\nOK=Fine\n";
    WorkingFolder::write(languageFile, content);
    QFile::setPermissions(languageFile, QFile::Permissions());
    QFile::setPermissions(QDir::currentPath(), readable | writable | searchable);
    {
        const OrdinaryUser user;
        QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("OK"));
        runProgram();
    }
    QFile::setPermissions(languageFile, readable);
    QCOMPARE(WorkingFolder::read(languageFile), content);
}

void TestSettingsFile::whatIsNoFileCountsAsMissing_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<Thing>("thing");
    addThings(QStringLiteral("options: "), optionsFile);
    addThings(QStringLiteral("language: "), languageFile);
}

void TestSettingsFile::whatIsNoFileCountsAsMissing()
{
    QFETCH(QString, fileName);
    QFETCH(Thing, thing);
    make(thing, fileName);
    const mode_t kind = kindOf(fileName);
    QCOMPARE(Z7Services::instance()->options()->timeout(), 140);
    QCOMPARE(languageText("Common", "OK", QStringLiteral("OK")), QStringLiteral("OK"));
    runProgram();
    QCOMPARE(kindOf(fileName), kind);
    const QString other = fileName == optionsFile ? languageFile : optionsFile;
    QVERIFY(WorkingFolder::read(other).contains('='));
    QCOMPARE(WorkingFolder::files(), QStringList({languageFile, optionsFile}));
}

void TestSettingsFile::whatIsNoFileInPlaceOfCopyKeepsDamagedFile_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<Thing>("thing");
    addThings(QString(), languageFile);
}

void TestSettingsFile::whatIsNoFileInPlaceOfCopyKeepsDamagedFile()
{
    QFETCH(QString, fileName);
    QFETCH(Thing, thing);
    const QByteArray content = "notes of the commissioning\n";
    WorkingFolder::write(fileName, content);
    make(thing, fileName + damagedSuffix);
    const mode_t kind = kindOf(fileName + damagedSuffix);
    runProgram();
    QCOMPARE(kindOf(fileName + damagedSuffix), kind);
    QCOMPARE(WorkingFolder::read(fileName), content);
}

void TestSettingsFile::pipeInPlaceOfLockDoesNotHoldEnd()
{
    const QString lock = languageFile + QStringLiteral(".lock");
    make(Thing::Pipe, lock);
    runProgram();
    QCOMPARE(kindOf(lock), mode_t(S_IFIFO));
    QVERIFY(WorkingFolder::read(optionsFile).contains("timeout="));
}

void TestSettingsFile::linkStaysAndItsTargetIsWritten_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("options") << optionsFile << QByteArray("[OPTIONS]\ncolour=blue\n")
                             << QByteArray("[OPTIONS]\ncolour=blue\nlanguage=deutsch\ntimeout=140\n");
    QTest::newRow("language") << languageFile << QByteArray("[Common]\nNo=Nein\n")
                              << QByteArray("[Common]\nNo=Nein\nOK=OK\n");
}

void TestSettingsFile::linkStaysAndItsTargetIsWritten()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, before);
    const QString target = QStringLiteral("elsewhere/") + fileName;
    QVERIFY(QDir().mkdir(QStringLiteral("elsewhere")));
    WorkingFolder::write(target, before);
    QVERIFY(QFile::link(target, QStringLiteral("second link")));
    QVERIFY(QFile::link(QStringLiteral("second link"), fileName));
    runProgram();
    QCOMPARE(kindOf(fileName), mode_t(S_IFLNK));
    QCOMPARE(kindOf(QStringLiteral("second link")), mode_t(S_IFLNK));
    QTEST(WorkingFolder::read(target), "after");
    const QDir elsewhere(QStringLiteral("elsewhere"));
    QCOMPARE(elsewhere.entryList(QDir::Files | QDir::Hidden), QStringList(fileName));
}

void TestSettingsFile::linkToNothingMakesItsTarget()
{
    QVERIFY(QDir().mkdir(QStringLiteral("elsewhere")));
    QVERIFY(QFile::link(QStringLiteral("elsewhere/texts"), languageFile));
    runProgram();
    QCOMPARE(kindOf(languageFile), mode_t(S_IFLNK));
    QCOMPARE(WorkingFolder::read(QStringLiteral("elsewhere/texts")), QByteArray("[Common]\nOK=OK\n"));
}

void TestSettingsFile::linksInCircleAreLeftAlone()
{
    QVERIFY(QFile::link(QStringLiteral("second link"), languageFile));
    QVERIFY(QFile::link(languageFile, QStringLiteral("second link")));
    runProgram();
    QCOMPARE(kindOf(languageFile), mode_t(S_IFLNK));
    QCOMPARE(kindOf(QStringLiteral("second link")), mode_t(S_IFLNK));
}

void TestSettingsFile::writtenFileKeepsItsPermissions_data()
{
    QTest::addColumn<int>("permissions");
    QTest::newRow("of its owner alone") << 0600;
    QTest::newRow("of a group") << 0660;
    QTest::newRow("of everybody") << 0666;
}

void TestSettingsFile::writtenFileKeepsItsPermissions()
{
    QFETCH(int, permissions);
    WorkingFolder::write(languageFile, "[Common]\nNo=Nein\n");
    QCOMPARE(chmod(qPrintable(languageFile), mode_t(permissions)), 0);
    runProgram();
    QVERIFY(WorkingFolder::read(languageFile).contains("OK=OK"));
    QCOMPARE(permissionsOf(languageFile), mode_t(permissions));
}

void TestSettingsFile::nothingIsWrittenWhereNothingIsNew()
{
    const QByteArray content = "; my own order\n[Common]\nOK=OK\nNo=Nein\n";
    WorkingFolder::write(languageFile, content);
    runProgram();
    QCOMPARE(WorkingFolder::read(languageFile), content);
}

void TestSettingsFile::textIsWrittenWhateverItHolds()
{
    const QString characters = QString::fromUtf8("aZ09 ./\\%;=[]@\"',:\t\n\r\x01\x7F#&(){}ß°µ€") + QChar(0)
        + QChar(0xFEFF) + QChar(0xD800) + QChar(0xDC00) + QChar(0x2028);
    QRandomGenerator random(3);
    const auto anyText = [&] {
        QString text;
        for (int length = random.bounded(8); length > 0; --length)
            text += characters.at(random.bounded(characters.size()));
        return text;
    };
    for (int run = 0; run < 40; ++run) {
        QFile::remove(languageFile);
        for (int i = 0; i < 20; ++i)
            definitionText(anyText());
        for (int i = 0; i < 20; ++i)
            languageText("Common", "Key" + QByteArray::number(i), anyText());
        languageText("Common", "OK", QStringLiteral("OK"));
        Z7Services::shutdown();
        QVERIFY2(WorkingFolder::read(languageFile).contains("OK=OK"), QByteArray::number(run));
    }
}

QTEST_APPLESS_MAIN(TestSettingsFile)
#include "tst_settingsfile.moc"
