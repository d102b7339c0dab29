#include "control/datapages.h"

#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "pages/pagestyle.h"

#include <QLayout>

DataPages::DataPages() = default;

DataPages::~DataPages() = default;

Z7DataWidget *DataPages::create(int number)
{
    if (!page(number)) {
        if (std::unique_ptr<Z7DataWidget> created = createDataPage(number))
            m_pages[number] = std::move(created);
    }
    return page(number);
}

Z7DataWidget *DataPages::page(int number) const
{
    const auto entry = m_pages.find(number);
    return entry == m_pages.end() ? nullptr : entry->second.get();
}

Z7DataWidget *DataPages::place(int number, int former, QWidget *contentWidget, QLayout *layout) const
{
    Z7DataWidget *placed = page(number);
    const bool standsThere = placed && number == former && placed->parentWidget();
    if (!placed || standsThere)
        return placed;
    takeOut(former);
    placed->setParent(contentWidget);
    if (layout)
        layout->addWidget(placed);
    return placed;
}

bool DataPages::takeOut(int number) const
{
    Z7DataWidget *taken = page(number);
    if (taken)
        PageStyle::takeOut(taken);
    return taken;
}

void DataPages::fill(Z7DataWidget &page, const Z7Device &device, const QList<Z7Device> &allDevices)
{
    page.softwareVersion = device.softwareVersion;
    page.initPage();
    if (!page.multiDevice) {
        page.DeviceUpdate(device);
        return;
    }
    for (const Z7Device &each : allDevices)
        page.DeviceUpdate(each);
    page.deviceUpdateFinished();
}

Z7DeviceParamSet DataPages::parametersFor(const Z7DataWidget &page, const Z7Device &device)
{
    return page.allParameters ? device.parameterSet
                              : Z7DeviceParamSet(device.softwareVersion, page.paramIds());
}

int DataPages::pageOf(int parameter) const
{
    for (const int number : drivePages()) {
        const Z7DataWidget *candidate = page(number);
        // An address is changed at once, and never pending.
        const bool showsChanges = candidate && !candidate->allParameters && number != PageNumber::RS485;
        if (showsChanges && candidate->hasParam(parameter))
            return number;
    }
    return PageNumber::ParameterTable;
}

void DataPages::tellThatCommunicationStopped() const
{
    for (const auto &entry : m_pages)
        entry.second->AllDeviceCommunicationStopped();
}
