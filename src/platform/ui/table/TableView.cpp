#include "platform/ui/table/TableView.h"

#include "platform/foundation/MainQueue.h"
#include "platform/ui/table/TableElements.h"

#include <QPointer>
#include <algorithm>
#include <cmath>
#include <utility>

namespace orvel {

namespace {

TablePlace rowPlace(IndexPath indexPath) { return {indexPath.section, TableElementKind::Row, indexPath.row}; }

// What a table without a delegate goes by.
std::shared_ptr<TableViewDelegate> orPlain(const std::shared_ptr<TableViewDelegate> &delegate)
{
    return delegate ? delegate : std::make_shared<TableViewDelegate>();
}

} // namespace

TableView::TableView()
    : m_geometry(std::make_unique<TableGeometry>()), m_elements(std::make_unique<TableElements>())
{
    QQmlEngine::setObjectOwnership(m_elements.get(), QQmlEngine::CppOwnership);
    connect(this, &View::frameChanged, this, [this] { frameHasChanged(); });
}

TableView::~TableView() = default;

void TableView::setDataSource(std::weak_ptr<TableViewDataSource> dataSource)
{
    m_dataSource = std::move(dataSource);
    m_loaded = false;
}

void TableView::setDelegate(std::weak_ptr<TableViewDelegate> delegate)
{
    m_delegate = std::move(delegate);
    m_loaded = false;
}

void TableView::registerCell(const QString &identifier, CellMaker maker)
{
    m_makers.insert_or_assign(identifier, std::move(maker));
}

std::shared_ptr<TableViewCell> TableView::dequeueReusableCellWithIdentifier(const QString &identifier) const
{
    const auto maker = m_makers.find(identifier);
    return maker == m_makers.end() ? nullptr : maker->second();
}

void TableView::reloadData()
{
    change([this] {
        askCounts();
        askHeights();
        showElementsInView([](const TablePlace &) { return true; });
    });
}

void TableView::reloadRowsAtIndexPaths(const std::vector<IndexPath> &indexPaths, RowAnimation)
{
    change([this, indexPaths] {
        showElementsInView([&](const TablePlace &shown) {
            return shown.kind == TableElementKind::Row &&
                   std::ranges::find(indexPaths, IndexPath{shown.section, shown.row}) != indexPaths.end();
        });
    });
}

std::shared_ptr<TableViewCell> TableView::cellForRowAtIndexPath(IndexPath indexPath) const
{
    const TableElement *element = m_elements->find(rowPlace(indexPath));
    return element ? element->cell : nullptr;
}

void TableView::setContentOffset(double offset)
{
    if (offset == m_contentOffset || !std::isfinite(offset))
        return;
    m_contentOffset = offset;
    const std::shared_ptr<TableViewDelegate> delegate = m_delegate.lock();
    change([this] { showElementsInView([](const TablePlace &) { return false; }); });
    Q_EMIT contentOffsetChanged();
    if (delegate)
        delegate->scrollViewDidScroll(*this);
}

double TableView::contentHeight() const { return m_geometry->contentHeight(); }

QAbstractItemModel *TableView::elements() const { return m_elements.get(); }

void TableView::selectRow(int section, int row)
{
    const IndexPath indexPath{section, row};
    if (!m_geometry->contains(rowPlace(indexPath)))
        return;
    const std::shared_ptr<TableViewDelegate> delegate = m_delegate.lock();
    if (const std::shared_ptr<TableViewCell> cell = cellForRowAtIndexPath(indexPath))
        cell->setSelected(true, false);
    if (delegate)
        delegate->didSelectRowAtIndexPath(*this, indexPath);
}

void TableView::change(const std::function<void()> &change)
{
    if (m_changing) {
        MainQueue::async([table = QPointer(this), change] {
            if (table)
                table->change(change);
        });
        return;
    }
    // Held to the end: they are asked again and again, and one of them owns this table as a rule.
    const std::shared_ptr<TableViewDataSource> dataSource = m_dataSource.lock();
    const std::shared_ptr<TableViewDelegate> delegate = m_delegate.lock();
    m_changing = true;
    change();
    m_changing = false;
}

void TableView::askCounts()
{
    m_loaded = true;
    std::vector<int> rowsInSection;
    if (const std::shared_ptr<TableViewDataSource> dataSource = m_dataSource.lock()) {
        const int sections = dataSource->numberOfSectionsInTableView(*this);
        for (int section = 0; section < sections; ++section)
            rowsInSection.push_back(dataSource->numberOfRowsInSection(*this, section));
    }
    m_geometry->setCounts(rowsInSection);
}

void TableView::askHeights()
{
    const std::shared_ptr<TableViewDelegate> delegate = orPlain(m_delegate.lock());
    m_width = frame().width();
    m_geometry->setHeights([&](const TablePlace &place) {
        switch (place.kind) {
        case TableElementKind::Header:
            return delegate->heightForHeaderInSection(*this, place.section);
        case TableElementKind::Row:
            return delegate->heightForRowAtIndexPath(*this, {place.section, place.row});
        case TableElementKind::Footer:
            return delegate->heightForFooterInSection(*this, place.section);
        }
        return 0.0;
    });
    if (contentHeight() != std::exchange(m_heightTold, contentHeight()))
        Q_EMIT contentHeightChanged();
}

void TableView::showElementsInView(const std::function<bool(const TablePlace &)> &again)
{
    const std::shared_ptr<TableViewDataSource> dataSource = m_dataSource.lock();
    const std::shared_ptr<TableViewDelegate> delegate = orPlain(m_delegate.lock());
    std::vector<TableElement> elements;
    const double bottom = m_contentOffset + frame().height();
    const auto [first, last] = dataSource && !frame().isEmpty()
                                   ? m_geometry->placesBetween(m_contentOffset, bottom)
                                   : std::pair<std::size_t, std::size_t>{};
    for (std::size_t i = first; i < last; ++i) {
        if (m_geometry->height(i) <= 0)
            continue;
        TableElement element{m_geometry->place(i), m_geometry->top(i), m_geometry->height(i)};
        const IndexPath indexPath{element.place.section, element.place.row};
        const TableElement *shown = m_elements->find(element.place);
        if (shown && shown->view && !again(element.place)) {
            element.view = shown->view;
            element.cell = shown->cell;
        } else if (element.place.kind == TableElementKind::Row) {
            element.cell = dataSource->cellForRowAtIndexPath(*this, indexPath);
            element.view = element.cell.get();
        } else if (element.place.kind == TableElementKind::Header) {
            element.view = delegate->viewForHeaderInSection(*this, element.place.section);
        } else {
            element.view = delegate->viewForFooterInSection(*this, element.place.section);
        }
        if (!element.view)
            continue;
        QQmlEngine::setObjectOwnership(element.view, QQmlEngine::CppOwnership);
        elements.push_back(std::move(element));
    }
    m_elements->become(elements);
}

void TableView::frameHasChanged()
{
    if (!m_loaded && !frame().isEmpty()) {
        reloadData();
        return;
    }
    change([this] {
        if (m_loaded && frame().width() != m_width)
            askHeights();
        showElementsInView([](const TablePlace &) { return false; });
    });
}

} // namespace orvel
