// Saving where it cannot be done, or only half of it: the user is told, and the file that stood there stays.

#include "model/parameterfile.h"
#include "tests/model/folderwithpermissions.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/sysmacros.h>

namespace {

const QString fileName = QStringLiteral("drive.z7param");
const QString cannotOpen = QStringLiteral("Die Datei kann nicht geöffnet werden");
const QByteArray oldContent = "what stood here before";
const QByteArray written11 = parameterDocument(R"(<parameter id="11" val="100"/>)") + "\n";

QString save(const Z7Device &drive, const QString &path = fileName)
{
    return Z7ParameterFile(path, drive, Z7DeviceParamSet()).save();
}

Z7Device driveWithParameters(int count)
{
    QMap<int, int> values;
    for (int number = 1; number <= count; ++number)
        values.insert(number, number);
    return driveWith(values);
}

void writeOldFile(mode_t permissions)
{
    WorkingFolder::write(fileName, oldContent);
    chmod(qPrintable(fileName), permissions);
}

/// A disk that has room for 64 bytes more in any file.
class FullDisk
{
public:
    FullDisk()
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit {64, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handlerBefore);
    }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit m_before {};
    void (*m_handlerBefore)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace

class TestUnwritableParameterFiles : public IsolatedTest
{
    Q_OBJECT

private slots:
    void pathThatCannotBeOpenedIsToldInOneText_data();
    void pathThatCannotBeOpenedIsToldInOneText();
    void textComesFromLanguageFile();

    void whatIsNoFileIsNotWrittenTo_data();
    void whatIsNoFileIsNotWrittenTo();
    void readOnlyFileStaysAsItIs();
    void readOnlyFolderTakesNoNewFile();
    void fileInReadOnlyFolderIsWrittenInPlace();

    void fullDiskLeavesOldFileAndNoOther_data();
    void fullDiskLeavesOldFileAndNoOther();
    void fullDiskLeavesNoHalfFile();
    void fullDiskLeavesFileThatIsWrittenInPlace_data();
    void fullDiskLeavesFileThatIsWrittenInPlace();
};

void TestUnwritableParameterFiles::pathThatCannotBeOpenedIsToldInOneText_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no name") << QString();
    QTest::newRow("a missing folder") << QStringLiteral("missing/drive.z7param");
    QTest::newRow("a folder of that name") << QStringLiteral("folder");
    QTest::newRow("a path below a file") << QStringLiteral("file/drive.z7param");
    QTest::newRow("a folder without files") << QStringLiteral("/proc/drive.z7param");
    QTest::newRow("a name that is too long") << QString(300, QLatin1Char('n'));
}

void TestUnwritableParameterFiles::pathThatCannotBeOpenedIsToldInOneText()
{
    QFETCH(QString, path);
    QVERIFY(QDir().mkdir(QStringLiteral("folder")));
    WorkingFolder::write(QStringLiteral("file"), oldContent);
    QCOMPARE(save(driveWith({{11, 100}}), path), cannotOpen);
    QCOMPARE(WorkingFolder::files(), QStringList({QStringLiteral("file"), QStringLiteral("folder")}));
    QCOMPARE(WorkingFolder::read(QStringLiteral("file")), oldContent);
}

void TestUnwritableParameterFiles::textComesFromLanguageFile()
{
    WorkingFolder::write(QStringLiteral("deutsch.z7lang"), "[Common]\nCannotOpenFile=No way\n");
    QCOMPARE(save(driveWith({{11, 100}}), QStringLiteral("/proc/x.z7param")), QStringLiteral("No way"));
}

void TestUnwritableParameterFiles::whatIsNoFileIsNotWrittenTo_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("a pipe") << int(S_IFIFO);
    QTest::newRow("a socket") << int(S_IFSOCK);
    QTest::newRow("a device") << int(S_IFCHR);
}

void TestUnwritableParameterFiles::whatIsNoFileIsNotWrittenTo()
{
    QFETCH(int, kind);
    // Like /dev/null. That of the machine is not put at stake.
    if (mknod(qPrintable(fileName), mode_t(kind) | 0666, makedev(1, 3)) != 0 && kind == S_IFCHR)
        QSKIP("Only root can make a device.");
    QCOMPARE(save(driveWith({{11, 100}})), cannotOpen);
    struct stat status
    {
    };
    QCOMPARE(lstat(qPrintable(fileName), &status), 0);
    QCOMPARE(int(status.st_mode & S_IFMT), kind);
    QCOMPARE(WorkingFolder::files(), QStringList(fileName));
}

void TestUnwritableParameterFiles::readOnlyFileStaysAsItIs()
{
    writeOldFile(0444);
    const FolderWithPermissions folder(0777);
    QCOMPARE(save(driveWith({{11, 100}})), cannotOpen);
    QCOMPARE(WorkingFolder::read(fileName), oldContent);
    QCOMPARE(WorkingFolder::files(), QStringList(fileName));
}

void TestUnwritableParameterFiles::readOnlyFolderTakesNoNewFile()
{
    const FolderWithPermissions folder(0555);
    QCOMPARE(save(driveWith({{11, 100}})), cannotOpen);
    QCOMPARE(WorkingFolder::files(), QStringList());
}

void TestUnwritableParameterFiles::fileInReadOnlyFolderIsWrittenInPlace()
{
    writeOldFile(0666);
    const FolderWithPermissions folder(0555);
    QCOMPARE(save(driveWith({{11, 100}})), QString());
    QCOMPARE(WorkingFolder::read(fileName), written11);
}

void TestUnwritableParameterFiles::fullDiskLeavesOldFileAndNoOther_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("noticed at the end") << 1;
    QTest::newRow("noticed on the way") << 5000;
}

void TestUnwritableParameterFiles::fullDiskLeavesOldFileAndNoOther()
{
    QFETCH(int, count);
    const Z7Device drive = driveWithParameters(count);
    writeOldFile(0600);
    const QString error = [&drive] {
        const FullDisk disk;
        return save(drive);
    }();
    QCOMPARE(error, cannotOpen);
    QCOMPARE(WorkingFolder::read(fileName), oldContent);
    QCOMPARE(WorkingFolder::files(), QStringList(fileName));
}

void TestUnwritableParameterFiles::fullDiskLeavesNoHalfFile()
{
    const QString error = [] {
        const FullDisk disk;
        return save(driveWith({{11, 100}}));
    }();
    QCOMPARE(error, cannotOpen);
    QCOMPARE(WorkingFolder::files(), QStringList());
}

void TestUnwritableParameterFiles::fullDiskLeavesFileThatIsWrittenInPlace_data()
{
    fullDiskLeavesOldFileAndNoOther_data();
}

void TestUnwritableParameterFiles::fullDiskLeavesFileThatIsWrittenInPlace()
{
    QFETCH(int, count);
    const Z7Device drive = driveWithParameters(count);
    writeOldFile(0666);
    const FolderWithPermissions folder(0555);
    const QString error = [&drive] {
        const FullDisk disk;
        return save(drive);
    }();
    QCOMPARE(error, cannotOpen);
    QCOMPARE(WorkingFolder::read(fileName), oldContent);
}

QTEST_APPLESS_MAIN(TestUnwritableParameterFiles)
#include "tst_unwritableparameterfiles.moc"
