#include "platform/ui/table/TableView.h"
#include "support/TestLoop.h"

#include <QAbstractItemModel>
#include <cmath>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

// A list with a high header, rows of 60 points and a table 500 points high.
struct List : TableViewDataSource, TableViewDelegate
{
    List()
    {
        table.registerCell("cell", [] { return std::make_shared<TableViewCell>(); });
    }
    int numberOfSectionsInTableView(TableView &) override { return sections; }
    int numberOfRowsInSection(TableView &, int) override { return rows; }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &asking, IndexPath path) override
    {
        asked << QString::number(path.row);
        if (whenAsked)
            whenAsked();
        return path.row == rowWithoutCell ? nullptr : asking.dequeueReusableCellWithIdentifier("cell");
    }
    double heightForRowAtIndexPath(TableView &, IndexPath path) override
    {
        ++heightsAsked;
        return path.row == rowWithoutHeight ? -5 : rowHeight;
    }
    double heightForHeaderInSection(TableView &, int) override { return 352; }
    QObject *viewForHeaderInSection(TableView &, int) override { return &header; }
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
    // What is in view: "H", or the row's number.
    QString inView() const
    {
        QStringList shown;
        for (int i = 0; i < table.elements()->rowCount(); ++i)
            shown << (role(i, "kind") == "row" ? role(i, "row").toString() : "H");
        return shown.join(' ');
    }
    QVariant role(int element, const QByteArray &name) const
    {
        const QAbstractItemModel *model = table.elements();
        return model->data(model->index(element, 0), model->roleNames().key(name));
    }

    View header;
    TableView table;
    int sections = 1;
    int rows = 1000;
    double rowHeight = 60;
    int rowWithoutHeight = -1;
    int rowWithoutCell = -1;
    int heightsAsked = 0;
    int scrolls = 0;
    QStringList asked;
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
    EXPECT_EQ(list->newlyAsked(), "0 1 2");
    EXPECT_EQ(table.contentHeight(), 352 + 60000);
    EXPECT_EQ(list->inView(), "H 0 1 2");
    EXPECT_EQ(list->role(0, "cell").value<QObject *>(), &list->header);
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
        {-100, "0", "H 0"},
        {60352, "", ""},
        {0, "0 1 2", "H 0 1 2"},
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
    EXPECT_EQ(list->newlyAsked(), "0 1 2");
    list->rows = 1;
    table.setFrame(QRectF(0, 0, 320, 412));
    EXPECT_EQ(list->inView(), "H 0");
    EXPECT_EQ(table.contentHeight(), 60352) << "a new count is seen at a reload";
    table.reloadData();
    EXPECT_EQ(list->newlyAsked(), "0");
    EXPECT_EQ(table.contentHeight(), 412);
}

TEST_F(TableViewTest, ReloadsOneRowByItsCellAlone)
{
    show();
    list->newlyAsked();
    const auto before = table.cellForRowAtIndexPath({0, 1});
    const auto neighbour = table.cellForRowAtIndexPath({0, 2});
    const int heights = list->heightsAsked;
    table.reloadRowsAtIndexPaths({{0, 1}, {0, 400}, {3, 0}}, TableView::RowAnimation::None);
    EXPECT_EQ(list->newlyAsked(), "1");
    EXPECT_EQ(list->heightsAsked, heights);
    EXPECT_NE(table.cellForRowAtIndexPath({0, 1}), before);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 2}), neighbour);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 400}), nullptr);
    EXPECT_EQ(list->role(2, "cell").value<QObject *>(), table.cellForRowAtIndexPath({0, 1}).get());
}

TEST_F(TableViewTest, AsksAllHeightsAgainWhenTheWidthChanges)
{
    show();
    const int once = std::exchange(list->heightsAsked, 0);
    const auto cell = table.cellForRowAtIndexPath({0, 2});
    list->newlyAsked();
    list->rowWithoutHeight = 1;
    list->rowHeight = 70;
    table.setFrame(QRectF(10, 10, 320, 501));
    EXPECT_EQ(list->heightsAsked, 0);
    table.setFrame(QRectF(10, 10, 700, 501));
    EXPECT_EQ(list->heightsAsked, once);
    EXPECT_EQ(list->inView(), "H 0 2 3");
    EXPECT_EQ(list->role(2, "rowTop"), 422);
    EXPECT_EQ(table.cellForRowAtIndexPath({0, 2}), cell);
    EXPECT_EQ(list->newlyAsked(), "3");
}

TEST_F(TableViewTest, KeepsACellThatLeavesUntilALaterTurn)
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
    EXPECT_EQ(list->newlyAsked(), "0 1 2") << "the load under way goes to its end";
    EXPECT_TRUE(test::waitUntil([&] { return table.contentHeight() == 472; }));
    EXPECT_EQ(list->newlyAsked(), "0 1");
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
    other.setContentOffset(100);
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
