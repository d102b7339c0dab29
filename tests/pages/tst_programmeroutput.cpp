// What a programmer prints, as the text field has it and as a person sees it.

#include "pages/programmeroutput.h"

#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QtTest>

#include <optional>

namespace {

constexpr int mostLines = 10000;
constexpr int pipeHolds = 65536;
constexpr int twoMegabytes = 2 * 1024 * 1024;

QString twice(const QString &text)
{
    return text + QLatin1Char('\n') + text;
}

} // namespace

class TestProgrammerOutput : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void textIsThatOfPlainField_data();
    void textIsThatOfPlainField();
    void whatIsCopiedIsWholeText();

    void lineOfWordsBreaksBetweenWords();
    void wordWithoutEndFillsWidth();
    void linesBreakBetweenWordsAgainInClearedField();
    void readThatPipeHoldsIsShownInFull();
    void longerReadShowsItsBeginning();
    void longReadFollowsSizeOfWindow();
    void newestLineStaysInSight();
    void longReadIntoHiddenFieldIsThereWhenItIsShown();
    void mouseOnLongReadSelectsWhatItTouches();

private:
    QTextLayout *lastLayout() const
    {
        const QTextBlock block = field->document()->lastBlock();
        field->document()->documentLayout()->blockBoundingRect(block);
        return block.layout();
    }
    QTextLine lastLine() const { return lastLayout()->lineAt(lastLayout()->lineCount() - 1); }

    std::optional<ProgrammerOutput> output;
    std::optional<QPlainTextEdit> field;
};

void TestProgrammerOutput::init()
{
    output.reset();
    field.emplace();
    output.emplace(&*field);
    field->resize(600, 300);
    field->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*field));
}

void TestProgrammerOutput::textIsThatOfPlainField_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("line") << QString("Erasing...");
    QTest::newRow("lines with their ends") << QString("Erasing...\n\nDone.\n");
    QTest::newRow("lines that write over one another") << QString("10 %\r20 %\r\n30 %\n\r");
    QTest::newRow("blank that keeps words together") << QString::fromLatin1("100\xa0%");
    QTest::newRow("word without end") << QString(pipeHolds, 'x');
    QTest::newRow("2 MB without a line feed") << QString(twoMegabytes, 'x');
    QTest::newRow("2 MB between lines") << "begin\n" + QString(twoMegabytes, 'x') + "\nend";
    QTest::newRow("as many lines as stay") << QString("a\n").repeated(mostLines - 1);
    QTest::newRow("one more") << QString("a\n").repeated(mostLines);
    QTest::newRow("many more") << "first\n" + QString("a\n").repeated(3 * mostLines) + "last";
    QTest::newRow("many empty lines") << QString(pipeHolds, '\n');
    QTest::newRow("many more of two kinds") << QString("a\n\rb\r\n").repeated(mostLines);
}

void TestProgrammerOutput::textIsThatOfPlainField()
{
    QFETCH(QString, text);
    QPlainTextEdit plain;
    plain.setMaximumBlockCount(mostLines);
    plain.appendPlainText("before");
    plain.appendPlainText(text);
    plain.appendPlainText("behind");
    output->append("before");
    output->append(text);
    output->append("behind");
    QVERIFY(field->toPlainText() == plain.toPlainText());
    QCOMPARE(field->blockCount(), plain.blockCount());
}

void TestProgrammerOutput::whatIsCopiedIsWholeText()
{
    const QString text(twoMegabytes, 'x');
    output->append(text);
    output->append(text);
    QTest::keyClick(&*field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&*field, Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QApplication::clipboard()->text() == twice(text));
}

void TestProgrammerOutput::lineOfWordsBreaksBetweenWords()
{
    output->append(QString("programming ").repeated(100));
    QVERIFY(lastLayout()->lineCount() > 2);
    for (int i = 0; i < lastLayout()->lineCount(); ++i)
        QCOMPARE(lastLayout()->lineAt(i).textStart() % QString("programming ").size(), 0);
}

void TestProgrammerOutput::wordWithoutEndFillsWidth()
{
    output->append(QString(pipeHolds, 'x'));
    const qreal width = field->viewport()->width();
    const QTextLine line = lastLayout()->lineAt(0);
    QVERIFY2(line.naturalTextWidth() < width, qPrintable(QString::number(line.naturalTextWidth())));
    QVERIFY2(line.naturalTextWidth() > width * 0.9, qPrintable(QString::number(line.naturalTextWidth())));
}

void TestProgrammerOutput::linesBreakBetweenWordsAgainInClearedField()
{
    output->append(QString(pipeHolds, 'x'));
    output->clear();
    QCOMPARE(field->toPlainText(), QString());
    lineOfWordsBreaksBetweenWords();
}

void TestProgrammerOutput::readThatPipeHoldsIsShownInFull()
{
    output->append(QString(pipeHolds, 'x'));
    QCOMPARE(lastLine().textStart() + lastLine().textLength(), pipeHolds);
    QCOMPARE(lastLayout()->text(), QString());
}

void TestProgrammerOutput::longerReadShowsItsBeginning()
{
    output->append(QString(pipeHolds, 'x') + QString(twoMegabytes, 'y'));
    QVERIFY(lastLayout()->text() == QString(pipeHolds, 'x') + QChar(0x2026));
    QCOMPARE(lastLine().textStart() + lastLine().textLength(), pipeHolds + 1);
}

void TestProgrammerOutput::longReadFollowsSizeOfWindow()
{
    output->append(QString(twoMegabytes, 'x'));
    const int lines = lastLayout()->lineCount();
    field->resize(1200, 300);
    QTRY_VERIFY(lastLayout()->lineCount() < lines * 0.6);
}

void TestProgrammerOutput::newestLineStaysInSight()
{
    for (int i = 0; i < 5; ++i) {
        output->append(QString("a\n").repeated(3 * mostLines));
        QCoreApplication::processEvents();
        QCOMPARE(field->verticalScrollBar()->value(), field->verticalScrollBar()->maximum());
    }
}

void TestProgrammerOutput::mouseOnLongReadSelectsWhatItTouches()
{
    output->append(QString("programming ").repeated(twoMegabytes / 12));
    field->verticalScrollBar()->setValue(0);
    QTest::mouseDClick(field->viewport(), Qt::LeftButton, {}, QPoint(20, 60));
    QCOMPARE(field->textCursor().selectedText(), QStringLiteral("programming"));
    field->verticalScrollBar()->setValue(field->verticalScrollBar()->maximum());
    QTest::mouseDClick(field->viewport(), Qt::LeftButton, {}, field->viewport()->rect().bottomRight());
    QVERIFY(field->grab().width() > 0);
}

void TestProgrammerOutput::longReadIntoHiddenFieldIsThereWhenItIsShown()
{
    const QString before = QStringLiteral("Programming");
    const QString read(twoMegabytes, QLatin1Char('x'));
    field->hide();
    output->append(before);
    output->append(read);
    field->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*field));
    QTest::keyClick(&*field, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(field->toPlainText(), before + QLatin1Char('\n') + read);
}

QTEST_MAIN(TestProgrammerOutput)

#include "tst_programmeroutput.moc"
