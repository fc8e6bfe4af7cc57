#include "support/SoundComparison.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <ostream>
#include <span>

namespace orvel::test {

namespace {

constexpr qint64 searchWindow = 3 * 1152 * 2;
constexpr qint64 fittedSamples = 8192;

std::span<const float> withoutSilence(const std::vector<float> &samples)
{
    const auto isSound = [](float sample) { return sample != 0; };
    const auto first = std::find_if(samples.begin(), samples.end(), isSound);
    const auto last = std::find_if(samples.rbegin(), std::make_reverse_iterator(first), isSound).base();
    return {first, last};
}

// The greatest difference where both have samples, `offset` being the place of the expected sound's first
// sample in the capture; not much more is looked at once it is above `enough`.
float peakDifference(std::span<const float> captured, std::span<const float> expected, qint64 offset,
                     qint64 from, qint64 to, float enough = INFINITY)
{
    from = std::max(from, -offset);
    to = std::min({to, qint64(expected.size()), qint64(captured.size()) - offset});
    float peak = 0;
    for (qint64 i = from; i < to && peak < enough; ++i)
        peak = std::max(peak, std::abs(captured[std::size_t(i + offset)] - expected[std::size_t(i)]));
    return peak;
}

qint64 bestOffset(std::span<const float> captured, std::span<const float> expected)
{
    const auto fit = [&](qint64 offset, float enough) {
        return peakDifference(captured, expected, offset, searchWindow, searchWindow + fittedSamples, enough);
    };
    qint64 best = 0;
    float smallest = fit(0, INFINITY);
    for (qint64 distance = 1; distance <= searchWindow; ++distance) {
        for (const qint64 offset : {-distance, distance}) {
            if (const float peak = fit(offset, smallest); peak < smallest) {
                smallest = peak;
                best = offset;
            }
        }
    }
    return best;
}

} // namespace

bool SoundDifference::isWithinBound() const
{
    return different == 0 && missing == 0 && surplus == 0 && compared > 0;
}

std::ostream &operator<<(std::ostream &out, const SoundDifference &difference)
{
    return out << difference.decibels << " dB, " << difference.different << " of " << difference.compared
               << " samples differ, " << difference.missing << " missing, " << difference.surplus
               << " too many";
}

SoundDifference compareSound(const std::vector<float> &captured, const std::vector<float> &expected)
{
    const std::span<const float> heard = withoutSilence(captured);
    const std::span<const float> wanted = withoutSilence(expected);
    const qint64 offset = bestOffset(heard, wanted);
    const qint64 end = qint64(heard.size()) - offset; // of the capture, counted as the expected sound is
    const auto count = qint64(wanted.size());
    const float bound = std::pow(10.F, float(soundBound / 20));

    SoundDifference difference;
    difference.decibels = 20 * std::log10(peakDifference(heard, wanted, offset, 0, count));
    difference.missing = std::max<qint64>(-offset, 0) + std::max<qint64>(count - end, 0);
    difference.surplus = std::max<qint64>(offset, 0) + std::max<qint64>(end - count, 0);
    for (qint64 i = std::max<qint64>(0, -offset); i < std::min(count, end); ++i) {
        const float distance = std::abs(heard[std::size_t(i + offset)] - wanted[std::size_t(i)]);
        difference.different += !(distance <= bound);
        ++difference.compared;
    }
    return difference;
}

void expectSameSound(const std::vector<float> &captured, const std::vector<float> &expected)
{
    const SoundDifference difference = compareSound(captured, expected);
    EXPECT_GT(difference.compared, 10000);
    EXPECT_TRUE(difference.isWithinBound()) << difference;
}

std::vector<float> scaled(std::vector<float> samples, float volume)
{
    for (float &sample : samples)
        sample *= volume;
    return samples;
}

} // namespace orvel::test
