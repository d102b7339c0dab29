#include "pages/setpassworddialog.h"

#include "control/services/language.h"
#include "pages/fieldnotice.h"
#include "pages/fieldtexts.h"
#include "pages/integervalidator.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "ui_setpassworddialog.h"

namespace {

constexpr TextSection passwordText("DialogSetPassword");

/// A lone sign counts as 0.
int numberIn(const QLineEdit *field)
{
    return field->text().toInt();
}

} // namespace

SetPasswordDialog::SetPasswordDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::SetPasswordDialog>())
{
    m_ui->setupUi(this);
    PageStyle::growWithTexts(this);
    PageStyle::paintGround(this, PageStyle::lightGrey());
    PageStyle::paintHeader(m_ui->fTop);
    PageStyle::paintText(m_ui->lError, Qt::red);
    m_ui->lError->setFont(PageStyle::loudFont());
    // It takes two lines, and the fields keep their places when it appears.
    const QFontMetrics metrics(PageStyle::loudFont(), m_ui->lError);
    m_ui->lError->setMinimumHeight(metrics.size(0, QStringLiteral("A\nA")).height());
    PageStyle::keepPlaceWhenHidden(m_ui->lError);
    m_ui->BtnAbort->setIcon(QIcon(QStringLiteral(":/images/cancel-icon_16px.png")));
    m_ui->BtnOK->setIcon(QIcon(QStringLiteral(":/images/tick-icon_16px.png")));
    Keyboard::showFocus(m_ui->BtnOK);
}

SetPasswordDialog::~SetPasswordDialog() = default;

void SetPasswordDialog::prepare(int password, const QString &deviceName)
{
    m_currentPassword = password;
    setTexts(deviceName);
    m_ui->lError->clear();
    m_ui->lError->hide();
    clearFields();
    for (QLineEdit *field : {m_ui->edOldPassword, m_ui->edNewPassword_1, m_ui->edNewPassword_2}) {
        delete field->validator();
        field->setValidator(new IntegerValidator(this));
        field->setToolTip(FieldTexts::whatIsTaken(field->validator()));
        field->setAccessibleDescription(field->toolTip());
        connect(field, SIGNAL(inputRejected()), this, SLOT(sayWhatIsTaken()), Qt::UniqueConnection);
    }
    m_ui->edOldPassword->setFocus();
    connect(m_ui->BtnOK, SIGNAL(clicked()), SLOT(checkPassword()));
    connect(m_ui->BtnAbort, SIGNAL(clicked()), SLOT(close()));
}

void SetPasswordDialog::sayWhatIsTaken()
{
    FieldNotice::sayWhatIsTaken(this, qobject_cast<QLineEdit *>(sender()));
}

void SetPasswordDialog::setTexts(const QString &deviceName)
{
    setWindowTitle(passwordText("Title", "Passwort ändern"));
    m_ui->LIntro->setText(passwordText("Intro", "Neues Passwort setzen für Motor %1").arg(deviceName));
    m_ui->BtnOK->setText(commonText("OK", "OK"));
    m_ui->BtnAbort->setText(commonText("Abort", "Abbrechen"));
    m_ui->lOldPassword->setText(passwordText("Password", "Passwort"));
    m_ui->lNewPassword_1->setText(passwordText("NewPassword", "Neues Passwort"));
    m_ui->lNewPassword_2->setText(passwordText("NewPasswordRepetition", "Passwort - Wiederholung"));
    for (QLabel *label : {m_ui->lOldPassword, m_ui->lNewPassword_1, m_ui->lNewPassword_2})
        label->buddy()->setAccessibleName(label->text());
}

void SetPasswordDialog::clearFields()
{
    for (QLineEdit *field : {m_ui->edOldPassword, m_ui->edNewPassword_1, m_ui->edNewPassword_2})
        PageStyle::emptyField(field);
}

bool SetPasswordDialog::isInputGood() const
{
    return !m_ui->edOldPassword->text().isEmpty() && numberIn(m_ui->edOldPassword) == m_currentPassword
        && !m_ui->edNewPassword_1->text().isEmpty() && !m_ui->edNewPassword_2->text().isEmpty()
        && numberIn(m_ui->edNewPassword_1) == numberIn(m_ui->edNewPassword_2);
}

void SetPasswordDialog::checkPassword()
{
    if (isInputGood()) {
        emit sendNewPassword(numberIn(m_ui->edNewPassword_1));
        close();
        return;
    }
    clearFields();
    m_ui->lError->setText(
        passwordText("ErrorWrongPassword", "Falsches Passwort, bitte wiederholen Sie Ihre Eingabe."));
    m_ui->lError->show();
    m_ui->edOldPassword->setFocus();
}
