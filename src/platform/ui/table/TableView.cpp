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

void TableView::registerCell(const QString &identifier, ViewMakers<TableViewCell>::Maker maker)
{
    m_cells.insert(identifier, std::move(maker));
}

void TableView::registerHeaderFooterView(const QString &identifier, ViewMakers<View>::Maker maker)
{
    m_headersAndFooters.insert(identifier, std::move(maker));
}

std::shared_ptr<TableViewCell> TableView::dequeueReusableCellWithIdentifier(const QString &identifier) const
{
    return m_cells.make(identifier);
}

std::shared_ptr<View>
TableView::dequeueReusableHeaderFooterViewWithIdentifier(const QString &identifier) const
{
    return m_headersAndFooters.make(identifier);
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
        const TableGeometry::HeightOf heightOf = heights();
        for (const IndexPath &indexPath : indexPaths)
            m_geometry->setHeight(rowPlace(indexPath), heightOf);
        tellContentHeight();
        showElementsInView([&](const TablePlace &shown) {
            return shown.kind == TableElementKind::Row &&
                   std::ranges::find(indexPaths, IndexPath{shown.section, shown.row}) != indexPaths.end();
        });
    });
}

void TableView::reloadSections(const std::vector<int> &sections, RowAnimation)
{
    change([this, sections] {
        const std::shared_ptr<TableViewDataSource> dataSource = m_dataSource.lock();
        const TableGeometry::HeightOf heightOf = heights();
        for (const int section : sections) {
            if (!dataSource || !m_geometry->contains({section, TableElementKind::Header}))
                continue;
            m_geometry->setSection(section, dataSource->numberOfRowsInSection(*this, section), heightOf);
        }
        tellContentHeight();
        showElementsInView([&](const TablePlace &shown) {
            return std::ranges::find(sections, shown.section) != sections.end();
        });
    });
}

std::shared_ptr<TableViewCell> TableView::cellForRowAtIndexPath(IndexPath indexPath) const
{
    const TableElement *element = m_elements->find(rowPlace(indexPath));
    return element ? std::static_pointer_cast<TableViewCell>(element->view) : nullptr;
}

void TableView::scrollToRowAtIndexPath(IndexPath indexPath, ScrollPosition, bool animated)
{
    const TablePlace place = rowPlace(indexPath);
    if (!m_geometry->contains(place))
        return;
    const double top = m_geometry->top(m_geometry->indexOf(place));
    const double offset = std::max(0.0, std::min(top, maxOffset()));
    if (animated)
        Q_EMIT scrollWanted(offset);
    else
        setContentOffset(offset);
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

double TableView::maxOffset() const { return contentHeight() + m_bottomInset - frame().height(); }

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
    m_width = frame().width();
    m_geometry->setHeights(heights());
    tellContentHeight();
}

std::function<double(const TablePlace &)> TableView::heights()
{
    return [this, delegate = orPlain(m_delegate.lock())](const TablePlace &place) {
        switch (place.kind) {
        case TableElementKind::Header:
            return delegate->heightForHeaderInSection(*this, place.section);
        case TableElementKind::Row:
            return delegate->heightForRowAtIndexPath(*this, {place.section, place.row});
        case TableElementKind::Footer:
            return delegate->heightForFooterInSection(*this, place.section);
        }
        return 0.0;
    };
}

void TableView::tellContentHeight()
{
    if (contentHeight() != std::exchange(m_heightTold, contentHeight()))
        Q_EMIT contentHeightChanged();
}

void TableView::showElementsInView(const std::function<bool(const TablePlace &)> &again)
{
    const std::shared_ptr<TableViewDataSource> dataSource = m_dataSource.lock();
    const std::shared_ptr<TableViewDelegate> delegate = orPlain(m_delegate.lock());
    const auto viewAt = [&](const TablePlace &place) -> std::shared_ptr<QObject> {
        const TableElement *shown = m_elements->find(place);
        if (shown && !again(place))
            return shown->view;
        switch (place.kind) {
        case TableElementKind::Header:
            return delegate->viewForHeaderInSection(*this, place.section);
        case TableElementKind::Row:
            return dataSource->cellForRowAtIndexPath(*this, {place.section, place.row});
        case TableElementKind::Footer:
            return delegate->viewForFooterInSection(*this, place.section);
        }
        return nullptr;
    };
    std::vector<TableElement> elements;
    const double bottom = m_contentOffset + frame().height();
    const auto [first, last] = dataSource && !frame().isEmpty()
                                   ? m_geometry->placesBetween(m_contentOffset, bottom)
                                   : std::pair<std::size_t, std::size_t>{};
    for (std::size_t i = first; i < last; ++i) {
        if (m_geometry->height(i) <= 0)
            continue;
        const TablePlace &place = m_geometry->place(i);
        std::shared_ptr<QObject> view = viewAt(place);
        if (!view)
            continue;
        QQmlEngine::setObjectOwnership(view.get(), QQmlEngine::CppOwnership);
        elements.push_back({place, m_geometry->top(i), m_geometry->height(i), std::move(view)});
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
