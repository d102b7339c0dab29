#pragma once

#include "pages/datawidget.h"

#include <QMap>
#include <QVector>

#include <memory>

class FieldGuide;
class ParameterFinder;
class QLineEdit;
class QSignalMapper;
class QTableWidgetItem;

struct Z7ParamDefinition;

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
    static constexpr TextSection texts {"DialogParamTable"};

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
    /// Opens the line in which a parameter is found by its number or a part of its name.
    void findParameter();

protected:
    bool event(QEvent *event) override;
    /// Scrolls the table by keys: its cells take none.
    bool eventFilter(QObject *table, QEvent *event) override;

private:
    /// What the user wants of a parameter, seen from what the drive has.
    enum class Wish { Unknown, None, Equal, Different };

    /// What a row shows. It is kept beside the cells, which are slow to ask and slower to set: a record comes
    /// several times a second and changes little.
    struct Row
    {
        int number = 0;
        QLineEdit *user = nullptr;
        FieldGuide *guide = nullptr;
        int deviceValue = 0; ///< 0 also as long as the drive has reported none
        bool isReported = false;
        QString remark;
        Wish painted = Wish::Unknown; ///< Unknown until the row has been painted
    };

    void removeRows();
    int rowForParam(int number);
    bool isForeignRow(const Row &row, const Z7DeviceParamSet &own) const;
    void addCells(int row);
    QLineEdit *addUserField(int row, const Z7ParamDefinition &definition);
    void tellField(int row) const;
    void showDeviceValue(int row, int value);
    void showRemark(int row, const QString &remark);
    static Wish wish(const Row &row);
    static QColor groundOf(Wish wish);
    /// The rows keep their height and the values their width: the desktop's font, or what fits into them.
    void fitFonts();
    QFont fieldFont(Wish wish) const;
    void formatRow(int row);
    void formatUserField(QLineEdit *field, Wish wish) const;
    QString remark(const Row &row, const Z7DeviceParam &param) const;
    bool isCurrentlyNotWritable(const Row &row, const Z7ParamDefinition &definition) const;
    QVector<int> fittedWidths() const;
    QTableWidgetItem *cell(int row, int column) const;

    QMap<int, int> m_paramRows; ///< parameter number to row
    QVector<Row> m_rows;
    QVector<int> m_fittedWidths; ///< as the last fitting left them; empty if something came since
    QSignalMapper *m_mapper = nullptr; ///< maps a field to its row
    const std::unique_ptr<Ui::ParameterTableDialog> m_ui;
    ParameterFinder *m_finder = nullptr;
};
