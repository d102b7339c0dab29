#include "tests/shell/everyview.h"

#include "model/device.h"
#include "pages/pagefactory.h"
#include "protocol/telegram.h"
#include "shell/devicecontrolwidget.h"
#include "tests/support/messageboxes.h"
#include "tests/support/workingfolder.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QProgressBar>
#include <QToolTip>

namespace {

const QString version = QStringLiteral("V123");

QByteArray shipped(const QString &file)
{
    return WorkingFolder::read(QStringLiteral(Z7_SOURCE_DIR "/") + file);
}

/// Writes what the language and the drives need before the services are asked for anything.
void furnish(const QString &language)
{
    const QString definitions = QStringLiteral("Z7ParamDef_%1.csv").arg(version);
    WorkingFolder::write(definitions, shipped("samples/" + definitions));
    const QString languageFile = language + QStringLiteral(".z7lang");
    WorkingFolder::write(languageFile, shipped("languages/" + languageFile));
    Z7Services::instance()->options()->setLanguage(language);
}

} // namespace

EveryView::EveryView(const QString &language)
{
    furnish(language);
    m_desk = std::make_unique<ConnectedWindow>(QList<int> {1, 2});
}

bool EveryView::show(const Look &look)
{
    m_look = look;
    if (!QTest::qWaitForWindowActive(m_desk->window.get()))
        return false;
    this->look("start", window());
    if (!showWizard() || !showPages() || !showConflictAndError() || !showDialogs() || !showBox())
        return false;
    showMenus();
    showToolTip();
    return true;
}

void EveryView::look(const QString &name, const QWidget &window) const
{
    QCoreApplication::processEvents();
    m_look(name, window);
}

bool EveryView::showWizard() const
{
    const ConnectionsDialog &wizard = *m_desk->wizard;
    const auto press = [&](const char *button) { return Person::press(wizard, button); };
    const auto see = [&](const char *name) {
        look(QStringLiteral("wizard: ") + name, wizard);
        return true;
    };
    const auto hasScanned = [&] { return ShellTest::child(wizard, "BtnNext").isEnabled(); };
    if (!m_desk->press("BtnConnection") || !see("empty") || !press("BtnScanAllPorts") || !see("introduction")
        || !press("BtnScanPort") || !see("port") || !press("BtnNext") || !Person::waitUntil(hasScanned))
        return false;
    // What is there only while the scan runs has its place all the time.
    const auto *scan = wizard.findChild<QWidget *>("ScanningWizardWidget");
    for (QWidget *part : scan->findChildren<QWidget *>())
        part->show();
    return see("scan") && press("BtnNext") && see("password") && press("BtnNext")
        && Person::waitUntil([&] { return !wizard.findChildren<QCheckBox *>().isEmpty(); }) && see("refused")
        && press("BtnQuickConnect") && see("quick connect") && press("BtnManual") && see("manual")
        && m_desk->logOn(2) && Person::waitUntil([this] { return m_desk->hasConnected(); })
        && see("connected") && press("BtnNext") && m_desk->logOn(1)
        && Person::waitUntil([this] { return m_desk->hasConnected(); }) && press("BtnNext") && see("drives")
        && press("BtnOK");
}

bool EveryView::showPage(int page) const
{
    return Person::waitUntil([&] {
        QTreeWidgetItem *item =
            page == PageNumber::Network ? m_desk->tree().topLevelItem(0) : m_desk->item(page, 1);
        return Person::click(item) && ShellTest::textOf(window(), "LContentTitle") == pageTitle(page);
    });
}

bool EveryView::showPages() const
{
    const QVector<int> pages = QVector<int> {PageNumber::Network, PageNumber::DeviceStatus} + drivePages();
    for (const int page : pages) {
        if (!showPage(page) || (page != PageNumber::Network && !m_desk->waitForAPass()))
            return false;
        look(QStringLiteral("page: ") + pageTitle(page), window());
    }
    return true;
}

bool EveryView::showConflictAndError() const
{
    if (!showPage(PageNumber::CalibrationRotations) || !Person::type(window(), "edValX1_User", "900"))
        return false;
    look("conflict", window());
    Z7Device failed = ShellTest::drive(1);
    failed.setDeviceError(TelegramError::WrongParameterNumber);
    ShellTest::child<DeviceControlWidget>(window(), "DeviceControlWidget").DeviceUpdate(failed);
    look("error", window());
    return true;
}

bool EveryView::showDialogs() const
{
    const auto dialog = [this](const char *name) -> QWidget & { return ShellTest::child(window(), name); };
    window().findChild<QAction *>("actionInfo")->trigger();
    look("about", dialog("AboutDialog"));
    if (!Person::press(dialog("AboutDialog"), "BtnOK") || !m_desk->press("BtnOptions"))
        return false;
    QWidget &options = dialog("optionsdialog");
    auto &languages = ShellTest::child<QComboBox>(options, "cbLanguage");
    languages.addItem("deutsch");
    languages.setCurrentIndex(languages.count() - 1);
    look("options", options);
    languages.showPopup();
    look("list of languages", *languages.view()->window());
    languages.hidePopup();
    if (!Person::press(options, "BtnCancel") || !m_desk->press("BtnResetChanges"))
        return false;
    look("drives to choose from", m_desk->selection());
    if (!Person::press(m_desk->selection(), "BtnAbort") || !m_desk->press("BtnSetPassword")
        || !Person::press(dialog("SetPasswordDialog"), "BtnOK"))
        return false;
    look("wrong password", dialog("SetPasswordDialog"));
    return Person::press(dialog("SetPasswordDialog"), "BtnAbort");
}

bool EveryView::showBox() const
{
    const MessageBoxAnswerer user([this](QMessageBox *box) {
        look("question", *box);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    return m_desk->press("BtnFactoryReset") && user.count() == 1;
}

void EveryView::showMenus() const
{
    const auto menus = window().findChildren<QMenu *>(QRegularExpression("^menu"));
    for (QMenu *menu : menus) {
        menu->popup(window().mapToGlobal(QPoint(10, 10)));
        look("menu " + menu->objectName(), *menu);
        menu->hide();
    }
}

void EveryView::showToolTip() const
{
    QWidget &button = ShellTest::child(window(), "BtnFactoryReset");
    QToolTip::showText(button.mapToGlobal(QPoint(0, 0)), button.toolTip(), &button);
    for (const QWidget *top : QApplication::topLevelWidgets()) {
        if (top->inherits("QTipLabel"))
            look("tool tip", *top);
    }
    QToolTip::hideText();
}
