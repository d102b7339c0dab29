#pragma once

#include "control/services/language.h"
#include "model/device.h"
#include "pages/idevicedatacallback.h"

#include <QList>
#include <QString>
#include <QWidget>

class Z7ParamDefinitions;

/// Base of every page of the content area. It keeps a copy of the selected drive's record, hands the
/// parameters that the page is about to the page, and reports the user's changes as signals.
///
/// A page never talks to the bus and never writes to the device list. All pages are created at start, live to
/// the end and belong to the controller; a page that is not shown has no parent. Main thread only.
///
/// The class of a page that stands in the table of pages names the section of its texts as `texts`.
class Z7DataWidget : public QWidget, public IDeviceDataCallback
{
    Q_OBJECT

public:
    explicit Z7DataWidget(QWidget *parent = nullptr);

    /// Empties every user field without reporting it.
    virtual void clearUserValues() = 0;
    /// Sets all texts and prepares the fields; runs each time that the page is shown for a drive.
    virtual void initPage() = 0;
    /// Takes a new record and hands out its parameters in ascending order.
    void DeviceUpdate(const Z7Device &d) override;
    void transactionStarted(int maxProgress, const Z7Device &device) override;
    void transactionTerminated() override;
    void transactionProgress() override;
    /// All parameters of one record have been handed out.
    virtual void deviceUpdateFinished() = 0;
    /// Shows a value that the drive reported.
    virtual void newDeviceParam(const Z7DeviceParam &param) = 0;
    /// Shows a value that the user had already changed, without reporting it again.
    virtual void newUserParam(const Z7DeviceParam &param) = 0;

    /// Adds a parameter to those of the page; a number that is there already stays where it is.
    void addParamId(int number);
    /// True if the page is about this parameter.
    bool hasParam(int number) const;
    /// Hands those of the user's changes to newUserParam that the page is about, in ascending order.
    void applyUserParams(const Z7DeviceParamSet &params);

    /// Makes the fields show these pending changes of the shown drive and no others, without reporting them:
    /// what another drive's file or discard has left in the fields goes.
    virtual void showUserValues(const Z7DeviceParamSet &own);

    const QList<int> &paramIds() const { return m_paramIds; }
    /// Definitions of the drive's software version; owned by the services.
    Z7ParamDefinitions *paramDefinitions() const;

    bool allParameters = false; ///< the page is about every parameter of the drive
    bool multiDevice = false; ///< the page is given all drives at each showing
    Z7Device device; ///< the record last delivered
    QString softwareVersion; ///< selects the definitions; written by the controller before each initPage

signals:
    void parameterModified(Z7DeviceParam param);
    void parameterDeleted(Z7DeviceParam param);
    void stopAllDeviceCommunication();
    void sendBootloaderInitCommand();
    void sendChangeAdress(int NewAdress);
    /// The external firmware programmer has the bus, from the accepted bootloader command until it is not
    /// running any more; nothing else may go on it meanwhile.
    void programmerUsesBus(bool uses);

public slots:
    /// All workers have stopped. Every page hears it.
    virtual void AllDeviceCommunicationStopped();

protected:
    /// What the definitions say of one value of a parameter, in the user's language; empty if they say
    /// nothing.
    QString optionText(int number, int value) const;
    /// The two operating modes of `device` in numbers and words, "3/6 (Positionierung/Teach-Funktion)".
    QString modePairText() const;

    /// Reports what the user has typed for a parameter: an empty text withdraws the change, a number makes
    /// it, and anything else leaves what was last accepted in force.
    void reportUserText(int number, const QString &text);

private:
    QList<int> m_paramIds; ///< in order of registration
};
