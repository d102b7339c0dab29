#pragma once

#include <QAbstractButton>

/// What a field of the status bar says.
struct StatusText
{
    QString text; ///< one line; a field without it takes no room
    QString detail; ///< what the tool tip adds, on lines of its own
    bool isWarning = false; ///< bold, behind an icon

    bool isEmpty() const { return text.isEmpty(); }
    /// Text and detail, as the tool tip and screen readers tell them.
    QString whole() const { return detail.isEmpty() ? text : text + QLatin1Char('\n') + detail; }
};

bool operator==(const StatusText &a, const StatusText &b);
inline bool operator!=(const StatusText &a, const StatusText &b)
{
    return !(a == b);
}

/// A field of the status bar: one line, cut short where it has no room, whose whole text is in its tool tip
/// and accessible description. It asks for no width that the window would have to have.
///
/// A field on which a click does something is reached by Tab and pressed with Space and Return as well; it
/// does not take the focus by the mouse, so that who types goes on typing. The others are no stop of the
/// keyboard. While a field is empty it keeps its place in the order and is nowhere on the screen.
class StatusField : public QAbstractButton
{
    Q_OBJECT

public:
    enum Click {
        DoesNothing,
        Opens, ///< underlined under the mouse
        Acts, ///< underlined always
        Dismisses, ///< with a cross at its end
    };

    /// `title` is what screen readers call it; it does not change.
    StatusField(const char *objectName, const QString &title, Click click, QWidget *parent);

    /// One accessibility event if this is something new, and none otherwise.
    void say(const StatusText &text);
    const StatusText &said() const { return m_said; }

    /// What of the text is on the screen.
    QString shownText() const;

    /// The width at which nothing is cut. Until the field is empty again it only grows, so that fields beside
    /// it stay where they are.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QFont shownFont() const;
    int widthOfText() const;
    int widthOfMarks() const;
    QRect roomForText() const;
    void remeasure();

    const Click m_click;
    StatusText m_said;
    int m_widest = 0;
};
