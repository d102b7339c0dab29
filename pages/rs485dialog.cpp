#include "pages/rs485dialog.h"

#include "control/services/language.h"
#include "model/drivefacts.h"
#include "model/parameterdefinitions.h"
#include "pages/fieldguide.h"
#include "pages/integervalidator.h"
#include "pages/messages.h"
#include "pages/pagestyle.h"
#include "ui_rs485dialog.h"

RS485Dialog::RS485Dialog(QWidget *parent)
    : Z7DataWidget(parent)
    , m_ui(std::make_unique<Ui::RS485Dialog>())
{
    m_ui->setupUi(this);
    m_ui->BtnChangeAdress->setIcon(QIcon(QStringLiteral(":/images/Files-Upload-File-icon_24px.png")));
    addParamId(ParameterNumber::BusAddress);
    m_guide = new FieldGuide(this, m_ui->edParam0x52User);
}

RS485Dialog::~RS485Dialog() = default;

void RS485Dialog::initPage()
{
    PageStyle::setTextOrHide(m_ui->lFormDescription,
        texts("DialogDescription",
            "Falls mehrere Antriebe gemeinsam an einer seriellen RS485-Schnittstelle betrieben werden "
            "sollen, muss jeder Antrieb unter einer individuellen Busadresse erreichbar sein. "
            "Hier kann hier die entsprechende Busadresse verändert werden."));
    PageStyle::setTextOrHide(m_ui->lIntro, texts("Introduction", ""));
    m_ui->lDeviceAdress->setText(texts("CurrentAdress", "Aktuelle Adresse:"));
    m_ui->lNewAdress->setText(texts("NewAdress", "Neue Adresse:"));
    m_ui->BtnChangeAdress->setText(texts("ChangeAdress", "Adresse ändern"));
    // The page is shown many times, and one press is one change.
    connect(m_ui->BtnChangeAdress, SIGNAL(clicked()), this, SLOT(updateAdress()), Qt::UniqueConnection);

    m_ui->lParam0x52Device->setEnabled(false);
    m_ui->lParam0x52Device->setAlignment(Qt::AlignRight);
    m_ui->edParam0x52User->setFont(PageStyle::boldFont());
    m_ui->edParam0x52User->setAlignment(Qt::AlignRight);
    delete m_ui->edParam0x52User->validator();
    m_ui->edParam0x52User->setValidator(new IntegerValidator(lowestBusAddress, highestBusAddress, this));
    m_ui->edParam0x52User->setAccessibleName(m_ui->lNewAdress->text());
    m_guide->tell(ParameterNumber::BusAddress,
        definitionText(paramDefinitions()->paramName(ParameterNumber::BusAddress)),
        FieldGuide::Limits {lowestBusAddress, highestBusAddress});
}

void RS485Dialog::clearUserValues()
{
    PageStyle::emptyField(m_ui->edParam0x52User);
}

void RS485Dialog::newDeviceParam(const Z7DeviceParam &param)
{
    if (param.number == ParameterNumber::BusAddress)
        m_ui->lParam0x52Device->setText(QString::number(param.value));
}

void RS485Dialog::updateAdress()
{
    bool isNumber = false;
    const int address = m_ui->edParam0x52User->text().toInt(&isNumber);
    if (isNumber && isBusAddress(address))
        emit sendChangeAdress(address);
    else
        Messages::showError(
            this, texts("InvalidAdressMessage", "Als Adresse ist nur der Bereich von 1...255 zulässig."));
}
