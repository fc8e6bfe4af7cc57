#include "demo/Synth.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace orvel::demo {

namespace {

constexpr int waveSize = 2048;
constexpr std::array songKeys = {0, 5, -2, 3, -4};

double stepOf(double midi) { return 440.0 * std::exp2((midi - 69.0) / 12.0) * waveSize / Synth::sampleRate; }

// The factor a sample that makes a level fall to a thousandth in `seconds`.
float fall(double seconds) { return float(std::exp(std::log(0.001) / (seconds * Synth::sampleRate))); }

float softClip(float x)
{
    x = std::clamp(x, -1.0F, 1.0F);
    return x * (1.5F - 0.5F * x * x);
}

} // namespace

Synth::Wave Synth::harmonics(std::initializer_list<double> amplitudes)
{
    Wave wave{};
    double sum = 0;
    for (double amplitude : amplitudes)
        sum += amplitude;
    for (std::size_t i = 0; i < wave.size(); ++i) {
        double value = 0;
        int n = 1;
        for (double amplitude : amplitudes)
            value += amplitude * std::sin(2 * std::numbers::pi * double(i) * n++ / waveSize);
        wave[i] = float(value / sum * 1.6);
    }
    return wave;
}

const Synth::Wave &Synth::waveNamed(const QString &name)
{
    static const Wave sine = harmonics({1});
    static const Wave pluck = harmonics({1, 0.45, 0.25, 0.15, 0.1, 0.06, 0.03});
    static const Wave saw = harmonics({1, 0.5, 0.33, 0.25, 0.2, 0.16, 0.13, 0.1, 0.08, 0.06});
    static const Wave bell = harmonics({1, 0.05, 0.3, 0.02, 0.12, 0, 0.06});
    static const Wave organ = harmonics({1, 0.6, 0.35, 0.25, 0, 0.15, 0, 0.1});
    static const Wave reed = harmonics({0.8, 0.7, 0.55, 0.4, 0.3, 0.2, 0.14, 0.1});
    if (name == QLatin1String("pluck"))
        return pluck;
    if (name == QLatin1String("saw"))
        return saw;
    if (name == QLatin1String("bell"))
        return bell;
    if (name == QLatin1String("organ"))
        return organ;
    return name == QLatin1String("reed") ? reed : sine;
}

Synth::Synth(Music music, int firstSong)
    : m_music(std::move(music))
    , m_lead(waveNamed(m_music.lead))
    , m_ticksInBar(m_music.drums == QLatin1String("waltz") ? 12 : 16)
    , m_tickSamples(60.0 / m_music.tempo / 4 * sampleRate)
    , m_song(firstSong)
{
    const double barSeconds = m_tickSamples * m_ticksInBar / sampleRate;
    m_barsInSong = std::max(1, int(std::lround(songSeconds / barSeconds)));
    const auto echo = std::size_t(m_tickSamples * 3);
    m_echoLeft.assign(echo, 0);
    m_echoRight.assign(echo, 0);
    m_voices.reserve(64);
    m_key = songKeys[std::size_t(m_song) % songKeys.size()];
}

void Synth::render(std::span<float> left, std::span<float> right)
{
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (m_position == m_nextTick)
            tick();
        mix(left[i], right[i]);
        ++m_position;
    }
    std::erase_if(m_voices, [](const Voice &voice) { return voice.level < 1e-4F; });
}

void Synth::tick()
{
    const int tickInBar = int(m_tick % m_ticksInBar);
    if (tickInBar == 0)
        startBar();
    playArpeggio(tickInBar);
    playBass(tickInBar);
    if (m_bar > 0) // a song's first bar is without drums, so that its beginning can be heard
        playDrums(tickInBar);
    m_nextTick = std::int64_t(double(++m_tick) * m_tickSamples);
}

void Synth::startBar()
{
    const std::int64_t bars = m_tick / m_ticksInBar;
    m_bar = int(bars % m_barsInSong);
    if (bars > 0 && m_bar == 0)
        m_key = songKeys[std::size_t(++m_song) % songKeys.size()];
    const double bar = m_tickSamples * m_ticksInBar / sampleRate;
    static const Wave &soft = waveNamed(QStringLiteral("pluck"));
    for (std::size_t i = 0; i < std::min<std::size_t>(chord().size(), 4); ++i) {
        const double midi = m_music.root + m_key + chord()[i];
        const float gain = float(0.05 * m_music.pad);
        note(soft, midi - 0.05, gain, bar * 0.3, bar * 0.9, 8, -0.8F, true);
        note(soft, midi + 0.05, gain, bar * 0.3, bar * 0.9, 8, 0.8F, true);
    }
}

