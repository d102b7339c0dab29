#include "pages/pagefactory.h"

#include "pages/accelerationsdialog.h"
#include "pages/currentlimitsdialog.h"
#include "pages/devicestatusdialog.h"
#include "pages/firmwareuploaddialog.h"
#include "pages/fixedresolutionsdialog.h"
#include "pages/fixresistancedialog.h"
#include "pages/networkdialog.h"
#include "pages/operationsmodedialog.h"
#include "pages/outputdialog.h"
#include "pages/parametertabledialog.h"
#include "pages/positioningdialog.h"
#include "pages/remotecontroldialog.h"
#include "pages/rs485dialog.h"
#include "pages/speedregulationdialog.h"
#include "pages/valuecalibrationcurrent.h"
#include "pages/valuecalibrationrotations.h"
#include "pages/voltagelimitsdialog.h"

#include <iterator>

namespace {

template<typename Page>
std::unique_ptr<Z7DataWidget> makePage()
{
    return std::make_unique<Page>();
}

using PageMaker = std::unique_ptr<Z7DataWidget> (*)();

/// By page number.
constexpr PageMaker pageMakers[] = {
    makePage<NetworkDialog>,
    makePage<DeviceStatusDialog>,
    makePage<SpeedRegulationDialog>,
    makePage<AccelerationsDialog>,
    makePage<CurrentLimitsDialog>,
    makePage<FixedResolutionsDialog>,
    makePage<PositioningDialog>,
    makePage<OutputDialog>,
    makePage<OperationsModeDialog>,
    makePage<ParameterTableDialog>,
    makePage<FirmwareUploadDialog>,
    makePage<ValueCalibrationRotations>,
    makePage<ValueCalibrationCurrent>,
    makePage<FixResistanceDialog>,
    makePage<VoltageLimitsDialog>,
    makePage<RS485Dialog>,
    makePage<RemoteControlDialog>,
};

static_assert(std::size(pageMakers) == PageNumber::Last + 1);

} // namespace

std::unique_ptr<Z7DataWidget> createDataPage(int number)
{
    const bool exists = number >= 0 && number <= PageNumber::Last;
    return exists ? pageMakers[number]() : nullptr;
}
