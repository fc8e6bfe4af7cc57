#pragma once

#include "platform/ui/outlets/View.h"
#include "platform/ui/table/CollectionViewCell.h"
#include "platform/ui/table/IndexPath.h"
#include "platform/ui/table/ViewMakers.h"

#include <QAbstractListModel>
#include <memory>

namespace orvel {

class CollectionView;
class TableElements;

class CollectionViewDataSource
{
public:
    virtual ~CollectionViewDataSource() = default;
    virtual int numberOfItemsInSection(CollectionView &collectionView, int section) = 0;
    virtual std::shared_ptr<CollectionViewCell> cellForItemAtIndexPath(CollectionView &collectionView,
                                                                       IndexPath indexPath) = 0;
};

class CollectionViewDelegate
{
public:
    virtual ~CollectionViewDelegate() = default;
    virtual void didSelectItemAtIndexPath(CollectionView &, IndexPath) {}
    virtual void didDeselectItemAtIndexPath(CollectionView &, IndexPath) {}
};

// A horizontal strip of a few items, at most one of them selected. It has one section, and cells for all
// items from one reload to the next. Main thread.
class CollectionView : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CollectionViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
    // The items in order, with the roles "cell" and "row" (the item's index).
    Q_PROPERTY(QAbstractItemModel *elements READ elements CONSTANT)
    // The index of the selected item; -1 for none.
    Q_PROPERTY(int selectedItem READ selectedItem NOTIFY selectedItemChanged)
public:
    CollectionView();
    ~CollectionView() override;

    // Neither is kept alive.
    void setDataSource(std::weak_ptr<CollectionViewDataSource> dataSource);
    void setDelegate(std::weak_ptr<CollectionViewDelegate> delegate);

    void registerCell(const QString &identifier, ViewMakers<CollectionViewCell>::Maker maker);
    // Returns a new cell of the kind registered; nullptr for an unknown identifier.
    std::shared_ptr<CollectionViewCell>
    dequeueReusableCellWithReuseIdentifier(const QString &identifier) const;

    // Asks for all cells anew and selects none, without telling the delegate. Not to be called from the data
    // source.
    void reloadData();
    // Returns nullptr for an item that does not exist.
    std::shared_ptr<CollectionViewCell> cellForItemAtIndexPath(IndexPath indexPath) const;
    // Selects an item without scrolling to it and without telling the delegate. No effect for an item that
    // does not exist.
    void selectItemAtIndexPath(IndexPath indexPath);

    int selectedItem() const { return m_selectedItem; }
    QAbstractItemModel *elements() const;

    // Called by layouts when an item is tapped, clicked or chosen by keyboard. Tells the delegate that the
    // item is selected, also when it was already; and before, that the one selected until then no longer is.
    Q_INVOKABLE void chooseItem(int item);

Q_SIGNALS:
    void selectedItemChanged();

private:
    void select(int item);

    int m_selectedItem = -1;
    std::unique_ptr<TableElements> m_elements;
    std::weak_ptr<CollectionViewDataSource> m_dataSource;
    std::weak_ptr<CollectionViewDelegate> m_delegate;
    ViewMakers<CollectionViewCell> m_cells;
};

} // namespace orvel
