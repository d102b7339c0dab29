#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

/// What a person saw of a message box before pressing a button.
struct SeenMessageBox
{
    QString title;
    QString text;
    QString informativeText;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons = QMessageBox::NoButton;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    bool isModal = false;
    bool hasParent = false;
};

/// Waits for message boxes while the code under test runs, and answers each of them with the mouse:
///
///     MessageBoxAnswerer user(QMessageBox::Yes);
///     controller.UploadData();
///     QCOMPARE(user.count(), 1);
///     QCOMPARE(user.last().defaultButton, QMessageBox::No);
///
/// A box without that button is closed with Escape, so that the test fails and does not hang. Other modal
/// windows are left alone. Main thread only.
class MessageBoxAnswerer
{
public:
    explicit MessageBoxAnswerer(QMessageBox::StandardButton answer)
        : MessageBoxAnswerer([answer](QMessageBox *box) {
            if (QAbstractButton *button = box->button(answer))
                QTest::mouseClick(button, Qt::LeftButton);
        })
    {
    }

    /// `answer` does with the box what the person does, by mouse or keys.
    explicit MessageBoxAnswerer(const std::function<void(QMessageBox *)> &answer)
        : m_answer(answer)
    {
        m_timer.setInterval(lookingMs);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start();
    }

    int count() const { return m_seen.size(); }
    const QList<SeenMessageBox> &seen() const { return m_seen; }
    /// The newest box; a default record if none has come.
    SeenMessageBox last() const { return m_seen.isEmpty() ? SeenMessageBox() : m_seen.last(); }

private:
    static constexpr int lookingMs = 5;

    void look()
    {
        const QPointer<QMessageBox> box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        m_seen.append(record(box));
        m_answer(box);
        if (box && box->isVisible())
            QTest::keyClick(box.data(), Qt::Key_Escape);
    }

    static SeenMessageBox record(const QMessageBox *box)
    {
        SeenMessageBox seen;
        seen.title = box->windowTitle();
        seen.text = box->text();
        seen.informativeText = box->informativeText();
        seen.icon = box->icon();
        seen.buttons = box->standardButtons();
        seen.defaultButton = box->standardButton(box->defaultButton());
        seen.isModal = box->isModal();
        seen.hasParent = box->parentWidget() != nullptr;
        return seen;
    }

    const std::function<void(QMessageBox *)> m_answer;
    QTimer m_timer;
    QList<SeenMessageBox> m_seen;
};
