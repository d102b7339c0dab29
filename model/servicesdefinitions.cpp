// The services own the parameter definitions and the parameter file, and the records of this layer ask the
// services for them. This one source on the side of the records closes the circle, so that no header of the
// services knows of the model.

#include "control/services/services.h"
#include "model/parameterdefinitions.h"
#include "model/parameterfile.h"

Z7ParamDefinitions *Z7Services::definitions(const QString &version)
{
    const QMutexLocker locker(&m_definitionsMutex);
    std::shared_ptr<Z7ParamDefinitions> &definitions = m_definitions[version];
    if (!definitions)
        definitions = std::make_shared<Z7ParamDefinitions>(version, m_folder);
    return definitions.get();
}

Z7ParameterFile *Z7Services::newParameterFile()
{
    m_parameterFile = std::make_shared<Z7ParameterFile>();
    return m_parameterFile.get();
}

QString Z7Services::saveParameterFile(
    const QString &path, const Z7Device &device, const Z7DeviceParamSet &userParams)
{
    m_parameterFile = std::make_shared<Z7ParameterFile>(path, device, userParams);
    return m_parameterFile->save();
}
