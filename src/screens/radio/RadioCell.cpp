#include "screens/radio/RadioCell.h"

#include "screens/radio/RadioRows.h"

namespace orvel {

void RadioCell::showRadio(const JsonValue &radio, int row, Button::Action favTapped)
{
    img.setImageWithProgressIndicatorAndURL(picturePath(radio), img.frame().center());
    lblTitle.setText(radio["title"].text());
    btnFav.setTag(row);
    btnFav.setBackgroundImage(radio["fav"].text());
    btnFav.setTarget(std::move(favTapped));
}

} // namespace orvel
