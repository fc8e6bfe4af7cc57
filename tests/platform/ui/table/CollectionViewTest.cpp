#include "platform/ui/table/List.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(CollectionViewTest, SelectsOneItemAndDeselectsTheOneBefore)
{
    const auto strip = test::make<test::Strip>();
    CollectionView &view = strip->view;
    view.reloadData();
    EXPECT_EQ(view.elements()->rowCount(), 30) << "one has no cell";
    EXPECT_EQ(view.elements()->index(3, 0).data(view.elements()->roleNames().key("row")), 4);
    view.selectItemAtIndexPath({0, 1});
    view.selectItemAtIndexPath({0, 3});
    view.selectItemAtIndexPath({1, 2});
    EXPECT_EQ(view.selectedItem(), 1);
    EXPECT_TRUE(strip->told.isEmpty());
    for (const int item : {1, 2, 2, 3, 31, -1, 4})
        view.chooseItem(item);
    EXPECT_EQ(strip->told, QList<int>({1, -1, 2, 2, -2, 4}));
    EXPECT_EQ(view.selectedItem(), 4);

    const std::weak_ptr<CollectionViewCell> cell = view.cellForItemAtIndexPath({0, 1});
    view.reloadData();
    EXPECT_EQ(view.selectedItem(), -1);
    EXPECT_FALSE(cell.expired());
    EXPECT_TRUE(test::waitUntil([&] { return cell.expired(); }));
    view.chooseItem(5);
    EXPECT_EQ(strip->told.mid(6), QList<int>{5}) << "after a reload none is deselected";
}
