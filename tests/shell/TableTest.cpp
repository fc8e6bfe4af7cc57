#include "platform/foundation/InputGate.h"
#include "platform/ui/TableView.h"
#include "shell/Shell.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

constexpr int rowCount = 100;
constexpr double rowHeight = 60;

// A plain list that notes which rows were chosen.
class Rows : public TableViewDataSource, public TableViewDelegate
{
public:
    int numberOfRowsInSection(TableView &, int) override { return rowCount; }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &, IndexPath) override
    {
        return std::make_shared<TableViewCell>();
    }
    double heightForRowAtIndexPath(TableView &, IndexPath) override { return rowHeight; }
    void didSelectRowAtIndexPath(TableView &, IndexPath indexPath) override
    {
        chosen.push_back(indexPath.row);
    }

    std::vector<int> chosen;
};

class TableTest : public ::testing::Test
{
protected:
    TableTest()
    {
        table.setDataSource(rows);
        table.setDelegate(rows);
        table.reloadData();
        EXPECT_TRUE(shell.show());
        QQmlComponent component(qmlEngine(window().contentItem()->childItems().constFirst()));
        component.setData("import Orvel.Kit\n"
                          "Table { id: list; delegate: TableRow { table: list } }",
                          QUrl(QStringLiteral("qrc:/test/List.qml")));
        list.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("outlet"), QVariant::fromValue(&table)}})));
        EXPECT_TRUE(list) << component.errorString().toStdString();
        list->setParentItem(window().contentItem());
        list->setSize({320, 480});
        window().resize(320, 480);
        list->forceActiveFocus();
        window().requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    QQuickWindow &window() { return shell.quickWindow(); }
    void tap(int y) { QTest::mouseClick(&window(), Qt::LeftButton, {}, {160, y}); }

    Window screens;
    std::shared_ptr<Rows> rows = std::make_shared<Rows>();
    TableView table;
    Shell shell{screens};
    std::unique_ptr<QQuickItem> list;
};

TEST_F(TableTest, TapsChooseTheRowUnderTheFingerWhereverTheListWasScrolled)
{
    EXPECT_EQ(table.frame(), QRectF(0, 0, 320, 480));
    tap(30);
    tap(150);
    table.setContentOffset(50 * rowHeight + 20);
    tap(30);
    tap(470);
    EXPECT_EQ(rows->chosen, (std::vector<int>{0, 2, 50, 58}));
}

TEST_F(TableTest, DraggingScrollsAndChoosesNothing)
{
    QTest::mousePress(&window(), Qt::LeftButton, {}, {160, 400});
    for (int y = 390; y >= 200; y -= 10)
        QTest::mouseMove(&window(), {160, y}, 5);
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, {160, 200});
    EXPECT_GT(table.contentOffset(), 100);
    EXPECT_TRUE(rows->chosen.empty());
}

TEST_F(TableTest, KeysWalkThroughTheRowsAndScrollThemIntoSight)
{
    QTest::keyClick(&window(), Qt::Key_Tab);
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(&window(), Qt::Key_Down);
    QTest::keyClick(&window(), Qt::Key_Return);
    EXPECT_GT(table.contentOffset(), 31 * rowHeight - 480);
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(&window(), Qt::Key_Up);
    QTest::keyClick(&window(), Qt::Key_Space);
    EXPECT_EQ(table.contentOffset(), 0);
    EXPECT_EQ(rows->chosen, (std::vector<int>{30, 0}));
}

TEST_F(TableTest, APressThatTheGateCutOffChoosesNothing)
{
    QTest::mousePress(&window(), Qt::LeftButton, {}, {160, 30});
    InputGate::shared().hold();
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, {160, 30});
    tap(90);
    InputGate::shared().release();
    EXPECT_TRUE(rows->chosen.empty());
    tap(90);
    EXPECT_EQ(rows->chosen, std::vector<int>{1});
}

} // namespace
