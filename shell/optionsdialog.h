#pragma once

#include "control/services/options.h"

#include <QDialog>
#include <QVector>

#include <memory>

class QLineEdit;

namespace Ui {
class optionsdialog;
}

/// Edits the options. All but the language are in force as soon as they are saved, whatever the note says.
class optionsdialog : public QDialog
{
    Q_OBJECT

public:
    explicit optionsdialog(QWidget *parent = nullptr);
    ~optionsdialog() override;

    /// Sets the texts and takes the options in force into the fields; called before each showing.
    void refresh();

public slots:
    /// Takes the fields over into the options, an empty one as 0, and closes the dialog.
    void saveAndCloseDialog();
    /// Shows the note that a change takes effect at the next start.
    void languageChanged(int index);

private:
    /// A setting that is a number, and its field of the form.
    struct NumberField
    {
        Z7Options::Name option;
        QLineEdit *field;
    };

    void prepareNumberFields();
    void setTexts();
    void listLanguages();

    QVector<NumberField> m_numberFields;
    const std::unique_ptr<Ui::optionsdialog> m_ui;
};
