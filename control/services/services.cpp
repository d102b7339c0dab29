#include "control/services/services.h"

#include "control/services/language.h"
#include "control/services/options.h"

#include <QDir>

namespace {

std::unique_ptr<Z7Services> &theServices()
{
    static std::unique_ptr<Z7Services> services;
    return services;
}

} // namespace

Z7Services::Z7Services() = default;
Z7Services::~Z7Services() = default;

Z7Services *Z7Services::instance()
{
    if (!theServices())
        theServices().reset(new Z7Services);
    return theServices().get();
}

void Z7Services::shutdown()
{
    Z7Services *services = instance();
    if (services->m_language)
        services->m_language->save();
    services->m_language.reset();
    services->options()->save();
    theServices().reset();
}

void Z7Services::setFolder(const QString &folder)
{
    Q_ASSERT_X(!m_options && !m_language && m_definitions.isEmpty(), Q_FUNC_INFO, "files are read already");
    m_folder = folder.isEmpty() ? folder : QDir(folder).absolutePath();
}

Z7Options *Z7Services::options()
{
    if (!m_options) {
        m_options = std::make_unique<Z7Options>(m_folder);
        m_options->load();
    }
    return m_options.get();
}

Z7Language *Z7Services::language()
{
    if (!m_language) {
        m_language = std::make_unique<Z7Language>(m_folder);
        m_language->load(options()->language());
    }
    return m_language.get();
}
