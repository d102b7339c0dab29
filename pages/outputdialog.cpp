#include "pages/outputdialog.h"

#include "ui_outputdialog.h"

OutputDialog::OutputDialog(QWidget *parent)
    : LabelledDataWidget(texts,
        "Hier können die digitalen Ausgänge des Antriebs verschiedenen Funktionen zugeordnet werden. Unter "
        "Umständen sind manche Konfigurationen nur in bestimmten Betriebsmodi sinnvoll.",
        parent)
    , m_ui(std::make_unique<Ui::OutputDialog>())
{
    m_ui->setupUi(this);
    for (const int number :
        {0x03, 0x04, 0x05, 0x23, 0x24, 0x25, 0x32, 0x33, 0x34, 0x35, 0x4F, 0x50, 0x46, 0x47, 0x48, 0x49})
        addParam(number);
}

OutputDialog::~OutputDialog() = default;
