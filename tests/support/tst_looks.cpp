// What other tests see of pictures and buttons.

#include "tests/support/looks.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

namespace {

QPixmap filled(const QColor &colour)
{
    QPixmap pixmap(24, 24);
    pixmap.fill(colour);
    return pixmap;
}

} // namespace

class TestLooks : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void picturesOnScreenAreSeenInTheirOrder();
    void buttonOfItsRowLooksAsItSays_data();
    void buttonOfItsRowLooksAsItSays();
    void whatIsWrongWithButtonIsTold_data();
    void whatIsWrongWithButtonIsTold();

private:
    QWidget window;
};

void TestLooks::initTestCase()
{
    QVERIFY(filled(Qt::red).save("red.png"));
    QVERIFY(filled(Qt::blue).save("blue.png"));
    auto *push = new QPushButton(QIcon("red.png"), "Größe", &window);
    push->setObjectName("push");
    auto *tool = new QToolButton(&window);
    tool->setObjectName("tool");
    tool->setText("...");
    tool->setToolTip("Open");
    tool->setIcon(QIcon("blue.png"));
}

void TestLooks::picturesOnScreenAreSeenInTheirOrder()
{
    QWidget parent;
    QHBoxLayout layout(&parent);
    for (const QColor colour : {Qt::red, Qt::green, Qt::blue}) {
        auto *label = new QLabel;
        label->setPixmap(filled(colour));
        layout.addWidget(label);
    }
    layout.addWidget(new QLabel("no picture"));
    parent.show();
    layout.itemAt(1)->widget()->hide();
    const QList<QImage> expected {filled(Qt::red).toImage(), filled(Qt::blue).toImage()};
    QCOMPARE(Looks::picturesOf(parent), expected);
}

void TestLooks::buttonOfItsRowLooksAsItSays_data()
{
    Looks::addButtonColumns();
    Looks::addButton("push", "Größe", "red.png");
    Looks::addButton("tool", "Open", "blue.png");
}

void TestLooks::buttonOfItsRowLooksAsItSays()
{
    Looks::checkButton(window);
}

void TestLooks::whatIsWrongWithButtonIsTold_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("icon");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char *name, const char *button, const char *words, const char *icon,
                         const char *fault) {
        QTest::newRow(name) << button << QString::fromUtf8(words) << QByteArray(icon)
                            << QString::fromUtf8(fault);
    };
    row("no button of that name", "other", "Größe", "red.png", "it is not there");
    row("other words", "push", "Höhe", "red.png", "it bears the words Größe");
    row("words of a tool button outside of its tool tip", "tool", "...", "blue.png",
        "it bears the words Open");
    row("another icon", "push", "Größe", "blue.png", "it bears another icon");
    row("missing file", "push", "Größe", "missing.png", "there is no such file");
}

void TestLooks::whatIsWrongWithButtonIsTold()
{
    QFETCH(QString, button);
    QFETCH(QString, words);
    QFETCH(QByteArray, icon);
    QTEST(Looks::faultOf(window, button, words, icon), "fault");
}

QTEST_MAIN(TestLooks)

#include "tst_looks.moc"
