#pragma once

#include "control/services/language.h"
#include "model/drivefacts.h"

#include <QFrame>

#include <memory>

struct Z7Device;

namespace Ui {
class OperationModePanel;
}

/// Tells which operating modes the drive is in, and warns as long as neither of them is the one in which the
/// parameters of the page have an effect. Main thread only.
class OperationModePanel : public QFrame
{
    Q_OBJECT

public:
    /// `effectiveMode` is the mode that one of the two inputs must have for the page's parameters to act.
    OperationModePanel(OperationMode effectiveMode, QWidget *parent);
    ~OperationModePanel() override;

    /// Sets the texts from those of the page and forgets the modes shown last.
    /// `modeInfo` is the German text that says which modes count.
    void setTexts(TextSection texts, const char *modeInfo);
    /// Shows the modes of a drive; `modePair` has them in numbers and words.
    void showModes(const Z7Device &device, const QString &modePair);

private:
    const std::unique_ptr<Ui::OperationModePanel> m_ui;
    const OperationMode m_effectiveMode;
};
