// The launcher in an installation of its own, where the program is a script that tells how it was started.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr auto sample = "Z7ParamDef_V123.csv";
constexpr auto otherSample = "Z7ParamDef_V200.csv";
constexpr auto language = "english.z7lang";

/// Tells the working folder, the search path and the arguments, a line each.
constexpr auto stubProgram = "#!/bin/sh\npwd\necho \"$PATH\"\necho \"$*\"\nexit 7\n";

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void makeExecutable(const QString &path)
{
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner);
}

} // namespace

class tst_Launcher : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void firstStartMakesFolderInUsersData();
    void workingFolderLiesInUsersHomeWithoutDataFolder();
    void folderOfUsersChoiceIsTaken();
    void firstStartBringsSamplesAndLanguages();
    void filesOfUserAreNotReplaced();
    void samplesDoNotComeBesideOtherDefinitions();
    void missingLanguageComesBack();
    void workingFolderIsNoPlaceToLookForPrograms();
    void argumentsReachProgram();
    void programsExitCodeIsLaunchers();
    void linkToLauncherFindsInstallation();

private:
    QString prefix(const QString &path) const { return m_root->filePath(QStringLiteral("usr/") + path); }
    QString workingFolder() const { return m_root->filePath(QStringLiteral("data/z7configtool")); }
    QString inWorkingFolder(const char *name) const
    {
        return workingFolder() + QLatin1Char('/') + QLatin1String(name);
    }
    void set(const char *variable, const QString &value)
    {
        m_environment.insert(QLatin1String(variable), value);
    }
    /// The lines that the stub tells.
    QStringList start(const QStringList &arguments = {}, const QString &launcher = QString());

    std::unique_ptr<QTemporaryDir> m_root;
    QProcessEnvironment m_environment;
    int m_exitCode = 0;
};

void tst_Launcher::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.remove(QStringLiteral("Z7_WORKING_FOLDER"));
    set("HOME", m_root->filePath(QStringLiteral("home")));
    set("XDG_DATA_HOME", m_root->filePath(QStringLiteral("data")));

    const QString launcher = prefix(QStringLiteral("bin/z7configtool"));
    const QString program = prefix(QStringLiteral("lib/z7configtool/Z7ConfigTool"));
    write(launcher, read(QStringLiteral(Z7_SOURCE_DIR "/packaging/z7configtool")));
    write(program, stubProgram);
    makeExecutable(launcher);
    makeExecutable(program);
    for (const char *name : {sample, otherSample})
        write(prefix(QStringLiteral("share/z7configtool/samples/")) + QLatin1String(name), "offered");
    write(prefix(QStringLiteral("share/z7configtool/languages/")) + QLatin1String(language), "offered");
}

QStringList tst_Launcher::start(const QStringList &arguments, const QString &launcher)
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(launcher.isEmpty() ? prefix(QStringLiteral("bin/z7configtool")) : launcher, arguments);
    process.waitForFinished();
    m_exitCode = process.exitCode();
    return QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
}

void tst_Launcher::firstStartMakesFolderInUsersData()
{
    QCOMPARE(start().value(0), workingFolder());
}

void tst_Launcher::workingFolderLiesInUsersHomeWithoutDataFolder()
{
    m_environment.remove(QStringLiteral("XDG_DATA_HOME"));

    QCOMPARE(start().value(0), m_root->filePath(QStringLiteral("home/.local/share/z7configtool")));
}

void tst_Launcher::folderOfUsersChoiceIsTaken()
{
    const QString chosen = m_root->filePath(QStringLiteral("drives of hall 3"));
    set("Z7_WORKING_FOLDER", chosen);

    QCOMPARE(start().value(0), chosen);
    QVERIFY(!QFile::exists(workingFolder()));
}

void tst_Launcher::firstStartBringsSamplesAndLanguages()
{
    start();

    for (const char *name : {sample, otherSample, language})
        QCOMPARE(read(inWorkingFolder(name)), QByteArray("offered"));
}

void tst_Launcher::filesOfUserAreNotReplaced()
{
    write(inWorkingFolder(sample), "mine");
    write(inWorkingFolder(language), "mine");

    start();

    QCOMPARE(read(inWorkingFolder(sample)), QByteArray("mine"));
    QCOMPARE(read(inWorkingFolder(language)), QByteArray("mine"));
}

void tst_Launcher::samplesDoNotComeBesideOtherDefinitions()
{
    write(inWorkingFolder("Z7ParamDef_V310.csv"), "mine");

    start();

    QVERIFY(!QFile::exists(inWorkingFolder(sample)));
    QVERIFY(!QFile::exists(inWorkingFolder(otherSample)));
}

void tst_Launcher::missingLanguageComesBack()
{
    start();
    QFile::remove(inWorkingFolder(language));

    start();

    QVERIFY(QFile::exists(inWorkingFolder(language)));
}

void tst_Launcher::workingFolderIsNoPlaceToLookForPrograms()
{
    QCOMPARE(start().value(1), m_environment.value(QStringLiteral("PATH")));
}

void tst_Launcher::argumentsReachProgram()
{
    QCOMPARE(start({QStringLiteral("-style"), QStringLiteral("fusion")}).value(2),
        QStringLiteral("-style fusion"));
}

void tst_Launcher::programsExitCodeIsLaunchers()
{
    start();

    QCOMPARE(m_exitCode, 7);
}

void tst_Launcher::linkToLauncherFindsInstallation()
{
    const QString link = m_root->filePath(QStringLiteral("link"));
    QFile::link(prefix(QStringLiteral("bin/z7configtool")), link);

    QCOMPARE(start({}, link).value(0), workingFolder());
}

QTEST_GUILESS_MAIN(tst_Launcher)
#include "tst_launcher.moc"
