#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class SetPasswordDialog;
}

/// Asks for the password in force and a new one.
class SetPasswordDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SetPasswordDialog(QWidget *parent = nullptr);
    ~SetPasswordDialog() override;

private:
    const std::unique_ptr<Ui::SetPasswordDialog> m_ui;
};
