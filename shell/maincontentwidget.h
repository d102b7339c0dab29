#pragma once

#include "control/imaincontent.h"

#include <QWidget>

#include <memory>

class QTreeWidgetItem;
class TreeKeys;
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

    /// Everything is expanded and titled anew; the selection is not kept, the scroll position is.
    void rebuildTree(const QList<int> &deviceIds) override;
    void enableDataButtons() override;
    void disableDataButtons() override;
    void setConflictLine(const QString &text) override;

    /// Tool tip of the buttons that write: what they would send.
    void setWriteTip(const QString &text);
    /// The same as a person's click on that item of the tree, and as idle while clicks are taken away.
    void clickPage(int pageNumber, int deviceId);
    /// Puts the focus into the user field of a parameter, if the shown page has one.
    void focusParameter(int number);

public slots:
    /// Shows the item's page for its drive; nothing without an item. `column` makes no difference.
    void MainMenuItemClicked(QTreeWidgetItem *item, int column);
    /// Shows the parameter table of the selected drive and lets the user look for a parameter; nothing
    /// without a drive.
    void findParameter();

protected:
    void changeEvent(QEvent *event) override;
    /// Hears when the tree gets another width.
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    /// Names the drive of the shown page beside the title and makes both bold in the tree; without a page,
    /// what to do first takes its place.
    void nameShownPage();

private:
    class PageItem;

    void setButtonTexts();
    void createKeys();
    void setClickConnected(bool connected);
    QList<QWidget *> pagesInContent() const;
    void takeOutShownPage();
    QWidget *userField(int number) const;
    void nameShownDrive();
    void fitTitleFont();
    void fitTreeColumn();

    bool showsSameDrives(const QList<int> &deviceIds) const;
    void refreshTree(const QList<int> &deviceIds);
    void refillTree(const QList<int> &deviceIds);
    /// The items at the top of the tree, with all those below them; the caller owns them.
    QList<QTreeWidgetItem *> makeItems(const QList<int> &deviceIds) const;
    /// What the items of so many drives lie below; null if the tree has no item for the network yet.
    QTreeWidgetItem *parentOfDrives(int drives) const;
    /// Null if the item is none of this tree's pages.
    static PageItem *pageItem(QTreeWidgetItem *item);
    void refreshNetwork(PageItem *network) const;
    void refreshDrive(PageItem *drive, const QVector<QString> &titles) const;
    void markWhetherShown(PageItem *item) const;

    static constexpr int noPage = -1;

    bool m_rebuilding = false;
    bool m_clickConnected = false;
    TreeKeys *m_treeKeys = nullptr;
    int m_shownPage = noPage; ///< the page that was shown by the last click, as long as it is
    Z7MainController *const m_controller;
    const std::unique_ptr<Ui::MainContentWidget> m_ui;
};
