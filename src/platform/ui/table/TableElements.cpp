#include "platform/ui/table/TableElements.h"

#include "platform/foundation/KeepAlive.h"

#include <algorithm>

namespace orvel {

namespace {

// Whether the layout of `shown` can show `next` in its place.
bool canStay(const TableElement &shown, const TableElement &next)
{
    return shown.view->metaObject() == next.view->metaObject();
}

} // namespace

void TableElements::become(const std::vector<TableElement> &elements)
{
    int at = 0;
    for (const TableElement &element : elements) {
        while (at < rowCount() && m_elements[std::size_t(at)].place < element.place)
            remove(at);
        const bool isThere = at < rowCount() && m_elements[std::size_t(at)].place == element.place;
        if (isThere && canStay(m_elements[std::size_t(at)], element)) {
            update(at, element);
        } else {
            if (isThere)
                remove(at);
            insert(at, element);
        }
        ++at;
    }
    while (at < rowCount())
        remove(at);
    if (m_leaving.empty())
        return;
    // Freed as layouts are, and after them: by a deferred deletion.
    auto *const keeper = new QObject;
    keepUntilDestroyed(*keeper, std::exchange(m_leaving, {}));
    keeper->deleteLater();
}

const TableElement *TableElements::find(const TablePlace &place) const
{
    const auto found = std::ranges::lower_bound(m_elements, place, {}, &TableElement::place);
    return found != m_elements.end() && found->place == place ? &*found : nullptr;
}

int TableElements::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_elements.size());
}

QVariant TableElements::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const TableElement &element = m_elements[std::size_t(index.row())];
    switch (role) {
    case KindRole:
        switch (element.place.kind) {
        case TableElementKind::Header:
            return QStringLiteral("header");
        case TableElementKind::Row:
            return QStringLiteral("row");
        case TableElementKind::Footer:
            return QStringLiteral("footer");
        }
        return {};
    case CellRole:
        return QVariant::fromValue(element.view.get());
    case RowTopRole:
        return element.top;
    case RowHeightRole:
        return element.height;
    case SectionRole:
        return element.place.section;
    case RowRole:
        return element.place.row;
    default:
        return {};
    }
}

QHash<int, QByteArray> TableElements::roleNames() const
{
    return {{KindRole, "kind"},           {CellRole, "cell"},       {RowTopRole, "rowTop"},
            {RowHeightRole, "rowHeight"}, {SectionRole, "section"}, {RowRole, "row"}};
}

void TableElements::insert(int at, const TableElement &element)
{
    beginInsertRows({}, at, at);
    m_elements.insert(m_elements.begin() + at, element);
    endInsertRows();
}

void TableElements::remove(int at)
{
    m_leaving.push_back(m_elements[std::size_t(at)].view);
    beginRemoveRows({}, at, at);
    m_elements.erase(m_elements.begin() + at);
    endRemoveRows();
}

void TableElements::update(int at, const TableElement &element)
{
    TableElement &shown = m_elements[std::size_t(at)];
    QList<int> roles;
    if (shown.view != element.view) {
        m_leaving.push_back(shown.view);
        roles << CellRole;
    }
    if (shown.top != element.top)
        roles << RowTopRole;
    if (shown.height != element.height)
        roles << RowHeightRole;
    shown = element;
    if (!roles.isEmpty())
        Q_EMIT dataChanged(index(at), index(at), roles);
}

} // namespace orvel
