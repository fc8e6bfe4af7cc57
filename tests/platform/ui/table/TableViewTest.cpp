#include "platform/ui/table/List.h"
#include "support/TestLoop.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

constexpr auto None = TableView::RowAnimation::None;

struct TableViewTest : testing::Test
{
    std::shared_ptr<test::List> list = test::make<test::List>();
    TableView &table = list->view;
    QList<double> contentHeights; // as told

    TableViewTest()
    {
        QObject::connect(&table, &TableView::contentHeightChanged,
                         [this] { contentHeights << table.contentHeight(); });
    }
    void show(double height = 500, double width = 320) { table.setFrame(QRectF(0, 0, width, height)); }
    QObject *viewOf(int element) const { return list->role(element, "cell").value<QObject *>(); }
};

} // namespace

TEST_F(TableViewTest, AsksForARowWhenItComesIntoViewAndAgainWhenItComesBack)
{
    list->headerHeight = 352;
    show();
    EXPECT_EQ(contentHeights, QList<double>{352 + 60000});
    EXPECT_EQ(list->role(2, "rowTop"), 412);
    EXPECT_EQ(list->role(2, "rowHeight"), 60);
    const std::tuple<double, const char *, const char *> steps[] = {
        {0, "H 0 1 2", "H 0 1 2"},
        {351, "3 4 5 6 7 8", "H 0 1 2 3 4 5 6 7 8"},
        {352, "", "0 1 2 3 4 5 6 7 8"},
        {30292, "499 500 501 502 503 504 505 506 507", "499 500 501 502 503 504 505 506 507"},
        {-100, "H 0", "H 0"},
        {60352, "", ""},
        {0, "H 0 1 2", "H 0 1 2"},
    };
    for (const auto &[offset, asked, inView] : steps) {
        table.setContentOffset(offset);
        EXPECT_EQ(list->newlyAsked(), asked) << offset;
        EXPECT_EQ(list->inView(), inView) << offset;
    }
    table.setContentOffset(std::nan(""));
    EXPECT_EQ(list->scrolls, 6) << "only a change is a scroll";
}

TEST_F(TableViewTest, LoadsWithItsFirstFrameAndAsksAllHeightsAgainForAnotherWidth)
{
    table.reloadData();
    show(0);
    EXPECT_EQ(list->newlyAsked(), "");
    show(100);
    EXPECT_EQ(list->newlyAsked(), "0 1");
    const QObject *cell = viewOf(1);
    list->heightsAsked = 0;
    list->heights = {{0, -5}, {2, std::nan("")}};
    show(110);
    EXPECT_EQ(list->heightsAsked, 0);
    show(110, 700);
    EXPECT_EQ(list->heightsAsked, 1000);
    EXPECT_EQ(list->inView(), "1 3");
    EXPECT_EQ(list->newlyAsked(), "3");
    EXPECT_EQ(viewOf(0), cell);
    EXPECT_EQ(table.contentHeight(), 998 * 60);
    list->counts = {1};
    show(120, 700);
    EXPECT_EQ(table.contentHeight(), 998 * 60) << "a new count is seen at a reload";
    table.reloadData();
    EXPECT_EQ(table.contentHeight(), 0);
}

TEST_F(TableViewTest, ReloadsRowsByTheirHeightsAndCellsAlone)
{
    show(180);
    EXPECT_EQ(list->newlyAsked(), "0 1 2");
    contentHeights.clear();
    list->heightsAsked = 0;
    const QObject *row = viewOf(1);
    const QObject *neighbour = viewOf(2);
    for (const double height : {60, 80, 10}) {
        list->heights[1] = height;
        table.reloadRowsAtIndexPaths({{0, 1}, {0, 400}, {0, -2}, {3, 0}}, None);
        EXPECT_EQ(list->role(1, "rowHeight"), height);
        EXPECT_EQ(list->role(2, "rowTop"), 60 + height);
    }
    EXPECT_EQ(list->heightsAsked, 6) << "of the two rows that exist";
    EXPECT_EQ(list->newlyAsked(), "1 1 1 3") << "a row that shrinks lets the next in";
    EXPECT_EQ(contentHeights, QList<double>({60020, 59950}));
    EXPECT_NE(viewOf(1), row);
    EXPECT_EQ(viewOf(2), neighbour);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 1}).get(), viewOf(1));
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 400}), nullptr);
    const std::weak_ptr<TableViewCell> leaving = table.cellForRowAtIndexPath({0, 1});
    table.setContentOffset(5000);
    EXPECT_FALSE(leaving.expired());
    EXPECT_TRUE(test::waitUntil([&] { return leaving.expired(); }));
}

