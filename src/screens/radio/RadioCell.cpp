#include "screens/radio/RadioCell.h"

#include "app/WebRadioEntry.h"

namespace orvel {

void RadioCell::showRadio(const JsonValue &radio, int row, Button::Action favTapped)
{
    img.setImageWithProgressIndicatorAndURL(WebRadioEntry::picturePath(radio), img.frame().center());
    lblTitle.setText(radio[WebRadioEntry::title].text());
    btnFav.setTag(row);
    btnFav.setBackgroundImage(radio[WebRadioEntry::fav].text());
    btnFav.setTarget(std::move(favTapped));
}

} // namespace orvel
