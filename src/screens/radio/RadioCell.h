#pragma once

#include "api/json/JsonValue.h"
#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/table/TableViewCell.h"

namespace orvel {

// A row of a radio: its large picture, its name, and a heart that is full for a favourite.
class RadioCell : public orvel::TableViewCell
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Cells are made by their table")
    OUTLET(ImageView, img);
    OUTLET(Label, lblTitle);
    OUTLET(Button, btnFav);

public:
    static constexpr double height = 60;

    // `favTapped` is called with the heart, whose tag is `row`.
    void showRadio(const JsonValue &radio, int row, Button::Action favTapped);
};

} // namespace orvel
