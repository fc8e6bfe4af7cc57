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

    // A part of a decoded frame, counted in sample frames.
    struct Part
    {
        int first;
        int count;
    };

    // Appends a part of the frame to `samples`. Skips frames that can't be converted.
    void convert(const AVFrame &frame, Part part, std::vector<float> &samples);
    // Appends the samples that the change of rate still holds back.
    void drain(std::vector<float> &samples);

private:
    struct Handles;
    bool isFor(const AVFrame &frame) const;
    bool makeFor(const AVFrame &frame);
    void run(const AVFrame *frame, Part part, std::vector<float> &samples);

    const int m_sampleRate;
    const int m_channels;
    std::unique_ptr<Handles> m_handles;
};

} // namespace orvel
