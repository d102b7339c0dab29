// Connections are string-based: a slot is named by its signature wherever a connection is made.

#include <QDirIterator>
#include <QRegularExpression>
#include <QtTest>

namespace {

/// The calls of connect() in a source that take the address of a member or a lambda in the place of a name.
QStringList otherConnections(const QString &source)
{
    static const QRegularExpression call(
        QStringLiteral(R"(\bconnect\((?:[^;]*?)(?:&\w+::\w+|\[[^\]]*\]\s*(?:\(|\{))[^;]*;)"));
    QStringList found;
    auto matches = call.globalMatch(source);
    while (matches.hasNext())
        found.append(matches.next().captured().simplified());
    return found;
}

QString contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestConnections : public QObject
{
    Q_OBJECT

private slots:
    void connectionThatNamesNoSignatureIsFound_data();
    void connectionThatNamesNoSignatureIsFound();
    void everyConnectionNamesItsSignalAndSlot_data();
    void everyConnectionNamesItsSignalAndSlot();
};

void TestConnections::connectionThatNamesNoSignatureIsFound_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("count");
    QTest::newRow("named") << "connect(box, SIGNAL(clicked()), SLOT(close()));" << 0;
    QTest::newRow("named on a list") << "connect(boxes[i], SIGNAL(clicked()), SLOT(close()));" << 0;
    QTest::newRow("address of the slot") << "connect(box, &Box::clicked,\n this, &Page::close);" << 1;
    QTest::newRow("lambda") << "connect(box, SIGNAL(clicked()), [this] { close(); });" << 1;
    QTest::newRow("lambda with arguments") << "connect(box, s, this, [=](int n) { show(n); });" << 1;
}

void TestConnections::connectionThatNamesNoSignatureIsFound()
{
    QFETCH(QString, source);
    QTEST(otherConnections(source).size(), "count");
}

void TestConnections::everyConnectionNamesItsSignalAndSlot_data()
{
    QTest::addColumn<QString>("folder");
    for (const char *folder : {"comm", "control", "model", "pages", "protocol", "shell"})
        QTest::newRow(folder) << QStringLiteral(Z7_SOURCE_DIR "/") + QLatin1String(folder);
}

void TestConnections::everyConnectionNamesItsSignalAndSlot()
{
    QFETCH(QString, folder);
    QDirIterator it(folder, {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
    QVERIFY(it.hasNext());
    while (it.hasNext()) {
        const QString file = it.next();
        const QStringList found = otherConnections(contentOf(file));
        QVERIFY2(found.isEmpty(), qPrintable(file + ": " + found.join(' ')));
    }
}

QTEST_APPLESS_MAIN(TestConnections)

#include "tst_connections.moc"
