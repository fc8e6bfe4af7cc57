#include "layouts/kit/TableKeys.h"

#include <QQuickWindow>
#include <algorithm>
#include <limits>

namespace orvel {

namespace {

constexpr double farAway = std::numeric_limits<double>::infinity();
constexpr double pageShare = 0.9; // of the table's height

} // namespace

bool TableKeys::press(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return step(-1);
    case Qt::Key_Down:
        return step(1);
    case Qt::Key_PageUp:
        return page(-1);
    case Qt::Key_PageDown:
        return page(1);
    case Qt::Key_Home:
        return goToEnd(-1);
    case Qt::Key_End:
        return goToEnd(1);
    default:
        return false;
    }
}

void TableKeys::reveal(double top, double height)
{
    const double seen = m_table->frame().height() - m_table->bottomInset();
    const double around = std::clamp((seen - height) / 2, 0.0, height);
    scrollTo(std::min(top - around, std::max(m_table->contentOffset(), top + height + around - seen)));
}

bool TableKeys::step(int direction)
{
    QQuickItem *const active = m_elements->window()->activeFocusItem();
    const QQuickItem *from = active;
    while (from && from->parentItem() != m_elements)
        from = from->parentItem();
    const double top = from ? from->y() : -direction * farAway;
    QQuickItem *next = nearest(top, direction);
    QQuickItem *const before = direction < 0 && active ? active->nextItemInFocusChain(false) : nullptr;
    // Before its first row the header's buttons are reached.
    if (!next && before && m_elements->isAncestorOf(before))
        next = before;
    const bool moved =
        !next && scrollTo(m_table->contentOffset() + direction * pageShare * m_table->frame().height());
    if (moved)
        next = nearest(top, direction);
    else if (!next)
        next = before;
    if (next)
        focus(*next, direction);
    return next || moved;
}

bool TableKeys::page(int direction)
{
    const double wanted = m_table->contentOffset() + direction * pageShare * m_table->frame().height();
    if (wanted <= 0 || wanted >= m_table->maxOffset())
        return goToEnd(direction);
    scrollTo(wanted);
    if (QQuickItem *const first = nearest(wanted - 1, 1))
        focus(*first, direction);
    return true;
}

bool TableKeys::goToEnd(int direction)
{
    scrollTo(direction < 0 ? 0 : m_table->maxOffset());
    if (QQuickItem *const last = nearest(direction * farAway, -direction))
        focus(*last, direction);
    return true;
}

void TableKeys::focus(QQuickItem &item, int direction)
{
    if (m_elements->isAncestorOf(&item)) {
        const QRectF place = item.mapRectToItem(m_elements, item.boundingRect());
        reveal(place.top(), place.height());
    }
    item.forceActiveFocus(direction < 0 ? Qt::BacktabFocusReason : Qt::TabFocusReason);
}

QQuickItem *TableKeys::nearest(double top, int direction) const
{
    QQuickItem *found = nullptr;
    for (QQuickItem *const item : m_elements->childItems()) {
        const bool isAfter = (item->y() - top) * direction > 0;
        const bool isNearer = !found || (found->y() - item->y()) * direction > 0;
        if (item->activeFocusOnTab() && isAfter && isNearer)
            found = item;
    }
    return found;
}

bool TableKeys::scrollTo(double offset)
{
    const double before = m_table->contentOffset();
    m_table->setContentOffset(std::max(0.0, std::min(offset, m_table->maxOffset())));
    return m_table->contentOffset() != before;
}

} // namespace orvel
