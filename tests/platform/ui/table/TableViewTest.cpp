#include "platform/ui/table/TableView.h"
#include "support/TestLoop.h"

#include <QAbstractItemModel>
#include <cmath>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

// A list with a high header, rows of 60 points that may have others, and a table 500 points high.
struct List : TableViewDataSource, TableViewDelegate
{
    List()
    {
        table.registerCell("cell", [] { return std::make_shared<TableViewCell>(); });
        table.registerHeaderFooterView("header", [] { return std::make_shared<View>(); });
    }
    int numberOfSectionsInTableView(TableView &) override { return sections; }
    int numberOfRowsInSection(TableView &, int section) override
    {
        countsAsked << section;
        return section == openSection ? openRows : rows;
    }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &asking, IndexPath path) override
    {
        asked << QString::number(path.row) + QString(path.section, '\'');
        if (whenAsked)
            whenAsked();
        return path.row == rowWithoutCell ? nullptr : asking.dequeueReusableCellWithIdentifier("cell");
    }
    double heightForRowAtIndexPath(TableView &, IndexPath path) override
    {
        ++heightsAsked;
        return path.row == otherRow ? otherHeight : rowHeight;
    }
    double heightForHeaderInSection(TableView &, int) override { return headerHeight; }
    std::shared_ptr<View> viewForHeaderInSection(TableView &asking, int) override
    {
        asked << "H";
        return asking.dequeueReusableHeaderFooterViewWithIdentifier("header");
    }
    double heightForFooterInSection(TableView &, int section) override
    {
        return section == openSection ? 40 : 0;
    }
    std::shared_ptr<View> viewForFooterInSection(TableView &, int) override { return unowned(footer); }
    void didSelectRowAtIndexPath(TableView &, IndexPath path) override
    {
        selected << QString::number(path.row);
    }
    void scrollViewDidScroll(TableView &) override
    {
        ++scrolls;
        if (whenScrolled)
            whenScrolled();
    }

    // The rows asked for since the last call.
    QString newlyAsked() { return std::exchange(asked, {}).join(' '); }
    // What is in view: a header or footer by its first letter, a row by its number.
    QString inView() const
    {
        QStringList shown;
        for (int i = 0; i < table.elements()->rowCount(); ++i)
            shown << (role(i, "kind") == "row" ? role(i, "row").toString()
                                               : role(i, "kind").toString().first(1).toUpper());
        return shown.join(' ');
    }
    QVariant role(int element, const QByteArray &name) const
    {
        const QAbstractItemModel *model = table.elements();
        return model->data(model->index(element, 0), model->roleNames().key(name));
    }

    View footer;
    TableView table;
    int sections = 1;
    int rows = 1000;
    int openSection = -1;
    int openRows = 0;
    double headerHeight = 352;
    double rowHeight = 60;
    int otherRow = -1;
    double otherHeight = 0;
    int rowWithoutCell = -1;
    int heightsAsked = 0;
    int scrolls = 0;
    QStringList asked;
    QList<int> countsAsked;
    QStringList selected;
    std::function<void()> whenAsked;
    std::function<void()> whenScrolled;
};

struct TableViewTest : testing::Test
{
    std::shared_ptr<List> list = std::make_shared<List>();
    TableView &table = list->table;

    TableViewTest()
    {
        table.setDataSource(list);
        table.setDelegate(list);
    }
    void show() { table.setFrame(QRectF(0, 0, 320, 500)); }
};

} // namespace

TEST_F(TableViewTest, AsksForARowWhenItComesIntoViewAndAgainWhenItComesBack)
{
    show();
    EXPECT_EQ(list->newlyAsked(), "H 0 1 2");
    EXPECT_EQ(table.contentHeight(), 352 + 60000);
    EXPECT_EQ(list->inView(), "H 0 1 2");
    EXPECT_EQ(list->role(2, "rowTop"), 412);
    EXPECT_EQ(list->role(2, "rowHeight"), 60);

    const struct
    {
        double offset;
        const char *asked;
        const char *inView;
    } steps[] = {
        {351, "3 4 5 6 7 8", "H 0 1 2 3 4 5 6 7 8"},
        {352, "", "0 1 2 3 4 5 6 7 8"},
        {30292, "499 500 501 502 503 504 505 506 507", "499 500 501 502 503 504 505 506 507"},
        {30352, "508", "500 501 502 503 504 505 506 507 508"},
        {-100, "H 0", "H 0"},
        {60352, "", ""},
        {0, "H 0 1 2", "H 0 1 2"},
    };
    for (const auto &step : steps) {
        table.setContentOffset(step.offset);
        EXPECT_EQ(list->newlyAsked(), step.asked) << step.offset;
        EXPECT_EQ(list->inView(), step.inView) << step.offset;
    }
    table.setContentOffset(0);
    table.setContentOffset(std::nan(""));
    EXPECT_EQ(list->scrolls, std::ssize(steps)) << "only a change is a scroll";
}

