#include "pages/pagefactory.h"

#include "control/services/rows.h"
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

#include <array>
#include <iterator>

namespace {

struct PageRow
{
    int number;
    TextSection texts; ///< the section of the page's texts, its title among them
    const char *title; ///< the German one
    int place; ///< below each drive of the tree, counted from the top
    std::unique_ptr<Z7DataWidget> (*make)();
};

/// The place of a page that a click on a drive or on the network shows, or that no click shows.
constexpr int notBelowDrives = 0;

template<typename Page>
std::unique_ptr<Z7DataWidget> makePage()
{
    return std::make_unique<Page>();
}

template<typename Page>
constexpr PageRow row(PageNumber::Number number, const char *title, int place)
{
    return {number, Page::texts, title, place, makePage<Page>};
}

/// By page number.
constexpr PageRow pageRows[] = {
    row<NetworkDialog>(PageNumber::Network, "Z7-Netzwerk", notBelowDrives),
    row<DeviceStatusDialog>(PageNumber::DeviceStatus, "Z7-Motorstatus", notBelowDrives),
    row<SpeedRegulationDialog>(PageNumber::SpeedRegulation, "Regelung", 7),
    row<AccelerationsDialog>(PageNumber::Accelerations, "Dynamik", 6),
    row<CurrentLimitsDialog>(PageNumber::CurrentLimits, "Stromgrenzen", 8),
    row<FixedResolutionsDialog>(PageNumber::FixedResolutions, "Festdrehzahlen", 2),
    row<PositioningDialog>(PageNumber::Positioning, "Positionierung", 3),
    row<OutputDialog>(PageNumber::Output, "Digitale Ausgänge", 9),
    row<OperationsModeDialog>(PageNumber::OperationsMode, "Betriebsmodus", 1),
    row<ParameterTableDialog>(PageNumber::ParameterTable, "Parametertabelle", 13),
    row<FirmwareUploadDialog>(PageNumber::FirmwareUpload, "Firmware update", 14),
    row<ValueCalibrationRotations>(PageNumber::CalibrationRotations, "Sollwertskalierung Drehzahl", 4),
    row<ValueCalibrationCurrent>(PageNumber::CalibrationCurrent, "Sollwertskalierung Strom", 5),
    row<FixResistanceDialog>(PageNumber::FixResistance, "Ballastwiderstand", 10),
    row<VoltageLimitsDialog>(PageNumber::VoltageLimits, "Spannungsgrenzen", 11),
    row<RS485Dialog>(PageNumber::RS485, "RS485", 12),
    row<RemoteControlDialog>(PageNumber::RemoteControl, "Fernsteuerung", notBelowDrives),
};

static_assert(eachHasItsRow(pageRows, &PageRow::number, PageNumber::Count), "a page lacks its row");

constexpr int countPagesBelowDrives()
{
    int count = 0;
    for (const PageRow &page : pageRows)
        count += page.place != notBelowDrives ? 1 : 0;
    return count;
}

constexpr auto sortByPlace()
{
    std::array<int, countPagesBelowDrives()> pages {};
    for (const PageRow &page : pageRows) {
        if (page.place != notBelowDrives)
            pages[static_cast<size_t>(page.place - 1)] = page.number;
    }
    return pages;
}

/// A place behind the last does not compile.
constexpr auto pagesByPlace = sortByPlace();

constexpr bool placesAreTakenOnce()
{
    int place = 0;
    for (const int number : pagesByPlace) {
        if (pageRows[number].place != ++place)
            return false;
    }
    return true;
}

static_assert(placesAreTakenOnce(), "no two pages have one place in the tree, and no place is left out");

} // namespace

std::unique_ptr<Z7DataWidget> createDataPage(int number)
{
    return PageNumber::isPage(number) ? pageRows[number].make() : nullptr;
}

QString pageTitle(int number)
{
    if (!PageNumber::isPage(number))
        return QStringLiteral("n/a");
    const PageRow &page = pageRows[number];
    return page.texts("Title", page.title);
}

const QVector<int> &drivePages()
{
    static const QVector<int> pages(pagesByPlace.cbegin(), pagesByPlace.cend());
    return pages;
}
