#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class optionsdialog;
}

/// Edits the options.
class optionsdialog : public QDialog
{
    Q_OBJECT

public:
    explicit optionsdialog(QWidget *parent = nullptr);
    ~optionsdialog() override;

private:
    const std::unique_ptr<Ui::optionsdialog> m_ui;
};
