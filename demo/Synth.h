#pragma once

#include "demo/StationContent.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace orvel::demo {

// Generates endless music in stereo, always the same for the same style and first song. Each song is some
// twenty seconds long and has a key and an order of the arpeggio of its own.
class Synth
{
public:
    static constexpr int sampleRate = 44100;
    static constexpr double songSeconds = 20;

    explicit Synth(Music music, int firstSong = 0);

    // Writes the next samples. Both spans have the same length.
    void render(std::span<float> left, std::span<float> right);
    // The number of the song that the next sample belongs to.
    int song() const { return m_song; }

private:
    using Wave = std::array<float, 2049>;
    struct Voice
    {
        const Wave *wave = nullptr; // nullptr for noise
        double phase = 0;
        double step = 0; // table positions a sample
        double bend = 1; // factor on `step` a sample
        float level = 1; // falls by `decay`, after `hold` samples by `release`
        float decay = 1;
        float release = 0.9995F;
        int hold = 0;
        float attack = 1; // rises to 1 by `attackStep`
        float attackStep = 1;
        float left = 0;
        float right = 0;
        int delay = 0; // samples before it sounds
        bool echoes = false;
        float lastNoise = 0;
    };

    static Wave harmonics(std::initializer_list<double> amplitudes);
    static const Wave &waveNamed(const QString &name);

    void tick();
    void startBar();
    void playArpeggio(int tickInBar);
    void playBass(int tickInBar);
    void playDrums(int tickInBar);
    void note(const Wave &wave, double midi, float gain, double attack, double hold, double decay, float pan,
              bool echoes, int delay = 0);
    void kick(float gain);
    void noise(float gain, double decay, float pan, int delay = 0);
    float sample(Voice &voice);
    void mix(float &left, float &right);
    int swingDelay(int tickInBar) const;
    int bassNote() const;
    const std::vector<int> &chord() const;

    Music m_music;
    const Wave &m_lead;
    int m_ticksInBar;
    int m_barsInSong;
    double m_tickSamples;
    std::int64_t m_tick = 0;
    std::int64_t m_position = 0;
    std::int64_t m_nextTick = 0;
    int m_song;
    int m_key = 0;
    int m_bar = 0;
    std::vector<Voice> m_voices;
    std::vector<float> m_echoLeft;
    std::vector<float> m_echoRight;
    std::size_t m_echo = 0;
    std::uint32_t m_random = 0x2545F491U;
};

} // namespace orvel::demo
