#include "platform/ui/table/TableGeometry.h"

#include <algorithm>
#include <cmath>

namespace orvel {

void TableGeometry::setCounts(const std::vector<int> &rowsInSection)
{
    m_places.clear();
    for (std::size_t i = 0; i < rowsInSection.size(); ++i) {
        const int section = static_cast<int>(i);
        m_places.push_back({section, TableElementKind::Header});
        for (int row = 0; row < rowsInSection[i]; ++row)
            m_places.push_back({section, TableElementKind::Row, row});
        m_places.push_back({section, TableElementKind::Footer});
    }
    m_tops.assign(m_places.size() + 1, 0);
}

void TableGeometry::setHeights(const std::function<double(const TablePlace &)> &heightOf)
{
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        const double height = heightOf(m_places[i]);
        m_tops[i + 1] = m_tops[i] + (std::isfinite(height) ? std::max(0.0, height) : 0);
    }
}

bool TableGeometry::contains(const TablePlace &place) const
{
    return std::binary_search(m_places.begin(), m_places.end(), place);
}

std::pair<std::size_t, std::size_t> TableGeometry::placesBetween(double top, double bottom) const
{
    // First the first place whose bottom lies below `top`, then the first whose top is not above `bottom`.
    const auto bottoms = m_tops.begin() + 1;
    const auto first = std::upper_bound(bottoms, m_tops.end(), top) - bottoms;
    const auto last = std::lower_bound(m_tops.begin(), m_tops.end() - 1, bottom) - m_tops.begin();
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(std::max(first, last))};
}

} // namespace orvel
