#include "pages/positioningdialog.h"

#include "pages/operationmodepanel.h"
#include "ui_positioningdialog.h"

PositioningDialog::PositioningDialog(QWidget *parent)
    : LabelledDataWidget(
        texts, "Die Positionierung wird durch die Eingangsbeschaltung A/B = HIGH/HIGH ausgelöst.", parent)
    , m_ui(std::make_unique<Ui::PositioningDialog>())
    , m_modePanel(new OperationModePanel(PositioningMode, this))
{
    m_ui->setupUi(this);
    for (const int number : {0x21, 0x3C, 0x3F, 0x40, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49})
        addParam(number);
    m_ui->modeLayout->addWidget(m_modePanel);
}

PositioningDialog::~PositioningDialog() = default;

void PositioningDialog::initPage()
{
    m_modePanel->setTexts(texts,
        "Zum Abfahren einer Strecke muß der Betriebsmodus 3/x oder x/3 parametrisiert sein. "
        "Um die Strecke in die Gegenrichtung zu fahren, sind die Betriebsmodi 3/6 oder 6/3 auszuwählen. "
        "Falls die Strecke in der Anwendung \"geteached\" werden soll, ist der zu wählende Modus 3/4 "
        "bzw. 4/3.");
    LabelledDataWidget::initPage();
}

void PositioningDialog::newDeviceParam(const Z7DeviceParam &param)
{
    LabelledDataWidget::newDeviceParam(param);
    m_modePanel->showModes(device, modePairText());
}
