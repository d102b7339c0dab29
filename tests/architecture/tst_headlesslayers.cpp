// Protocol, services, model and comm make a program for a machine without a display: this one is linked of
// them, of each object in them, and of no more.

#include <QRegularExpression>
#include <QtTest>

#include <link.h>

namespace {

/// File names, without folders, of the libraries in this process.
QStringList loadedLibraries()
{
    QStringList libraries;
    const auto add = [](dl_phdr_info *info, size_t, void *found) {
        static_cast<QStringList *>(found)->append(
            QString::fromLocal8Bit(info->dlpi_name).section(QLatin1Char('/'), -1));
        return 0;
    };
    dl_iterate_phdr(add, &libraries);
    return libraries;
}

} // namespace

class TestHeadlessLayers : public QObject
{
    Q_OBJECT

private slots:
    void whatTheyNeedIsLinked_data();
    void whatTheyNeedIsLinked();
    void nothingForDisplayIsLinked();
};

void TestHeadlessLayers::whatTheyNeedIsLinked_data()
{
    QTest::addColumn<QString>("library");
    for (const char *library : {"libQt5Core", "libQt5SerialPort"})
        QTest::newRow(library) << QString::fromLatin1(library);
}

void TestHeadlessLayers::whatTheyNeedIsLinked()
{
    QFETCH(QString, library);
    QCOMPARE(loadedLibraries().filter(library).size(), 1);
}

void TestHeadlessLayers::nothingForDisplayIsLinked()
{
    const QRegularExpression forDisplay("^lib(?:Qt5(?!Core|SerialPort|Test)|qwt|X11|xcb|wayland|GL\\b)");
    const QStringList found = loadedLibraries().filter(forDisplay);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char(' '))));
}

QTEST_APPLESS_MAIN(TestHeadlessLayers)

#include "tst_headlesslayers.moc"
