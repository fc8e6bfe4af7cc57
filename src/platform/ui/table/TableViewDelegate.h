#pragma once

#include "platform/ui/outlets/View.h"
#include "platform/ui/table/IndexPath.h"
#include "platform/ui/table/TableViewCell.h"

#include <memory>

namespace orvel {

class TableView;

class TableViewDataSource
{
public:
    virtual ~TableViewDataSource() = default;
    virtual int numberOfSectionsInTableView(TableView &) { return 1; }
    virtual int numberOfRowsInSection(TableView &tableView, int section) = 0;
    virtual std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView,
                                                                 IndexPath indexPath) = 0;
};

class TableViewDelegate
{
public:
    virtual ~TableViewDelegate() = default;
    // Heights are points.
    virtual double heightForRowAtIndexPath(TableView &, IndexPath) { return 44; }
    virtual double heightForHeaderInSection(TableView &, int /*section*/) { return 0; }
    virtual double heightForFooterInSection(TableView &, int /*section*/) { return 0; }
    // Asked for when the header's or footer's place comes into view. nullptr: its place stays empty.
    virtual std::shared_ptr<View> viewForHeaderInSection(TableView &, int /*section*/) { return nullptr; }
    virtual std::shared_ptr<View> viewForFooterInSection(TableView &, int /*section*/) { return nullptr; }
    virtual void didSelectRowAtIndexPath(TableView &, IndexPath) {}
    virtual void scrollViewDidScroll(TableView &) {}
};

// Returns a header or footer view that is a member of its screen: the screen alone keeps it alive.
inline std::shared_ptr<View> unowned(View &view) { return {std::shared_ptr<View>(), &view}; }

} // namespace orvel
