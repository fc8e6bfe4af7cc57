#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace orvel {

enum class TableElementKind { Header, Row, Footer };

// The place of a header, row or footer in its table.
struct TablePlace
{
    int section = 0;
    TableElementKind kind = TableElementKind::Row;
    int row = 0; // 0 for headers and footers
    auto operator<=>(const TablePlace &) const = default;
};

// Where everything in a table lies: its places in order, and the prefix sums of their heights. Heights that
// are negative or not finite count as 0.
class TableGeometry
{
public:
    using HeightOf = std::function<double(const TablePlace &)>;

    // Takes one count of rows for each section. All heights are 0 afterwards.
    void setCounts(const std::vector<int> &rowsInSection);
    // Asks for the height of every place.
    void setHeights(const HeightOf &heightOf);
    // Changes the count of a section that exists, and asks for its heights; those of the others stay.
    void setSection(int section, int rows, const HeightOf &heightOf);
    // Asks for one height. No effect on a place that does not exist.
    void setHeight(const TablePlace &place, const HeightOf &heightOf);

    const TablePlace &place(std::size_t index) const { return m_places[index]; }
    double top(std::size_t index) const { return m_tops[index]; }
    double height(std::size_t index) const { return m_heights[index]; }
    double contentHeight() const { return m_tops.back(); }
    // Returns the index of `place`; an index past the last when it does not exist.
    std::size_t indexOf(const TablePlace &place) const;
    bool contains(const TablePlace &place) const { return indexOf(place) < m_places.size(); }

    // Returns the places [first, last) that reach into what lies between `top` and `bottom`.
    std::pair<std::size_t, std::size_t> placesBetween(double top, double bottom) const;

private:
    // Asks for the heights of the places [first, last), and sums up to there.
    void ask(std::size_t first, std::size_t last, const HeightOf &heightOf);
    void sumFrom(std::size_t first);

    std::vector<TablePlace> m_places;
    std::vector<double> m_heights; // of the places
    std::vector<double> m_tops{0}; // one more than places
};

} // namespace orvel
