// Writing files whole on a system of which nothing is known: what Qt and the C++ library offer has to do.

#include "control/services/platform.h"
#include "control/services/wholefile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QByteArray oldContent = "drive 3\n";
const QByteArray newContent = "drive 3 and drive 4\n";

} // namespace

class TestPortablePlatform : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void newFileIsWritten();
    void fileIsReplacedAndNothingElseIsLeft();
    void newContentThatIsRefusedLeavesOldFile();
    void replacedFileKeepsItsPermissions();
    void fileIsRenamedOverAnotherOne();
    void missingFileIsNotRenamedOverAnotherOne();
    void nameBeyondLatin1IsRenamed();
    void folderOfUserTakesFiles();
    void noFolderIsSearchedForProgramsWithoutPath();
    void nothingIsSaidOfDevicesAndTheirPrograms();

private:
    QString path(const QString &name = QStringLiteral("set.csv")) const { return folder->filePath(name); }
    QStringList files() const { return QDir(folder->path()).entryList(QDir::Files | QDir::Hidden); }
    void write(const QString &name, const QByteArray &content) const;
    QByteArray read(const QString &name = QStringLiteral("set.csv")) const;

    std::unique_ptr<QTemporaryDir> folder;
};

void TestPortablePlatform::init()
{
    folder = std::make_unique<QTemporaryDir>();
}

void TestPortablePlatform::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray TestPortablePlatform::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestPortablePlatform::newFileIsWritten()
{
    QVERIFY(WholeFile::write(path(), newContent));
    QCOMPARE(read(), newContent);
    QCOMPARE(files(), QStringList("set.csv"));
}

void TestPortablePlatform::fileIsReplacedAndNothingElseIsLeft()
{
    write("set.csv", oldContent);
    QVERIFY(WholeFile::replace(path(), newContent));
    QCOMPARE(read(), newContent);
    QCOMPARE(files(), QStringList("set.csv"));
}

void TestPortablePlatform::newContentThatIsRefusedLeavesOldFile()
{
    write("set.csv", oldContent);
    QVERIFY(!WholeFile::replace(path(), newContent, [](const QString &) { return false; }));
    QCOMPARE(read(), oldContent);
    QCOMPARE(files(), QStringList("set.csv"));
}

void TestPortablePlatform::replacedFileKeepsItsPermissions()
{
    write("set.csv", oldContent);
    const QFile::Permissions onlyMine = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(QFile::setPermissions(path(), onlyMine));
    const QFile::Permissions before = QFile::permissions(path());
    QVERIFY(WholeFile::replace(path(), newContent));
    QCOMPARE(QFile::permissions(path()), before);
}

void TestPortablePlatform::fileIsRenamedOverAnotherOne()
{
    write("new.csv", newContent);
    write("set.csv", oldContent);
    QVERIFY(Platform::renameOver(path("new.csv"), path()));
    QCOMPARE(read(), newContent);
    QCOMPARE(files(), QStringList("set.csv"));
}

void TestPortablePlatform::missingFileIsNotRenamedOverAnotherOne()
{
    write("set.csv", oldContent);
    QVERIFY(!Platform::renameOver(path("new.csv"), path()));
    QCOMPARE(read(), oldContent);
}

void TestPortablePlatform::nameBeyondLatin1IsRenamed()
{
    const QString name = QStringLiteral(u"Förderband Ω.csv");
    write("new.csv", newContent);
    QVERIFY(Platform::renameOver(path("new.csv"), path(name)));
    QCOMPARE(read(name), newContent);
}

void TestPortablePlatform::folderOfUserTakesFiles()
{
    QVERIFY(Platform::folderTakesFiles(folder->path()));
}

void TestPortablePlatform::noFolderIsSearchedForProgramsWithoutPath()
{
    QCOMPARE(Platform::defaultSearchPath(), QByteArray());
}

void TestPortablePlatform::nothingIsSaidOfDevicesAndTheirPrograms()
{
    QCOMPARE(Platform::deviceAccess(folder->path()), Platform::DeviceAccess::Unknown);
    QCOMPARE(Platform::deviceGroup(folder->path()), QString());
    QCOMPARE(Platform::portLock("COM3").file, QString());
    QVERIFY(!Platform::portLock("COM3").holder.isKnown());
    QVERIFY(!Platform::deviceHolder(folder->path()).isKnown());
}

QTEST_APPLESS_MAIN(TestPortablePlatform)

#include "tst_portableplatform.moc"
