// The parameters of the pages are defined for both versions of the samples.

#include "model/parameterdefinitions.h"
#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "tests/support/workingfolder.h"

#include <QtTest>

namespace {

const QStringList versions {"V123", "V200"};

/// The operating modes, whose words stand on many pages.
const QList<int> modeParameters {1, 2};

/// Parameters without an own page that the status page takes its units from.
const QList<int> statusParameters {0x8001, 0x8004, 0x8005, 0x8007, 0x800D};

QList<int> parametersOf(int page)
{
    const std::unique_ptr<Z7DataWidget> created = createDataPage(page);
    if (page == PageNumber::DeviceStatus)
        return created->paramIds() + modeParameters + statusParameters;
    return created->paramIds();
}

} // namespace

class TestPageParameters : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void parametersOfPageAreDefined_data();
    void parametersOfPageAreDefined();

private:
    const WorkingFolder folder;
};

void TestPageParameters::init()
{
    for (const QString &version : versions) {
        const QString name = QStringLiteral("Z7ParamDef_%1.csv").arg(version);
        const QByteArray content = folder.read(QStringLiteral(Z7_SOURCE_DIR "/samples/") + name);
        QVERIFY(!content.isEmpty());
        folder.write(name, content);
    }
}

void TestPageParameters::parametersOfPageAreDefined_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<int>("page");
    for (const QString &version : versions) {
        for (int page = 0; page <= PageNumber::Last; ++page) {
            const QByteArray name = createDataPage(page)->metaObject()->className();
            QTest::newRow(version.toLatin1() + ": " + name) << version << page;
        }
    }
}

void TestPageParameters::parametersOfPageAreDefined()
{
    QFETCH(QString, version);
    QFETCH(int, page);
    Z7ParamDefinitions definitions(version);
    QVERIFY(definitions.load());
    const QList<int> defined = definitions.emptyParameterSet().params.keys();
    const QList<int> numbers = parametersOf(page);
    for (const int number : numbers)
        QVERIFY2(defined.contains(number), QByteArray::number(number));
}

QTEST_MAIN(TestPageParameters)

#include "tst_pageparameters.moc"
