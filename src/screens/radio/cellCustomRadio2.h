#pragma once

#include "screens/radio/RadioCell.h"

namespace orvel {

// One favourite radio.
class cellCustomRadio2 : public orvel::RadioCell
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CellCustomRadio2)
    QML_UNCREATABLE("Cells are made by their table")
};

} // namespace orvel
