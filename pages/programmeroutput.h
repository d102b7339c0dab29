#pragma once

#include <QString>

class QPlainTextEdit;

/// What a programmer prints, in a text field of a page.
///
/// The text of the field is exactly what was appended, each call as a paragraph of its own, up to the newest
/// 10,000 lines. How it is drawn is bounded, since a programmer may print anything: a line of many thousand
/// characters breaks wherever the field ends instead of between words, as do the others from then on to
/// clear(), and of one that is longer than a pipe holds the beginning alone is shown. Main thread only.
class ProgrammerOutput
{
public:
    /// Prepares an empty field, which has to outlive this object.
    explicit ProgrammerOutput(QPlainTextEdit *field);

    void append(const QString &text);
    void clear();

private:
    QPlainTextEdit *const m_field;
};
