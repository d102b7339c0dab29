#pragma once

#include "model/device.h"

#include <QList>
#include <QString>

struct PortState;
class ConnectionsDialog;
class IDeviceDataCallback;
class QTimer;
class QWidget;

/// One page of a way to connect drives. The list of drives it works on moves from page to page.
/// Pages do no bus work themselves: they ask the controller, through the dialog. Main thread only.
class IWizardWidget
{
public:
    virtual ~IWizardWidget() = default;

    /// The page has been put into the frame.
    virtual void enterPage();
    /// The user wants to go on; true lets the wizard do so.
    virtual bool leavePage();
    /// The drives that the page has ready to be taken over.
    virtual QList<Z7Device> selectedDevices() = 0;

    /// Enables or disables the dialog's buttons; with `okOnly` the OK button alone.
    void setNavigationEnabled(bool enabled, bool okOnly);

    const QList<Z7Device> &devices() const { return m_devices; }
    void setDevices(const QList<Z7Device> &devices) { m_devices = devices; }
    QWidget *widget() const { return m_widget; }
    /// Where the focus goes when the page is shown; null if the page has no field.
    QWidget *firstField() const { return m_firstField; }

protected:
    /// Neither is owned: `widget` is the page itself, and the dialog owns the page.
    IWizardWidget(QWidget *widget, ConnectionsDialog *dialog);

    /// Makes a timer the pause that the bus gets before the page asks for the next port or drive, with a slot
    /// of the page.
    void preparePause(QTimer *pause, const char *slot);
    /// Lets a slot of the page hear when there is something new about a port.
    void watchPorts(const char *slot);
    /// What is known of a port.
    PortState portState(const QString &portName) const;
    /// The page wants no more news of the transaction that it has asked for.
    void stopListening(IDeviceDataCallback *page);

    /// True if the field has the dialog's focus, also while another window is in front.
    bool hasDialogsFocus(const QWidget *field) const;

    QList<Z7Device> m_devices;
    QWidget *const m_widget;
    ConnectionsDialog *const m_dialog;
    QWidget *m_firstField = nullptr;
};
