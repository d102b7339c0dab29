// The status bar of the main window and what opens from there.

#include "control/courserecorder.h"
#include "shell/changesdialog.h"
#include "shell/maincontentwidget.h"
#include "shell/mainwindow.h"
#include "shell/statusbar.h"
#include "shell/statustexts.h"

#include <QDesktopServices>
#include <QDir>
#include <QEvent>
#include <QStatusBar>
#include <QUrl>

#include <algorithm>

void MainWindow::createStatusBar()
{
    m_status = new StatusBar(m_controller.get());
    // It lies on the window's own ground, so its text is the one that can be read there.
    QPalette readable = palette();
    readable.setColor(QPalette::WindowText, Qt::black);
    statusBar()->setPalette(readable);
    statusBar()->setSizeGripEnabled(false);
    // What stands there for good is not taken away by the empty tips of menus.
    statusBar()->addPermanentWidget(m_status, 1);
    connect(m_status, SIGNAL(courseWanted()), SLOT(CallCourseWindow()));
    connect(m_status, SIGNAL(changesWanted()), SLOT(showChanges()));
    connect(m_status, SIGNAL(tableWanted()), SLOT(showTable()));
    connect(m_status, SIGNAL(wizardWanted()), SLOT(CallConnectionsDialog()));
    connect(m_status, SIGNAL(folderWanted()), SLOT(showWorkingFolder()));
    const Z7Knowledge *knowledge = &m_controller->knowledge();
    connect(knowledge, SIGNAL(pendingChanged()), SLOT(followChanges()));
    connect(knowledge, SIGNAL(recordChanged()), SLOT(followChanges()));
    connect(knowledge, SIGNAL(operationEnded(OperationReport)), SLOT(markOperation(OperationReport)));
    followChanges();
}

void MainWindow::showChanges()
{
    if (!m_changesDialog) {
        m_changesDialog = new ChangesDialog(this);
        connect(m_changesDialog, SIGNAL(pageWanted(int)), SLOT(showChange(int)));
    }
    m_changesDialog->show();
    m_changesDialog->raise();
    m_changesDialog->activateWindow();
    followChanges();
}

void MainWindow::followChanges()
{
    const Z7Knowledge &knowledge = m_controller->knowledge();
    m_mainContent->setWriteTip(StatusTexts::wouldBeSent(knowledge.pending()));
    if (m_changesDialog && m_changesDialog->isVisible())
        m_changesDialog->setChanges(
            shortDeviceName(m_controller->currentDeviceRecord()), knowledge.pendingChanges());
}

void MainWindow::showChange(int number)
{
    const QVector<PendingChange> changes = m_controller->knowledge().pendingChanges();
    const auto change = std::find_if(changes.begin(), changes.end(),
        [number](const PendingChange &pending) { return pending.number == number; });
    if (change == changes.end())
        return;
    activateWindow();
    m_mainContent->clickPage(change->page, m_controller->currentDeviceRecord().deviceId());
    m_mainContent->focusParameter(number);
}

void MainWindow::showTable()
{
    m_mainContent->clickPage(PageNumber::ParameterTable, m_controller->currentDeviceRecord().deviceId());
}

void MainWindow::showWorkingFolder()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QDir::currentPath()));
}

void MainWindow::markOperation(OperationReport report)
{
    m_courses->mark(
        report.endedAt.toMSecsSinceEpoch(), report.deviceId, StatusTexts::operationName(report.operation));
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    // The user comes back from the folder.
    if (event->type() == QEvent::ActivationChange && m_status && isActiveWindow()
        && m_controller->knowledge().areDefinitionsMissing())
        m_controller->knowledge().lookForDefinitions();
}
