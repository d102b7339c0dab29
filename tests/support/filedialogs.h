#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

/// Answers the toolkit's file dialogs while the code under test runs: types a name and presses Enter, or
/// presses Escape if the name is null.
///
///     FileDialogUser user("drive.z7param");
///     window.press("BtnSaveAs");
///     QCOMPARE(user.count(), 1);
///
/// Main thread only.
class FileDialogUser
{
public:
    explicit FileDialogUser(const QString &name)
        : m_name(name)
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { look(); });
        m_timer.start();
    }

    int count() const { return m_count; }
    const QString &title() const { return m_title; }
    const QString &folder() const { return m_folder; }
    const QStringList &filters() const { return m_filters; }

private:
    void look()
    {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        ++m_count;
        m_title = dialog->windowTitle();
        m_folder = dialog->directory().absolutePath();
        m_filters = dialog->nameFilters();
        answer(dialog);
    }

    void answer(QFileDialog *dialog) const
    {
        auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        if (m_name.isNull()) {
            QTest::keyClick(dialog, Qt::Key_Escape);
            return;
        }
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, m_name);
        QTest::keyClick(field, Qt::Key_Return);
    }

    const QString m_name;
    QTimer m_timer;
    int m_count = 0;
    QString m_title;
    QString m_folder;
    QStringList m_filters;
};
