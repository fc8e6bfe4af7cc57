#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace orvel::test {

using Frames = std::vector<std::pair<float, float>>;

// Pauses are silence in the midst of a sound.
inline Frames withoutPauses(const std::vector<float> &samples)
{
    Frames frames;
    for (std::size_t i = 0; i + 1 < samples.size(); i += 2)
        if (samples[i] != 0 || samples[i + 1] != 0)
            frames.emplace_back(samples[i], samples[i + 1]);
    return frames;
}

// A recorded piece of a sound: where it begins and ends in the sound, in frames.
struct Piece
{
    std::size_t begin;
    std::size_t end;
};

// The pieces in their order, at full or at half volume, and how many frames of the recording are in none.
inline std::pair<std::vector<Piece>, std::size_t> piecesOf(const Frames &sound, const Frames &recorded)
{
    constexpr std::ptrdiff_t sample = 8; // frames that stand once in the sound
    constexpr std::ptrdiff_t window = 44100;
    std::vector<Piece> pieces;
    std::size_t strays = 0;
    std::ptrdiff_t end = 0;
    const auto size = std::ptrdiff_t(sound.size());
    for (auto at = recorded.begin(); recorded.end() - at >= sample;) {
        const auto first = sound.begin() + std::max<std::ptrdiff_t>(0, end - window);
        // What is far away is sought in vain only for a frame now and then.
        const auto last = sound.begin() + (strays % 256 == 0 ? size : std::min(size, end + window));
        bool isFound = false;
        for (const float volume : {1.F, 0.5F}) {
            const auto isSame = [volume](const auto &wanted, const auto &got) {
                return wanted.first * volume == got.first && wanted.second * volume == got.second;
            };
            const auto found = std::search(first, last, at, at + sample, isSame);
            if (found == last)
                continue;
            const auto [there, here] = std::mismatch(found, sound.end(), at, recorded.end(), isSame);
            at = here;
            end = there - sound.begin();
            pieces.push_back({std::size_t(found - sound.begin()), std::size_t(end)});
            isFound = true;
            break;
        }
        if (!isFound) {
            ++strays;
            ++at;
        }
    }
    return {pieces, strays};
}

} // namespace orvel::test
