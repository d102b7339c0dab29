// Saving a parameter set on a disk that fails: the user is told, and the old file stays byte for byte; or it
// is not told, and the new one is whole.

#include "model/parameterfile.h"
#include "tests/model/folderwithpermissions.h"
#include "tests/model/parameterdocument.h"
#include "tests/support/failingcalls.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

namespace {

const QString fileName = QStringLiteral("drive.z7param");
const QString cannotOpen = QStringLiteral("Die Datei kann nicht geöffnet werden");
const QByteArray shortContent = "what stood here before";
const QByteArray longContent = shortContent.repeated(100);
const QByteArray newContent = parameterDocument(R"(<parameter id="11" val="100"/>)") + "\n";

QString save()
{
    return Z7ParameterFile(fileName, driveWith({{11, 100}}), Z7DeviceParamSet()).save();
}

/// Saves as often as it takes until no call is left that could fail.
template<typename Judge>
void saveWithEachFailure(const QByteArray &call, z7_failure failure, const QByteArray &before, Judge judge)
{
    bool hasFailed = true;
    for (int callsBefore = 0; hasFailed; ++callsBefore) {
        WorkingFolder::write(fileName, before);
        const FailingCalls disk(call, callsBefore, failure);
        const QString error = save();
        hasFailed = disk.haveFailed();
        judge(error, hasFailed);
    }
}

} // namespace

class TestParameterFileFailures : public IsolatedTest
{
    Q_OBJECT

private slots:
    void fileIsWholeWhicheverCallFails_data();
    void fileIsWholeWhicheverCallFails();
    void diskThatFailsAltogetherIsTold_data();
    void diskThatFailsAltogetherIsTold();
    void fileThatIsWrittenInPlaceIsPutBack_data();
    void fileThatIsWrittenInPlaceIsPutBack();
};

void TestParameterFileFailures::fileIsWholeWhicheverCallFails_data()
{
    FailingCalls::addEachFailure();
}

void TestParameterFileFailures::fileIsWholeWhicheverCallFails()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    saveWithEachFailure(call, failure, longContent, [](const QString &error, bool hasFailed) {
        QVERIFY(hasFailed || error.isEmpty());
        QCOMPARE(WorkingFolder::read(fileName), error.isEmpty() ? newContent : longContent);
        QCOMPARE(WorkingFolder::files(), QStringList(fileName));
    });
}

void TestParameterFileFailures::diskThatFailsAltogetherIsTold_data()
{
    FailingCalls::addFailuresForGood();
}

void TestParameterFileFailures::diskThatFailsAltogetherIsTold()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    const FailingCalls disk(call, 0, failure);
    QCOMPARE(save(), cannotOpen);
    QCOMPARE(WorkingFolder::files(), QStringList());
}

void TestParameterFileFailures::fileThatIsWrittenInPlaceIsPutBack_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<z7_failure>("failure");
    QTest::addColumn<QByteArray>("before");
    const auto rows = [](const char *name, const QByteArray &call, z7_failure failure) {
        QTest::addRow("a longer file, %s", name) << call << failure << longContent;
        QTest::addRow("a shorter file, %s", name) << call << failure << shortContent;
    };
    rows("a full disk", "write", Z7_FAILS_FROM_THEN_ON);
    rows("write fails once", "write", Z7_FAILS_ONCE);
    rows("fsync fails once", "fsync", Z7_FAILS_ONCE);
    rows("fsync fails from then on", "fsync", Z7_FAILS_FROM_THEN_ON);
}

void TestParameterFileFailures::fileThatIsWrittenInPlaceIsPutBack()
{
    QFETCH(QByteArray, call);
    QFETCH(z7_failure, failure);
    QFETCH(QByteArray, before);
    WorkingFolder::write(fileName, before);
    chmod(qPrintable(fileName), 0666);
    const FolderWithPermissions folder(0555);
    saveWithEachFailure(call, failure, before, [&before](const QString &error, bool hasFailed) {
        QCOMPARE(error, hasFailed ? cannotOpen : QString());
        QCOMPARE(WorkingFolder::read(fileName), hasFailed ? before : newContent);
    });
}

QTEST_APPLESS_MAIN(TestParameterFileFailures)
#include "tst_parameterfilefailures.moc"
