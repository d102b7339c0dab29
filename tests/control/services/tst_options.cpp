// The options that a user can change, and their file.

#include "control/services/options.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <functional>

using Getter = std::function<int(Z7Options &)>;
using Setter = std::function<void(Z7Options &, int)>;
Q_DECLARE_METATYPE(Getter)
Q_DECLARE_METATYPE(Setter)

namespace {

const QString fileName = QStringLiteral("Z7Properties.ini");

void writeFile(const QByteArray &content)
{
    WorkingFolder::write(fileName, content);
}

Z7Options loadedOptions()
{
    Z7Options options;
    options.load();
    return options;
}

} // namespace

class TestOptions : public IsolatedTest
{
    Q_OBJECT

private slots:
    void optionWithoutFileHasItsDefault_data();
    void optionWithoutFileHasItsDefault();
    void setNumberIsBackAtOnceAndSaved_data() { optionWithoutFileHasItsDefault_data(); }
    void setNumberIsBackAtOnceAndSaved();
    void numberOfFileBeatsDefault_data() { optionWithoutFileHasItsDefault_data(); }
    void numberOfFileBeatsDefault();
    void languageIsDeutschUntilOneIsSet();

    void defaultThatWasAskedForIsSaved();
    void whatNobodyAskedForStaysOutOfFile();
    void textThatIsNoNumberReadsAsZeroAndIsSavedBack_data();
    void textThatIsNoNumberReadsAsZeroAndIsSavedBack();
    void pollingCanBeOffFromStart();
    void onlyGroupOfOptionsIsRead();
    void loadingReplacesOnlyWhatFileHolds();
    void unknownKeysStayInFile();
    void savingNothingMakesNoFile();
    void everyOptionThatIsKnownIsSaved();
    void defaultLiesInRangeOfItsOption();
    void fileLiesInFolderThatWasGiven();
};

void TestOptions::optionWithoutFileHasItsDefault_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("defaultNumber");
    QTest::addColumn<Getter>("get");
    QTest::addColumn<Setter>("set");

    QTest::newRow("time-out of a transfer, in ms")
        << QByteArray("timeout") << 140 << Getter(&Z7Options::timeout) << Setter(&Z7Options::setTimeout);
    QTest::newRow("time-out of a scan, in ms")
        << QByteArray("timeoutScanning") << 20 << Getter(&Z7Options::timeoutScanning)
        << Setter(&Z7Options::setTimeoutScanning);
    QTest::newRow("vendor of the preferred ports")
        << QByteArray("defaultVendorID") << 1027 << Getter(&Z7Options::defaultVendorID)
        << Setter(&Z7Options::setDefaultVendorID);
    QTest::newRow("pause between polling passes, in ms")
        << QByteArray("pollingInterval") << 1000 << Getter(&Z7Options::pollingInterval)
        << Setter(&Z7Options::setPollingInterval);
}

void TestOptions::optionWithoutFileHasItsDefault()
{
    QFETCH(Getter, get);
    Z7Options options = loadedOptions();
    QTEST(get(options), "defaultNumber");
}

void TestOptions::setNumberIsBackAtOnceAndSaved()
{
    QFETCH(QByteArray, key);
    QFETCH(Getter, get);
    QFETCH(Setter, set);
    Z7Options options;
    set(options, 77);
    QCOMPARE(get(options), 77);
    options.save();
    QCOMPARE(WorkingFolder::read(fileName), "[OPTIONS]\n" + key + "=77\n");
}

void TestOptions::numberOfFileBeatsDefault()
{
    QFETCH(QByteArray, key);
    QFETCH(Getter, get);
    writeFile("[OPTIONS]\n" + key + "=33\n");
    Z7Options options = loadedOptions();
    QCOMPARE(get(options), 33);
}

void TestOptions::languageIsDeutschUntilOneIsSet()
{
    Z7Options options = loadedOptions();
    QCOMPARE(options.language(), QStringLiteral("deutsch"));
    options.setLanguage(QStringLiteral("english"));
    QCOMPARE(options.language(), QStringLiteral("english"));
    options.save();
    QCOMPARE(loadedOptions().language(), QStringLiteral("english"));
}

void TestOptions::defaultThatWasAskedForIsSaved()
{
    Z7Options options;
    QCOMPARE(options.timeout(), 140);
    options.save();
    QCOMPARE(WorkingFolder::read(fileName), QByteArray("[OPTIONS]\ntimeout=140\n"));
}

