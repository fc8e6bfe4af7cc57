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
        append(m_places, static_cast<int>(section), rowsInSection[section]);
    m_heights.assign(m_places.size(), 0);
    m_tops.assign(m_places.size() + 1, 0);
}

void TableGeometry::setCount(int section, int rows)
{
    const auto [first, last] = placesOf(section);
    if (first == last)
        return;
    std::vector<TablePlace> places;
    append(places, section, rows);
    const auto replace = [first, last](auto &all, const auto &with) {
        const auto begin = all.begin() + std::ptrdiff_t(first);
        all.insert(all.erase(begin, all.begin() + std::ptrdiff_t(last)), with.begin(), with.end());
    };
    replace(m_places, places);
    replace(m_heights, std::vector<double>(places.size()));
    m_tops.resize(m_places.size() + 1);
    sumFrom(first);
}

void TableGeometry::setHeights(const HeightOf &heightOf) { ask(0, m_places.size(), heightOf); }

void TableGeometry::setHeights(int section, const HeightOf &heightOf)
{
    const auto [first, last] = placesOf(section);
    ask(first, last, heightOf);
}

void TableGeometry::setHeight(const TablePlace &place, const HeightOf &heightOf)
{
    if (const std::size_t index = indexOf(place); index < m_places.size())
        ask(index, index + 1, heightOf);
}

std::size_t TableGeometry::indexOf(const TablePlace &place) const
{
    const auto found = std::ranges::lower_bound(m_places, place);
    const bool exists = found != m_places.end() && *found == place;
    return exists ? static_cast<std::size_t>(found - m_places.begin()) : m_places.size();
}

std::pair<std::size_t, std::size_t> TableGeometry::placesBetween(double top, double bottom) const
{
    // First the first place whose bottom lies below `top`, then the first whose top is not above `bottom`.
    const auto bottoms = m_tops.begin() + 1;
    const auto first = std::upper_bound(bottoms, m_tops.end(), top) - bottoms;
    const auto last = std::lower_bound(m_tops.begin(), m_tops.end() - 1, bottom) - m_tops.begin();
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(std::max(first, last))};
}

std::pair<std::size_t, std::size_t> TableGeometry::placesOf(int section) const
{
    const auto places = std::ranges::equal_range(m_places, section, {}, &TablePlace::section);
    return {places.begin() - m_places.begin(), places.end() - m_places.begin()};
}

void TableGeometry::ask(std::size_t first, std::size_t last, const HeightOf &heightOf)
{
    const double bottom = m_tops[last];
    for (std::size_t i = first; i < last; ++i) {
        const double height = heightOf(m_places[i]);
        m_heights[i] = std::isfinite(height) ? std::max(0.0, height) : 0;
        m_tops[i + 1] = m_tops[i] + m_heights[i];
    }
    if (m_tops[last] != bottom)
        sumFrom(last);
}

void TableGeometry::sumFrom(std::size_t first)
{
    for (std::size_t i = first; i < m_heights.size(); ++i)
        m_tops[i + 1] = m_tops[i] + m_heights[i];
}

} // namespace orvel
