#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/Outlet.h"
#include "platform/ui/TableView.h"

namespace orvel {

// One web radio in the list: its large picture, its name and the title now on air.
class cellCustomRadio : public orvel::TableViewCell
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CellCustomRadio)
    QML_UNCREATABLE("Cells are made by their table")
    OUTLET(ImageView, img);
    OUTLET(Label, lblTitle);
    OUTLET(Label, lblDesc);
    OUTLET(Button, btnFav);
};

} // namespace orvel
