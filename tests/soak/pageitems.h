#pragma once

#include <QString>
#include <QVector>

/// An edit field of a page and the parameter that it is for.
struct PageField
{
    int number;
    QString name; ///< empty for a row of the table
};

/// An item of the tree below a drive.
struct PageItem
{
    QString title; ///< empty for the drive itself
    QVector<PageField> fields; ///< those whose text becomes a pending change
    bool isTable = false;
};

/// The drive and its pages, from top to bottom.
const QVector<PageItem> &pageItems();
/// The one of them that has a row for every parameter.
const PageItem &tablePage();
