#pragma once

#include <QtGlobal>
#include <iosfwd>
#include <vector>

namespace orvel::test {

// How captured sound differs from what should be heard. Both are taken without the silence (zero samples)
// around them, since devices add their own, and are laid upon each other where the beginnings fit best,
// within three compressed frames. Counts are in samples of all channels.
struct SoundDifference
{
    double decibels = 0;  // the greatest difference of two samples, full scale being 0; -inf: none at all
    qint64 missing = 0;   // before the captured sound's first and behind its last sample
    qint64 surplus = 0;   // likewise in the capture
    qint64 compared = 0;  // samples laid upon each other
    qint64 different = 0; // those among them that differ by more than the bound
    bool isWithinBound() const;
};
std::ostream &operator<<(std::ostream &out, const SoundDifference &difference);

// What is played unscaled is the decoder's own numbers, without any difference; a volume rounds each to 24
// bits, which is -144 dB of full scale. A sample that is lost, moved or altered by more than a 16-bit sound's
// last bit (-90 dB) shows far above.
inline constexpr double soundBound = -120;

SoundDifference compareSound(const std::vector<float> &captured, const std::vector<float> &expected);

// Holds when the sound was heard whole, in its order, and nothing else. `expected` is a second's sound or
// more.
void expectSameSound(const std::vector<float> &captured, const std::vector<float> &expected);

// At another volume.
std::vector<float> scaled(std::vector<float> samples, float volume);

} // namespace orvel::test
