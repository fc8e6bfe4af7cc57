#pragma once

#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"

namespace orvel {

// The large header over the web radios: what plays now, with a play button.
class NowPlayingHeader : public orvel::View
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Outlets belong to their screen")
    OUTLET(ImageView, himg);       // logo
    OUTLET(Label, hl1);            // the radio's name
    OUTLET(Label, hl2);            // its description
    OUTLET(Label, hl3);            // song title
    OUTLET(Label, hl4);            // artist
    OUTLET(ImageView, himgsinger); // large picture
    OUTLET(Button, hbtnPlay);      // its tag is 1 while the radio plays, 0 while it is paused

public:
    static constexpr double height = 352;

    // Sets the button's tag and image.
    void setPlaying(bool isPlaying);
};

} // namespace orvel
