#pragma once

#include "screens/radio/RadioCell.h"

namespace orvel {

// One web radio in the list, with the title now on air.
class cellCustomRadio : public orvel::RadioCell
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CellCustomRadio)
    QML_UNCREATABLE("Cells are made by their table")
    OUTLET(Label, lblDesc);
};

} // namespace orvel
