#include "audio/live/Radio.h"

#include <algorithm>

namespace orvel {

void Radio::setBufferInSeconds(unsigned seconds)
{
    // Two buffers a second; none at all would never start.
    m_bufferCount = seconds == 0 ? 2 : 2 * std::min(seconds, 30U);
}

void Radio::setVolume(float volume)
{
    // A volume that is not a number counts as silence.
    m_volume = volume > 0.0F ? std::min(volume, 1.0F) : 0.0F;
}

} // namespace orvel
