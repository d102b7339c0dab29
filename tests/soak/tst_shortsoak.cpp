// The soak itself, for some seconds at ten times its pace: it works, and the program holds.

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int startMs = 30000;
constexpr int soakMs = 240000;

} // namespace

class TestShortSoak : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void workOnDisturbedBusLosesNothing();

private:
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
    QProcess m_drives;
};

void TestShortSoak::initTestCase()
{
    const QDir samples(QStringLiteral(Z7_SAMPLES));
    for (const QString &name : samples.entryList({QStringLiteral("*.csv")}))
        QVERIFY(QFile::copy(samples.filePath(name), m_folder.filePath(name)));
    QFile options(path("Z7Properties.ini"));
    QVERIFY(options.open(QIODevice::WriteOnly));
    options.write("[OPTIONS]\npollingInterval=100\ntimeoutScanning=20\n");

    m_drives.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_drives.start(QStringLiteral(Z7SIM_PROGRAM),
        {"--definitions", m_folder.path(), "--link", path("adapter"), "--control", path("socket"),
            "--unpaced", "--drive", "1,password=0,version=V123", "--drive", "3,password=0,version=V200",
            "--drive", "7,password=4711,version=V200"});
    QVERIFY(m_drives.waitForReadyRead(startMs));
}

void TestShortSoak::cleanupTestCase()
{
    m_drives.terminate();
    m_drives.waitForFinished();
}

void TestShortSoak::workOnDisturbedBusLosesNothing()
{
    QProcess soak;
    soak.setWorkingDirectory(m_folder.path());
    soak.setProcessChannelMode(QProcess::MergedChannels);
    soak.start(QStringLiteral(Z7_WITHPORTS),
        {"ttyUSB0=" + path("adapter"), "--", Z7SOAK_PROGRAM, path("socket"), "--minutes", "0.15", "--pace",
            "10"});
    const bool ended = soak.waitForFinished(soakMs);
    const QByteArray report = soak.readAll();
    QVERIFY2(ended, report.constData());
    QVERIFY2(soak.exitStatus() == QProcess::NormalExit && soak.exitCode() == 0, report.constData());
}

QTEST_GUILESS_MAIN(TestShortSoak)
#include "tst_shortsoak.moc"
