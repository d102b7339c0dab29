#include "pages/accelerationsdialog.h"

#include "ui_accelerationsdialog.h"

AccelerationsDialog::AccelerationsDialog(QWidget *parent)
    : LabelledDataWidget(
        texts, "Hier werden die Beschleunigungs- und Bremsrampen in beide Drehrichtungen vorgegeben.", parent)
    , m_ui(std::make_unique<Ui::AccelerationsDialog>())
{
    m_ui->setupUi(this);
    for (const int number : {0x1A, 0x1B, 0x1C, 0x1D})
        addParam(number);
    tellNamesInFields();
}

AccelerationsDialog::~AccelerationsDialog() = default;
