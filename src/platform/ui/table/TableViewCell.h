#pragma once

#include <QObject>
#include <QQmlEngine>

namespace orvel {

// The outlets of one row. A cell lives from when its row comes into view until a later turn of the event loop
// after the row has left.
class TableViewCell : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Cells are made by their table")
public:
    TableViewCell() = default;
    // Called when the row is selected, before the delegate.
    virtual void setSelected(bool, bool /*animated*/) {}
};

} // namespace orvel
