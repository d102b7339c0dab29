#include "shell/aboutdialog.h"

#include "control/services/language.h"
#include "pages/keyboard.h"
#include "pages/pagestyle.h"
#include "shell/maker.h"
#include "ui_aboutdialog.h"

#include <QKeyEvent>

AboutDialog::AboutDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::AboutDialog>())
{
    m_ui->setupUi(this);
    PageStyle::growWithTexts(this);
    PageStyle::paintHeader(m_ui->fLogo);
    // The logo bears the blue of the header.
    PageStyle::paintGround(m_ui->fInnerLogoFrame, Qt::white);
    const QSize logoSize = m_ui->lLogo->pixmap(Qt::ReturnByValue).size();
    m_ui->lLogo->setPixmap(PageStyle::sharpPixmap(":/images/logo.png", logoSize));
    setTexts();
    Keyboard::showFocus(m_ui->BtnOK);
    m_ui->lHyperlink->installEventFilter(this);
    connect(m_ui->BtnOK, SIGNAL(clicked()), SLOT(close()));
}

AboutDialog::~AboutDialog() = default;

bool AboutDialog::eventFilter(QObject *link, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        selectLink(event->type() == QEvent::FocusIn);
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
            return focusNextPrevChild(key == Qt::Key_Tab);
    }
    return QDialog::eventFilter(link, event);
}

/// The return key opens what is selected.
void AboutDialog::selectLink(bool selected)
{
    m_ui->lHyperlink->setSelection(0, selected ? m_linkText.size() : 0);
}

void AboutDialog::showEvent(QShowEvent *event)
{
    m_ui->BtnOK->setFocus();
    QDialog::showEvent(event);
}

void AboutDialog::setTexts()
{
    const QString title = commonText("ApplicationTitle", "Z7ConfigTool");
    setWindowTitle(title);
    m_ui->lApplicationVersion->setText(title + QStringLiteral("\nVersion ") + Maker::programVersion());
    m_ui->lSubTitle->setText(commonText(
        "ApplicationDescriptionText", "Inbetriebnahme und Parametrierung von Z7-Antrieben am RS485-Bus"));
    m_ui->lCopyright->setText(commonText("Copyright", "© 2026 Norvik & Tessel GmbH"));
    m_linkText = commonText("URLHomeTextLink", "Norvik & Tessel im Internet");
    m_ui->lHyperlink->setTextInteractionFlags(Qt::TextBrowserInteraction);
    m_ui->lHyperlink->setOpenExternalLinks(true);
    m_ui->lHyperlink->setText(QStringLiteral("<a href=\"%1\">%2</a>")
                                  .arg(Maker::homePage().toHtmlEscaped(), m_linkText.toHtmlEscaped()));
    m_ui->BtnOK->setText(commonText("OK", "OK"));
}
