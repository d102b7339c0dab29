#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class AboutDialog;
}

/// What the tool is, its version and its maker.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);
    ~AboutDialog() override;

protected:
    /// The button has the focus at each showing, or the return key would open the link.
    void showEvent(QShowEvent *event) override;
    /// Makes the link one field for the keys: by itself it would keep Shift+Tab.
    bool eventFilter(QObject *link, QEvent *event) override;

private:
    void setTexts();
    void selectLink(bool selected);

    QString m_linkText;
    const std::unique_ptr<Ui::AboutDialog> m_ui;
};
