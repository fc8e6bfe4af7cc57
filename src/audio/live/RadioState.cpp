#include "audio/live/RadioState.h"

namespace orvel {

QString nameOf(RadioState state)
{
    switch (state) {
    case RadioStateStopped:
        return QStringLiteral("stopped");
    case RadioStateConnecting:
        return QStringLiteral("connecting");
    case RadioStateBuffering:
        return QStringLiteral("buffering");
    case RadioStatePlaying:
        return QStringLiteral("playing");
    case RadioStateError:
        break;
    }
    return QStringLiteral("error");
}

} // namespace orvel
