// Options and language files on a disk that is all but full when the program ends.

#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/support/smalldisktest.h"

#include <QtTest>

namespace {

const QString optionsFile = QStringLiteral("Z7Properties.ini");
const QString languageFile = QStringLiteral("deutsch.z7lang");
const QString ballast = QStringLiteral("ballast");

/// The program from its start to its normal end; the user has changed an option.
void runProgram()
{
    Z7Services::instance()->options()->setTimeout(200);
    languageText("Common", "OK", QStringLiteral("OK"));
    Z7Services::shutdown();
}

/// What the user had before: in one page, or in three.
QByteArray content(const QByteArray &section, const QByteArray &key, int texts)
{
    QByteArray lines = '[' + section + "]\n" + key + "\n\n[DialogOfMine]\n";
    for (int i = 0; i < texts; ++i)
        lines += "Text" + QByteArray::number(i).rightJustified(4, '0') + "=Ein Text\n";
    return lines;
}

} // namespace

class TestSettingsFileFullDisk : public SmallDiskTest
{
    Q_OBJECT

private slots:
    void oldFileStaysOrNewOneIsWhole_data();
    void oldFileStaysOrNewOneIsWhole();
    void fileThatFindsNoRoomIsNotMade_data();
    void fileThatFindsNoRoomIsNotMade();
};

void TestSettingsFileFullDisk::oldFileStaysOrNewOneIsWhole_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("changed");
    QTest::addColumn<int>("freePages");
    for (const int pages : {0, 1, 2, 3, 4, 5, 6, 7, 20}) {
        for (const int texts : {5, 500}) {
            QTest::addRow("options, %d texts, %d pages free", texts, pages)
                << optionsFile << content("OPTIONS", "timeout=99", texts) << QByteArray("timeout=200\n")
                << pages;
            QTest::addRow("language, %d texts, %d pages free", texts, pages)
                << languageFile << content("Common", "No=Nein", texts) << QByteArray("OK=OK\n") << pages;
        }
    }
}

void TestSettingsFileFullDisk::oldFileStaysOrNewOneIsWhole()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, changed);
    QFETCH(int, freePages);
    WorkingFolder::write(fileName, before);
    SmallFileSystem::fill(ballast, freePages);
    runProgram();
    const QByteArray after = WorkingFolder::read(fileName);
    const QByteArray texts = before.mid(before.indexOf("[DialogOfMine]")).trimmed();
    const bool isNew = after.contains(changed) && after.contains(texts);
    QVERIFY2(isNew || (freePages < 20 && after == before), after);
    QVERIFY(WorkingFolder::files().size() <= 3); // the two files, and the ballast
}

void TestSettingsFileFullDisk::fileThatFindsNoRoomIsNotMade_data()
{
    QTest::addColumn<int>("freePages");
    for (const int pages : {0, 1, 2})
        QTest::addRow("%d pages free", pages) << pages;
}

void TestSettingsFileFullDisk::fileThatFindsNoRoomIsNotMade()
{
    QFETCH(int, freePages);
    SmallFileSystem::fill(ballast, freePages);
    runProgram();
    QCOMPARE(WorkingFolder::files(), QStringList(ballast));
}

int main(int argc, char *argv[])
{
    TestSettingsFileFullDisk test;
    return SmallFileSystem::run(test, argc, argv);
}
#include "tst_settingsfilefulldisk.moc"
