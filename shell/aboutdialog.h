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

private:
    void setTexts();

    const std::unique_ptr<Ui::AboutDialog> m_ui;
};
