#pragma once

#include "pages/datawidget.h"

#include <QVector>

class FieldGuide;
class QLabel;
class QLineEdit;
class QSignalMapper;

/// A page that shows a handful of parameters, each with its widgets on a form: the user field, the drive's
/// value, perhaps the unit and the name. The object names of the form tell which widget belongs to which
/// parameter: edParam0x3CUser, lParam0x3CDevice, lParam0x3CUnit, lParam0x3CParamName.
///
/// One table from parameter to widgets serves all such pages; a page adds its parameters to it in its
/// constructor, once its form is built. A user value is bold, a drive's value grey, and a parameter that can
/// only be read has no visible field.
class LabelledDataWidget : public Z7DataWidget
{
    Q_OBJECT

public:
    void clearUserValues() override;
    void initPage() override;
    void deviceUpdateFinished() override;
    void newDeviceParam(const Z7DeviceParam &param) override;
    void newUserParam(const Z7DeviceParam &param) override;

protected:
    /// `texts` are those of the page, `description` is the German text above the parameters, of static
    /// lifetime.
    LabelledDataWidget(TextSection texts, const char *description, QWidget *parent);

    /// Adds a parameter whose widgets bear its number in their names.
    void addParam(int number);
    /// Adds a parameter whose widgets bear `stem` in the place of "Param0x" and the number; its name label
    /// may be called just "l" and the stem.
    void addParam(int number, const QString &stem);
    /// Shows a parameter of the page a second time, in widgets of names ending in "_2". The second field maps
    /// to `mappingNumber`, which is no parameter, and what is typed in one field appears in the other.
    void addSecondField(int number, int mappingNumber);
    /// The names of parameters that no label shows are told by their fields, in the user's language: the
    /// picture of the page has other words for them.
    void tellNamesInFields() { m_fieldsTellNames = true; }

    void changeEvent(QEvent *event) override;

public slots:
    void ParamChanged(int nParamID);

private:
    struct ParamField
    {
        int number;
        int mapping; ///< what the mapper tells: the parameter's number, or that of the second field
        QLineEdit *user;
        QLabel *deviceValue;
        QLabel *unit; ///< null where the parameter has none
        QLabel *name; ///< null on pages whose picture names the parameter
        FieldGuide *guide;
        int connections; ///< from the field to the mapper of this showing
    };

    ParamField findField(int number, int mapping, const QString &stem, const QString &suffix);
    void initParamWidgets(ParamField &field);
    void nameField(const ParamField &field, const QString &parameterName);
    bool isNameTaken(const ParamField &field, const QString &name) const;
    void fitFonts();
    void showDeviceValue(ParamField &field, int value);
    void copyToOtherFields(const ParamField &source);

    const TextSection m_texts;
    const char *m_description;
    bool m_fieldsTellNames = false;
    QVector<ParamField> m_fields;
    QSignalMapper *m_mapper = nullptr;
};
