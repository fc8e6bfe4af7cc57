#include "screens/radio/CompactBar.h"

#include "platform/foundation/Log.h"

namespace orvel {

void CompactBar::setPlaying(bool isPlaying)
{
    bplay.setTag(isPlaying ? 1 : 0);
    setPlayImage(isPlaying);
}

void CompactBar::setPlayImage(bool isPlaying)
{
    for (const ControlState state : {ControlState::Normal, ControlState::Highlighted})
        bplay.setImage(isPlaying ? QStringLiteral("mstop.png") : QStringLiteral("mplay.png"), state);
}

void CompactBar::followHeader(double headerHeight, double contentOffset)
{
    static double lastContentOffset = 0;
    if (lastContentOffset <= headerHeight && contentOffset > headerHeight) {
        qCInfo(logApp, " ******* Header view just disappeared");
        setHidden(false);
    } else if (lastContentOffset > headerHeight && contentOffset <= headerHeight) {
        qCInfo(logApp, " ******* Header view just appeared");
        setHidden(true);
    }
    lastContentOffset = contentOffset;
}

} // namespace orvel
