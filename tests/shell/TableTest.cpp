#include "platform/modal/InputGate.h"
#include "platform/ui/table/TableView.h"
#include "shell/ShellFixture.h"

#include <QQmlComponent>

using namespace orvel;

namespace {

constexpr double rowHeight = 60;

// A plain list that notes which rows were chosen.
struct Rows : TableViewDataSource, TableViewDelegate
{
    int numberOfRowsInSection(TableView &, int) override { return 100; }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &, IndexPath) override
    {
        return std::make_shared<TableViewCell>();
    }
    double heightForRowAtIndexPath(TableView &, IndexPath) override { return rowHeight; }
    void didSelectRowAtIndexPath(TableView &, IndexPath path) override { chosen.push_back(path.row); }

    std::vector<int> chosen;
};

struct TableTest : test::ShellFixture
{
    std::shared_ptr<Rows> rows = std::make_shared<Rows>();
    TableView table;
    std::unique_ptr<QQuickItem> list;

    TableTest()
    {
        table.setDataSource(rows);
        table.setDelegate(rows);
        table.reloadData();
        show();
        QQmlComponent component(qmlEngine(window().contentItem()->childItems().constFirst()));
        component.setData("import Orvel.Kit\n"
                          "Table { id: list; delegate: TableRow { table: list } }",
                          QUrl("qrc:/test/List.qml"));
        list.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{"outlet", QVariant::fromValue(&table)}})));
        EXPECT_TRUE(list) << component.errorString().toStdString();
        list->setParentItem(window().contentItem());
        list->setSize({320, 480});
        list->forceActiveFocus();
    }
};

} // namespace

TEST_F(TableTest, DraggingScrollsAndChoosesNothing)
{
    drag({160, 400}, {160, 200});
    EXPECT_GT(table.contentOffset(), 100);
    EXPECT_TRUE(rows->chosen.empty());
}

TEST_F(TableTest, KeysWalkThroughTheRowsAndScrollThemIntoSight)
{
    key(Qt::Key_Tab);
    for (int i = 0; i < 30; ++i)
        key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_GT(table.contentOffset(), 31 * rowHeight - 480);
    for (int i = 0; i < 30; ++i)
        key(Qt::Key_Up);
    key(Qt::Key_Space);
    EXPECT_EQ(table.contentOffset(), 0);
    EXPECT_EQ(rows->chosen, (std::vector<int>{30, 0}));
}

TEST_F(TableTest, APressThatTheGateCutOffChoosesNothing)
{
    QTest::mousePress(&window(), Qt::LeftButton, {}, {160, 30});
    InputGate::shared().hold();
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, {160, 30});
    tap({160, 90});
    InputGate::shared().release();
    EXPECT_TRUE(rows->chosen.empty());
    tap({160, 90});
    EXPECT_EQ(rows->chosen, std::vector<int>{1});
}
