#include "audio/live/Radio.h"

#include "platform/foundation/BackgroundTask.h"

#include <algorithm>

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

Radio::Radio(const Url &url) : m_url(url), m_bgTask(invalidBackgroundTask) {}

Radio::~Radio() = default;

void Radio::setBufferInSeconds(unsigned seconds)
{
    // Two buffers a second; none at all would never start.
    m_playerState.bufferCount = seconds == 0 ? 2 : 2 * std::min(seconds, 30U);
}

void Radio::setVolume(float volume)
{
    // A volume that is no number counts as silence.
    m_playerState.volume = volume > 0.0F ? std::min(volume, 1.0F) : 0.0F;
    if (m_playerState.outputQueue)
        m_playerState.outputQueue->setVolume(m_playerState.volume);
}

} // namespace orvel
