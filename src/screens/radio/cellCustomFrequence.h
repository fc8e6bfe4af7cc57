#pragma once

#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/table/TableViewCell.h"

namespace orvel {

// One city with its region and the frequency there.
class cellCustomFrequence : public orvel::TableViewCell
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CellCustomFrequence)
    QML_UNCREATABLE("Cells are made by their table")
    OUTLET(Label, lblTitle);
    OUTLET(Label, lblDesc);
    OUTLET(Label, lblFrequency);
    // Behind the frequency; the layout fills it with the pattern "lblf.png".
    OUTLET(View, vfreq);
};

} // namespace orvel
