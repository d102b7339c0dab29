// The names of the classes tell their layer.

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

class TestNames : public QObject
{
    Q_OBJECT

private slots:
    void classesOfBusBearItsPrefix_data();
    void classesOfBusBearItsPrefix();
};

void TestNames::classesOfBusBearItsPrefix_data()
{
    QTest::addColumn<QString>("path");
    const QDir source(Z7_SOURCE_DIR);
    for (const QString folder : {"protocol", "comm"}) {
        for (const QString &file : QDir(source.filePath(folder)).entryList({"*.h"}))
            QTest::newRow(qPrintable(folder + '/' + file)) << source.filePath(folder + '/' + file);
    }
}

void TestNames::classesOfBusBearItsPrefix()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    static const QRegularExpression declaration(
        "^(?:class|struct) (\\w+)", QRegularExpression::MultilineOption);
    auto match = declaration.globalMatch(QString::fromUtf8(file.readAll()));
    QVERIFY(match.hasNext());
    while (match.hasNext()) {
        const QString name = match.next().captured(1);
        QVERIFY2(name.startsWith("Z7") || name.startsWith("CommThread"), qPrintable(name));
    }
}

QTEST_APPLESS_MAIN(TestNames)

#include "tst_names.moc"