void Synth::playArpeggio(int tickInBar)
{
    const int steps = int(m_music.arpeggio.size());
    const int stride = std::max(1, m_ticksInBar / std::max(1, steps));
    if (steps == 0 || tickInBar % stride != 0)
        return;
    const int step = tickInBar / stride;
    const auto index = std::size_t(m_music.arpeggio[std::size_t((step + m_song) % steps)]);
    const double midi = m_music.root + m_key + 12 + chord()[index % chord().size()];
    const float accent = step == 0 ? 1.0F : 0.75F;
    const float pan = step % 2 == 0 ? -0.35F : 0.35F;
    const bool held = m_music.lead == QLatin1String("reed") || m_music.lead == QLatin1String("organ");
    const double length = m_tickSamples * stride / sampleRate;
    if (held) {
        note(m_lead, midi - 0.06, 0.06F * accent, 0.02, length * 0.7, 3, -0.3F, true, swingDelay(tickInBar));
        note(m_lead, midi + 0.06, 0.06F * accent, 0.02, length * 0.7, 3, 0.3F, true, swingDelay(tickInBar));
    } else {
        const double ring = m_music.lead == QLatin1String("saw") ? 0.5 : 1.4;
        note(m_lead, midi, 0.13F * accent, 0.004, ring, ring, pan, true, swingDelay(tickInBar));
    }
}

void Synth::playBass(int tickInBar)
{
    static const Wave &wave = waveNamed(QStringLiteral("pluck"));
    const double beat = m_tickSamples * 4 / sampleRate;
    const auto play = [&](int midi, double hold) {
        note(wave, midi, 0.24F, 0.006, hold, hold * 3, 0, false, swingDelay(tickInBar));
    };
    const int low = bassNote();
    if (m_music.bass == QLatin1String("long") || m_music.bass == QLatin1String("waltz")) {
        if (tickInBar == 0)
            play(low, m_music.bass == QLatin1String("waltz") ? beat * 0.8 : beat * 3.6);
    } else if (m_music.bass == QLatin1String("walk")) {
        static constexpr std::array walk = {0, 1, 2, 1};
        if (tickInBar % 4 == 0) {
            const auto index = std::size_t(walk[std::size_t(tickInBar / 4) % walk.size()]);
            play(low + chord()[index % chord().size()] - chord().front(), beat * 0.8);
        }
    } else if (m_music.bass == QLatin1String("octaves")) {
        if (tickInBar % 2 == 0)
            play(tickInBar % 4 == 0 ? low : low + 12, beat * 0.3);
    } else if (m_music.bass == QLatin1String("offbeat")) {
        if (tickInBar % 4 == 2)
            play(low, beat * 0.35);
    } else if (tickInBar % 2 == 0) { // pump
        play(low, beat * 0.35);
    }
}

void Synth::playDrums(int tickInBar)
{
    const int beat = tickInBar / 4;
    const bool onBeat = tickInBar % 4 == 0;
    if (m_music.drums == QLatin1String("club")) {
        if (onBeat)
            kick(0.5F);
        if (tickInBar % 4 == 2)
            noise(0.06F, 0.09, 0.2F);
        if (onBeat && beat % 2 == 1)
            noise(0.11F, 0.16, -0.1F);
    } else if (m_music.drums == QLatin1String("pop")) {
        if (tickInBar == 0 || tickInBar == 8 || tickInBar == 10)
            kick(0.42F);
        if (onBeat && beat % 2 == 1)
            noise(0.14F, 0.2, 0);
        if (tickInBar % 2 == 0)
            noise(0.035F, 0.05, 0.3F);
    } else if (m_music.drums == QLatin1String("soft")) {
        if (tickInBar == 0 || tickInBar == 10)
            kick(0.3F);
        if (tickInBar % 4 == 2)
            noise(0.03F, 0.07, 0.3F);
        if (tickInBar == 8)
            noise(0.06F, 0.14, -0.2F);
    } else if (m_music.drums == QLatin1String("brushes")) {
        if (onBeat)
            noise(0.04F, 0.28, -0.2F);
        if (beat % 2 == 1 && tickInBar % 4 == 2)
            noise(0.05F, 0.08, 0.25F, swingDelay(tickInBar));
    } else if (m_music.drums == QLatin1String("waltz") && onBeat) {
        if (beat == 0)
            kick(0.28F);
        else
            noise(0.05F, 0.1, 0.1F);
    }
}

