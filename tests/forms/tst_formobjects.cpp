// The objects of the window's forms by name, and what holds for every form.

#include "tests/forms/formfile.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

struct Objects
{
    const char *form;
    const char *kind;
    const char *names; ///< separated by blanks
};

/// What the window, its bands, the wizard and the dialogs find by name. A dialog that gets its content gets
/// its lines here. The pages have a table of their own.
const QVector<Objects> table {
    {"mainwindow", "QMainWindow", "MainWindow"},
    {"mainwindow", "QWidget", "centralWidget MainWidget"},
    {"mainwindow", "QVBoxLayout", "verticalLayout_4"},
    {"mainwindow", "QMenuBar", "menuBar"},
    {"mainwindow", "QMenu", "menuDatei menuOptions menuHilfe"},
    {"mainwindow", "QAction",
        "actionBeenden actionOpen actionSaveAs actionInfo actionHilfe actionNeu actionSave "
        "actionNorvik_Tessel_Home actionConnect actionOptions actionMode_ndern actionTeamviewer "
        "actionKommunikationsprotokoll"},

    {"topmenuwidget", "QWidget", "TopMenuWidget"},
    {"topmenuwidget", "QToolButton",
        "BtnOpen BtnSaveAs BtnConnection BtnOptions BtnFactoryReset BtnSetPassword BtnResetChanges "
        "BtnPdfHelp BtnWeb"},
    {"topmenuwidget", "QFrame", "line_3 line_4 line_2 line line_5"},
    {"topmenuwidget", "QLabel", "LUser LLogo"},

    {"maincontentwidget", "QWidget", "MainContentWidget DataWidgetContent"},
    {"maincontentwidget", "QTreeWidget", "MainMenuTree"},
    {"maincontentwidget", "QGroupBox", "GbDataContent"},
    {"maincontentwidget", "QLabel", "LContentTitle LContentDrive LParamWarning LStartHint"},
    {"maincontentwidget", "QScrollArea", "MainContentScrollArea"},
    {"maincontentwidget", "QVBoxLayout", "DataLayout"},
    {"maincontentwidget", "QFrame", "DeviceCommButtonFrame"},
    {"maincontentwidget", "QPushButton", "BtnStore BtnWriteAndStore BtnUpload BtnDownload"},

    {"devicecontrolwidget", "QWidget", "DeviceControlWidget"},
    {"devicecontrolwidget", "QGroupBox", "GbDeviceControl"},
    {"devicecontrolwidget", "QFrame", "frame frame_2"},
    {"devicecontrolwidget", "QProgressBar", "PgBarComm"},
    {"devicecontrolwidget", "QLabel",
        "LPort LCommStatus LLastMessage LDevice LDeviceStatus lCurrentText lCurrent lPowerText LPower"},

    {"connectionsdialog", "QDialog", "ConnectionsDialog"},
    {"connectionsdialog", "QFrame",
        "TopFrame MainInnerFrame WizardWidget WizardButtonsFrame ConnectionsButtonFrame BottomFrame"},
    {"connectionsdialog", "QLabel", "LIntroduction"},
    {"connectionsdialog", "QTreeWidget", "LbConnectedDevices"},
    {"connectionsdialog", "QGroupBox", "GbAddConnection"},
    {"connectionsdialog", "QWidget", "AddDeviceWidget"},
    {"connectionsdialog", "QVBoxLayout", "WizardLayout"},
    {"connectionsdialog", "QPushButton",
        "BtnPrevious BtnNext BtnRemoveConnection BtnQuickConnect BtnManual BtnScanPort BtnScanAllPorts "
        "BtnCancel BtnOK"},

    {"introductionwizardwidget", "QWidget", "IntroductionWizardWidget"},
    {"introductionwizardwidget", "QLabel", "lIntroText"},
    {"scanportwizardwidget", "QWidget", "ScanPortWizardWidget"},
    {"scanportwizardwidget", "QLabel", "LPort LAdress LPassword"},
    {"scanportwizardwidget", "QPushButton", "BtnScanPorts"},
    {"scanportwizardwidget", "QComboBox", "cbPorts"},
    {"scanportwizardwidget", "QLineEdit", "EdAdress EdPassword"},
    {"setpasswordwizardwidget", "QWidget", "SetPasswordWizardWidget"},
    {"setpasswordwizardwidget", "QLabel", "lIntro LPassword"},
    {"setpasswordwizardwidget", "QLineEdit", "EdPassword"},
    {"scanningwizardwidget", "QWidget", "ScanningWizardWidget scrollAreaWidgetContents"},
    {"scanningwizardwidget", "QScrollArea", "scrollArea"},
    {"scanningwizardwidget", "QVBoxLayout", "verticalLayout_3"},
    {"confirmconnectionwizardwidget", "QWidget", "ConfirmConnectionWizardWidget scrollAreaWidgetContents"},
    {"confirmconnectionwizardwidget", "QScrollArea", "scrollArea"},
    {"confirmconnectionwizardwidget", "QVBoxLayout", "verticalLayout_3"},
    {"detectingportswidget", "QWidget", "DetectingPortsWidget"},
    {"detectingportswidget", "QLabel", "lDetectingInfo"},

    {"deviceselectiondialog", "QDialog", "DeviceSelectionDialog"},
    {"deviceselectiondialog", "QFrame", "mainFrame fTop fContent fBottom"},
    {"deviceselectiondialog", "QLabel", "LIntro"},
    {"deviceselectiondialog", "QListWidget", "lstDevices"},
    {"deviceselectiondialog", "QPushButton", "BtnAbort BtnOK"},
    {"optionsdialog", "QDialog", "optionsdialog"},
    {"optionsdialog", "QFrame", "mainFrame fContent fProperties fBottom"},
    {"optionsdialog", "QGroupBox", "gbCommon gbCommunication"},
    {"optionsdialog", "QLabel",
        "lLanguage lTimeout lTimeoutPolling lPreselectVendorId lPollingCycle lRestartRequired"},
    {"optionsdialog", "QComboBox", "cbLanguage"},
    {"optionsdialog", "QLineEdit", "edTimeout edTimeoutScanning edPreselectVendorID edPollingCycle"},
    {"optionsdialog", "QPushButton", "BtnCancel BtnOK"},
    {"aboutdialog", "QDialog", "AboutDialog"},
    {"aboutdialog", "QFrame", "fLogo fInnerLogoFrame frame"},
    {"aboutdialog", "QLabel", "lLogo lApplicationVersion lSubTitle lCopyright lHyperlink"},
    {"aboutdialog", "QPushButton", "BtnOK"},
    {"setpassworddialog", "QDialog", "SetPasswordDialog"},
    {"setpassworddialog", "QFrame", "mainFrame fTop fContent fBottom"},
    {"setpassworddialog", "QLabel", "LIntro lError lOldPassword lNewPassword_1 lNewPassword_2"},
    {"setpassworddialog", "QLineEdit", "edOldPassword edNewPassword_1 edNewPassword_2"},
    {"setpassworddialog", "QPushButton", "BtnAbort BtnOK"},
};

