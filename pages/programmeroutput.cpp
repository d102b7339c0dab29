#include "pages/programmeroutput.h"

#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <new>

namespace {

/// A programmer that prints without end must not eat the memory.
constexpr int mostLines = 10000;
/// Breaking a line between words takes a time that grows with the square of the words' length.
constexpr int longLine = 4000;
/// What a pipe holds, and so the longest read there is as a rule.
constexpr int mostDrawn = 65536;

bool endsLine(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\r');
}

bool hasLongLine(const QString &text)
{
    for (auto begin = text.begin(); begin != text.end();) {
        const auto end = std::find_if(begin, text.end(), endsLine);
        if (end - begin > longLine)
            return true;
        begin = std::find_if_not(end, text.end(), endsLine);
    }
    return false;
}

/// The text without those of its first lines that would not stay.
QString newestLines(const QString &text)
{
    int begin = text.size();
    for (int lines = 0; lines < mostLines && begin >= 0; ++lines)
        begin = begin == 0 ? -1 : text.lastIndexOf(QLatin1Char('\n'), begin - 1);
    return text.mid(begin + 1);
}

/// Lays the beginning of a very long paragraph out in place of all of it. Whatever is drawn of a paragraph
/// costs a pass over the whole.
class OutputLayout : public QPlainTextDocumentLayout
{
public:
    using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override
    {
        for (QTextBlock block = document()->findBlock(from);
             block.isValid() && block.position() <= from + charsAdded; block = block.next()) {
            if (block.length() > mostDrawn + 1)
                drawBeginningOf(block);
        }
        QPlainTextDocumentLayout::documentChanged(from, charsRemoved, charsAdded);
    }

private:
    void drawBeginningOf(const QTextBlock &block) const
    {
        const QString beginning = block.text().left(mostDrawn) + QChar(0x2026);
        // A paragraph has its layout for good, and that reads the paragraph; only another in its place does
        // not.
        QTextLayout *layout = block.layout();
        layout->~QTextLayout();
        new (layout) QTextLayout(beginning, document()->defaultFont());
    }
};

QTextDocument *outputDocument(QPlainTextEdit *field)
{
    auto *document = new QTextDocument(field);
    document->setDocumentLayout(new OutputLayout(document));
    document->setDefaultFont(field->font());
    return document;
}

} // namespace

ProgrammerOutput::ProgrammerOutput(QPlainTextEdit *field)
    : m_field(field)
{
    field->setDocument(outputDocument(field));
    field->setReadOnly(true);
    field->setMaximumBlockCount(mostLines);
}

void ProgrammerOutput::append(const QString &text)
{
    if (hasLongLine(text))
        m_field->setWordWrapMode(QTextOption::WrapAnywhere);
    m_field->appendPlainText(newestLines(text));
}

void ProgrammerOutput::clear()
{
    m_field->clear();
    m_field->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}