void Synth::note(const Wave &wave, double midi, float gain, double attack, double hold, double decay,
                 float pan, bool echoes, int delay)
{
    Voice voice;
    voice.wave = &wave;
    voice.step = stepOf(midi);
    voice.decay = fall(decay);
    voice.hold = int(hold * sampleRate);
    voice.release = fall(0.35);
    voice.attack = 0;
    voice.attackStep = float(1.0 / (attack * sampleRate));
    voice.left = gain * (1 - pan);
    voice.right = gain * (1 + pan);
    voice.delay = delay;
    voice.echoes = echoes;
    m_voices.push_back(voice);
}

void Synth::kick(float gain)
{
    static const Wave &wave = waveNamed(QStringLiteral("sine"));
    Voice voice;
    voice.wave = &wave;
    voice.step = stepOf(57);
    voice.bend = 0.99985;
    voice.decay = fall(0.28);
    voice.hold = sampleRate;
    voice.left = voice.right = gain;
    m_voices.push_back(voice);
}

void Synth::noise(float gain, double decay, float pan, int delay)
{
    Voice voice;
    voice.decay = fall(decay);
    voice.hold = sampleRate;
    voice.left = gain * (1 - pan);
    voice.right = gain * (1 + pan);
    voice.delay = delay;
    m_voices.push_back(voice);
}

float Synth::sample(Voice &voice)
{
    float value = 0;
    if (voice.wave) {
        const auto index = std::size_t(voice.phase);
        const auto part = float(voice.phase - double(index));
        value = (*voice.wave)[index] * (1 - part) + (*voice.wave)[index + 1] * part;
        voice.phase += voice.step;
        if (voice.phase >= waveSize)
            voice.phase -= waveSize;
        voice.step *= voice.bend;
    } else {
        m_random = m_random * 1664525U + 1013904223U;
        const float white = float(m_random >> 8) / float(1U << 23) - 1;
        value = (white - voice.lastNoise) * 0.7F; // the difference keeps the highs: cymbals and brushes
        voice.lastNoise = white;
    }
    value *= voice.level * voice.attack;
    voice.attack = std::min(1.0F, voice.attack + voice.attackStep);
    voice.level *= voice.hold-- > 0 ? voice.decay : voice.release;
    return value;
}

void Synth::mix(float &left, float &right)
{
    float echoedLeft = 0;
    float echoedRight = 0;
    left = right = 0;
    for (Voice &voice : m_voices) {
        if (voice.delay > 0) {
            --voice.delay;
            continue;
        }
        const float value = sample(voice);
        (voice.echoes ? echoedLeft : left) += value * voice.left;
        (voice.echoes ? echoedRight : right) += value * voice.right;
    }
    // The echo goes from side to side.
    const float fromLeft = m_echoLeft[m_echo];
    const float fromRight = m_echoRight[m_echo];
    m_echoLeft[m_echo] = echoedLeft * 0.5F + fromRight * 0.4F;
    m_echoRight[m_echo] = echoedRight * 0.5F + fromLeft * 0.4F;
    m_echo = (m_echo + 1) % m_echoLeft.size();
    left = softClip(left + echoedLeft + fromRight * 0.6F);
    right = softClip(right + echoedRight + fromLeft * 0.6F);
}

int Synth::swingDelay(int tickInBar) const
{
    return tickInBar % 4 == 2 ? int(m_music.swing * m_tickSamples * 2) : 0;
}

int Synth::bassNote() const
{
    int midi = m_music.root + m_key + chord().front() - 12;
    while (midi > 45)
        midi -= 12;
    while (midi < 31)
        midi += 12;
    return midi;
}

const std::vector<int> &Synth::chord() const
{
    return m_music.chords[std::size_t(m_bar) % m_music.chords.size()];
}

} // namespace orvel::demo
