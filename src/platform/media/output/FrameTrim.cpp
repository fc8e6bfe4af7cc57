#include "platform/media/output/FrameTrim.h"

#include "platform/media/codec/FfmpegHandles.h"

#include <algorithm>
#include <utility>

namespace orvel {

SampleConverter::Part FrameTrim::part(const AVFrame &frame)
{
    const qint64 size = frame.nb_samples;
    const qint64 before = std::exchange(m_decoded, m_decoded + size);
    const qint64 begin = std::clamp<qint64>(m_trim.primingFrames - before, 0, size);
    const qint64 end =
        m_trim.validFrames
            ? std::clamp<qint64>(m_trim.primingFrames + *m_trim.validFrames - before, begin, size)
            : size;
    return {int(begin), int(end - begin)};
}

} // namespace orvel
