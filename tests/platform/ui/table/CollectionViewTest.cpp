#include "platform/ui/table/CollectionView.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Strip : CollectionViewDataSource, CollectionViewDelegate
{
    Strip()
    {
        view.registerCell("CELL", [] { return std::make_shared<CollectionViewCell>(); });
    }
    int numberOfItemsInSection(CollectionView &, int) override { return 5; }
    std::shared_ptr<CollectionViewCell> cellForItemAtIndexPath(CollectionView &asking,
                                                               IndexPath path) override
    {
        return asking.dequeueReusableCellWithReuseIdentifier(path.row == 3 ? "other" : "CELL");
    }
    void didSelectItemAtIndexPath(CollectionView &, IndexPath path) override { told << path.row; }
    void didDeselectItemAtIndexPath(CollectionView &, IndexPath path) override { told << -path.row; }

    CollectionView view;
    QList<int> told; // the items selected, and deselected with a minus
};

} // namespace

TEST(CollectionViewTest, SelectsOneItemAndDeselectsTheOneBefore)
{
    const auto strip = std::make_shared<Strip>();
    CollectionView &view = strip->view;
    view.setDataSource(strip);
    view.setDelegate(strip);
    view.reloadData();
    EXPECT_EQ(view.elements()->rowCount(), 4) << "one has no cell";
    EXPECT_EQ(view.elements()->index(3, 0).data(view.elements()->roleNames().key("row")), 4);
    view.selectItemAtIndexPath({0, 1});
    view.selectItemAtIndexPath({0, 3});
    view.selectItemAtIndexPath({1, 2});
    EXPECT_EQ(view.selectedItem(), 1);
    EXPECT_TRUE(strip->told.isEmpty());
    for (const int item : {1, 2, 2, 3, 5, -1, 4})
        view.chooseItem(item);
    EXPECT_EQ(strip->told, QList<int>({1, -1, 2, 2, -2, 4}));
    EXPECT_EQ(view.selectedItem(), 4);

    const std::weak_ptr<CollectionViewCell> cell = view.cellForItemAtIndexPath({0, 1});
    view.reloadData();
    EXPECT_EQ(view.selectedItem(), -1);
    EXPECT_FALSE(cell.expired());
    EXPECT_TRUE(test::waitUntil([&] { return cell.expired(); }));
    view.chooseItem(0);
    EXPECT_EQ(strip->told.last(), 0);
    EXPECT_EQ(strip->told.size(), 7) << "after a reload none is deselected";
}
