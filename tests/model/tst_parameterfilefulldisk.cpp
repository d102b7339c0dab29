// Saving a parameter set on a disk that is all but full: the user is told, and the old file stays byte for
// byte.

#include "model/parameterfile.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/smalldisktest.h"

#include <QtTest>

namespace {

const QString fileName = QStringLiteral("drive.z7param");
const QString ballast = QStringLiteral("ballast");
const QString cannotOpen = QStringLiteral("Die Datei kann nicht geöffnet werden");
const QByteArray oldContent = "what stood here before";

QString save(const Z7Device &drive)
{
    return Z7ParameterFile(fileName, drive, Z7DeviceParamSet()).save();
}

/// Its file takes so many pages, the last one not quite.
Z7Device driveWithPages(int pages)
{
    const int parameterSize = int(qstrlen(R"(<parameter id="1000" val="0"/>)"));
    const int parameters = pages * SmallFileSystem::pageSize() / parameterSize - 10;
    QMap<int, int> values;
    for (int i = 0; i < parameters; ++i)
        values.insert(1000 + i, 0);
    return driveWith(values);
}

} // namespace

class TestParameterFileFullDisk : public SmallDiskTest
{
    Q_OBJECT

private slots:
    void oldFileStaysUnlessNewOneHasRoom_data();
    void oldFileStaysUnlessNewOneHasRoom();
    void fileThatFindsNoRoomIsNotMade();
};

void TestParameterFileFullDisk::oldFileStaysUnlessNewOneHasRoom_data()
{
    QTest::addColumn<int>("freePages");
    QTest::addColumn<int>("neededPages");
    for (const int freePages : {0, 1, 2, 3}) {
        for (const int neededPages : {1, 2, 3})
            QTest::addRow("%d pages free, %d needed", freePages, neededPages) << freePages << neededPages;
    }
}

void TestParameterFileFullDisk::oldFileStaysUnlessNewOneHasRoom()
{
    QFETCH(int, freePages);
    QFETCH(int, neededPages);
    const Z7Device drive = driveWithPages(neededPages);
    const bool hasRoom = freePages >= neededPages;
    WorkingFolder::write(fileName, oldContent);
    SmallFileSystem::fill(ballast, freePages);
    QCOMPARE(save(drive), hasRoom ? QString() : cannotOpen);
    QCOMPARE(WorkingFolder::read(fileName) != oldContent, hasRoom);
    Z7ParameterFile saved;
    QCOMPARE(saved.load(fileName).isEmpty(), hasRoom);
    QCOMPARE(valuesOf(saved.userParams()) == valuesOf(drive.parameterSet), hasRoom);
    QCOMPARE(WorkingFolder::files(), QStringList({ballast, fileName}));
}

void TestParameterFileFullDisk::fileThatFindsNoRoomIsNotMade()
{
    const Z7Device drive = driveWithPages(3);
    SmallFileSystem::fill(ballast, 2);
    QCOMPARE(save(drive), cannotOpen);
    QCOMPARE(WorkingFolder::files(), QStringList(ballast));
}

int main(int argc, char *argv[])
{
    TestParameterFileFullDisk test;
    return SmallFileSystem::run(test, argc, argv);
}
#include "tst_parameterfilefulldisk.moc"
