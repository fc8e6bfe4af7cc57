#pragma once

#include "platform/ui/outlets/View.h"

#include <QColor>

namespace orvel {

// A view with a line around it.
class BorderedView : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(BorderedViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    BorderedView() = default;

    OUTLET_VALUE(double, borderWidth, setBorderWidth) = 0;
    OUTLET_VALUE(QColor, borderColor, setBorderColor) = Qt::black;
};

} // namespace orvel
