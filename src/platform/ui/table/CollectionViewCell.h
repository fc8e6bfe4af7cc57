#pragma once

#include <QObject>
#include <QQmlEngine>

namespace orvel {

// The outlets of one item of a strip.
class CollectionViewCell : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Cells are made by their strip")
public:
    CollectionViewCell() = default;
};

} // namespace orvel
