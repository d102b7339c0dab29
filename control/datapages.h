#pragma once

#include "model/device.h"

#include <QList>

#include <map>
#include <memory>

class QLayout;
class QWidget;
class Z7DataWidget;

/// The pages of the content area, by number. They are created once and live to the end; one at a time stands
/// in the content area, and the others have no parent. Main thread only.
class DataPages
{
public:
    DataPages();
    ~DataPages();

    /// The page of that number, created if it is missing; null if there is none of that number.
    Z7DataWidget *create(int number);
    /// Null if that page was not created.
    Z7DataWidget *page(int number) const;

    /// Puts a page into the content area, in the place of `former`. One that stands there stays as it is, and
    /// all does if the page was not created: then it returns null, and otherwise the page.
    Z7DataWidget *place(int number, int former, QWidget *contentWidget, QLayout *layout) const;
    /// Takes a page out of the content area. False if that page was not created.
    bool takeOut(int number) const;
    /// Has a page show a drive: its texts, and the record, or those of all drives if it is about all.
    static void fill(Z7DataWidget &page, const Z7Device &device, const QList<Z7Device> &allDevices);
    /// What has to be read of a drive for a page: its parameters, or all that the drive has.
    static Z7DeviceParamSet parametersFor(const Z7DataWidget &page, const Z7Device &device);

    /// The page on which a person changes a parameter: the first of the tree that is about it, and otherwise
    /// the table.
    int pageOf(int parameter) const;

    /// Tells every page, in the order of their numbers.
    void tellThatCommunicationStopped() const;

private:
    std::map<int, std::unique_ptr<Z7DataWidget>> m_pages;
};
