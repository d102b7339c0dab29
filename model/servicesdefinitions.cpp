// The services own the parameter definitions, and the records ask the services for them. This one source on
// the side of the definitions closes the circle, so that no header of the services knows of the model.

#include "control/services/services.h"
#include "model/parameterdefinitions.h"

Z7ParamDefinitions *Z7Services::definitions(const QString &version)
{
    const QMutexLocker locker(&m_definitionsMutex);
    std::shared_ptr<Z7ParamDefinitions> &definitions = m_definitions[version];
    if (!definitions)
        definitions = std::make_shared<Z7ParamDefinitions>(version);
    return definitions.get();
}
