#include "support/SoundComparison.h"

#include "support/EncodedTone.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace orvel::test;

TEST(SoundComparisonTest, NoticesTheSmallestFault)
{
    const EncodedTone tone = encodeTone({.seconds = 2});
    const std::vector<float> expected = decoded(tone);
    EncodedTone swapped = tone;
    std::swap(swapped.packets[40], swapped.packets[41]);
    std::vector<float> shorter = expected;
    shorter.pop_back();
    std::vector<float> clicking = expected;
    clicking[50000] += 0.0001F;
    std::vector<float> broken = expected;
    broken[50000] = NAN;
    for (const auto &captured : {decoded(swapped), shorter, clicking, broken, scaled(expected, 0.999F), {}})
        EXPECT_FALSE(soundDifference(captured, expected).isNull());
    std::vector<float> padded(100000, 0.F);
    padded.insert(padded.end(), expected.begin(), expected.end());
    padded.resize(padded.size() + 4096);
    expectSameSound(padded, expected);
}
