#pragma once

#include <QString>
#include <vector>

namespace orvel::test {

// The floats that a file holds. Empty without the file.
std::vector<float> samplesIn(const QString &path);

// Devices add silence (zero samples) of their own around a sound.
std::vector<float> withoutSilence(const std::vector<float> &samples);

// A null text when the captured sound is the expected one, whole, in its order and nothing else, whatever the
// silence around; or how they differ. What is played unscaled is the decoder's own numbers, without any
// difference; a volume rounds each to 24 bits, which is -144 dB of full scale. A sample that is lost, moved
// or altered by more than a 16-bit sound's last bit (-90 dB) shows far above the bound of -120 dB.
QString soundDifference(const std::vector<float> &captured, const std::vector<float> &expected);

// `expected` is a second's sound or more.
void expectSameSound(const std::vector<float> &captured, const std::vector<float> &expected);

} // namespace orvel::test