TEST_F(TableViewTest, ShowsNothingWithoutAFrameAndLoadsWithItsFirst)
{
    table.reloadData();
    table.setFrame(QRectF(0, 0, 320, 0));
    EXPECT_EQ(list->newlyAsked(), "");
    show();
    EXPECT_EQ(list->newlyAsked(), "H 0 1 2");
    list->rows = 1;
    table.setFrame(QRectF(0, 0, 320, 412));
    EXPECT_EQ(list->inView(), "H 0");
    EXPECT_EQ(table.contentHeight(), 60352) << "a new count is seen at a reload";
    table.reloadData();
    EXPECT_EQ(list->newlyAsked(), "H 0");
    EXPECT_EQ(table.contentHeight(), 412);
}

TEST_F(TableViewTest, ReloadsRowsByTheirHeightsAndCellsAlone)
{
    show();
    list->newlyAsked();
    list->heightsAsked = 0;
    int heightsTold = 0;
    QObject::connect(&table, &TableView::contentHeightChanged, [&] { ++heightsTold; });
    const auto before = table.cellForRowAtIndexPath({0, 1});
    const auto neighbour = table.cellForRowAtIndexPath({0, 2});
    const auto reload = [&] {
        table.reloadRowsAtIndexPaths({{0, 1}, {0, 400}, {0, -2}, {3, 0}}, TableView::RowAnimation::None);
    };
    reload();
    EXPECT_EQ(heightsTold, 0);
    list->otherRow = 1;
    list->otherHeight = 80;
    reload();
    EXPECT_EQ(list->newlyAsked(), "1 1");
    EXPECT_EQ(list->heightsAsked, 4) << "of the two rows that exist";
    EXPECT_NE(table.cellForRowAtIndexPath({0, 1}), before);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 2}), neighbour);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 400}), nullptr);
    EXPECT_EQ(list->role(2, "cell").value<QObject *>(), table.cellForRowAtIndexPath({0, 1}).get());
    EXPECT_EQ(list->role(2, "rowHeight"), 80);
    EXPECT_EQ(list->role(3, "rowTop"), 492);
    EXPECT_EQ(table.contentHeight(), 352 + 60020);
    EXPECT_EQ(heightsTold, 1);
    list->otherHeight = 10;
    reload();
    EXPECT_EQ(list->inView(), "H 0 1 2 3") << "a row that shrinks lets the next in";
    EXPECT_EQ(list->newlyAsked(), "1 3");
}

TEST_F(TableViewTest, SectionsFoldAndUnfoldWhileTheOthersStay)
{
    list->sections = 3;
    list->rows = 0;
    list->headerHeight = 46;
    show();
    EXPECT_EQ(list->inView(), "H H H");
    const auto header = [&](int element) { return list->role(element, "cell").value<QObject *>(); };
    const QPointer<QObject> first = header(0);
    const QPointer<QObject> second = header(1);
    const QObject *const third = header(2);
    list->newlyAsked();
    list->countsAsked.clear();
    list->openSection = 1;
    list->openRows = 3;
    table.reloadSections({1, 7, -1}, TableView::RowAnimation::Fade);
    EXPECT_EQ(list->countsAsked, QList<int>{1}) << "of the section that exists";
    EXPECT_EQ(list->newlyAsked(), "H 0' 1' 2'");
    EXPECT_EQ(list->inView(), "H H 0 1 2 F H");
    EXPECT_EQ(header(0), first);
    EXPECT_NE(header(1), second);
    EXPECT_EQ(header(6), third);
    EXPECT_EQ(list->role(5, "rowTop"), 46 * 2 + 180);
    EXPECT_EQ(list->role(6, "rowTop"), 46 * 2 + 180 + 40);
    EXPECT_EQ(table.contentHeight(), 46 * 3 + 180 + 40);
    EXPECT_TRUE(second) << "a header that leaves is kept as cells are";
    EXPECT_TRUE(test::waitUntil([&] { return !second; }));
    EXPECT_TRUE(first);

    const auto row = table.cellForRowAtIndexPath({1, 2});
    list->openRows = 8;
    table.setFrame({0, 0, 320, 300});
    table.reloadSections({1}, TableView::RowAnimation::Fade);
    EXPECT_EQ(list->inView(), "H H 0 1 2 3");
    EXPECT_NE(table.cellForRowAtIndexPath({1, 2}), row);
    list->openSection = -1;
    table.reloadSections({0, 1}, TableView::RowAnimation::Fade);
    EXPECT_EQ(list->inView(), "H H H");
    EXPECT_EQ(list->role(2, "rowTop"), 92);
    EXPECT_EQ(table.contentHeight(), 138);
}

