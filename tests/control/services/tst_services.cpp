// The process-wide object: what comes into being when, and what the program's normal end leaves in its
// folder.

#include "control/services/language.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "tests/support/isolatedtest.h"

#include <QtTest>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

const QString optionsFile = QStringLiteral("Z7Properties.ini");
const QString languageFile = QStringLiteral("deutsch.z7lang");

/// Notes the files of a folder in the order in which they get their final content.
class WrittenFiles
{
public:
    explicit WrittenFiles(const QString &folder)
    {
        inotify_add_watch(m_events, qPrintable(folder), IN_CREATE | IN_MOVED_TO);
    }
    ~WrittenFiles() { close(m_events); }
    Q_DISABLE_COPY(WrittenFiles)

    /// Those of the two files that were written, without the temporary ones beside them.
    QStringList names() const
    {
        alignas(inotify_event) char buffer[4096];
        const ssize_t size = read(m_events, buffer, sizeof buffer);
        QStringList names;
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + at);
            const QString name = QString::fromLocal8Bit(event->name);
            if (name == optionsFile || name == languageFile)
                names.append(name);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
        return names;
    }

private:
    int m_events = inotify_init1(IN_NONBLOCK);
};

} // namespace

class TestServices : public IsolatedTest
{
    Q_OBJECT

private slots:
    void thereIsOneObjectOfEachKind();
    void firstTextReadsOptions();
    void nothingIsWrittenBeforeEnd();
    void endWritesLanguageBeforeOptions();
    void runWithoutTextWritesNoLanguageFile();
    void endWithoutBeginningIsHarmless();
    void nextRunReadsWhatLastOneWrote();
    void newLanguageWaitsForNextRun();

    void filesLieInFolderThatWasGiven();
    void givenFolderStaysWhenCurrentOneChanges();
    void folderIsForgottenAtEnd();
};

void TestServices::thereIsOneObjectOfEachKind()
{
    Z7Services *services = Z7Services::instance();
    QCOMPARE(Z7Services::instance(), services);
    QCOMPARE(services->options(), services->options());
    QCOMPARE(services->language(), services->language());
}

void TestServices::firstTextReadsOptions()
{
    languageText("Common", "OK", QStringLiteral("OK"));
    WorkingFolder::write(optionsFile, "[OPTIONS]\ntimeout=1\n");
    QCOMPARE(Z7Services::instance()->options()->timeout(), 140);
}

void TestServices::nothingIsWrittenBeforeEnd()
{
    languageText("Common", "OK", QStringLiteral("OK"));
    Z7Services::instance()->options()->setTimeout(200);
    QVERIFY(QDir().entryList(QDir::Files | QDir::Hidden).isEmpty());
}

void TestServices::endWritesLanguageBeforeOptions()
{
    languageText("Common", "OK", QStringLiteral("OK"));
    Z7Services::instance()->options()->timeout();
    const WrittenFiles written(QDir::currentPath());
    Z7Services::shutdown();
    QCOMPARE(written.names(), QStringList({languageFile, optionsFile}));
    QCOMPARE(WorkingFolder::read(languageFile), QByteArray("[Common]\nOK=OK\n"));
    QCOMPARE(WorkingFolder::read(optionsFile), QByteArray("[OPTIONS]\nlanguage=deutsch\ntimeout=140\n"));
}

void TestServices::runWithoutTextWritesNoLanguageFile()
{
    Z7Services::instance()->options()->timeout();
    Z7Services::shutdown();
    QVERIFY(!QFile::exists(languageFile));
    QCOMPARE(WorkingFolder::read(optionsFile), QByteArray("[OPTIONS]\ntimeout=140\n"));
}

void TestServices::endWithoutBeginningIsHarmless()
{
    Z7Services::shutdown();
    Z7Services::shutdown();
    QVERIFY(QDir().entryList(QDir::Files | QDir::Hidden).isEmpty());
}

void TestServices::nextRunReadsWhatLastOneWrote()
{
    Z7Services::instance()->options()->setPollingInterval(250);
    Z7Services::shutdown();
    QCOMPARE(Z7Services::instance()->options()->pollingInterval(), 250);
}

void TestServices::newLanguageWaitsForNextRun()
{
    WorkingFolder::write(QStringLiteral("english.z7lang"), "[Common]\nYes=Yes\n");
    QCOMPARE(languageText("Common", "Yes", QStringLiteral("Ja")), QStringLiteral("Ja"));
    Z7Services::instance()->options()->setLanguage(QStringLiteral("english"));
    QCOMPARE(languageText("Common", "Yes", QStringLiteral("Ja")), QStringLiteral("Ja"));
    Z7Services::shutdown();
    QCOMPARE(WorkingFolder::read(languageFile), QByteArray("[Common]\nYes=Ja\n"));
    QCOMPARE(languageText("Common", "Yes", QStringLiteral("Ja")), QStringLiteral("Yes"));
}

void TestServices::filesLieInFolderThatWasGiven()
{
    const QTemporaryDir folder;
    WorkingFolder::write(folder.filePath(optionsFile), "[OPTIONS]\nlanguage=english\n");
    WorkingFolder::write(folder.filePath("english.z7lang"), "[Common]\nYes=Yes\n");
    Z7Services::instance()->setFolder(folder.path());
    QCOMPARE(commonText("Yes", "Ja"), QStringLiteral("Yes"));
    QCOMPARE(commonText("No", "Nein"), QStringLiteral("Nein"));
    Z7Services::instance()->options()->setTimeout(200);
    Z7Services::shutdown();
    QCOMPARE(
        WorkingFolder::read(folder.filePath("english.z7lang")), QByteArray("[Common]\nNo=Nein\nYes=Yes\n"));
    QCOMPARE(WorkingFolder::read(folder.filePath(optionsFile)),
        QByteArray("[OPTIONS]\nlanguage=english\ntimeout=200\n"));
    QCOMPARE(WorkingFolder::files(), QStringList());
}

void TestServices::givenFolderStaysWhenCurrentOneChanges()
{
    QVERIFY(QDir().mkdir("given"));
    Z7Services::instance()->setFolder("given");
    QVERIFY(QDir::setCurrent("given"));
    QCOMPARE(Z7Services::instance()->folder(), QDir::currentPath());
    Z7Services::instance()->options()->timeout();
    Z7Services::shutdown();
    QCOMPARE(WorkingFolder::files(), QStringList(optionsFile));
}

void TestServices::folderIsForgottenAtEnd()
{
    QVERIFY(QDir().mkdir("given"));
    WorkingFolder::write("given/Z7Properties.ini", "[OPTIONS]\ntimeout=2\n");
    Z7Services::instance()->setFolder("given");
    QCOMPARE(Z7Services::instance()->options()->timeout(), 2);
    Z7Services::shutdown();
    QCOMPARE(Z7Services::instance()->options()->timeout(), 140);
}

QTEST_APPLESS_MAIN(TestServices)
#include "tst_services.moc"
