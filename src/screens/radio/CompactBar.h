#pragma once

#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"

namespace orvel {

// The compact bar over a list of radios: what plays now, with a play button. Hidden until its screen shows
// it.
class CompactBar : public orvel::View
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Outlets belong to their screen")
    OUTLET(ImageView, bimg);       // logo
    OUTLET(ImageView, bimgsinger); // large picture
    OUTLET(Label, bl1);            // song title, or the radio's
    OUTLET(Label, bl2);            // artist
    OUTLET(Button, bplay);         // its tag is 1 while the radio plays, 0 while it is paused

public:
    CompactBar() { setHidden(true); }

    // Sets the button's tag and image.
    void setPlaying(bool isPlaying);
    // Sets the image alone.
    void setPlayImage(bool isPlaying);

    // Shows the bar when a list's offset has passed the foot of its header, and hides it on the way back.
    // Deliberate: the offset seen last is the process's, whichever list it was of
    // (RadioViewControllerTest.TheCompactBarFollowsTheHeaderOverItsEdge).
    void followHeader(double headerHeight, double contentOffset);
};

} // namespace orvel
