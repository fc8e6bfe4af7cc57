#pragma once

#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/outlets/SearchBar.h"
#include "platform/ui/table/TableView.h"

#include <QStringList>

namespace orvel {

// A plain row of the menu: one title.
class MenuCell : public orvel::TableViewCell
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Cells are made by their table")
    OUTLET(Label, textLabel);
};

// A section's header: its title over a thin line.
// Deliberate: the titles end in a space (MenuControllerTest.RowsGetTheirTitlesHalfASecondLater).
class MenuHeader : public orvel::View
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Outlets belong to their screen")
    OUTLET(Label, title);
};

// The side menu: four sections of rows under a search bar. It is made once and kept by the side panel.
class MenuController : public orvel::ViewController, public TableViewDataSource, public TableViewDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    OUTLET(SearchBar, searchBar);
    OUTLET(TableView, tableCont);

public:
    // Sets the rows' titles and darkens the search field.
    // Deliberate: the rows show the marker of an absent text before, and a screen chosen then has it as its
    // title (MenuControllerTest.RowsGetTheirTitlesHalfASecondLater).
    void setData();
    void searchBarSearchButtonClicked(SearchBar &bar);

    int numberOfSectionsInTableView(TableView &tableView) override;
    int numberOfRowsInSection(TableView &tableView, int section) override;
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForHeaderInSection(TableView &tableView, int section) override;
    std::shared_ptr<View> viewForHeaderInSection(TableView &tableView, int section) override;
    void didSelectRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;

protected:
    void viewDidLoad() override;

private:
    QString titleOfRow(IndexPath indexPath) const;

    QStringList m_array; // the 19 row titles, in order
};

} // namespace orvel
