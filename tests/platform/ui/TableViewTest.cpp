#include "platform/ui/TableView.h"
#include "support/TestLoop.h"

#include <QAbstractItemModel>
#include <cmath>
#include <gmock/gmock.h>

using namespace orvel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
        asked.push_back(path.row);
        if (whenAsked)
            whenAsked();
        return path.row == rowWithoutCell ? nullptr : asking.dequeueReusableCellWithIdentifier("cell");
    }
    double heightForRowAtIndexPath(TableView &, IndexPath path) override
    {
        ++heightsAsked;
        return path.row == oddRow ? oddHeight : rowHeight;
    }
    double heightForHeaderInSection(TableView &, int) override { return 352; }
    QObject *viewForHeaderInSection(TableView &, int) override { return &header; }
    void didSelectRowAtIndexPath(TableView &, IndexPath path) override { selected.push_back(path.row); }
    void scrollViewDidScroll(TableView &scrolled) override
    {
        offsets.push_back(scrolled.contentOffset());
        if (whenScrolled)
            whenScrolled();
    }

    // The rows asked for since the last call.
    std::vector<int> newlyAsked() { return std::exchange(asked, {}); }
    // What is in view: "H", or the row's number.
    QStringList inView() const
    {
        QStringList shown;
        for (int i = 0; i < table.elements()->rowCount(); ++i)
            shown << (role(i, "kind") == "row" ? role(i, "row").toString()
                                               : role(i, "kind").toString().left(1).toUpper());
        return shown;
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
    int oddRow = -1;
    double oddHeight = 0;
    int rowWithoutCell = -1;
    int heightsAsked = 0;
    std::vector<int> asked;
    std::vector<int> selected;
    std::vector<double> offsets;
    std::function<void()> whenAsked;
    std::function<void()> whenScrolled;
};

std::shared_ptr<List> shownList(const std::function<void(List &)> &prepare = {})
{
    const auto list = std::make_shared<List>();
    if (prepare)
        prepare(*list);
    list->table.setDataSource(list);
    list->table.setDelegate(list);
    list->table.setFrame(QRectF(0, 0, 320, 500));
    return list;
}

} // namespace

TEST(TableViewTest, AsksForARowWhenItComesIntoViewAndAgainWhenItComesBack)
{
    const auto list = shownList();
    EXPECT_THAT(list->newlyAsked(), ElementsAre(0, 1, 2));
    EXPECT_EQ(list->table.contentHeight(), 352 + 60000);
    EXPECT_EQ(list->inView(), QStringList({"H", "0", "1", "2"}));
    EXPECT_EQ(list->role(0, "cell").value<QObject *>(), &list->header);
    EXPECT_EQ(list->role(2, "rowTop"), 412);
    EXPECT_EQ(list->role(2, "rowHeight"), 60);

    struct Step
    {
        double offset;
        std::vector<int> asked;
        QStringList inView;
    };
    const Step steps[] = {
        {351, {3, 4, 5, 6, 7, 8}, {"H", "0", "1", "2", "3", "4", "5", "6", "7", "8"}},
        {352, {}, {"0", "1", "2", "3", "4", "5", "6", "7", "8"}},
        {30292,
         {499, 500, 501, 502, 503, 504, 505, 506, 507},
         {"499", "500", "501", "502", "503", "504", "505", "506", "507"}},
        {30299, {}, {"499", "500", "501", "502", "503", "504", "505", "506", "507"}},
        {30352, {508}, {"500", "501", "502", "503", "504", "505", "506", "507", "508"}},
        {-100, {0}, {"H", "0"}},
        {60352, {}, {}},
        {0, {0, 1, 2}, {"H", "0", "1", "2"}},
    };
    for (const Step &step : steps) {
        list->table.setContentOffset(step.offset);
        EXPECT_EQ(list->newlyAsked(), step.asked) << step.offset;
        EXPECT_EQ(list->inView(), step.inView) << step.offset;
        EXPECT_EQ(list->offsets.back(), step.offset);
    }
    list->table.setContentOffset(0);
    list->table.setContentOffset(std::nan(""));
    EXPECT_EQ(list->offsets.size(), std::size(steps)) << "only a change is a scroll";
}

TEST(TableViewTest, ShowsNothingWithoutAFrameAndLoadsWithItsFirst)
{
    const auto list = std::make_shared<List>();
    list->table.setDataSource(list);
    list->table.setDelegate(list);
    list->table.reloadData();
    list->table.setFrame(QRectF(0, 0, 320, 0));
    EXPECT_THAT(list->asked, IsEmpty());
    list->table.setFrame(QRectF(0, 0, 320, 500));
    EXPECT_THAT(list->newlyAsked(), ElementsAre(0, 1, 2));
    list->rows = 1;
    list->table.setFrame(QRectF(0, 0, 320, 412));
    EXPECT_EQ(list->inView(), QStringList({"H", "0"}));
    EXPECT_EQ(list->table.contentHeight(), 60352) << "a new count is seen at a reload";
    list->table.reloadData();
    EXPECT_THAT(list->newlyAsked(), ElementsAre(0));
    EXPECT_EQ(list->table.contentHeight(), 412);
}

