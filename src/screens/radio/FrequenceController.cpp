#include "screens/radio/FrequenceController.h"

#include "api/ContentList.h"
#include "app/GLOB.h"
#include "screens/radio/cellCustomFrequence.h"

namespace orvel {

void FrequenceController::viewDidLoad()
{
    rowSelected = -1;
    tableCont.registerCell(QStringLiteral("cell"), [] { return std::make_shared<cellCustomFrequence>(); });
    tableCont.setDataSource(shared(this));
    tableCont.setDelegate(shared(this));
    tableCont.reloadData();
    GLOB::glob_ShowHud();
    performAfterDelay(0.1, [this] { functionGetData(); });
}

void FrequenceController::functionGetData()
{
    const auto request = std::make_shared<PostData>();
    request->setDelegate(shared(this));
    request->postGetSecondSection(QStringLiteral("frequences"));
}

void FrequenceController::PostSuccess(const JsonValue &response)
{
    const std::vector<JsonValue> content = contentList(response);
    m_array.insert(m_array.end(), content.begin(), content.end());
    tableCont.reloadData();
    GLOB::glob_HideHud();
}

void FrequenceController::PostFail(const QString &message)
{
    GLOB::glob_alert(message);
    GLOB::glob_HideHud();
}

int FrequenceController::numberOfRowsInSection(TableView &, int) { return int(m_array.size()); }

std::shared_ptr<TableViewCell> FrequenceController::cellForRowAtIndexPath(TableView &tableView,
                                                                          IndexPath indexPath)
{
    const auto cell = std::static_pointer_cast<cellCustomFrequence>(
        tableView.dequeueReusableCellWithIdentifier(QStringLiteral("cell")));
    m_dict = m_array[std::size_t(indexPath.row)];
    cell->lblTitle.setText(m_dict["ville"].text());
    cell->lblDesc.setText(m_dict["region_nom"].text());
    cell->lblFrequency.setText(m_dict["frequence"].text());
    return cell;
}

void FrequenceController::MenuController() { backToMenu(); }

} // namespace orvel
