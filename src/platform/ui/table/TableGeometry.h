#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace orvel {

enum class TableElementKind { Header, Row, Footer };

// A header, a row or a footer's place in the table.
struct TablePlace
{
    int section = 0;
    TableElementKind kind = TableElementKind::Row;
    int row = 0; // 0 for headers and footers
    auto operator<=>(const TablePlace &) const = default;
};

// Where everything in a table lies: its places in order, and the prefix sums of their heights.
class TableGeometry
{
public:
    // One count of rows a section.
    void setCounts(const std::vector<int> &rowsInSection);
    // Asks for the height of every place; what is negative or not finite counts as 0.
    void setHeights(const std::function<double(const TablePlace &)> &heightOf);

    const TablePlace &place(std::size_t index) const { return m_places[index]; }
    double top(std::size_t index) const { return m_tops[index]; }
    double height(std::size_t index) const { return m_tops[index + 1] - m_tops[index]; }
    double contentHeight() const { return m_tops.back(); }
    bool contains(const TablePlace &place) const;

    // The places [first, last) that reach into what lies between `top` and `bottom`.
    std::pair<std::size_t, std::size_t> placesBetween(double top, double bottom) const;

private:
    std::vector<TablePlace> m_places;
    std::vector<double> m_tops{0}; // one more than places
};

} // namespace orvel
