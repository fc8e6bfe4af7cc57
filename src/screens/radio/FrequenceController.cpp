#include "screens/radio/FrequenceController.h"

#include "screens/radio/cellCustomFrequence.h"

namespace orvel {

void FrequenceController::viewDidLoad()
{
    rowSelected = -1;
    ListScreen::viewDidLoad();
    performUnderHud(0.1, [this] { functionGetData(); });
}

void FrequenceController::functionGetData() { ask(QStringLiteral("frequences")); }

std::shared_ptr<TableViewCell> FrequenceController::cellFor(const JsonValue &city, int)
{
    const auto cell = std::make_shared<cellCustomFrequence>();
    cell->lblTitle.setText(city["ville"].text());
    cell->lblDesc.setText(city["region_nom"].text());
    cell->lblFrequency.setText(city["frequence"].text());
    return cell;
}

} // namespace orvel
