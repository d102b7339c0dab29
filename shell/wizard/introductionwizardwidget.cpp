#include "shell/wizard/introductionwizardwidget.h"

#include "ui_introductionwizardwidget.h"

IntroductionWizardWidget::IntroductionWizardWidget(const QString &text, ConnectionsDialog *dialog)
    : IWizardWidget(this, dialog)
    , m_ui(std::make_unique<Ui::IntroductionWizardWidget>())
{
    m_ui->setupUi(this);
    // The text names a button in angle brackets, which is no mark-up.
    m_ui->lIntroText->setTextFormat(Qt::PlainText);
    m_ui->lIntroText->setWordWrap(true);
    m_ui->lIntroText->setText(text);
}

IntroductionWizardWidget::~IntroductionWizardWidget() = default;
