#include "benchmarks/workbench.h"

#include "benchmarks/redraw.h"
#include "control/maincontroller.h"
#include "control/services/options.h"
#include "control/services/services.h"
#include "pages/datawidget.h"
#include "pages/pagefactory.h"
#include "shell/devicecontrolwidget.h"
#include "shell/maincontentwidget.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

void showAtProgramSize(QWidget &window)
{
    window.resize(1366, 768);
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        qWarning("the window does not show");
}

WorkingFolder::WorkingFolder()
    : m_previous(QDir::currentPath())
{
    const QString file = QStringLiteral("/Z7ParamDef_V123.csv");
    QFile::copy(QStringLiteral(Z7_SAMPLES_DIR) + file, m_folder.path() + file);
    QDir::setCurrent(m_folder.path());
    Z7Services::instance()->options()->setPollingInterval(0);
}

WorkingFolder::~WorkingFolder()
{
    Z7Services::shutdown();
    QDir::setCurrent(m_previous);
}

Workbench::Workbench(int drives)
    : m_controller(std::make_unique<Z7MainController>())
    , m_content(new MainContentWidget(m_controller.get(), &m_window))
    , m_bar(new DeviceControlWidget(&m_window))
{
    auto *layout = new QVBoxLayout(&m_window);
    layout->addWidget(m_content);
    layout->addWidget(m_bar);
    for (int number = 0; number <= PageNumber::Last; ++number)
        m_controller->createPage(number);
    m_controller->setMainContent(m_content);
    m_controller->setDeviceControl(m_bar);
    listDrives(drives);
    showAtProgramSize(m_window);
}

Workbench::~Workbench()
{
    m_controller.reset();
}

void Workbench::listDrives(int count)
{
    QList<Z7Device> devices;
    for (int address = 1; address <= count; ++address) {
        Z7Device device;
        device.assignAddress(address);
        device.setSoftwareVersion(QStringLiteral("V123"));
        device.setAccessGranted(true);
        devices.append(device);
    }
    m_controller->setDevices(devices);
}

QTreeWidget *Workbench::tree() const
{
    return m_window.findChild<QTreeWidget *>(QStringLiteral("MainMenuTree"));
}

QWidget *Workbench::page() const
{
    return m_window.findChild<Z7DataWidget *>();
}

QLineEdit *Workbench::userField() const
{
    const QList<QLineEdit *> fields = page()->findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        if (field->isEnabled() && field->isVisible()) {
            field->setFocus();
            return field;
        }
    }
    return nullptr;
}

void Workbench::clickPage(int number)
{
    constexpr int pageRole = Qt::UserRole + 1;
    QTreeWidgetItemIterator entry(tree());
    while (*entry && (*entry)->data(0, pageRole).toInt() != number)
        ++entry;
    tree()->scrollToItem(*entry);
    QTest::mouseClick(
        tree()->viewport(), Qt::LeftButton, Qt::NoModifier, tree()->visualItemRect(*entry).center());
}

void Workbench::showPage(int number)
{
    clickPage(number);
    settle();
    // Only the program's own event loop would do this by itself; without it the rows of former showings pile
    // up.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Z7Device Workbench::nextRecord()
{
    ++m_records;
    Z7Device record = m_controller->connectedDevices().constFirst();
    record.actualSpeed = m_records % 3000;
    for (Z7DeviceParam &param : record.parameterSet.params) {
        param.valid = true;
        param.setValue(m_records % 100);
    }
    return record;
}

void Workbench::deliver(const Z7Device &record)
{
    m_controller->PostTransactionStarted(
        Z7CommInterface::DevicePolling, record.parameterSet.params.size(), record);
    m_controller->PostTransactionProgress(Z7CommInterface::DevicePolling);
    m_controller->PostDeviceUpdate(Z7CommInterface::DevicePolling, record);
}

void typeKey(QLineEdit *field)
{
    QTest::keyClick(field, field->text().isEmpty() ? Qt::Key_1 : Qt::Key_Backspace);
}
