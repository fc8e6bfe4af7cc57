#include "screens/radio/NowPlayingHeader.h"

namespace orvel {

void NowPlayingHeader::setPlaying(bool isPlaying)
{
    hbtnPlay.setTag(isPlaying ? 1 : 0);
    for (const ControlState state : {ControlState::Normal, ControlState::Highlighted})
        hbtnPlay.setImage(isPlaying ? QStringLiteral("pstop.png") : QStringLiteral("pplayer.png"), state);
}

} // namespace orvel