void TestOptions::whatNobodyAskedForStaysOutOfFile()
{
    writeFile("[OPTIONS]\npollingInterval=500\n");
    Z7Options options = loadedOptions();
    options.timeoutScanning();
    options.save();
    QCOMPARE(
        WorkingFolder::read(fileName), QByteArray("[OPTIONS]\npollingInterval=500\ntimeoutScanning=20\n"));
}

void TestOptions::textThatIsNoNumberReadsAsZeroAndIsSavedBack_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("letters") << QByteArray("abc");
    QTest::newRow("a number with its unit") << QByteArray("140ms");
    QTest::newRow("hexadecimal") << QByteArray("0x8C");
    QTest::newRow("with a decimal point") << QByteArray("1.5");
    QTest::newRow("beyond an int") << QByteArray("99999999999");
    QTest::newRow("nothing") << QByteArray();
}

void TestOptions::textThatIsNoNumberReadsAsZeroAndIsSavedBack()
{
    QFETCH(QByteArray, text);
    const QByteArray content = "[OPTIONS]\ntimeout=" + text + "\n";
    writeFile(content);
    Z7Options options = loadedOptions();
    QCOMPARE(options.timeout(), 0);
    options.save();
    QCOMPARE(WorkingFolder::read(fileName), content);
}

void TestOptions::pollingCanBeOffFromStart()
{
    writeFile("[OPTIONS]\npollingInterval=0\n");
    QCOMPARE(loadedOptions().pollingInterval(), 0);
}

void TestOptions::onlyGroupOfOptionsIsRead()
{
    writeFile("timeout=1\n[Other]\ntimeout=2\n[OPTIONS]\nsub\\timeout=3\n");
    QCOMPARE(loadedOptions().timeout(), 140);
}

void TestOptions::loadingReplacesOnlyWhatFileHolds()
{
    Z7Options options;
    options.setTimeout(1);
    options.setTimeoutScanning(2);
    writeFile("[OPTIONS]\ntimeout=3\n");
    options.load();
    QCOMPARE(options.timeout(), 3);
    QCOMPARE(options.timeoutScanning(), 2);
}

void TestOptions::unknownKeysStayInFile()
{
    writeFile("[OPTIONS]\ncolour=blue\n\n[Other]\nkey=value\n");
    Z7Options options = loadedOptions();
    options.timeout();
    options.save();
    QCOMPARE(WorkingFolder::read(fileName),
        QByteArray("[OPTIONS]\ncolour=blue\ntimeout=140\n\n[Other]\nkey=value\n"));
}

void TestOptions::savingNothingMakesNoFile()
{
    Z7Options().save();
    QVERIFY(!QFile::exists(fileName));
}

void TestOptions::everyOptionThatIsKnownIsSaved()
{
    QByteArray content = "[OPTIONS]\n";
    for (const char *key : {"defaultVendorID", "language", "pollingInterval", "timeout", "timeoutScanning"})
        content += QByteArray(key) + "=7\n";
    writeFile(content);
    const Z7Options options = loadedOptions();
    QVERIFY(QFile::remove(fileName));
    options.save();
    QCOMPARE(WorkingFolder::read(fileName), content);
    QCOMPARE(content.count('='), int(Z7Options::Count));
}

void TestOptions::defaultLiesInRangeOfItsOption()
{
    for (const Z7Options::Row &row : Z7Options::rows()) {
        const int number = QByteArray(row.defaultText).toInt();
        QVERIFY2(row.kind == Z7Options::Text || (number >= row.lowest && number <= row.highest), row.key);
    }
}

void TestOptions::fileLiesInFolderThatWasGiven()
{
    QVERIFY(QDir().mkdir("elsewhere"));
    writeFile("[OPTIONS]\ntimeout=1\n");
    WorkingFolder::write("elsewhere/Z7Properties.ini", "[OPTIONS]\ntimeout=2\n");
    Z7Options options(QStringLiteral("elsewhere"));
    options.load();
    QCOMPARE(options.timeout(), 2);
    options.setTimeout(3);
    options.save();
    QCOMPARE(WorkingFolder::read("elsewhere/Z7Properties.ini"), QByteArray("[OPTIONS]\ntimeout=3\n"));
    QCOMPARE(WorkingFolder::read(fileName), QByteArray("[OPTIONS]\ntimeout=1\n"));
}

QTEST_APPLESS_MAIN(TestOptions)
#include "tst_options.moc"
