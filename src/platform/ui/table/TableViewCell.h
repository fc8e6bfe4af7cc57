#pragma once

#include <QObject>
#include <QQmlEngine>

namespace orvel {

// A row's cell: outlets of one row. It lives from the row's coming into view until a later turn of the event
// loop after its leaving.
class TableViewCell : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Cells are made by their table")
public:
    TableViewCell() = default;
    // Told when the row is selected.
    virtual void setSelected(bool, bool /*animated*/) {}
};

} // namespace orvel
