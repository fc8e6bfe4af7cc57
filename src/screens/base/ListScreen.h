#pragma once

#include "platform/ui/table/TableView.h"
#include "screens/base/DataScreen.h"

#include <vector>

namespace orvel {

// A screen that lists entries in one section, an entry a row.
class ListScreen : public orvel::DataScreen, public TableViewDataSource, public TableViewDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    OUTLET(TableView, tableCont);

public:
    // Appends the answer's entries to the list, reloads the table and hides the overlay.
    void PostSuccess(const JsonValue &response) override;

    int numberOfRowsInSection(TableView &tableView, int section) override;
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    void didSelectRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;

protected:
    // Shows the table, empty until there are entries.
    void viewDidLoad() override;

    // The entries of an answer, as the list keeps them.
    virtual std::vector<JsonValue> entriesOf(const JsonValue &response);
    virtual std::shared_ptr<TableViewCell> cellFor(const JsonValue &entry, int row) = 0;
    virtual void didSelect(const JsonValue & /*entry*/, int /*row*/) {}
    // Absent when there is no such row.
    JsonValue entryAt(int row) const;

    std::vector<JsonValue> m_array; // in server order
};

} // namespace orvel
