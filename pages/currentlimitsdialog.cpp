#include "pages/currentlimitsdialog.h"

#include "ui_currentlimitsdialog.h"

CurrentLimitsDialog::CurrentLimitsDialog(QWidget *parent)
    : LabelledDataWidget(texts,
        "Hier können die Stromgrenzen (und somit die Drehmomentgrenzen) in den einzelnen Quadranten "
        "prametriert werden. Zusätzlich können über die Reversierschwelle noch die generatorischen "
        "Eigenschaften des Antriebs eingeschränkt werden.",
        parent)
    , m_ui(std::make_unique<Ui::CurrentLimitsDialog>())
{
    m_ui->setupUi(this);
    for (const int number : {0x36, 0x38, 0x39, 0x3A, 0x3B})
        addParam(number);
    // The reversing threshold acts in two quadrants of the picture.
    addSecondField(0x36, 0x9999);
    tellNamesInFields();
}

CurrentLimitsDialog::~CurrentLimitsDialog() = default;
