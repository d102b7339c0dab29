// What holds a table to the enumeration that counts its rows.

#include "control/services/rows.h"

#include <QVector>
#include <QtTest>

namespace {

struct Row
{
    int number;
};

} // namespace

Q_DECLARE_METATYPE(QVector<Row>)

class TestRows : public QObject
{
    Q_OBJECT

private slots:
    void eachNumberHasOneRowAtItsPlace_data();
    void eachNumberHasOneRowAtItsPlace();
};

void TestRows::eachNumberHasOneRowAtItsPlace_data()
{
    QTest::addColumn<QVector<Row>>("rows");
    QTest::addColumn<bool>("isRight");
    QTest::newRow("whole") << QVector<Row> {{0}, {1}, {2}} << true;
    QTest::newRow("the last one is missing") << QVector<Row> {{0}, {1}} << false;
    QTest::newRow("one between is missing") << QVector<Row> {{0}, {2}} << false;
    QTest::newRow("one too many") << QVector<Row> {{0}, {1}, {2}, {3}} << false;
    QTest::newRow("one twice") << QVector<Row> {{0}, {1}, {1}} << false;
    QTest::newRow("two have changed places") << QVector<Row> {{0}, {2}, {1}} << false;
    QTest::newRow("none") << QVector<Row> {} << false;
}

void TestRows::eachNumberHasOneRowAtItsPlace()
{
    QFETCH(QVector<Row>, rows);
    QTEST(eachHasItsRow(rows, &Row::number, 3), "isRight");
}

QTEST_APPLESS_MAIN(TestRows)

#include "tst_rows.moc"