TEST(TableViewTest, ReloadsOneRowByItsCellAlone)
{
    const auto list = shownList();
    list->newlyAsked();
    const auto before = list->table.cellForRowAtIndexPath({0, 1});
    const auto neighbour = list->table.cellForRowAtIndexPath({0, 2});
    std::vector<int> changed;
    int moved = 0;
    QObject::connect(list->table.elements(), &QAbstractItemModel::dataChanged, &list->table,
                     [&](const QModelIndex &from, const QModelIndex &to, const QList<int> &roles) {
                         EXPECT_EQ(from, to);
                         EXPECT_EQ(roles, QList<int>({list->table.elements()->roleNames().key("cell")}));
                         changed.push_back(from.row());
                     });
    QObject::connect(list->table.elements(), &QAbstractItemModel::rowsInserted, &list->table,
                     [&] { ++moved; });
    QObject::connect(list->table.elements(), &QAbstractItemModel::rowsRemoved, &list->table,
                     [&] { ++moved; });
    const int heights = list->heightsAsked;
    list->table.reloadRowsAtIndexPaths({{0, 1}, {0, 400}, {3, 0}}, TableView::RowAnimation::None);
    EXPECT_THAT(list->newlyAsked(), ElementsAre(1));
    EXPECT_THAT(changed, ElementsAre(2));
    EXPECT_EQ(moved, 0);
    EXPECT_EQ(list->heightsAsked, heights);
    EXPECT_NE(list->table.cellForRowAtIndexPath({0, 1}), before);
    EXPECT_EQ(list->table.cellForRowAtIndexPath({0, 2}), neighbour);
    EXPECT_EQ(list->table.cellForRowAtIndexPath({0, 400}), nullptr);
    EXPECT_EQ(list->role(2, "cell").value<QObject *>(), list->table.cellForRowAtIndexPath({0, 1}).get());

    list->table.setContentOffset(60);
    EXPECT_EQ(moved, 1) << "one row came, none has left";
}

TEST(TableViewTest, AsksAllHeightsAgainWhenTheWidthChanges)
{
    const auto list = shownList([](List &made) {
        made.oddRow = 1;
        made.oddHeight = 30;
    });
    const int once = std::exchange(list->heightsAsked, 0);
    const auto cell = list->table.cellForRowAtIndexPath({0, 2});
    list->newlyAsked();
    list->oddHeight = -5;
    list->rowHeight = 70;
    list->table.setFrame(QRectF(10, 10, 320, 501));
    EXPECT_EQ(list->heightsAsked, 0);
    list->table.setFrame(QRectF(10, 10, 700, 501));
    EXPECT_EQ(list->heightsAsked, once);
    EXPECT_EQ(list->inView(), QStringList({"H", "0", "2", "3"})) << "a row without height is not in view";
    EXPECT_EQ(list->role(2, "rowTop"), 422);
    EXPECT_EQ(list->table.cellForRowAtIndexPath({0, 2}), cell);
    EXPECT_THAT(list->newlyAsked(), ElementsAre(3));
}

TEST(TableViewTest, KeepsACellThatLeavesUntilALaterTurn)
{
    const auto list = shownList();
    const std::weak_ptr<TableViewCell> scrolledAway = list->table.cellForRowAtIndexPath({0, 0});
    list->table.setContentOffset(5000);
    EXPECT_FALSE(scrolledAway.expired());
    const std::weak_ptr<TableViewCell> reloaded = list->table.cellForRowAtIndexPath({0, 80});
    list->table.reloadData();
    EXPECT_FALSE(reloaded.expired());
    EXPECT_TRUE(test::waitUntil([&] { return scrolledAway.expired() && reloaded.expired(); }));
}

TEST(TableViewTest, TakesAReloadAskedForInAnyCallback)
{
    const auto list = shownList([](List &made) {
        made.whenAsked = [&made] {
            made.whenAsked = {};
            made.rows = 2;
            made.table.reloadData();
            made.table.setContentOffset(10);
        };
    });
    EXPECT_THAT(list->newlyAsked(), ElementsAre(0, 1, 2)) << "the load under way goes to its end";
    EXPECT_TRUE(test::waitUntil([&] { return list->table.contentHeight() == 472; }));
    EXPECT_THAT(list->newlyAsked(), ElementsAre(0, 1));
    list->whenScrolled = [&] { list->table.reloadRowsAtIndexPaths({{0, 0}}, TableView::RowAnimation::Fade); };
    list->table.setContentOffset(20);
    EXPECT_THAT(list->newlyAsked(), ElementsAre(0));
}

TEST(TableViewTest, ShowsNothingOfADataSourceThatIsGone)
{
    TableView table;
    std::vector<double> heightsTold;
    QObject::connect(&table, &TableView::contentHeightChanged,
                     [&] { heightsTold.push_back(table.contentHeight()); });
    table.setFrame(QRectF(0, 0, 320, 500));
    table.reloadData();
    auto list = shownList();
    table.setDataSource(list);
    table.reloadData();
    EXPECT_EQ(table.elements()->rowCount(), 0) << "its cells are of no kind the table knows";
    table.registerCell("cell", [] { return std::make_shared<TableViewCell>(); });
    table.reloadData();
    EXPECT_EQ(table.elements()->rowCount(), 12) << "rows of 44 points without a delegate";
    list.reset();
    table.setContentOffset(100);
    EXPECT_EQ(table.elements()->rowCount(), 0);
    table.reloadData();
    table.selectRow(0, 0);
    EXPECT_EQ(table.contentHeight(), 0);
    EXPECT_THAT(heightsTold, ElementsAre(44000, 0));
}

TEST(TableViewTest, LeavesOutARowWithoutCellAndSelectsOnlyRowsThatExist)
{
    const auto list = shownList([](List &made) {
        made.sections = 2;
        made.rows = 2;
        made.rowWithoutCell = 0;
    });
    list->table.setContentOffset(352 + 120);
    EXPECT_EQ(list->inView(), QStringList({"H", "1"}));
    EXPECT_EQ(list->role(0, "section"), 1);
    for (const auto &[section, row] : {IndexPath{0, 1}, {1, 0}, {0, 2}, {2, 0}, {-1, -1}})
        list->table.selectRow(section, row);
    EXPECT_THAT(list->selected, ElementsAre(1, 0));
}
