#pragma once

#include "platform/ui/table/TableGeometry.h"
#include "platform/ui/table/TableViewCell.h"

#include <QAbstractListModel>
#include <QPointer>
#include <memory>

namespace orvel {

// A header, row or footer in view.
struct TableElement
{
    TablePlace place;
    double top = 0;
    double height = 0;
    QPointer<QObject> view{};              // the header's or footer's view, or the cell
    std::shared_ptr<TableViewCell> cell{}; // rows only
};

// The elements in view, as the layout's model. Between two states only what differs is inserted, removed or
// changed.
class TableElements final : public QAbstractListModel
{
public:
    enum Role { KindRole = Qt::UserRole, CellRole, RowTopRole, RowHeightRole, SectionRole, RowRole };

    // Sorted by place. An element stays in its layout when its place and the class of its view stay. Cells
    // that leave are kept until a later turn of the event loop: a handler of their own layout may be what
    // sends them away.
    void become(const std::vector<TableElement> &elements);
    // Null when nothing is shown at `place`.
    const TableElement *find(const TablePlace &place) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void insert(int at, const TableElement &element);
    void remove(int at);
    void update(int at, const TableElement &element);

    std::vector<TableElement> m_elements;
    std::vector<std::shared_ptr<TableViewCell>> m_leaving;
};

} // namespace orvel
