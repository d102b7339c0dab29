#pragma once

#include "pages/datawidget.h"

#include <QMap>

#include <memory>

class QFont;
class QColor;
class QLineEdit;
class QSignalMapper;

namespace Ui {
class ParameterTableDialog;
}

/// One table with a row for every parameter of the drive: what the drive holds beside what the user wants,
/// and a remark that words everything that went wrong with the parameter.
///
/// Rows appear in the order in which parameters first arrive and stay until the page is shown again.
class ParameterTableDialog : public Z7DataWidget
{
    Q_OBJECT

public:
    explicit ParameterTableDialog(QWidget *parent = nullptr);
    ~ParameterTableDialog() override;

    void clearUserValues() override;
    void initPage() override;
    void deviceUpdateFinished() override;
    void newDeviceParam(const Z7DeviceParam &param) override;
    void newUserParam(const Z7DeviceParam &param) override;
    void showUserValues(const Z7DeviceParamSet &own) override;

public slots:
    void TextChanged(int row);

private:
    int rowForParam(int number);
    bool isForeignRow(int row, const Z7DeviceParamSet &own) const;
    void addCells(int row);
    void addUserField(int row, int number);
    void formatRow(int row);
    void formatUserField(QLineEdit *field, const QColor &colour, const QFont &font) const;
    QString remark(int row, const Z7DeviceParam &param) const;
    bool isOutOfScope(const Z7DeviceParam &param) const;
    bool isCurrentlyNotWritable(int row, int number) const;

    QLineEdit *userField(int row) const;
    int numberInCell(int row, int column) const;

    QMap<int, int> m_paramRows; ///< parameter number to row
    QSignalMapper *m_mapper = nullptr; ///< maps a field to its row
    const std::unique_ptr<Ui::ParameterTableDialog> m_ui;
};
