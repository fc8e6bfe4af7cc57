#include "support/SoundComparison.h"

#include "support/EncodedTone.h"

#include <functional>
#include <gtest/gtest.h>

using namespace orvel::test;

namespace {

using Packets = std::vector<orvel::AudioStreamPacketDescription>;
using Samples = std::vector<float>;

constexpr std::ptrdiff_t middle = 50000;

} // namespace

TEST(SoundComparisonTest, NoticesTheSmallestFault)
{
    struct Case
    {
        const char *name;
        std::function<void(Packets &)> breakPackets;
        std::function<void(Samples &)> breakSamples;
    };
    const Case cases[] = {
        {"a frame lost", [](Packets &p) { p.erase(p.begin() + 40); }, {}},
        {"the first frame lost", [](Packets &p) { p.erase(p.begin()); }, {}},
        {"the last frame lost", [](Packets &p) { p.pop_back(); }, {}},
        {"a frame twice", [](Packets &p) { p.insert(p.begin() + 40, p[40]); }, {}},
        {"the last frame twice", [](Packets &p) { p.push_back(p.back()); }, {}},
        {"two frames swapped", [](Packets &p) { std::swap(p[40], p[41]); }, {}},
        {"a sample lost", {}, [](Samples &s) { s.erase(s.begin() + middle); }},
        {"a click", {}, [](Samples &s) { s[middle] += 0.0001F; }},
        {"not a number", {}, [](Samples &s) { s[middle] = NAN; }},
        {"a gap", {}, [](Samples &s) { s.insert(s.begin() + middle, 2048, 0.F); }},
        {"channels swapped",
         {},
         [](Samples &s) {
             for (std::size_t i = 0; i + 1 < s.size(); i += 2)
                 std::swap(s[i], s[i + 1]);
         }},
        {"quieter", {}, [](Samples &s) { s = scaled(std::move(s), 0.999F); }},
        {"nothing", {}, [](Samples &s) { s.clear(); }},
    };
    const EncodedTone tone = encodeTone({.seconds = 2});
    const Samples expected = decoded(tone);
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EncodedTone other = tone;
        if (c.breakPackets)
            c.breakPackets(other.packets);
        Samples captured = decoded(other);
        if (c.breakSamples)
            c.breakSamples(captured);
        const SoundDifference difference = compareSound(captured, expected);
        EXPECT_FALSE(difference.isWithinBound()) << difference;
    }
}

TEST(SoundComparisonTest, TakesSilenceAroundTheSoundForTheDevices)
{
    const Samples expected = decoded(encodeTone({.seconds = 2}));
    Samples captured(100000, 0.F);
    captured.insert(captured.end(), expected.begin(), expected.end());
    captured.resize(captured.size() + 4096);
    expectSameSound(captured, expected);
    expectSameSound(scaled(captured, 0.3F), scaled(expected, 0.3F));
}
