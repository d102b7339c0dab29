#include "shell/topmenuwidget.h"

#include "control/services/language.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "shell/mainwindow.h"
#include "ui_topmenuwidget.h"

namespace {

constexpr QSize logoSize(160, 32);

void describe(QToolButton *button, const char *key, const char *defaultText)
{
    const QString text = commonText(key, defaultText);
    button->setToolTip(text);
    button->setAccessibleName(text);
}

} // namespace

TopMenuWidget::TopMenuWidget(MainWindow *window)
    : QWidget(window)
    , m_ui(std::make_unique<Ui::TopMenuWidget>())
{
    m_ui->setupUi(this);
    setToolTips();
    m_ui->LLogo->setPixmap(PageStyle::sharpPixmap(":/images/logo.png", logoSize));
    m_ui->LUser->setText(QString());
    m_ui->line->hide();
    for (QToolButton *button :
        {m_ui->BtnOpen, m_ui->BtnSaveAs, m_ui->BtnFactoryReset, m_ui->BtnSetPassword, m_ui->BtnResetChanges})
        button->setEnabled(false);
    connect(m_ui->BtnConnection, SIGNAL(clicked()), window, SLOT(CallConnectionsDialog()));
    connect(m_ui->BtnOptions, SIGNAL(clicked()), window, SLOT(CallOptionsDialog()));
    connect(m_ui->BtnPdfHelp, SIGNAL(clicked()), window, SLOT(CallPdfHelpFile()));
    connect(m_ui->BtnWeb, SIGNAL(clicked()), window, SLOT(CallWebbrowserHomepage()));
    Keyboard::pressByKey(this, Qt::Key_F1, m_ui->BtnPdfHelp);
}

TopMenuWidget::~TopMenuWidget() = default;

void TopMenuWidget::setToolTips()
{
    describe(m_ui->BtnOpen, "Open", "Öffnen...");
    describe(m_ui->BtnSaveAs, "SaveAs", "Speichern unter...");
    describe(m_ui->BtnConnection, "Connect", "Verbindungen...");
    describe(m_ui->BtnOptions, "Options", "Optionen...");
    describe(m_ui->BtnFactoryReset, "FactoryReset", "Auf Werkseinstellungen zurücksetzen");
    describe(m_ui->BtnSetPassword, "SetPassword", "Neues Passwort setzen");
    describe(m_ui->BtnResetChanges, "ResetChanges", "Änderungen verwerfen");
    describe(m_ui->BtnPdfHelp, "Help", "Hilfe");
    describe(m_ui->BtnWeb, "NorvikTesselHome", "Norvik & Tessel");
}

void TopMenuWidget::enableDeviceActions(MainWindow *window)
{
    for (QToolButton *button :
        {m_ui->BtnOpen, m_ui->BtnSaveAs, m_ui->BtnFactoryReset, m_ui->BtnResetChanges, m_ui->BtnSetPassword})
        button->setEnabled(true);
    connect(m_ui->BtnOpen, SIGNAL(clicked()), window, SLOT(OpenFile()), Qt::UniqueConnection);
    connect(m_ui->BtnSaveAs, SIGNAL(clicked()), window, SLOT(SaveFileAs()), Qt::UniqueConnection);
    connect(m_ui->BtnFactoryReset, SIGNAL(clicked()), window, SLOT(CallFactoryReset()), Qt::UniqueConnection);
    connect(
        m_ui->BtnSetPassword, SIGNAL(clicked()), window, SLOT(CallChangePassword()), Qt::UniqueConnection);
    connect(m_ui->BtnResetChanges, SIGNAL(clicked()), window, SLOT(CallResetChanges()));
}

void TopMenuWidget::disableDeviceActions(MainWindow *window)
{
    for (QToolButton *button : {m_ui->BtnOpen, m_ui->BtnSaveAs, m_ui->BtnFactoryReset, m_ui->BtnSetPassword})
        button->setEnabled(false);
    disconnect(m_ui->BtnOpen, SIGNAL(clicked()), window, SLOT(OpenFile()));
    disconnect(m_ui->BtnSaveAs, SIGNAL(clicked()), window, SLOT(SaveFileAs()));
    disconnect(m_ui->BtnFactoryReset, SIGNAL(clicked()), window, SLOT(CallFactoryReset()));
    disconnect(m_ui->BtnSetPassword, SIGNAL(clicked()), window, SLOT(CallChangePassword()));
}
