#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class SetPasswordDialog;
}

/// Asks for the password in force on a drive and, twice, for a new one. Passwords are numbers and are
/// compared as such; the one in force is known to the program.
class SetPasswordDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SetPasswordDialog(QWidget *parent = nullptr);
    ~SetPasswordDialog() override;

    /// Empties the dialog before each showing. Each call connects the buttons once more, so that a
    /// confirmation reports the password as often as the dialog was prepared.
    void prepare(int password, const QString &deviceName);

signals:
    void sendNewPassword(int nPassword);

public slots:
    void checkPassword();

private slots:
    void sayWhatIsTaken();

private:
    void setTexts(const QString &deviceName);
    void clearFields();
    bool isInputGood() const;

    int m_currentPassword = -1;
    const std::unique_ptr<Ui::SetPasswordDialog> m_ui;
};
