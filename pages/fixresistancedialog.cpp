#include "pages/fixresistancedialog.h"

#include "ui_fixresistancedialog.h"

FixResistanceDialog::FixResistanceDialog(QWidget *parent)
    : LabelledDataWidget(texts,
        "Falls beim Bremsen des Antriebs Leistung zurückgespeist wird, kann der Antrieb das DC-Netz gegen "
        "Überspannung schützen. Die entsprechenden Reaktionsschwellen können hier eingestellt werden.",
        parent)
    , m_ui(std::make_unique<Ui::FixResistanceDialog>())
{
    m_ui->setupUi(this);
    for (const int number : {0x4D, 0x4E})
        addParam(number);
}

FixResistanceDialog::~FixResistanceDialog() = default;
