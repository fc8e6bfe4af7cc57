#pragma once

#include "platform/ui/table/TableGeometry.h"

#include <QAbstractListModel>
#include <memory>

namespace orvel {

// A header, row or footer in view.
struct TableElement
{
    TablePlace place;
    double top = 0;
    double height = 0;
    std::shared_ptr<QObject> view{}; // the row's cell, or the header's or footer's view
};

// The elements in view, as the layout's model. A change from one state to the next inserts, removes or
// changes only what differs.
class TableElements final : public QAbstractListModel
{
public:
    enum Role { KindRole = Qt::UserRole, CellRole, RowTopRole, RowHeightRole, SectionRole, RowRole };

    // Takes elements sorted by place, each with a view. A layout's item stays while the place and the class
    // of its view stay. Views that leave are kept until a later turn of the event loop: a handler of their
    // own layout may be what sends them away.
    void become(const std::vector<TableElement> &elements);
    // Returns nullptr when `place` has no element in view.
    const TableElement *find(const TablePlace &place) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void insert(int at, const TableElement &element);
    void remove(int at);
    void update(int at, const TableElement &element);

    std::vector<TableElement> m_elements;
    std::vector<std::shared_ptr<QObject>> m_leaving;
};

} // namespace orvel