TEST_F(TableViewTest, SectionsFoldAndUnfoldWhileTheOthersStay)
{
    list->counts = {0, 0, 0};
    list->headerHeight = 46;
    list->footerHeight = 40;
    show();
    EXPECT_EQ(list->newlyAsked(), "H H H");
    const QObject *first = viewOf(0);
    const QPointer<QObject> second = viewOf(1);
    const QObject *third = viewOf(2);
    list->counts[1] = 3;
    table.reloadSections({1, 7, -1}, None);
    EXPECT_EQ(list->newlyAsked(), "H 0' 1' 2'");
    EXPECT_EQ(list->inView(), "H H 0 1 2 F H");
    EXPECT_TRUE(viewOf(0) == first && viewOf(1) != second && viewOf(6) == third);
    EXPECT_EQ(list->role(5, "rowTop"), 46 * 2 + 180);
    EXPECT_EQ(list->role(6, "rowTop"), 46 * 2 + 180 + 40);
    EXPECT_EQ(table.contentHeight(), 46 * 3 + 180 + 40);
    EXPECT_TRUE(second) << "a header that leaves is kept as cells are";
    EXPECT_TRUE(test::waitUntil([&] { return !second; }));

    list->counts = {0, 0, 1};
    table.reloadSections({1, 2}, None);
    EXPECT_EQ(list->inView(), "H H H 0 F");
    EXPECT_EQ(list->role(3, "rowTop"), 138);
    EXPECT_EQ(table.contentHeight(), 138 + 60 + 40);
}

TEST_F(TableViewTest, ScrollsARowToTheTopAsFarAsTheListGoes)
{
    show();
    QList<double> wanted;
    QObject::connect(&table, &TableView::scrollWanted, [&](double offset) { wanted << offset; });
    const auto scrolled = [&](IndexPath path, bool animated) {
        table.scrollToRowAtIndexPath(path, TableView::ScrollPosition::Top, animated);
        return table.contentOffset();
    };
    EXPECT_EQ(scrolled({0, 10}, false), 600);
    EXPECT_EQ(scrolled({1, 0}, false), 600);
    EXPECT_EQ(scrolled({0, 999}, false), 60000 - 500);
    EXPECT_EQ(scrolled({0, 20}, true), 60000 - 500) << "the layout moves it";
    scrolled({0, 1000}, true);
    EXPECT_EQ(wanted, QList<double>{1200});
    list->counts = {2};
    table.reloadData();
    EXPECT_EQ(scrolled({0, 1}, false), 0);
}

TEST_F(TableViewTest, TakesAReloadAskedForWhileItAsks)
{
    list->meanwhile = [this] {
        list->counts = {2};
        table.reloadData();
        table.setContentOffset(10);
    };
    show(110);
    EXPECT_EQ(list->newlyAsked(), "0 1") << "the load under way goes to its end";
    EXPECT_TRUE(test::waitUntil([&] { return table.contentHeight() == 120; }));
    EXPECT_EQ(list->newlyAsked(), "0 1");
}

TEST_F(TableViewTest, ShowsAndSelectsOnlyWhatExists)
{
    list->counts = {2, 2};
    list->rowWithoutCell = 0;
    show(200);
    EXPECT_EQ(list->inView(), "1 1");
    EXPECT_EQ(list->role(1, "section"), 1);
    for (const auto &[section, row] : {IndexPath{0, 1}, {1, 0}, {0, 2}, {2, 0}, {-1, -1}})
        table.selectRow(section, row);
    EXPECT_EQ(list->chosen, QList<int>({1, 0}));
}
