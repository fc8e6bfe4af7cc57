#pragma once

#include "platform/ui/table/CollectionView.h"
#include "platform/ui/table/TableView.h"

#include <QAbstractItemModel>
#include <QMap>

namespace orvel::test {

// A table with the screen that fills it: rows of 60 points, but for some.
struct List : TableViewDataSource, TableViewDelegate
{
    List()
    {
        view.registerCell("cell", [] { return std::make_shared<TableViewCell>(); });
        view.registerHeaderFooterView("header", [] { return std::make_shared<View>(); });
    }
    int numberOfSectionsInTableView(TableView &) override { return int(counts.size()); }
    int numberOfRowsInSection(TableView &, int section) override { return counts.at(std::size_t(section)); }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &asking, IndexPath path) override
    {
        asked << QString::number(path.row) + QString(path.section, '\'');
        if (const auto once = std::exchange(meanwhile, {}))
            once();
        return asking.dequeueReusableCellWithIdentifier(path.row == rowWithoutCell ? "none" : "cell");
    }
    double heightForRowAtIndexPath(TableView &, IndexPath path) override
    {
        ++heightsAsked;
        return heights.value(path.row, 60);
    }
    double heightForHeaderInSection(TableView &, int) override { return headerHeight; }
    double heightForFooterInSection(TableView &, int section) override
    {
        return counts.at(std::size_t(section)) ? footerHeight : 0;
    }
    std::shared_ptr<View> viewForHeaderInSection(TableView &asking, int) override
    {
        asked << "H";
        return asking.dequeueReusableHeaderFooterViewWithIdentifier("header");
    }
    std::shared_ptr<View> viewForFooterInSection(TableView &, int) override { return unowned(footer); }
    void didSelectRowAtIndexPath(TableView &, IndexPath path) override { chosen << path.row; }
    void scrollViewDidScroll(TableView &) override { ++scrolls; }

    // The rows and headers asked for since the last call; a row of section 1 has a mark.
    QString newlyAsked() { return std::exchange(asked, {}).join(' '); }
    QVariant role(int element, const QByteArray &name) const
    {
        return view.elements()->index(element, 0).data(view.elements()->roleNames().key(name));
    }
    // What is in view: a header or footer by its first letter, a row by its number.
    QString inView() const
    {
        QStringList shown;
        for (int i = 0; i < view.elements()->rowCount(); ++i) {
            const QString kind = role(i, "kind").toString();
            shown << (kind == "row" ? role(i, "row").toString() : kind.first(1).toUpper());
        }
        return shown.join(' ');
    }

    View footer;
    TableView view;
    std::vector<int> counts{1000};
    QMap<int, double> heights; // of the rows that have others
    double headerHeight = 0;
    double footerHeight = 0;
    int rowWithoutCell = -1;
    int heightsAsked = 0;
    int scrolls = 0;
    std::function<void()> meanwhile; // runs while a cell is asked for
    QStringList asked;
    QList<int> chosen;
};

// A strip with the screen that fills it: 31 items, of which one has no cell.
struct Strip : CollectionViewDataSource, CollectionViewDelegate
{
    Strip()
    {
        view.registerCell("CELL", [] { return std::make_shared<CollectionViewCell>(); });
    }
    int numberOfItemsInSection(CollectionView &, int) override { return 31; }
    std::shared_ptr<CollectionViewCell> cellForItemAtIndexPath(CollectionView &asking,
                                                               IndexPath path) override
    {
        return asking.dequeueReusableCellWithReuseIdentifier(path.row == 3 ? "none" : "CELL");
    }
    void didSelectItemAtIndexPath(CollectionView &, IndexPath path) override { told << path.row; }
    void didDeselectItemAtIndexPath(CollectionView &, IndexPath path) override { told << -path.row; }

    CollectionView view;
    QList<int> told; // the items selected, and deselected with a minus
};

// Returns a new one that is its own view's data source and delegate.
template<class Screen>
std::shared_ptr<Screen> make()
{
    const auto screen = std::make_shared<Screen>();
    screen->view.setDataSource(screen);
    screen->view.setDelegate(screen);
    return screen;
}

} // namespace orvel::test