TEST_F(TableViewTest, ScrollsARowToTheTopAsFarAsTheListGoes)
{
    show();
    QList<double> wanted;
    QObject::connect(&table, &TableView::scrollWanted, [&](double offset) { wanted << offset; });
    const auto scroll = [&](IndexPath path, bool animated) {
        table.scrollToRowAtIndexPath(path, TableView::ScrollPosition::Top, animated);
    };
    scroll({0, 10}, false);
    EXPECT_EQ(table.contentOffset(), 952);
    scroll({0, 999}, false);
    EXPECT_EQ(table.contentOffset(), 60352 - 500);
    scroll({0, 1000}, false);
    scroll({1, 0}, true);
    EXPECT_EQ(table.contentOffset(), 60352 - 500);
    EXPECT_TRUE(wanted.isEmpty());
    scroll({0, 10}, true);
    EXPECT_EQ(wanted, QList<double>{952});
    EXPECT_EQ(table.contentOffset(), 60352 - 500) << "the layout moves it";
    list->rows = 2;
    table.reloadData();
    scroll({0, 1}, false);
    EXPECT_EQ(table.contentOffset(), 0);
}

TEST_F(TableViewTest, AsksAllHeightsAgainWhenTheWidthChanges)
{
    show();
    const int once = std::exchange(list->heightsAsked, 0);
    const auto cell = table.cellForRowAtIndexPath({0, 2});
    list->newlyAsked();
    list->otherRow = 1;
    list->otherHeight = -5;
    list->rowHeight = 70;
    table.setFrame(QRectF(10, 10, 320, 501));
    EXPECT_EQ(list->heightsAsked, 0);
    table.setFrame(QRectF(10, 10, 700, 501));
    EXPECT_EQ(list->heightsAsked, once);
    EXPECT_EQ(list->inView(), "H 0 2 3");
    EXPECT_EQ(list->role(2, "rowTop"), 422);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 2}), cell);
    EXPECT_EQ(list->newlyAsked(), "3");
    list->otherHeight = std::nan("");
    table.reloadRowsAtIndexPaths({{0, 1}}, TableView::RowAnimation::None);
    EXPECT_EQ(table.contentHeight(), 352 + 999 * 70);
}

TEST_F(TableViewTest, KeepsWhatLeavesUntilALaterTurn)
{
    show();
    const std::weak_ptr<TableViewCell> scrolledAway = table.cellForRowAtIndexPath({0, 0});
    table.setContentOffset(5000);
    EXPECT_FALSE(scrolledAway.expired());
    const std::weak_ptr<TableViewCell> reloaded = table.cellForRowAtIndexPath({0, 80});
    table.reloadData();
    EXPECT_FALSE(reloaded.expired());
    EXPECT_TRUE(test::waitUntil([&] { return scrolledAway.expired() && reloaded.expired(); }));
}

TEST_F(TableViewTest, TakesAReloadAskedForInAnyCallback)
{
    list->whenAsked = [this] {
        list->whenAsked = {};
        list->rows = 2;
        table.reloadData();
        table.setContentOffset(10);
    };
    show();
    EXPECT_EQ(list->newlyAsked(), "H 0 1 2") << "the load under way goes to its end";
    EXPECT_TRUE(test::waitUntil([&] { return table.contentHeight() == 472; }));
    EXPECT_EQ(list->newlyAsked(), "H 0 1");
    list->whenScrolled = [&] { table.reloadRowsAtIndexPaths({{0, 0}}, TableView::RowAnimation::Fade); };
    table.setContentOffset(20);
    EXPECT_EQ(list->newlyAsked(), "0");
}

TEST_F(TableViewTest, ShowsNothingOfADataSourceThatIsGone)
{
    TableView other;
    other.setFrame(QRectF(0, 0, 320, 500));
    other.setDataSource(list);
    other.reloadData();
    EXPECT_EQ(other.elements()->rowCount(), 0) << "its cells are of no kind the table knows";
    other.registerCell("cell", [] { return std::make_shared<TableViewCell>(); });
    other.reloadData();
    EXPECT_EQ(other.elements()->rowCount(), 12) << "rows of 44 points without a delegate";
    list.reset();
    other.reloadSections({0}, TableView::RowAnimation::Fade);
    EXPECT_EQ(other.elements()->rowCount(), 0);
    other.reloadData();
    other.selectRow(0, 0);
    EXPECT_EQ(other.contentHeight(), 0);
}

TEST_F(TableViewTest, LeavesOutARowWithoutCellAndSelectsOnlyRowsThatExist)
{
    list->sections = 2;
    list->rows = 2;
    list->rowWithoutCell = 0;
    show();
    table.setContentOffset(352 + 120);
    EXPECT_EQ(list->inView(), "H 1");
    EXPECT_EQ(list->role(0, "section"), 1);
    for (const auto &[section, row] : {IndexPath{0, 1}, {1, 0}, {0, 2}, {2, 0}, {-1, -1}})
        table.selectRow(section, row);
    EXPECT_EQ(list->selected, QStringList({"1", "0"}));
}
