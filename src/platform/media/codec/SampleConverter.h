#pragma once

#include <memory>
#include <vector>

struct AVFrame;

namespace orvel {

// Decoded frames of any format, also one that changes, to interleaved float samples of one rate and channel
// count (libswresample).
class SampleConverter
{
public:
    SampleConverter(int sampleRate, int channels);
    ~SampleConverter();

    // Appends to `samples`.
    void convert(const AVFrame &frame, std::vector<float> &samples);
    // Appends what is held back between two samples of the other rate.
    void drain(std::vector<float> &samples);

private:
    struct Handles;
    bool isFor(const AVFrame &frame) const;
    bool makeFor(const AVFrame &frame);
    void run(const AVFrame *frame, std::vector<float> &samples);

    const int m_sampleRate;
    const int m_channels;
    std::unique_ptr<Handles> m_handles;
};

} // namespace orvel
