#pragma once

#include <memory>
#include <vector>

struct AVFrame;

namespace orvel {

// Converts decoded frames of any format, also one that changes, to interleaved float samples of one rate and
// channel count (libswresample). One thread at a time.
class SampleConverter
{
public:
    SampleConverter(int sampleRate, int channels);
    ~SampleConverter();

    // Appends to `samples`. Skips frames that can't be converted.
    void convert(const AVFrame &frame, std::vector<float> &samples);
    // Appends the samples that the change of rate still holds back.
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
