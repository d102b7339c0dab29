#pragma once

#include "model/device.h"
#include "shell/wizard/iwizardwidget.h"

#include <QDialog>
#include <QPointer>

#include <memory>
#include <vector>

class QTreeWidgetItem;
class Z7MainController;

namespace Ui {
class ConnectionsDialog;
}

/// Where the list of connected drives is made: a tree of the drives, and four ways to add more, each a short
/// wizard in a frame of the same dialog. OK hands the final list to the controller.
class ConnectionsDialog : public QDialog
{
    Q_OBJECT

public:
    ConnectionsDialog(Z7MainController *controller, QWidget *parent);
    ~ConnectionsDialog() override;

    /// Lists the drives that are connected now and takes away what is left of an earlier wizard.
    void fill(const QList<Z7Device> &devices);

    /// With `okOnly` clear: enables or disables all buttons but OK. With it set: enables OK if a drive is
    /// listed, and otherwise as `enabled` says.
    void setNavigationEnabled(bool enabled, bool okOnly);

    /// Whether the return key presses the button that goes on, from wherever no other button has the focus.
    void setReturnGoesOn(bool goesOn);
    /// Gives the focus to the button that goes on, or to the one that goes back.
    void goToButton(bool goesOn);

    /// Null once the controller has gone, which it does before this dialog.
    Z7MainController *controller() const;

public slots:
    /// Closes the dialog, unless the buttons are disabled by a running scan.
    void reject() override;
    /// One page on, if the current one lets go; behind the last, its drives join the list. Nothing without a
    /// wizard.
    void nextWizardPage();
    /// One page back; nothing on the first page and without a wizard.
    void previousWizardPage();
    /// Hands the listed drives, and those ticked on the current page, to the controller, and closes.
    void closeDialog();
    void removeSelectedConnections();
    void initScanPortWizard();
    void initConnectDeviceManualWizard();
    void initQuickConnectWizard();
    void initAllPortsWizard();

protected:
    /// A return key that is held presses a button once.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    using Pages = std::vector<std::unique_ptr<IWizardWidget>>;

    /// The form's size, or what a larger font needs.
    QSize sizeForFont() const;
    void setTexts();
    void connectButtons();
    /// Starts a way that scans ports, as its first page says.
    void startScanWizard(std::unique_ptr<IWizardWidget> firstPage);
    void startWizard(Pages pages);
    bool hasCurrentPage() const;
    IWizardWidget &currentPage() const { return *m_pages.at(m_pageIndex); }
    void enter(IWizardWidget &page);
    void putInFrame(IWizardWidget &page);
    void takeOutOfFrame();
    void endWizard();
    void hideWizardButtons();
    void addOrUpdateRow(const Z7Device &device);
    void addRow(const Z7Device &device);
    QTreeWidgetItem *rowOf(int deviceId) const;
    QList<Z7Device> listedDevices() const;

    QPointer<Z7MainController> m_controller;
    Pages m_pages;
    size_t m_pageIndex = 0;
    bool m_returnGoesOn = true;
    const std::unique_ptr<Ui::ConnectionsDialog> m_ui;
};
