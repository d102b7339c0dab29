// Options and language files when the disk fails at the program's end: each is the old one byte for byte, or
// the new one whole.

#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/support/failingcalls.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

namespace {

const QString optionsFile = QStringLiteral("Z7Properties.ini");
const QString languageFile = QStringLiteral("deutsch.z7lang");
const QByteArray oldOptions = "[OPTIONS]\ncolour=blue\ntimeout=99\n";
const QByteArray newOptions = "[OPTIONS]\ncolour=blue\nlanguage=deutsch\ntimeout=200\n";
const QByteArray oldTexts = "[Common]\nForgotten=Vergessen\n";
const QByteArray newTexts = "[Common]\nForgotten=Vergessen\nOK=OK\n";
/// Of what a file looks like of which lines are no INI.
const QByteArray notes = "notes of the commissioning\n";

/// The program from its start to its normal end; the user has changed an option.
void runProgram()
{
    Z7Services::instance()->options()->setTimeout(200);
    languageText("Common", "OK", QStringLiteral("OK"));
    Z7Services::shutdown();
}

void writeOldFiles()
{
    WorkingFolder::write(optionsFile, oldOptions);
    WorkingFolder::write(languageFile, oldTexts);
}

QStringList bothFiles()
{
    return {languageFile, optionsFile};
}

} // namespace

class TestSettingsFileFailures : public IsolatedTest
{
    Q_OBJECT

private slots:
    void whicheverCallFailsEachFileIsWhole_data();
    void whicheverCallFailsEachFileIsWhole();
    void diskThatFailsAltogetherLeavesOldFiles_data();
    void diskThatFailsAltogetherLeavesOldFiles();
    void diskThatFailsAltogetherLeavesNoNewFile_data() { diskThatFailsAltogetherLeavesOldFiles_data(); }
    void diskThatFailsAltogetherLeavesNoNewFile();
    void damagedFileIsThereWhicheverCallFails_data() { whicheverCallFailsEachFileIsWhole_data(); }
    void damagedFileIsThereWhicheverCallFails();
};

void TestSettingsFileFailures::whicheverCallFailsEachFileIsWhole_data()
{
    FailingCalls::addEachFailure();
}

void TestSettingsFileFailures::whicheverCallFailsEachFileIsWhole()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    bool hasFailed = true;
    for (int callsBefore = 0; hasFailed; ++callsBefore) {
        writeOldFiles();
        hasFailed = FailingCalls::during(call, callsBefore, failure, runProgram);
        const QByteArray options = WorkingFolder::read(optionsFile);
        const QByteArray texts = WorkingFolder::read(languageFile);
        QVERIFY2(options == newOptions || (hasFailed && options == oldOptions), options);
        QVERIFY2(texts == newTexts || (hasFailed && texts == oldTexts), texts);
        QCOMPARE(WorkingFolder::files(), bothFiles());
    }
}

void TestSettingsFileFailures::diskThatFailsAltogetherLeavesOldFiles_data()
{
    FailingCalls::addFailuresForGood();
}

void TestSettingsFileFailures::diskThatFailsAltogetherLeavesOldFiles()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    writeOldFiles();
    QVERIFY(FailingCalls::during(call, 0, failure, runProgram));
    QCOMPARE(WorkingFolder::read(optionsFile), oldOptions);
    QCOMPARE(WorkingFolder::read(languageFile), oldTexts);
    QCOMPARE(WorkingFolder::files(), bothFiles());
}

void TestSettingsFileFailures::diskThatFailsAltogetherLeavesNoNewFile()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    QVERIFY(FailingCalls::during(call, 0, failure, runProgram));
    QCOMPARE(WorkingFolder::files(), QStringList());
}

void TestSettingsFileFailures::damagedFileIsThereWhicheverCallFails()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    const QString copy = languageFile + QStringLiteral(".damaged");
    bool hasFailed = true;
    for (int callsBefore = 0; hasFailed; ++callsBefore) {
        WorkingFolder::write(languageFile, notes + oldTexts);
        WorkingFolder::write(copy, notes);
        hasFailed = FailingCalls::during(call, callsBefore, failure, runProgram);
        const QByteArray kept = WorkingFolder::read(copy);
        const QByteArray texts = WorkingFolder::read(languageFile);
        const bool isWritten = texts == newTexts && kept == notes + oldTexts;
        const bool isAsBefore = texts == notes + oldTexts && (kept == notes || kept == texts);
        QVERIFY2(isWritten || (hasFailed && isAsBefore), kept + '|' + texts);
    }
}

QTEST_APPLESS_MAIN(TestSettingsFileFailures)
#include "tst_settingsfilefailures.moc"
