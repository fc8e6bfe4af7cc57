#include "platform/ui/table/CollectionView.h"

#include "platform/ui/table/TableElements.h"

#include <utility>

namespace orvel {

CollectionView::CollectionView() : m_elements(std::make_unique<TableElements>())
{
    QQmlEngine::setObjectOwnership(m_elements.get(), QQmlEngine::CppOwnership);
}

CollectionView::~CollectionView() = default;

void CollectionView::setDataSource(std::weak_ptr<CollectionViewDataSource> dataSource)
{
    m_dataSource = std::move(dataSource);
}

void CollectionView::setDelegate(std::weak_ptr<CollectionViewDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

void CollectionView::registerCell(const QString &identifier, ViewMakers<CollectionViewCell>::Maker maker)
{
    m_cells.insert(identifier, std::move(maker));
}

std::shared_ptr<CollectionViewCell>
CollectionView::dequeueReusableCellWithReuseIdentifier(const QString &identifier) const
{
    return m_cells.make(identifier);
}

void CollectionView::reloadData()
{
    std::vector<TableElement> elements;
    if (const std::shared_ptr<CollectionViewDataSource> dataSource = m_dataSource.lock()) {
        const int count = dataSource->numberOfItemsInSection(*this, 0);
        for (int item = 0; item < count; ++item) {
            const std::shared_ptr<CollectionViewCell> cell =
                dataSource->cellForItemAtIndexPath(*this, {0, item});
            if (!cell)
                continue;
            QQmlEngine::setObjectOwnership(cell.get(), QQmlEngine::CppOwnership);
            elements.push_back({.place = {.row = item}, .view = cell});
        }
    }
    m_elements->become(elements);
    select(-1);
}

std::shared_ptr<CollectionViewCell> CollectionView::cellForItemAtIndexPath(IndexPath indexPath) const
{
    const TableElement *element = m_elements->find({.section = indexPath.section, .row = indexPath.row});
    return element ? std::static_pointer_cast<CollectionViewCell>(element->view) : nullptr;
}

void CollectionView::selectItemAtIndexPath(IndexPath indexPath)
{
    if (cellForItemAtIndexPath(indexPath))
        select(indexPath.row);
}

QAbstractItemModel *CollectionView::elements() const { return m_elements.get(); }

void CollectionView::chooseItem(int item)
{
    if (!cellForItemAtIndexPath({0, item}))
        return;
    const int before = m_selectedItem;
    select(item);
    const std::shared_ptr<CollectionViewDelegate> delegate = m_delegate.lock();
    if (delegate && before >= 0 && before != item)
        delegate->didDeselectItemAtIndexPath(*this, {0, before});
    if (delegate)
        delegate->didSelectItemAtIndexPath(*this, {0, item});
}

void CollectionView::select(int item)
{
    if (std::exchange(m_selectedItem, item) != item)
        Q_EMIT selectedItemChanged();
}

} // namespace orvel
