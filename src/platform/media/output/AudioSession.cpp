#include "platform/media/output/AudioSession.h"

namespace orvel {

AudioSession &AudioSession::sharedInstance()
{
    static AudioSession session;
    return session;
}

} // namespace orvel
