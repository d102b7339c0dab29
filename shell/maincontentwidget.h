#pragma once

#include "control/imaincontent.h"

#include <QWidget>

#include <memory>

class QTreeWidgetItem;
class Z7MainController;

namespace Ui {
class MainContentWidget;
}

/// The middle band of the window: on the left the tree of the drives and their pages, on the right the page
/// that was clicked, with the four buttons that move data between the screen and the drive.
class MainContentWidget : public QWidget, public IMainContent
{
    Q_OBJECT

public:
    explicit MainContentWidget(Z7MainController *controller, QWidget *parent = nullptr);
    ~MainContentWidget() override;

    /// The selection is not kept; the scroll position is.
    void rebuildTree(const QList<int> &deviceIds) override;
    void enableDataButtons() override;
    void disableDataButtons() override;
    void setConflictLine(const QString &text) override;

public slots:
    /// Shows the item's page for its drive; nothing without an item. `column` makes no difference.
    void MainMenuItemClicked(QTreeWidgetItem *item, int column);

private:
    void setButtonTexts();
    void setClickConnected(bool connected);
    void takeOutShownPage();

    bool showsSameDrives(const QList<int> &deviceIds) const;
    void refillTree(const QList<int> &deviceIds);
    void addDrive(int deviceId, QTreeWidgetItem *network);
    QTreeWidgetItem *makeItem(const QString &text, int pageNumber, int deviceId) const;
    void refreshIcons(QTreeWidgetItem *parent);
    void refreshIcon(QTreeWidgetItem *item) const;

    bool m_rebuilding = false;
    Z7MainController *const m_controller;
    const std::unique_ptr<Ui::MainContentWidget> m_ui;
};
