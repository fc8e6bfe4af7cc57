#include "platform/ui/table/TableGeometry.h"

#include <algorithm>
#include <cmath>

namespace orvel {

namespace {

void append(std::vector<TablePlace> &places, int section, int rows)
{
    places.push_back({section, TableElementKind::Header});
    for (int row = 0; row < rows; ++row)
        places.push_back({section, TableElementKind::Row, row});
    places.push_back({section, TableElementKind::Footer});
}

} // namespace

void TableGeometry::setCounts(const std::vector<int> &rowsInSection)
{
    m_places.clear();
    for (std::size_t section = 0; section < rowsInSection.size(); ++section)
        append(m_places, int(section), rowsInSection[section]);
    m_heights.assign(m_places.size(), 0);
    m_tops.assign(m_places.size() + 1, 0);
}

void TableGeometry::setHeights(const HeightOf &heightOf) { ask(0, m_places.size(), heightOf); }

void TableGeometry::setSection(int section, int rows, const HeightOf &heightOf)
{
    const auto firstOf = [this](int wanted) {
        return std::ranges::lower_bound(m_places, wanted, {}, &TablePlace::section) - m_places.begin();
    };
    const std::ptrdiff_t first = firstOf(section);
    const std::ptrdiff_t last = firstOf(section + 1);
    std::vector<TablePlace> places;
    append(places, section, rows);
    const auto replace = [first, last](auto &all, const auto &with) {
        all.insert(all.erase(all.begin() + first, all.begin() + last), with.begin(), with.end());
    };
    replace(m_places, places);
    replace(m_heights, std::vector<double>(places.size()));
    m_tops.resize(m_places.size() + 1);
    const std::size_t begin = std::size_t(first);
    ask(begin, begin + places.size(), heightOf);
    sumFrom(begin + places.size());
}

void TableGeometry::setHeight(const TablePlace &place, const HeightOf &heightOf)
{
    const std::size_t index = indexOf(place);
    if (index == m_places.size())
        return;
    const double before = m_heights[index];
    ask(index, index + 1, heightOf);
    if (m_heights[index] != before)
        sumFrom(index + 1);
}

std::size_t TableGeometry::indexOf(const TablePlace &place) const
{
    const auto found = std::ranges::lower_bound(m_places, place);
    const bool exists = found != m_places.end() && *found == place;
    return exists ? std::size_t(found - m_places.begin()) : m_places.size();
}

std::pair<std::size_t, std::size_t> TableGeometry::placesBetween(double top, double bottom) const
{
    // First the first place whose bottom lies below `top`, then the first whose top is not above `bottom`.
    const auto bottoms = m_tops.begin() + 1;
    const auto first = std::upper_bound(bottoms, m_tops.end(), top) - bottoms;
    const auto last = std::lower_bound(m_tops.begin(), m_tops.end() - 1, bottom) - m_tops.begin();
    return {std::size_t(first), std::size_t(std::max(first, last))};
}

void TableGeometry::ask(std::size_t first, std::size_t last, const HeightOf &heightOf)
{
    for (std::size_t i = first; i < last; ++i) {
        const double height = heightOf(m_places[i]);
        m_heights[i] = std::isfinite(height) ? std::max(0.0, height) : 0;
        m_tops[i + 1] = m_tops[i] + m_heights[i];
    }
}

void TableGeometry::sumFrom(std::size_t first)
{
    for (std::size_t i = first; i < m_heights.size(); ++i)
        m_tops[i + 1] = m_tops[i] + m_heights[i];
}

} // namespace orvel
