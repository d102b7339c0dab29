#include "shell/statusbar.h"

#include "control/maincontroller.h"
#include "control/services/language.h"
#include "shell/statustexts.h"

StatusBar::StatusBar(Z7MainController *controller, QWidget *parent)
    : StatusFieldRow(parent)
    , m_controller(controller)
    , m_fresh(add("StatusFresh", statusBarText("TitleFresh", "Alter der Werte"), StatusField::Opens))
    , m_lastOperation(add("StatusLastOperation", statusBarText("TitleLastOperation", "Letzter Vorgang"),
          StatusField::DoesNothing))
    , m_neverRun(
          add("StatusNeverRun", statusBarText("TitleNeverRun", "Nicht Ausgeführtes"), StatusField::Dismisses))
    , m_neverRead(
          add("StatusNeverRead", statusBarText("TitleNeverRead", "Nie gelesene Werte"), StatusField::Opens))
    , m_pending(add("StatusPending", statusBarText("TitlePending", "Änderungen"), StatusField::Opens))
    , m_undo(add("StatusUndo", statusBarText("TitleUndo", "Verworfene Änderungen"), StatusField::Acts))
    , m_port(add("StatusPort", statusBarText("TitlePort", "Anschluss"), StatusField::Opens))
    , m_drives(add("StatusDrives", statusBarText("TitleDrives", "Antriebe"), StatusField::DoesNothing))
    , m_definitions(add("StatusDefinitions", statusBarText("TitleDefinitions", "Parameter-Definitionen"),
          StatusField::Opens))
{
    setObjectName(QStringLiteral("StatusFields"));
    setStretched(m_lastOperation);
    followKnowledge();
    followClicks();
    sayFresh();
    sayLastOperation();
    sayNeverRun();
    sayNeverRead();
    sayPending();
    sayPort();
    sayDrives();
}

void StatusBar::followKnowledge()
{
    const Z7Knowledge *knowledge = &m_controller->knowledge();
    connect(knowledge, SIGNAL(freshChanged()), SLOT(sayFresh()));
    connect(knowledge, SIGNAL(lastOperationChanged()), SLOT(sayLastOperation()));
    connect(knowledge, SIGNAL(notRunChanged()), SLOT(sayNeverRun()));
    connect(knowledge, SIGNAL(neverReadChanged()), SLOT(sayNeverRead()));
    connect(knowledge, SIGNAL(pendingChanged()), SLOT(sayPending()));
    connect(knowledge, SIGNAL(drivesChanged()), SLOT(sayDrives()));
    connect(&m_controller->portWatch(), SIGNAL(changed()), SLOT(sayPort()));
}

void StatusBar::followClicks()
{
    connect(m_fresh, SIGNAL(clicked()), SIGNAL(courseWanted()));
    connect(m_neverRun, SIGNAL(clicked()), SLOT(dismissNeverRun()));
    connect(m_neverRead, SIGNAL(clicked()), SIGNAL(tableWanted()));
    connect(m_pending, SIGNAL(clicked()), SIGNAL(changesWanted()));
    connect(m_undo, SIGNAL(clicked()), SLOT(undo()));
    connect(m_port, SIGNAL(clicked()), SIGNAL(wizardWanted()));
    connect(m_definitions, SIGNAL(clicked()), SIGNAL(folderWanted()));
}

void StatusBar::sayFresh()
{
    m_fresh->say(StatusTexts::fresh(m_controller->knowledge().fresh()));
}

void StatusBar::sayLastOperation()
{
    m_lastOperation->say(StatusTexts::lastOperation(m_controller->knowledge().lastOperation()));
}

void StatusBar::sayNeverRun()
{
    m_neverRun->say(StatusTexts::neverRun(
        m_controller->knowledge().notRun(), m_controller->currentDeviceRecord().deviceId()));
}

void StatusBar::sayNeverRead()
{
    m_neverRead->say(StatusTexts::neverRead(m_controller->knowledge().neverRead()));
}

void StatusBar::sayPending()
{
    const Z7Knowledge &knowledge = m_controller->knowledge();
    m_pending->say(StatusTexts::pending(knowledge.pending()));
    m_undo->say(StatusTexts::undo(knowledge.canRestoreChanges()));
    // Another drive may be selected.
    sayNeverRun();
}

void StatusBar::sayPort()
{
    m_port->say(StatusTexts::ports(m_controller->portWatch().troubles()));
}

void StatusBar::sayDrives()
{
    const Z7Knowledge &knowledge = m_controller->knowledge();
    m_drives->say(StatusTexts::hiddenDrives(knowledge.hiddenDrives()));
    m_definitions->say(StatusTexts::missingDefinitions(knowledge.areDefinitionsMissing()));
}

void StatusBar::dismissNeverRun()
{
    Z7Knowledge &knowledge = m_controller->knowledge();
    for (int i = knowledge.notRun().size() - 1; i >= 0; --i)
        knowledge.dismissNotRun(i);
}

void StatusBar::undo()
{
    m_controller->restoreChanges(m_controller->currentDeviceRecord().deviceId());
}
