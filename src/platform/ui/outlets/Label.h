#pragma once

#include "platform/ui/outlets/View.h"

#include <QString>

namespace orvel {

// A text. It starts empty.
class Label : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LabelOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    Label() = default;

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
};

} // namespace orvel
