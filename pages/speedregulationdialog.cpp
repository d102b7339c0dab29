#include "pages/speedregulationdialog.h"

#include "ui_speedregulationdialog.h"

SpeedRegulationDialog::SpeedRegulationDialog(QWidget *parent)
    : LabelledDataWidget(texts, "", parent)
    , m_ui(std::make_unique<Ui::SpeedRegulationDialog>())
{
    m_ui->setupUi(this);
    addParam(0x1E);
    addParam(0x1F);
    // These two stand on widgets that bear other numbers.
    addParam(0x21, QStringLiteral("Param0x20"));
    addParam(0x3C, QStringLiteral("Param0x22"));
    tellNamesInFields();
}

SpeedRegulationDialog::~SpeedRegulationDialog() = default;