/// The forms of the pages, which tst_pageobjects looks at.
const QStringList pageForms {"accelerationsdialog", "calibrationcurvepage", "currentlimitsdialog",
    "devicestatusdialog", "firmwareuploaddialog", "fixedresolutionsdialog", "fixresistancedialog",
    "networkdialog", "operationmodepanel", "operationsmodedialog", "outputdialog", "parametertabledialog",
    "positioningdialog", "remotecontroldialog", "rs485dialog", "speedregulationdialog",
    "voltagelimitsdialog"};

/// The address takes effect at once and has neither a unit nor a place among the changes.
const QStringList withoutUnit {"edParam0x52User"};

bool isInTable(const QString &form)
{
    return std::any_of(
        table.cbegin(), table.cend(), [&form](const Objects &objects) { return form == objects.form; });
}

QString form()
{
    QFETCH(QString, form);
    return form;
}

void addForms()
{
    QTest::addColumn<QString>("form");
    const QStringList forms = FormFile::all();
    for (const QString &name : forms)
        QTest::newRow(qPrintable(name)) << name;
}

} // namespace

class TestFormObjects : public QObject
{
    Q_OBJECT

private slots:
    void objectIsOfItsKind_data();
    void objectIsOfItsKind();
    void formWithContentIsLookedAt_data() { addForms(); }
    void formWithContentIsLookedAt();
    void noNameStandsTwice_data() { addForms(); }
    void noNameStandsTwice();
    void parameterFieldHasItsLabels_data() { addForms(); }
    void parameterFieldHasItsLabels();
};

void TestFormObjects::objectIsOfItsKind_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("kind");
    for (const Objects &objects : table) {
        const QStringList names = QString::fromLatin1(objects.names).split(' ');
        for (const QString &name : names)
            QTest::addRow("%s: %s", objects.form, qPrintable(name)) << objects.form << name << objects.kind;
    }
}

void TestFormObjects::objectIsOfItsKind()
{
    QFETCH(QString, object);
    QFETCH(QString, kind);
    QCOMPARE(FormFile(form()).kindOf(object), kind);
}

void TestFormObjects::formWithContentIsLookedAt()
{
    const bool isEmpty = FormFile(form()).objects().size() == 1;
    QVERIFY2(isEmpty || isInTable(form()) || pageForms.contains(form()),
        "add the form's objects to the table of this test, or its name to the pages' forms");
}

void TestFormObjects::noNameStandsTwice()
{
    const QStringList names = FormFile(form()).names();
    QVERIFY(!names.contains(QString()));
    QCOMPARE(repeatedNames(names), QStringList());
}

void TestFormObjects::parameterFieldHasItsLabels()
{
    static const QRegularExpression field(QStringLiteral("^ed(Param0x[0-9A-F]{2})User(_2)?$"));
    const FormFile file(form());
    const bool hasNames = !file.names().filter(QStringLiteral("ParamName")).isEmpty();
    const QStringList fields = file.names().filter(field);
    for (const QString &name : fields) {
        const QRegularExpressionMatch match = field.match(name);
        const QString stem = QLatin1Char('l') + match.captured(1);
        const QString suffix = match.captured(2);
        QCOMPARE(file.kindOf(name), QStringLiteral("QLineEdit"));
        QCOMPARE(file.kindOf(stem + "Device" + suffix), QStringLiteral("QLabel"));
        QCOMPARE(file.kindOf(stem + "Unit" + suffix), withoutUnit.contains(name) ? "" : "QLabel");
        QCOMPARE(file.kindOf(stem + "ParamName" + suffix), hasNames ? "QLabel" : "");
    }
}

QTEST_APPLESS_MAIN(TestFormObjects)

#include "tst_formobjects.moc"
