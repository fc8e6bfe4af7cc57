#include "screens/base/ListScreen.h"

#include "api/ContentList.h"
#include "app/GLOB.h"

namespace orvel {

void ListScreen::viewDidLoad()
{
    tableCont.setDataSource(shared(this));
    tableCont.setDelegate(shared(this));
    tableCont.reloadData();
}

void ListScreen::PostSuccess(const JsonValue &response)
{
    for (JsonValue &entry : entriesOf(response))
        m_array.push_back(std::move(entry));
    tableCont.reloadData();
    GLOB::glob_HideHud();
}

std::vector<JsonValue> ListScreen::entriesOf(const JsonValue &response) { return contentList(response); }

JsonValue ListScreen::entryAt(int row) const
{
    return row >= 0 && row < int(m_array.size()) ? m_array[std::size_t(row)] : JsonValue();
}

int ListScreen::numberOfRowsInSection(TableView &, int) { return int(m_array.size()); }

std::shared_ptr<TableViewCell> ListScreen::cellForRowAtIndexPath(TableView &, IndexPath indexPath)
{
    return cellFor(entryAt(indexPath.row), indexPath.row);
}

void ListScreen::didSelectRowAtIndexPath(TableView &, IndexPath indexPath)
{
    if (const JsonValue entry = entryAt(indexPath.row); !entry.isAbsent())
        didSelect(entry, indexPath.row);
}

} // namespace orvel
